#include "Commands.h"

#include "TextTable.h"
#include "UpdateDownloads.h"

namespace {

QString urlText(const QUrl &url)
{
    return QString::fromLatin1(url.toEncoded());
}

QVariant describeList(const std::optional<UpdateList> &list)
{
    QVariantMap description;
    for (const auto &[identifier, versions] : list.value_or(UpdateList()).toStdMap()) {
        QVariantMap archives;
        for (const auto &[version, url] : versions.toStdMap())
            archives.insert(version, urlText(url));
        description.insert(identifier, archives);
    }
    return description;
}

QVariant describeVersions(const QMap<QString, QString> &versions)
{
    QVariantMap description;
    for (const auto &[identifier, version] : versions.toStdMap())
        description.insert(identifier, version);
    return description;
}

QVariant textOrNull(const std::optional<QString> &text)
{
    return text ? QVariant(*text) : QVariant::fromValue(nullptr);
}

std::optional<QString> installedVersion(KRPluginManager &manager, const QString &identifier)
{
    const auto plugin = manager.plugins().value(identifier);
    return plugin ? plugin->version() : std::nullopt;
}

QVariantList describeFeeds(KRPluginManager &manager, const QMap<QString, FeedResult> &feeds)
{
    QVariantList descriptions;
    for (const auto &[identifier, feed] : feeds.toStdMap()) {
        descriptions.append(QVariant::fromValue(OrderedVariantDictionary{
            {QStringLiteral("identifier"), identifier},
            {QStringLiteral("installed"), textOrNull(installedVersion(manager, identifier))},
            {QStringLiteral("latest"), textOrNull(feed.latest)},
            {QStringLiteral("error"),
                feed.error ? QVariant::fromValue(errorDocument(*feed.error)) : QVariant::fromValue(nullptr)},
        }));
    }
    return descriptions;
}

QVariantList compatibleUpdates(KRPluginManager &manager)
{
    QVariantList identifiers;
    for (const auto &plugin : manager.pluginsWithKorvanCompatipleUpdates())
        identifiers.append(plugin->identifier().value_or(QString()));
    return identifiers;
}

/// What a person wants to know of one feed.
QString remark(KRPluginManager &manager, const QString &identifier, const FeedResult &feed)
{
    if (feed.error)
        return feed.error->localizedDescription;
    if (!feed.latest)
        return QStringLiteral("the feed offers nothing that can be read");
    const auto record = manager.pluginVersions().value(identifier);
    if (!record || !record->isUpdateAvailableForVersion(installedVersion(manager, identifier)))
        return QStringLiteral("up to date");
    if (manager.isPluginWithIdentifier(identifier, feed.latest))
        return QStringLiteral("update, known not to work");
    const bool isDownloaded = manager.isPluginUpdateDownloadedWithIdentifier(identifier, *feed.latest);
    return isDownloaded ? QStringLiteral("update, downloaded") : QStringLiteral("update");
}

void printFeeds(KRPluginManager &manager, const QMap<QString, FeedResult> &feeds, Output &output)
{
    if (feeds.isEmpty())
        return output.line(QStringLiteral("No plug-in has an update feed."));
    TextTable table(
        {QStringLiteral("PLUG-IN"), QStringLiteral("INSTALLED"), QStringLiteral("LATEST"), QStringLiteral("STATE")});
    for (const auto &[identifier, feed] : feeds.toStdMap()) {
        table.addRow({identifier, installedVersion(manager, identifier).value_or(QString()),
            feed.latest.value_or(QStringLiteral("-")), remark(manager, identifier, feed)});
    }
    table.print(output);
}

} // namespace

ExitCode checkUpdates(const GlobalOptions &options, Output &output)
{
    PluginSession session(options);
    auto &manager = session.manager();
    const auto feeds = checkFeeds(session, output);
    output.document({
        {QStringLiteral("feeds"), describeFeeds(manager, feeds)},
        {QStringLiteral("withUpdates"), qint64(manager.numberOfPluginsWithUpdates())},
        {QStringLiteral("compatible"), compatibleUpdates(manager)},
        {QStringLiteral("latestNotDownloaded"), describeList(manager.latestPluginUpdatesNotDownloaded())},
        {QStringLiteral("compatibleNotDownloaded"), describeList(manager.compatiblePluginUpdatesNotDownloaded())},
        {QStringLiteral("incompatibleWithUpdates"), describeVersions(manager.incompatiblePluginsWithUpdates())},
        {QStringLiteral("incompatibleWithCompatibleUpdates"),
            describeVersions(manager.incompatiblePluginsWithCompatibleUpdates())},
    });
    if (!output.isJSON())
        printFeeds(manager, feeds, output);
    return ExitCode::Done;
}
