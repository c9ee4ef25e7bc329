#pragma once

#include "platform/Export.h"
#include "platform/Snapshot.h"
#include "state/IncompatibleVersions.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <QVariant>
#include <QVariantMap>

#include <memory>
#include <optional>

struct PluginMetadata;

/// What is remembered of each plug-in over the end of the application: whether the user disabled it, whether the user
/// insists on it although its version is known not to work, and which version was last counted as not working. It also
/// knows the list of versions that do not work.
///
/// The memory is one property-list file, a dictionary by plug-in identifier, written as a whole on every change. A file
/// that is missing or cannot be read counts as empty; one that cannot be read is kept beside the new one, with
/// ".unreadable" behind its name. What another program has written meanwhile is read before anything is changed. An
/// entry of the wrong type counts as absent and costs no other.
///
/// Belongs to the main thread; a blocklist download also calls it from its own. Every answer is then of one moment, but
/// of two changes at the same time the file may keep only one.
class KORVAN_EXPORT KRPluginManagingState final
{
public:
    /// `initWithMetadataURL:`. Reads and writes nothing yet.
    explicit KRPluginManagingState(const QUrl &metadataURL);
    ~KRPluginManagingState();
    KRPluginManagingState(const KRPluginManagingState &) = delete;
    KRPluginManagingState &operator=(const KRPluginManagingState &) = delete;

    // The list of versions that do not work

    /// Nil until it is set: then every version works.
    std::optional<IncompatibleVersions> incompatiblePluginVersions() const;
    void setIncompatiblePluginVersions(const std::optional<IncompatibleVersions> &versions);
    /// `isPluginWithIdentifier:incompatibleWithVersion:`. Whether that version of the plug-in is listed, or older than
    /// the listed one.
    bool isPluginWithIdentifier(const QString &identifier, const std::optional<QString> &incompatibleWithVersion) const;
    /// `isPluginVersion:incompatibleWithVersion:`. True unless the plug-in's version is newer than the listed one.
    static bool isPluginVersion(
        const std::optional<QString> &version, const std::optional<QString> &incompatibleWithVersion);

    // The file

    const QUrl &metadataURL() const { return m_metadataURL; }
    /// Read on first request and kept until the next change; nil when there is nothing that can be read.
    std::optional<QVariantMap> metadata() const;
    /// Replaces what is kept in memory; nil, and what no property list can hold, has it read again.
    void setMetadata(const std::optional<QVariantMap> &metadata);
    /// Nil (invalid) when there is none.
    QVariant metadataValueForKey(const QString &key, const QString &identifier) const;
    /// Nil removes the value. Whether it was written.
    bool setMetadataValue(const QVariant &value, const QString &forKey, const QString &identifier);
    /// Replaces all that is kept of one plug-in; nil or an empty dictionary removes it. Whether it was written. (The
    /// name's spelling is kept as it came into use.)
    bool setPluginMetadaDictionary(const std::optional<QVariantMap> &dictionary, const QString &forIdentifier);

    // Enabling

    /// Keeps the user's choice; replaces what was kept of the plug-in.
    void setEnabled(bool enabled, const QString &forPluginIdentifier, const std::optional<QString> &withVersion);
    /// Whether a plug-in that was found starts enabled. Forgets the user's insistence once it is not needed any more.
    bool shouldEnablePluginIdentifier(const QString &identifier, const std::optional<QString> &withVersion);

    // Incompatibility

    /// Remembers that the version does not work. Whether that newly disables the plug-in: not when it was remembered
    /// before, and not when the user had disabled it.
    bool registerIncompatibilityForPluginIdentifier(
        const QString &identifier, const std::optional<QString> &withVersion);
    /// The same for many plug-ins and their versions; how many are newly disabled.
    unsigned registerPluginIncompatibilityForVersions(const QMap<QString, std::optional<QString>> &versions);

    // Cleaning up

    /// Forgets what it knows of all other plug-ins. (The name's spelling is kept as it came into use.)
    void updateMetadataWithPluginIndentifiers(const QStringList &identifiers);
    void removeDisableOverrides();
    void removeIncompatibilityRegistrations();
    void resetIncompatiblePluginMetadata();

    // Blocklist files

    /// The name, without extension, of the list that the application ships.
    static QString pluginsToDisableFilename();
    /// The name of the downloaded list.
    static QString pluginsToDisableRemoteFilename();
    /// Where the downloaded list lies; it need not exist. (The name's spelling is kept as it came into use.)
    static QUrl existingDownloadededBlacklistURL();
    /// The downloaded list, or the shipped one when that cannot be read or is empty; nil when there is neither.
    static std::optional<IncompatibleVersions> incompatiblePlugins();

private:
    std::shared_ptr<const PluginMetadata> currentMetadata() const;
    std::shared_ptr<const PluginMetadata> metadataToBeChanged() const;
    PluginMetadata takeMetadata(std::shared_ptr<const PluginMetadata> read);
    QVariantMap dictionaryFor(const QString &identifier) const;
    template <class Change>
    bool changeEntry(const QString &identifier, Change change);
    bool write(const PluginMetadata &metadata) const;
    void removeEverywhere(const QString &key);

    Snapshot<IncompatibleVersions> m_incompatiblePluginVersions;
    QUrl m_metadataURL;
    mutable Snapshot<PluginMetadata> m_metadata;
};
