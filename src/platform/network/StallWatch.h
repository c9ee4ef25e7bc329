#pragma once

#include <QtGlobal>

#include <algorithm>
#include <chrono>

/// Notices when too little happens: when connecting takes too long, or fewer than so many bytes arrive within the
/// timeout. A pure value; time is passed in.
class StallWatch
{
public:
    using Clock = std::chrono::steady_clock;

    StallWatch(std::chrono::milliseconds timeout, qint64 minimumBytes)
        : m_timeout(
            std::clamp<std::chrono::milliseconds>(timeout, std::chrono::milliseconds(0), std::chrono::hours(24 * 365)))
        , m_minimumBytes(minimumBytes)
    { }

    /// Counts anew from now on.
    void restart(Clock::time_point now)
    {
        m_start = now;
        m_bytes = 0;
        m_running = true;
    }

    void received(qint64 bytes, Clock::time_point now)
    {
        m_bytes += bytes;
        if (m_bytes >= m_minimumBytes)
            restart(now);
    }

    /// Time that does not count.
    void postpone(Clock::duration duration) { m_start += duration; }

    void pause() { m_running = false; }
    bool isRunning() const { return m_running; }

    /// From when on the transfer counts as stalled, unless more arrives. While paused it always lies ahead.
    Clock::time_point deadline(Clock::time_point now) const { return (m_running ? m_start : now) + m_timeout; }

private:
    std::chrono::milliseconds m_timeout;
    qint64 m_minimumBytes;
    Clock::time_point m_start;
    qint64 m_bytes = 0;
    bool m_running = false;
};
