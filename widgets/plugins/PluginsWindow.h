#pragma once

#include "widgets/Export.h"

#include "platform/NotificationCenter.h"

#include <QPointer>
#include <QStringList>
#include <QWidget>

class KRPluginManager;
class PluginDetailsPane;
class PluginFileInstaller;
class PluginListModel;
class PluginListView;
class PluginNotices;
class PluginUpdatesController;
class PluginsToolBar;
class QCheckBox;
class QLabel;
struct PluginInstallOutcome;

/// The installed plug-ins: switches, details, installation, updates, removal. A window of its own, or a part of the
/// host's. Main thread only; needs a QApplication.
///
///     auto *const window = new PluginsWindow(manager);
///     window->setAttribute(Qt::WA_DeleteOnClose);
///     window->show();
///
/// Give the manager a ReportingUpdater for updates that show their progress and say why they fail. Whoever sees the
/// window has seen how many plug-ins were disabled as incompatible: it sets that number to 0.
class KORVAN_WIDGETS_EXPORT PluginsWindow final : public QWidget
{
    Q_OBJECT

public:
    /// The manager may go first; the window then shows what it knew.
    explicit PluginsWindow(KRPluginManager &manager, QWidget *parent = nullptr);
    ~PluginsWindow() override;

    /// Nothing when there is no such plug-in; clears the search when it hides it.
    void selectPlugin(const QString &identifier);
    /// As if they had been dropped; what is no plug-in is refused in words.
    void installFiles(const QStringList &paths);
    /// Asks the user for archives to install.
    void chooseFiles();
    void checkForUpdates();
    PluginUpdatesController &updates() const { return *m_updates; }

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void arrange();
    QWidget *makeFooter();
    void connectParts();
    void showIncompatibleCount();
    void refresh();
    void refreshDetails();
    void setAllDisabled(bool disabled);
    void installed(const PluginInstallOutcome &outcome);
    void editSelected();
    void showSelectedInFolder();
    void removeSelected();
    void remove(const QString &identifier);

    QPointer<KRPluginManager> m_manager;
    PluginUpdatesController *m_updates;
    PluginFileInstaller *m_installer;
    PluginListModel *m_model;
    PluginsToolBar *m_toolBar;
    PluginNotices *m_notices;
    PluginListView *m_list;
    PluginDetailsPane *m_details;
    QCheckBox *m_disableAll;
    QLabel *m_status;
    NotificationObserver m_reloadObserver;
};
