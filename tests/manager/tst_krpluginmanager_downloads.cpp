// Downloads into the warehouse, from a server that also answers wrongly.

#include "support/UpdatesFixture.h"

#include <QDirIterator>
#include <QThread>

using namespace Qt::StringLiterals;

class tst_KRPluginManager_Downloads : public QObject, private UpdatesFixture
{
    Q_OBJECT

private slots:
    void init() { setUp(); }
    void cleanup() { QCOMPARE(tearDown(), QStringList()); }

    void batchOfGoodAndBadArchives();
    void errorsOfABatchAreThereForAFastMainThread();
    void errorsOfABatchAreNilForASlowMainThread();
    void batchesOfTheSummaries();
    void identifiersOfStrangers_data();
    void identifiersOfStrangers();
    void singleDownload();
    void brokenUnpackingIsNoUpdate_data();
    void brokenUnpackingIsNoUpdate();
    void updaterThatAnswersAtOnce();
    void singleDownloadIsRefused_data();
    void singleDownloadIsRefused();
    void singleDownloadFails_data();
    void singleDownloadFails();
    void managerEndsWhileUnpackingIsDue();
};

void tst_KRPluginManager_Downloads::batchOfGoodAndBadArchives()
{
    answer("/good.zip", pluginArchive(u"good"_s, u"2.0"_s));
    answer("/garbage.zip", "no archive");
    answer("/climbs.zip", ZipBuilder({{"first", "1"}, {"../outside", "2"}}).bytes());
    const UpdateList updates{{u"bad"_s, {{u"1"_s, QUrl(u"http://127.0.0.1:1/"_s)}, {u"2"_s, url(u"/climbs.zip"_s)}}},
        {u"garbage"_s, {{u"1"_s, url(u"/garbage.zip"_s)}}}, {u"good"_s, {{u"2.0"_s, url(u"/good.zip"_s)}}}};
    downloadAll(updates);
    QVERIFY(isInWarehouse(u"good/2.0/update/good.korvanplugin/Contents/Korvan/manifest.json"_s));
    QVERIFY(isInWarehouse(u"bad/2/first"_s)); // what was unpacked until then stays
    QVERIFY(!m_manager->isPluginUpdateDownloadedWithIdentifier(u"garbage"_s, u"1"_s));
    QVERIFY(m_manager->isPluginUpdateDownloadedWithIdentifier(u"good"_s, u"2.0"_s));
    QVERIFY(!m_manager->downloadPluginsErrors());
}

namespace {

/// Runs at once what others queue.
class ImmediateQueue final : public MainQueue
{
public:
    void async(std::function<void()> work) override { work(); }
    std::unique_ptr<ScheduledCall> callAfter(std::chrono::milliseconds, std::function<void()>) override { return {}; }
    std::chrono::milliseconds now() const override { return {}; }
};

/// A host whose main thread is always faster.
class FastEnvironment final : public LTAppEnvironment
{
public:
    MainQueue &mainQueue() override { return queue; }
    QUrl applicationSupportFolder() const override { return QUrl::fromLocalFile(folder.path() + u'/'); }

    ImmediateQueue queue;
    QTemporaryDir folder;
};

} // namespace

void tst_KRPluginManager_Downloads::errorsOfABatchAreThereForAFastMainThread()
{
    FastEnvironment environment;
    const LTAppEnvironment::Installation installation(environment);
    answer("/climbs.zip", ZipBuilder().add({"../outside", "2"}).bytes());
    const UpdateList updates{{u"a"_s, {{u"1"_s, QUrl(u"http://127.0.0.1:1/"_s)}, {u"2"_s, url(u"/climbs.zip"_s)}}}};
    m_manager->downloadPluginUpdates(updates, [this](const std::optional<QList<KRError>> &errors) {
        QStringList lines;
        for (const auto &error : errors.value_or(QList<KRError>()))
            lines.append(u"%1 %2"_s.arg(error.domain).arg(error.code));
        lines.sort();
        tell(lines.join(u", "_s));
    });
    waitFor(u"NSURLErrorDomain -1004, com.veldmark.pluginmanager.updating 0"_s);
}

void tst_KRPluginManager_Downloads::errorsOfABatchAreNilForASlowMainThread()
{
    m_manager->addDownloadAndDecompressPluginError({u"domain"_s, 7, u"text"_s});
    QCOMPARE(m_manager->downloadPluginsErrors()->size(), 1);
    bool hasEnded = false;
    bool isNil = false;
    m_manager->downloadPluginUpdates({}, [&](const std::optional<QList<KRError>> &errors) {
        hasEnded = true;
        isNil = !errors;
        QCOMPARE(QThread::currentThread(), QCoreApplication::instance()->thread());
    });
    settle();
    settle(); // the end of a batch is a call of its own
    m_environment->queue.runQueued();
    QVERIFY(hasEnded);
    QVERIFY(isNil);
}

void tst_KRPluginManager_Downloads::batchesOfTheSummaries()
{
    answer("/a.zip", pluginArchive(u"a"_s, u"2.0"_s));
    pluginWithUpdate();
    m_manager->downloadLatestPluginUpdatesWithCompletionHandler([this](const auto &) { tell(u"latest"_s); });
    waitFor(u"latest"_s);
    QVERIFY(m_manager->isPluginUpdateDownloadedWithIdentifier(u"a"_s, u"2.0"_s));
    const auto requests = m_server->requestedPaths().size();
    m_manager->downloadCompatiblePluginUpdatesWithCompletionHandler([this](const auto &) { tell(u"compatible"_s); });
    waitFor(u"compatible"_s);
    QCOMPARE(m_server->requestedPaths().size(), requests); // there is nothing left
    QVERIFY(m_manager->clearPluginsCache());
    pluginWithUpdate();
    m_manager->downloadCompatiblePluginUpdatesWithCompletionHandler([this](const auto &) { tell(u"again"_s); });
    waitFor(u"again"_s);
    QVERIFY(m_manager->isPluginUpdateDownloadedWithIdentifier(u"a"_s, u"2.0"_s));
}

void tst_KRPluginManager_Downloads::identifiersOfStrangers_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("version");
    QTest::newRow("identifier that climbs") << u"../../Plugins"_s << u"1"_s;
    QTest::newRow("version that climbs") << u"a"_s << u"../../../evil"_s;
    QTest::newRow("no version") << u"a"_s << QString();
}

void tst_KRPluginManager_Downloads::identifiersOfStrangers()
{
    QFETCH(QString, identifier);
    QFETCH(QString, version);
    answer("/a.zip", pluginArchive(u"a"_s, u"2.0"_s));
    KRPluginVersions record(identifier, {});
    record.addVersions({{version, {{downloadURLKey, url(u"/a.zip"_s)}}}});
    m_manager->setPluginVersions({{identifier, std::make_shared<KRPluginVersions>(record)}});
    m_manager->downloadPluginUpdate(identifier, version, errorHandler());
    m_environment->queue.runQueued();
    QVERIFY(m_events.value(0).startsWith(u"error: The plugin's identifier and version"));
    QCOMPARE(m_server->requestedPaths().size(), 0);
    downloadAll({{identifier, {{version, url(u"/a.zip"_s)}}}});
    QDirIterator files(m_environment->path({}), QDir::Files, QDirIterator::Subdirectories);
    QVERIFY2(!files.hasNext(), qPrintable(files.next()));
}

void tst_KRPluginManager_Downloads::singleDownload()
{
    answer("/a.zip", pluginArchive(u"a"_s, u"2.0"_s));
    pluginWithUpdate();
    m_manager->downloadPluginUpdate(u"a"_s, u"2.0"_s, errorHandler());
    waitFor(u"done"_s);
    const auto downloaded = m_manager->downloadedPluginURLWithIdentifier(u"a"_s, u"2.0"_s);
    const auto folder = KRPluginManager::warehousePluginFolderForIdentifier(u"a"_s, u"2.0"_s);
    QCOMPARE(downloaded.path(), folder.path() + u"update/a.korvanplugin/"_s);
    QCOMPARE(m_manager->firstPluginBundleFoundInFolder(KRPluginManager::pluginsWarehouseURL()), downloaded);
}

void tst_KRPluginManager_Downloads::brokenUnpackingIsNoUpdate_data()
{
    QTest::addColumn<bool>("isBatch");
    QTest::newRow("single download") << false;
    QTest::newRow("batch") << true;
}

/// The first entries are a plug-in, but not all of it. What is left is repeated, without what was there.
void tst_KRPluginManager_Downloads::brokenUnpackingIsNoUpdate()
{
    QFETCH(bool, isBatch);
    pluginWithUpdate();
    const QByteArray folder = "a.korvanplugin/Contents/Korvan/";
    ZipPart broken(folder + "script.js", "function onRun() {}");
    broken.checksum = 1;
    answer("/a.zip",
        ZipBuilder({{folder + "manifest.json", R"({"identifier": "a"})"}, {folder + "old.js", ""}, broken}).bytes());
    const auto download = [&] {
        m_events.clear();
        if (isBatch)
            m_manager->downloadLatestPluginUpdatesWithCompletionHandler([this](const auto &) { tell(u"end"_s); });
        else
            m_manager->downloadPluginUpdate(u"a"_s, u"2.0"_s, [this](const auto &) { tell(u"end"_s); });
        waitFor(u"end"_s);
        settle();
    };
    download();
    QVERIFY(isInWarehouse(u"a/2.0/a.korvanplugin/Contents/Korvan/manifest.json"_s));
    QVERIFY(!m_manager->isPluginUpdateDownloadedWithIdentifier(u"a"_s, u"2.0"_s));
    QVERIFY(!m_manager->installPluginWithIdentifier(u"a"_s, u"2.0"_s));
    QCOMPARE(m_manager->latestPluginUpdatesNotDownloaded()->keys(), QStringList{u"a"_s});
    answer("/a.zip", pluginArchive(u"a"_s, u"2.0"_s));
    download();
    QVERIFY(m_manager->isPluginUpdateDownloadedWithIdentifier(u"a"_s, u"2.0"_s));
    QVERIFY(!isInWarehouse(u"a/2.0/a.korvanplugin"_s));
}

namespace {

/// Has every feed and every archive already.
class ImmediateUpdater final : public KRPluginUpdater
{
public:
    void downloadPluginUpdatingInfo(const PluginTable &plugins, UpdatingInfoHandler downloadUpdatingInfoHandler,
        std::function<void()> completionHandler) override
    {
        for (const auto &plugin : plugins)
            downloadUpdatingInfoHandler({}, plugin, VersionsDictionary{{u"2.0"_s, {{downloadURLKey, QUrl(u"x:y"_s)}}}});
        completionHandler();
    }
    void downloadPlugins(const UpdateList &, PluginDownloadHandler, std::function<void()>) override { }
    void downloadPluginFromURL(const QUrl &, PluginFileHandler completionHandler) override
    {
        completionHandler({}, {});
    }
    void cancelDownloadingPluginVersions() override { }
    bool decompressPluginZip(const QUrl &, const QUrl &, KRError *) override { return true; }
};

} // namespace

void tst_KRPluginManager_Downloads::updaterThatAnswersAtOnce()
{
    makeManager(std::make_shared<ImmediateUpdater>());
    plugin(u"a"_s, u"1.0"_s, {});
    int downloads = 0;
    m_manager->checkForPluginUpdatesWithHandler(
        [&](const auto &, const auto &, const auto &latest) {
            m_manager->downloadPluginUpdate(u"a"_s, *latest, [&](const auto &error) { downloads += error ? 0 : 1; });
        },
        [] {});
    QCOMPARE(downloads, 1);
}

void tst_KRPluginManager_Downloads::singleDownloadIsRefused_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("isDownloaded");
    QTest::addColumn<QString>("text");
    const auto there = u"error: Plugin update already downloaded."_s;
    const auto unknown = u"error: Could not obtain url to download plugin update."_s;
    QTest::newRow("downloaded already") << u"2.0"_s << true << there;
    QTest::newRow("downloaded already, no longer offered") << u"1.5"_s << true << there;
    QTest::newRow("not offered") << u"3.0"_s << false << unknown;
}

void tst_KRPluginManager_Downloads::singleDownloadIsRefused()
{
    QFETCH(QString, version);
    QFETCH(bool, isDownloaded);
    QFETCH(QString, text);
    pluginWithUpdate();
    if (isDownloaded)
        QDir().mkpath(m_environment->path(u"support/PluginsWarehouse/a/%1/a.korvanplugin"_s.arg(version)));
    const auto requests = m_server->requestedPaths().size();
    std::optional<KRError> failure;
    m_manager->downloadPluginUpdate(u"a"_s, version, [&failure](const auto &error) { failure = error; });
    QCOMPARE(u"error: "_s + failure.value().localizedDescription, text);
    QCOMPARE(failure->domain, u"KRPluginMangerErrorDomain"_s);
    QCOMPARE(failure->code, 0);
    QCOMPARE(m_server->requestedPaths().size(), requests);
    m_manager->downloadPluginUpdate(u"a"_s, version, {});
}

void tst_KRPluginManager_Downloads::singleDownloadFails_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("outcome");
    const auto whole = [](const QByteArray &body) {
        return "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    };
    QTest::newRow("connection lost in the middle") << "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nPK"_ba
                                                   << u"error: The connection to \"127.0.0.1\" was lost."_s;
    QTest::newRow("path that climbs") << whole(ZipBuilder().add({"../x", "x"}).bytes())
                                      << u"error: Invalid file path within zip archive."_s;
    QTest::newRow("no archive: nobody knows why") << whole("<html>Not found</html>") << u"done"_s;
}

void tst_KRPluginManager_Downloads::singleDownloadFails()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, outcome);
    pluginWithUpdate();
    m_server->setAnswer("/a.zip", Answer::bytes(answer));
    m_manager->downloadPluginUpdate(u"a"_s, u"2.0"_s, errorHandler());
    waitFor(outcome);
    QVERIFY(!m_manager->isPluginUpdateDownloadedWithIdentifier(u"a"_s, u"2.0"_s));
}

/// The archive comes when nobody wants it any more.
void tst_KRPluginManager_Downloads::managerEndsWhileUnpackingIsDue()
{
    const auto updater = std::make_shared<KRPluginUpdaterImplementation>();
    makeManager(updater);
    const auto archive = pluginArchive(u"a"_s, u"2.0"_s);
    m_server->setAnswer("/a.zip",
        Answer::bytes("HTTP/1.1 200 OK\r\n\r\n")
            .thenBytes(archive.first(5))
            .thenWaitForRelease()
            .thenBytes(archive.mid(5)));
    m_manager->downloadPluginUpdates(
        {{u"a"_s, {{u"2.0"_s, url(u"/a.zip"_s)}}}}, [this](const auto &) { tell(u"end"_s); });
    m_server->waitForRequests(1);
    m_manager.reset();
    m_server->release();
    QTRY_VERIFY(!updater->pluginDownloader()); // it has come to its end
    m_environment->queue.runQueued();
    QCOMPARE(m_events, QStringList());
    QVERIFY(!isInWarehouse(u"a/2.0"_s));
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Downloads)
#include "tst_krpluginmanager_downloads.moc"
