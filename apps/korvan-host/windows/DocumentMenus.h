#pragma once

#include "windows/DocumentWindow.h"

#include <QHash>
#include <QObject>

#include <functional>

class QMenu;
class QToolBar;

/// The menus, the tool bar and the zoom control of a document's window.
class DocumentMenus final : public QObject
{
    Q_OBJECT

public:
    explicit DocumentMenus(DocumentWindow &window);
    ~DocumentMenus() override;

private:
    using Work = std::function<void()>;

    QMenu *addMenu(const QString &title);
    QAction *add(QMenu &menu, const QString &title, const QKeySequence &shortcut, const Work &work);
    /// The same, with an icon and a name that the tool bar finds it by.
    QAction *add(
        QMenu &menu, const QString &icon, const QString &title, const QKeySequence &shortcut, const Work &work);

    void addFileMenu();
    void addRecentFiles(QMenu &menu);
    void addEditMenu();
    void addInsertMenu();
    void addArrangeMenu();
    void addViewMenu();
    void addAppearanceMenu(QMenu &menu);
    void addClipboardItems(QMenu &menu);
    void addWindowMenu();
    void addPluginsMenu();
    void addHelpMenu();
    void addToolBar();

    void insert(const QString &type);
    /// Of all that there is in the window.
    QSet<QKeySequence> ownShortcuts() const;
    void countIncompatiblePlugins();
    void updateEnabled();

    Document &document() const { return *m_window.document(); }

    DocumentWindow &m_window;
    std::unique_ptr<PluginsMenuController> m_plugins;
    /// By the names of their icons.
    QHash<QString, QAction *> m_actions;
    /// Those that need a selection.
    QList<QAction *> m_selectionActions;
    QAction *m_ungroup = nullptr;
    QMenu *m_windowMenu = nullptr;
    QAction *m_showPlugins = nullptr;
    QAction *m_showConsole = nullptr;
};
