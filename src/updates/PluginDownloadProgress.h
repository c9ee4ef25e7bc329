#pragma once

#include <QString>
#include <QUrl>

#include <functional>

/// How one archive of a download gets on, and the batch that it belongs to. Sizes are in bytes, after decoding.
struct PluginDownloadProgress
{
    /// What is downloaded; both empty for an archive that was asked for by its URL alone.
    QString identifier;
    QString version;
    QUrl url;

    qint64 bytesReceived = 0;
    /// -1 when the server has not told.
    qint64 bytesExpected = -1;
    qint64 totalBytesReceived = 0;
    /// -1 until the size of every archive is known.
    qint64 totalBytesExpected = -1;

    friend bool operator==(const PluginDownloadProgress &, const PluginDownloadProgress &) = default;
};

/// Called on the network thread after each part that has arrived; must not wait for another thread.
using PluginDownloadProgressHandler = std::function<void(const PluginDownloadProgress &progress)>;
