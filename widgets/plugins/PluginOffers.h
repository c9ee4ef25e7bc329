#pragma once

#include <QString>

#include <optional>

class KRPluginManager;

// What the feeds offer for an installed plug-in, as of the latest check. Main thread only.

/// The highest version that is newer than the installed one, and not known not to work; nil for none.
std::optional<QString> offeredVersion(KRPluginManager &manager, const QString &identifier);

/// False for a plug-in that is not installed.
bool isNewerThanInstalled(KRPluginManager &manager, const QString &identifier, const QString &version);
