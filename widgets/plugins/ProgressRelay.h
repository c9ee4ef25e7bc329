#pragma once

#include "updates/PluginDownloadProgress.h"

#include <memory>
#include <mutex>

/// Brings what the network thread tells of a download to the main thread: the latest only, for as long as the main
/// thread has other things to do.
class ProgressRelay final : public std::enable_shared_from_this<ProgressRelay>
{
public:
    /// `deliver` is called on the main thread.
    explicit ProgressRelay(PluginDownloadProgressHandler deliver);

    /// Any thread.
    void take(const PluginDownloadProgress &progress);
    /// Nothing is delivered any more. Main thread.
    void stop() { m_deliver = {}; }

private:
    void deliverLatest();

    PluginDownloadProgressHandler m_deliver;
    std::mutex m_mutex;
    PluginDownloadProgress m_latest;
    bool m_isQueued = false;
};
