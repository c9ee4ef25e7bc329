#pragma once

#include "platform/Export.h"

#include <chrono>
#include <functional>
#include <memory>

/// A call that waits for its time. Destroying it cancels the call, also while the call is running.
class KORVAN_EXPORT ScheduledCall
{
public:
    virtual ~ScheduledCall();

protected:
    ScheduledCall() = default;
    ScheduledCall(const ScheduledCall &) = delete;
    ScheduledCall &operator=(const ScheduledCall &) = delete;
};

/// The main thread's event loop, as far as this library uses it: the one seam through which time passes.
class KORVAN_EXPORT MainQueue
{
public:
    virtual ~MainQueue();

    /// Runs `work` on the main thread, later, in the order of the calls. May be called from any thread.
    virtual void async(std::function<void()> work) = 0;

    /// Runs `work` once, on the main thread, after the delay. Calls of equal due time run in the order in which they
    /// were scheduled. Main thread only.
    [[nodiscard]] virtual std::unique_ptr<ScheduledCall> callAfter(
        std::chrono::milliseconds delay, std::function<void()> work) = 0;

    /// Time that never goes back. Main thread only.
    virtual std::chrono::milliseconds now() const = 0;
};

/// On Qt's event loop; needs a QCoreApplication.
class KORVAN_EXPORT QtMainQueue final : public MainQueue
{
public:
    void async(std::function<void()> work) override;
    std::unique_ptr<ScheduledCall> callAfter(std::chrono::milliseconds delay, std::function<void()> work) override;
    std::chrono::milliseconds now() const override;
};
