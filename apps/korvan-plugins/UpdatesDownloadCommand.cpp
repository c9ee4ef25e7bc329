#include "Commands.h"

#include "UpdateDownloads.h"
#include "UpdateSelection.h"

#include <QDir>

namespace {

QString pathOf(const QUrl &bundle)
{
    return QDir::cleanPath(bundle.toLocalFile());
}

std::optional<QString> unknownPlugin(const QList<UpdateSelection> &selections, const PluginTable &plugins)
{
    for (const auto &selection : selections) {
        if (!plugins.contains(selection.identifier))
            return selection.identifier;
    }
    return {};
}

/// Those without a version become the latest of their feeds; why a plug-in has none is added to the errors.
QList<OfferedVersion> versionsOf(
    const QList<UpdateSelection> &selections, const QMap<QString, FeedResult> &feeds, QList<KRError> &errors)
{
    QList<OfferedVersion> versions;
    for (const auto &selection : selections) {
        const auto feed = feeds.value(selection.identifier);
        if (feed.error)
            errors.append(*feed.error);
        const OfferedVersion version{selection.identifier, selection.version.value_or(feed.latest.value_or(QString()))};
        if (!feed.error && !versions.contains(version))
            versions.append(version);
    }
    return versions;
}

QList<OfferedVersion> versionsIn(const UpdateList &updates)
{
    QList<OfferedVersion> versions;
    for (const auto &[identifier, archives] : updates.toStdMap()) {
        for (const auto &version : archives.keys())
            versions.append({identifier, version});
    }
    return versions;
}

/// What now lies in the warehouse.
QList<OfferedVersion> arrived(const KRPluginManager &manager, const QList<OfferedVersion> &wanted)
{
    QList<OfferedVersion> versions;
    for (const auto &offered : wanted) {
        if (manager.isPluginUpdateDownloadedWithIdentifier(offered.identifier, offered.version))
            versions.append(offered);
    }
    return versions;
}

/// Tells of a download that has ended; `wanted` was not in the warehouse before.
ExitCode report(
    const KRPluginManager &manager, const QList<OfferedVersion> &wanted, const QList<KRError> &errors, Output &output)
{
    QVariantList downloaded;
    const auto versions = arrived(manager, wanted);
    for (const auto &offered : versions) {
        const auto path = pathOf(manager.downloadedPluginURLWithIdentifier(offered.identifier, offered.version));
        downloaded.append(QVariant::fromValue(OrderedVariantDictionary{
            {QStringLiteral("identifier"), offered.identifier},
            {QStringLiteral("version"), offered.version},
            {QStringLiteral("path"), path},
        }));
        output.line(QStringLiteral("%1 %2: %3").arg(offered.identifier, offered.version, path));
    }
    QVariantList failures;
    for (const auto &error : errors) {
        failures.append(QVariant::fromValue(errorDocument(error)));
        if (!output.isJSON())
            printToStandardError(QStringLiteral("korvan-plugins: ") + error.localizedDescription);
    }
    output.document({{QStringLiteral("downloaded"), downloaded}, {QStringLiteral("errors"), failures}});
    const bool isComplete = errors.isEmpty() && versions.size() == wanted.size();
    if (!isComplete && errors.isEmpty() && !output.isJSON())
        printToStandardError(QStringLiteral("korvan-plugins: An archive holds no plug-in."));
    return isComplete ? ExitCode::Done : ExitCode::Failed;
}

ExitCode downloadNamed(PluginSession &session, const QList<UpdateSelection> &selections, Output &output)
{
    QList<KRError> errors;
    const auto versions = versionsOf(selections, checkFeeds(session, output), errors);
    QList<OfferedVersion> wanted;
    for (const auto &offered : versions) {
        if (!session.manager().isPluginUpdateDownloadedWithIdentifier(offered.identifier, offered.version))
            wanted.append(offered);
    }
    errors += downloadVersions(session, versions, output);
    return report(session.manager(), wanted, errors, output);
}

ExitCode downloadAll(PluginSession &session, DownloadOptions::AllUpdates which, Output &output)
{
    auto &manager = session.manager();
    const auto feeds = checkFeeds(session, output);
    const auto list = which == DownloadOptions::AllUpdates::Compatible ? manager.compatiblePluginUpdatesNotDownloaded()
                                                                       : manager.latestPluginUpdatesNotDownloaded();
    for (const auto &feed : feeds) {
        if (feed.error && !output.isJSON()) // which is no failure of a download
            printToStandardError(QStringLiteral("korvan-plugins: ") + feed.error->localizedDescription);
    }
    const auto updates = list.value_or(UpdateList());
    const auto errors = downloadList(session, updates, output);
    if (updates.isEmpty())
        output.line(QStringLiteral("There is nothing to download."));
    return report(manager, versionsIn(updates), errors, output);
}

} // namespace

ExitCode downloadUpdates(const GlobalOptions &options, const DownloadOptions &download, Output &output)
{
    PluginSession session(options);
    if (download.plugins.isEmpty())
        return downloadAll(session, download.all, output);
    const auto plugins = session.manager().plugins();
    QList<UpdateSelection> selections;
    for (const auto &name : download.plugins)
        selections.append(readSelection(name, plugins));
    if (const auto unknown = unknownPlugin(selections, plugins)) {
        output.error(QStringLiteral("There is no plug-in \"%1\".").arg(*unknown));
        return ExitCode::Failed;
    }
    return downloadNamed(session, selections, output);
}
