#include "state/KRPluginManagingState.h"

#include "platform/FileURL.h"
#include "platform/LTCompareVersions.h"
#include "state/MetadataFile.h"

#include <QSet>

namespace {

const auto disabledKey = QStringLiteral("disabled");
const auto overriddenKey = QStringLiteral("IncompatibleDisableOverridden");
const auto registeredKey = QStringLiteral("PluginIncompatibleRegistered");

QVariantMap dictionaryIn(const QVariantMap *metadata, const QString &identifier)
{
    const auto value = metadata ? metadata->value(identifier) : QVariant();
    return value.typeId() == QMetaType::QVariantMap ? value.toMap() : QVariantMap();
}

bool isTrue(const QVariant &value)
{
    return value.typeId() == QMetaType::Bool && value.toBool();
}

QVariantMap dictionaryForChoice(bool enabled, bool incompatible, const QString &version)
{
    QVariantMap dictionary;
    if (!enabled && !incompatible)
        dictionary.insert(disabledKey, true);
    if (enabled && incompatible)
        dictionary.insert(overriddenKey, true);
    if (incompatible)
        dictionary.insert(registeredKey, version);
    return dictionary;
}

} // namespace

KRPluginManagingState::KRPluginManagingState(const QUrl &metadataURL)
    : m_metadataURL(metadataURL)
{ }

std::optional<IncompatibleVersions> KRPluginManagingState::incompatiblePluginVersions() const
{
    const auto versions = m_incompatiblePluginVersions.get();
    return versions ? std::optional(*versions) : std::nullopt;
}

void KRPluginManagingState::setIncompatiblePluginVersions(const std::optional<IncompatibleVersions> &versions)
{
    if (versions)
        m_incompatiblePluginVersions.set(*versions);
    else
        m_incompatiblePluginVersions.clear();
}

bool KRPluginManagingState::isPluginWithIdentifier(
    const QString &identifier, const std::optional<QString> &incompatibleWithVersion) const
{
    const auto versions = m_incompatiblePluginVersions.get();
    if (!versions)
        return false;
    const auto listed = versions->constFind(identifier);
    return listed != versions->constEnd() && isPluginVersion(incompatibleWithVersion, *listed);
}

bool KRPluginManagingState::isPluginVersion(
    const std::optional<QString> &version, const std::optional<QString> &incompatibleWithVersion)
{
    return LTCompareVersions(version, incompatibleWithVersion) <= 0;
}

std::shared_ptr<const QVariantMap> KRPluginManagingState::currentMetadata() const
{
    if (auto cached = m_metadata.get())
        return cached;
    auto read = readMetadata(pathFromFileURL(m_metadataURL));
    if (!read)
        return nullptr;
    m_metadata.set(*read);
    return std::make_shared<const QVariantMap>(std::move(*read));
}

std::optional<QVariantMap> KRPluginManagingState::metadata() const
{
    const auto current = currentMetadata();
    return current ? std::optional(*current) : std::nullopt;
}

void KRPluginManagingState::setMetadata(const std::optional<QVariantMap> &metadata)
{
    if (metadata)
        m_metadata.set(*metadata);
    else
        m_metadata.clear();
}

bool KRPluginManagingState::write(const QVariantMap &metadata, bool wasRead) const
{
    const auto before = wasRead ? FileContent::Known : FileContent::Unread;
    return !writeMetadata(pathFromFileURL(m_metadataURL), metadata, before);
}

QVariant KRPluginManagingState::metadataValueForKey(const QString &key, const QString &identifier) const
{
    return dictionaryIn(currentMetadata().get(), identifier).value(key);
}

bool KRPluginManagingState::setMetadataValue(const QVariant &value, const QString &forKey, const QString &identifier)
{
    auto dictionary = dictionaryIn(currentMetadata().get(), identifier);
    if (value.isValid())
        dictionary.insert(forKey, value);
    else
        dictionary.remove(forKey);
    return setPluginMetadaDictionary(dictionary, identifier);
}

bool KRPluginManagingState::setPluginMetadaDictionary(
    const std::optional<QVariantMap> &dictionary, const QString &forIdentifier)
{
    const auto current = currentMetadata();
    auto changed = current ? *current : QVariantMap();
    if (dictionary && !dictionary->isEmpty())
        changed.insert(forIdentifier, *dictionary);
    else
        changed.remove(forIdentifier);
    if (!write(changed, current != nullptr))
        return false;
    m_metadata.clear();
    return true;
}

void KRPluginManagingState::setEnabled(
    bool enabled, const QString &forPluginIdentifier, const std::optional<QString> &withVersion)
{
    const bool isIncompatible = isPluginWithIdentifier(forPluginIdentifier, withVersion);
    const auto dictionary = dictionaryForChoice(enabled, isIncompatible, withVersion.value_or(QString()));
    setPluginMetadaDictionary(dictionary, forPluginIdentifier);
}

bool KRPluginManagingState::shouldEnablePluginIdentifier(
    const QString &identifier, const std::optional<QString> &withVersion)
{
    const bool isIncompatible = isPluginWithIdentifier(identifier, withVersion);
    const auto current = currentMetadata();
    const auto dictionary = dictionaryIn(current.get(), identifier);
    const bool isOverridden = isTrue(dictionary.value(overriddenKey));
    if (isOverridden && !isIncompatible)
        setMetadataValue({}, overriddenKey, identifier);
    return (!isIncompatible || isOverridden) && !isTrue(dictionary.value(disabledKey));
}

bool KRPluginManagingState::registerIncompatibilityForPluginIdentifier(
    const QString &identifier, const std::optional<QString> &withVersion)
{
    const auto dictionary = dictionaryIn(currentMetadata().get(), identifier);
    const auto registered = dictionary.value(registeredKey);
    if (!isPluginWithIdentifier(identifier, withVersion)) {
        if (registered.isValid())
            setMetadataValue({}, registeredKey, identifier);
        return false;
    }
    const auto version = withVersion.value_or(QString());
    if (registered.typeId() == QMetaType::QString && registered.toString() == version)
        return false;
    setMetadataValue(version, registeredKey, identifier);
    return !isTrue(dictionary.value(disabledKey));
}

unsigned KRPluginManagingState::registerPluginIncompatibilityForVersions(
    const QMap<QString, std::optional<QString>> &versions)
{
    unsigned newlyDisabled = 0;
    for (auto plugin = versions.begin(); plugin != versions.end(); ++plugin) {
        if (registerIncompatibilityForPluginIdentifier(plugin.key(), plugin.value()))
            ++newlyDisabled;
    }
    return newlyDisabled;
}

void KRPluginManagingState::updateMetadataWithPluginIndentifiers(const QStringList &identifiers)
{
    const auto current = currentMetadata();
    if (!current)
        return;
    const QSet<QString> kept(identifiers.begin(), identifiers.end());
    auto changed = *current;
    const auto removed = changed.removeIf([&kept](const auto &entry) { return !kept.contains(entry.key()); });
    if (removed == 0)
        return;
    write(changed, true);
    m_metadata.clear();
}

void KRPluginManagingState::removeEverywhere(const QString &key)
{
    const auto current = currentMetadata();
    QVariantMap changed;
    const auto identifiers = current ? current->keys() : QStringList();
    for (const auto &identifier : identifiers) {
        auto dictionary = dictionaryIn(current.get(), identifier);
        dictionary.remove(key);
        if (!dictionary.isEmpty())
            changed.insert(identifier, dictionary);
    }
    write(changed, current != nullptr);
    m_metadata.clear();
}

void KRPluginManagingState::removeDisableOverrides()
{
    removeEverywhere(overriddenKey);
}

void KRPluginManagingState::removeIncompatibilityRegistrations()
{
    removeEverywhere(registeredKey);
}

void KRPluginManagingState::resetIncompatiblePluginMetadata()
{
    removeDisableOverrides();
    removeIncompatibilityRegistrations();
}

QString KRPluginManagingState::pluginsToDisableFilename()
{
    return shippedBlocklistName(BlocklistTarget::current());
}

QString KRPluginManagingState::pluginsToDisableRemoteFilename()
{
    return downloadedBlocklistName(BlocklistTarget::current());
}

QUrl KRPluginManagingState::existingDownloadededBlacklistURL()
{
    return BlocklistFiles::current().downloaded;
}

std::optional<IncompatibleVersions> KRPluginManagingState::incompatiblePlugins()
{
    return readBlocklist(BlocklistFiles::current());
}
