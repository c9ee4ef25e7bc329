#pragma once

#include "platform/Export.h"
#include "updates/VersionsDictionary.h"

#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

/// The versions of one plug-in that its feed offers. One that a manager holds is not changed any more and may be read
/// on any thread; otherwise one thread at a time.
class KORVAN_EXPORT KRPluginVersions
{
public:
    /// Without any version.
    KRPluginVersions(const QString &identifier, const QUrl &updatingInfoURL);

    const QString &identifier() const { return m_identifier; }
    /// The feed that the versions came from.
    const QUrl &updatingInfoURL() const { return m_updatingInfoURL; }

    QStringList versions() const { return m_versionsDictionary.keys(); }
    /// An entry replaces the one for the same version.
    void addVersions(const VersionsDictionary &versions);
    /// Where the version's archive is; empty for a version that is not listed.
    QUrl downloadURLForVersion(const QString &version) const;
    bool isVersionListed(const QString &version) const { return m_versionsDictionary.contains(version); }
    /// Whether the version has a place in the warehouse, not whether anything lies there: true whenever there is a
    /// warehouse. Hosts have come to rely on this; KRPluginManager::isPluginUpdateDownloadedWithIdentifier() answers
    /// what the name says.
    bool isVersionDownloaded(const QString &version) const;
    VersionsDictionary versionsDictionary() const { return m_versionsDictionary; }
    /// The highest; nil when there is none.
    std::optional<QString> latestVersionAvailable() const;
    /// Whether the latest version is newer than this (installed) one. Nil is older than any version.
    bool isUpdateAvailableForVersion(const std::optional<QString> &version) const;

private:
    QString m_identifier;
    QUrl m_updatingInfoURL;
    VersionsDictionary m_versionsDictionary;
};
