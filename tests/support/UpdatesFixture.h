#pragma once

#include "manager/KRPluginManager.h"
#include "platform/network/NetworkThread.h"
#include "support/TestEnvironment.h"
#include "support/TestUpdates.h"
#include "support/archives/TestArchives.h"
#include "support/servers/LoopbackServer.h"
#include "updates/KRPluginUpdaterImplementation.h"

#include <QDir>
#include <QtTest>

#include <memory>

/// A manager with an updater, a server, and what handlers have told, as texts in `m_events`.
class UpdatesFixture
{
protected:
    void setUp()
    {
        m_environment = std::make_unique<TestEnvironment>();
        QDir().mkpath(m_environment->path(QStringLiteral("temporary")));
        qputenv("TMPDIR", QFile::encodeName(m_environment->path(QStringLiteral("temporary"))));
        m_server = std::make_unique<LoopbackServer>();
        makeManager(std::make_shared<KRPluginUpdaterImplementation>());
        m_events.clear();
    }
    /// What is left in the folder for temporary files.
    QStringList tearDown()
    {
        m_manager.reset();
        m_server.reset();
        settle();
        const auto left = QDir(m_environment->path(QStringLiteral("temporary"))).entryList(QDir::Files | QDir::Hidden);
        m_environment.reset();
        qunsetenv("TMPDIR");
        return left;
    }

    QUrl url(const QString &path) const { return m_server->url(path); }
    void answer(const QByteArray &path, const QByteArray &body)
    {
        m_server->setAnswer(path, Answer::response(200, body));
    }
    void plugin(const QString &identifier, const QString &version, const QUrl &feed)
    {
        pluginWithFeed(m_environment->path(QStringLiteral("support/Plugins")), identifier, version, feed);
        m_manager->reloadPlugins();
    }
    /// A plug-in "a" at 1.0 whose feed offers 2.0, at "/a.zip".
    void pluginWithUpdate()
    {
        answer("/a.json", jsonFeed(QStringLiteral("2.0"), url(QStringLiteral("/a.zip"))));
        plugin(QStringLiteral("a"), QStringLiteral("1.0"), url(QStringLiteral("/a.json")));
        check();
    }
    void makeManager(const std::shared_ptr<KRPluginUpdater> &updater)
    {
        m_manager = std::make_unique<KRPluginManager>(KRPluginManager::pluginsURLs(), updater, nullptr);
    }
    void tell(const QString &event)
    {
        m_environment->queue.async([this, event] { m_events.append(event); });
    }
    void waitFor(const QString &event)
    {
        m_environment->queue.runUntil([this, event] { return m_events.contains(event); });
    }
    UpdateCheckHandler checkHandler()
    {
        return [this](const auto &error, const auto &plugin, const auto &latest) {
            const auto outcome =
                error ? QStringLiteral("error %1").arg(error->code) : latest.value_or(QStringLiteral("nil"));
            tell(QStringLiteral("%1 %2").arg(*plugin->identifier(), outcome));
        };
    }
    QStringList check()
    {
        m_events.clear();
        m_manager->checkForPluginUpdatesWithHandler(checkHandler(), [this] { tell(QStringLiteral("~end")); });
        waitFor(QStringLiteral("~end"));
        m_events.sort();
        return m_events;
    }
    UpdateErrorHandler errorHandler()
    {
        return [this](const std::optional<KRError> &error) {
            tell(error ? QStringLiteral("error: ") + error->localizedDescription : QStringLiteral("done"));
        };
    }
    void downloadAll(const UpdateList &updates)
    {
        m_manager->downloadPluginUpdates(updates, [this](const auto &) { tell(QStringLiteral("end")); });
        waitFor(QStringLiteral("end"));
        settle();
    }
    /// What has been told came from the middle of a callback: now it has returned.
    static void settle()
    {
        NetworkThread::shared()->postAndWait([] {});
    }
    bool isInWarehouse(const QString &path) const
    {
        return QFile::exists(m_environment->path(QStringLiteral("support/PluginsWarehouse/") + path));
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<LoopbackServer> m_server;
    std::unique_ptr<KRPluginManager> m_manager;
    QStringList m_events;
};
