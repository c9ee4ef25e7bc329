#include "platform/FolderLock.h"

#include "platform/FileReading.h"

#include <QDeadlineTimer>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

Result<FolderLock> FolderLock::lock(const QByteArray &folder, std::chrono::milliseconds longestWait)
{
    FileDescriptor descriptor(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor.get() < 0)
        return systemError(errno);
    constexpr std::chrono::milliseconds pause(2);
    const QDeadlineTimer deadline(longestWait);
    while (::flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            break; // this file system has no locks
        if (deadline.hasExpired())
            return systemError(EWOULDBLOCK);
        std::this_thread::sleep_for(pause);
    }
    return FolderLock(std::move(descriptor));
}
