#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

/// Ends a command that runs until somebody stops it: SIGINT and SIGTERM become a call on the event loop for as long as
/// this lives. One at a time.
class StopSignals
{
public:
    explicit StopSignals(std::function<void()> stop);
    ~StopSignals();
    StopSignals(const StopSignals &) = delete;
    StopSignals &operator=(const StopSignals &) = delete;

private:
    int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
