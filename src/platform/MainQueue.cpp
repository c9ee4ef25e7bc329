#include "platform/MainQueue.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <limits>

namespace {

class TimerCall final : public ScheduledCall
{
public:
    TimerCall(std::chrono::milliseconds delay, std::function<void()> work)
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        // The work moves out first: it may destroy this call.
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [work = std::move(work)]() mutable {
            const auto running = std::move(work);
            running();
        });
        constexpr std::chrono::milliseconds longest(std::numeric_limits<int>::max());
        m_timer.start(std::clamp(delay, std::chrono::milliseconds(0), longest));
    }

private:
    QTimer m_timer;
};

} // namespace

ScheduledCall::~ScheduledCall() = default;
MainQueue::~MainQueue() = default;

void QtMainQueue::async(std::function<void()> work)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}

std::unique_ptr<ScheduledCall> QtMainQueue::callAfter(std::chrono::milliseconds delay, std::function<void()> work)
{
    return std::make_unique<TimerCall>(delay, std::move(work));
}

std::chrono::milliseconds QtMainQueue::now() const
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch());
}
