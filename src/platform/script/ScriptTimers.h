#pragma once

#include "platform/MainQueue.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>

/// A session's timers on the main queue. They fire only while no script is on the stack, and end with this object. Main
/// thread only.
class ScriptTimers
{
public:
    ScriptTimers(MainQueue &queue, std::function<void(int)> fire);

    /// `milliseconds` may be anything that a script gives: what is no delay counts as none.
    void start(int id, double milliseconds, bool repeats);
    void stop(int id);
    void stopAll() { m_timers.clear(); }
    bool isEmpty() const { return m_timers.empty(); }

private:
    struct Timer
    {
        std::chrono::milliseconds delay;
        bool repeats;
        std::unique_ptr<ScheduledCall> call;
    };

    void schedule(int id);
    void timeout(int id);

    MainQueue &m_queue;
    std::function<void(int)> m_fire;
    std::map<int, Timer> m_timers;
    /// Tells work that waits for the engine whether these timers still exist.
    std::shared_ptr<char> m_life;
};
