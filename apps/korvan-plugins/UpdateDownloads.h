#pragma once

#include "Output.h"
#include "PluginSession.h"

#include <QMap>

#include <optional>

// What the commands about updates do, each waiting for its end, with a progress bar where there is a terminal.

/// How reading one feed ended.
struct FeedResult
{
    std::optional<QString> latest;
    std::optional<KRError> error;
};

/// Reads the feeds of all plug-ins; results by identifier, for those that have a feed.
QMap<QString, FeedResult> checkFeeds(PluginSession &session, const Output &output);

/// One offered version to be downloaded.
struct OfferedVersion
{
    QString identifier;
    QString version;

    friend bool operator==(const OfferedVersion &, const OfferedVersion &) = default;
};

/// Downloads and unpacks these, all at once. The errors, in the order in which they came.
QList<KRError> downloadVersions(PluginSession &session, const QList<OfferedVersion> &versions, const Output &output);
/// The same for a whole list.
QList<KRError> downloadList(PluginSession &session, const UpdateList &updates, const Output &output);
