#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

#include <functional>

class QMenu;

/// The windows about plug-ins that every Plugins menu offers: a list of them, a console.
class ToolWindows
{
public:
    struct Window
    {
        /// In the menu.
        QString title;
        QKeySequence shortcut;
        /// Shows the window, which there is one of.
        std::function<void()> show;
    };

    /// Before the first document's window is made.
    void add(Window window) { m_windows.append(std::move(window)); }
    /// Appends an item for each.
    void addTo(QMenu &menu) const;

private:
    QList<Window> m_windows;
};
