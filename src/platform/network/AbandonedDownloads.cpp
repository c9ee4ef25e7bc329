#include "platform/network/AbandonedDownloads.h"

#include "platform/FileDescriptor.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <fcntl.h>
#include <mutex>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool isFirstLook(const QString &folder)
{
    static std::mutex mutex;
    static auto &seen = *new QSet<QString>; // never destroyed: downloads may run until the program's very end
    const std::lock_guard lock(mutex);
    if (seen.contains(folder))
        return false;
    seen.insert(folder);
    return true;
}

bool isOwnFile(int file)
{
    struct stat status;
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

void removeUnlessInUse(const QByteArray &path)
{
    const FileDescriptor file(::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file.isOpen() && isOwnFile(file.get()) && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
        ::unlink(path.constData());
}

} // namespace

void markAsInUse(int file)
{
    ::flock(file, LOCK_EX | LOCK_NB);
}

void removeAbandonedDownloads(const QString &folder)
{
    if (!isFirstLook(folder))
        return;
    const QDir files(folder);
    const auto names = files.entryList({downloadFilePrefix + u'*'}, QDir::Files | QDir::Hidden);
    for (const auto &name : names)
        removeUnlessInUse(QFile::encodeName(files.filePath(name)));
}
