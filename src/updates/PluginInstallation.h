#pragma once

#include "platform/KRError.h"

#include <QString>
#include <QUrl>

#include <optional>

/// The copy of a plug-in that an update takes the place of.
struct InstalledPlugin
{
    QUrl url;
    /// Nil when its manifest names none.
    std::optional<QString> version;
};

/// Moves a new bundle to where the installed one is, or into the main plug-ins folder when none is. The installed copy
/// goes into the warehouse, to the folder of its version, or to the trash when there is something already.
///
/// True when the new bundle is at its place. `error` is always written to: nil (KRError()) when nothing went wrong; the
/// failure of making the installed copy's folder in the warehouse is reported even when the installation succeeds.
/// - An installed copy that cannot be moved aside is only logged, and the installation goes on: under another folder
///   name it succeeds and both are installed.
/// - When the new bundle cannot be moved, that is logged and reported, and the installed copy is back at its place, or
///   has never left it: a bundle from another file system is copied beside its place first.
/// - An identifier, or the version of an installed copy, that the warehouse refuses is an error before anything is
///   created or moved. An installed copy without a version, or with an empty one, has no folder in the warehouse; it
///   goes to the trash.
///
/// On one file system everything is a rename. Killed at any moment, also between two disks, it leaves the complete old
/// or the complete new plug-in at its place, or none there with complete ones in the warehouse. Any thread, one
/// installation of an identifier at a time.
bool installPlugin(const QUrl &newBundle, const QString &identifier, const std::optional<InstalledPlugin> &installed,
    const QUrl &mainPluginsFolder, KRError *error = nullptr);

/// Whether there are plug-ins at both URLs that name their versions, and the first is the newer one. Reads both
/// manifests. Main thread.
bool isPluginNewerThan(const QUrl &first, const QUrl &second);
