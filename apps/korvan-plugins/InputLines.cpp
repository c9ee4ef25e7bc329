#include "InputLines.h"

#include "platform/LTAppEnvironment.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

/// A line that is longer ends there.
constexpr qsizetype longestLine = 64 * 1024;

bool isOpen(int descriptor)
{
    return ::fcntl(descriptor, F_GETFD) >= 0;
}

} // namespace

InputLines::InputLines(int descriptor)
    : m_descriptor(descriptor)
    , m_life(std::make_shared<char>())
{ }

InputLines::~InputLines() = default;

void InputLines::next(Callback callback)
{
    m_callback = std::move(callback);
    if (!m_notifier && !isOpen(m_descriptor))
        m_hasEnded = true;
    if (m_hasEnded || m_bytes.contains('\n')) {
        LTAppEnvironment::runOnMainQueue([this, life = std::weak_ptr(m_life)] {
            if (!life.expired())
                deliver();
        });
        return;
    }
    if (!m_notifier) {
        m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
    }
    m_notifier->setEnabled(true);
}

void InputLines::read()
{
    char buffer[4096];
    const auto count = ::read(m_descriptor, buffer, sizeof buffer);
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count > 0)
        m_bytes.append(buffer, count);
    else
        m_hasEnded = true;
    deliver();
}

void InputLines::deliver()
{
    const auto end = m_bytes.indexOf('\n');
    const bool isComplete = end >= 0 || m_hasEnded || m_bytes.size() >= longestLine;
    if (!isComplete || !m_callback)
        return;
    if (m_notifier)
        m_notifier->setEnabled(false); // what comes next stays where it is until somebody asks
    std::optional<QString> line;
    if (end >= 0 || !m_bytes.isEmpty()) {
        line = QString::fromUtf8(end >= 0 ? m_bytes.first(end) : m_bytes);
        m_bytes.remove(0, end >= 0 ? end + 1 : m_bytes.size());
        if (line->endsWith(u'\r'))
            line->chop(1);
    }
    std::exchange(m_callback, nullptr)(line);
}
