#pragma once

#include "hosting/HostingOptions.h"
#include "state/KRPluginManagingState.h"

#include <QList>
#include <QUrl>

#include <memory>

// What a manager is made with. Both ask the environment that is in force.

/// The folders of the options, or else those of the user's settings.
QList<QUrl> pluginFolders(const HostingOptions &options);

/// What is remembered of the plug-ins, with the blocklist in force.
std::shared_ptr<KRPluginManagingState> makeManagingState();
