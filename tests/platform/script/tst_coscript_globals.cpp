// What every session's scripts find: output, the console and timers.

#include "platform/script/ScriptValue.h"
#include "support/TestSession.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_COScript_Globals : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void output_data();
    void output();
    void printHandsOverTheValue();
    void trace();
    void clocks();
    void table();
    void consoleSurvivesAnything_data();
    void consoleSurvivesAnything();

    void timersFireInTheirOrder();
    void timerGetsItsValues();
    void intervalRepeatsUntilCleared();
    void clearedTimersDoNotFire();
    void delays_data();
    void delays();
    void timerNeedsAFunction_data();
    void timerNeedsAFunction();
    void microtasksComeBeforeTimers();
    void sessionRunsWhileSomethingIsPending_data();
    void sessionRunsWhileSomethingIsPending();
    void cleanupEndsAllOfIt();
    void cleanupInsideOfATimer();
    void pushedObjects();
    void globalsAreEachSessionsOwn();

private:
    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<TestSession> m_session;
};

void tst_COScript_Globals::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_session = TestSession::make(*m_environment);
}

void tst_COScript_Globals::cleanup()
{
    m_session.reset();
    m_environment.reset();
}

void tst_COScript_Globals::output_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("printed");

    const auto row = [](const char *tag, const QString &source, const QString &printed) {
        QTest::newRow(tag) << source << QStringList{printed};
    };
    row("print", u"print('a')"_s, u"a"_s);
    row("log", u"log('a')"_s, u"a"_s);
    row("several values", u"console.log('a', 1, true, null)"_s, u"a 1 true (null)"_s);
    row("info", u"console.info('a')"_s, u"a"_s);
    row("warn", u"console.warn('a')"_s, u"a"_s);
    row("debug", u"console.debug('a')"_s, u"a"_s);
    row("error", u"console.error('a')"_s, u"error: a"_s);
    row("error of several values", u"console.error('a', 1)"_s, u"error: a 1"_s);
    row("dir", u"console.dir({a: 1})"_s, u"{\"a\": 1}"_s);
    row("object", u"console.log({a: [1, 'b']})"_s, u"{\"a\": [1, \"b\"]}"_s);
    row("nothing", u"console.log()"_s, u""_s);
    row("function", u"console.log(function tidy() {})"_s, u"[Function: tidy]"_s);
    row("class", u"console.log(class Layer {})"_s, u"[Class: Layer]"_s);
    row("symbol", u"console.log(Symbol('a'))"_s, u"Symbol(a)"_s);
    row("big integer", u"console.log(12345678901234567890n)"_s, u"12345678901234567890n"_s);
    row("error object", u"console.log(new TypeError('bad'))"_s, u"TypeError: bad"_s);
    row("regular expression", u"console.log(/a+/g)"_s, u"/a+/g"_s);
    row("map", u"console.log(new Map([['a', 1]]))"_s, u"Map(1) [[\"a\", 1]]"_s);
    row("set", u"console.log(new Set([1]))"_s, u"Set(1) [1]"_s);
    row("promise", u"console.log(Promise.resolve())"_s, u"[Promise]"_s);
    row("instance", u"class Layer { name = 'Sky' }; console.log(new Layer())"_s, u"Layer {\"name\": \"Sky\"}"_s);
    row("placeholders", u"console.log('%s of %d, %i, %f %o', 'one', 2, 3.9, 4.5, {a: 1})"_s,
        u"one of 2, 3, 4.5 {\"a\": 1}"_s);
    row("placeholder without value", u"console.log('%s and %s', 'a')"_s, u"a and %s"_s);
    row("percent signs", u"console.log('100%% of %s', 'a')"_s, u"100% of a"_s);
    row("percent sign alone stays", u"console.log('100%%')"_s, u"100%%"_s);
    row("style is dropped", u"console.log('%ca', 'color: red')"_s, u"a"_s);
    row("assertion that fails", u"console.assert(1 === 2, 'odd', 3)"_s, u"error: Assertion failed: odd 3"_s);
    row("assertion without text", u"console.assert(false)"_s, u"error: Assertion failed"_s);
    row("group", u"console.group(); console.log('a\\nb')"_s, u"  a\n  b"_s);
    row("count", u"console.count('a')"_s, u"a: 1"_s);
    row("count without label", u"console.count()"_s, u"default: 1"_s);
    QTest::newRow("group that begins closed")
        << u"console.groupCollapsed('a'); console.clear(); console.dirxml('b', 1); console.groupEnd(); console.log('c')"_s
        << QStringList{u"a"_s, u"  b 1"_s, u"c"_s};
    QTest::newRow("assertion that holds") << u"console.assert(true, 'never')"_s << QStringList();
}

void tst_COScript_Globals::output()
{
    QFETCH(QString, source);
    m_session->run(source);
    QTEST(m_session->printed, "printed");
    QCOMPARE(m_session->exceptions, QStringList());
}

void tst_COScript_Globals::printHandsOverTheValue()
{
    m_session->run(u"print({a: 1}); print(undefined); print(5)"_s);
    QCOMPARE(m_session->values.size(), 3);
    QCOMPARE(m_session->values[0], QVariant(QVariantMap{{u"a"_s, 1}}));
    QVERIFY(!m_session->values[1].isValid());
    QCOMPARE(m_session->values[2], QVariant(5));
}

void tst_COScript_Globals::trace()
{
    m_session->run(u"function a() {\n  console.trace('here', 1)\n}\na()"_s);
    QCOMPARE(m_session->printed.size(), 1);
    QVERIFY(m_session->printed[0].startsWith(u"Trace: here 1\n    at a (Contents/Korvan/main.js:2:"_s));
    QVERIFY(m_session->printed[0].contains(u"Contents/Korvan/main.js:4:"_s));
}

void tst_COScript_Globals::clocks()
{
    m_session->run(u"console.time(); console.time('a')"_s);
    m_environment->queue.advance(1500ms);
    m_session->run(u"console.timeLog('a', 'so far'); console.timeEnd('a'); console.timeEnd(); console.timeEnd('a')"_s);
    QCOMPARE(m_session->printed,
        (QStringList{
            u"a: 1500 ms so far"_s, u"a: 1500 ms"_s, u"default: 1500 ms"_s, u"There is no timer named \"a\"."_s}));
}

void tst_COScript_Globals::table()
{
    m_session->run(u"console.table([{name: 'Sky', x: 1}, {name: 'Sea', y: 2}, 3])"_s);
    QCOMPARE(m_session->printed,
        QStringList{u"┌─────────┬──────┬───┬───┬────────┐\n"
                    "│ (index) │ name │ x │ y │ Values │\n"
                    "├─────────┼──────┼───┼───┼────────┤\n"
                    "│ 0       │ Sky  │ 1 │   │        │\n"
                    "│ 1       │ Sea  │   │ 2 │        │\n"
                    "│ 2       │      │   │   │ 3      │\n"
                    "└─────────┴──────┴───┴───┴────────┘"_s});
}

void tst_COScript_Globals::consoleSurvivesAnything_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("cycle") << u"var a = {}; a.a = a; console.log(a, 1)"_s;
    QTest::newRow("map in itself") << u"var a = new Map(); a.set(a, a); console.log(a)"_s;
    QTest::newRow("nested too deeply") << u"var o = {}; for (let i = 0; i < 1e5; ++i) o = {o}; console.log(o, 1)"_s;
    QTest::newRow("text of 20 MB") << u"console.log('x'.repeat(2e7), 1)"_s;
    QTest::newRow("function without prototype")
        << u"var f = () => 1; Object.setPrototypeOf(f, null); console.log(f, 1)"_s;
    QTest::newRow("prototype without constructor") << u"console.log(Object.create({}), 1)"_s;
    QTest::newRow("revoked proxy")
        << u"var p = Proxy.revocable({}, {}); p.revoke(); try { console.log(p.proxy, 1) } catch (e) { print('x') }"_s;
    QTest::newRow("changed built-ins")
        << u"Array.prototype.join = String.prototype.replace = null; console.log('%s', [1], 2)"_s;
}

void tst_COScript_Globals::consoleSurvivesAnything()
{
    QFETCH(QString, source);
    m_session->run(source);
    QCOMPARE(m_session->printed.size(), 1);
}

void tst_COScript_Globals::timersFireInTheirOrder()
{
    m_session->run(u"setTimeout(print, 20, 'c'); setTimeout(print, 10, 'a'); setTimeout(print, 10, 'b');"_s);
    m_environment->queue.advance(9ms);
    QCOMPARE(m_session->printed, QStringList());
    m_environment->queue.advance(11ms);
    QCOMPARE(m_session->printed, (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

void tst_COScript_Globals::timerGetsItsValues()
{
    m_session->run(u"setImmediate(function (...values) { print(values.join() + this) }, 1, 'b')"_s);
    m_environment->queue.advance(0ms);
    QCOMPARE(m_session->printed, QStringList{u"1,b[object Object]"_s});
}

void tst_COScript_Globals::intervalRepeatsUntilCleared()
{
    m_session->run(
        u"var count = 0; var id = setInterval(() => { print(++count); if (count === 3) clearInterval(id) }, 100)"_s);
    m_environment->queue.advance(1000ms);
    QCOMPARE(m_session->printed, (QStringList{u"1"_s, u"2"_s, u"3"_s}));
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(0));
}

void tst_COScript_Globals::clearedTimersDoNotFire()
{
    m_session->run(u"clearTimeout(setTimeout(print, 1, 'a')); clearImmediate(setImmediate(print, 'b'));"
                   "clearInterval(setInterval(print, 1, 'c')); clearTimeout(); clearTimeout(99); clearTimeout('x')"_s);
    QVERIFY(!m_session->script->shouldKeepRunning());
    m_environment->queue.advance(10ms);
    QCOMPARE(m_session->printed, QStringList());
}

void tst_COScript_Globals::delays_data()
{
    QTest::addColumn<QString>("delay");
    QTest::addColumn<bool>("isAtOnce");
    QTest::newRow("none") << u"undefined"_s << true;
    QTest::newRow("negative") << u"-5"_s << true;
    QTest::newRow("NaN") << u"NaN"_s << true;
    QTest::newRow("text") << u"'soon'"_s << true;
    QTest::newRow("null") << u"null"_s << true;
    QTest::newRow("text of digits") << u"'5000'"_s << false;
}

void tst_COScript_Globals::delays()
{
    QFETCH(QString, delay);
    QFETCH(bool, isAtOnce);
    m_session->run(u"setTimeout(print, "_s + delay + u", 'fired')"_s);
    QCOMPARE(m_session->printed, QStringList()); // never inside the call
    m_environment->queue.advance(1ms);
    QCOMPARE(!m_session->printed.isEmpty(), isAtOnce);
}

void tst_COScript_Globals::timerNeedsAFunction_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("message");
    QTest::newRow("text") << u"setTimeout('print(1)', 1)"_s
                          << u"TypeError: setTimeout needs a function to call, but was given print(1)."_s;
    QTest::newRow("nothing") << u"setInterval()"_s
                             << u"TypeError: setInterval needs a function to call, but was given (null)."_s;
    QTest::newRow("microtask") << u"queueMicrotask(5)"_s
                               << u"TypeError: queueMicrotask needs a function to call, but was given 5."_s;
}

void tst_COScript_Globals::timerNeedsAFunction()
{
    QFETCH(QString, source);
    m_session->run(source);
    QFETCH(QString, message);
    QCOMPARE(m_session->exceptions, QStringList{message});
    QVERIFY(!m_session->script->shouldKeepRunning());
}

void tst_COScript_Globals::microtasksComeBeforeTimers()
{
    m_session->run(u"setTimeout(print, 0, 'timer'); queueMicrotask(() => print('microtask'));"
                   "Promise.resolve().then(() => print('promise')); print('script')"_s);
    QCOMPARE(m_session->printed, (QStringList{u"script"_s, u"microtask"_s, u"promise"_s}));
    m_environment->queue.advance(0ms);
    QCOMPARE(m_session->printed.last(), u"timer"_s);
}

void tst_COScript_Globals::sessionRunsWhileSomethingIsPending_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("isRunning");
    QTest::newRow("nothing") << u"function f() {}"_s << false;
    QTest::newRow("timer") << u"function f() { setTimeout(() => {}, 10) }"_s << true;
    QTest::newRow("promise") << u"function f() { return new Promise(() => {}) }"_s << true;
    QTest::newRow("promise that nobody returns") << u"function f() { new Promise(() => {}) }"_s << false;
    QTest::newRow("settled promise") << u"function f() { return Promise.resolve(1) }"_s << false;
    QTest::newRow("async function") << u"async function f() { await new Promise(() => {}) }"_s << true;
    QTest::newRow("async function that is done") << u"async function f() { await 1; await 2 }"_s << false;
}

void tst_COScript_Globals::sessionRunsWhileSomethingIsPending()
{
    QFETCH(QString, source);
    m_session->run(source);
    m_session->call(u"f"_s);
    QTEST(m_session->script->shouldKeepRunning(), "isRunning");
    m_session->script->setShouldKeepAround(true);
    QVERIFY(m_session->script->shouldKeepRunning());
    m_session->script->cleanup();
    QVERIFY(!m_session->script->shouldKeepRunning());
}

void tst_COScript_Globals::cleanupEndsAllOfIt()
{
    m_session->run(u"setInterval(print, 1, 'a'); function f() { return new Promise(done => setTimeout(done, 1)) }"_s);
    m_session->call(u"f"_s);
    m_session->script->cleanup();
    m_session->script->cleanup();
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(0));
    m_environment->queue.advance(10ms);
    QCOMPARE(m_session->printed, QStringList());
    QCOMPARE(m_session->run(u"1"_s), QVariant());
    QVERIFY(!m_session->script->hasFunctionNamed(u"f"_s));
    QCOMPARE(m_session->call(u"f"_s), QVariant());
}

void tst_COScript_Globals::cleanupInsideOfATimer()
{
    const NativeFunction end{[this](const QVariantList &) {
        m_session->script->cleanup();
        return QVariant();
    }};
    m_session->script->pushObject(QVariant::fromValue(end), u"end"_s);
    m_session->run(u"setInterval(() => { end(); print('after'); setTimeout(print, 0, 'never') }, 1)"_s);
    m_environment->queue.advance(10ms);
    QVERIFY(!m_session->printed.contains(u"never"_s));
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(0));
}

void tst_COScript_Globals::pushedObjects()
{
    m_session->script->pushObject(5, u"five"_s);
    QCOMPARE(m_session->run(u"five"_s), QVariant(5));
    m_session->script->pushObject(6, u"five"_s);
    QCOMPARE(m_session->run(u"five"_s), QVariant(6));
    QCOMPARE(m_session->run(u"five = 7; five"_s), QVariant(7));
    m_session->script->deleteObjectWithName(u"five"_s);
    QCOMPARE(m_session->run(u"typeof five"_s), QVariant(u"undefined"_s));
    m_session->script->deleteObjectWithName(u"never there"_s);
}

void tst_COScript_Globals::globalsAreEachSessionsOwn()
{
    const auto other = TestSession::make(*m_environment);
    m_session->run(u"var mine = 1; Array.prototype.mine = 2"_s);
    QCOMPARE(other->run(u"typeof mine + typeof [].mine"_s), QVariant(u"undefinedundefined"_s));
}

QTEST_GUILESS_MAIN(tst_COScript_Globals)
#include "tst_coscript_globals.moc"
