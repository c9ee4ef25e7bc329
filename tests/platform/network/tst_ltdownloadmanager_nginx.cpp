#include "platform/network/LTDownloadManager.h"
#include "support/BundleBuilder.h"
#include "support/DownloadRecorder.h"
#include "support/servers/NginxServer.h"

#include <QtTest>

using namespace Qt::StringLiterals;

/// Downloads from a real server, over TLS.
class tst_LTDownloadManager_nginx : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void files_data();
    void files();
    void largeFile();
    void untrustedAuthority();
    void authorityOfTheEnvironment();
    void authoritiesThatCannotBeRead();
    void certificateOfAnotherName();
    void plainAnswerToEncryption();
    void redirects_data();
    void redirects();
    void manyFilesOverFewConnections();

private:
    QUrl url(const QString &path) const { return m_server->baseUrl().resolved(QUrl(path)); }

    std::unique_ptr<NginxServer> m_server;
    SessionConfiguration m_configuration;
};

void tst_LTDownloadManager_nginx::initTestCase()
{
    m_server = std::make_unique<NginxServer>(R"(
        location = /to-plain { return 302 http://127.0.0.1:1/; }
        location = /to-file { return 302 /folder/a%20file.json; }
        location = /to-elsewhere { return 302 http://example.com/; }
        location = /connection { return 200 $connection; }
        location = /broken { return 500; }
    )");
    writeFile(m_server->documentRoot() + u"/folder/a file.json"_s, "{}");
    writeFile(m_server->documentRoot() + u"/empty"_s, "");
    writeFile(m_server->documentRoot() + u"/large"_s, QByteArray("0123456789abcdef").repeated(1024 * 1024));
}

void tst_LTDownloadManager_nginx::cleanupTestCase()
{
    m_server.reset();
}

void tst_LTDownloadManager_nginx::init()
{
    m_configuration = {};
    m_configuration.certificateAuthorityFile = m_server->certificateAuthorityFile();
}

void tst_LTDownloadManager_nginx::files_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("file") << u"folder/a%20file.json"_s << 200 << "{}"_ba;
    QTest::newRow("empty file") << u"empty"_s << 200 << ""_ba;
    QTest::newRow("over HTTP/2") << u".protocol"_s << 200 << "HTTP/2.0"_ba;
    QTest::newRow("after a redirect") << u"to-file"_s << 200 << "{}"_ba;
    QTest::newRow("not found") << u"no/such/file"_s << 404 << "404 Not Found"_ba;
    QTest::newRow("broken") << u"broken"_s << 500 << "500 Internal Server Error"_ba;
}

void tst_LTDownloadManager_nginx::files()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, content);
    const DownloadOutcome outcome = download(url(path), m_configuration);
    QCOMPARE(outcome.errorText(), QString());
    QTEST(outcome.response.statusCode, "status");
    if (outcome.response.statusCode == 200)
        QCOMPARE(outcome.content, content);
    else
        QVERIFY2(outcome.content.contains(content), outcome.content.constData());
}

void tst_LTDownloadManager_nginx::largeFile()
{
    const DownloadOutcome outcome = download(url(u"large"_s), m_configuration);
    QCOMPARE(outcome.content.size(), 16 * 1024 * 1024);
    QVERIFY(outcome.content == QByteArray("0123456789abcdef").repeated(1024 * 1024));
    m_configuration.maximumSize = 16 * 1024 * 1024 - 1;
    QCOMPARE(download(url(u"large"_s), m_configuration).errorCode(), -1103);
}

/// Also when a connection to the same server stands already, made by somebody who trusts it.
void tst_LTDownloadManager_nginx::untrustedAuthority()
{
    QVERIFY(!download(url(u"empty"_s), m_configuration).error);
    m_configuration.certificateAuthorityFile.clear();
    const DownloadOutcome outcome = download(url(u"empty"_s), m_configuration);
    QCOMPARE(outcome.errorText(), u"The certificate of the server \"localhost\" is not trusted."_s);
    QCOMPARE(outcome.errorCode(), -1202);
}

void tst_LTDownloadManager_nginx::authorityOfTheEnvironment()
{
    const QByteArray before = qgetenv("SSL_CERT_FILE");
    qputenv("SSL_CERT_FILE", QFile::encodeName(m_server->certificateAuthorityFile()));
    const SessionConfiguration configuration = SessionConfiguration::defaultSessionConfiguration();
    qunsetenv("SSL_CERT_FILE");
    QCOMPARE(SessionConfiguration::defaultSessionConfiguration().certificateAuthorityFile, QString());
    if (!before.isNull())
        qputenv("SSL_CERT_FILE", before);
    QCOMPARE(download(url(u"empty"_s), configuration).errorText(), QString());
}

void tst_LTDownloadManager_nginx::authoritiesThatCannotBeRead()
{
    m_configuration.certificateAuthorityFile = u"/no/such/file.pem"_s;
    const DownloadOutcome outcome = download(url(u"empty"_s), m_configuration);
    QCOMPARE(outcome.errorText(), u"A secure connection to \"localhost\" cannot be made."_s);
    QCOMPARE(outcome.errorCode(), -1200);
}

void tst_LTDownloadManager_nginx::certificateOfAnotherName()
{
    QUrl other = url(u"empty"_s);
    other.setHost(u"127.0.0.1"_s);
    QCOMPARE(download(other, m_configuration).errorCode(), -1202);
}

void tst_LTDownloadManager_nginx::plainAnswerToEncryption()
{
    QUrl plain = m_server->plainBaseUrl();
    plain.setScheme(u"https"_s);
    QCOMPARE(download(plain, m_configuration).errorCode(), -1200);
}

void tst_LTDownloadManager_nginx::redirects_data()
{
    QTest::addColumn<bool>("isEncrypted");
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("code");
    QTest::newRow("encryption is never given up") << true << u"to-plain"_s << -1022;
    QTest::newRow("encryption is never given up elsewhere") << true << u"to-elsewhere"_s << -1022;
    QTest::newRow("nobody listens there, but it is followed") << false << u"to-plain"_s << -1004;
    QTest::newRow("plain HTTP elsewhere") << false << u"to-elsewhere"_s << -1022;
}

void tst_LTDownloadManager_nginx::redirects()
{
    QFETCH(bool, isEncrypted);
    QFETCH(QString, path);
    const QUrl base = isEncrypted ? m_server->baseUrl() : m_server->plainBaseUrl();
    QTEST(download(base.resolved(QUrl(path)), m_configuration).errorCode(), "code");
}

void tst_LTDownloadManager_nginx::manyFilesOverFewConnections()
{
    DownloadRecorder recorder;
    LTDownloadManager manager(m_configuration, nullptr, recorder.batch());
    for (int number = 0; number < 500; ++number)
        manager.resumeDownloadTaskWithIdentifier(manager.addDownloadTaskWithDownloadRequest(
            {url(u"connection"_s), {}}, recorder.task(QString::number(number))));
    manager.finishTasksAndInvalidate();
    recorder.waitForEnd();
    QSet<QByteArray> connections;
    for (int number = 0; number < 500; ++number) {
        const DownloadOutcome outcome = recorder.outcome(QString::number(number));
        QCOMPARE(outcome.errorText(), QString());
        connections.insert(outcome.content);
    }
    QVERIFY2(connections.size() <= 6, QByteArray::number(connections.size()).constData());
}

QTEST_GUILESS_MAIN(tst_LTDownloadManager_nginx)
#include "tst_ltdownloadmanager_nginx.moc"
