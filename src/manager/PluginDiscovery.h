#pragma once

#include "bundles/PluginTable.h"
#include "manager/FolderWalk.h"

#include <functional>
#include <optional>

/// Decides whether a plug-in that was found starts enabled.
using ShouldEnablePlugin = std::function<bool(const QString &identifier, const std::optional<QString> &version)>;

/// The plug-ins that a walk has found. Of two with the same identifier, side by side in one folder, the first one stays
/// and the system log says so; one from a subfolder, or from a folder walked later, silently takes the place of
/// another. Main thread only.
PluginTable pluginsFoundBy(const FolderWalk &walk, const ShouldEnablePlugin &shouldEnable);
