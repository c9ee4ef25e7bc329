#include "updates/DownloadProgress.h"

DownloadProgress::DownloadProgress(PluginDownloadProgressHandler handler)
    : m_handler(std::move(handler))
{ }

void DownloadProgress::taskAdded(
    const QString &task, const QString &identifier, const QString &version, const QUrl &url)
{
    const std::lock_guard lock(m_mutex);
    m_tasks.insert(task, {identifier, version, url});
    ++m_tasksOfUnknownSize;
}

void DownloadProgress::downloadTaskDidWriteData(
    const QString &task, qint64 totalBytesWritten, qint64 totalBytesExpectedToWrite)
{
    std::unique_lock lock(m_mutex);
    auto &progress = m_tasks[task];
    update(progress, totalBytesWritten, totalBytesExpectedToWrite);
    const auto reported = progress;
    lock.unlock();
    m_handler(reported);
}

/// What had no size has one now; what was given up is expected no more.
void DownloadProgress::downloadTaskDidEnd(const QString &task)
{
    const std::lock_guard lock(m_mutex);
    auto &progress = m_tasks[task];
    update(progress, progress.bytesReceived, progress.bytesReceived);
}

void DownloadProgress::update(PluginDownloadProgress &progress, qint64 received, qint64 expected)
{
    m_tasksOfUnknownSize += int(expected < 0) - int(progress.bytesExpected < 0);
    m_expected += qMax(qint64(0), expected) - qMax(qint64(0), progress.bytesExpected);
    m_received += received - progress.bytesReceived;
    progress.bytesReceived = received;
    progress.bytesExpected = expected;
    progress.totalBytesReceived = m_received;
    progress.totalBytesExpected = m_tasksOfUnknownSize > 0 ? -1 : m_expected;
}
