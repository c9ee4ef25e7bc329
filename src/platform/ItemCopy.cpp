#include "platform/ItemCopy.h"

#include "platform/FileReading.h"
#include "platform/FolderNames.h"

#include <QByteArrayList>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>

// Works relative to open folders, so that nothing that is moved or replaced meanwhile leads it elsewhere. Functions
// answer the system's number of what has failed, 0 for nothing.

namespace {

constexpr mode_t permissionBits = S_IRWXU | S_IRWXG | S_IRWXO;

/// Where an entry is: a name in an open folder, or a path for the outermost one.
struct Place
{
    int folder;
    const char *name;
};

int copyEntry(const Place &from, const Place &to, FileDescriptor &copy);

int lockAgainstRemoval(int descriptor)
{
    // A file system without locks has nobody look after what was left either.
    return ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK ? 0 : errno;
}

int writeAll(int file, const char *bytes, ssize_t size)
{
    while (size > 0) {
        const auto count = ::write(file, bytes, size_t(size));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count > 0) {
            bytes += count;
            size -= count;
        }
    }
    return 0;
}

int copyContent(int from, int to)
{
    // Not on the stack, of which folders in folders take their share.
    QByteArray buffer(65536, Qt::Uninitialized);
    for (;;) {
        const auto count = ::read(from, buffer.data(), size_t(buffer.size()));
        if (count == 0)
            return 0;
        if (count < 0 && errno != EINTR)
            return errno;
        if (const int failure = writeAll(to, buffer.constData(), count))
            return failure;
    }
}

int flush(int descriptor)
{
    // Some file systems of other computers have no flushing of folders, and say so in this way.
    return ::fsync(descriptor) == 0 || errno == EINVAL ? 0 : errno;
}

bool isForEveryFileSystem(const QByteArray &attribute)
{
    return attribute.startsWith("user.") || attribute.startsWith("system.posix_acl_");
}

int copyExtendedAttribute(int from, int to, const QByteArray &name)
{
    const auto size = ::fgetxattr(from, name.constData(), nullptr, 0);
    QByteArray value(qsizetype(std::max<ssize_t>(size, 0)), Qt::Uninitialized);
    if (size < 0 || ::fgetxattr(from, name.constData(), value.data(), size_t(size)) != size)
        return 0; // gone meanwhile
    const bool isSet = ::fsetxattr(to, name.constData(), value.constData(), size_t(size), 0) == 0;
    return isSet || errno != ENOSPC ? 0 : errno;
}

int copyExtendedAttributes(int from, int to)
{
    const auto size = ::flistxattr(from, nullptr, 0);
    if (size <= 0)
        return 0;
    QByteArray names(qsizetype(size), Qt::Uninitialized);
    names.resize(qsizetype(std::max<ssize_t>(::flistxattr(from, names.data(), size_t(size)), 0)));
    for (const auto &name : names.split('\0')) {
        if (!isForEveryFileSystem(name))
            continue;
        if (const int failure = copyExtendedAttribute(from, to, name))
            return failure;
    }
    return 0;
}

/// The last step of a file or folder: what comes after it would change its times, or fail for want of permissions.
int finish(int from, int to, const struct stat &status)
{
    if (const int failure = copyExtendedAttributes(from, to))
        return failure;
    const std::array times{status.st_atim, status.st_mtim};
    if (::fchmod(to, status.st_mode & permissionBits) != 0 || ::futimens(to, times.data()) != 0)
        return errno;
    return flush(to);
}

int copyFile(const Place &from, const Place &to, const struct stat &status, FileDescriptor &copy)
{
    const FileDescriptor source(::openat(from.folder, from.name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!source.isOpen())
        return errno;
    copy = FileDescriptor(::openat(to.folder, to.name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!copy.isOpen())
        return errno;
    if (const int failure = lockAgainstRemoval(copy.get()))
        return failure;
    if (const int failure = copyContent(source.get(), copy.get()))
        return failure;
    return finish(source.get(), copy.get(), status);
}

int copyEntries(int from, int to)
{
    const auto names = namesInFolder(from);
    if (!names)
        return names.error().code;
    for (const auto &name : names.value()) {
        FileDescriptor copy;
        if (const int failure = copyEntry({from, name.constData()}, {to, name.constData()}, copy))
            return failure;
    }
    return 0;
}

int copyFolder(const Place &from, const Place &to, const struct stat &status, FileDescriptor &copy)
{
    const FileDescriptor source(openFolder(from.folder, from.name));
    if (!source.isOpen())
        return errno;
    if (::mkdirat(to.folder, to.name, S_IRWXU) != 0)
        return errno;
    copy = FileDescriptor(openFolder(to.folder, to.name));
    if (!copy.isOpen())
        return errno;
    if (const int failure = lockAgainstRemoval(copy.get()))
        return failure;
    if (const int failure = copyEntries(source.get(), copy.get()))
        return failure;
    return finish(source.get(), copy.get(), status);
}

int copyLink(const Place &from, const Place &to, const struct stat &status)
{
    QByteArray target(PATH_MAX, '\0');
    const auto size = ::readlinkat(from.folder, from.name, target.data(), size_t(target.size()) - 1);
    if (size < 0)
        return errno;
    if (::symlinkat(target.constData(), to.folder, to.name) != 0)
        return errno;
    const std::array times{status.st_atim, status.st_mtim};
    return ::utimensat(to.folder, to.name, times.data(), AT_SYMLINK_NOFOLLOW) == 0 ? 0 : errno;
}

int copyEntry(const Place &from, const Place &to, FileDescriptor &copy)
{
    struct stat status;
    if (::fstatat(from.folder, from.name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno;
    switch (status.st_mode & S_IFMT) {
    case S_IFREG:
        return copyFile(from, to, status, copy);
    case S_IFDIR:
        return copyFolder(from, to, status, copy);
    case S_IFLNK:
        return copyLink(from, to, status);
    default: // pipes, sockets, devices: a name without content
        return ::mknodat(to.folder, to.name, status.st_mode, status.st_rdev) == 0 ? 0 : errno;
    }
}

} // namespace

Result<FileDescriptor> copyItem(const QByteArray &from, const QByteArray &to)
{
    FileDescriptor copy;
    if (const int failure = copyEntry({AT_FDCWD, from.constData()}, {AT_FDCWD, to.constData()}, copy))
        return systemError(failure);
    return copy;
}

int flushFolder(const QByteArray &path)
{
    const FileDescriptor folder(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder.isOpen() ? flush(folder.get()) : errno;
}
