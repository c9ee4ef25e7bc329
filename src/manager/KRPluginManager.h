#pragma once

#include "commands/KRPluginCommandManager.h"
#include "commands/KRPluginCommandSpecifier.h"
#include "commands/KRPluginLogAction.h"
#include "manager/PluginTable.h"
#include "platform/Export.h"
#include "platform/KRFolderMonitor.h"
#include "state/KRPluginManagingState.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class COFlowDelegate;
class COScript;
class FolderWalk;
class KRPluginUpdater;
class PluginFolderMonitoring;
class RunningCommands;

/// Posted on the environment's notification centre, by the manager, after each reload.
inline const QString KRPluginManagerDidReloadPluginsNotification =
    QStringLiteral("KRPluginManagerDidReloadPluginsNotification");

/// The registry of installed plug-ins, and what a host asks of it. Main thread only; needs a running event loop for
/// commands that stay running and for runs by identifier.
///
/// A host calls initialisePlugins() once and makes one manager, which lives as long as the application:
///
///     KRPluginManager::initialisePlugins();
///     KRPluginManager manager(KRPluginManager::pluginsURLs(), nullptr, nullptr);
///     manager.reloadPlugins();
///
/// A manager with a state store watches its folders from its first reload on. If a shared_ptr holds it, its monitors
/// hold it too: it then lives until clearFolderMonitors(), or setPlugins() with nil, and until the host has let it go.
class KORVAN_EXPORT KRPluginManager final : public KRPluginCommandManager,
                                            public std::enable_shared_from_this<KRPluginManager>
{
public:
    /// No folders, no updater, no state store.
    KRPluginManager();
    /// `initWithPluginsFolderURLs:updater:pluginStateManager:`. Does not walk the folders. Updater and state store may
    /// be null; folders are watched for changes exactly when there is a state store.
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
    /// Walks all folders anew, decides which plug-ins are enabled, replaces the registry, watches the folders that were
    /// walked and posts KRPluginManagerDidReloadPluginsNotification.
    void reloadPlugins();

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
    /// `isPluginWithIdentifier:incompatibleWithVersion:`. False without a state store.
    bool isPluginWithIdentifier(const QString &identifier, const std::optional<QString> &incompatibleWithVersion) const;
    bool isIncompatiblePlugin(const std::shared_ptr<KRPluginBundle> &bundle) const;
    /// How many plug-ins were disabled for incompatibility; kept in the user defaults.
    qint64 numberOfIncompatiblePluginsDisabled() const { return m_numberOfIncompatiblePluginsDisabled; }
    void setNumberOfIncompatiblePluginsDisabled(qint64 number);
    bool monitorForChanges() const { return m_monitorForChanges; }
    const std::shared_ptr<KRPluginManagingState> &pluginStateManager() const { return m_pluginStateManager; }
    const std::shared_ptr<KRPluginUpdater> &updater() const { return m_updater; }

    // Watching folders

    /// One for each folder that is watched; empty when nothing is.
    const std::vector<std::unique_ptr<KRFolderMonitor>> &folderMonitors() const;
    /// `setupFolderMonitoringWithVisitedURLs:`. Watches these folders in place of others; a change reloads the plug-ins
    /// and registers the incompatible ones. Those that cannot be watched are left out. Without a state store nothing is
    /// watched. Every reload does so with the folders that it has walked.
    void setupFolderMonitoringWithVisitedURLs(const QSet<QUrl> &visitedURLs);
    /// Ends the watching. The manager may end with it when only its monitors still hold it.
    void clearFolderMonitors();

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
    /// In seconds; 0 while nothing is tracked.
    double lastTimerInterval() const;

    std::shared_ptr<KRPluginLogAction> logAction() const override { return m_logAction.lock(); }
    /// Held weakly; null for none.
    void setLogAction(const std::shared_ptr<KRPluginLogAction> &logAction) { m_logAction = logAction; }
    QUrl urlForUnsavedPlugin() const override { return defaultPluginURL(); }

private:
    void registerIncompatiblePlugins();
    std::function<void()> foldersChangedBlock();
    PluginTable pluginsOf(const FolderWalk &walk) const;

    std::optional<PluginTable> m_plugins;
    bool m_disableAllPlugins = false;
    bool m_monitorForChanges;
    QList<QUrl> m_pluginsFolderURLs;
    qint64 m_numberOfIncompatiblePluginsDisabled = 0;
    std::weak_ptr<KRPluginLogAction> m_logAction;
    std::shared_ptr<KRPluginUpdater> m_updater;
    std::shared_ptr<KRPluginManagingState> m_pluginStateManager;
    std::unique_ptr<RunningCommands> m_runningCommands;
    std::unique_ptr<PluginFolderMonitoring> m_folderMonitoring;
    std::shared_ptr<COFlowDelegate> m_flowDelegate;
};
