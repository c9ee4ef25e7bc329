// Every error of an author comes out once, with its place in the author's file.

#include "platform/script/ScriptValue.h"
#include "support/TestSession.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_COScript_Errors : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void evaluation_data();
    void evaluation();
    void unfinishedModuleEndsAtItsAuthorsEnd();
    void entryHasAllParts();
    void inFunctions();
    void inTimers();
    void inIntervalsEachTime();
    void inMicrotasks();
    void rejectedPromises_data();
    void rejectedPromises();
    void rejectionThatIsHandledLater();
    void promiseOfACall_data();
    void promiseOfACall();
    void promiseThatSettlesLater();
    void inModules();
    void missingModule();
    void caughtErrorsAreNobodysBusiness();
    void sourceOffsetIsTakenAway();
    void functionsAreFoundHoweverDeclared_data();
    void functionsAreFoundHoweverDeclared();
    void bindingsOfAFailedScript();
    void nothingToEvaluate();

private:
    /// The one entry that was printed, and signalled once.
    QVariantMap theError() const;

    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<TestSession> m_session;
};

void tst_COScript_Errors::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_session = TestSession::make(*m_environment);
}

void tst_COScript_Errors::cleanup()
{
    m_session.reset();
    m_environment.reset();
}

QVariantMap tst_COScript_Errors::theError() const
{
    if (m_session->values.size() != 1 || m_session->exceptions.size() != 1)
        return {{u"printed"_s, m_session->printed}, {u"exceptions"_s, m_session->exceptions}};
    return m_session->values[0].toMap().value(u"payload"_s).toList().value(0).toMap();
}

void tst_COScript_Errors::evaluation_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("message");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");

    const auto row = [](const char *tag, const QString &source, const QString &message, int line, int column) {
        QTest::newRow(tag) << source << message << line << column;
    };
    row("thrown", u"\n  throw new RangeError('far')"_s, u"RangeError: far"_s, 2, 23);
    row("unknown name", u"1;\nmissing"_s, u"ReferenceError: Can't find variable: missing"_s, 2, 8);
    row("no function", u"var a = {};\na.b()"_s, u"TypeError: a.b is not a function. (In 'a.b()', 'a.b' is undefined)"_s,
        2, 4);
    row("syntax", u"\nvar a = ;"_s, u"SyntaxError: Unexpected token ';'"_s, 2, 9);
    row("syntax at the end", u"function f() {"_s, u"SyntaxError: Unexpected end of script"_s, 1, 14);
    row("syntax far down", QString(5000, u'\n') + u"  )"_s, u"SyntaxError: Unexpected token ')'"_s, 5001, 3);
    row("unclosed text", u"var a = 'b\n"_s, u"SyntaxError: Unexpected EOF"_s, 1, 9);
    row("thrown text", u"throw 'bad'"_s, u"bad"_s, 0, 0);
    row("thrown nothing", u"throw undefined"_s, u"(null)"_s, 0, 0);
    row("thrown object", u"throw {code: 5}"_s, u"{\"code\": 5}"_s, 0, 0);
    row("own class", u"class Odd extends Error { name = 'Odd' }\nthrow new Odd('x')"_s, u"Odd: x"_s, 2, 14);
    row("cause", u"throw new Error('a', {cause: new Error('b')})"_s, u"Error: a"_s, 1, 16);
    row("endless recursion", u"function f() { f() }\nf()"_s, u"RangeError: Maximum call stack size exceeded."_s, 1, 17);
}

void tst_COScript_Errors::evaluation()
{
    QFETCH(QString, source);
    QCOMPARE(m_session->run(source), QVariant());
    const auto error = theError();
    QTEST(error.value(u"message"_s).toString(), "message");
    QTEST(error.value(u"line"_s).toInt(), "line");
    QTEST(error.value(u"column"_s).toInt(), "column");
    QCOMPARE(error.value(u"file"_s), QVariant(u"Contents/Korvan/main.js"_s));
    QCOMPARE(m_session->exceptions, QStringList{error.value(u"message"_s).toString()});
}

void tst_COScript_Errors::unfinishedModuleEndsAtItsAuthorsEnd()
{
    m_session->write(u"open.js"_s, "it('x', () => {\n\n");
    m_session->run(u"require('./open')"_s);
    const auto error = theError();
    QCOMPARE(error.value(u"file"_s), QVariant(u"Contents/Korvan/open.js"_s));
    QCOMPARE(error.value(u"line"_s), QVariant(1));
    QCOMPARE(error.value(u"column"_s), QVariant(15));
}

void tst_COScript_Errors::entryHasAllParts()
{
    m_session->run(u"function deep() { throw new Error('x') }\ndeep()"_s);
    const auto entry = m_session->values.value(0).toMap();
    QCOMPARE(entry.keys(), (QStringList{u"level"_s, u"payload"_s, u"stringValue"_s}));
    QCOMPARE(entry.value(u"level"_s), QVariant(u"error"_s));
    QCOMPARE(entry.value(u"stringValue"_s),
        QVariant(u"Error: x\n    at deep (Contents/Korvan/main.js:1:34)\n    at Contents/Korvan/main.js:2:5"_s));
    QCOMPARE(theError().keys(), (QStringList{u"column"_s, u"file"_s, u"line"_s, u"message"_s, u"stack"_s}));
    QCOMPARE(
        theError().value(u"stack"_s), QVariant(u"deep (Contents/Korvan/main.js:1:34)\nContents/Korvan/main.js:2:5"_s));
}

void tst_COScript_Errors::inFunctions()
{
    m_session->run(u"function f() {\n  throw new Error('x')\n}"_s);
    QCOMPARE(m_session->call(u"f"_s), QVariant());
    QCOMPARE(m_session->thrown, u"Error: x\n    at f (Contents/Korvan/main.js:2:18)"_s);
    QCOMPARE(m_session->exceptions, QStringList{u"Error: x"_s});
    QCOMPARE(m_session->printed, QStringList()); // the caller has it
}

void tst_COScript_Errors::inTimers()
{
    m_session->run(u"setTimeout(() => {\n  throw new Error('x')\n}, 5); setTimeout(print, 6, 'next')"_s);
    m_environment->queue.advance(10ms);
    QCOMPARE(m_session->printed, (QStringList{u"error: Error: x\n    at Contents/Korvan/main.js:2:18"_s, u"next"_s}));
    QCOMPARE(m_session->exceptions, QStringList{u"Error: x"_s});
}

void tst_COScript_Errors::inIntervalsEachTime()
{
    m_session->run(u"setInterval(() => { throw new Error('x') }, 10)"_s);
    m_environment->queue.advance(30ms);
    QCOMPARE(m_session->exceptions.size(), 3);
    QCOMPARE(m_session->printed.size(), 3);
}

void tst_COScript_Errors::inMicrotasks()
{
    m_session->run(u"queueMicrotask(() => {\n  throw new Error('x') })"_s);
    QCOMPARE(theError().value(u"line"_s), QVariant(2));
}

void tst_COScript_Errors::rejectedPromises_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("nobody listens") << u"Promise.reject(new Error('x'))"_s;
    QTest::newRow("async function") << u"(async () => { throw new Error('x') })()"_s;
    QTest::newRow("in a reaction") << u"Promise.resolve().then(() => { throw new Error('x') })"_s;
    QTest::newRow("after waiting") << u"(async () => { await 1; throw new Error('x') })()"_s;
    QTest::newRow("one of all") << u"Promise.all([1, Promise.reject(new Error('x'))])"_s;
}

void tst_COScript_Errors::rejectedPromises()
{
    QFETCH(QString, source);
    m_session->run(source + u"; 0"_s);
    QCOMPARE(theError().value(u"message"_s), QVariant(u"Error: x"_s));
    QCOMPARE(theError().value(u"line"_s), QVariant(1));
    m_session->printed.clear();
    m_session->run(u"1"_s);
    QCOMPARE(m_session->printed, QStringList()); // once is enough
}

void tst_COScript_Errors::rejectionThatIsHandledLater()
{
    m_session->run(
        u"var p = new Promise((_, reject) => setTimeout(reject, 5, 'no')); p.catch(e => print('caught ' + e)); 0"_s);
    m_environment->queue.advance(10ms);
    QCOMPARE(m_session->printed, QStringList{u"caught no"_s});
    QCOMPARE(m_session->exceptions, QStringList());
}

void tst_COScript_Errors::promiseOfACall_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("rejected at once") << u"function f() { return Promise.reject(new Error('x')) }"_s;
    QTest::newRow("async function that throws") << u"async function f() { throw new Error('x') }"_s;
    QTest::newRow("after waiting") << u"async function f() { await 1; throw new Error('x') }"_s;
}

void tst_COScript_Errors::promiseOfACall()
{
    QFETCH(QString, source);
    m_session->run(source);
    m_session->call(u"f"_s);
    QCOMPARE(m_session->thrown, QString());
    QCOMPARE(theError().value(u"message"_s), QVariant(u"Error: x"_s));
    QVERIFY(!m_session->script->shouldKeepRunning());
}

void tst_COScript_Errors::promiseThatSettlesLater()
{
    m_session->run(u"function f(fail) { return new Promise((done, no) => setTimeout(fail ? no : done, 10, 'end')) }"_s);
    const auto good = m_session->call(u"f"_s, {false}).value<ScriptValue>();
    const auto bad = m_session->call(u"f"_s, {true}).value<ScriptValue>();
    QCOMPARE(good.kind(), ScriptValue::Kind::Promise);
    QVERIFY(!good.isSettled());
    m_environment->queue.advance(10ms);
    QVERIFY(good.isSettled() && bad.isSettled());
    QCOMPARE(good.settledValue(), QVariant(u"end"_s));
    QCOMPARE(bad.settledValue(), QVariant());
    QCOMPARE(m_session->exceptions, QStringList{u"end"_s});
    QVERIFY(!m_session->script->shouldKeepRunning());
}

void tst_COScript_Errors::inModules()
{
    m_session->write(u"lib/bad.js"_s, "\nexports.f = function () {\n  throw new Error('x')\n}");
    m_session->run(u"\nrequire('./lib/bad').f()"_s);
    QCOMPARE(theError().value(u"file"_s), QVariant(u"Contents/Korvan/lib/bad.js"_s));
    QCOMPARE(theError().value(u"line"_s), QVariant(3));
    QVERIFY(theError().value(u"stack"_s).toString().contains(u"Contents/Korvan/main.js:2:"_s));
    m_session->values.clear();
    m_session->exceptions.clear();

    m_session->write(u"lib/odd.js"_s, "var a;\n  var = 5");
    m_session->run(u"require('./lib/odd')"_s);
    QCOMPARE(theError().value(u"file"_s), QVariant(u"Contents/Korvan/lib/odd.js"_s));
    QCOMPARE(theError().value(u"line"_s), QVariant(2));
    QCOMPARE(theError().value(u"column"_s), QVariant(7));
}

void tst_COScript_Errors::missingModule()
{
    m_session->run(u"\nvar a = require('./missing')"_s);
    QCOMPARE(theError().value(u"message"_s), QVariant(u"Error: Cannot find module './missing'."_s));
    QCOMPARE(theError().value(u"file"_s), QVariant(u"Contents/Korvan/main.js"_s));
    QCOMPARE(theError().value(u"line"_s), QVariant(2));
}

void tst_COScript_Errors::caughtErrorsAreNobodysBusiness()
{
    m_session->run(
        u"try { throw 1 } catch { } try { require('./x') } catch { } Promise.reject(1).catch(() => {}); 0"_s);
    QCOMPARE(m_session->printed, QStringList());
    QCOMPARE(m_session->exceptions, QStringList());
}

void tst_COScript_Errors::sourceOffsetIsTakenAway()
{
    m_session->script->setSourceOffset({2, 4});
    m_session->run(u"// head\n// head\n/**/throw new Error('x')"_s);
    QCOMPARE(theError().value(u"line"_s), QVariant(1));
    QCOMPARE(theError().value(u"column"_s), QVariant(16));
}

void tst_COScript_Errors::functionsAreFoundHoweverDeclared_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("function") << u"function f() {}"_s << true;
    QTest::newRow("var") << u"var f = function () {}"_s << true;
    QTest::newRow("let") << u"let f = () => {}"_s << true;
    QTest::newRow("const") << u"const f = async () => {}"_s << true;
    QTest::newRow("class") << u"class f {}"_s << true;
    QTest::newRow("generator") << u"function* f() {}"_s << true;
    QTest::newRow("without declaration") << u"f = () => {}"_s << true;
    QTest::newRow("behind strict") << u"'use strict'; const f = () => {}"_s << true;
    QTest::newRow("several") << u"const {a, f} = {a: 1, f() {}}"_s << true;
    QTest::newRow("no function") << u"const f = 5"_s << false;
    QTest::newRow("in a block") << u"{ const f = () => {} }"_s << false;
    QTest::newRow("in a function") << u"function g() { function f() {} }"_s << false;
    QTest::newRow("only mentioned") << u"// f"_s << false;
    QTest::newRow("not at all") << u""_s << false;
}

void tst_COScript_Errors::functionsAreFoundHoweverDeclared()
{
    QFETCH(QString, source);
    m_session->run(source);
    QTEST(m_session->script->hasFunctionNamed(u"f"_s), "isFound");
    QVERIFY(!m_session->script->hasFunctionNamed(u""_s));
    QVERIFY(!m_session->script->hasFunctionNamed(u"f; print('ran')"_s));
    QCOMPARE(m_session->printed, QStringList());
}

void tst_COScript_Errors::bindingsOfAFailedScript()
{
    m_session->run(u"function f() { return 1 }\nthrow new Error('x');\nlet g = () => 1;"_s);
    QVERIFY(m_session->script->hasFunctionNamed(u"f"_s));
    QVERIFY(!m_session->script->hasFunctionNamed(u"g"_s)); // it was never initialised
    QCOMPARE(m_session->exceptions.size(), 1);
}

void tst_COScript_Errors::nothingToEvaluate()
{
    QCOMPARE(m_session->script->executeString(std::nullopt), QVariant());
    QCOMPARE(m_session->script->executeString(u""_s), QVariant());
    QCOMPARE(m_session->call(u"missing"_s), QVariant());
    QCOMPARE(m_session->printed, QStringList());
}

QTEST_GUILESS_MAIN(tst_COScript_Errors)
#include "tst_coscript_errors.moc"
