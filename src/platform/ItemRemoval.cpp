#include "platform/ItemRemoval.h"

#include "platform/FileDescriptor.h"
#include "platform/FileReading.h"
#include "platform/FolderNames.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

int removeEntry(int parent, const char *name);

int numberUnlessGone()
{
    return errno == ENOENT ? 0 : errno;
}

int removeEntries(int folder)
{
    const auto names = namesInFolder(folder);
    if (!names)
        return names.error().code;
    for (const auto &name : names.value()) {
        if (const int failure = removeEntry(folder, name.constData()))
            return failure;
    }
    return 0;
}

int removeFolder(int parent, const char *name)
{
    FileDescriptor folder(openFolder(parent, name));
    if (!folder.isOpen() && errno == EACCES && ::fchmodat(parent, name, S_IRWXU, 0) == 0)
        folder = FileDescriptor(openFolder(parent, name));
    if (!folder.isOpen())
        return numberUnlessGone();
    ::fchmod(folder.get(), S_IRWXU); // the removal of an entry tells when this was not enough
    if (const int failure = removeEntries(folder.get()))
        return failure;
    return ::unlinkat(parent, name, AT_REMOVEDIR) == 0 ? 0 : numberUnlessGone();
}

int removeEntry(int parent, const char *name)
{
    struct stat status;
    if (::fstatat(parent, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return numberUnlessGone();
    if (S_ISDIR(status.st_mode))
        return removeFolder(parent, name);
    return ::unlinkat(parent, name, 0) == 0 ? 0 : numberUnlessGone();
}

} // namespace

std::optional<KRError> removeItem(const QByteArray &path)
{
    const int failure = removeEntry(AT_FDCWD, path.constData());
    return failure == 0 ? std::nullopt : std::optional(systemError(failure));
}
