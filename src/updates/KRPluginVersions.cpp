#include "updates/KRPluginVersions.h"

#include "platform/LTCompareVersions.h"
#include "updates/PluginWarehouse.h"

KRPluginVersions::KRPluginVersions(const QString &identifier, const QUrl &updatingInfoURL)
    : m_identifier(identifier)
    , m_updatingInfoURL(updatingInfoURL)
{ }

void KRPluginVersions::addVersions(const VersionsDictionary &versions)
{
    m_versionsDictionary.insert(versions);
}

QUrl KRPluginVersions::downloadURLForVersion(const QString &version) const
{
    return m_versionsDictionary.value(version).value(downloadURLKey).toUrl();
}

bool KRPluginVersions::isVersionDownloaded(const QString &version) const
{
    return !warehousePluginFolder(m_identifier, version).isEmpty();
}

std::optional<QString> KRPluginVersions::latestVersionAvailable() const
{
    return LTHighestVersionNumber(versions());
}

bool KRPluginVersions::isUpdateAvailableForVersion(const std::optional<QString> &version) const
{
    const auto latest = latestVersionAvailable();
    return latest && LTCompareVersions(version, latest) < 0;
}
