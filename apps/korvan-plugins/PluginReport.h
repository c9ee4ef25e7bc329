#pragma once

#include "manager/KRPluginManager.h"
#include "platform/OrderedDictionary.h"

/// A plug-in as the program describes it: identifier, name, version, path, what the manager thinks of it, what the
/// manifest says, and its commands.
OrderedVariantDictionary describePlugin(const KRPluginBundle &bundle, const KRPluginManager &manager);

/// The architectures of each executable in the bundle, under its path in the bundle's folder.
QVariantMap executablesOfPlugin(const KRPluginBundle &bundle);

/// The bundle's folder: absolute, without links and without a trailing slash.
QString pathOfPlugin(const KRPluginBundle &bundle);
