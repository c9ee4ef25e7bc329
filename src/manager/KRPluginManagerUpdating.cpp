// What a manager is asked about updates: checks, downloads, installation, summaries.

#include "manager/InstalledPlugins.h"
#include "manager/KRPluginManager.h"
#include "manager/PluginFolders.h"
#include "updates/PluginInstallation.h"
#include "updates/PluginUpdates.h"
#include "updates/PluginWarehouse.h"
#include "updates/UpdateSummaries.h"

namespace {

std::optional<KRError> installDownloaded(
    const InstalledPlugins &installed, const QString &identifier, const QUrl &downloaded)
{
    KRError error;
    installPlugin(downloaded, identifier, installed.find(identifier), applicationPluginsFolder(), &error);
    return error == KRError() ? std::nullopt : std::optional(error);
}

} // namespace

PluginVersionsTable KRPluginManager::pluginVersions() const
{
    return m_updates->versions();
}

void KRPluginManager::setPluginVersions(const PluginVersionsTable &versions)
{
    m_updates->setVersions(versions);
}

std::shared_ptr<KRPluginVersions> KRPluginManager::versionsForPlugin(
    const std::shared_ptr<KRPluginBundle> &plugin) const
{
    return plugin ? pluginVersions().value(plugin->identifier().value_or(QString())) : nullptr;
}

void KRPluginManager::removePluginVersionsNotInIdentifiers(const QStringList &identifiers)
{
    m_updates->keepVersionsOf(identifiers);
}

void KRPluginManager::checkForPluginUpdatesWithHandler(
    UpdateCheckHandler handler, std::function<void()> completionHandler)
{
    setPluginVersions({});
    checkForPluginUpdates(plugins().values(), std::move(handler), std::move(completionHandler));
}

void KRPluginManager::checkForPluginUpdates(
    const QList<std::shared_ptr<KRPluginBundle>> &, UpdateCheckHandler handler, std::function<void()> completionHandler)
{
    m_updates->check(plugins(), std::move(handler), std::move(completionHandler));
}

std::optional<QList<KRError>> KRPluginManager::downloadPluginsErrors() const
{
    return m_updates->errors();
}

void KRPluginManager::setDownloadPluginsErrors(const std::optional<QList<KRError>> &errors)
{
    m_updates->setErrors(errors);
}

void KRPluginManager::addDownloadAndDecompressPluginError(const KRError &error)
{
    m_updates->addError(error);
}

void KRPluginManager::downloadPluginUpdates(const UpdateList &updates, UpdateErrorsHandler withCompletionHandler)
{
    m_updates->downloadAll(updates, std::move(withCompletionHandler));
}

void KRPluginManager::downloadCompatiblePluginUpdatesWithCompletionHandler(UpdateErrorsHandler completionHandler)
{
    downloadPluginUpdates(compatiblePluginUpdatesNotDownloaded().value_or(UpdateList()), std::move(completionHandler));
}

void KRPluginManager::downloadLatestPluginUpdatesWithCompletionHandler(UpdateErrorsHandler completionHandler)
{
    downloadPluginUpdates(latestPluginUpdatesNotDownloaded().value_or(UpdateList()), std::move(completionHandler));
}

void KRPluginManager::cancelDownloadingPluginVersions()
{
    m_updates->cancelAll();
}

void KRPluginManager::downloadPluginUpdate(
    const QString &identifier, const QString &withVersion, UpdateErrorHandler completionHandler)
{
    m_updates->download(identifier, withVersion, std::move(completionHandler));
}

QUrl KRPluginManager::pluginsWarehouseURL()
{
    return ::pluginsWarehouseURL();
}

QUrl KRPluginManager::warehousePluginFolderForIdentifier(const QString &identifier, const QString &withVersion)
{
    return warehousePluginFolder(identifier, withVersion);
}

QUrl KRPluginManager::downloadedPluginURLWithIdentifier(const QString &identifier, const QString &version) const
{
    return downloadedPluginURL(identifier, version);
}

QUrl KRPluginManager::firstPluginBundleFoundInFolder(const QUrl &folder) const
{
    return ::firstPluginBundleFoundInFolder(folder);
}

bool KRPluginManager::installPluginAtURL(const QUrl &url, const QString &withIdentifier, KRError *error)
{
    plugins(); // which loads them where they are not
    return installPlugin(
        url, withIdentifier, m_installedPlugins->find(withIdentifier), applicationPluginsFolder(), error);
}

bool KRPluginManager::installPluginWithIdentifier(const QString &identifier, const QString &version, KRError *error)
{
    const auto downloaded = downloadedPluginURL(identifier, version);
    return !downloaded.isEmpty() && installPluginAtURL(downloaded, identifier, error);
}

void KRPluginManager::downloadAndInstallPluginWithIdentifier(
    const QString &identifier, const QString &version, UpdateErrorHandler downloadCompletionHandler)
{
    plugins();
    if (const auto downloaded = downloadedPluginURL(identifier, version); !downloaded.isEmpty()) {
        downloadCompletionHandler(installDownloaded(*m_installedPlugins, identifier, downloaded));
        return;
    }
    downloadPluginUpdate(identifier, version,
        [installed = m_installedPlugins, identifier, version, completion = std::move(downloadCompletionHandler)](
            const std::optional<KRError> &error) {
            auto failure = error;
            if (const auto downloaded = downloadedPluginURL(identifier, version); !error && !downloaded.isEmpty())
                failure = installDownloaded(*installed, identifier, downloaded);
            if (completion)
                completion(failure);
        });
}

bool KRPluginManager::isPluginUpdateDownloadedWithIdentifier(const QString &identifier, const QString &version) const
{
    return !downloadedPluginURL(identifier, version).isEmpty();
}

bool KRPluginManager::clearPluginsCache()
{
    setPluginVersions({});
    return removePluginsWarehouse() == WarehouseRemoval::Removed;
}

bool KRPluginManager::isPluginAtURL(const QUrl &url, const QUrl &newerThanPluginAtURL)
{
    return isPluginNewerThan(url, newerThanPluginAtURL);
}

UpdateSummaries KRPluginManager::updateSummaries()
{
    const auto isIncompatible = [this](const QString &identifier, const QString &version) {
        return isPluginWithIdentifier(identifier, version);
    };
    const auto isDownloaded = [](const QString &identifier, const QString &version) {
        return !downloadedPluginURL(identifier, version).isEmpty();
    };
    return {pluginVersions(), plugins(), isIncompatible, isDownloaded};
}

qsizetype KRPluginManager::numberOfPluginsWithUpdates()
{
    return updateSummaries().numberOfPluginsWithUpdates();
}

QList<std::shared_ptr<KRPluginBundle>> KRPluginManager::pluginsWithKorvanCompatipleUpdates()
{
    return updateSummaries().pluginsWithCompatibleUpdates();
}

void KRPluginManager::setPluginsWithKorvanCompatipleUpdates(const QList<std::shared_ptr<KRPluginBundle>> &plugins)
{
    m_pluginsWithKorvanCompatipleUpdates = {plugins.begin(), plugins.end()};
}

qsizetype KRPluginManager::numberOfPluginsWithKorvanCompatibleUpdates()
{
    return pluginsWithKorvanCompatipleUpdates().size();
}

QMap<QString, QString> KRPluginManager::incompatiblePluginsWithUpdates()
{
    return updateSummaries().updatesOf(incompatiblePlugins());
}

QMap<QString, QString> KRPluginManager::incompatiblePluginsWithCompatibleUpdates()
{
    return updateSummaries().compatibleOf(incompatiblePluginsWithUpdates());
}

std::optional<UpdateList> KRPluginManager::latestPluginUpdatesNotDownloaded()
{
    return updateSummaries().latestNotDownloaded();
}

std::optional<UpdateList> KRPluginManager::compatiblePluginUpdatesNotDownloaded()
{
    return updateSummaries().compatibleNotDownloaded();
}
