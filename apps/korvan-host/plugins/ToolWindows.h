#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

#include <functional>

/// A window about plug-ins that every Plugins menu offers: a list of them, a console. There is one of each.
struct ToolWindow
{
    /// In the menu.
    QString title;
    QKeySequence shortcut;
    std::function<void()> show;
};

/// In the order of the menu.
using ToolWindows = QList<ToolWindow>;
