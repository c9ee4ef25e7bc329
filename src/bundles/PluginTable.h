#pragma once

#include "bundles/KRPluginBundle.h"

#include <QMap>
#include <QString>

#include <memory>

/// Plug-ins by identifier. Copies share their memory: one that was handed out stays as it is over every reload.
using PluginTable = QMap<QString, std::shared_ptr<KRPluginBundle>>;
