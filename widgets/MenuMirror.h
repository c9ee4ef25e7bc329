#pragma once

#include "widgets/Export.h"

#include <QList>
#include <QPointer>

class Menu;
class QAction;
class QMenu;

/// Shows a Menu in a QMenu, among whatever actions the host has there itself. Main thread only.
///
///     Menu plugins;
///     manager.addPluginsToMenu(plugins, [&](const MenuItem &item) { run(item.representedObject); });
///     mirror.show(plugins);
///
/// Triggering an action, by mouse or by shortcut, calls the item's own action with the item. Where several items have
/// one shortcut the first keeps it: with Qt, none of them would react. A submenu shows its items as they are when it
/// opens for the first time; only one with a shortcut is filled at once.
class KORVAN_WIDGETS_EXPORT MenuMirror final
{
public:
    /// `menu` may go before the mirror; nothing is shown from then on.
    explicit MenuMirror(QMenu *menu);
    /// Takes out what it has shown.
    ~MenuMirror();
    MenuMirror(const MenuMirror &) = delete;
    MenuMirror &operator=(const MenuMirror &) = delete;

    /// Shows the items as they are now, in the place of those shown before: at first behind the host's own actions,
    /// later before the host's action that follows them. May be called from an item's action.
    void show(const Menu &menu);

private:
    void clear();
    /// The host's action that follows what is shown; null when there is none.
    QAction *actionBehind() const;

    QPointer<QMenu> m_menu;
    QList<QPointer<QAction>> m_shown;
};
