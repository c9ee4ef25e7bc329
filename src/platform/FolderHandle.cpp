#include "platform/FolderHandle.h"

#include "platform/FileReading.h"

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

namespace {

/// Deeper than any path that the system can be given at once.
constexpr int deepestFolder = 4096;

constexpr int openFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

std::optional<KRError> errorIf(int number)
{
    return number == 0 ? std::nullopt : std::optional(systemError(number));
}

bool isSameFolder(const struct stat &first, const struct stat &second)
{
    return first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

} // namespace

bool isSingleName(const QByteArray &name)
{
    return !name.isEmpty() && name != "." && name != ".." && !name.contains('/') && !name.contains('\0');
}

FolderHandle::FolderHandle(FileDescriptor descriptor)
    : m_descriptor(std::move(descriptor))
{ }

Result<FolderHandle> FolderHandle::open(const QByteArray &path)
{
    FileDescriptor folder(path.contains('\0') ? -1 : ::open(path.constData(), openFlags));
    if (!folder.isOpen())
        return systemError(path.contains('\0') ? EINVAL : errno);
    return FolderHandle(std::move(folder));
}

Result<FolderHandle> FolderHandle::openFolder(const QByteArray &name, Links links) const
{
    if (!isSingleName(name))
        return systemError(EINVAL);
    const int flags = links == Links::Refuse ? openFlags | O_NOFOLLOW : openFlags;
    FileDescriptor folder(::openat(descriptor(), name.constData(), flags));
    if (!folder.isOpen())
        return systemError(errno);
    return FolderHandle(std::move(folder));
}

std::optional<KRError> FolderHandle::makeFolder(const QByteArray &name) const
{
    if (!isSingleName(name))
        return systemError(EINVAL);
    constexpr mode_t usualFolder = 0777;
    if (::mkdirat(descriptor(), name.constData(), usualFolder) == 0 || errno == EEXIST)
        return std::nullopt;
    return systemError(errno);
}

/// `make` answers whether it could; it fails with EEXIST when something is there, which it does not touch.
template <class Make>
int FolderHandle::makeInPlaceOf(const QByteArray &name, Make make) const
{
    if (!isSingleName(name))
        return EINVAL;
    constexpr int mostAttempts = 8; // somebody else may be making the same name over and over
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        if (make())
            return 0;
        if (errno != EEXIST)
            return errno;
        if (::unlinkat(descriptor(), name.constData(), 0) != 0 && errno != ENOENT)
            return errno;
    }
    return EEXIST;
}

Result<FileDescriptor> FolderHandle::createFile(const QByteArray &name) const
{
    constexpr mode_t usualFile = 0666;
    FileDescriptor file;
    const int failure = makeInPlaceOf(name, [&] {
        file = FileDescriptor(
            ::openat(descriptor(), name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, usualFile));
        return file.isOpen();
    });
    if (failure != 0)
        return systemError(failure);
    return file;
}

std::optional<KRError> FolderHandle::makeLink(const QByteArray &name, const QByteArray &target) const
{
    return errorIf(
        makeInPlaceOf(name, [&] { return ::symlinkat(target.constData(), descriptor(), name.constData()) == 0; }));
}

std::optional<KRError> FolderHandle::removeEntry(const QByteArray &name) const
{
    if (!isSingleName(name))
        return systemError(EINVAL);
    return errorIf(::unlinkat(descriptor(), name.constData(), 0) == 0 ? 0 : errno);
}

bool FolderHandle::isInside(const FolderHandle &other) const
{
    struct stat sought, current, above;
    if (::fstat(other.descriptor(), &sought) != 0 || ::fstat(descriptor(), &current) != 0)
        return false;
    FileDescriptor folder(::openat(descriptor(), ".", openFlags));
    for (int steps = 0; steps < deepestFolder; ++steps) {
        if (isSameFolder(current, sought))
            return true;
        folder = FileDescriptor(::openat(folder.get(), "..", openFlags));
        if (!folder.isOpen() || ::fstat(folder.get(), &above) != 0 || isSameFolder(above, current))
            return false;
        current = above;
    }
    return false;
}
