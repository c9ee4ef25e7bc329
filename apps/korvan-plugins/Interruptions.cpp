#include "Interruptions.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// What the signal's handler writes to, on whichever thread it runs.
volatile std::sig_atomic_t interruptPipe = -1;

void handleInterrupt(int /*signal*/)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(interruptPipe, &byte, 1);
}

bool isUsual(int signal)
{
    struct sigaction current = {};
    return ::sigaction(signal, nullptr, &current) == 0 && !(current.sa_flags & SA_SIGINFO)
        && current.sa_handler == SIG_DFL;
}

} // namespace

Interruptions::Interruptions()
{
    int ends[2];
    if (!isUsual(SIGINT) || ::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_isInForce = true;
    m_read = ends[0];
    interruptPipe = ends[1];
    m_notifier = std::make_unique<QSocketNotifier>(m_read, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { interrupt(); });
    struct sigaction once = {};
    once.sa_handler = &handleInterrupt;
    once.sa_flags = int(SA_RESETHAND) | SA_RESTART;
    ::sigaction(SIGINT, &once, nullptr);
}

Interruptions::~Interruptions()
{
    if (!m_isInForce)
        return;
    struct sigaction usual = {};
    usual.sa_handler = SIG_DFL;
    ::sigaction(SIGINT, &usual, nullptr);
    m_notifier.reset();
    ::close(m_read);
    ::close(interruptPipe);
}

std::shared_ptr<void> Interruptions::add(
    const std::shared_ptr<Interruptions> &interruptions, std::function<void()> interrupted)
{
    const auto callback = std::make_shared<std::function<void()>>(std::move(interrupted));
    interruptions->m_callbacks.push_back(callback);
    return {callback.get(), [interruptions, callback](void *) { interruptions->m_callbacks.remove(callback); }};
}

void Interruptions::interrupt()
{
    m_notifier->setEnabled(false); // the signal comes here once
    const auto asked = m_callbacks; // a callback may end any of them, and this object with the last
    for (const auto &callback : asked)
        (*callback)();
}
