#pragma once

#include "state/IncompatibleVersions.h"

#include <QString>
#include <QUrl>

#include <optional>

/// What the names of blocklist files depend on.
struct BlocklistTarget
{
    /// The host application's.
    QString applicationVersion;
    /// The processor's name where the lists are made for it separately; "" elsewhere.
    QString processor;

    /// Of the current environment, on this machine. Main thread only.
    static BlocklistTarget current();
};

/// "PluginsToDisable", with the processor's name on 64-bit x86: the list that ships inside the application.
QString shippedBlocklistName(const BlocklistTarget &target);
/// The downloaded list's file name in the support folder; has no slashes.
QString downloadedBlocklistName(const BlocklistTarget &target);
/// The list's file name on the vendor's server, which has no "PluginsToDisable" in front. Not yet encoded for a URL.
QString remoteBlocklistName(const BlocklistTarget &target);

/// Where the lists lie; a value, so that another thread may read them.
struct BlocklistFiles
{
    /// JSON; need not exist.
    QUrl downloaded;
    /// A property list; empty when the application ships none.
    QUrl shipped;

    /// Of the current environment, on this machine. Main thread only.
    static BlocklistFiles current();
};

/// The list in force: the downloaded one, else, when that cannot be read or is empty, the shipped one; nil when there
/// is neither. An entry that is no text is left out. Reentrant.
std::optional<IncompatibleVersions> readBlocklist(const BlocklistFiles &files);
