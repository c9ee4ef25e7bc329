#pragma once

#include "plugins/PluginSystem.h"
#include "widgets/MenuMirror.h"

#include <QKeySequence>
#include <QObject>
#include <QSet>

#include <functional>

class QAction;
class QMenu;
struct MenuItem;

/// The plug-ins' commands in a menu of a window, kept up to date, and what choosing one does. A command whose shortcut
/// is the window's own has none: with Qt, neither would react.
class PluginsMenuController final : public QObject
{
    Q_OBJECT

public:
    /// What handlers get of the window: its document and what is selected in it.
    using ContextProvider = std::function<QVariantMap()>;

    using Shortcuts = QSet<QKeySequence>;

    /// The items come behind those that the menu has already; others may be added behind them.
    PluginsMenuController(PluginSystem &plugins, QMenu &menu, const Shortcuts &taken, ContextProvider context);
    ~PluginsMenuController() override;

signals:
    /// A command is about to run.
    void commandChosen();

private:
    void fill();
    void run(const MenuItem &item);

    PluginSystem &m_plugins;
    MenuMirror m_mirror;
    QAction *m_nothing; // the menu's
    Shortcuts m_taken;
    ContextProvider m_context;
};
