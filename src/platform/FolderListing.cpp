#include "platform/FolderListing.h"

#include "platform/FileURL.h"

#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct FolderCloser
{
    void operator()(DIR *folder) const { ::closedir(folder); }
};

struct PathReleaser
{
    void operator()(char *path) const { std::free(path); }
};

FolderEntry::Kind kindOfMode(mode_t mode)
{
    if (S_ISDIR(mode))
        return FolderEntry::Kind::Folder;
    if (S_ISREG(mode))
        return FolderEntry::Kind::File;
    return S_ISLNK(mode) ? FolderEntry::Kind::Link : FolderEntry::Kind::Other;
}

FolderEntry::Kind kindOf(DIR *folder, const dirent *entry)
{
    switch (entry->d_type) {
    case DT_DIR:
        return FolderEntry::Kind::Folder;
    case DT_REG:
        return FolderEntry::Kind::File;
    case DT_LNK:
        return FolderEntry::Kind::Link;
    case DT_UNKNOWN: {
        // Some file systems do not say; ask.
        struct stat status;
        if (::fstatat(::dirfd(folder), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0)
            return kindOfMode(status.st_mode);
        return FolderEntry::Kind::Other;
    }
    default:
        return FolderEntry::Kind::Other;
    }
}

bool isHidden(const char *name)
{
    return name[0] == '.';
}

/// The folder itself, or the one that it lies in.
bool isDots(const char *name)
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

using NameTest = bool (*)(const char *);

std::vector<FolderEntry> entriesBut(NameTest isLeftOut, const QByteArray &folderPath)
{
    std::vector<FolderEntry> entries;
    if (folderPath.contains('\0'))
        return entries; // the system would list another, shorter path
    const std::unique_ptr<DIR, FolderCloser> folder(::opendir(folderPath.constData()));
    if (!folder)
        return entries;
    while (const dirent *entry = ::readdir(folder.get())) {
        if (!isLeftOut(entry->d_name))
            entries.push_back({QByteArray(entry->d_name), kindOf(folder.get(), entry)});
    }
    return entries;
}

} // namespace

std::vector<FolderEntry> visibleEntries(const QByteArray &folderPath)
{
    return entriesBut(isHidden, folderPath);
}

std::vector<FolderEntry> allEntries(const QByteArray &folderPath)
{
    return entriesBut(isDots, folderPath);
}

FolderEntry::Kind kindOfTarget(const QByteArray &path)
{
    struct stat status;
    if (path.contains('\0') || ::stat(path.constData(), &status) != 0)
        return FolderEntry::Kind::Other;
    return kindOfMode(status.st_mode);
}

FolderEntry::Kind kindOfEntry(const QByteArray &path)
{
    struct stat status;
    if (path.contains('\0') || ::lstat(path.constData(), &status) != 0)
        return FolderEntry::Kind::Other;
    return kindOfMode(status.st_mode);
}

FolderTarget targetOf(const QByteArray &folderPath, const FolderEntry &entry)
{
    const auto path = pathByAppending(folderPath, entry.name);
    if (entry.kind != FolderEntry::Kind::Link)
        return {path, entry.kind};
    const auto resolved = resolvedPath(path);
    if (resolved.isEmpty())
        return {path, FolderEntry::Kind::Other};
    return {resolved, kindOfTarget(resolved)};
}

bool itemExists(const QByteArray &path)
{
    struct stat status;
    return !path.isEmpty() && !path.contains('\0') && ::stat(path.constData(), &status) == 0;
}

bool hasEntry(const QByteArray &path)
{
    struct stat status;
    return !path.isEmpty() && !path.contains('\0') && ::lstat(path.constData(), &status) == 0;
}

bool isExecutableTarget(const QByteArray &path)
{
    return !path.isEmpty() && !path.contains('\0') && ::faccessat(AT_FDCWD, path.constData(), X_OK, AT_EACCESS) == 0;
}

QByteArray resolvedPath(const QByteArray &path)
{
    if (path.contains('\0'))
        return {};
    const std::unique_ptr<char, PathReleaser> resolved(::realpath(path.constData(), nullptr));
    return QByteArray(resolved.get());
}
