#pragma once

#include "platform/network/DownloadCallbacks.h"
#include "updates/PluginDownloadProgress.h"

#include <QHash>

#include <mutex>

/// Adds up how the downloads of one batch get on. Thread-safe.
class DownloadProgress final : public LTDownloadManagerDelegate
{
public:
    explicit DownloadProgress(PluginDownloadProgressHandler handler);

    /// Before the task is resumed.
    void taskAdded(const QString &task, const QString &identifier, const QString &version, const QUrl &url);
    void downloadTaskDidWriteData(
        const QString &task, qint64 totalBytesWritten, qint64 totalBytesExpectedToWrite) override;
    void downloadTaskDidEnd(const QString &task) override;

private:
    void update(PluginDownloadProgress &progress, qint64 received, qint64 expected);

    PluginDownloadProgressHandler m_handler;
    std::mutex m_mutex;
    QHash<QString, PluginDownloadProgress> m_tasks;
    qint64 m_received = 0;
    /// Of the tasks whose size is known.
    qint64 m_expected = 0;
    qsizetype m_tasksOfUnknownSize = 0;
};
