#include "support/ForkedProcess.h"

#include <QFile>

#include <csignal>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

bool writeText(const char *path, const QByteArray &text)
{
    QFile file(QString::fromLatin1(path));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
}

/// Whoever this is becomes root, in a world of its own.
bool becomeRootOfOwnWorld()
{
    const auto user = QByteArray::number(::getuid());
    const auto group = QByteArray::number(::getgid());
    return ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && writeText("/proc/self/setgroups", "deny")
        && writeText("/proc/self/uid_map", "0 " + user + " 1") && writeText("/proc/self/gid_map", "0 " + group + " 1");
}

/// Mounts nothing outside of this process.
bool enterOwnWorld()
{
    const bool isRoot = ::getuid() == 0;
    return (isRoot && ::unshare(CLONE_NEWNS) == 0) || becomeRootOfOwnWorld();
}

/// Where nothing may be mounted: no file can grow beyond this.
void limitFileSize(int size)
{
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{rlim_t(size), rlim_t(size)};
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0)
        qFatal("cannot limit the size of files");
}

bool mountSmallDisk(const QByteArray &folder, int size)
{
    return ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("none", folder.constData(), "tmpfs", 0, ("size=" + QByteArray::number(size)).constData()) == 0;
}

QByteArray readAll(int descriptor)
{
    QByteArray text;
    char buffer[4096];
    for (ssize_t count = 0; (count = ::read(descriptor, buffer, sizeof buffer)) > 0;)
        text.append(buffer, qsizetype(count));
    return text;
}

QByteArray resultOfChild(const std::function<QByteArray()> &work)
{
    int ends[2];
    if (::pipe(ends) != 0)
        qFatal("cannot make a pipe");
    ForkedProcess child([&] {
        ::close(ends[0]);
        const auto result = work();
        if (::write(ends[1], result.constData(), size_t(result.size())) != result.size())
            ::_exit(1);
    });
    ::close(ends[1]);
    auto result = readAll(ends[0]);
    ::close(ends[0]);
    const int status = child.wait();
    return status == 0 ? result : "the child has failed: " + QByteArray::number(status);
}

} // namespace

ForkedProcess::ForkedProcess(const std::function<void()> &work)
    : m_process(::fork())
{
    if (m_process < 0)
        qFatal("cannot start a child process");
    if (m_process == 0) {
        work();
        ::_exit(0);
    }
}

ForkedProcess::~ForkedProcess()
{
    kill();
    wait();
}

void ForkedProcess::kill()
{
    if (!m_hasEnded)
        ::kill(m_process, SIGKILL);
}

int ForkedProcess::wait()
{
    int status = 0;
    if (!m_hasEnded)
        ::waitpid(m_process, &status, 0);
    m_hasEnded = true;
    return status;
}

QByteArray resultOnSmallDisk(const QString &folder, int size, const std::function<QByteArray()> &work)
{
    return resultOfChild([&] {
        if (!enterOwnWorld() || !mountSmallDisk(QFile::encodeName(folder), size))
            limitFileSize(size / 2);
        return work();
    });
}

void makeSmallDiskReadOnly(const QString &folder)
{
    if (::mount("none", QFile::encodeName(folder).constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0)
        limitFileSize(0);
}
