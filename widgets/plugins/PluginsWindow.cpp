#include "widgets/plugins/PluginsWindow.h"

#include "localization/Localizable.h"
#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"
#include "widgets/PluginText.h"
#include "widgets/Symbols.h"
#include "widgets/plugins/Banner.h"
#include "widgets/plugins/PluginDetailsPane.h"
#include "widgets/plugins/PluginFileInstaller.h"
#include "widgets/plugins/PluginListDelegate.h"
#include "widgets/plugins/PluginListModel.h"
#include "widgets/plugins/PluginQuestions.h"
#include "widgets/plugins/PluginUpdatesController.h"

#include <QAction>
#include <QCheckBox>
#include <QDesktopServices>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSortFilterProxyModel>
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
    , m_search(new QSortFilterProxyModel(this))
    , m_searchField(new QLineEdit)
    , m_check(new QPushButton(symbolIcon(Symbol::Refresh), Localizable::tr("Check for U&pdates")))
    , m_updateAll(new QPushButton(symbolIcon(Symbol::Download), Localizable::tr("Update &All")))
    , m_incompatible(new Banner(Tone::Warning, Banner::Dismissal::Offered))
    , m_allDisabled(new Banner(Tone::Accent, Banner::Dismissal::NotOffered))
    , m_notice(new Banner(Tone::Accent, Banner::Dismissal::Offered))
    , m_list(new QListView)
    , m_details(new PluginDetailsPane)
    , m_disableAll(new QCheckBox(Localizable::tr("&Disable all plug-ins")))
    , m_status(new QLabel)
{
    setWindowTitle(Localizable::tr("Plug-ins"));
    setAcceptDrops(true);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeToolBar());
    layout->addWidget(m_incompatible);
    layout->addWidget(m_allDisabled);
    layout->addWidget(m_notice);
    auto *const splitter = new QSplitter;
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    splitter->addWidget(makeList());
    splitter->addWidget(makeDetails());
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({360, 540});
    layout->addWidget(splitter, 1);
    layout->addWidget(makeFooter());
    resize(900, 600);

    m_reloadObserver = LTAppEnvironment::current().notificationCenter().addObserver(
        KRPluginManagerDidReloadPluginsNotification, &manager, [this](const auto &) { refresh(); });
    connect(m_installer, &PluginFileInstaller::finished, this, &PluginsWindow::installed);
    connectUpdates();
    m_list->setCurrentIndex(m_search->index(0, 0));
    refresh();
}

PluginsWindow::~PluginsWindow()
{
    m_list->selectionModel()->disconnect(this); // whose rows go before it does
}

QWidget *PluginsWindow::makeToolBar()
{
    m_searchField->setObjectName(QStringLiteral("PluginSearch"));
    m_searchField->setPlaceholderText(Localizable::tr("Search"));
    m_searchField->setAccessibleName(Localizable::tr("Search plug-ins"));
    m_searchField->setClearButtonEnabled(true);
    m_searchField->addAction(symbolIcon(Symbol::Search), QLineEdit::LeadingPosition);
    m_searchField->setMinimumWidth(220);
    auto *const find = new QAction(this);
    find->setShortcut(QKeySequence::Find);
    find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QAction::triggered, m_searchField, qOverload<>(&QWidget::setFocus));
    addAction(find);
    connect(m_searchField, &QLineEdit::textChanged, m_search, &QSortFilterProxyModel::setFilterFixedString);

    auto *const install = new QPushButton(symbolIcon(Symbol::Add), Localizable::tr("&Install"));
    install->setObjectName(QStringLiteral("InstallButton"));
    auto *const sources = new QMenu(install);
    sources->addAction(Localizable::tr("From an &Archive…"), this, &PluginsWindow::chooseFiles);
    sources->addAction(Localizable::tr("From a &Folder…"), this, &PluginsWindow::chooseFolder);
    install->setMenu(sources);
    m_check->setObjectName(QStringLiteral("CheckButton"));
    m_updateAll->setObjectName(QStringLiteral("UpdateAllButton"));

    auto *const bar = new QWidget;
    auto *const row = new QHBoxLayout(bar);
    row->setContentsMargins(12, 10, 12, 10);
    row->addWidget(m_searchField);
    row->addStretch(1);
    row->addWidget(m_check);
    row->addWidget(m_updateAll);
    row->addWidget(install);
    return bar;
}

QWidget *PluginsWindow::makeList()
{
    m_search->setSourceModel(m_model);
    m_search->setFilterRole(PluginListModel::SearchRole);
    m_search->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_list->setObjectName(QStringLiteral("PluginList"));
    m_list->setAccessibleName(Localizable::tr("Installed plug-ins"));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setModel(m_search);
    m_list->setItemDelegate(new PluginListDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setMouseTracking(true);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setMinimumWidth(260);
    auto *const removal = new QAction(m_list);
    removal->setShortcut(QKeySequence::Delete);
    removal->setShortcutContext(Qt::WidgetShortcut);
    connect(removal, &QAction::triggered, this, &PluginsWindow::removeSelected);
    m_list->addAction(removal);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &PluginsWindow::refreshDetails);
    return m_list;
}

QWidget *PluginsWindow::makeDetails()
{
    connect(m_details, &PluginDetailsPane::editRequested, this, &PluginsWindow::editSelected);
    connect(m_details, &PluginDetailsPane::showInFolderRequested, this, &PluginsWindow::showSelectedInFolder);
    connect(m_details, &PluginDetailsPane::removeRequested, this, &PluginsWindow::removeSelected);
    connect(m_details, &PluginDetailsPane::updateRequested, this, [this] { m_updates->update(selectedIdentifier()); });
    connect(m_details, &PluginDetailsPane::cancelUpdateRequested, this,
        [this] { m_updates->cancel(selectedIdentifier()); });
    return m_details;
}

QWidget *PluginsWindow::makeFooter()
{
    m_disableAll->setObjectName(QStringLiteral("DisableAll"));
    m_status->setTextFormat(Qt::PlainText);
    m_status->setObjectName(QStringLiteral("PluginStatus"));
    m_allDisabled->setObjectName(QStringLiteral("AllDisabledBanner"));
    m_incompatible->setObjectName(QStringLiteral("IncompatibleBanner"));
    m_notice->setObjectName(QStringLiteral("NoticeBanner"));
    m_allDisabled->setAction(Localizable::tr("Enable A&gain"));
    connect(m_allDisabled, &Banner::actionRequested, this, [this] { setAllDisabled(false); });
    connect(m_disableAll, &QCheckBox::clicked, this, &PluginsWindow::setAllDisabled);
    auto *const footer = new QWidget;
    auto *const row = new QHBoxLayout(footer);
    row->setContentsMargins(12, 8, 12, 8);
    row->addWidget(m_disableAll);
    row->addStretch(1);
    row->addWidget(m_status);
    return footer;
}

void PluginsWindow::connectUpdates()
{
    connect(m_check, &QPushButton::clicked, this, &PluginsWindow::checkForUpdates);
    connect(m_updateAll, &QPushButton::clicked, m_updates, &PluginUpdatesController::updateAll);
    connect(m_updates, &PluginUpdatesController::checkingChanged, this, &PluginsWindow::refresh);
    connect(m_updates, &PluginUpdatesController::stateChanged, this, &PluginsWindow::refresh);
}

void PluginsWindow::checkForUpdates()
{
    m_updates->check();
}

void PluginsWindow::chooseFiles()
{
    auto *const dialog = new QFileDialog(this, Localizable::tr("Install Plug-ins"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setNameFilter(Localizable::tr("Archives of plug-ins (*.zip)"));
    connect(dialog, &QFileDialog::filesSelected, this, &PluginsWindow::installFiles);
    dialog->open();
}

void PluginsWindow::chooseFolder()
{
    auto *const dialog = new QFileDialog(this, Localizable::tr("Install Plug-ins"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    connect(dialog, &QFileDialog::filesSelected, this, &PluginsWindow::installFiles);
    dialog->open();
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
    m_incompatible->say(
        Localizable::tr("Plug-ins that were disabled because they do not work with this application: %1").arg(count));
    m_manager->setNumberOfIncompatiblePluginsDisabled(0);
}

void PluginsWindow::refresh()
{
    const auto available = m_updates->available().size();
    m_check->setEnabled(!m_updates->isChecking());
    m_updateAll->setEnabled(available > 0);
    m_status->setText(m_updates->isChecking()
            ? Localizable::tr("Looking for updates…")
            : Localizable::tr("Plug-ins: %1  ·  Updates: %2").arg(m_model->rowCount()).arg(available));
    const bool allDisabled = m_manager && m_manager->disableAllPlugins();
    m_disableAll->setChecked(allDisabled);
    if (allDisabled)
        m_allDisabled->say(
            Localizable::tr("All plug-ins are disabled. Enabling one of them leaves the others disabled for good."));
    else
        m_allDisabled->hide();
    showIncompatibleCount();
    refreshDetails();
}

void PluginsWindow::refreshDetails()
{
    using Compatibility = PluginDetailsPane::Compatibility;
    const auto plugin = selectedPlugin();
    if (plugin != m_details->plugin()) {
        const bool isIncompatible = m_manager && m_manager->isIncompatiblePlugin(plugin);
        m_details->setPlugin(plugin, isIncompatible ? Compatibility::Incompatible : Compatibility::Compatible);
    }
    m_details->showUpdate(m_updates->state(selectedIdentifier()));
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
        m_notice->say(plainLines(outcome.message), Tone::Error);
    if (outcome.kind != Kind::Installed)
        return;
    const auto text =
        Localizable::tr("“%1” is installed, in version %2.").arg(plainLine(outcome.name), plainLine(outcome.version));
    m_notice->say(outcome.message.isEmpty() ? text : text + u'\n' + plainLines(outcome.message), Tone::Good);
    selectPlugin(outcome.identifier);
}

std::shared_ptr<KRPluginBundle> PluginsWindow::selectedPlugin() const
{
    return m_model->plugin(m_search->mapToSource(m_list->currentIndex()));
}

QString PluginsWindow::selectedIdentifier() const
{
    return m_list->currentIndex().data(PluginListModel::IdentifierRole).toString();
}

void PluginsWindow::selectPlugin(const QString &identifier)
{
    const auto row = m_model->indexOf(identifier);
    if (!row.isValid())
        return;
    if (!m_search->mapFromSource(row).isValid())
        m_searchField->clear();
    m_list->setCurrentIndex(m_search->mapFromSource(row));
    m_list->scrollTo(m_list->currentIndex());
}

void PluginsWindow::editSelected()
{
    const auto plugin = selectedPlugin();
    if (!plugin || !m_manager || m_manager->editBundle(plugin))
        return;
    m_notice->say(Localizable::tr("No editor for plug-ins could be started. The plug-in’s folder is shown instead."),
        Tone::Accent);
    QDesktopServices::openUrl(plugin->url());
}

void PluginsWindow::showSelectedInFolder()
{
    if (const auto plugin = selectedPlugin()) {
        const QFileInfo folder(QDir::cleanPath(plugin->url().toLocalFile()));
        QDesktopServices::openUrl(QUrl::fromLocalFile(folder.path()));
    }
}

void PluginsWindow::removeSelected()
{
    const auto plugin = selectedPlugin();
    if (!plugin)
        return;
    askToRemovePlugin(
        this, plugin->name().value_or(QString()), [this, identifier = selectedIdentifier()] { remove(identifier); });
}

void PluginsWindow::remove(const QString &identifier)
{
    const auto plugin = m_manager ? m_manager->plugins().value(identifier) : nullptr;
    if (!plugin)
        return;
    KRError error;
    if (!m_manager->movePluginToTrash(plugin, &error))
        m_notice->say(Localizable::tr("“%1” cannot be moved to the trash: %2")
                          .arg(plainLine(plugin->name().value_or(QString())), plainLines(error.localizedDescription)),
            Tone::Error);
    m_manager->reloadPlugins();
}
