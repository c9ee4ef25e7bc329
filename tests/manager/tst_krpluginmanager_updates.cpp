// Checks for updates and downloads into the warehouse, from a server that also answers wrongly.

#include "manager/KRPluginManager.h"
#include "platform/network/NetworkThread.h"
#include "support/TestArchives.h"
#include "support/TestEnvironment.h"
#include "support/TestUpdates.h"
#include "support/servers/LoopbackServer.h"
#include "updates/KRPluginUpdaterImplementation.h"

#include <QDirIterator>
#include <QThread>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_KRPluginManager_Updates : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void checkRecordsWhatIsOffered();
    void checkForgetsWhatWasOfferedBefore();
    void checkOfSomeIsACheckOfAll();
    void feedsThatFail();
    void withoutAnUpdater();
    void managerEndsDuringACheck();
    void reloadDropsWhatIsGone();
    void batchOfGoodAndBadArchives();
    void errorsOfABatchAreThereForAFastMainThread();
    void errorsOfABatchAreNilForASlowMainThread();
    void batchesOfTheSummaries();
    void identifiersOfStrangers_data();
    void identifiersOfStrangers();
    void singleDownload();
    void singleDownloadIsRefused_data();
    void singleDownloadIsRefused();
    void singleDownloadFails_data();
    void singleDownloadFails();
    void managerEndsWhileUnpackingIsDue();

private:
    QUrl url(const QString &path) const { return m_server->url(path); }
    void answer(const QByteArray &path, const QByteArray &body)
    {
        m_server->setAnswer(path, Answer::response(200, body));
    }
    void plugin(const QString &identifier, const QString &version, const QUrl &feed)
    {
        pluginWithFeed(m_environment->path(u"support/Plugins"_s), identifier, version, feed);
        m_manager->reloadPlugins();
    }
    /// A plug-in "a" at 1.0 whose feed offers 2.0, at "/a.zip".
    void pluginWithUpdate()
    {
        answer("/a.json", jsonFeed(u"2.0"_s, url(u"/a.zip"_s)));
        plugin(u"a"_s, u"1.0"_s, url(u"/a.json"_s));
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
            const auto outcome = error ? u"error %1"_s.arg(error->code) : latest.value_or(u"nil"_s);
            tell(u"%1 %2"_s.arg(*plugin->identifier(), outcome));
        };
    }
    QStringList check()
    {
        m_events.clear();
        m_manager->checkForPluginUpdatesWithHandler(checkHandler(), [this] { tell(u"~end"_s); });
        waitFor(u"~end"_s);
        m_events.sort();
        return m_events;
    }
    UpdateErrorHandler errorHandler()
    {
        return [this](const std::optional<KRError> &error) {
            tell(error ? u"error: "_s + error->localizedDescription : u"done"_s);
        };
    }
    void downloadAll(const UpdateList &updates)
    {
        m_manager->downloadPluginUpdates(updates, [this](const auto &) { tell(u"end"_s); });
        waitFor(u"end"_s);
        settle();
    }
    /// What has been told came from the middle of a callback: now it has returned.
    static void settle()
    {
        NetworkThread::shared()->postAndWait([] {});
    }
    bool isInWarehouse(const QString &path) const
    {
        return QFile::exists(m_environment->path(u"support/PluginsWarehouse/"_s + path));
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<LoopbackServer> m_server;
    std::unique_ptr<KRPluginManager> m_manager;
    QStringList m_events;
};

void tst_KRPluginManager_Updates::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    QDir().mkpath(m_environment->path(u"temporary"_s));
    qputenv("TMPDIR", QFile::encodeName(m_environment->path(u"temporary"_s)));
    m_server = std::make_unique<LoopbackServer>();
    makeManager(std::make_shared<KRPluginUpdaterImplementation>());
    m_events.clear();
}

void tst_KRPluginManager_Updates::cleanup()
{
    m_manager.reset();
    m_server.reset();
    settle();
    const auto left = QDir(m_environment->path(u"temporary"_s)).entryList(QDir::Files | QDir::Hidden);
    m_environment.reset();
    qunsetenv("TMPDIR");
    QCOMPARE(left, QStringList());
}

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

void tst_KRPluginManager_Updates::batchOfGoodAndBadArchives()
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

void tst_KRPluginManager_Updates::errorsOfABatchAreThereForAFastMainThread()
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

void tst_KRPluginManager_Updates::errorsOfABatchAreNilForASlowMainThread()
{
    m_manager->addDownloadAndDecompressPluginError({u"domain"_s, 7, u"text"_s});
    QCOMPARE(m_manager->downloadPluginsErrors()->size(), 1);
    bool hasEnded = false;
    bool isNil = false;
    m_manager->downloadPluginUpdates({}, [&](const std::optional<QList<KRError>> &errors) {
        hasEnded = true;
        isNil = !errors;
        QCOMPARE(QThread::currentThread(), qApp->thread());
    });
    settle();
    settle(); // the end of a batch is a call of its own
    m_environment->queue.runQueued();
    QVERIFY(hasEnded);
    QVERIFY(isNil);
}

void tst_KRPluginManager_Updates::batchesOfTheSummaries()
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

void tst_KRPluginManager_Updates::identifiersOfStrangers_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("version");
    QTest::newRow("identifier that climbs") << u"../../Plugins"_s << u"1"_s;
    QTest::newRow("version that climbs") << u"a"_s << u"../../../evil"_s;
    QTest::newRow("no version") << u"a"_s << QString();
}

void tst_KRPluginManager_Updates::identifiersOfStrangers()
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

void tst_KRPluginManager_Updates::singleDownload()
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

void tst_KRPluginManager_Updates::singleDownloadIsRefused_data()
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

void tst_KRPluginManager_Updates::singleDownloadIsRefused()
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

void tst_KRPluginManager_Updates::singleDownloadFails_data()
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

void tst_KRPluginManager_Updates::singleDownloadFails()
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
void tst_KRPluginManager_Updates::managerEndsWhileUnpackingIsDue()
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

QTEST_GUILESS_MAIN(tst_KRPluginManager_Updates)
#include "tst_krpluginmanager_updates.moc"
