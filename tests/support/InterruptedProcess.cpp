#include "support/InterruptedProcess.h"

#include <QtGlobal>

#include <csignal>
#include <limits>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

pid_t startTraced(const std::function<void()> &work)
{
    const pid_t process = ::fork();
    if (process < 0)
        qFatal("cannot start a child process");
    if (process == 0) {
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
            ::_exit(1);
        ::raise(SIGSTOP);
        work();
        ::_exit(0);
    }
    return process;
}

/// The number of moments until the end of the child, which comes at the given one at the latest.
int follow(pid_t process, int lastMoment)
{
    int status = 0;
    ::waitpid(process, &status, 0);
    if (!WIFSTOPPED(status))
        qFatal("this system does not let a process follow its child");
    for (int moment = 0;; ++moment) {
        if (moment == lastMoment)
            ::kill(process, SIGKILL);
        else
            ::ptrace(PTRACE_SYSCALL, process, nullptr, nullptr);
        ::waitpid(process, &status, 0);
        if (WIFEXITED(status) || WIFSIGNALED(status))
            return moment;
    }
}

} // namespace

int momentsOf(const std::function<void()> &work)
{
    return follow(startTraced(work), std::numeric_limits<int>::max());
}

void runAndKillAt(int moment, const std::function<void()> &work)
{
    follow(startTraced(work), moment);
}
