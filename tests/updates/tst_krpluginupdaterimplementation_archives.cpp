#include "platform/network/LTDownloadManager.h"
#include "support/TestEnvironment.h"
#include "support/servers/LoopbackServer.h"
#include "updates/KRPluginUpdaterImplementation.h"

#include <QFile>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QUrl &file)
{
    QFile opened(file.toLocalFile());
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : "no file"_ba;
}

} // namespace

/// Downloads of archives, which need not be archives here.
class tst_KRPluginUpdaterImplementation_Archives : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void batch();
    void emptyBatch();
    void batchWithoutEndHandler();
    void statusesOfABatch();
    void cancelledBatch();
    void cancelWithoutABatch();
    void endOfAnEarlierBatchLeavesTheLaterOne();
    void updaterThatEndsMeanwhile();
    void singleDownload();
    void singleDownloadCannotBeCancelled();
    void progress();

private:
    QUrl url(const QString &path) const { return m_server->url(path); }
    void archive(const QByteArray &path, const QByteArray &content)
    {
        m_server->setAnswer(path, Answer::response(200, content));
    }
    void slowArchive(const QByteArray &path)
    {
        m_server->setAnswer(path, Answer::bytes("HTTP/1.1 200 OK\r\n\r\n").thenWaitForRelease().thenBytes("slow"));
    }
    /// Remembers "identifier version content" or "identifier version error code", on the main thread.
    PluginDownloadHandler archiveHandler()
    {
        return [this](const std::optional<KRError> &error, const QString &identifier, const QString &version,
                   const QUrl &file) {
            const auto outcome = error ? u"error %1"_s.arg(error->code) : QString::fromUtf8(contentOf(file));
            tell(u"%1 %2 %3"_s.arg(identifier, version, outcome));
        };
    }
    std::function<void()> endHandler()
    {
        return [this] { tell(u"end"_s); };
    }
    void tell(const QString &event)
    {
        m_environment->queue.async([this, event] { m_events.append(event); });
    }
    void waitFor(const QString &event)
    {
        m_environment->queue.runUntil([this, event] { return m_events.contains(event); });
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<LoopbackServer> m_server;
    std::unique_ptr<KRPluginUpdaterImplementation> m_updater;
    QStringList m_events;
};

void tst_KRPluginUpdaterImplementation_Archives::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_server = std::make_unique<LoopbackServer>();
    m_updater = std::make_unique<KRPluginUpdaterImplementation>();
    m_events.clear();
}

void tst_KRPluginUpdaterImplementation_Archives::cleanup()
{
    if (const auto downloader = m_updater ? m_updater->pluginDownloader() : nullptr)
        downloader->cancelAllTasksAndWait();
    m_updater.reset();
    m_server.reset();
    m_environment.reset();
}

void tst_KRPluginUpdaterImplementation_Archives::batch()
{
    archive("/a1", "A one");
    archive("/a2", "A two");
    const UpdateList updates{{u"a"_s, {{u"1"_s, url(u"/a1"_s)}, {u"2"_s, url(u"/a2"_s)}}},
        {u"b"_s, {{u"1"_s, QUrl(u"http://127.0.0.1:1/"_s)}}}};
    m_updater->downloadPlugins(updates, archiveHandler(), endHandler());
    waitFor(u"end"_s);
    QCOMPARE(m_events.last(), u"end"_s);
    m_events.sort();
    QCOMPARE(m_events, (QStringList{u"a 1 A one"_s, u"a 2 A two"_s, u"b 1 error -1004"_s, u"end"_s}));
}

void tst_KRPluginUpdaterImplementation_Archives::emptyBatch()
{
    m_updater->downloadPlugins({}, archiveHandler(), endHandler());
    waitFor(u"end"_s);
    QCOMPARE(m_events, QStringList{u"end"_s});
}

void tst_KRPluginUpdaterImplementation_Archives::batchWithoutEndHandler()
{
    archive("/a1", "A");
    m_updater->downloadPlugins({{u"a"_s, {{u"1"_s, url(u"/a1"_s)}}}}, archiveHandler(), {});
    waitFor(u"a 1 A"_s);
}

void tst_KRPluginUpdaterImplementation_Archives::statusesOfABatch()
{
    slowArchive("/a1");
    const auto tellStatus = [this](const QString &when) {
        const auto runs = m_updater->pluginDownloader() ? u"runs"_s : u"none"_s;
        tell(u"%1 %2 %3"_s.arg(when).arg(m_updater->downloadingPluginVersionsStatus()).arg(runs));
    };
    tellStatus(u"before:"_s);
    m_updater->downloadPlugins(
        {{u"a"_s, {{u"1"_s, url(u"/a1"_s)}}}}, [&](const auto &...) { tellStatus(u"archive:"_s); },
        [&] { tellStatus(u"end:"_s); });
    tellStatus(u"meanwhile:"_s);
    m_server->release();
    waitFor(u"end: 3 runs"_s);
    m_updater->downloadPlugins({}, archiveHandler(), endHandler()); // the network thread comes to it after that end
    waitFor(u"end"_s);
    m_updater->downloadPluginFromURL(url(u"/none"_s), [this](const auto &...) { tell(u"single"_s); });
    waitFor(u"single"_s);
    QVERIFY(!m_updater->pluginDownloader());
    const QStringList expected{
        u"before: 0 none"_s, u"meanwhile: 1 runs"_s, u"archive: 1 runs"_s, u"end: 3 runs"_s, u"end"_s, u"single"_s};
    QCOMPARE(m_events, expected);
}

void tst_KRPluginUpdaterImplementation_Archives::cancelledBatch()
{
    m_server->setAnswer("/a1", Answer::bytes("HTTP/1.1 200 OK\r\n\r\nsome").thenStall());
    m_updater->downloadPlugins({{u"a"_s, {{u"1"_s, url(u"/a1"_s)}}}}, archiveHandler(), endHandler());
    m_server->waitForRequests(1);
    m_updater->cancelDownloadingPluginVersions();
    waitFor(u"end"_s);
    QCOMPARE(m_events, (QStringList{u"a 1 error -999"_s, u"end"_s}));
    m_server->waitForHangUps(1); // it really stopped
}

void tst_KRPluginUpdaterImplementation_Archives::cancelWithoutABatch()
{
    m_updater->cancelDownloadingPluginVersions();
    QCOMPARE(m_updater->downloadingPluginVersionsStatus(), 3);
}

void tst_KRPluginUpdaterImplementation_Archives::endOfAnEarlierBatchLeavesTheLaterOne()
{
    slowArchive("/a1");
    m_server->setAnswer("/a2", Answer::bytes("HTTP/1.1 200 OK\r\n\r\n").thenStall());
    m_updater->downloadPlugins({{u"a"_s, {{u"1"_s, url(u"/a1"_s)}}}}, archiveHandler(), endHandler());
    m_server->waitForRequests(1);
    m_updater->downloadPlugins({{u"a"_s, {{u"2"_s, url(u"/a2"_s)}}}}, archiveHandler(), endHandler());
    m_server->waitForRequests(2);
    m_server->release();
    waitFor(u"end"_s);
    QVERIFY(m_updater->pluginDownloader());
    m_updater->cancelDownloadingPluginVersions();
    m_environment->queue.runUntil([this] { return m_events.count(u"end"_s) == 2; });
    QCOMPARE(m_events.filter(u"error -999"_s).size(), 1);
}

void tst_KRPluginUpdaterImplementation_Archives::updaterThatEndsMeanwhile()
{
    slowArchive("/a1");
    m_updater->downloadPlugins({{u"a"_s, {{u"1"_s, url(u"/a1"_s)}}}}, archiveHandler(), endHandler());
    m_server->waitForRequests(1);
    m_updater.reset();
    m_server->release();
    waitFor(u"end"_s);
    QCOMPARE(m_events, (QStringList{u"a 1 slow"_s, u"end"_s}));
}

void tst_KRPluginUpdaterImplementation_Archives::singleDownload()
{
    archive("/a1", "A");
    const auto handler = [this](const std::optional<KRError> &error, const QUrl &file) {
        tell(error ? u"error %1"_s.arg(error->code) : QString::fromUtf8(contentOf(file)));
    };
    m_updater->downloadPluginFromURL(url(u"/a1"_s), handler);
    waitFor(u"A"_s);
    QVERIFY(!m_updater->pluginDownloader());
    QCOMPARE(m_updater->downloadingPluginVersionsStatus(), 1);
    m_updater->downloadPluginFromURL(QUrl(u"http://127.0.0.1:1/"_s), handler);
    waitFor(u"error -1004"_s);
}

void tst_KRPluginUpdaterImplementation_Archives::singleDownloadCannotBeCancelled()
{
    slowArchive("/a1");
    m_updater->downloadPluginFromURL(url(u"/a1"_s), [this](const std::optional<KRError> &error, const QUrl &file) {
        tell(error ? u"error"_s : QString::fromUtf8(contentOf(file)));
    });
    m_server->waitForRequests(1);
    m_updater->cancelDownloadingPluginVersions();
    m_server->release();
    waitFor(u"slow"_s);
}

void tst_KRPluginUpdaterImplementation_Archives::progress()
{
    archive("/a1", "12345678");
    m_updater->setProgressHandler([this](const PluginDownloadProgress &progress) {
        tell(u"%1 %2: %3 of %4, %5 of %6"_s.arg(progress.identifier, progress.version)
                 .arg(progress.bytesReceived)
                 .arg(progress.bytesExpected)
                 .arg(progress.totalBytesReceived)
                 .arg(progress.totalBytesExpected));
    });
    m_updater->downloadPlugins({{u"a"_s, {{u"1"_s, url(u"/a1"_s)}}}}, archiveHandler(), endHandler());
    waitFor(u"end"_s);
    QCOMPARE(m_events, (QStringList{u"a 1: 8 of 8, 8 of 8"_s, u"a 1 12345678"_s, u"end"_s}));
    m_events.clear();
    m_updater->downloadPluginFromURL(url(u"/a1"_s), [this](const auto &...) { tell(u"single"_s); });
    waitFor(u"single"_s);
    QCOMPARE(m_events, (QStringList{u" : 8 of 8, 8 of 8"_s, u"single"_s}));
    m_updater->setProgressHandler({});
    m_events.clear();
    m_updater->downloadPlugins({{u"a"_s, {{u"1"_s, url(u"/a1"_s)}}}}, archiveHandler(), endHandler());
    waitFor(u"end"_s);
    QCOMPARE(m_events, (QStringList{u"a 1 12345678"_s, u"end"_s}));
}

QTEST_GUILESS_MAIN(tst_KRPluginUpdaterImplementation_Archives)
#include "tst_krpluginupdaterimplementation_archives.moc"
