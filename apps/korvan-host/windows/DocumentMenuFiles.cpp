// The menus about the document's file and about plug-ins.

#include "windows/DocumentMenus.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>

void DocumentMenus::addFileMenu()
{
    auto &menu = *addMenu(tr("&File"));
    auto &files = m_window.files();
    add(menu, QStringLiteral("new"), tr("&New"), QKeySequence::New, [this] { emit m_window.newRequested(); });
    add(menu, QStringLiteral("open"), tr("&Open…"), QKeySequence::Open, [this] { emit m_window.openRequested({}); });
    auto *const recent = menu.addMenu(tr("Open &Recent"));
    connect(recent, &QMenu::aboutToShow, this, [this, recent] { addRecentFiles(*recent); });
    menu.addSeparator();
    add(menu, QStringLiteral("save"), tr("&Save"), QKeySequence::Save, [this, &files] {
        m_window.commitEdits();
        files.save();
    });
    add(menu, tr("Save &As…"), QKeySequence::SaveAs, [this, &files] {
        m_window.commitEdits();
        files.saveAs();
    });
    menu.addSeparator();
    add(menu, tr("&Close"), QKeySequence::Close, [this] { m_window.close(); });
    auto *const quit = add(menu, tr("&Quit"), QKeySequence::Quit, [this] { emit m_window.quitRequested(); });
    quit->setMenuRole(QAction::QuitRole);
}

void DocumentMenus::addRecentFiles(QMenu &menu)
{
    menu.clear();
    const auto paths = m_window.services().recentFiles.paths();
    for (const auto &path : paths) {
        auto title = QFileInfo(path).fileName();
        auto *const action = add(
            menu, title.replace(u'&', QStringLiteral("&&")), {}, [this, path] { emit m_window.openRequested({path}); });
        action->setToolTip(path);
    }
    if (paths.isEmpty())
        menu.addAction(tr("No Documents"))->setEnabled(false);
    menu.addSeparator();
    add(menu, tr("&Clear"), {}, [this] { m_window.services().recentFiles.clear(); })->setEnabled(!paths.isEmpty());
}

void DocumentMenus::addPluginsMenu()
{
    auto &menu = *addMenu(tr("&Plugins"));
    auto &plugins = m_window.services().plugins;
    m_plugins = std::make_unique<PluginsMenuController>(
        plugins, menu, ownShortcuts(), [this] { return m_window.commandContext(); });
    connect(m_plugins.get(), &PluginsMenuController::commandChosen, this, [this] {
        m_window.commitEdits();
        document().history().closeStep();
    });
    menu.addSeparator();
    for (const auto &tool : m_window.services().tools)
        add(menu, tool.title, tool.shortcut, tool.show);
    add(menu, tr("Install Plug-in…"), {}, [this] { installPlugin(); });
    add(menu, tr("Show Plug-ins Folder"), {},
        [] { QDesktopServices::openUrl(KRPluginManager::mainPluginsFolderURL()); });
    add(menu, tr("Reload Plug-ins"), {}, [&plugins] { plugins.manager().reloadPlugins(); });
}

/// Those of the menus that there are already, and of what comes into this one.
QSet<QKeySequence> DocumentMenus::ownShortcuts() const
{
    QSet<QKeySequence> shortcuts;
    for (const auto &tool : m_window.services().tools)
        shortcuts.insert(tool.shortcut);
    const auto actions = m_window.menuBar()->findChildren<QAction *>();
    for (const auto *const action : actions) {
        const auto own = action->shortcuts();
        shortcuts.unite({own.begin(), own.end()});
    }
    shortcuts.remove({});
    return shortcuts;
}

void DocumentMenus::installPlugin()
{
    // A bundle is a folder, which the dialog enters: it is dropped on the window, or packed.
    const auto path = QFileDialog::getOpenFileName(&m_window, tr("Install Plug-in"), {}, tr("Plug-ins (*.zip)"));
    if (!path.isEmpty())
        m_window.installPlugins({path});
}
