#include "bundles/KRPluginBundle.h"

#include "bundles/MenuDescription.h"
#include "bundles/PluginLoading.h"
#include "bundles/PluginManifest.h"
#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/LTAppEnvironment.h"
#include "platform/LTCompareVersions.h"
#include "platform/ObjectText.h"

#include <cerrno>

namespace {

constexpr QByteArrayView bundleExtension = "korvanplugin";
/// A larger icon counts as unreadable.
constexpr qint64 largestIcon = 64 * 1024 * 1024;

QByteArray scriptFolderOf(const QByteArray &bundlePath)
{
    return pathByAppending(bundlePath, "Contents/Korvan");
}

QByteArray resourcePath(const QByteArray &bundlePath, const QString &name)
{
    return pathByAppending(bundlePath, "Contents/Resources/" + name.toUtf8());
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
    return {{}, 0, QStringLiteral("Unable to parse manifest.json at URL: %1 error: %2").arg(urlText(path), reason.localizedDescription)};
}

Result<PluginManifest> readManifest(const QByteArray &path, PluginLoading &loading)
{
    const auto text = readFile(path, largestManifest, JSONParser::padding);
    if (!text && text.error().code == EFBIG)
        return unparsedManifest(path, text.error());
    if (!text)
        return missingManifest(urlText(path));
    auto manifest = parsePluginManifest(text.value(), loading.parser());
    return manifest ? std::move(manifest) : unparsedManifest(path, manifest.error());
}

/// Puts a command into its plug-in's table; one of the same identifier gives way.
void addCommand(CommandTable &table, const std::shared_ptr<KRPluginCommand> &command,
    const std::shared_ptr<KRPluginBundle> &bundle)
{
    if (!command)
        return;
    command->setPluginBundle(bundle);
    table[command->identifier().value_or(QString())] = command;
}

} // namespace

KRPluginBundle::KRPluginBundle(const QByteArray &path)
    : m_path(path)
{
}

KRPluginBundle::~KRPluginBundle() = default;

std::shared_ptr<KRPluginBundle> KRPluginBundle::pluginBundleWithURL(const QUrl &url)
{
    const auto path = pathFromFileURL(url);
    if (!hasExtension(path, bundleExtension) || kindOfTarget(path) != FolderEntry::Kind::Folder)
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
    PluginLoading loading;
    return initWithPath(path, loading);
}

std::shared_ptr<KRPluginBundle> KRPluginBundle::initWithPath(const QByteArray &path, PluginLoading &loading)
{
    auto manifest = readManifest(pathByAppending(scriptFolderOf(path), "manifest.json"), loading);
    if (!manifest) {
        logErrorString(manifest.error().localizedDescription);
        return nullptr;
    }
    const std::shared_ptr<KRPluginBundle> bundle(new KRPluginBundle(path));
    auto values = std::move(manifest).value();
    bundle->take(values);
    KRPluginCommand::ScriptCache scripts;
    for (const auto &entry : values.commands) {
        addCommand(bundle->m_commands,
            KRPluginCommand::commandWithEntry(entry, scripts, scriptFolderOf(path), loading.coreModules()), bundle);
    }
    if (values.icon)
        bundle->readIcon(*values.icon);
    bundle->fillGaps();
    return bundle;
}

void KRPluginBundle::take(PluginManifest &manifest)
{
    m_author = std::move(manifest.author);
    m_authorEmail = std::move(manifest.authorEmail);
    m_name = std::move(manifest.name);
    m_identifier = std::move(manifest.identifier);
    m_pluginDescription = std::move(manifest.pluginDescription);
    m_suppliesData = manifest.suppliesData;
    m_version = std::move(manifest.version);
    m_compatibleVersion = std::move(manifest.compatibleVersion);
    m_maximumCompatibleVersion = std::move(manifest.maximumCompatibleVersion);
    m_homepageURL = manifest.homepageURL;
    m_updatingInfoURL = manifest.updatingInfoURL;
    m_menuDescription = std::move(manifest.menu);
    m_disableCocoaScriptPreprocessor = manifest.disableCocoaScriptPreprocessor;
}

void KRPluginBundle::readIcon(const QString &iconPath)
{
    const auto path = resourcePath(m_path, iconPath);
    auto bytes = readFile(path, largestIcon);
    if (!bytes)
        logErrorString(QStringLiteral("Could not read image data at %1").arg(displayPath(path)));
    m_iconInfo.emplace(iconPath, bytes ? std::optional(std::move(bytes).value()) : std::nullopt);
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
    KRPluginCommand::ScriptCache scripts;
    for (const auto &entry : array.value_or(QVariantList()))
        addCommand(table, KRPluginCommand::commandWithJSON(entry, scripts, korvanPluginURL), pluginBundle);
    return table;
}

QString KRPluginBundle::scriptDefaultTitle()
{
    return untitledScriptTitle();
}

QUrl KRPluginBundle::url() const
{
    return m_path.isEmpty() ? QUrl() : fileURLFromPath(m_path, FileKind::Folder);
}

QVariantMap KRPluginBundle::menuDescription() const
{
    if (!m_menuDescription)
        m_menuDescription = defaultMenuDescription(m_name, m_commands);
    return *m_menuDescription;
}

QString KRPluginBundle::versionedIdentifier() const
{
    return QStringLiteral("%1(%2)").arg(
        m_identifier.value_or(QStringLiteral("unknown.plugin")), m_version.value_or(QStringLiteral("000")));
}

bool KRPluginBundle::isCompatible() const
{
    if (!m_compatibleVersion || !m_maximumCompatibleVersion)
        return false;
    const auto version = LTAppEnvironment::current().bundleShortVersion();
    const auto major = version.left(version.indexOf(u'.'));
    return LTCompareVersions(m_compatibleVersion, major) != 1 && LTCompareVersions(m_maximumCompatibleVersion, major) != -1;
}

QUrl KRPluginBundle::urlForResourceNamed(const QString &name) const
{
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

QString KRPluginBundle::debugDescription() const
{
    QStringList commands;
    for (const auto &[identifier, command] : m_commands)
        commands.append(QStringLiteral("%1 = %2").arg(identifier, objectText("KRPluginCommand", command.get())));
    return QStringLiteral("%1 name: %2 enabled: %3 commands: {%4}")
        .arg(objectText("KRPluginBundle", this), textOrNull(m_name),
            m_enabled ? QStringLiteral("YES") : QStringLiteral("NO"), commands.join(QStringLiteral("; ")));
}

void KRPluginBundle::logErrorString(const QString &message)
{
    auto &environment = LTAppEnvironment::current();
    auto *const target = environment.logTarget();
    if (!target)
        return environment.systemLog(message);
    const QVariantMap entry {
        {QStringLiteral("payload"), QVariantList {message}},
        {QStringLiteral("stringValue"), message},
        {QStringLiteral("level"), QStringLiteral("error")},
    };
    target->log(entry, QStringLiteral("__plugin-loader"));
}
