#include "platform/FileIdentity.h"

#include <sys/stat.h>

std::optional<FileIdentity> identityOfFile(const QByteArray &path)
{
    struct stat status;
    if (::stat(path.constData(), &status) != 0)
        return std::nullopt;
    constexpr qint64 nanosecondsPerSecond = 1'000'000'000;
    const auto modified = status.st_mtim.tv_sec * nanosecondsPerSecond + status.st_mtim.tv_nsec;
    return FileIdentity{status.st_dev, status.st_ino, modified, status.st_size};
}
