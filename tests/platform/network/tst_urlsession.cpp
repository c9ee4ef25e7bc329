#include "platform/network/LTDownloadManager.h"
#include "platform/network/URLSession.h"
#include "support/servers/LoopbackServer.h"

#include <QtTest>

#include <future>

using namespace Qt::StringLiterals;

namespace {

struct Outcome
{
    QByteArray data;
    URLResponse response;
    std::optional<KRError> error;
    bool onTestThread = true;

    int errorCode() const { return error ? error->code : 0; }
};

Outcome fetch(const URLSession &session, const URLRequest &request)
{
    std::promise<Outcome> promise;
    const auto testThread = QThread::currentThreadId();
    const auto task = session.dataTaskWithRequest(
        request, [&](const QByteArray &data, const URLResponse &response, const std::optional<KRError> &error) {
            promise.set_value({data, response, error, QThread::currentThreadId() == testThread});
        });
    task->resume();
    task->resume(); // for nothing
    return promise.get_future().get();
}

bool exists(const QUrl &url)
{
    std::promise<bool> promise;
    LTDownloadManager::remoteFileExistsAtURL(url, [&promise](bool answer) { promise.set_value(answer); });
    return promise.get_future().get();
}

} // namespace

class tst_URLSession : public QObject
{
    Q_OBJECT

private slots:
    void answers_data();
    void answers();
    void failures_data();
    void failures();
    void largeAnswerToTheSharedSession();
    void timeoutHoldsForConnectingToo();
    void drippingServerComesToAnEnd();
    void droppedTaskGoesOn();
    void taskThatWasNeverResumedJustGoes();
    void existence_data();
    void existence();
    void onlyTheHeadIsAskedFor();
};

void tst_URLSession::answers_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("body") << 200 << "body"_ba;
    QTest::newRow("no body") << 200 << ""_ba;
    QTest::newRow("page that says not found") << 404 << "<html>Not found</html>"_ba;
    QTest::newRow("zeros") << 200 << "a\0b"_ba;
}

void tst_URLSession::answers()
{
    QFETCH(int, status);
    QFETCH(QByteArray, body);
    LoopbackServer server;
    server.setAnswer("/feed", Answer::response(status, body));
    const auto outcome = fetch(URLSession::sharedSession(), {server.url(u"/feed"_s), {}});
    QVERIFY(!outcome.error);
    QCOMPARE(outcome.data, body);
    QVERIFY(!outcome.data.isNull());
    QCOMPARE(outcome.response.statusCode, status);
    QVERIFY(!outcome.onTestThread);
    QCOMPARE(server.requestedPaths(), QList<QByteArray>{"/feed"_ba});
}

void tst_URLSession::failures_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("code");
    QTest::newRow("connection lost in the head") << "HTTP/1.1 200 OK\r\n"_ba << -1005;
    QTest::newRow("connection lost in the body") << "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf"_ba << -1005;
    QTest::newRow("larger than allowed") << "HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\n0123456789"_ba << -1103;
    QTest::newRow("larger than allowed, without a word") << "HTTP/1.1 200 OK\r\n\r\n0123456789"_ba << -1103;
}

void tst_URLSession::failures()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, code);
    LoopbackServer server;
    server.setAnswer("/feed", Answer::bytes(answer));
    SessionConfiguration configuration;
    configuration.maximumSize = 9;
    const auto outcome = fetch(URLSession(configuration), {server.url(u"/feed"_s), {}});
    QCOMPARE(outcome.errorCode(), code);
    QVERIFY(outcome.data.isNull());
}

void tst_URLSession::largeAnswerToTheSharedSession()
{
    LoopbackServer server;
    const auto size = QByteArray::number(URLSession::largestSharedAnswer + 1);
    server.setAnswer("/feed", Answer::bytes("HTTP/1.1 200 OK\r\nContent-Length: " + size + "\r\n\r\nx").thenStall());
    QCOMPARE(fetch(URLSession::sharedSession(), {server.url(u"/feed"_s), {}}).errorCode(), -1103);
}

void tst_URLSession::timeoutHoldsForConnectingToo()
{
    LoopbackServer server;
    auto url = server.url(u"/"_s); // which waits for a request in plain text
    url.setScheme(u"https"_s);
    const auto outcome = fetch(URLSession({}), {url, std::chrono::milliseconds(20)});
    QCOMPARE(outcome.errorCode(), -1001);
}

/// What comes is enough not to be silence.
void tst_URLSession::drippingServerComesToAnEnd()
{
    LoopbackServer server;
    server.setAnswer("/feed", Answer::bytes("HTTP/1.1 200 OK\r\n\r\n").thenBytes(QByteArray(1000, 'x')).thenStall());
    SessionConfiguration configuration;
    configuration.longestTransfer = std::chrono::milliseconds(20);
    QCOMPARE(fetch(URLSession(configuration), {server.url(u"/feed"_s), {}}).errorCode(), -1001);
    QVERIFY(URLSession::longestSharedTransfer < std::chrono::minutes(1));
}

void tst_URLSession::droppedTaskGoesOn()
{
    LoopbackServer server;
    server.setAnswer(
        "/feed", Answer::bytes("HTTP/1.1 200 OK\r\nContent-Length: 1\r\n\r\n").thenWaitForRelease().thenBytes("x"));
    std::promise<QByteArray> promise;
    auto task = URLSession::sharedSession().dataTaskWithRequest({server.url(u"/feed"_s), {}},
        [&promise](
            const QByteArray &data, const URLResponse &, const std::optional<KRError> &) { promise.set_value(data); });
    task->resume();
    task.reset();
    server.release();
    QCOMPARE(promise.get_future().get(), "x"_ba);
}

void tst_URLSession::taskThatWasNeverResumedJustGoes()
{
    bool called = false;
    const auto token = std::make_shared<int>();
    URLSession::sharedSession().dataTaskWithRequest({QUrl(u"http://127.0.0.1:1/"_s), {}},
        [&called, token](const QByteArray &, const URLResponse &, const std::optional<KRError> &) { called = true; });
    QCOMPARE(token.use_count(), 1);
    QVERIFY(!called);
}

void tst_URLSession::existence_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<bool>("isThere");
    QTest::newRow("there") << 200 << true;
    QTest::newRow("there, without content") << 204 << true;
    QTest::newRow("not found") << 404 << false;
    QTest::newRow("gone") << 410 << false;
    QTest::newRow("not allowed") << 403 << false;
    QTest::newRow("question not allowed") << 405 << false;
    QTest::newRow("broken server") << 500 << false;
    QTest::newRow("redirect to what is there") << 302 << true;
    QTest::newRow("redirect to nothing") << 307 << false;
    QTest::newRow("silent server") << -1 << false;
}

void tst_URLSession::existence()
{
    QFETCH(int, status);
    QFETCH(bool, isThere);
    LoopbackServer server;
    server.setAnswer("/there", Answer::response(200));
    const auto redirect = [](const char *place, int code) { return Answer::redirect(place, code); };
    server.setAnswer("/file",
        status == -1        ? Answer::bytes("HTTP/1.1 ")
            : status == 302 ? redirect("/there", 302)
            : status == 307 ? redirect("/nowhere", 307)
                            : Answer::response(status, status == 204 ? "" : "A page."));
    QCOMPARE(exists(server.url(u"/file"_s)), isThere);
}

void tst_URLSession::onlyTheHeadIsAskedFor()
{
    LoopbackServer server;
    server.setAnswer("/file", Answer::response(200, "A large file."));
    QVERIFY(exists(server.url(u"/file"_s)));
    QVERIFY(exists(server.url(u"/file"_s)));
    QVERIFY(server.lastRequest().startsWith("HEAD /file "));
    QCOMPARE(server.connectionCount(), 1);
}

QTEST_GUILESS_MAIN(tst_URLSession)
#include "tst_urlsession.moc"
