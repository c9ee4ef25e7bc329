#pragma once

#include "canvas/CanvasView.h"
#include "editing/DocumentSession.h"
#include "panels/Inspector.h"
#include "panels/LayersPanel.h"
#include "plugins/DocumentWatch.h"
#include "plugins/PluginSystem.h"
#include "plugins/PluginsMenuController.h"
#include "windows/DocumentFiles.h"
#include "windows/RecentFiles.h"

#include <QMainWindow>

#include <memory>

class DocumentMenus;
class DocumentWindow;
class PluginWindows;

/// What all windows share.
struct WindowServices
{
    PluginSystem &plugins;
    RecentFiles &recentFiles;
    PluginWindows &pluginWindows;
    const QList<DocumentWindow *> &documents;
};

/// A document's window: canvas, layers, inspector, menus. Deletes itself when it is closed.
class DocumentWindow final : public QMainWindow
{
    Q_OBJECT

public:
    DocumentWindow(std::shared_ptr<DocumentSession> session, const WindowServices &services);
    ~DocumentWindow() override;

    DocumentSession &session() { return *m_session; }
    const std::shared_ptr<Document> &document() const { return m_session->document(); }
    const WindowServices &services() const { return m_services; }
    CanvasView &canvas() { return *m_canvas; }
    LayersPanel &layersPanel() { return *m_layers; }
    Inspector &inspector() { return *m_inspector; }
    DocumentFiles &files() { return m_files; }
    /// The docks, for the menu that shows and hides them.
    QList<QDockWidget *> panels() const { return m_panels; }

    void bringToFront();
    /// Takes over what the user is just entering in a field.
    void commitEdits();
    /// What the handlers of commands get.
    QVariantMap commandContext() const;

signals:
    void newRequested();
    /// Without paths: the user is asked.
    void openRequested(const QStringList &paths);
    void quitRequested();
    void activated();
    void aboutToClose();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    QDockWidget *addPanel(const QString &title, const QString &name, QWidget *content, Qt::DockWidgetArea area);
    void connectCanvas();
    void connectLog();
    void showTitle();

    std::shared_ptr<DocumentSession> m_session;
    WindowServices m_services;
    DocumentFiles m_files;
    DocumentWatch m_watch;
    CanvasView *m_canvas;
    LayersPanel *m_layers;
    Inspector *m_inspector;
    QList<QDockWidget *> m_panels;
    std::unique_ptr<DocumentMenus> m_menus;
};
