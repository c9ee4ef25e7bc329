#include "platform/network/LTDownloadManager.h"
#include "support/DownloadRecorder.h"
#include "support/servers/LoopbackServer.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// How downloads share connections, and what they tell servers.
class tst_LTDownloadManager_connections : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void requestsAreAnonymous();
    void connectionsAreUsedAgain();
    void connectionsAreLimited();
    void silentServerHoldsUpNobody();
    void manyTasks();
    void proxyOfTheEnvironment();

private:
    std::unique_ptr<LTDownloadManager> manager()
    {
        return std::make_unique<LTDownloadManager>(SessionConfiguration(), nullptr, m_recorder->batch());
    }
    QString add(LTDownloadManager &manager, const QUrl &url, const QString &name)
    {
        return manager.addDownloadTaskWithDownloadRequest({url, {}}, m_recorder->task(name));
    }

    std::unique_ptr<DownloadRecorder> m_recorder;
};

void tst_LTDownloadManager_connections::init()
{
    m_recorder = std::make_unique<DownloadRecorder>();
}

void tst_LTDownloadManager_connections::requestsAreAnonymous()
{
    LoopbackServer server;
    const QList<QPair<QByteArray, QByteArray>> cookie{{"Set-Cookie", "crumb=1"}};
    server.setAnswer("/first", Answer::response(200, "body", cookie));
    download(server.url(u"/first"_s));
    download(server.url(u"/second"_s));
    const QByteArray head = server.lastRequest();
    QVERIFY2(head.startsWith("GET /second HTTP/1.1\r\n"), head.constData());
    for (const char *name : {"Cookie:", "Referer:", "Authorization:"})
        QVERIFY2(!head.contains(name), head.constData());
}

void tst_LTDownloadManager_connections::connectionsAreUsedAgain()
{
    LoopbackServer server;
    for (int number = 0; number < 5; ++number)
        QCOMPARE(download(server.url(u"/"_s)).response.statusCode, 404);
    QCOMPARE(server.connectionCount(), 1);
}

void tst_LTDownloadManager_connections::connectionsAreLimited()
{
    LoopbackServer server;
    server.setAnswer("/", Answer().thenWaitForRelease().thenBytes("HTTP/1.1 200 OK\r\n\r\nbody"));
    const auto batch = manager();
    for (int number = 0; number < 20; ++number)
        batch->resumeDownloadTaskWithIdentifier(add(*batch, server.url(u"/"_s), QString::number(number)));
    batch->finishTasksAndInvalidate();
    server.waitForRequests(6);
    server.release(20);
    m_recorder->waitForEnd();
    QCOMPARE(m_recorder->events().size(), 21);
    QCOMPARE(server.largestConcurrency(), 6);
}

void tst_LTDownloadManager_connections::silentServerHoldsUpNobody()
{
    LoopbackServer silent;
    LoopbackServer server;
    silent.setAnswer("/", Answer::silence());
    const auto batch = manager();
    for (int number = 0; number < 10; ++number)
        batch->resumeDownloadTaskWithIdentifier(add(*batch, silent.url(u"/"_s), u"silent"_s));
    silent.waitForRequests(1);
    batch->resumeDownloadTaskWithIdentifier(add(*batch, server.url(u"/"_s), u"other"_s));
    m_recorder->waitForEvents(1);
    QCOMPARE(m_recorder->events(), QStringList{u"other"_s});
    batch->cancelAllTasksAndWait();
}

void tst_LTDownloadManager_connections::manyTasks()
{
    constexpr int count = 1000;
    LoopbackServer server;
    const auto batch = manager();
    for (int number = 0; number < count; ++number)
        add(*batch, server.url(u"/%1"_s.arg(number)), QString::number(number));
    for (const QString &identifier : batch->allTasksIdentifiers())
        batch->resumeDownloadTaskWithIdentifier(identifier);
    batch->finishTasksAndInvalidate();
    m_recorder->waitForEnd();
    QStringList events = m_recorder->events();
    QCOMPARE(events.takeLast(), u"end"_s);
    QCOMPARE(QSet<QString>(events.begin(), events.end()).size(), count);
    QCOMPARE(server.requestedPaths().size(), count);
    QVERIFY(server.connectionCount() <= 6);
}

void tst_LTDownloadManager_connections::proxyOfTheEnvironment()
{
    LoopbackServer proxy;
    LoopbackServer server;
    server.setAnswer("/file", Answer::response(200, "body"));
    proxy.setAnswer("example.invalid:443", Answer::response(403));
    const QByteArray address = proxy.url(u""_s).toEncoded();
    for (const char *name : {"http_proxy", "https_proxy", "all_proxy"})
        qputenv(name, address);
    const DownloadOutcome here = download(server.url(u"/file"_s));
    const DownloadOutcome elsewhere = download(QUrl(u"https://example.invalid/file"_s));
    for (const char *name : {"http_proxy", "https_proxy", "all_proxy"})
        qunsetenv(name);
    QCOMPARE(here.content, "body"_ba); // by itself
    QVERIFY(elsewhere.error);
    QCOMPARE(proxy.requestedPaths(), (QList<QByteArray>{"example.invalid:443"}));
}

QTEST_GUILESS_MAIN(tst_LTDownloadManager_connections)
#include "tst_ltdownloadmanager_connections.moc"
