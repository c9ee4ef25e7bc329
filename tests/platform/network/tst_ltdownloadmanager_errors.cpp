#include "platform/network/LTDownloadManager.h"
#include "support/DownloadRecorder.h"
#include "support/servers/LoopbackServer.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

#include <sys/resource.h>

using namespace Qt::StringLiterals;

/// What the client makes of servers and systems that fail.
class tst_LTDownloadManager_errors : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void answers_data();
    void answers();
    void refusedURLs_data();
    void refusedURLs();
    void nobodyListens();
    void hostWithoutName();
    void silentServers_data();
    void silentServers();
    void silenceBeforeEncryption();
    void requestsHaveATimeoutOfTheirOwn();
    void drippingServer();
    void redirects_data();
    void redirects();
    void chainsOfRedirects_data();
    void chainsOfRedirects();
    void bodyOfARedirectIsCutOff();
    void sizes_data();
    void sizes();
    void folderThatIsNotThere();
    void fullDisk();

private:
    QStringList filesLeft() const { return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot); }

    std::unique_ptr<QTemporaryDir> m_folder;
    SessionConfiguration m_configuration;
};

void tst_LTDownloadManager_errors::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_configuration = {};
    m_configuration.temporaryFolder = m_folder->path();
}

void tst_LTDownloadManager_errors::answers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");
    const QString lost = u"The connection to \"127.0.0.1\" was lost."_s;
    const QString noHTTP = u"The server \"127.0.0.1\" has sent an answer that is not HTTP."_s;
    const QString undecodable = u"What the server \"127.0.0.1\" has sent cannot be decoded."_s;
    QTest::newRow("nothing at all") << ""_ba << -1005 << lost;
    QTest::newRow("half a status line") << "HTTP/1.1 2"_ba << -1005 << lost;
    QTest::newRow("half a head") << "HTTP/1.1 200 OK\r\nContent-Le"_ba << -1005 << lost;
    QTest::newRow("half a redirect") << "HTTP/1.1 302 Over there\r\nLocation: /other\r\nContent-Le"_ba << -1005 << lost;
    QTest::newRow("half a head after a provisional one")
        << "HTTP/1.1 103 Soon\r\nLink: <x>\r\n\r\nHTTP/1.1 200 OK\r\nContent-Le"_ba << -1005 << lost;
    QTest::newRow("half a body") << "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf"_ba << -1005 << lost;
    QTest::newRow("no body") << "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n"_ba << -1005 << lost;
    QTest::newRow("half of the chunks") << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n4\r\nhalf\r\n"_ba
                                        << -1005 << lost;
    QTest::newRow("half of an error's body") << "HTTP/1.1 500 No\r\nContent-Length: 10\r\n\r\nhalf"_ba << -1005 << lost;
    QTest::newRow("chunk of no size") << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nsize\r\nhalf\r\n"_ba
                                      << -1005 << lost;
    QTest::newRow("garbage") << "\x01\x02\xFF garbage\n\n"_ba << -1011 << noHTTP;
    QTest::newRow("another protocol") << "220 mail.example.com ESMTP\r\n"_ba << -1011 << noHTTP;
    QTest::newRow("negative length") << "HTTP/1.1 200 OK\r\nContent-Length: -5\r\n\r\nbody"_ba << -1011 << noHTTP;
    QTest::newRow("broken encoding") << "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: 4\r\n\r\nbody"_ba
                                     << -1015 << undecodable;
    QTest::newRow("unknown encoding")
        << "HTTP/1.1 200 OK\r\nContent-Encoding: rot13\r\nContent-Length: 4\r\n\r\nbody"_ba << -1015 << undecodable;
}

void tst_LTDownloadManager_errors::answers()
{
    QFETCH(QByteArray, bytes);
    LoopbackServer server;
    server.setAnswer("/file", Answer::bytes(bytes));
    const DownloadOutcome outcome = download(server.url(u"/file"_s), m_configuration);
    QVERIFY(outcome.error);
    QCOMPARE(outcome.error->domain, u"NSURLErrorDomain"_s);
    QTEST(outcome.errorText(), "text");
    QTEST(outcome.errorCode(), "code");
    QVERIFY(outcome.file.isEmpty());
    QCOMPARE(filesLeft(), QStringList());
}

void tst_LTDownloadManager_errors::refusedURLs_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<int>("code");
    QTest::newRow("empty") << QUrl() << -1000;
    QTest::newRow("file") << QUrl(u"file:///etc/passwd"_s) << -1002;
    QTest::newRow("plain HTTP") << QUrl(u"http://example.com/"_s) << -1022;
}

void tst_LTDownloadManager_errors::refusedURLs()
{
    QFETCH(QUrl, url);
    const DownloadOutcome outcome = download(url, m_configuration);
    QTEST(outcome.errorCode(), "code");
    QCOMPARE(outcome.response, URLResponse());
    QVERIFY(!outcome.onTestThread);
    QCOMPARE(filesLeft(), QStringList());
}

void tst_LTDownloadManager_errors::nobodyListens()
{
    const QUrl url = LoopbackServer().url(u"/"_s); // which has gone when the request is made
    const DownloadOutcome outcome = download(url, m_configuration);
    QCOMPARE(outcome.errorText(), u"The server \"127.0.0.1\" cannot be reached."_s);
    QCOMPARE(outcome.errorCode(), -1004);
}

void tst_LTDownloadManager_errors::hostWithoutName()
{
    const QString host = u"no-such-server.invalid"_s;
    const DownloadOutcome outcome = download(QUrl(u"https://%1/"_s.arg(host)), m_configuration);
    QCOMPARE(outcome.errorText(), u"A server named \"%1\" cannot be found."_s.arg(host));
    QCOMPARE(outcome.errorCode(), -1003);
}

void tst_LTDownloadManager_errors::silentServers_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("no answer") << ""_ba;
    QTest::newRow("after half of the head") << "HTTP/1.1 200 OK\r\nContent-"_ba;
    QTest::newRow("after the head") << "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n"_ba;
    QTest::newRow("after half of the body") << "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhalf"_ba;
    QTest::newRow("after a redirect's head")
        << "HTTP/1.1 302 Over there\r\nLocation: /x\r\nContent-Length: 10\r\n\r\n"_ba;
}

void tst_LTDownloadManager_errors::silentServers()
{
    QFETCH(QByteArray, before);
    LoopbackServer server;
    server.setAnswer("/file", Answer::bytes(before).thenStall());
    m_configuration.stallTimeout = std::chrono::milliseconds(20);
    const DownloadOutcome outcome = download(server.url(u"/file"_s), m_configuration);
    QCOMPARE(outcome.errorText(), u"The server \"127.0.0.1\" has not answered in time."_s);
    QCOMPARE(outcome.errorCode(), -1001);
    QCOMPARE(filesLeft(), QStringList());
    server.waitForHangUps(1);
}

void tst_LTDownloadManager_errors::silenceBeforeEncryption()
{
    LoopbackServer server;
    QUrl url = server.url(u"/"_s); // which waits for a request in plain text
    url.setScheme(u"https"_s);
    m_configuration.connectTimeout = std::chrono::milliseconds(20);
    QCOMPARE(download(url, m_configuration).errorCode(), -1001);
}

void tst_LTDownloadManager_errors::requestsHaveATimeoutOfTheirOwn()
{
    LoopbackServer server;
    server.setAnswer("/file", Answer::silence());
    DownloadRecorder recorder;
    LTDownloadManager manager(m_configuration, nullptr, recorder.batch());
    const URLRequest request{server.url(u"/file"_s), std::chrono::milliseconds(20)};
    manager.resumeDownloadTaskWithIdentifier(
        manager.addDownloadTaskWithDownloadRequest(request, recorder.task(u"file"_s)));
    manager.finishTasksAndInvalidate();
    recorder.waitForEnd();
    QCOMPARE(recorder.events(), (QStringList{u"file -1001"_s, u"end"_s}));
}

/// Each byte comes in time, all of them together are too few.
void tst_LTDownloadManager_errors::drippingServer()
{
    LoopbackServer server;
    server.setAnswer("/file", Answer::bytes("HTTP/1.1 200 OK\r\n\r\n").thenBytes("drip").thenStall());
    m_configuration.stallTimeout = std::chrono::milliseconds(20);
    m_configuration.stallMinimumBytes = 1'000'000;
    QCOMPARE(download(server.url(u"/file"_s), m_configuration).errorCode(), -1001);
}

void tst_LTDownloadManager_errors::redirects_data()
{
    QTest::addColumn<QByteArray>("location");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("content");
    for (const int status : {301, 302, 303, 307, 308})
        QTest::addRow("status %d", status) << "/target"_ba << status << 0 << "target"_ba;
    QTest::newRow("relative") << "target?query#fragment"_ba << 302 << 0 << "with query"_ba;
    QTest::newRow("other host's name for the same") << "//localhost:%PORT%/target"_ba << 302 << 0 << "target"_ba;
    QTest::newRow("to itself") << "/start"_ba << 302 << -1007 << QByteArray();
    QTest::newRow("to a file") << "file:///etc/passwd"_ba << 302 << -1002 << QByteArray();
    QTest::newRow("to ftp") << "ftp://127.0.0.1/"_ba << 302 << -1002 << QByteArray();
    QTest::newRow("to plain HTTP elsewhere") << "http://example.com/"_ba << 302 << -1022 << QByteArray();
    QTest::newRow("to no URL") << "http://[broken/"_ba << 302 << -1000 << QByteArray();
    QTest::newRow("with a choice") << "/target"_ba << 300 << 0 << "This body is not the one that was asked for."_ba;
    QTest::newRow("with a success") << "/target"_ba << 201 << 0 << "This body is not the one that was asked for."_ba;
}

void tst_LTDownloadManager_errors::redirects()
{
    QFETCH(QByteArray, location);
    QFETCH(int, status);
    LoopbackServer server;
    server.setAnswer("/start", Answer::redirect(location.replace("%PORT%", QByteArray::number(server.port())), status));
    server.setAnswer("/target", Answer::response(200, "target"));
    server.setAnswer("/target?query", Answer::response(200, "with query"));
    const DownloadOutcome outcome = download(server.url(u"/start"_s), m_configuration);
    QTEST(outcome.errorCode(), "code");
    QTEST(outcome.content, "content");
    QCOMPARE(filesLeft(), QStringList());
}

void tst_LTDownloadManager_errors::chainsOfRedirects_data()
{
    QTest::addColumn<int>("allowed");
    QTest::addColumn<int>("redirects");
    QTest::addColumn<int>("code");
    QTest::newRow("as many as are allowed") << 10 << 10 << 0;
    QTest::newRow("one more") << 10 << 11 << -1007;
    QTest::newRow("none allowed") << 0 << 1 << -1007;
    QTest::newRow("none allowed and none there") << 0 << 0 << 0;
}

void tst_LTDownloadManager_errors::chainsOfRedirects()
{
    QFETCH(int, allowed);
    QFETCH(int, redirects);
    LoopbackServer server;
    for (int number = 0; number < redirects; ++number)
        server.setAnswer('/' + QByteArray::number(number), Answer::redirect(QByteArray::number(number + 1)));
    server.setAnswer('/' + QByteArray::number(redirects), Answer::response(200, "target"));
    m_configuration.maximumRedirects = allowed;
    const DownloadOutcome outcome = download(server.url(u"/0"_s), m_configuration);
    QTEST(outcome.errorCode(), "code");
    QCOMPARE(server.requestedPaths().size(), qMin(redirects, allowed) + 1);
    QCOMPARE(server.connectionCount(), 1); // each answer was read to its end
    if (!outcome.error)
        QCOMPARE(outcome.response, (URLResponse{server.url(u"/%1"_s.arg(redirects)), 200}));
}

void tst_LTDownloadManager_errors::bodyOfARedirectIsCutOff()
{
    LoopbackServer server;
    server.setAnswer("/start",
        Answer::bytes("HTTP/1.1 302 Over there\r\nLocation: /target\r\n\r\n")
            .thenBytes(QByteArray(1'000'000, 'x'))
            .thenStall());
    server.setAnswer("/target", Answer::response(200, "target"));
    const DownloadOutcome outcome = download(server.url(u"/start"_s), m_configuration);
    QCOMPARE(outcome.errorText(), QString());
    QCOMPARE(outcome.content, "target"_ba);
}

void tst_LTDownloadManager_errors::sizes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("code");
    const QByteArray body(1000, 'x');
    // A hundred thousand times "x", compressed.
    const QByteArray bomb =
        QByteArray::fromBase64("H4sIAAAAAAACA+"
                               "3BMQEAAADCoNqLbw0PoAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"
                               "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAIBXA3ERB/6ghgEA");
    QTest::newRow("as large as allowed") << "HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n" + body << 0;
    QTest::newRow("announced, one byte more")
        << "HTTP/1.1 200 OK\r\nContent-Length: 1001\r\n\r\n" + body + 'x' << -1103;
    QTest::newRow("not announced, one byte more") << "HTTP/1.1 200 OK\r\n\r\n" + body + 'x' << -1103;
    QTest::newRow("chunked, one byte more") << "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3e9\r\n" + body
            + "x\r\n0\r\n\r\n" << -1103;
    QTest::newRow("small only while it is compressed")
        << "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\nContent-Length: " + QByteArray::number(bomb.size())
            + "\r\n\r\n" + bomb
        << -1103;
    QTest::newRow("of a failure") << "HTTP/1.1 404 No\r\nContent-Length: 1001\r\n\r\n" + body + 'x' << -1103;
}

void tst_LTDownloadManager_errors::sizes()
{
    QFETCH(QByteArray, bytes);
    LoopbackServer server;
    server.setAnswer("/file", Answer::bytes(bytes));
    m_configuration.maximumSize = 1000;
    const DownloadOutcome outcome = download(server.url(u"/file"_s), m_configuration);
    QTEST(outcome.errorCode(), "code");
    if (outcome.error)
        QCOMPARE(outcome.errorText(), u"The server \"127.0.0.1\" sends more than is allowed."_s);
    else
        QCOMPARE(outcome.content.size(), 1000);
    QCOMPARE(filesLeft(), QStringList());
}

void tst_LTDownloadManager_errors::folderThatIsNotThere()
{
    LoopbackServer server;
    server.setAnswer("/file", Answer::response(200, "body"));
    server.setAnswer("/empty", Answer::response(200));
    m_configuration.temporaryFolder = m_folder->filePath(u"no/such/folder"_s);
    QCOMPARE(download(server.url(u"/file"_s), m_configuration).errorCode(), -3000);
    const DownloadOutcome outcome = download(server.url(u"/empty"_s), m_configuration);
    QCOMPARE(outcome.errorCode(), -3000);
    QVERIFY(outcome.errorText().startsWith(u"No file can be created for the download from \"127.0.0.1\": "_s));
}

/// A limit on the size of files fails a write as a full disk does.
void tst_LTDownloadManager_errors::fullDisk()
{
    LoopbackServer server;
    server.setAnswer("/file", Answer::response(200, QByteArray(100'000, 'x')));
    rlimit before = {};
    getrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{50'000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const DownloadOutcome outcome = download(server.url(u"/file"_s), m_configuration);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_DFL);
    QCOMPARE(outcome.errorCode(), -3003);
    QVERIFY(outcome.errorText().startsWith(u"The download from \"127.0.0.1\" cannot be written to its file: "_s));
    QCOMPARE(filesLeft(), QStringList());
}

QTEST_GUILESS_MAIN(tst_LTDownloadManager_errors)
#include "tst_ltdownloadmanager_errors.moc"
