#include "state/KRPluginManagingState.h"

#include "platform/FileURL.h"
#include "platform/LTCompareVersions.h"
#include "platform/PropertyListDictionary.h"
#include "state/Blocklist.h"
#include "state/MetadataFile.h"

#include <QSet>

namespace {

const auto disabledKey = QStringLiteral("disabled");
const auto overriddenKey = QStringLiteral("IncompatibleDisableOverridden");
const auto registeredKey = QStringLiteral("PluginIncompatibleRegistered");

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

KRPluginManagingState::~KRPluginManagingState() = default;

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

std::shared_ptr<const PropertyListDictionary> KRPluginManagingState::currentMetadata() const
{
    if (auto cached = m_metadata.get())
        return cached;
    auto read = readMetadata(pathFromFileURL(m_metadataURL));
    return read ? m_metadata.set(std::move(*read)) : nullptr;
}

QVariantMap KRPluginManagingState::dictionaryFor(const QString &identifier) const
{
    const auto current = currentMetadata();
    const auto value = current ? current->value(identifier) : QVariant();
    return value.typeId() == QMetaType::QVariantMap ? value.toMap() : QVariantMap();
}

std::optional<QVariantMap> KRPluginManagingState::metadata() const
{
    const auto current = currentMetadata();
    return current ? std::optional(current->toVariantMap()) : std::nullopt;
}

void KRPluginManagingState::setMetadata(const std::optional<QVariantMap> &metadata)
{
    auto kept = metadata ? PropertyListDictionary::fromVariantMap(*metadata) : std::nullopt;
    if (kept)
        m_metadata.set(std::move(*kept));
    else
        m_metadata.clear();
}

bool KRPluginManagingState::write(const Metadata &metadata, bool wasRead) const
{
    const auto before = wasRead ? FileContent::Known : FileContent::Unread;
    return !writeMetadata(pathFromFileURL(m_metadataURL), metadata, before);
}

QVariant KRPluginManagingState::metadataValueForKey(const QString &key, const QString &identifier) const
{
    return dictionaryFor(identifier).value(key);
}

bool KRPluginManagingState::setMetadataValue(const QVariant &value, const QString &forKey, const QString &identifier)
{
    auto dictionary = dictionaryFor(identifier);
    if (value.isValid())
        dictionary.insert(forKey, value);
    else
        dictionary.remove(forKey);
    return setPluginMetadaDictionary(dictionary, identifier);
}

bool KRPluginManagingState::setPluginMetadaDictionary(
    const std::optional<QVariantMap> &dictionary, const QString &forIdentifier)
{
    auto read = currentMetadata();
    const bool wasRead = read != nullptr;
    auto changed = takeMetadata(std::move(read));
    const auto before = changed.value(forIdentifier);
    const bool isKept = dictionary && !dictionary->isEmpty();
    if (changed.setValue(forIdentifier, isKept ? QVariant(*dictionary) : QVariant()) && write(changed, wasRead)) {
        m_metadata.clear();
        return true;
    }
    changed.setValue(forIdentifier, before);
    if (wasRead)
        m_metadata.set(std::move(changed));
    return false;
}

/// What was read, to be changed: the kept one itself where nobody else has it, since a copy of many entries costs as
/// much as writing them.
PropertyListDictionary KRPluginManagingState::takeMetadata(std::shared_ptr<const Metadata> read)
{
    if (!read)
        return {};
    const auto taken = m_metadata.take(read);
    return taken ? std::move(*taken) : read->copy();
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
    const auto dictionary = dictionaryFor(identifier);
    const bool isOverridden = isTrue(dictionary.value(overriddenKey));
    if (isOverridden && !isIncompatible)
        setMetadataValue({}, overriddenKey, identifier);
    return (!isIncompatible || isOverridden) && !isTrue(dictionary.value(disabledKey));
}

bool KRPluginManagingState::registerIncompatibilityForPluginIdentifier(
    const QString &identifier, const std::optional<QString> &withVersion)
{
    const auto dictionary = dictionaryFor(identifier);
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
    auto gone = current->keys();
    gone.removeIf([&kept](const QString &identifier) { return kept.contains(identifier); });
    if (gone.isEmpty())
        return;
    auto changed = current->copy();
    for (const auto &identifier : std::as_const(gone))
        changed.setValue(identifier, {});
    write(changed, true);
    m_metadata.clear();
}

void KRPluginManagingState::removeEverywhere(const QString &key)
{
    const auto current = currentMetadata();
    Metadata changed;
    const auto identifiers = current ? current->keys() : QStringList();
    for (const auto &identifier : identifiers) {
        auto dictionary = current->value(identifier).toMap();
        dictionary.remove(key);
        if (!dictionary.isEmpty())
            changed.setValue(identifier, dictionary);
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
