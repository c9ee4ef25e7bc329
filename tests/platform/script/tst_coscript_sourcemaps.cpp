// Errors in generated scripts, told in the files that they were made of.

#include "support/BundleBuilder.h"
#include "support/TestSession.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// "function f(x){null.x}\nfunction g(){f()}" of "../../src/a.ts":
//   (2:5) function first(value) { / (3:9) null.x / (6:1) function second() { / (7:3) first(1)
// and a third line, of which (8:3) is a call of second.
const QByteArray map = R"({"version": 3, "sources": ["../../src/a.ts"], "names": ["first", "second"],
    "mappings": "AACI,SAASA,GACL;AAGR,SAASC,IACPD;AACAC"})";
const QString code = u"function f(x){null.x}\nfunction g(){f()}\n"_s;

QString dataURL(const QByteArray &json)
{
    return u"data:application/json;charset=utf-8;base64,"_s + QString::fromLatin1(json.toBase64());
}

} // namespace

class tst_COScript_SourceMaps : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_environment = std::make_unique<TestEnvironment>();
        m_session = TestSession::make(*m_environment);
    }
    void cleanup()
    {
        m_session.reset();
        m_environment.reset();
    }

    void sources_data();
    void sources();
    void unusableMaps_data();
    void unusableMaps();
    void modules();
    void timers();
    void traces();
    void nothingIsReadBeforeAnError();
    void callsOfTheEngineHaveNoNames();
    void messageSends_data();
    void messageSends();
    void messageSendsInGeneratedScripts();

private:
    /// The stack of an error in g().
    QString stackAfter(const QString &script)
    {
        m_session->run(script + u"\ng();"_s.repeated(script.contains(u"g();") ? 0 : 1));
        return m_session->printed.value(0).section(u'\n', 1).simplified();
    }
    QString mainWith(const QString &reference) const { return code + u"g();\n//# sourceMappingURL="_s + reference; }

    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<TestSession> m_session;
};

void tst_COScript_SourceMaps::sources_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("file");
    const auto withSource = [](const QByteArray &source) { return QByteArray(map).replace("../../src/a.ts", source); };
    QTest::newRow("in the plug-in") << withSource("src/a.ts") << u"Contents/Korvan/src/a.ts"_s;
    QTest::newRow("above the script") << map << u"src/a.ts"_s;
    QTest::newRow("outside of the plug-in") << withSource("../../../a.ts") << u"$TEMPORARY/a.ts"_s;
    QTest::newRow("a whole path") << withSource("/home/ada/a.ts") << u"/home/ada/a.ts"_s;
    QTest::newRow("a file's URL") << withSource("file:///home/ada/a%20b.ts") << u"/home/ada/a b.ts"_s;
    QTest::newRow("encoded") << withSource("a%20b.ts") << u"Contents/Korvan/a b.ts"_s;
    QTest::newRow("another URL") << withSource("webpack://words/./src/a.ts") << u"webpack://words/./src/a.ts"_s;
}

void tst_COScript_SourceMaps::sources()
{
    QFETCH(const QByteArray, json);
    QFETCH(QString, file);
    file.replace(u"$TEMPORARY"_s, m_environment->path(QString()));
    m_session->write(u"main.js.map"_s, json);
    const auto expected = u"at first (%1:3:9) at second (%1:7:3) at %1:8:3"_s.arg(file);
    QCOMPARE(stackAfter(mainWith(u"main.js.map"_s)), expected);
    const auto error = m_session->values[0].toMap().value(u"payload"_s).toList().value(0).toMap();
    QCOMPARE(error.value(u"file"_s).toString(), file);
    QCOMPARE(error.value(u"line"_s).toInt(), 3);
    QCOMPARE(error.value(u"column"_s).toInt(), 9);
    m_session = TestSession::make(*m_environment);
    QCOMPARE(stackAfter(mainWith(dataURL(json))), expected);
}

void tst_COScript_SourceMaps::unusableMaps_data()
{
    QTest::addColumn<QString>("reference");
    QTest::newRow("not there") << u"missing.map"_s;
    QTest::newRow("no JSON") << u"text.map"_s;
    QTest::newRow("a folder") << u"folder"_s;
    QTest::newRow("outside of the plug-in") << u"../../../outside.map"_s;
    QTest::newRow("a link that leads out") << u"link.map"_s;
    QTest::newRow("a whole path") << u"/outside.map"_s;
    QTest::newRow("on a server") << u"https://example.com/main.js.map"_s;
    QTest::newRow("another kind of data") << u"data:application/json,%7B%7D"_s;
    QTest::newRow("data that is damaged") << u"data:application/json;base64,e30$"_s;
    QTest::newRow("data without any") << u"data:"_s;
}

void tst_COScript_SourceMaps::unusableMaps()
{
    QFETCH(const QString, reference);
    m_session->write(u"text.map"_s, "no map");
    m_session->write(u"folder/a"_s, "");
    const auto outside = m_environment->path(u"outside.map"_s);
    writeFile(outside, map);
    QVERIFY(QFile::link(outside, m_environment->path(u"Tidy.korvanplugin/Contents/Korvan/link.map"_s)));
    QCOMPARE(stackAfter(mainWith(reference)),
        u"at f (Contents/Korvan/main.js:1:19) at g (Contents/Korvan/main.js:2:15) at Contents/Korvan/main.js:3:2"_s);
    QCOMPARE(m_session->printed.size(), 1);
}

void tst_COScript_SourceMaps::modules()
{
    m_session->write(u"lib/generated.js"_s, (code + u"exports.g = g;\n//# sourceMappingURL=maps/a.map"_s).toUtf8());
    m_session->write(u"lib/maps/a.map"_s, map);
    m_session->run(u"require('./lib/generated').g()"_s);
    QCOMPARE(m_session->printed.value(0).section(u'\n', 1).simplified(),
        u"at first (Contents/src/a.ts:3:9) at g (Contents/src/a.ts:7:3) at Contents/Korvan/main.js:1:29"_s);
}

void tst_COScript_SourceMaps::timers()
{
    m_session->write(u"main.js.map"_s, map);
    m_session->run(code + u"setTimeout(g, 5);\n//# sourceMappingURL=main.js.map"_s);
    m_environment->queue.advance(5ms);
    QCOMPARE(
        m_session->printed.value(0).section(u'\n', 1).simplified(), u"at first (src/a.ts:3:9) at g (src/a.ts:7:3)"_s);
}

void tst_COScript_SourceMaps::traces()
{
    m_session->write(u"main.js.map"_s, map);
    m_session->run(
        u"function f(x){console.trace('here')}\nfunction g(){f()}\ng();\n//# sourceMappingURL=main.js.map"_s);
    QCOMPARE(m_session->printed.value(0).simplified(),
        u"Trace: here at first (src/a.ts:3:9) at second (src/a.ts:7:3) at src/a.ts:8:3"_s);
}

void tst_COScript_SourceMaps::nothingIsReadBeforeAnError()
{
    m_session->run(code + u"\n//# sourceMappingURL=main.js.map"_s);
    m_session->write(u"main.js.map"_s, map); // only now
    m_session->call(u"g"_s);
    QVERIFY2(m_session->thrown.contains(u"at first (src/a.ts:3:9)"_s), qPrintable(m_session->thrown));
}

void tst_COScript_SourceMaps::callsOfTheEngineHaveNoNames()
{
    // What calls "f" is the engine's own "map", not the place in "g" whose name the map tells.
    m_session->write(u"main.js.map"_s, map);
    m_session->run(u"function f(x){null.x}\nfunction g(){[1].map(f)}\ng();\n//# sourceMappingURL=main.js.map"_s);
    QCOMPARE(m_session->printed.value(0).section(u'\n', 1).simplified(),
        u"at f (src/a.ts:3:9) at second (src/a.ts:7:3) at src/a.ts:8:3"_s);
}

void tst_COScript_SourceMaps::messageSends_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<int>("column");
    QTest::newRow("behind a send") << u"var o = {self() {}}; [o self]; null.x"_s << 36;
    QTest::newRow("behind a send with arguments") << u"var o = {a_b(x, y) {}}; [o a:1 b:2]; null.x"_s << 42;
    QTest::newRow("behind nested sends") << u"var o = {self() { return this }}; [[o self] self]; null.x"_s << 56;
    QTest::newRow("before a send") << u"null.x; [o self]"_s << 5;
    QTest::newRow("in an argument") << u"var o = {a(x) {}}; [o a:null.x]"_s << 29;
    QTest::newRow("the send itself") << u"var o = {}; [o self]"_s << 15;
}

void tst_COScript_SourceMaps::messageSends()
{
    QFETCH(const QString, script);
    QFETCH(const int, column);
    m_session->run(u"'first';\n"_s + script);
    QCOMPARE(
        m_session->printed.value(0).section(u'\n', 1).simplified(), u"at Contents/Korvan/main.js:2:%1"_s.arg(column));
}

void tst_COScript_SourceMaps::messageSendsInGeneratedScripts()
{
    m_session->write(u"main.js.map"_s, map);
    // The same columns as in the text that the map belongs to, but for the send.
    const auto stack = stackAfter(
        u"function f(x){null.x}\nfunction g(){f()}\nvar o = {self() {}}; [o self]; g();\n//# sourceMappingURL=main.js.map"_s);
    QCOMPARE(stack, u"at first (src/a.ts:3:9) at second (src/a.ts:7:3) at src/a.ts:8:3"_s);
    m_session = TestSession::make(*m_environment);
    m_session->write(u"lib.js"_s,
        "/*[o self]*/ var o = {self() { return f() }}; function f() { null.x }; exports.g = () => { [o self]; "
        "null.y };\n//# sourceMappingURL="
            + dataURL(QByteArray(map).replace("\"AACI", "\"2DACI")).toUtf8());
    m_session->run(u"require('./lib').g()"_s);
    QVERIFY2(m_session->printed.value(0).contains(u"src/a.ts:2:5"_s), qPrintable(m_session->printed.value(0)));
}

QTEST_GUILESS_MAIN(tst_COScript_SourceMaps)
#include "tst_coscript_sourcemaps.moc"
