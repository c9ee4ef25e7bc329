#include "plugins/ToolWindows.h"

#include <QMenu>

void ToolWindows::addTo(QMenu &menu) const
{
    for (const auto &window : m_windows) {
        auto *const action = menu.addAction(window.title);
        action->setShortcut(window.shortcut);
        action->setMenuRole(QAction::NoRole);
        QObject::connect(action, &QAction::triggered, action, window.show);
    }
}
