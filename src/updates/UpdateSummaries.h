#pragma once

#include "bundles/PluginTable.h"
#include "updates/PluginUpdates.h"
#include "updates/VersionsDictionary.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

/// What can be said of the offered versions, seen from the installed plug-ins. Compatible means here that the version
/// is not listed as one that does not work; a manifest's own range is not looked at.
///
/// Every answer is computed anew; nothing is changed. The functions given are asked during the calls only.
class UpdateSummaries
{
public:
    using VersionQuestion = std::function<bool(const QString &identifier, const QString &version)>;
    using LatestVersions = QMap<QString, QString>;

    UpdateSummaries(PluginVersionsTable offered, PluginTable installed, VersionQuestion isIncompatible,
        VersionQuestion isDownloaded);

    qsizetype numberOfPluginsWithUpdates() const;
    /// The installed plug-ins whose latest version is newer and compatible.
    QList<std::shared_ptr<KRPluginBundle>> pluginsWithCompatibleUpdates() const;
    /// Of these plug-ins those with a newer version, and their latest.
    LatestVersions updatesOf(const QStringList &identifiers) const;
    /// Of these those whose version is compatible.
    LatestVersions compatibleOf(const LatestVersions &versions) const;
    /// Nil, not empty, for none, here and in the next one. Plug-ins that are not installed count as older.
    std::optional<UpdateList> latestNotDownloaded() const;
    /// Every version, also those that are not newer than the installed one: who wants to go back finds them here.
    std::optional<UpdateList> compatibleNotDownloaded() const;

private:
    std::optional<QString> installedVersion(const QString &identifier) const;
    QMap<QString, QUrl> compatibleNotDownloaded(const KRPluginVersions &record) const;

    PluginVersionsTable m_offered;
    PluginTable m_installed;
    VersionQuestion m_isIncompatible;
    VersionQuestion m_isDownloaded;
};
