// The menus about windows and about plug-ins.

#include "windows/DocumentMenus.h"
#include "windows/PluginWindows.h"
#include "windows/WindowMenu.h"

#include <QDesktopServices>
#include <QMenuBar>

void DocumentMenus::addWindowMenu()
{
    auto &windows = m_window.services().pluginWindows;
    auto *const menu = new WindowMenu(m_window, m_window.services().documents);
    m_window.menuBar()->addMenu(menu);
    add(*menu, tr("&Minimize"), QKeySequence(Qt::CTRL | Qt::Key_M), [this] { m_window.showMinimized(); });
    menu->addSeparator();
    m_showPlugins = add(
        *menu, tr("Plug-ins…"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P), [&windows] { windows.showPlugins(); });
    m_showConsole = add(
        *menu, tr("Console"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C), [&windows] { windows.showConsole(); });
    connect(menu, &QMenu::aboutToShow, this, &DocumentMenus::countIncompatiblePlugins);
    menu->addDocuments();
    m_windowMenu = menu;
}

/// Comes last, when all shortcuts of the window are known, and stands before the menu about windows.
void DocumentMenus::addPluginsMenu()
{
    auto *const menu = new QMenu(tr("&Plugins"), m_window.menuBar());
    m_window.menuBar()->insertMenu(m_windowMenu->menuAction(), menu);
    auto &services = m_window.services();
    m_plugins = std::make_unique<PluginsMenuController>(
        services.plugins, *menu, ownShortcuts(), [this] { return m_window.commandContext(); });
    connect(m_plugins.get(), &PluginsMenuController::commandChosen, this, [this] {
        m_window.commitEdits();
        document().history().closeStep();
    });
    connect(menu, &QMenu::aboutToShow, this, &DocumentMenus::countIncompatiblePlugins);
    menu->addSeparator();
    menu->addActions({m_showPlugins, m_showConsole}); // the same ones: of two with one shortcut, neither would react
    add(*menu, tr("Install Plug-in…"), {}, [&services] { services.pluginWindows.chooseFilesToInstall(); });
    add(*menu, tr("Show Plug-ins Folder"), {},
        [] { QDesktopServices::openUrl(KRPluginManager::mainPluginsFolderURL()); });
    add(*menu, tr("Reload Plug-ins"), {}, [&services] { services.plugins.manager().reloadPlugins(); });
}

void DocumentMenus::countIncompatiblePlugins()
{
    const auto count = m_window.services().plugins.manager().numberOfIncompatiblePluginsDisabled();
    m_showPlugins->setText(count > 0 ? tr("Plug-ins… (%1 disabled)").arg(count) : tr("Plug-ins…"));
}

QSet<QKeySequence> DocumentMenus::ownShortcuts() const
{
    QSet<QKeySequence> shortcuts;
    const auto actions = m_window.findChildren<QAction *>();
    for (const auto *const action : actions) {
        const auto own = action->shortcuts();
        shortcuts.unite({own.begin(), own.end()});
    }
    shortcuts.remove({});
    return shortcuts;
}
