#include "Commands.h"

#include "UpdateDownloads.h"
#include "UpdateSelection.h"

#include "platform/LTCompareVersions.h"
#include "platform/Result.h"

#include <QDir>
#include <QFileInfo>

namespace {

KRError problem(const QString &text)
{
    return {{}, 0, text};
}

/// The highest version that lies in the warehouse and is newer than the installed one.
std::optional<QString> highestDownloaded(const KRPluginManager &manager, const KRPluginBundle &plugin)
{
    const auto identifier = plugin.identifier().value_or(QString());
    const auto version = plugin.version().value_or(QString());
    const auto place = KRPluginManager::warehousePluginFolderForIdentifier(identifier, version).toLocalFile();
    QStringList newer;
    for (const auto &name :
        QDir(QFileInfo(QDir::cleanPath(place)).path()).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (LTCompareVersions(version, name) < 0 && manager.isPluginUpdateDownloadedWithIdentifier(identifier, name))
            newer.append(name);
    }
    return LTHighestVersionNumber(newer);
}

/// What the feed offers, or why there is nothing.
Result<QString> latestVersion(PluginSession &session, const KRPluginBundle &plugin, Output &output)
{
    const auto identifier = plugin.identifier().value_or(QString());
    const auto feed = checkFeeds(session, output).value(identifier);
    if (feed.error) {
        const auto downloaded = highestDownloaded(session.manager(), plugin);
        return downloaded ? Result<QString>(*downloaded) : Result<QString>(*feed.error);
    }
    const auto record = session.manager().pluginVersions().value(identifier);
    if (!record || !record->isUpdateAvailableForVersion(plugin.version()))
        return problem(QStringLiteral("There is no newer version of \"%1\".").arg(identifier));
    return *feed.latest;
}

/// The version to be installed, or why there is none.
Result<QString> versionToInstall(PluginSession &session, const UpdateSelection &selection, Output &output)
{
    auto &manager = session.manager();
    const auto &identifier = selection.identifier;
    if (selection.version && manager.isPluginUpdateDownloadedWithIdentifier(identifier, *selection.version))
        return *selection.version;
    const auto plugin = manager.plugins().value(identifier);
    if (!plugin)
        return problem(QStringLiteral("There is no plug-in \"%1\".").arg(identifier));
    if (!selection.version)
        return latestVersion(session, *plugin, output);
    const auto feed = checkFeeds(session, output).value(identifier);
    return feed.error ? Result<QString>(*feed.error) : Result<QString>(*selection.version);
}

/// Why what was downloaded is not the plug-in; nil when it is. A plug-in without an identifier goes by its place, which
/// another copy cannot have.
std::optional<KRError> flawOf(const KRPluginManager &manager, const OfferedVersion &version)
{
    const auto url = manager.downloadedPluginURLWithIdentifier(version.identifier, version.version);
    const auto bundle = KRPluginBundle::pluginBundleWithURL(url);
    if (!bundle)
        return problem(QStringLiteral("The archive holds no plug-in."));
    const auto identifier = bundle->identifier().value_or(QString());
    const bool hasNone = identifier == QString::fromLatin1(bundle->url().toEncoded());
    if (identifier == version.identifier || hasNone)
        return {};
    return problem(QStringLiteral("The archive holds another plug-in, \"%1\".").arg(identifier));
}

/// Nil when the new version is in its place without a flaw.
std::optional<KRError> install(PluginSession &session, const OfferedVersion &version, const Output &output)
{
    auto &manager = session.manager();
    if (!manager.isPluginUpdateDownloadedWithIdentifier(version.identifier, version.version)) {
        const auto errors = downloadVersions(session, {version}, output);
        if (!errors.isEmpty())
            return errors.first();
    }
    if (const auto flaw = flawOf(manager, version))
        return flaw;
    KRError error;
    const bool isInstalled = manager.installPluginWithIdentifier(version.identifier, version.version, &error);
    if (!isInstalled && error == KRError())
        return problem(QStringLiteral("The archive holds no plug-in."));
    return error == KRError() ? std::nullopt : std::optional(error);
}

} // namespace

ExitCode installUpdate(const GlobalOptions &options, const InstallOptions &installation, Output &output)
{
    PluginSession session(options);
    auto &manager = session.manager();
    const auto selection = readSelection(installation.plugin, manager.plugins());
    const auto version = versionToInstall(session, selection, output);
    if (!version) {
        output.error(version.error());
        return ExitCode::Failed;
    }
    const auto error = install(session, {selection.identifier, version.value()}, output);
    manager.reloadPlugins();
    const auto plugin = manager.plugins().value(selection.identifier);
    const auto path = plugin ? QDir::cleanPath(plugin->url().toLocalFile()) : QString();
    output.document({
        {QStringLiteral("identifier"), selection.identifier},
        {QStringLiteral("version"), version.value()},
        {QStringLiteral("path"), plugin ? QVariant(path) : QVariant::fromValue(nullptr)},
        {QStringLiteral("error"), error ? QVariant::fromValue(errorDocument(*error)) : QVariant::fromValue(nullptr)},
    });
    if (!error)
        output.line(QStringLiteral("%1 %2 is installed: %3").arg(selection.identifier, version.value(), path));
    else if (!output.isJSON())
        output.error(*error);
    return error ? ExitCode::Failed : ExitCode::Done;
}

ExitCode clearUpdates(const GlobalOptions &options, Output &output)
{
    PluginSession session(options);
    const bool isCleared = session.manager().clearPluginsCache();
    output.document({{QStringLiteral("cleared"), isCleared}});
    if (isCleared)
        output.line(QStringLiteral("The warehouse of updates is empty."));
    return isCleared ? ExitCode::Done : ExitCode::Failed;
}
