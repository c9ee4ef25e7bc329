// The menu about the document's file.

#include "look/Shortcuts.h"
#include "widgets/PluginText.h"
#include "windows/DocumentMenus.h"

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
    add(menu, tr("Save &As…"), saveAsShortcut(), [this, &files] {
        m_window.commitEdits();
        files.saveAs();
    });
    menu.addSeparator();
    add(menu, tr("&Close"), closeShortcut(), [this] { m_window.close(); });
    auto *const quit = add(menu, tr("&Quit"), quitShortcut(), [this] { emit m_window.quitRequested(); });
    quit->setMenuRole(QAction::QuitRole);
}

void DocumentMenus::addRecentFiles(QMenu &menu)
{
    menu.clear();
    const auto paths = m_window.services().recentFiles.paths();
    for (const auto &path : paths) {
        auto *const action = add(menu, withoutMnemonics(QFileInfo(path).fileName()), {},
            [this, path] { emit m_window.openRequested({path}); });
        action->setToolTip(path);
    }
    if (paths.isEmpty())
        menu.addAction(tr("No Documents"))->setEnabled(false);
    menu.addSeparator();
    add(menu, tr("&Clear"), {}, [this] { m_window.services().recentFiles.clear(); })->setEnabled(!paths.isEmpty());
}
