#include "widgets/plugins/ProgressRelay.h"

#include "platform/LTAppEnvironment.h"

ProgressRelay::ProgressRelay(PluginDownloadProgressHandler deliver)
    : m_deliver(std::move(deliver))
{ }

void ProgressRelay::take(const PluginDownloadProgress &progress)
{
    {
        const std::lock_guard lock(m_mutex);
        m_latest = progress;
        if (std::exchange(m_isQueued, true))
            return;
    }
    LTAppEnvironment::runOnMainQueue([self = shared_from_this()] { self->deliverLatest(); });
}

void ProgressRelay::deliverLatest()
{
    PluginDownloadProgress progress;
    {
        const std::lock_guard lock(m_mutex);
        progress = m_latest;
        m_isQueued = false;
    }
    if (m_deliver)
        m_deliver(progress);
}
