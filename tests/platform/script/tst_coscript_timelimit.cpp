// No script runs for ever unless the host lets it.

#include "platform/script/ScriptValue.h"
#include "support/TestSession.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_COScript_TimeLimit : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void endlessScriptsAreStopped_data();
    void endlessScriptsAreStopped();
    void endlessCallsAreStopped_data();
    void endlessCallsAreStopped();
    void endlessTimersAreStopped();
    void endlessReactionsAreStopped();
    void endlessCallbacksOfTheHostAreStopped();
    void endlessTextsOfValuesAreStopped();
    void messageNamesTheCommandAndThePlace();
    void scriptCannotCatchTheStop();
    void hostMayLetItGoOn();
    void noLimit();
    void shortRunsTogetherAreNotALongOne();
    void promiseOfAStoppedRunIsForgotten();

private:
    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<TestSession> m_session;
};

constexpr double limit = 0.05; // seconds of processor time

void tst_COScript_TimeLimit::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_session = TestSession::make(*m_environment);
    m_session->script->setTimeLimit(limit);
}

void tst_COScript_TimeLimit::cleanup()
{
    m_session.reset();
    m_environment.reset();
}

const auto message = u"The script of the command \"Tidy Layers\" was stopped: it ran for more than 0.05 seconds."_s;

void tst_COScript_TimeLimit::endlessScriptsAreStopped_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("loop") << u"for (;;);"_s;
    QTest::newRow("loop in try and finally") << u"for (;;) { try { for (;;); } finally { for (;;); } }"_s;
    QTest::newRow("loop that catches") << u"for (;;) { try { for (;;); } catch { } }"_s;
    QTest::newRow("generator") << u"function* g() { for (;;) yield 1 } for (const x of g());"_s;
    QTest::newRow("runaway comparator") << u"[3, 1, 2].sort(() => { for (;;); })"_s;
    QTest::newRow("callback of a built-in") << u"Array.from({length: 1}, () => { for (;;); })"_s;
    QTest::newRow("backtracking expression") << u"/^(a+)+$/.test('a'.repeat(40) + 'b')"_s;
    QTest::newRow("getter") << u"({get a() { for (;;); }}).a"_s;
    QTest::newRow("reactions of promises") << u"(function f() { Promise.resolve().then(f) })()"_s;
    QTest::newRow("microtasks") << u"(function f() { queueMicrotask(f) })()"_s;
    QTest::newRow("async loop") << u"(async () => { for (;;) await 1 })()"_s;
    QTest::newRow("eval") << u"eval('for (;;);')"_s;
}

void tst_COScript_TimeLimit::endlessScriptsAreStopped()
{
    QFETCH(QString, source);
    m_session->run(u"function works() { return 'works' }"_s);
    m_session->run(source);
    QCOMPARE(m_session->exceptions, QStringList{message});
    QCOMPARE(m_session->printed.size(), 1);
    QVERIFY(m_session->printed[0].startsWith(u"error: "_s + message));
    QVERIFY(!m_session->script->shouldKeepRunning());
    QCOMPARE(m_session->call(u"works"_s), QVariant(u"works"_s));
    QCOMPARE(m_session->exceptions.size(), 1);
}

void tst_COScript_TimeLimit::endlessCallsAreStopped_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("function") << u"function f() { for (;;); }"_s;
    QTest::newRow("async function") << u"async function f() { for (;;); }"_s;
    QTest::newRow("loop in finally") << u"function f() { try { throw 1 } finally { for (;;); } }"_s;
}

void tst_COScript_TimeLimit::endlessCallsAreStopped()
{
    QFETCH(QString, source);
    m_session->run(source);
    QCOMPARE(m_session->call(u"f"_s), QVariant());
    QVERIFY(m_session->thrown.startsWith(message));
    QCOMPARE(m_session->exceptions, QStringList{message});
    QCOMPARE(m_session->printed, QStringList()); // the caller has it
    m_session->script->cleanup();

    const auto next = TestSession::make(*m_environment);
    QCOMPARE(next->run(u"1 + 1"_s), QVariant(2));
}

void tst_COScript_TimeLimit::endlessTimersAreStopped()
{
    m_session->run(u"setTimeout(() => { for (;;); }, 10); setTimeout(print, 20, 'next')"_s);
    m_environment->queue.advance(30ms);
    QCOMPARE(m_session->exceptions, QStringList{message});
    QCOMPARE(m_session->printed.size(), 2);
    QCOMPARE(m_session->printed[1], u"next"_s);
}

void tst_COScript_TimeLimit::endlessReactionsAreStopped()
{
    m_session->run(u"function f() { return new Promise(done => setTimeout(done, 10)).then(() => { for (;;); }) }"_s);
    m_session->call(u"f"_s);
    QVERIFY(m_session->script->shouldKeepRunning());
    m_environment->queue.advance(10ms);
    QCOMPARE(m_session->exceptions, QStringList{message});
    QCOMPARE(m_session->printed.size(), 1);
    QVERIFY(!m_session->script->shouldKeepRunning()); // nobody will settle the promise any more
}

void tst_COScript_TimeLimit::endlessCallbacksOfTheHostAreStopped()
{
    const auto function = m_session->run(u"(() => { for (;;); })"_s).value<ScriptValue>();
    QCOMPARE(function.call({}), QVariant());
    QCOMPARE(m_session->exceptions, QStringList{message});
    QCOMPARE(m_session->printed.size(), 1);
}

void tst_COScript_TimeLimit::endlessTextsOfValuesAreStopped()
{
    const auto value = m_session->run(u"class Odd { get [Symbol.toStringTag]() { for (;;); } }; new Odd()"_s);
    value.value<ScriptValue>().description();
    QCOMPARE(m_session->exceptions, QStringList{message});
}

void tst_COScript_TimeLimit::messageNamesTheCommandAndThePlace()
{
    m_session->run(u"function deep() {\n  for (;;);\n}\n\ndeep()"_s);
    const auto lines = m_session->printed.value(0).split(u'\n');
    QCOMPARE(lines[0], u"error: "_s + message);
    QVERIFY(lines.value(1).startsWith(u"    at deep (Contents/Korvan/main.js:"_s)); // the engine knows loops roughly
    QVERIFY(lines.value(2).startsWith(u"    at Contents/Korvan/main.js:5:"_s));
    const auto parts = m_session->values[0].toMap().value(u"payload"_s).toList().value(0).toMap();
    QCOMPARE(parts.value(u"file"_s), QVariant(u"Contents/Korvan/main.js"_s));
    QVERIFY(parts.value(u"line"_s).toInt() > 0);
}

void tst_COScript_TimeLimit::scriptCannotCatchTheStop()
{
    m_session->run(u"try { for (;;); } catch (error) { print('caught') } finally { print('finally') }"_s);
    QCOMPARE(m_session->printed.size(), 1);
    QVERIFY(m_session->printed[0].startsWith(u"error: "_s));
}

void tst_COScript_TimeLimit::hostMayLetItGoOn()
{
    m_environment->timeLimitDecisions = {
        ScriptTimeLimitDecision::GoOn, ScriptTimeLimitDecision::GoOn, ScriptTimeLimitDecision::Stop};
    m_session->run(u"for (;;);"_s);
    QCOMPARE(m_environment->timeLimitQuestions.size(), 3);
    QCOMPARE(m_session->exceptions, QStringList{message});
}

void tst_COScript_TimeLimit::noLimit()
{
    m_session->script->setTimeLimit(0);
    m_session->run(u"const start = Date.now(); while (Date.now() - start < 200);"_s);
    QCOMPARE(m_session->exceptions, QStringList());
    QCOMPARE(m_environment->timeLimitQuestions, QStringList());
}

void tst_COScript_TimeLimit::shortRunsTogetherAreNotALongOne()
{
    m_session->script->setTimeLimit(1);
    for (int i = 0; i < 8; ++i)
        m_session->run(u"{ const start = Date.now(); while (Date.now() - start < 200); }"_s);
    QCOMPARE(m_session->exceptions, QStringList());
}

void tst_COScript_TimeLimit::promiseOfAStoppedRunIsForgotten()
{
    m_session->run(u"function wait() { return new Promise(() => {}) }"_s);
    m_session->call(u"wait"_s);
    QVERIFY(m_session->script->shouldKeepRunning());
    m_session->run(u"for (;;);"_s);
    QVERIFY(!m_session->script->shouldKeepRunning());
}

QTEST_GUILESS_MAIN(tst_COScript_TimeLimit)
#include "tst_coscript_timelimit.moc"
