#include "updates/UpdateSummaries.h"

#include "platform/LTCompareVersions.h"

namespace {

std::optional<UpdateList> nilIfEmpty(const UpdateList &list)
{
    return list.isEmpty() ? std::nullopt : std::optional(list);
}

} // namespace

UpdateSummaries::UpdateSummaries(
    PluginVersionsTable offered, PluginTable installed, VersionQuestion isIncompatible, VersionQuestion isDownloaded)
    : m_offered(std::move(offered))
    , m_installed(std::move(installed))
    , m_isIncompatible(std::move(isIncompatible))
    , m_isDownloaded(std::move(isDownloaded))
{ }

std::optional<QString> UpdateSummaries::installedVersion(const QString &identifier) const
{
    const auto plugin = m_installed.value(identifier);
    return plugin ? plugin->version() : std::nullopt;
}

qsizetype UpdateSummaries::numberOfPluginsWithUpdates() const
{
    return updatesOf(m_offered.keys()).size();
}

QList<std::shared_ptr<KRPluginBundle>> UpdateSummaries::pluginsWithCompatibleUpdates() const
{
    QList<std::shared_ptr<KRPluginBundle>> plugins;
    const auto compatible = compatibleOf(updatesOf(m_offered.keys()));
    for (auto update = compatible.begin(); update != compatible.end(); ++update) {
        if (installedVersion(update.key()))
            plugins.append(m_installed.value(update.key()));
    }
    return plugins;
}

UpdateSummaries::LatestVersions UpdateSummaries::updatesOf(const QStringList &identifiers) const
{
    LatestVersions latest;
    for (const auto &identifier : identifiers) {
        const auto record = m_offered.value(identifier);
        if (record && record->isUpdateAvailableForVersion(installedVersion(identifier)))
            latest.insert(identifier, *record->latestVersionAvailable());
    }
    return latest;
}

UpdateSummaries::LatestVersions UpdateSummaries::compatibleOf(const LatestVersions &versions) const
{
    auto compatible = versions;
    compatible.removeIf([this](const auto &update) { return m_isIncompatible(update.key(), update.value()); });
    return compatible;
}

std::optional<UpdateList> UpdateSummaries::latestNotDownloaded() const
{
    UpdateList list;
    const auto updates = updatesOf(m_offered.keys());
    for (auto update = updates.begin(); update != updates.end(); ++update) {
        const auto &version = update.value();
        if (!m_isDownloaded(update.key(), version))
            list[update.key()] = {{version, m_offered.value(update.key())->downloadURLForVersion(version)}};
    }
    return nilIfEmpty(list);
}

std::optional<UpdateList> UpdateSummaries::compatibleNotDownloaded() const
{
    UpdateList list;
    for (auto record = m_offered.begin(); record != m_offered.end(); ++record) {
        const auto versions = record.value() ? compatibleNotDownloaded(*record.value()) : QMap<QString, QUrl>();
        if (!versions.isEmpty())
            list.insert(record.key(), versions);
    }
    return nilIfEmpty(list);
}

QMap<QString, QUrl> UpdateSummaries::compatibleNotDownloaded(const KRPluginVersions &record) const
{
    QMap<QString, QUrl> archives;
    const auto versions = record.versions();
    for (const auto &version : versions) {
        if (!m_isIncompatible(record.identifier(), version) && !m_isDownloaded(record.identifier(), version))
            archives.insert(version, record.downloadURLForVersion(version));
    }
    return archives;
}
