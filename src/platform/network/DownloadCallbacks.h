#pragma once

#include "platform/KRError.h"
#include "platform/network/URLResponse.h"

#include <QString>
#include <QUrl>

#include <functional>
#include <optional>

// What users of LTDownloadManager are told. Everything is called on the network thread.

/// The end of one task: the downloaded file, the server's response, an error. With an error there is no file, and the
/// response is what was known of it. An HTTP status that says "failed" is no error. The file is removed after the call,
/// unless it was moved away.
using DownloadCompletion =
    std::function<void(const QUrl &temporaryFile, const URLResponse &response, const std::optional<KRError> &error)>;

/// Hears how downloads get on.
class LTDownloadManagerDelegate
{
public:
    virtual ~LTDownloadManagerDelegate() = default;

    /// A part of the task's file has been written. `totalBytesExpectedToWrite` is -1 when the server has not told.
    virtual void downloadTaskDidWriteData(
        const QString &identifier, qint64 totalBytesWritten, qint64 totalBytesExpectedToWrite) = 0;
    /// The task brings no more, however it ended. Its completion is called next.
    virtual void downloadTaskDidEnd(const QString &identifier) = 0;
};
