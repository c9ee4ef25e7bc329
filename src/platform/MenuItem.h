#pragma once

#include "platform/Export.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>

class Menu;
struct MenuItem;

/// What a chosen item does; it is handed the item. Called on the main thread.
using MenuAction = std::function<void(const MenuItem &)>;

/// The keys held down with a shortcut's key, as bits of a mask.
enum class ModifierFlag : unsigned { Shift = 0x20000, Control = 0x40000, Option = 0x80000, Command = 0x100000 };

/// One entry of a menu, as plain data that a host mirrors into its own menus. Copies share the submenu.
struct MenuItem
{
    /// "" for a separator.
    QString title;
    /// Null: choosing the item does nothing.
    MenuAction action;
    /// The shortcut's key in lower case; "" for an item without a shortcut.
    QString keyEquivalent;
    /// A mask of ModifierFlag bits.
    unsigned keyEquivalentModifierMask = 0;
    /// Whatever the creator wants to find again when the item is chosen; nil when invalid. For a plug-in's command its
    /// KRPluginCommandSpecifier.
    QVariant representedObject;
    /// Null for an item that opens no menu.
    std::shared_ptr<Menu> submenu;
    /// A line between items.
    bool isSeparator = false;

    KORVAN_EXPORT static MenuItem separatorItem();
};
