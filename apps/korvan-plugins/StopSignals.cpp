#include "StopSignals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

sigset_t stopSignals()
{
    sigset_t set;
    ::sigemptyset(&set);
    ::sigaddset(&set, SIGINT);
    ::sigaddset(&set, SIGTERM);
    return set;
}

} // namespace

StopSignals::StopSignals(std::function<void()> stop)
{
    const auto set = stopSignals();
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
    m_descriptor = ::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
        [descriptor = m_descriptor, stop = std::move(stop)] {
            signalfd_siginfo signal; // taken, or it would end the program once it is let through again
            if (::read(descriptor, &signal, sizeof signal) == sizeof signal)
                stop();
        });
}

StopSignals::~StopSignals()
{
    m_notifier.reset();
    ::close(m_descriptor);
    const auto set = stopSignals();
    ::pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}
