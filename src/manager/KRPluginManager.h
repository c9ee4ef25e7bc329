#pragma once

#include "bundles/PluginTable.h"
#include "commands/DataSuppliers.h"
#include "commands/KRPluginCommandManager.h"
#include "commands/KRPluginCommandSpecifier.h"
#include "commands/KRPluginLogAction.h"
#include "manager/RunningCommand.h"
#include "platform/Export.h"
#include "platform/monitoring/KRFolderMonitor.h"
#include "state/BlocklistUpdate.h"
#include "state/KRPluginManagingState.h"
#include "updates/KRPluginUpdater.h"
#include "updates/PluginUpdateHandlers.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class COFlowDelegate;
class COScript;
class FolderWalk;
class IncompatiblePlugins;
class InstalledPlugins;
class Menu;
class PluginFolderMonitoring;
class PluginUpdates;
class RemoteBlocklist;
class RunningCommands;
class UpdateSummaries;

/// Posted on the environment's notification centre, by the manager, after each reload.
inline const QString KRPluginManagerDidReloadPluginsNotification =
    QStringLiteral("KRPluginManagerDidReloadPluginsNotification");

/// Posted on the environment's notification centre, by the manager, after a plug-in was enabled or disabled and the
/// reload that this takes.
inline const QString KRPluginManagerPluginDidChangeEnabledStateNotification =
    QStringLiteral("KRPluginManagerPluginDidChangeEnabledStateNotification");

/// Posted on the environment's notification centre, by the manager, after a command has begun or ceased to be one that
/// stays running.
inline const QString KRPluginManagerRunningCommandsDidChangeNotification =
    QStringLiteral("KRPluginManagerRunningCommandsDidChangeNotification");

/// The registry of installed plug-ins, and what a host asks of it. Main thread only; needs a running event loop for
/// commands that stay running and for runs by identifier.
///
/// A host calls initialisePlugins() once and makes one manager, which lives as long as the application:
///
///     KRPluginManager::initialisePlugins();
///     KRPluginManager manager(KRPluginManager::pluginsURLs(), nullptr, nullptr);
///     manager.reloadPlugins();
///
/// With a state store it watches its folders from the first reload on, and reloads after changes. A manager that is
/// owned by shared pointers is then kept alive by that: clear the monitors, or set the registry to nil, before letting
/// it go. One that is owned in another way just ends.
class KORVAN_EXPORT KRPluginManager final : public KRPluginCommandManager,
                                            public std::enable_shared_from_this<KRPluginManager>
{
public:
    /// No folders, no updater, no state store.
    KRPluginManager();
    /// `initWithPluginsFolderURLs:updater:pluginStateManager:`. Does not walk the folders. Updater
    /// and state store may be null; folders are watched for changes exactly when there is a state store.
    KRPluginManager(const QList<QUrl> &pluginsFolderURLs, std::shared_ptr<KRPluginUpdater> updater,
        std::shared_ptr<KRPluginManagingState> pluginStateManager);
    /// Ends the sessions of commands that still run.
    ~KRPluginManager() override;

    // Class operations

    /// Starts the script engine.
    static void initialisePlugins();
    /// "Plugins" in the application's support folder, created when missing.
    static QUrl mainPluginsFolderURL();
    /// The place for a new, unsaved plug-in.
    static QUrl defaultPluginURL();
    /// The folders for the initializer: the application's and those of the user default "AdditionalPluginFolders".
    static QList<QUrl> pluginsURLs();

    // The registry

    /// As of the latest reload. Reloads first when it was set to nil.
    PluginTable plugins();
    /// Replaces the registry; nil empties it until the next request, and ends the watching of folders.
    void setPlugins(const std::optional<PluginTable> &plugins);
    /// Walks all folders anew, decides which plug-ins are enabled, replaces the registry and posts
    /// KRPluginManagerDidReloadPluginsNotification.
    void reloadPlugins();
    /// How long the latest reload took, without its notification; 0 before the first.
    std::chrono::microseconds durationOfLatestReload() const { return m_durationOfLatestReload; }

    const QList<QUrl> &pluginsFolderURLs() const { return m_pluginsFolderURLs; }
    /// The first of the folders; empty when there is none. (The class operation of this name in the interface is the
    /// static mainPluginsFolderURL().)
    QUrl firstPluginsFolderURL() const;
    QStringList folderNamesToIgnore() const;
    /// `relativePathByDeletingCommonPathComponentsWithFileURL:fromURL:`. What of `fromURL` follows the components that
    /// both have in common.
    QString relativePathByDeletingCommonPathComponentsWithFileURL(const QUrl &url, const QUrl &fromURL) const;
    /// The plug-ins below a folder that is not among `visitedURLs`; the folders on the way join them. The relative
    /// path is not used: bundles are made from their URL alone.
    PluginTable pluginsByResolvingFolderAtURL(
        const QUrl &url, QSet<QUrl> &visitedURLs, const QString &relativeFolderPath, const QStringList &ignoredNames);
    /// The same for a folder whose links were resolved already.
    PluginTable pluginsFromResolvedFolderAtURL(
        const QUrl &url, QSet<QUrl> &visitedURLs, const QString &relativeFolderPath, const QStringList &ignoredNames);

    // Enabling

    /// While set, every plug-in that a reload finds is disabled.
    bool disableAllPlugins() const { return m_disableAllPlugins; }
    void setDisableAllPlugins(bool disable) { m_disableAllPlugins = disable; }
    /// `shouldEnablePluginIdentifier:withVersion:`. Whether a plug-in that a reload finds is enabled.
    bool shouldEnablePluginIdentifier(const QString &identifier, const std::optional<QString> &withVersion) const;
    /// Keeps the user's choice, reloads, and posts KRPluginManagerPluginDidChangeEnabledStateNotification. While all
    /// plug-ins are switched off, this ends and every other plug-in is disabled by itself; each of them is a reload and
    /// a notification of its own. Without a state store nothing is kept.
    /// A null bundle only reloads and notifies.
    void enablePlugin(const std::shared_ptr<KRPluginBundle> &bundle);
    /// Keeps the user's choice, reloads, and posts KRPluginManagerPluginDidChangeEnabledStateNotification.
    void disablePlugin(const std::shared_ptr<KRPluginBundle> &bundle);
    /// Disables every plug-in by itself; each is a reload and a notification of its own.
    void resetAllPluginMetadataToBeDisabled();
    void postPluginDidChangeEnabledStateNotification();
    QList<std::shared_ptr<KRPluginBundle>> enabledPlugins();
    QList<std::shared_ptr<KRPluginBundle>> disabledPlugins();

    // Removing

    /// Stops the plug-in's commands and moves its folder to the user's trash. Answers whether it is gone; `error`,
    /// where given, holds the reason otherwise. False for null and for a plug-in without a folder. Does not reload.
    bool movePluginToTrash(const std::shared_ptr<KRPluginBundle> &bundle, KRError *error = nullptr);

    // Folder monitoring

    /// Whether folders are watched at all.
    bool monitorForChanges() const { return m_monitorForChanges; }
    /// One for each watched folder; empty when nothing is watched.
    const std::vector<std::unique_ptr<KRFolderMonitor>> &folderMonitors() const;
    /// Watches these folders, and the plug-ins in them, in place of those before: any change reloads and registers the
    /// incompatible plug-ins. Nothing when monitorForChanges() is false.
    void setupFolderMonitoringWithVisitedURLs(const QSet<QUrl> &visitedURLs);
    void clearFolderMonitors();

    // Incompatibility

    /// Identifiers of the installed plug-ins whose version is known not to work.
    QStringList incompatiblePlugins();
    bool isIncompatiblePlugin(const std::shared_ptr<KRPluginBundle> &bundle) const;
    /// `isPluginWithIdentifier:incompatibleWithVersion:`. False without a state store.
    bool isPluginWithIdentifier(const QString &identifier, const std::optional<QString> &incompatibleWithVersion) const;
    /// Registers the installed versions that do not work in the state store and counts those met for the first time.
    /// Does not reload: plug-ins stay as they are until the next one.
    void registerIncompatiblePlugins();
    /// How many plug-ins were disabled for incompatibility, as counted since a host set the number last; kept in the
    /// user defaults.
    qint64 numberOfIncompatiblePluginsDisabled() const;
    void setNumberOfIncompatiblePluginsDisabled(qint64 number);

    // The vendor's list of versions that do not work

    /// Where the list for this application and machine lies, as text.
    QString pluginsDisabledListRemotePath() const;
    /// Fetches the list and returns at once. When it differs from the one before, it is kept in the support folder, put
    /// into the state store and registered as by registerIncompatiblePlugins(), all on a thread of the network;
    /// plug-ins stay as they are until the next reload. Transfers that fail are silent and change nothing; an answer
    /// that is no list takes the kept one's place, and the shipped list is in force then. `completionHandler`, which
    /// may be empty, is called on that thread at the end, also when the manager ends before.
    void downloadRemotePluginsBlocklist(BlocklistUpdateHandler completionHandler = {});
    /// `contentsSameForSmallTextFiles:file2:`. Whether both hold the same text; two files that cannot be read do.
    bool contentsSameForSmallTextFiles(const QUrl &file1, const QUrl &file2) const;

    // What it was made with

    const std::shared_ptr<KRPluginManagingState> &pluginStateManager() const { return m_pluginStateManager; }
    const std::shared_ptr<KRPluginUpdater> &updater() const { return m_updater; }

    // Updates: checking and downloading
    //
    // Handlers are called on the network thread, unless an operation says otherwise, and not after the manager has
    // ended: its destructor waits for one that runs. They must not wait for the main thread. Without an updater nothing
    // is found, downloaded or told.

    /// What the feeds offered in the latest check, by the plug-ins' identifiers. Changes while a check runs, and a
    /// reload drops what is no longer installed.
    PluginVersionsTable pluginVersions() const;
    void setPluginVersions(const PluginVersionsTable &versions);
    /// Null when nothing is known.
    std::shared_ptr<KRPluginVersions> versionsForPlugin(const std::shared_ptr<KRPluginBundle> &plugin) const;
    void removePluginVersionsNotInIdentifiers(const QStringList &identifiers);

    /// Forgets what was offered and reads the feeds of all plug-ins that have one. `handler` is called for each of
    /// them, and `completionHandler`, which must be given where there is no updater, at the end: at once, by this
    /// thread, when there is nothing to read. A plug-in whose feed turns out to be published as JSON too has that URL
    /// afterwards.
    void checkForPluginUpdatesWithHandler(UpdateCheckHandler handler, std::function<void()> completionHandler);
    /// `checkForPluginUpdates:handler:completionHandler:`. The same without forgetting. The plug-ins given are ignored,
    /// all are checked: a check of some would leave the records of the others out of date.
    void checkForPluginUpdates(const QList<std::shared_ptr<KRPluginBundle>> &plugins, UpdateCheckHandler handler,
        std::function<void()> completionHandler);

    /// Of the batch that runs; nil for none.
    std::optional<QList<KRError>> downloadPluginsErrors() const;
    void setDownloadPluginsErrors(const std::optional<QList<KRError>> &errors);
    void addDownloadAndDecompressPluginError(const KRError &error);

    /// Downloads archives and unpacks them into the warehouse. `withCompletionHandler`, which may be empty, is called
    /// on the main thread; the errors are forgotten as soon as that call is queued, so that it usually finds nil. A
    /// host that wants all of them puts an updater of its own before KRPluginUpdaterImplementation.
    void downloadPluginUpdates(const UpdateList &updates, UpdateErrorsHandler withCompletionHandler);
    void downloadCompatiblePluginUpdatesWithCompletionHandler(UpdateErrorsHandler completionHandler);
    void downloadLatestPluginUpdatesWithCompletionHandler(UpdateErrorsHandler completionHandler);
    /// Cancels the batch that runs.
    void cancelDownloadingPluginVersions();
    /// `downloadPluginUpdate:withVersion:completionHandler:`. Downloads one offered version into the warehouse.
    /// `completionHandler`, which may be empty, is called at once, by this thread, for a version that is there already
    /// or that is not offered ("KRPluginMangerErrorDomain", 0).
    void downloadPluginUpdate(
        const QString &identifier, const QString &withVersion, UpdateErrorHandler completionHandler);

    // Updates: the warehouse and installation

    /// The folder of downloaded and of replaced plug-ins, created when missing.
    static QUrl pluginsWarehouseURL();
    /// `warehousePluginFolderForIdentifier:withVersion:`. Both are used as given, slashes included; empty when they
    /// would name a place outside of the warehouse. Nothing is created.
    static QUrl warehousePluginFolderForIdentifier(const QString &identifier, const QString &withVersion);
    /// The plug-in that lies in the warehouse for that version; empty when there is none.
    QUrl downloadedPluginURLWithIdentifier(const QString &identifier, const QString &version) const;
    /// The plug-in nearest to the folder's top; empty when there is none.
    QUrl firstPluginBundleFoundInFolder(const QUrl &folder) const;
    bool isPluginUpdateDownloadedWithIdentifier(const QString &identifier, const QString &version) const;

    /// `installPluginAtURL:withIdentifier:error:`. Moves a plug-in to where the installed one of that identifier is, or
    /// into mainPluginsFolderURL(). The installed one goes into the warehouse, or into the trash when its version is
    /// there already. Answers whether the new one is in its place; `error`, where given, may hold an error all the
    /// same: that the warehouse has no place for the old one. Does not reload.
    bool installPluginAtURL(const QUrl &url, const QString &withIdentifier, KRError *error = nullptr);
    /// The same for a downloaded version; false, with `error` untouched, when it is not downloaded.
    bool installPluginWithIdentifier(const QString &identifier, const QString &version, KRError *error = nullptr);
    /// Installs a downloaded version and calls the handler, which must be given, at once. One that is not downloaded
    /// yet is downloaded and installed on the network thread.
    void downloadAndInstallPluginWithIdentifier(
        const QString &identifier, const QString &version, UpdateErrorHandler downloadCompletionHandler);
    /// Forgets what was offered and removes the warehouse, replaced plug-ins included. Answers whether it is gone; a
    /// failure is said in the system log.
    bool clearPluginsCache();
    /// `isPluginAtURL:newerThanPluginAtURL:`. Whether both are plug-ins and the first has the higher version.
    static bool isPluginAtURL(const QUrl &url, const QUrl &newerThanPluginAtURL);

    // Updates: what a host shows of them
    //
    // Compatible means that the version is not listed as one that does not work; the manifest's own range is not asked.

    qsizetype numberOfPluginsWithUpdates();
    /// The installed plug-ins with a compatible newer version. What was set is kept, not owned, and has no influence:
    /// the name, its spelling included, and the setter are there for hosts that use them.
    QList<std::shared_ptr<KRPluginBundle>> pluginsWithKorvanCompatipleUpdates();
    void setPluginsWithKorvanCompatipleUpdates(const QList<std::shared_ptr<KRPluginBundle>> &plugins);
    qsizetype numberOfPluginsWithKorvanCompatibleUpdates();
    /// Latest versions by identifier.
    QMap<QString, QString> incompatiblePluginsWithUpdates();
    QMap<QString, QString> incompatiblePluginsWithCompatibleUpdates();
    /// Nil, not empty, for none.
    std::optional<UpdateList> latestPluginUpdatesNotDownloaded();
    /// The same for every compatible version, older ones than the installed included.
    std::optional<UpdateList> compatiblePluginUpdatesNotDownloaded();
    /// A counter for the host's own use.
    qint64 updatesAddedToWarehouse() const { return m_updatesAddedToWarehouse; }
    void setUpdatesAddedToWarehouse(qint64 count) { m_updatesAddedToWarehouse = count; }

    // The menu

    /// `addPluginsToMenu:selector:`. Appends a submenu for each enabled plug-in (the items themselves where a plug-in
    /// says so), then sorts the menu's own level by title, what was in it before included. Each command's item has its
    /// KRPluginCommandSpecifier as represented object and `selector` as action.
    void addPluginsToMenu(Menu &menu, const MenuAction &selector);
    /// `addCommands:toMenu:fromDescription:selector:`. Appends what a menu description lists. Elements that mean
    /// nothing, and identifiers that name no command, are skipped.
    void addCommands(const CommandTable &commands, Menu &toMenu, const QVariantMap &fromDescription,
        const MenuAction &selector) const;
    /// `sortMenu:recursively:`. Orders the items by title, whatever their case, as the language of QLocale() does;
    /// equal titles keep their order, and separators come first.
    void sortMenu(Menu &menu, bool recursively) const;
    /// Starts the program of the user default "Plugin Editor" on the plug-in's folder, or on the first of the plug-in
    /// folders for one that has none (a null bundle too). Answers whether it was started: not without that setting or
    /// a folder; a failure is said in the system log. Nothing waits for the program.
    bool editBundle(const std::shared_ptr<KRPluginBundle> &bundle) const;
    /// Tells the user, in a critical alert, of a plug-in that hasUnsupportedBinaries(), and comes back when the user
    /// has read it. Nothing happens for any other plug-in and for null. Only hosts call it, when they see fit.
    void alertAboutUnsupportedPluginBundle(const std::shared_ptr<KRPluginBundle> &bundle) const;

    // Running commands

    /// Null when the plug-in or the command is unknown, or the specifier names no plug-in.
    std::shared_ptr<KRPluginCommand> commandWithSpecifier(const KRPluginCommandSpecifier &specifier);
    /// Looks the command up now and runs it later, on the main queue, never inside this call. Nothing happens when
    /// there is no such command.
    void runHandlerWithKey(
        const QString &key, const QString &fromCommand, const QString &inPlugin, const QVariantMap &withContext);
    void trackLongRunningCommand(const std::shared_ptr<KRPluginCommand> &command, Completion onComplete) override;
    std::shared_ptr<KRPluginCommand> stopTrackingLongRunningCommandWithSpecifier(
        const KRPluginCommandSpecifier &specifier) override;
    /// Polls all tracked commands.
    void cleanupFinishedCommands();
    /// Polls shortly after the last of several calls. `session` is not used.
    void didClearEventStack(COScript *session);
    /// Whether a command is tracked under the specifier.
    bool isCommandRunning(const KRPluginCommandSpecifier &specifier) const;
    /// The tracked commands, in the order in which they came.
    QList<RunningCommand> runningCommands() const;
    /// Ends a tracked command at once, whatever it waits for: its session is torn down, its completion called. Answers
    /// whether there was one. Not for a command whose script is computing: scriptExceededTimeLimit() is.
    bool stopCommand(const KRPluginCommandSpecifier &specifier);
    /// In seconds; 0 while nothing is tracked.
    double lastTimerInterval() const;

    std::shared_ptr<KRPluginLogAction> logAction() const override { return m_logAction.lock(); }
    /// Held weakly; null for none.
    void setLogAction(const std::shared_ptr<KRPluginLogAction> &logAction) { m_logAction = logAction; }
    QUrl urlForUnsavedPlugin() const override { return defaultPluginURL(); }

    // Data for layers

    /// What the commands of enabled plug-ins have registered. A plug-in that says "suppliesData" registers it when one
    /// of its commands runs, usually for the action "Startup", and keeps that command running.
    QList<DataSupplier> availableDataSuppliers();
    /// For registering; its supply() asks one of them for values.
    DataSuppliers *dataSuppliers() override { return &m_dataSuppliers; }

private:
    void rebuildRegistry();
    std::function<void()> foldersChangedBlock();
    PluginTable pluginsOf(const FolderWalk &walk) const;
    UpdateSummaries updateSummaries();
    void changeEnabledState(const std::shared_ptr<KRPluginBundle> &bundle, bool enabled);

    DataSuppliers m_dataSuppliers;
    std::optional<PluginTable> m_plugins;
    std::chrono::microseconds m_durationOfLatestReload{0};
    bool m_disableAllPlugins = false;
    bool m_monitorForChanges;
    QList<QUrl> m_pluginsFolderURLs;
    std::weak_ptr<KRPluginLogAction> m_logAction;
    std::shared_ptr<KRPluginUpdater> m_updater;
    std::shared_ptr<KRPluginManagingState> m_pluginStateManager;
    std::shared_ptr<IncompatiblePlugins> m_incompatiblePlugins;
    std::unique_ptr<RunningCommands> m_runningCommands;
    std::shared_ptr<COFlowDelegate> m_flowDelegate;
    std::unique_ptr<PluginFolderMonitoring> m_folderMonitoring;
    std::shared_ptr<InstalledPlugins> m_installedPlugins;
    std::shared_ptr<PluginUpdates> m_updates;
    std::vector<std::weak_ptr<KRPluginBundle>> m_pluginsWithKorvanCompatipleUpdates;
    qint64 m_updatesAddedToWarehouse = 0;
    /// Last, for it to end first: it works on another thread.
    std::unique_ptr<RemoteBlocklist> m_remoteBlocklist;
};
