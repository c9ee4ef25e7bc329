#include "updates/ReportingUpdater.h"

void ReportingUpdater::downloadPluginUpdatingInfo(const PluginTable &plugins,
    UpdatingInfoHandler downloadUpdatingInfoHandler, std::function<void()> completionHandler)
{
    m_updater.downloadPluginUpdatingInfo(plugins, std::move(downloadUpdatingInfoHandler), std::move(completionHandler));
}

void ReportingUpdater::downloadPlugins(
    const UpdateList &updates, PluginDownloadHandler downloadPluginHandler, std::function<void()> completionHandler)
{
    const auto reporting = [this, handler = std::move(downloadPluginHandler)](const std::optional<KRError> &error,
                               const QString &identifier, const QString &version, const QUrl &file) {
        if (error)
            add(*error);
        m_isUnpackingBatch = true;
        handler(error, identifier, version, file);
        m_isUnpackingBatch = false;
    };
    m_updater.downloadPlugins(updates, reporting, std::move(completionHandler));
}

void ReportingUpdater::downloadPluginFromURL(const QUrl &url, PluginFileHandler completionHandler)
{
    m_updater.downloadPluginFromURL(url, std::move(completionHandler));
}

void ReportingUpdater::cancelDownloadingPluginVersions()
{
    m_updater.cancelDownloadingPluginVersions();
}

bool ReportingUpdater::decompressPluginZip(const QUrl &zip, const QUrl &toFolder, KRError *error)
{
    KRError failure;
    const bool isUnpacked = m_updater.decompressPluginZip(zip, toFolder, &failure);
    if (failure == KRError())
        return isUnpacked;
    if (m_isUnpackingBatch)
        add(failure);
    if (error)
        *error = failure;
    return isUnpacked;
}

QList<KRError> ReportingUpdater::errors() const
{
    const std::lock_guard lock(m_mutex);
    return m_errors;
}

QList<KRError> ReportingUpdater::takeErrors()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_errors, {});
}

void ReportingUpdater::setProgressHandler(PluginDownloadProgressHandler handler)
{
    m_updater.setProgressHandler(std::move(handler));
}

void ReportingUpdater::add(const KRError &error)
{
    const std::lock_guard lock(m_mutex);
    m_errors.append(error);
}
