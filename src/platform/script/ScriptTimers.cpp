#include "platform/script/ScriptTimers.h"

#include "platform/script/ScriptEngine.h"

#include <algorithm>

ScriptTimers::ScriptTimers(MainQueue &queue, std::function<void(int)> fire)
    : m_queue(queue)
    , m_fire(std::move(fire))
    , m_life(std::make_shared<char>())
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
        ScriptEngine::instance().whenLeft([this, life = std::weak_ptr(m_life), id] {
            if (!life.expired())
                timeout(id);
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
    const auto life = std::weak_ptr(m_life);
    const auto fire = m_fire; // which may end the session, and this object with it
    fire(id);
    if (repeats && !life.expired() && m_timers.contains(id))
        schedule(id);
}
