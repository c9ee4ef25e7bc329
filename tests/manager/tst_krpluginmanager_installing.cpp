// Installation from the warehouse, and the summaries, through the manager.

#include "support/UpdatesFixture.h"

using namespace Qt::StringLiterals;

class tst_KRPluginManager_Installing : public QObject, private UpdatesFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { QCOMPARE(tearDown(), QStringList()); }

    void newPluginComesIntoTheMainFolder();
    void updateTakesThePlaceOfTheOldOne();
    void versionThatIsNotThere();
    void downloadAndInstall_data();
    void downloadAndInstall();
    void downloadThatFailsInstallsNothing();
    void archiveWithoutAPlugin();
    void clearingTheCache();
    void newerOfTwoBundles();
    void summariesWithAStateStore();
    void fieldsOfTheHost();

private:
    /// A plug-in in the warehouse.
    void downloaded(const QString &identifier, const QString &version)
    {
        pluginWithFeed(
            m_environment->path(u"support/PluginsWarehouse/%1/%2"_s.arg(identifier, version)), identifier, version, {});
    }
    QString installedVersion(const QString &identifier)
    {
        m_manager->reloadPlugins();
        const auto plugin = m_manager->plugins().value(identifier);
        return plugin ? plugin->version().value() : u"none"_s;
    }
};

void tst_KRPluginManager_Installing::newPluginComesIntoTheMainFolder()
{
    downloaded(u"a"_s, u"1.0"_s);
    KRError error{u"before"_s, 1, {}};
    QVERIFY(m_manager->installPluginWithIdentifier(u"a"_s, u"1.0"_s, &error));
    QVERIFY(error == KRError());
    QVERIFY(QFile::exists(m_environment->path(u"support/Plugins/a.korvanplugin"_s)));
    QVERIFY(!m_manager->plugins().contains(u"a"_s)); // until the next reload
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
    QVERIFY(!m_manager->isPluginUpdateDownloadedWithIdentifier(u"a"_s, u"1.0"_s));
}

void tst_KRPluginManager_Installing::updateTakesThePlaceOfTheOldOne()
{
    const auto folder = m_environment->path(u"support/Plugins/Drawing"_s);
    pluginWithFeed(folder, u"a"_s, u"1.0"_s, {});
    m_manager->reloadPlugins();
    downloaded(u"a"_s, u"2.0"_s);
    QVERIFY(m_manager->installPluginWithIdentifier(u"a"_s, u"2.0"_s));
    QCOMPARE(installedVersion(u"a"_s), u"2.0"_s);
    QCOMPARE(m_manager->plugins()[u"a"_s]->url().toLocalFile(), folder + u"/a.korvanplugin/"_s);
    QVERIFY(m_manager->isPluginUpdateDownloadedWithIdentifier(u"a"_s, u"1.0"_s)); // the old one is parked
}

void tst_KRPluginManager_Installing::versionThatIsNotThere()
{
    const KRError before{u"before"_s, 1, {}};
    KRError error = before;
    QVERIFY(!m_manager->installPluginWithIdentifier(u"a"_s, u"2.0"_s, &error));
    QVERIFY(error == before);
}

void tst_KRPluginManager_Installing::downloadAndInstall_data()
{
    QTest::addColumn<bool>("isDownloaded");
    QTest::newRow("downloaded before") << true;
    QTest::newRow("downloaded now") << false;
}

void tst_KRPluginManager_Installing::downloadAndInstall()
{
    QFETCH(bool, isDownloaded);
    answer("/a.zip", pluginArchive(u"a"_s, u"2.0"_s));
    pluginWithUpdate();
    if (isDownloaded)
        downloaded(u"a"_s, u"2.0"_s);
    bool wasAtOnce = true;
    m_manager->downloadAndInstallPluginWithIdentifier(u"a"_s, u"2.0"_s, [&](const std::optional<KRError> &error) {
        errorHandler()(error);
        wasAtOnce = QThread::currentThread() == QCoreApplication::instance()->thread();
    });
    waitFor(u"done"_s);
    settle();
    QCOMPARE(wasAtOnce, isDownloaded);
    QCOMPARE(m_server->requestedPaths().contains("/a.zip"), !isDownloaded);
    QCOMPARE(installedVersion(u"a"_s), u"2.0"_s);
}

void tst_KRPluginManager_Installing::downloadThatFailsInstallsNothing()
{
    pluginWithUpdate();
    m_server->setAnswer("/a.zip", Answer::bytes("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf"));
    m_manager->downloadAndInstallPluginWithIdentifier(u"a"_s, u"2.0"_s, errorHandler());
    waitFor(u"error: The connection to \"127.0.0.1\" was lost."_s);
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
}

void tst_KRPluginManager_Installing::archiveWithoutAPlugin()
{
    pluginWithUpdate();
    answer("/a.zip", ZipBuilder().add({"read me", "text"}).bytes());
    m_manager->downloadAndInstallPluginWithIdentifier(u"a"_s, u"2.0"_s, errorHandler());
    waitFor(u"done"_s);
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
}

void tst_KRPluginManager_Installing::clearingTheCache()
{
    downloaded(u"a"_s, u"2.0"_s);
    m_manager->setPluginVersions({{u"a"_s, recordOf(u"a"_s, {u"2.0"_s})}});
    QVERIFY(m_manager->clearPluginsCache());
    QVERIFY(m_manager->pluginVersions().isEmpty());
    QVERIFY(!QFile::exists(m_environment->path(u"support/PluginsWarehouse"_s)));
    QVERIFY(m_manager->clearPluginsCache()); // nothing is no failure
}

void tst_KRPluginManager_Installing::newerOfTwoBundles()
{
    const auto folder = m_environment->path(u"bundles"_s);
    const auto old = pluginWithFeed(folder, u"old"_s, u"1.9"_s, {})->url();
    const auto fresh = pluginWithFeed(folder, u"fresh"_s, u"1.10"_s, {})->url();
    QVERIFY(KRPluginManager::isPluginAtURL(fresh, old));
    QVERIFY(!KRPluginManager::isPluginAtURL(old, fresh));
    QVERIFY(!KRPluginManager::isPluginAtURL(old, old));
}

void tst_KRPluginManager_Installing::summariesWithAStateStore()
{
    const auto state = std::make_shared<KRPluginManagingState>(
        QUrl::fromLocalFile(m_environment->path(u"support/PluginMetadata.plist"_s)));
    state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}, {u"b"_s, u"2.0"_s}});
    m_manager = std::make_unique<KRPluginManager>(KRPluginManager::pluginsURLs(), nullptr, state);
    PluginVersionsTable records;
    for (const auto &identifier : {u"a"_s, u"b"_s, u"c"_s}) {
        plugin(identifier, u"1.0"_s, {});
        records.insert(identifier, recordOf(identifier, {u"2.0"_s}));
    }
    m_manager->setPluginVersions(records);
    QCOMPARE(m_manager->numberOfPluginsWithUpdates(), 3);
    QCOMPARE(m_manager->numberOfPluginsWithKorvanCompatibleUpdates(), 2);
    QCOMPARE(m_manager->incompatiblePluginsWithUpdates().keys(), (QStringList{u"a"_s, u"b"_s}));
    QCOMPARE(m_manager->incompatiblePluginsWithCompatibleUpdates(), (QMap<QString, QString>{{u"a"_s, u"2.0"_s}}));
    QCOMPARE(m_manager->latestPluginUpdatesNotDownloaded()->keys(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(m_manager->compatiblePluginUpdatesNotDownloaded()->keys(), (QStringList{u"a"_s, u"c"_s}));
    downloaded(u"c"_s, u"2.0"_s);
    QCOMPARE(m_manager->compatiblePluginUpdatesNotDownloaded()->keys(), QStringList{u"a"_s});
}

void tst_KRPluginManager_Installing::fieldsOfTheHost()
{
    plugin(u"a"_s, u"1.0"_s, {});
    m_manager->setPluginsWithKorvanCompatipleUpdates({m_manager->plugins()[u"a"_s]});
    QVERIFY(m_manager->pluginsWithKorvanCompatipleUpdates().isEmpty());
    QCOMPARE(m_manager->updatesAddedToWarehouse(), 0);
    m_manager->setUpdatesAddedToWarehouse(3);
    m_manager->reloadPlugins();
    QCOMPARE(m_manager->updatesAddedToWarehouse(), 3);
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Installing)
#include "tst_krpluginmanager_installing.moc"
