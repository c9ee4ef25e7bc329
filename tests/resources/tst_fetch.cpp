// fetch in the scripts of a command, against a server.

#include "FetchFixture.h"

using namespace Qt::StringLiterals;

class tst_Fetch : public QObject, private FetchFixture
{
    Q_OBJECT

private slots:
    void init() { begin(); }
    void cleanup() { end(); }

    void answers_data();
    void answers();
    void requests_data();
    void requests();
    void redirects_data();
    void redirects();
    void whatBelongsToOneHostStaysThere();
    void failures_data();
    void failures();
    void tooLargeAnAnswer();
    void aPendingFetchKeepsTheCommandRunning();
    void abortHangsUp();
    void theEndOfTheSessionHangsUp();
    void manyAtOnce();
};

void tst_Fetch::answers_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("value");
    QTest::newRow("text") << u"fetch(BASE + '/text').then((r) => r.text())"_s << u"hé"_s;
    QTest::newRow("json") << u"fetch(BASE + '/json').then((r) => r.json()).then((v) => v.a[1])"_s << u"2"_s;
    QTest::newRow("bytes")
        << u"fetch(BASE + '/bytes').then((r) => r.arrayBuffer()).then((b) => new Uint8Array(b).join())"_s
        << u"0,255,10"_s;
    QTest::newRow("status") << u"fetch(BASE + '/missing').then((r) => [r.status, r.ok])"_s << u"404,false"_s;
    QTest::newRow("text of the status") << u"fetch(BASE + '/gone').then((r) => r.statusText)"_s << u"No Longer Here"_s;
    QTest::newRow("no text of the status")
        << u"fetch(BASE + '/brief').then((r) => [r.status, r.statusText === ''])"_s << u"200,true"_s;
    QTest::newRow("URL") << u"fetch(BASE + '/text').then((r) => r.url === BASE + '/text' && !r.redirected)"_s
                         << u"true"_s;
    QTest::newRow("headers")
        << u"fetch(BASE + '/text').then((r) => [r.headers.get('x-own'), r.headers.get('content-type')])"_s
        << u"1, 2,text/plain"_s;
    QTest::newRow("cookies") << u"fetch(BASE + '/json').then((r) => r.headers.getSetCookie().join(' and '))"_s
                             << u"a=1, b and c=2"_s;
    QTest::newRow("empty") << u"fetch(BASE + '/empty').then((r) => r.text()).then((t) => t.length)"_s << u"0"_s;
    QTest::newRow("no content") << u"fetch(BASE + '/none').then((r) => r.status)"_s << u"204"_s;
    QTest::newRow("head")
        << u"fetch(BASE + '/text', { method: 'HEAD' }).then(async (r) => [r.status, await r.text()])"_s << u"200,"_s;
    QTest::newRow("request object") << u"fetch(new Request(BASE + '/text')).then((r) => r.text())"_s << u"hé"_s;
    QTest::newRow("URL object") << u"fetch(new URL('/text', BASE)).then((r) => r.text())"_s << u"hé"_s;
    QTest::newRow("a class of the globals")
        << u"fetch(BASE + '/text').then((r) => r instanceof Response)"_s << u"true"_s;
}

void tst_Fetch::answers()
{
    m_server->setAnswer(
        "/text", Answer::response(200, "h\xC3\xA9", {{"X-Own", "1"}, {"Content-Type", "text/plain"}, {"X-Own", "2"}}));
    m_server->setAnswer(
        "/json", Answer::response(200, R"({"a": [1, 2]})", {{"Set-Cookie", "a=1, b"}, {"Set-Cookie", "c=2"}}));
    m_server->setAnswer("/bytes", Answer::response(200, "\0\xFF\n"_ba));
    m_server->setAnswer("/empty", Answer::response(200));
    m_server->setAnswer("/gone", Answer::bytes("HTTP/1.1 410 No Longer Here\r\nContent-Length: 0\r\n\r\n"));
    m_server->setAnswer("/brief", Answer::bytes("HTTP/1.1 200\r\nContent-Length: 0\r\n\r\n"));
    m_server->setAnswer("/none", Answer::bytes("HTTP/1.1 204 No Content\r\n\r\n"));
    QFETCH(QString, expression);
    QTEST(result(expression), "value");
}

void tst_Fetch::requests_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("get") << u"{}"_s << "GET / HTTP/1.1"_ba;
    QTest::newRow("method") << u"{ method: 'DELETE' }"_s << "DELETE / HTTP/1.1"_ba;
    QTest::newRow("lower case") << u"{ method: 'put', body: 'a' }"_s << "PUT / HTTP/1.1"_ba;
    QTest::newRow("length of the body") << u"{ method: 'POST', body: 'é' }"_s << "Content-Length: 2"_ba;
    QTest::newRow("type of a text") << u"{ method: 'POST', body: 'é' }"_s
                                    << "content-type: text/plain;charset=UTF-8"_ba;
    QTest::newRow("type of a form") << u"{ method: 'POST', body: new URLSearchParams({ a: 1 }) }"_s
                                    << "content-type: application/x-www-form-urlencoded;charset=UTF-8"_ba;
    QTest::newRow("own type") << u"{ method: 'POST', body: '{}', headers: { 'Content-Type': 'application/json' } }"_s
                              << "content-type: application/json"_ba;
    QTest::newRow("header") << u"{ headers: { 'X-Own': 'a b' } }"_s << "x-own: a b"_ba;
    QTest::newRow("empty header") << u"{ headers: { 'X-Own': '' } }"_s << "x-own:"_ba;
    QTest::newRow("user agent") << u"{ headers: { 'User-Agent': 'mine' } }"_s << "user-agent: mine"_ba;
    QTest::newRow("host") << u"{ headers: { Host: 'other' } }"_s << "Host: 127.0.0.1:PORT"_ba;
}

void tst_Fetch::requests()
{
    m_server->setAnswer("/", Answer::bytes("HTTP/1.1 200 OK\r\n\r\ndone"));
    QFETCH(QString, options);
    QFETCH(QByteArray, line);
    QCOMPARE(result(u"fetch(BASE + '/', %1).then((r) => r.text())"_s.arg(options)), u"done"_s);
    const auto lines = m_server->lastRequest().replace("\r", "").split('\n');
    QVERIFY2(lines.contains(line.replace("PORT", QByteArray::number(m_server->port()))),
        m_server->lastRequest().constData());
}

void tst_Fetch::redirects_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("lastLine");
    const auto post = u"{ method: 'POST', body: 'a' }"_s;
    QTest::newRow("followed") << 302 << u"{}"_s << u"true,/end"_s << "GET /end"_ba;
    QTest::newRow("form becomes page") << 302 << post << u"true,/end"_s << "GET /end"_ba;
    QTest::newRow("moved form too") << 301 << post << u"true,/end"_s << "GET /end"_ba;
    QTest::newRow("see other") << 303 << u"{ method: 'PUT', body: 'a' }"_s << u"true,/end"_s << "GET /end"_ba;
    QTest::newRow("form stays form") << 307 << post << u"true,/end"_s << "POST /end"_ba;
    QTest::newRow("permanent form stays form") << 308 << post << u"true,/end"_s << "POST /end"_ba;
    QTest::newRow("forbidden")
        << 302 << u"{ redirect: 'error' }"_s
        << u"TypeError: fetch of BASE/begin has failed: The server redirects to another place, which the option \"redirect\" forbids."_s
        << "GET /begin"_ba;
    QTest::newRow("by hand") << 302 << u"{ redirect: 'manual' }"_s << u"false,/begin"_s << "GET /begin"_ba;
}

void tst_Fetch::redirects()
{
    QFETCH(int, status);
    QFETCH(QString, options);
    QFETCH(QString, value);
    QFETCH(QByteArray, lastLine);
    m_server->setAnswer("/begin", Answer::redirect("/end", status));
    m_server->setAnswer("/end", Answer::bytes("HTTP/1.1 200 OK\r\n\r\nend"));
    const auto expression = u"fetch(BASE + '/begin', %1).then((r) => [r.redirected, new URL(r.url).pathname])"_s;
    QCOMPARE(result(expression.arg(options)), value.replace(u"BASE"_s, m_server->url(u""_s).toString()));
    QVERIFY2(m_server->lastRequest().startsWith(lastLine), m_server->lastRequest().constData());
    QCOMPARE(m_server->lastBody(), lastLine.startsWith("POST") ? "a"_ba : ""_ba);
}

void tst_Fetch::whatBelongsToOneHostStaysThere()
{
    LoopbackServer other;
    other.setAnswer("/end", Answer::response(200, "end"));
    m_server->setAnswers("/begin", {Answer::redirect(other.url(u"/end"_s).toEncoded()), Answer::redirect("/end")});
    m_server->setAnswer("/end", Answer::response(200, "end"));
    const auto expression =
        u"fetch(BASE + '/begin', { headers: { Authorization: 'secret', X: '1' } }).then((r) => r.text())"_s;
    QCOMPARE(result(expression), u"end"_s);
    QVERIFY(!other.lastRequest().contains("secret"));
    QVERIFY(other.lastRequest().contains("x: 1"));
    QCOMPARE(result(expression), u"end"_s);
    QVERIFY(m_server->lastRequest().contains("authorization: secret"));
}

void tst_Fetch::failures_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("message");
    QTest::newRow("plain http")
        << u"fetch('http://server.invalid/')"_s
        << u"^TypeError: fetch of http://server.invalid/ has failed: .*server.invalid.* Use a URL that begins with \"https://\"\\.$"_s;
    QTest::newRow("scheme") << u"fetch('file:///etc/passwd')"_s
                            << u"^TypeError: fetch of file:///etc/passwd has failed: .+"_s;
    QTest::newRow("no URL") << u"fetch('nonsense')"_s << u"^TypeError: Failed to parse URL from nonsense$"_s;
    QTest::newRow("nobody there") << u"fetch('http://127.0.0.1:1/')"_s
                                  << u"^TypeError: fetch of http://127.0.0.1:1/ has failed: .*127.0.0.1.*"_s;
    QTest::newRow("connection lost") << u"fetch(BASE + '/lost')"_s << u"^TypeError: fetch of .*/lost has failed: .+"_s;
    QTest::newRow("method") << u"fetch(BASE, { method: 'BREW' })"_s
                            << u"has failed: fetch cannot use the method \"BREW\"\\. Use GET, HEAD, POST"_s;
    QTest::newRow("header") << u"fetch(BASE, { headers: { 'a b': '1' } })"_s << u"^TypeError: .*a b"_s;
    QTest::newRow("aborted before") << u"fetch(BASE, { signal: AbortSignal.abort() })"_s
                                    << u"^AbortError: This operation was aborted$"_s;
}

void tst_Fetch::failures()
{
    m_server->setAnswer("/lost", Answer::bytes("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nab"));
    QFETCH(QString, expression);
    QFETCH(QString, message);
    const auto text = result(expression);
    QVERIFY2(QRegularExpression(message).match(text).hasMatch(), qPrintable(text));
    QVERIFY(!m_command->stayRunning());
}

void tst_Fetch::tooLargeAnAnswer()
{
    m_server->setAnswer("/", Answer::bytes("HTTP/1.1 200 OK\r\nContent-Length: 67108865\r\n\r\na").thenStall());
    QVERIFY(result(u"fetch(BASE + '/')"_s).startsWith(u"TypeError: fetch of "));
    m_server->waitForHangUps(1);
}

void tst_Fetch::aPendingFetchKeepsTheCommandRunning()
{
    m_server->setAnswer("/", Answer::response(200, "late"));
    start(u"(fetch(BASE + '/').then((r) => r.text()).then(console.log), 'at once')"_s);
    const auto promise = m_command->returnValue().value<ScriptValue>();
    QVERIFY(promise.isSettled()); // nobody waits for the handler any more, only fetch
    QVERIFY(m_command->stayRunning());
    m_environment->queue.runUntil([&] { return !m_command->stayRunning(); });
    QCOMPARE(m_command->logsWhenRunViaTests().size(), 1);
    QCOMPARE(m_command->logsWhenRunViaTests().first().toMap().value(u"stringValue"_s), QVariant(u"late"_s));
}

void tst_Fetch::abortHangsUp()
{
    m_server->setAnswer("/", Answer::silence());
    start(u"(globalThis.controller = new AbortController(), fetch(BASE + '/', { signal: controller.signal }))"_s);
    const auto promise = m_command->returnValue().value<ScriptValue>();
    m_server->waitForRequests(1);
    QVERIFY(m_command->stayRunning());
    m_command->executeScript(u"controller.abort()"_s);
    QCOMPARE(promise.settledValue(), QVariant(u"AbortError: This operation was aborted"_s));
    QVERIFY(!m_command->stayRunning());
    m_server->waitForHangUps(1);
}

void tst_Fetch::theEndOfTheSessionHangsUp()
{
    m_server->setAnswer("/", Answer::silence());
    start(u"fetch(BASE + '/')"_s);
    m_server->waitForRequests(1);
    m_command->abandonSession();
    m_server->waitForHangUps(1);
    m_environment->queue.runQueued();
    QCOMPARE(m_command->logsWhenRunViaTests(), QVariantList());
}

void tst_Fetch::manyAtOnce()
{
    m_server->setAnswer("/", Answer::response(200, "a"));
    const auto expression =
        u"Promise.all(Array.from({ length: 50 }, () => fetch(BASE + '/').then((r) => r.text()))).then((all) => all.join(''))"_s;
    QCOMPARE(result(expression), QString(50, u'a'));
    QVERIFY(!m_command->stayRunning());
}

QTEST_GUILESS_MAIN(tst_Fetch)
#include "tst_fetch.moc"
