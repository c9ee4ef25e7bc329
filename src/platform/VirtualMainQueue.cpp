#include "platform/VirtualMainQueue.h"

#include <QtGlobal>

#include <algorithm>

struct VirtualMainQueue::State
{
    /// By due time, then by the order of scheduling.
    std::map<std::pair<std::chrono::milliseconds, int>, std::function<void()>> calls;
    int latestNumber = 0;
};

class VirtualMainQueue::Call final : public ScheduledCall
{
public:
    Call(std::weak_ptr<State> state, std::pair<std::chrono::milliseconds, int> key)
        : m_state(std::move(state))
        , m_key(key)
    { }
    ~Call() override
    {
        if (const auto state = m_state.lock())
            state->calls.erase(m_key);
    }

private:
    std::weak_ptr<State> m_state;
    std::pair<std::chrono::milliseconds, int> m_key;
};

VirtualMainQueue::VirtualMainQueue()
    : m_state(std::make_shared<State>())
{ }

VirtualMainQueue::~VirtualMainQueue() = default;

void VirtualMainQueue::async(std::function<void()> work)
{
    const std::lock_guard lock(m_mutex);
    m_queued.push_back(std::move(work));
    m_hasWork.notify_all();
}

std::unique_ptr<ScheduledCall> VirtualMainQueue::callAfter(std::chrono::milliseconds delay, std::function<void()> work)
{
    const auto key = std::pair(after(delay), ++m_state->latestNumber);
    m_state->calls.emplace(key, std::move(work));
    return std::make_unique<Call>(m_state, key);
}

std::chrono::milliseconds VirtualMainQueue::after(std::chrono::milliseconds delay) const
{
    return m_now + std::clamp(delay, std::chrono::milliseconds(0), std::chrono::milliseconds::max() - m_now);
}

bool VirtualMainQueue::runNextQueued()
{
    std::function<void()> work;
    {
        const std::lock_guard lock(m_mutex);
        if (m_queued.empty())
            return false;
        work = std::move(m_queued.front());
        m_queued.pop_front();
    }
    work();
    return true;
}

bool VirtualMainQueue::runNext(std::chrono::milliseconds until)
{
    if (runNextQueued())
        return true;
    const auto next = m_state->calls.begin();
    if (next == m_state->calls.end() || next->first.first > until)
        return false;
    m_now = std::max(m_now, next->first.first);
    const auto work = std::move(next->second);
    m_state->calls.erase(next);
    work();
    return true;
}

void VirtualMainQueue::runQueued()
{
    while (runNextQueued()) { }
}

void VirtualMainQueue::runUntil(const std::function<bool()> &condition)
{
    runQueued();
    while (!condition()) {
        {
            std::unique_lock lock(m_mutex);
            if (!m_hasWork.wait_for(lock, std::chrono::minutes(1), [this] { return !m_queued.empty(); }))
                qFatal("nothing was queued");
        }
        runQueued();
    }
}

void VirtualMainQueue::advance(std::chrono::milliseconds duration)
{
    const auto end = after(duration);
    while (runNext(end)) { }
    m_now = end;
}

std::size_t VirtualMainQueue::scheduledCount() const
{
    return m_state->calls.size();
}

std::chrono::milliseconds VirtualMainQueue::untilNextCall() const
{
    return m_state->calls.empty() ? std::chrono::milliseconds(-1) : m_state->calls.begin()->first.first - m_now;
}
