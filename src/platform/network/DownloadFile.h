#pragma once

#include "platform/network/DownloadCallbacks.h"
#include "platform/network/TransferReceiver.h"

#include <QTemporaryFile>
#include <QUrl>

#include <functional>

/// Writes a transfer's body into a temporary file. Network thread only.
class DownloadFile final : public TransferReceiver
{
public:
    using Progress = std::function<void(qint64 written, qint64 expected)>;

    /// `url` is for messages. `folder` is where the file is made; empty: the system's. The file is removed after the
    /// completion's return, unless it was moved away, and without a completion when this object is destroyed before.
    DownloadFile(QUrl url, const QString &folder, Progress progress, DownloadCompletion completion);

    std::optional<KRError> receive(QByteArrayView bytes, qint64 expectedSize) override;
    void finish(const URLResponse &response, const std::optional<KRError> &error) override;

private:
    std::optional<KRError> openFile();

    QUrl m_url;
    QString m_folder;
    QTemporaryFile m_file;
    qint64 m_written = 0;
    Progress m_progress;
    DownloadCompletion m_completion;
};
