#pragma once

#include "platform/KRError.h"

#include <QString>
#include <QUrl>

// The warehouse: where updates lie until they are installed, and the versions that they have replaced.
//
// It is a folder of its own per identifier and version, "<warehouse>/<identifier>/<version>/", with the plug-in
// somewhere below it. Every function may be called on any thread; nothing is remembered between calls.

/// The folder "PluginsWarehouse" of the application's own data; asking for it creates it. Empty when the application
/// has no place for its data.
QUrl pluginsWarehouseURL();

/// The folder of a plug-in's version. It need not exist, and it is not created here.
///
/// Both texts come from strangers. They are used exactly as they are given, slashes included, so that "a" at "b/c" and
/// "a/b" at "c" are one folder, and "/etc" is a folder below the warehouse. Refused, with an empty URL and an error,
/// before anything is created:
/// - a text that names no folder of its own ("", ".", "/"): the result would be the warehouse or all of a plug-in's
///   versions;
/// - one with a ".." between its slashes: what that leads to is for the links on the way to say. "a..b" is a name;
/// - one with a zero character, at which the system would end the path;
/// - those whose folder is, through links that already lie in the warehouse, outside of it; and links on the way that
///   lead nowhere (yet).
///
/// The last is true at the time of the question. Whoever writes into the folder later, while others could put links
/// there, makes sure again.
QUrl warehousePluginFolder(const QString &identifier, const QString &version, KRError *error = nullptr);

/// The folder of all of a plug-in's versions, under the same conditions.
QUrl warehouseFolderOfPlugin(const QString &identifier, KRError *error = nullptr);

/// The plug-in in the folder of that version; empty when there is none, or no such folder, or when its unpacking has
/// not come to its end.
QUrl downloadedPluginURL(const QString &identifier, const QString &version);

/// The first entry with the extension of plug-ins, whatever its kind and in the file system's own order: among the
/// folder's own entries, else in its first subfolder that has one, each searched in the same way. Hidden entries are
/// passed over. Empty when there is none or the folder cannot be listed.
///
/// A link to a folder counts as that folder as long as it leads to a place inside `folder`; what an archive has brought
/// must not have others' plug-ins found, nor the whole disk searched. A folder to which several links lead is searched
/// once, so that links in circles come to an end.
QUrl firstPluginBundleFoundInFolder(const QUrl &folder);

enum class WarehouseRemoval { Removed, Failed };

/// Removes the warehouse with everything in it; links go, what they lead to stays. A failure is said in the system's
/// log; what could be removed until then is gone.
WarehouseRemoval removePluginsWarehouse();
