#pragma once

#include "bundles/PluginTable.h"
#include "commands/CommandTable.h"
#include "platform/MenuItem.h"

#include <QVariantMap>

class Menu;

// Main thread only.

/// Appends the items of all enabled plug-ins, then sorts the menu's own level: a submenu for each plug-in that has
/// something to show, or the items themselves of one whose description is marked "isRoot".
void addPluginsToMenu(const PluginTable &plugins, Menu &menu, const MenuAction &selector);

/// Appends what a menu description lists under "items": commands by identifier, "-" for a separator, and objects for
/// groups. A group goes into the submenu of an item that has its title already; when that item has no submenu the group
/// is dropped. Everything else in the list is skipped, also identifiers that name no command.
void addCommandsToMenu(
    const CommandTable &commands, Menu &menu, const QVariantMap &description, const MenuAction &selector);
