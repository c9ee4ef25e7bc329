#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

// Main thread only.

/// "Plugins" in the application's support folder, created when missing.
QUrl applicationPluginsFolder();

/// The place for a plug-in that was not saved yet.
QUrl unsavedPluginURL();

/// The folders that a host usually hands to the manager: the application's, then each path of the user default
/// "AdditionalPluginFolders" at which there is something, in order.
QList<QUrl> configuredPluginFolders();

/// Names of folders that are never searched: those of package managers and version control, and the user default
/// "IgnoredPlugins".
QStringList ignoredFolderNames();

/// What of the second path follows the components that it has in common with the first, joined by "/".
QString relativePath(const QByteArray &from, const QByteArray &path);
