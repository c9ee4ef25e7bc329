#pragma once

#include "platform/network/LTDownloadManager.h"
#include "updates/PluginDownloadProgress.h"

#include <atomic>
#include <memory>
#include <mutex>

/// What an updater shares with its callbacks, which it may not outlive. Thread-safe.
class UpdaterState
{
public:
    std::atomic<int> pluginVersionsStatus = 0;

    /// Null while no batch runs.
    std::shared_ptr<LTDownloadManager> downloader() const
    {
        const std::lock_guard lock(m_mutex);
        return m_downloader;
    }

    using Batch = quint64;
    Batch newBatch() { return ++m_lastBatch; }
    void setDownloader(Batch batch, std::shared_ptr<LTDownloadManager> downloader)
    {
        const std::lock_guard lock(m_mutex);
        m_batch = batch;
        m_downloader.swap(downloader);
    }
    /// Lets go of the batch's downloader; one of a later batch stays.
    void clearDownloader(Batch batch)
    {
        const std::lock_guard lock(m_mutex);
        if (m_batch == batch)
            m_downloader.reset();
    }

    PluginDownloadProgressHandler progressHandler() const
    {
        const std::lock_guard lock(m_mutex);
        return m_progressHandler;
    }
    void setProgressHandler(PluginDownloadProgressHandler handler)
    {
        const std::lock_guard lock(m_mutex);
        m_progressHandler.swap(handler);
    }

private:
    std::atomic<Batch> m_lastBatch = 0;
    mutable std::mutex m_mutex;
    Batch m_batch = 0;
    std::shared_ptr<LTDownloadManager> m_downloader;
    PluginDownloadProgressHandler m_progressHandler;
};
