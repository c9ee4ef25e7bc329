#include "DemoUpdate.h"

#include "PluginArchive.h"
#include "UpdateDownloads.h"
#include "hosting/FolderCopy.h"
#include "hosting/ManifestChange.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const auto identifier = QStringLiteral("com.example.lorem-text");
const auto bundleName = QStringLiteral("Lorem Text.korvanplugin");
const auto newVersion = QStringLiteral("1.1");
const auto feedPath = QStringLiteral("/lorem-text.json");
const auto archivePath = QStringLiteral("/lorem-text-1.1.zip");

std::optional<QByteArray> packed(const QString &bundle, const QString &archive)
{
    QFile file(archive);
    if (packFolder(bundle, archive) || !file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

} // namespace

DemoUpdate::DemoUpdate(const QString &plugins)
    : m_isPublished(publish(plugins))
{ }

bool DemoUpdate::publish(const QString &plugins)
{
    const auto installed = plugins + u'/' + bundleName;
    const auto published = m_folder.filePath(bundleName);
    if (!m_server.isListening()
        || !changeManifest(installed, QStringLiteral("appcast"), m_server.url(feedPath).toString())
        || !copyFolder(installed, published) || !changeManifest(published, QStringLiteral("version"), newVersion))
        return false;
    const auto archive = packed(published, m_folder.filePath(QStringLiteral("update.zip")));
    if (!archive)
        return false;
    const QJsonObject feed{{QStringLiteral("version"), newVersion}, {QStringLiteral("downloadURL"), archivePath}};
    m_server.publish(feedPath, QJsonDocument(feed).toJson());
    m_server.publish(archivePath, *archive);
    return true;
}

bool DemoUpdate::perform(PluginSession &session, Output &output)
{
    auto &manager = session.manager();
    const auto plugin = manager.plugins().value(identifier);
    if (!m_isPublished || !plugin)
        return false;
    const auto feed = checkFeeds(session, output).value(identifier);
    const auto latest = feed.latest.value_or(QString());
    output.line(QStringLiteral("Installed: %1, offered: %2").arg(plugin->version().value_or(QString()), latest));
    const auto errors = downloadVersions(session, {{identifier, latest}}, output);
    for (const auto &error : errors)
        output.line(error.localizedDescription);
    output.line(manager.isPluginUpdateDownloadedWithIdentifier(identifier, latest)
            ? QStringLiteral("Downloaded and unpacked into the warehouse")
            : QStringLiteral("Nothing was downloaded"));
    if (!manager.installPluginWithIdentifier(identifier, latest))
        return false;
    manager.reloadPlugins();
    const auto installed = manager.plugins().value(identifier);
    const auto version = installed ? installed->version().value_or(QString()) : QString();
    output.line(QStringLiteral("Installed: %1; the one before is kept in the warehouse").arg(version));
    return version == newVersion;
}
