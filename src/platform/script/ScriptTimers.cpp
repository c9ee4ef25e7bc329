#include "platform/script/ScriptTimers.h"

#include "platform/script/ScriptEngine.h"

#include <algorithm>

ScriptTimers::ScriptTimers(MainQueue &queue, std::function<void(int)> fire)
    : m_queue(queue)
    , m_fire(std::move(fire))
    , m_self(std::make_shared<ScriptTimers *>(this))
{ }

void ScriptTimers::start(int id, double milliseconds, bool repeats)
{
    // A repeating timer without a pause would keep the host from everything else.
    const double shortest = repeats ? 1 : 0;
    constexpr double longest = 1e12;
    const double delay = milliseconds > shortest ? std::min(milliseconds, longest) : shortest;
    m_timers[id] = {std::chrono::milliseconds(qint64(delay)), repeats, nullptr};
    schedule(id);
}

void ScriptTimers::stop(int id)
{
    m_timers.erase(id);
}

void ScriptTimers::schedule(int id)
{
    auto &timer = m_timers.at(id);
    timer.call = m_queue.callAfter(timer.delay, [this, id] {
        ScriptEngine::instance().whenLeft([self = std::weak_ptr(m_self), id] {
            if (const auto timers = self.lock())
                (*timers)->timeout(id);
        });
    });
}

void ScriptTimers::timeout(int id)
{
    const auto found = m_timers.find(id);
    if (found == m_timers.end())
        return; // stopped while it waited
    const bool repeats = found->second.repeats;
    if (!repeats)
        m_timers.erase(found);
    const auto self = std::weak_ptr(m_self);
    m_fire(id);
    if (repeats && !self.expired() && m_timers.contains(id))
        schedule(id);
}
