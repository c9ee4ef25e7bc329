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

std::shared_ptr<const PluginMetadata> KRPluginManagingState::currentMetadata() const
{
    if (auto cached = m_metadata.get())
        return cached;
    auto read = readMetadata(pathFromFileURL(m_metadataURL));
    return read ? m_metadata.set(std::move(*read)) : nullptr;
}

/// As currentMetadata(), but what another program has written since is read first. What a host has set stays.
std::shared_ptr<const PluginMetadata> KRPluginManagingState::metadataToBeChanged() const
{
    const auto cached = m_metadata.get();
    if (cached && cached->source && cached->source != identityOfFile(pathFromFileURL(m_metadataURL)))
        m_metadata.clear();
    return currentMetadata();
}

QVariantMap KRPluginManagingState::dictionaryFor(const QString &identifier) const
{
    const auto current = currentMetadata();
    const auto value = current ? current->dictionary.value(identifier) : QVariant();
    return value.typeId() == QMetaType::QVariantMap ? value.toMap() : QVariantMap();
}

std::optional<QVariantMap> KRPluginManagingState::metadata() const
{
    const auto current = currentMetadata();
    return current ? std::optional(current->dictionary.toVariantMap()) : std::nullopt;
}

void KRPluginManagingState::setMetadata(const std::optional<QVariantMap> &metadata)
{
    auto kept = metadata ? PropertyListDictionary::fromVariantMap(*metadata) : std::nullopt;
    if (kept)
        m_metadata.set({std::move(*kept), std::nullopt});
    else
        m_metadata.clear();
}

bool KRPluginManagingState::write(const PluginMetadata &metadata) const
{
    return !writeMetadata(pathFromFileURL(m_metadataURL), metadata);
}

QVariant KRPluginManagingState::metadataValueForKey(const QString &key, const QString &identifier) const
{
    return dictionaryFor(identifier).value(key);
}

bool KRPluginManagingState::setMetadataValue(const QVariant &value, const QString &forKey, const QString &identifier)
{
    return changeEntry(identifier,
        [&](PropertyListDictionary &changed) { return changed.setValueInEntry(identifier, forKey, value); });
}

bool KRPluginManagingState::setPluginMetadaDictionary(
    const std::optional<QVariantMap> &dictionary, const QString &forIdentifier)
{
    const bool isKept = dictionary && !dictionary->isEmpty();
    return changeEntry(forIdentifier, [&](PropertyListDictionary &changed) {
        return changed.setValue(forIdentifier, isKept ? QVariant(*dictionary) : QVariant());
    });
}

/// Whether it was written; what is kept in memory is as before otherwise.
template <class Change>
bool KRPluginManagingState::changeEntry(const QString &identifier, Change change)
{
    auto read = metadataToBeChanged();
    const bool wasRead = read != nullptr;
    auto changed = takeMetadata(std::move(read));
    auto before = changed.dictionary.copyOfEntry(identifier);
    if (change(changed.dictionary) && write(changed)) {
        m_metadata.clear();
        return true;
    }
    changed.dictionary.setEntry(identifier, std::move(before));
    if (wasRead)
        m_metadata.set(std::move(changed));
    return false;
}

/// What was read, to be changed: the kept one itself where nobody else has it, since a copy of many entries costs as
/// much as writing them.
PluginMetadata KRPluginManagingState::takeMetadata(std::shared_ptr<const PluginMetadata> read)
{
    if (!read)
        return {};
    const auto taken = m_metadata.take(read);
    return taken ? std::move(*taken) : PluginMetadata{read->dictionary.copy(), read->source};
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
    const auto current = metadataToBeChanged();
    if (!current)
        return;
    const QSet<QString> kept(identifiers.begin(), identifiers.end());
    auto gone = current->dictionary.keys();
    gone.removeIf([&kept](const QString &identifier) { return kept.contains(identifier); });
    if (gone.isEmpty())
        return;
    PluginMetadata changed{current->dictionary.copy(), current->source};
    for (const auto &identifier : std::as_const(gone))
        changed.dictionary.setEntry(identifier, nullptr);
    write(changed);
    m_metadata.clear();
}

/// Entries that are no dictionaries are not this class's, and stay.
void KRPluginManagingState::removeEverywhere(const QString &key)
{
    const auto current = metadataToBeChanged();
    auto changed = current ? PluginMetadata{current->dictionary.copy(), current->source} : PluginMetadata();
    const auto identifiers = changed.dictionary.keys();
    for (const auto &identifier : identifiers) {
        if (changed.dictionary.value(identifier).typeId() == QMetaType::QVariantMap)
            changed.dictionary.setValueInEntry(identifier, key, {});
    }
    write(changed);
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
