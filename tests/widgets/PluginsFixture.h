#pragma once

#include "manager/KRPluginManager.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"
#include "support/archives/ZipBuilder.h"
#include "support/servers/LoopbackServer.h"
#include "updates/ReportingUpdater.h"

#include <QDir>
#include <QFileInfo>

#include <memory>

/// A host with a manager over plug-ins on disk, an updater, and a server for their feeds.
class PluginsFixture
{
protected:
    void setUp()
    {
        m_environment = std::make_unique<TestEnvironment>();
        QDir().mkpath(m_environment->path(QStringLiteral("data")));
        qputenv("XDG_DATA_HOME", QFile::encodeName(m_environment->path(QStringLiteral("data"))));
        m_server = std::make_unique<LoopbackServer>();
        m_updater = std::make_shared<ReportingUpdater>();
        m_state = std::make_shared<KRPluginManagingState>(
            QUrl::fromLocalFile(m_environment->path(QStringLiteral("state.plist"))));
        QDir().mkpath(pluginsFolder());
        m_manager = std::make_unique<KRPluginManager>(KRPluginManager::pluginsURLs(), m_updater, m_state);
    }
    void tearDown()
    {
        m_manager.reset();
        m_server.reset();
        m_updater.reset();
        m_environment.reset();
    }

    QString pluginsFolder() const { return m_environment->path(QStringLiteral("support/Plugins")); }

    struct Plugin
    {
        QString identifier;
        QString name;
        QString version = QStringLiteral("1.0");
        QUrl feed = {};
        QByteArray script = "function onRun() {}";
        QByteArray otherKeys = {};
    };
    static QByteArray manifestOf(const Plugin &plugin)
    {
        const auto feed = plugin.feed.isEmpty() ? QByteArray() : R"("appcast": ")" + plugin.feed.toEncoded() + "\", ";
        return R"({"identifier": ")" + plugin.identifier.toUtf8() + R"(", "name": ")" + plugin.name.toUtf8()
            + R"(", "version": ")" + plugin.version.toUtf8() + "\", " + feed + plugin.otherKeys
            + R"("commands": [{"identifier": "run", "name": "Run It", "script": "script.js", "shortcut": "ctrl shift k"}]})";
    }
    static BundleBuilder writePlugin(const QString &folder, const Plugin &plugin)
    {
        auto builder = BundleBuilder(folder, plugin.identifier);
        builder.manifest(manifestOf(plugin)).script(QStringLiteral("script.js"), plugin.script);
        return builder;
    }
    void install(const Plugin &plugin)
    {
        writePlugin(pluginsFolder(), plugin);
        m_manager->reloadPlugins();
    }
    static QByteArray archiveOf(const Plugin &plugin)
    {
        const auto folder = plugin.identifier.toUtf8() + ".korvanplugin/Contents/Korvan/";
        return ZipBuilder({{folder + "manifest.json", manifestOf(plugin)}, {folder + "script.js", plugin.script}})
            .bytes();
    }
    /// The path of an archive, on the disk.
    QString archiveFile(const Plugin &plugin) const
    {
        return file(plugin.identifier + QStringLiteral(".zip"), archiveOf(plugin));
    }
    QString file(const QString &name, const QByteArray &content) const
    {
        const auto path = m_environment->path(QStringLiteral("downloads/") + name);
        writeFile(path, content);
        return path;
    }

    /// A plug-in at 1.0 whose feed offers 2.0.
    void installWithUpdate(const QString &identifier)
    {
        const auto name = identifier.toUtf8();
        const auto archive = m_server->url(u'/' + identifier + QStringLiteral(".zip"));
        m_server->setAnswer('/' + name + ".json",
            Answer::response(200, R"({"version": "2.0", "downloadURL": ")" + archive.toEncoded() + "\"}"));
        auto plugin = pluginWithFeed(identifier);
        install(plugin);
        plugin.version = QStringLiteral("2.0");
        m_server->setAnswer('/' + name + ".zip", Answer::response(200, archiveOf(plugin)));
    }
    Plugin pluginWithFeed(const QString &identifier) const
    {
        return {
            identifier, identifier, QStringLiteral("1.0"), m_server->url(u'/' + identifier + QStringLiteral(".json"))};
    }

    std::optional<QString> installedVersion(const QString &identifier) const
    {
        const auto plugin = m_manager->plugins().value(identifier);
        return plugin ? plugin->version() : std::nullopt;
    }
    QStringList installedFolders() const
    {
        return QDir(pluginsFolder()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
    }
    template <class Condition>
    void waitUntil(Condition condition) const
    {
        m_environment->queue.runUntil(condition);
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<LoopbackServer> m_server;
    std::shared_ptr<ReportingUpdater> m_updater;
    std::shared_ptr<KRPluginManagingState> m_state;
    std::unique_ptr<KRPluginManager> m_manager;
};
