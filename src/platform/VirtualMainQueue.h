#pragma once

#include "platform/Export.h"
#include "platform/MainQueue.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

/// A main queue whose time passes only when somebody says so: for tests, of hosts and of plug-ins. Main thread only,
/// but for async().
class KORVAN_EXPORT VirtualMainQueue final : public MainQueue
{
public:
    VirtualMainQueue();
    ~VirtualMainQueue() override;

    void async(std::function<void()> work) override;
    std::unique_ptr<ScheduledCall> callAfter(std::chrono::milliseconds delay, std::function<void()> work) override;
    std::chrono::milliseconds now() const override { return m_now; }

    /// Runs one thing: the first that was queued with async(), or else the earliest call that becomes due until then,
    /// at its own moment. False when there is neither.
    bool runNext(std::chrono::milliseconds until);
    /// Runs what was queued with async(), also what that queues in turn. No time passes.
    void runQueued();
    /// Runs what is queued, and what other threads queue, until the condition holds. Fails the program after a minute.
    void runUntil(const std::function<bool()> &condition);
    /// Lets time pass, and runs everything that becomes due at its own moment, in order.
    void advance(std::chrono::milliseconds duration);
    /// How many scheduled calls wait for their time.
    std::size_t scheduledCount() const;
    /// How long until the earliest of them; -1 ms when there is none.
    std::chrono::milliseconds untilNextCall() const;

private:
    struct State;
    class Call;

    bool runNextQueued();
    /// Time does not go back, and ends.
    std::chrono::milliseconds after(std::chrono::milliseconds delay) const;

    std::shared_ptr<State> m_state;
    std::chrono::milliseconds m_now{0};
    std::mutex m_mutex;
    std::condition_variable m_hasWork;
    std::deque<std::function<void()>> m_queued;
};
