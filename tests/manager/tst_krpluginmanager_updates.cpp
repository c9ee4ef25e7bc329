// Checks for updates, from a server that also answers wrongly.

#include "support/UpdatesFixture.h"

using namespace Qt::StringLiterals;

class tst_KRPluginManager_Updates : public QObject, private UpdatesFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { QCOMPARE(tearDown(), QStringList()); }

    void checkRecordsWhatIsOffered();
    void checkForgetsWhatWasOfferedBefore();
    void checkOfSomeIsACheckOfAll();
    void feedsThatFail();
    void withoutAnUpdater();
    void managerEndsDuringACheck();
    void reloadDropsWhatIsGone();
};

void tst_KRPluginManager_Updates::checkRecordsWhatIsOffered()
{
    answer("/a.json", jsonFeed(u"2.0"_s, url(u"/a.zip"_s)));
    answer("/b", appcastFeed(u"1.5"_s, url(u"/b.zip"_s)));
    plugin(u"a"_s, u"1.0"_s, url(u"/a.json"_s));
    plugin(u"b"_s, u"1.5"_s, url(u"/b"_s));
    plugin(u"no feed"_s, u"1.0"_s, {});
    QCOMPARE(check(), (QStringList{u"a 2.0"_s, u"b 1.5"_s, u"~end"_s}));
    const auto versions = m_manager->pluginVersions();
    QCOMPARE(versions.keys(), (QStringList{u"a"_s, u"b"_s}));
    QCOMPARE(versions[u"a"_s]->identifier(), u"a"_s);
    QCOMPARE(versions[u"a"_s]->updatingInfoURL(), url(u"/a.json"_s));
    QCOMPARE(versions[u"a"_s]->downloadURLForVersion(u"2.0"_s), url(u"/a.zip"_s));
    QCOMPARE(m_manager->versionsForPlugin(m_manager->plugins()[u"b"_s]), versions[u"b"_s]);
    QVERIFY(!m_manager->versionsForPlugin(m_manager->plugins()[u"no feed"_s]));
    QVERIFY(!m_manager->versionsForPlugin(nullptr));
    QCOMPARE(m_manager->numberOfPluginsWithUpdates(), 1);
}

void tst_KRPluginManager_Updates::checkForgetsWhatWasOfferedBefore()
{
    m_manager->setPluginVersions({{u"gone"_s, recordOf(u"gone"_s, {u"1"_s})}});
    check();
    QVERIFY(m_manager->pluginVersions().isEmpty());
}

void tst_KRPluginManager_Updates::checkOfSomeIsACheckOfAll()
{
    answer("/a.json", jsonFeed(u"2.0"_s, url(u"/a.zip"_s)));
    plugin(u"a"_s, u"1.0"_s, url(u"/a.json"_s));
    plugin(u"b"_s, u"1.0"_s, url(u"/a.json"_s));
    m_manager->setPluginVersions({{u"kept"_s, recordOf(u"kept"_s, {u"1"_s})}});
    m_manager->checkForPluginUpdates({m_manager->plugins()[u"b"_s]}, checkHandler(), [this] { tell(u"~end"_s); });
    waitFor(u"~end"_s);
    QCOMPARE(m_events.size(), 3);
    QCOMPARE(m_manager->pluginVersions().keys(), (QStringList{u"a"_s, u"b"_s, u"kept"_s}));
}

void tst_KRPluginManager_Updates::feedsThatFail()
{
    plugin(u"a"_s, u"1.0"_s, QUrl(u"http://127.0.0.1:1/feed"_s));
    plugin(u"b"_s, u"1.0"_s, url(u"/not-found"_s));
    QCOMPARE(check(), (QStringList{u"a error -1004"_s, u"b nil"_s, u"~end"_s}));
    QCOMPARE(m_manager->pluginVersions().keys(), QStringList{u"b"_s});
    QCOMPARE(m_manager->pluginVersions()[u"b"_s]->versions(), QStringList());
    QCOMPARE(m_manager->numberOfPluginsWithUpdates(), 0);
}

void tst_KRPluginManager_Updates::withoutAnUpdater()
{
    makeManager(nullptr);
    plugin(u"a"_s, u"1.0"_s, url(u"/a.json"_s));
    int ends = 0;
    m_manager->checkForPluginUpdatesWithHandler(checkHandler(), [&ends] { ++ends; });
    QCOMPARE(ends, 1);
    m_manager->downloadPluginUpdates({}, [&ends](const auto &) { ++ends; });
    m_manager->downloadPluginUpdate(u"a"_s, u"2.0"_s, [&ends](const auto &) { ++ends; });
    m_manager->cancelDownloadingPluginVersions();
    m_environment->queue.runQueued();
    QCOMPARE(ends, 1);
    QCOMPARE(m_server->requestedPaths(), QList<QByteArray>());
}

void tst_KRPluginManager_Updates::managerEndsDuringACheck()
{
    const auto updater = std::make_shared<KRPluginUpdaterImplementation>();
    makeManager(updater);
    m_server->setAnswer("/a.json", Answer::bytes("HTTP/1.1 200 OK\r\n\r\n").thenWaitForRelease());
    plugin(u"a"_s, u"1.0"_s, url(u"/a.json"_s));
    m_manager->checkForPluginUpdatesWithHandler(checkHandler(), [this] { tell(u"~end"_s); });
    m_server->waitForRequests(1);
    m_manager.reset();
    m_server->release();
    waitFor(u"~end"_s); // which is the updater's to tell
    QCOMPARE(m_events, QStringList{u"~end"_s});
}

void tst_KRPluginManager_Updates::reloadDropsWhatIsGone()
{
    plugin(u"a"_s, u"1.0"_s, {});
    m_manager->setPluginVersions({{u"a"_s, recordOf(u"a"_s, {u"2"_s})}, {u"gone"_s, recordOf(u"gone"_s, {u"2"_s})}});
    m_manager->reloadPlugins();
    QCOMPARE(m_manager->pluginVersions().keys(), QStringList{u"a"_s});
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Updates)
#include "tst_krpluginmanager_updates.moc"
