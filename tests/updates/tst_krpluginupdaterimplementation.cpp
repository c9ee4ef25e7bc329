#include "platform/network/LTDownloadManager.h"
#include "support/TestEnvironment.h"
#include "support/TestUpdates.h"
#include "support/servers/LoopbackServer.h"
#include "updates/KRPluginUpdaterImplementation.h"
#include "updates/UpdatingInfo.h"

#include <QThread>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// One feed as its handler saw it, as text: "identifier: versions", "identifier: nil" or "identifier: error code".
QString told(const std::optional<KRError> &error, const KRPluginBundle &plugin,
    const std::optional<VersionsDictionary> &versions)
{
    const auto outcome = error ? u"error %1"_s.arg(error->code) : u"nil"_s;
    return *plugin.identifier() + u": "_s + (versions ? versions->keys().join(u' ') : outcome);
}

} // namespace

/// Feeds; for archives see tst_KRPluginUpdaterImplementation_Archives.
class tst_KRPluginUpdaterImplementation : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void noFeeds_data();
    void noFeeds();
    void feeds_data();
    void feeds();
    void feedInTwoForms_data();
    void feedInTwoForms();
    void jsonSiblingKeepsQueryAndEscapes();
    void oneBadFeedNeverCostsTheOthers();
    void silentServerFailsSoon();
    void statusOfACheck();
    void threadOfTheHandlers();
    void updaterThatEndsMeanwhile_data();
    void updaterThatEndsMeanwhile();
    void dataAsItCame();
    void versionsOfAnUpdatingInfo();

private:
    QUrl url(const QString &path) const { return m_server->url(path); }
    void plugin(const QString &identifier, const QUrl &feed)
    {
        m_plugins.insert(identifier, pluginWithFeed(m_environment->path(u"Plugins"_s), identifier, u"1.0"_s, feed));
    }
    /// Until the end; what was told, in order.
    QStringList check()
    {
        bool hasEnded = false;
        QStringList events;
        auto &queue = m_environment->queue;
        m_updater->downloadPluginUpdatingInfo(
            m_plugins,
            [&](const auto &error, const auto &plugin, const auto &versions) {
                queue.async([&events, text = told(error, *plugin, versions)] { events.append(text); });
            },
            [&] { queue.async([&hasEnded] { hasEnded = true; }); });
        queue.runUntil([&hasEnded] { return hasEnded; });
        events.sort();
        return events;
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<LoopbackServer> m_server;
    std::unique_ptr<KRPluginUpdaterImplementation> m_updater;
    PluginTable m_plugins;
};

void tst_KRPluginUpdaterImplementation::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_server = std::make_unique<LoopbackServer>();
    m_updater = std::make_unique<KRPluginUpdaterImplementation>();
}

void tst_KRPluginUpdaterImplementation::cleanup()
{
    m_plugins.clear();
    m_updater.reset();
    m_server.reset();
    m_environment.reset();
}

void tst_KRPluginUpdaterImplementation::noFeeds_data()
{
    QTest::addColumn<bool>("hasPlugin");
    QTest::addColumn<int>("statusBefore");
    QTest::newRow("no plug-ins") << false << 0;
    QTest::newRow("plug-in without a feed") << true << 0;
    QTest::newRow("after another check") << true << 3;
}

void tst_KRPluginUpdaterImplementation::noFeeds()
{
    QFETCH(bool, hasPlugin);
    QFETCH(int, statusBefore);
    if (hasPlugin)
        plugin(u"a"_s, {});
    m_updater->setDownloadingUpdatingInfoStatus(statusBefore);
    int feeds = 0;
    int ends = 0;
    m_updater->downloadPluginUpdatingInfo(
        m_plugins, [&feeds](const auto &, const auto &, const auto &) { ++feeds; }, [&ends] { ++ends; });
    QCOMPARE(feeds, 0);
    QCOMPARE(ends, 1);
    QCOMPARE(m_updater->downloadingUpdatingInfoStatus(), statusBefore);
    m_updater->downloadPluginUpdatingInfo(m_plugins, {}, {});
}

void tst_KRPluginUpdaterImplementation::feeds_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("outcome");
    const QUrl archive(u"https://example.com/2.zip"_s);
    const auto json = jsonFeed(u"2.0"_s, archive);
    const auto xml = appcastFeed(u"2.0"_s, archive);
    QTest::newRow("json") << u"/f.json"_s << 200 << json << u"a: 2.0"_s;
    QTest::newRow("json that is no feed") << u"/f.json"_s << 200 << "{}"_ba << u"a: error 3"_s;
    QTest::newRow("json page that says not found") << u"/f.json"_s << 404 << "<html>"_ba << u"a: error 2"_s;
    QTest::newRow("appcast without json sibling") << u"/f.rss"_s << 200 << xml << u"a: 2.0"_s;
    QTest::newRow("appcast called xml") << u"/f.xml"_s << 200 << xml << u"a: 2.0"_s;
    QTest::newRow("appcast without extension") << u"/feed"_s << 200 << xml << u"a: 2.0"_s;
    QTest::newRow("appcast with another extension") << u"/feed.php"_s << 200 << xml << u"a: 2.0"_s;
    QTest::newRow("extension in capitals counts as another") << u"/f.JSON"_s << 200 << xml << u"a: 2.0"_s;
    QTest::newRow("json without the extension") << u"/feed"_s << 200 << json << u"a: nil"_s;
    QTest::newRow("html page that says not found") << u"/f.rss"_s << 404 << "<html><body>Not found"_ba << u"a: nil"_s;
    QTest::newRow("well-formed page that says not found")
        << u"/feed"_s << 404 << "<html><body>Not found</body></html>"_ba << u"a: nil"_s;
    QTest::newRow("feed with the status of a failure") << u"/feed"_s << 500 << xml << u"a: 2.0"_s;
    QTest::newRow("json with a slash at the end") << u"/f.json/"_s << 200 << json << u"a: 2.0"_s;
    QTest::newRow("empty answer") << u"/feed"_s << 200 << ""_ba << u"a: nil"_s;
}

void tst_KRPluginUpdaterImplementation::feeds()
{
    QFETCH(QString, path);
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    QFETCH(QString, outcome);
    m_server->setAnswer(path.toUtf8(), Answer::response(status, body));
    plugin(u"a"_s, url(path));
    QCOMPARE(check(), QStringList{outcome});
    QCOMPARE(m_plugins[u"a"_s]->updatingInfoURL(), url(path));
}

void tst_KRPluginUpdaterImplementation::feedInTwoForms_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("rss") << u"/folder/f.rss"_s;
    QTest::newRow("xml") << u"/folder/f.xml"_s;
}

void tst_KRPluginUpdaterImplementation::feedInTwoForms()
{
    QFETCH(QString, path);
    const QUrl archive(u"https://example.com/2.zip"_s);
    m_server->setAnswer(path.toUtf8(), Answer::response(200, appcastFeed(u"1.0"_s, archive)));
    m_server->setAnswer("/folder/f.json", Answer::response(200, jsonFeed(u"2.0"_s, archive)));
    plugin(u"a"_s, url(path));
    QCOMPARE(check(), QStringList{u"a: 2.0"_s});
    QCOMPARE(m_plugins[u"a"_s]->updatingInfoURL(), url(u"/folder/f.json"_s));
    QVERIFY(!m_server->requestedPaths().contains(path.toUtf8()));
}

void tst_KRPluginUpdaterImplementation::jsonSiblingKeepsQueryAndEscapes()
{
    const auto answer = Answer::response(200, jsonFeed(u"2.0"_s, QUrl(u"https://example.com/2.zip"_s)));
    m_server->setAnswer("/a%20b/v1.2%2Ff.json?channel=beta", answer);
    plugin(u"a"_s, url(u"/a%20b/v1.2%2Ff.rss?channel=beta"_s));
    QCOMPARE(check(), QStringList{u"a: 2.0"_s});
}

void tst_KRPluginUpdaterImplementation::oneBadFeedNeverCostsTheOthers()
{
    const auto good = Answer::response(200, jsonFeed(u"2.0"_s, QUrl(u"https://example.com/2.zip"_s)));
    m_server->setAnswer("/good.json", good);
    m_server->setAnswer("/garbage.json", Answer::response(200, "garbage"));
    m_server->setAnswer("/lost.json", Answer::bytes("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf"));
    plugin(u"a"_s, url(u"/lost.json"_s));
    plugin(u"b"_s, url(u"/good.json"_s));
    plugin(u"c"_s, url(u"/garbage.json"_s));
    plugin(u"d"_s, QUrl(u"http://127.0.0.1:1/feed.json"_s)); // where nobody listens
    plugin(u"e"_s, QUrl(u"ftp://example.com/feed.json"_s));
    plugin(u"f"_s, url(u"/good.json"_s));
    plugin(u"g"_s, {});
    const QStringList expected{
        u"a: error -1005"_s, u"b: 2.0"_s, u"c: error 2"_s, u"d: error -1004"_s, u"e: error -1002"_s, u"f: 2.0"_s};
    QCOMPARE(check(), expected);
    QCOMPARE(m_updater->downloadingUpdatingInfoStatus(), 3);
}

void tst_KRPluginUpdaterImplementation::silentServerFailsSoon()
{
    m_server->setAnswer("/f.json", Answer::silence());
    plugin(u"a"_s, url(u"/f.json"_s));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(check(), QStringList{u"a: error -1001"_s});
    QVERIFY2(timer.elapsed() >= 2000, "it was not given its two seconds");
}

void tst_KRPluginUpdaterImplementation::statusOfACheck()
{
    m_server->setAnswer("/f.json", Answer::response(200, "{}"));
    plugin(u"a"_s, url(u"/f.json"_s));
    QList<int> statuses{m_updater->downloadingUpdatingInfoStatus()};
    auto &queue = m_environment->queue;
    bool hasEnded = false;
    m_updater->downloadPluginUpdatingInfo(
        m_plugins, [&](const auto &...) { statuses.append(m_updater->downloadingUpdatingInfoStatus()); },
        [&] {
            statuses.append(m_updater->downloadingUpdatingInfoStatus());
            queue.async([&hasEnded] { hasEnded = true; });
        });
    queue.runUntil([&hasEnded] { return hasEnded; });
    QCOMPARE(statuses, (QList<int>{0, 1, 3}));
    check();
    QCOMPARE(m_updater->downloadingUpdatingInfoStatus(), 3);
}

void tst_KRPluginUpdaterImplementation::threadOfTheHandlers()
{
    for (const auto *const path : {"/f.json", "/f.rss"})
        m_server->setAnswer(path, Answer::response(200, "{}"));
    plugin(u"a"_s, url(u"/f.json"_s));
    plugin(u"b"_s, url(u"/f.rss"_s));
    QSet<Qt::HANDLE> threads;
    auto &queue = m_environment->queue;
    bool hasEnded = false;
    m_updater->downloadPluginUpdatingInfo(
        m_plugins, [&](const auto &...) { threads.insert(QThread::currentThreadId()); },
        [&] {
            threads.insert(QThread::currentThreadId());
            queue.async([&hasEnded] { hasEnded = true; });
        });
    queue.runUntil([&hasEnded] { return hasEnded; });
    QCOMPARE(threads.size(), 1);
    QVERIFY(!threads.contains(QThread::currentThreadId()));
}

void tst_KRPluginUpdaterImplementation::updaterThatEndsMeanwhile_data()
{
    QTest::addColumn<bool>("downloads");
    QTest::newRow("with nothing else to do") << false;
    QTest::newRow("with a batch that goes on") << true;
}

/// Its feeds are still told, without versions; the end is not.
void tst_KRPluginUpdaterImplementation::updaterThatEndsMeanwhile()
{
    m_server->setAnswer("/a.json",
        Answer::bytes("HTTP/1.1 200 OK\r\n\r\n")
            .thenWaitForRelease()
            .thenBytes(jsonFeed(u"2.0"_s, QUrl(u"https://example.com/2.zip"_s))));
    plugin(u"a"_s, url(u"/a.json"_s));
    auto &queue = m_environment->queue;
    QStringList events;
    const auto watched = std::make_shared<int>();
    m_updater->downloadPluginUpdatingInfo(
        m_plugins,
        [&, watched](const auto &error, const auto &plugin, const auto &versions) {
            queue.async([&events, text = told(error, *plugin, versions)] { events.append(text); });
        },
        [&, watched] { queue.async([&events] { events.append(u"end"_s); }); });
    QFETCH(bool, downloads);
    m_server->setAnswer("/slow.zip", Answer::silence());
    if (downloads)
        m_updater->downloadPlugins({{u"a"_s, {{u"1"_s, url(u"/slow.zip"_s)}}}}, [](const auto &...) {}, {});
    m_server->waitForRequests(downloads ? 2 : 1);
    const auto batch = m_updater->pluginDownloader();
    m_updater.reset();
    m_server->release();
    queue.runUntil([&watched, &queue] {
        if (watched.use_count() > 1)
            queue.async([] {}); // ask again: the check lets go of its handlers at its very end
        return watched.use_count() == 1;
    });
    queue.runQueued();
    QCOMPARE(events, QStringList{u"a: nil"_s});
    if (batch)
        batch->cancelAllTasksAndWait();
}

void tst_KRPluginUpdaterImplementation::dataAsItCame()
{
    m_server->setAnswer("/feed", Answer::response(404, "Not found"));
    QByteArray received;
    std::optional<KRError> failure;
    auto &queue = m_environment->queue;
    bool hasEnded = false;
    KRPluginUpdaterImplementation::downloadUpdatingInfoAtURL(
        url(u"/feed"_s), [&](const QByteArray &data, const std::optional<KRError> &error) {
            received = data;
            failure = error;
            queue.async([&hasEnded] { hasEnded = true; });
        });
    queue.runUntil([&hasEnded] { return hasEnded; });
    QVERIFY(!failure);
    QCOMPARE(received, "Not found"_ba);
}

void tst_KRPluginUpdaterImplementation::versionsOfAnUpdatingInfo()
{
    const QUrl archive(u"https://example.com/2.zip"_s);
    const auto info = UpdatingInfo::initWithData(jsonFeed(u"2.0"_s, archive), {});
    QVERIFY(info);
    const VersionsDictionary expected{{u"2.0"_s, {{u"downloadURL"_s, archive}}}};
    QCOMPARE(KRPluginUpdaterImplementation::versionsDictionaryFromUpdatingInfo(*info), expected);
}

QTEST_GUILESS_MAIN(tst_KRPluginUpdaterImplementation)
#include "tst_krpluginupdaterimplementation.moc"
