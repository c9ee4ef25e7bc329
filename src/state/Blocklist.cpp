#include "state/Blocklist.h"

#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/JSONText.h"
#include "platform/LTAppEnvironment.h"
#include "platform/PropertyList.h"
#include "platform/QZHardwareInfo.h"

#include <QVariantMap>

namespace {

QString withProcessor(const QString &name, const BlocklistTarget &target)
{
    return target.processor.isEmpty() ? name : name + u'_' + target.processor;
}

std::optional<QVariantMap> dictionaryOf(const Result<QVariant> &value)
{
    if (!value || value.value().typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return value.value().toMap();
}

std::optional<QVariantMap> readDictionary(const QUrl &url, Result<QVariant> (*parse)(const QByteArray &))
{
    const auto bytes = readFile(pathFromFileURL(url), largestTextFile);
    return bytes ? dictionaryOf(parse(bytes.value())) : std::nullopt;
}

IncompatibleVersions versionsIn(const QVariantMap &dictionary)
{
    IncompatibleVersions versions;
    for (auto entry = dictionary.begin(); entry != dictionary.end(); ++entry) {
        if (entry->typeId() == QMetaType::QString)
            versions.insert(entry.key(), entry->toString());
    }
    return versions;
}

} // namespace

BlocklistTarget BlocklistTarget::current()
{
    const auto processor = QZHardwareInfo::CPUType();
    const bool isIntel = processor == QZHardwareInfo::intelName();
    return {LTAppEnvironment::current().bundleShortVersion(), isIntel ? processor : QString()};
}

QString shippedBlocklistName(const BlocklistTarget &target)
{
    return withProcessor(QStringLiteral("PluginsToDisable"), target);
}

QString downloadedBlocklistName(const BlocklistTarget &target)
{
    // A version that looks like a path must not lead out of the support folder.
    return QStringLiteral("PluginsToDisable") + remoteBlocklistName(target).replace(u'/', u'-');
}

QString remoteBlocklistName(const BlocklistTarget &target)
{
    return withProcessor(target.applicationVersion, target) + QStringLiteral(".json");
}

BlocklistFiles BlocklistFiles::current()
{
    const auto &environment = LTAppEnvironment::current();
    const auto target = BlocklistTarget::current();
    const auto folder = pathFromFileURL(environment.applicationSupportFolder());
    const auto downloaded = folder.isEmpty()
        ? QUrl()
        : fileURLFromPath(pathByAppending(folder, downloadedBlocklistName(target).toUtf8()), FileKind::File);
    return {downloaded, environment.urlForResource(shippedBlocklistName(target), QStringLiteral("plist"))};
}

std::optional<IncompatibleVersions> readBlocklist(const BlocklistFiles &files)
{
    if (const auto downloaded = readDictionary(files.downloaded, &variantFromJSON);
        downloaded && !downloaded->isEmpty())
        return versionsIn(*downloaded);
    const auto shipped = readDictionary(files.shipped, &variantFromPropertyList);
    return shipped ? std::optional(versionsIn(*shipped)) : std::nullopt;
}
