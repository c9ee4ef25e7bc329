#pragma once

#include "platform/KRError.h"

#include <QString>
#include <QUrl>

#include <optional>

/// The version that a feed offers.
struct OfferedVersion
{
    QString pluginName;
    QString version;
    /// Of the archive; absolute or relative to the feed.
    QString downloadURL;
    /// Of the archive, in bytes.
    qint64 size = 0;
};

enum class UpdateFeedFormat { JSON, Appcast };

/// By the file's extension: "json", or "xml" and "rss". Nil for any other.
std::optional<UpdateFeedFormat> updateFeedFormat(const QString &file);

/// Writes a feed that offers the one version, in place of what is there. Nil when it was written.
std::optional<KRError> writeUpdateFeed(const OfferedVersion &version, UpdateFeedFormat format, const QString &file);
