#include "manager/KRPluginManager.h"

#include "commands/KRPluginDebugController.h"
#include "manager/BundleDisposal.h"
#include "manager/IncompatiblePlugins.h"
#include "manager/InstalledPlugins.h"
#include "manager/MenuSorting.h"
#include "manager/PluginDiscovery.h"
#include "manager/PluginEditor.h"
#include "manager/PluginFolderMonitoring.h"
#include "manager/PluginFolders.h"
#include "manager/PluginsMenu.h"
#include "manager/RunningCommands.h"
#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"
#include "platform/NotificationCenter.h"
#include "platform/script/COScript.h"
#include "state/RemoteBlocklist.h"
#include "updates/PluginUpdates.h"

namespace {

/// Stands for the manager where the script engine wants a shared owner.
class FlowDelegate final : public COFlowDelegate
{
public:
    explicit FlowDelegate(KRPluginManager &manager)
        : m_manager(manager)
    { }
    void didClearEventStack(COScript *session) override { m_manager.didClearEventStack(session); }

private:
    KRPluginManager &m_manager; // which owns this object
};

InstalledVersions versionsOf(const PluginTable &plugins)
{
    InstalledVersions versions;
    for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin)
        versions.insert(versions.end(), plugin.key(), plugin.value()->version());
    return versions;
}

QSet<QByteArray> pathsOf(const QSet<QUrl> &urls)
{
    QSet<QByteArray> paths;
    for (const auto &url : urls)
        paths.insert(pathFromFileURL(url));
    return paths;
}

QSet<QUrl> folderURLs(const QSet<QByteArray> &paths)
{
    QSet<QUrl> urls;
    for (const auto &path : paths)
        urls.insert(fileURLFromPath(path, FileKind::Folder));
    return urls;
}

} // namespace

KRPluginManager::KRPluginManager()
    : KRPluginManager({}, nullptr, nullptr)
{ }

KRPluginManager::KRPluginManager(const QList<QUrl> &pluginsFolderURLs, std::shared_ptr<KRPluginUpdater> updater,
    std::shared_ptr<KRPluginManagingState> pluginStateManager)
    : m_plugins(PluginTable())
    , m_monitorForChanges(pluginStateManager != nullptr)
    , m_pluginsFolderURLs(pluginsFolderURLs)
    , m_updater(std::move(updater))
    , m_pluginStateManager(std::move(pluginStateManager))
{
    auto &environment = LTAppEnvironment::current();
    m_runningCommands = std::make_unique<RunningCommands>(environment.mainQueue(), [this] {
        LTAppEnvironment::current().notificationCenter().post(
            {KRPluginManagerRunningCommandsDidChangeNotification, this});
    });
    m_incompatiblePlugins = std::make_shared<IncompatiblePlugins>(m_pluginStateManager, environment.userDefaults());
    m_remoteBlocklist = std::make_unique<RemoteBlocklist>(
        m_pluginStateManager, [counted = m_incompatiblePlugins] { return counted->registerInstalled(); });
    m_installedPlugins = std::make_shared<InstalledPlugins>();
    m_updates = std::make_shared<PluginUpdates>(m_updater);
    m_folderMonitoring = std::make_unique<PluginFolderMonitoring>();
    m_flowDelegate = std::make_shared<FlowDelegate>(*this);
    COScript::setFlowDelegate(m_flowDelegate);
    CODebugController::setDelegate(std::make_shared<KRPluginDebugController>());
}

KRPluginManager::~KRPluginManager()
{
    m_updates->stop();
}

void KRPluginManager::initialisePlugins()
{
    COScript::listen();
}

QUrl KRPluginManager::mainPluginsFolderURL()
{
    return applicationPluginsFolder();
}

QUrl KRPluginManager::defaultPluginURL()
{
    return unsavedPluginURL();
}

QList<QUrl> KRPluginManager::pluginsURLs()
{
    return configuredPluginFolders();
}

PluginTable KRPluginManager::plugins()
{
    if (!m_plugins)
        reloadPlugins();
    return *m_plugins;
}

void KRPluginManager::setPlugins(const std::optional<PluginTable> &plugins)
{
    auto replaced = std::exchange(m_plugins, plugins);
    m_incompatiblePlugins->setInstalled(versionsOf(plugins.value_or(PluginTable())));
    m_installedPlugins->set(plugins.value_or(PluginTable()));
    if (!plugins)
        clearFolderMonitors();
    if (replaced && replaced->isDetached()) // else somebody still holds a copy
        disposeOf(std::move(*replaced));
}

void KRPluginManager::rebuildRegistry()
{
    const auto self = weak_from_this().lock(); // the monitors that are replaced may be the last that hold it
    if (m_pluginStateManager)
        m_pluginStateManager->setMetadata({}); // other programs may have changed what is persisted
    const auto ignoredNames = folderNamesToIgnore();
    std::optional<WalkWatches> watches;
    if (m_monitorForChanges)
        watches.emplace(ignoredNames);
    FolderWalk walk(ignoredNames, watches ? &*watches : nullptr);
    for (const auto &url : m_pluginsFolderURLs)
        walk.walk(pathFromFileURL(url));
    const auto found = pluginsOf(walk);
    removePluginVersionsNotInIdentifiers(found.keys());
    setPlugins(found);
    if (m_pluginStateManager)
        m_pluginStateManager->updateMetadataWithPluginIndentifiers(found.keys());
    if (watches)
        m_folderMonitoring->setUp(*watches, foldersChangedBlock());
}

void KRPluginManager::reloadPlugins()
{
    const auto start = std::chrono::steady_clock::now();
    rebuildRegistry();
    m_durationOfLatestReload =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    LTAppEnvironment::current().notificationCenter().post({KRPluginManagerDidReloadPluginsNotification, this});
}

const std::vector<std::unique_ptr<KRFolderMonitor>> &KRPluginManager::folderMonitors() const
{
    return m_folderMonitoring->monitors();
}

void KRPluginManager::setupFolderMonitoringWithVisitedURLs(const QSet<QUrl> &visitedURLs)
{
    const auto self = weak_from_this().lock();
    m_folderMonitoring->clear();
    if (m_monitorForChanges)
        m_folderMonitoring->setUp(visitedURLs, folderNamesToIgnore(), foldersChangedBlock());
}

void KRPluginManager::clearFolderMonitors()
{
    m_folderMonitoring->clear();
}

/// The manager holds its monitors, they hold this block, and it holds the manager: clearFolderMonitors() breaks the
/// circle. A manager that no shared_ptr holds takes its monitors with it.
std::function<void()> KRPluginManager::foldersChangedBlock()
{
    return [manager = QPointer(this), self = weak_from_this().lock()] {
        if (manager)
            manager->reloadPlugins();
        if (manager)
            manager->registerIncompatiblePlugins();
    };
}

QUrl KRPluginManager::firstPluginsFolderURL() const
{
    return m_pluginsFolderURLs.value(0);
}

QStringList KRPluginManager::folderNamesToIgnore() const
{
    return ignoredFolderNames();
}

QString KRPluginManager::relativePathByDeletingCommonPathComponentsWithFileURL(
    const QUrl &url, const QUrl &fromURL) const
{
    return relativePath(pathFromFileURL(url), pathFromFileURL(fromURL));
}

PluginTable KRPluginManager::pluginsOf(const FolderWalk &walk) const
{
    return pluginsFoundBy(walk, [this](const QString &identifier, const std::optional<QString> &version) {
        return shouldEnablePluginIdentifier(identifier, version);
    });
}

PluginTable KRPluginManager::pluginsByResolvingFolderAtURL(
    const QUrl &url, QSet<QUrl> &visitedURLs, const QString &, const QStringList &ignoredNames)
{
    FolderWalk walk(ignoredNames);
    walk.setVisitedFolders(pathsOf(visitedURLs));
    walk.walk(pathFromFileURL(url));
    visitedURLs = folderURLs(walk.visitedFolders());
    return pluginsOf(walk);
}

PluginTable KRPluginManager::pluginsFromResolvedFolderAtURL(
    const QUrl &url, QSet<QUrl> &visitedURLs, const QString &, const QStringList &ignoredNames)
{
    FolderWalk walk(ignoredNames);
    walk.setVisitedFolders(pathsOf(visitedURLs));
    walk.walkResolved(pathFromFileURL(url));
    visitedURLs = folderURLs(walk.visitedFolders());
    return pluginsOf(walk);
}

void KRPluginManager::addPluginsToMenu(Menu &menu, const MenuAction &selector)
{
    ::addPluginsToMenu(plugins(), menu, selector);
}

void KRPluginManager::addCommands(
    const CommandTable &commands, Menu &toMenu, const QVariantMap &fromDescription, const MenuAction &selector) const
{
    addCommandsToMenu(commands, toMenu, fromDescription, selector);
}

void KRPluginManager::sortMenu(Menu &menu, bool recursively) const
{
    ::sortMenu(menu, recursively ? SortExtent::Submenus : SortExtent::TopLevel);
}

bool KRPluginManager::editBundle(const std::shared_ptr<KRPluginBundle> &bundle) const
{
    const auto url = bundle ? bundle->url() : QUrl();
    return openInPluginEditor(url.isEmpty() ? firstPluginsFolderURL() : url) == EditorStart::Started;
}

std::shared_ptr<KRPluginCommand> KRPluginManager::commandWithSpecifier(const KRPluginCommandSpecifier &specifier)
{
    if (!specifier.pluginBundleIdentifier() || !specifier.commandIdentifier())
        return nullptr;
    const auto bundle = plugins().value(*specifier.pluginBundleIdentifier());
    if (!bundle)
        return nullptr;
    const auto found = bundle->commands().find(*specifier.commandIdentifier());
    return found == bundle->commands().end() ? nullptr : found->second;
}

void KRPluginManager::runHandlerWithKey(
    const QString &key, const QString &fromCommand, const QString &inPlugin, const QVariantMap &withContext)
{
    const auto command = commandWithSpecifier({inPlugin, fromCommand});
    if (!command)
        return;
    // A command holds its plug-in weakly: a reload in between must not take it away from the handler.
    LTAppEnvironment::current().mainQueue().async(
        [manager = QPointer(this), command, plugin = command->pluginBundle(), key, withContext] {
            if (manager)
                command->runHandlerWithKey(key, withContext, manager);
        });
}

void KRPluginManager::trackLongRunningCommand(const std::shared_ptr<KRPluginCommand> &command, Completion onComplete)
{
    m_runningCommands->track(command, std::move(onComplete));
}

std::shared_ptr<KRPluginCommand> KRPluginManager::stopTrackingLongRunningCommandWithSpecifier(
    const KRPluginCommandSpecifier &specifier)
{
    return m_runningCommands->stopTracking(specifier);
}

void KRPluginManager::cleanupFinishedCommands()
{
    m_runningCommands->cleanupFinished();
}

void KRPluginManager::didClearEventStack(COScript *)
{
    m_runningCommands->pollSoon();
}

bool KRPluginManager::isCommandRunning(const KRPluginCommandSpecifier &specifier) const
{
    return m_runningCommands->command(specifier) != nullptr;
}

QList<RunningCommand> KRPluginManager::runningCommands() const
{
    return m_runningCommands->list();
}

bool KRPluginManager::stopCommand(const KRPluginCommandSpecifier &specifier)
{
    return m_runningCommands->stop(specifier) != nullptr;
}

double KRPluginManager::lastTimerInterval() const
{
    return m_runningCommands->lastTimerInterval();
}
