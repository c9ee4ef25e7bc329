#include "widgets/plugins/PluginsWindow.h"

#include "localization/Localizable.h"
#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"
#include "widgets/PluginText.h"
#include "widgets/plugins/PluginDetailsPane.h"
#include "widgets/plugins/PluginFileInstaller.h"
#include "widgets/plugins/PluginListModel.h"
#include "widgets/plugins/PluginListView.h"
#include "widgets/plugins/PluginNotices.h"
#include "widgets/plugins/PluginQuestions.h"
#include "widgets/plugins/PluginUpdatesController.h"
#include "widgets/plugins/PluginsToolBar.h"

#include <QAction>
#include <QCheckBox>
#include <QDesktopServices>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMimeData>
#include <QSplitter>
#include <QVBoxLayout>

namespace {

QStringList pluginFilesIn(const QMimeData &data)
{
    QStringList paths;
    for (const auto &url : data.urls()) {
        if (url.isLocalFile() && PluginFileInstaller::canInstall(url.toLocalFile()))
            paths.append(url.toLocalFile());
    }
    return paths;
}

} // namespace

PluginsWindow::PluginsWindow(KRPluginManager &manager, QWidget *parent)
    : QWidget(parent)
    , m_manager(&manager)
    , m_updates(new PluginUpdatesController(manager, this))
    , m_installer(new PluginFileInstaller(
          manager,
          [this](const auto &replacement, auto answer) { askToReplacePlugin(this, replacement, std::move(answer)); },
          this))
    , m_model(new PluginListModel(manager, m_updates, this))
    , m_toolBar(new PluginsToolBar)
    , m_notices(new PluginNotices)
    , m_list(new PluginListView(*m_model))
    , m_details(new PluginDetailsPane)
    , m_disableAll(new QCheckBox(Localizable::tr("&Disable all plug-ins")))
    , m_status(new QLabel)
{
    setWindowTitle(Localizable::tr("Plug-ins"));
    setAcceptDrops(true);
    arrange();
    resize(900, 600);
    m_reloadObserver = LTAppEnvironment::current().notificationCenter().addObserver(
        KRPluginManagerDidReloadPluginsNotification, &manager, [this](const auto &) { refresh(); });
    connectParts();
    refresh();
}

PluginsWindow::~PluginsWindow()
{
    delete m_list; // before the rows that it shows
}

void PluginsWindow::arrange()
{
    auto *const splitter = new QSplitter;
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    splitter->addWidget(m_list);
    splitter->addWidget(m_details);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({360, 540});
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolBar);
    layout->addWidget(m_notices);
    layout->addWidget(splitter, 1);
    layout->addWidget(makeFooter());
}

QWidget *PluginsWindow::makeFooter()
{
    m_disableAll->setObjectName(QStringLiteral("DisableAll"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setObjectName(QStringLiteral("PluginStatus"));
    auto *const footer = new QWidget;
    auto *const row = new QHBoxLayout(footer);
    row->setContentsMargins(12, 8, 12, 8);
    row->addWidget(m_disableAll);
    row->addStretch(1);
    row->addWidget(m_status);
    return footer;
}

void PluginsWindow::connectParts()
{
    auto *const find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QAction::triggered, m_toolBar, &PluginsToolBar::focusSearch);
    addAction(find);
    connect(m_toolBar, &PluginsToolBar::searchChanged, m_list, &PluginListView::search);
    connect(m_toolBar, &PluginsToolBar::checkRequested, this, &PluginsWindow::checkForUpdates);
    connect(m_toolBar, &PluginsToolBar::updateAllRequested, m_updates, &PluginUpdatesController::updateAll);
    connect(m_toolBar, &PluginsToolBar::cancelAllRequested, m_updates, &PluginUpdatesController::cancelAll);
    connect(m_toolBar, &PluginsToolBar::installRequested, this, &PluginsWindow::installFiles);
    connect(m_notices, &PluginNotices::enableAgainRequested, this, [this] { setAllDisabled(false); });
    connect(m_disableAll, &QCheckBox::clicked, this, &PluginsWindow::setAllDisabled);
    connect(m_list, &PluginListView::selectionMoved, this, &PluginsWindow::refreshDetails);
    connect(m_list, &PluginListView::removalRequested, this, &PluginsWindow::removeSelected);
    connect(m_details, &PluginDetailsPane::editRequested, this, &PluginsWindow::editSelected);
    connect(m_details, &PluginDetailsPane::showInFolderRequested, this, &PluginsWindow::showSelectedInFolder);
    connect(m_details, &PluginDetailsPane::removeRequested, this, &PluginsWindow::removeSelected);
    connect(m_details, &PluginDetailsPane::updateRequested, this,
        [this] { m_updates->update(m_list->selectedIdentifier()); });
    connect(m_details, &PluginDetailsPane::cancelUpdateRequested, this,
        [this] { m_updates->cancel(m_list->selectedIdentifier()); });
    connect(m_installer, &PluginFileInstaller::finished, this, &PluginsWindow::installed);
    connect(m_updates, &PluginUpdatesController::checkingChanged, this, &PluginsWindow::refresh);
    connect(m_updates, &PluginUpdatesController::stateChanged, this, &PluginsWindow::refresh);
}

void PluginsWindow::checkForUpdates()
{
    m_updates->check();
}

void PluginsWindow::chooseFiles()
{
    m_toolBar->chooseFiles();
}

void PluginsWindow::installFiles(const QStringList &paths)
{
    for (const auto &path : paths)
        m_installer->install(path);
}

void PluginsWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (!pluginFilesIn(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void PluginsWindow::dropEvent(QDropEvent *event)
{
    event->acceptProposedAction();
    installFiles(pluginFilesIn(*event->mimeData()));
}

void PluginsWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    showIncompatibleCount();
}

void PluginsWindow::showIncompatibleCount()
{
    const auto count = m_manager && isVisible() ? m_manager->numberOfIncompatiblePluginsDisabled() : 0;
    if (count <= 0)
        return;
    m_notices->showIncompatibleCount(count);
    m_manager->setNumberOfIncompatiblePluginsDisabled(0);
}

void PluginsWindow::refresh()
{
    const auto available = m_updates->available().size();
    m_toolBar->showChecking(m_updates->isChecking());
    m_toolBar->showUpdates(available, m_updates->underWay().size());
    m_status->setText(m_updates->isChecking()
            ? Localizable::tr("Looking for updates…")
            : Localizable::tr("Plug-ins: %1  ·  Updates: %2").arg(m_model->rowCount()).arg(available));
    const bool allDisabled = m_manager && m_manager->disableAllPlugins();
    m_disableAll->setChecked(allDisabled);
    m_notices->showAllDisabled(allDisabled);
    showIncompatibleCount();
    refreshDetails();
}

void PluginsWindow::refreshDetails()
{
    using Compatibility = PluginDetailsPane::Compatibility;
    const auto plugin = m_list->selectedPlugin();
    if (plugin != m_details->plugin()) {
        const bool isIncompatible = m_manager && m_manager->isIncompatiblePlugin(plugin);
        m_details->setPlugin(plugin, isIncompatible ? Compatibility::Incompatible : Compatibility::Compatible);
    }
    m_details->showUpdate(m_updates->state(m_list->selectedIdentifier()));
}

void PluginsWindow::setAllDisabled(bool disabled)
{
    if (!m_manager)
        return;
    m_manager->setDisableAllPlugins(disabled);
    m_manager->reloadPlugins();
}

void PluginsWindow::installed(const PluginInstallOutcome &outcome)
{
    using Kind = PluginInstallOutcome::Kind;
    if (outcome.kind == Kind::Failed)
        m_notices->say(plainLines(outcome.message), Tone::Error);
    if (outcome.kind != Kind::Installed)
        return;
    const auto text =
        Localizable::tr("“%1” is installed, in version %2.").arg(plainLine(outcome.name), plainLine(outcome.version));
    m_notices->say(outcome.message.isEmpty() ? text : text + u'\n' + plainLines(outcome.message), Tone::Good);
    selectPlugin(outcome.identifier);
}

void PluginsWindow::selectPlugin(const QString &identifier)
{
    if (m_list->hides(identifier))
        m_toolBar->clearSearch();
    m_list->select(identifier);
}

void PluginsWindow::editSelected()
{
    const auto plugin = m_list->selectedPlugin();
    if (!plugin || !m_manager || m_manager->editBundle(plugin))
        return;
    m_notices->say(Localizable::tr("No editor for plug-ins could be started. The plug-in’s folder is shown instead."),
        Tone::Accent);
    QDesktopServices::openUrl(plugin->url());
}

void PluginsWindow::showSelectedInFolder()
{
    if (const auto plugin = m_list->selectedPlugin()) {
        const QFileInfo folder(QDir::cleanPath(plugin->url().toLocalFile()));
        QDesktopServices::openUrl(QUrl::fromLocalFile(folder.path()));
    }
}

void PluginsWindow::removeSelected()
{
    const auto plugin = m_list->selectedPlugin();
    if (!plugin)
        return;
    askToRemovePlugin(this, plugin->name().value_or(QString()),
        [this, identifier = m_list->selectedIdentifier()] { remove(identifier); });
}

void PluginsWindow::remove(const QString &identifier)
{
    const auto plugin = m_manager ? m_manager->plugins().value(identifier) : nullptr;
    if (!plugin)
        return;
    KRError error;
    if (!m_manager->movePluginToTrash(plugin, &error))
        m_notices->say(Localizable::tr("“%1” cannot be moved to the trash: %2")
                           .arg(plainLine(plugin->name().value_or(QString())), plainLines(error.localizedDescription)),
            Tone::Error);
    m_manager->reloadPlugins();
}
