// How a bundle is made from its folder, and what is found there.

#include "bundles/KRPluginBundle.h"

#include "bundles/BundleLimits.h"
#include "bundles/PluginBundleExtension.h"
#include "bundles/PluginLoading.h"
#include "bundles/PluginManifest.h"
#include "commands/CoreModules.h"
#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"

#include <cerrno>

namespace {

QByteArray scriptFolderOf(const QByteArray &bundlePath)
{
    return pathByAppending(bundlePath, "Contents/Korvan");
}

QByteArray resourcePath(const QByteArray &bundlePath, const QString &name)
{
    return pathByAppending(bundlePath, QByteArray("Contents/Resources/" + name.toUtf8()));
}

QString urlText(const QByteArray &path)
{
    return absoluteString(fileURLFromPath(path, FileKind::File));
}

KRError missingManifest(const QString &url)
{
    return {{}, 0, QStringLiteral("Missing plugin manifest.json at URL: %1").arg(url)};
}

KRError unparsedManifest(const QByteArray &path, const KRError &reason)
{
    return {{}, 0,
        QStringLiteral("Unable to parse manifest.json at URL: %1 error: %2")
            .arg(urlText(path), reason.localizedDescription)};
}

Result<QByteArray> readManifest(const QByteArray &path)
{
    auto text = readFile(path, largestManifest, JSONParser::padding);
    if (text)
        return text;
    return text.error().code == EFBIG ? unparsedManifest(path, text.error()) : missingManifest(urlText(path));
}

} // namespace

std::shared_ptr<KRPluginBundle> KRPluginBundle::pluginBundleWithURL(const QUrl &url)
{
    const auto path = pathFromFileURL(url);
    if (!hasExtension(path, pluginBundleExtension) || kindOfTarget(path) != FolderEntry::Kind::Folder)
        return nullptr;
    return initPluginBundleWithURL(url);
}

std::shared_ptr<KRPluginBundle> KRPluginBundle::initPluginBundleWithURL(const QUrl &url)
{
    if (url.isEmpty()) {
        logErrorString(QStringLiteral("Unable to locate manifest.json for bundle at URL: (null)"));
        return nullptr;
    }
    const auto path = pathFromFileURL(url);
    if (path.isEmpty()) {
        const auto manifestURL = pathByAppending(url.toEncoded(), "Contents/Korvan/manifest.json");
        logErrorString(missingManifest(QString::fromLatin1(manifestURL)).localizedDescription);
        return nullptr;
    }
    const auto coreModules = coreModulesOfApplication();
    PluginLoading loading{coreModules, {}, {}};
    auto bundle = initWithPath(path, loading);
    deliver(loading.messages.messages());
    return bundle;
}

std::shared_ptr<KRPluginBundle> KRPluginBundle::initWithPath(const QByteArray &path, PluginLoading &loading)
{
    const auto manifestPath = pathByAppending(path, "Contents/Korvan/manifest.json");
    const auto fail = [&loading](const KRError &error) {
        loading.messages.add(LogMessages::Recipient::User, error.localizedDescription);
        return nullptr;
    };
    const auto text = readManifest(manifestPath);
    if (!text)
        return fail(text.error());
    auto manifest = parsePluginManifest(text.value(), loading.parser);
    if (!manifest)
        return fail(unparsedManifest(manifestPath, manifest.error()));

    auto bundle = std::make_shared<KRPluginBundle>(Key(), path);
    bundle->m_manifestText = text.value();
    bundle->take(std::move(manifest).value(), loading);
    return bundle;
}

/// Puts a command into its plug-in's table; one of the same identifier gives way.
void KRPluginBundle::addCommand(
    CommandTable &table, const std::shared_ptr<KRPluginCommand> &command, const std::shared_ptr<KRPluginBundle> &bundle)
{
    if (!command)
        return;
    command->setPluginBundle(bundle);
    table[command->identifier().value_or(QString())] = command;
}

void KRPluginBundle::makeCommands(std::vector<CommandEntry> &entries, PluginLoading &loading)
{
    ScriptCache scripts;
    CommandLoading commandLoading{scriptFolderOf(m_path), loading.coreModules, scripts, loading.messages, {}};
    const auto self = std::static_pointer_cast<KRPluginBundle>(shared_from_this());
    m_commands.reserve(entries.size());
    for (auto &entry : entries)
        addCommand(m_commands, KRPluginCommand::commandWithEntry(std::move(entry), commandLoading), self);
}

void KRPluginBundle::take(PluginManifest manifest, PluginLoading &loading)
{
    m_name = std::move(manifest.name);
    m_identifier = std::move(manifest.identifier);
    m_suppliesData = manifest.suppliesData;
    m_version = std::move(manifest.version);
    m_disableCocoaScriptPreprocessor = manifest.disableCocoaScriptPreprocessor;
    makeCommands(manifest.commands, loading);
    if (manifest.icon)
        readIcon(*manifest.icon, loading.messages);
    fillGaps();
}

void KRPluginBundle::readIcon(const QString &iconPath, LogMessages &messages)
{
    const auto path = resourcePath(m_path, iconPath);
    auto bytes = readFile(path, largestIcon);
    if (!bytes) {
        messages.add(
            LogMessages::Recipient::User, QStringLiteral("Could not read image data at %1").arg(displayPath(path)));
    }
    m_iconInfo = std::make_shared<KRPluginBundleIconInfo>(
        iconPath, bytes ? std::optional(std::move(bytes).value()) : std::nullopt);
}

void KRPluginBundle::fillGaps()
{
    if (!m_version)
        m_version = QStringLiteral("0.0.1");
    if (!m_name)
        m_name = withoutExtension(displayPath(lastPathComponent(m_path)));
    if (!m_identifier)
        m_identifier = absoluteString(url());
}

CommandTable KRPluginBundle::commandsFromArray(const std::optional<QVariantList> &array, const QUrl &korvanPluginURL,
    const std::shared_ptr<KRPluginBundle> &pluginBundle)
{
    CommandTable table;
    ScriptCache scripts;
    for (const auto &entry : array.value_or(QVariantList()))
        addCommand(table, KRPluginCommand::commandWithJSON(entry, scripts, korvanPluginURL), pluginBundle);
    return table;
}

QUrl KRPluginBundle::urlForResourceNamed(const QString &name) const
{
    if (m_path.isEmpty())
        return {};
    const auto path = resourcePath(m_path, name);
    switch (kindOfTarget(path)) {
    case FolderEntry::Kind::Folder:
        return fileURLFromPath(path, FileKind::Folder);
    case FolderEntry::Kind::File:
        return fileURLFromPath(path, FileKind::File);
    default:
        return {};
    }
}
