// Bundles that are made instead of read, and how a bundle is written to a disk.

#include "bundles/KRPluginBundle.h"

#include "bundles/BundleFiles.h"
#include "bundles/PluginManifest.h"
#include "platform/FileURL.h"
#include "platform/ObjectText.h"
#include "platform/script/ValueText.h"

namespace {

std::optional<QString> textOf(const QUrl &url)
{
    return url.isEmpty() ? std::nullopt : std::optional(absoluteString(url));
}

} // namespace

std::shared_ptr<KRPluginBundle> KRPluginBundle::initWithName(const std::optional<QString> &name,
    const std::optional<QString> &identifier, const std::vector<std::shared_ptr<KRPluginCommand>> &commands,
    const QImage &icon)
{
    const auto empty = QStringLiteral("");
    auto bundle = std::make_shared<KRPluginBundle>(Key(), QByteArray());
    bundle->m_identifier = identifier;
    bundle->m_name = name;
    bundle->m_details = std::make_unique<PluginDetails>();
    bundle->m_details->author = empty;
    bundle->m_details->authorEmail = empty;
    bundle->m_details->pluginDescription = empty;
    bundle->m_version = QStringLiteral("1.0"); // a manifest without a version means another one, deliberately
    if (!icon.isNull())
        bundle->m_iconInfo = std::make_shared<KRPluginBundleIconInfo>(icon);
    for (const auto &command : commands)
        addCommand(bundle->m_commands, command, bundle);
    return bundle;
}

OrderedVariantDictionary KRPluginBundle::metadata() const
{
    OrderedVariantDictionary metadata;
    const auto add = [&metadata](const QString &key, const std::optional<QString> &value) {
        if (value)
            metadata.insert({key, *value});
    };
    add(QStringLiteral("author"), author());
    add(QStringLiteral("authorEmail"), authorEmail());
    add(QStringLiteral("name"), name());
    add(QStringLiteral("identifier"), identifier());
    add(QStringLiteral("description"), pluginDescription());
    add(QStringLiteral("homepage"), textOf(homepageURL()));
    add(QStringLiteral("appcast"), textOf(updatingInfoURL()));
    metadata.insert({QStringLiteral("menu"), menuDescription()});
    add(QStringLiteral("version"), version());
    add(QStringLiteral("compatibleVersion"), compatibleVersion());
    add(QStringLiteral("maxCompatibleVersion"), maximumCompatibleVersion());
    if (m_iconInfo && !m_iconInfo->path().isNull())
        add(QStringLiteral("icon"), m_iconInfo->path());
    QVariantList entries;
    for (const auto &entry : m_commands)
        entries.append(QVariant::fromValue(entry.second->metadata()));
    metadata.insert({QStringLiteral("commands"), entries});
    return metadata;
}

bool KRPluginBundle::writeToURL(const QUrl &url) const
{
    const auto description = metadata();
    const auto manifest = manifestText(description);
    if (!manifest) {
        logErrorString(
            QStringLiteral("Unable to create JSON object from metadata: %1, error: %2")
                .arg(descriptionOfValue(QVariant::fromValue(description)), manifest.error().localizedDescription));
        return false;
    }
    auto icon = m_iconInfo ? m_iconInfo->fileWrapper() : std::nullopt;
    const auto error = pluginFileWrapper(m_name, manifest.value(), m_commands, std::move(icon)).writeToURL(url);
    if (!error)
        return true;
    logErrorString(QStringLiteral("Failed to write plugin bundle to URL: %1, error: %2")
                       .arg(textOrNull(textOf(url)), error->localizedDescription));
    return false;
}
