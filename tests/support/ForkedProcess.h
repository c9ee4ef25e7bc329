#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <sys/types.h>

/// A child process that runs one function of the test, as a copy of this process with one thread. It ends with the
/// object.
class ForkedProcess
{
public:
    explicit ForkedProcess(const std::function<void()> &work);
    ~ForkedProcess();
    ForkedProcess(const ForkedProcess &) = delete;
    ForkedProcess &operator=(const ForkedProcess &) = delete;

    /// Ends it at once, wherever it is.
    void kill();
    /// Waits for its end. 0: the function has returned.
    int wait();

private:
    pid_t m_process;
    bool m_hasEnded = false;
};

/// Runs the work in a child process that sees a file system of its own, `size` bytes large, in the folder, and answers
/// what the work has answered. Where the machine allows no such file system (some containers), no single file can grow
/// beyond half of `size` instead: so let one file alone be the one that is too much.
QByteArray resultOnSmallDisk(const QString &folder, int size, const std::function<QByteArray()> &work);

/// Makes the small file system of the calling child process read-only; without one, nothing can be written any more.
void makeSmallDiskReadOnly(const QString &folder);
