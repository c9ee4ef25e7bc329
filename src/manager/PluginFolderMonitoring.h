#pragma once

#include "platform/monitoring/KRFolderMonitor.h"

#include <QByteArray>
#include <QSet>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

/// How deep folders of plug-ins are watched: the plug-ins in them with everything, but for folders of these names.
FolderMonitorOptions pluginMonitorOptions(const QStringList &ignoredNames);

using FolderMonitors = std::vector<std::unique_ptr<KRFolderMonitor>>;

/// One monitor for each folder, all with the same block; folders that cannot be watched are left out.
FolderMonitors monitorsForFolders(
    const QSet<QByteArray> &paths, const FolderMonitorOptions &options, const std::function<void()> &changeBlock);
