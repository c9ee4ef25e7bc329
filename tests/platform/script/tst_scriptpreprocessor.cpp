// Bracketed message sends become method calls; whatever else stands in a script stays as it is.

#include "platform/script/ScriptPreprocessor.h"
#include "support/TestSession.h"

#include <QFile>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_ScriptPreprocessor : public QObject
{
    Q_OBJECT

private slots:
    void rewritten_data();
    void rewritten();
    void left_data();
    void left();
    void scriptsOfTheWorldAreLeft_data();
    void scriptsOfTheWorldAreLeft();
    void linesKeepTheirNumbers();
    void hostileTextsEnd_data();
    void hostileTextsEnd();
    void rewrittenScriptsRun();
    void errorsInRewrittenScriptsKeepTheirLines();
    void validScriptsRunAsTheyStand();
    void switchedOff();
};

void tst_ScriptPreprocessor::rewritten_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("result");

    const auto row = [](const char *tag, const QString &source, const QString &result) {
        QTest::newRow(tag) << source << result;
    };
    row("name", u"[layer name]"_s, u"layer.name()"_s);
    row("keyword", u"[layer setName:\"Sky\"]"_s, u"layer.setName(\"Sky\")"_s);
    row("keywords", u"[layer setName:\"Sky\" animated:true]"_s, u"layer.setName_animated(\"Sky\", true)"_s);
    row("nested receiver", u"[[document layers] count]"_s, u"document.layers().count()"_s);
    row("nested argument", u"[a add:[b c]]"_s, u"a.add(b.c())"_s);
    row("receiver of a path", u"[context.document layers]"_s, u"context.document.layers()"_s);
    row("receiver of a call", u"[f(1, 2) name]"_s, u"f(1, 2).name()"_s);
    row("receiver of a subscript", u"[layers[0] name]"_s, u"layers[0].name()"_s);
    row("receiver in parentheses", u"[(a || b) name]"_s, u"(a || b).name()"_s);
    row("receiver this", u"[this name]"_s, u"this.name()"_s);
    row("receiver of a text", u"[\"a\" length]"_s, u"\"a\".length()"_s);
    row("argument of an expression", u"[a add:1 + 2 * x]"_s, u"a.add(1 + 2 * x)"_s);
    row("argument of a choice", u"[a add:b ? c : d]"_s, u"a.add(b ? c : d)"_s);
    row("argument of an object", u"[a add:{b: 1, c: [1, 2]}]"_s, u"a.add({b: 1, c: [1, 2]})"_s);
    row("argument of a function", u"[a each:function (x) { return [x name] }]"_s,
        u"a.each(function (x) { return x.name() })"_s);
    row("in an array", u"var l = [1, [a b], 2]"_s, u"var l = [1, a.b(), 2]"_s);
    row("in a subscript", u"l[[a b]]"_s, u"l[a.b()]"_s);
    row("in a template", u"`${[a b]} [a b]`"_s, u"`${a.b()} [a b]`"_s);
    row("in a condition", u"if ([a b]) [c d];"_s, u"if (a.b()) c.d();"_s);
    row("after return", u"function f() { return [a b] }"_s, u"function f() { return a.b() }"_s);
    row("as a receiver of a path", u"[a b].c"_s, u"a.b().c"_s);
}

void tst_ScriptPreprocessor::rewritten()
{
    QFETCH(QString, source);
    QTEST(withMessageSendsRewritten(source), "result");
}

void tst_ScriptPreprocessor::left_data()
{
    QTest::addColumn<QString>("source");
    const char *const sources[] = {"[]", "[a]", "[a, b]", "[a,]", "[,]", "[[a], [b]]", "[a in b]", "[a instanceof b]",
        "[typeof x]", "[void x]", "[delete x.y]", "[new Layer]", "[new Layer()]", "async () => [await f()]",
        "async () => { for await (const a of [await b]); }", "function* f() { [yield x] }", "[...a]", "[async x => 1]",
        "[async function f() {}]", "[function f() {}]", "[class A extends B {}]", "[a ? b : c]", "[a => b]", "[{a: 1}]",
        "[`a b`]", "[/a b/]", "[/[a b]/g, /]/]", "['[a b]']", "\"[a b]\"", "// [a b]", "/* [a b] */", "`[a b]`", "x[a]",
        "x[a in b]", "x?.[a]", "x[y[z]]", "[a\n, b]", "const [a, b = 1, ...c] = d", "for (const [a, b] of c);",
        "({[a]: b})", "class A { [b]() {} static [c] = 1 }", "[a / b / c]", "[a++]", "[-a]", "[!a]", "[a.b?.c]",
        "[a ?? b]", "[x = y]", "[get]", "[async]", "label: [a]", "a\n[b]", "let\n[a] = b", "[1e3, 0x1F, 1n, .5]",
        "[\"a\" + 'b']", "[a<b, c>d]", "[super.x]", "[import.meta]"};
    for (const auto *source : sources)
        QTest::newRow(QByteArray(source).replace('\n', ' ').constData()) << QString::fromUtf8(source);
}

void tst_ScriptPreprocessor::left()
{
    QFETCH(QString, source);
    QCOMPARE(withMessageSendsRewritten(source), source);
}

void tst_ScriptPreprocessor::scriptsOfTheWorldAreLeft_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("written by people") << u"lodash/lodash.js"_s;
    QTest::newRow("written by a minifier") << u"d3/d3.min.js"_s;
}

void tst_ScriptPreprocessor::scriptsOfTheWorldAreLeft()
{
    QFETCH(QString, file);
    QFile source(QStringLiteral(KORVAN_SOURCE_DIR "/tests/third_party/") + file);
    QVERIFY(source.open(QIODevice::ReadOnly));
    const auto text = QString::fromUtf8(source.readAll());
    QVERIFY(text.size() > 100000);
    QVERIFY(withMessageSendsRewritten(text) == text); // not compared by a macro, which would print it all
}

void tst_ScriptPreprocessor::linesKeepTheirNumbers()
{
    const auto result = withMessageSendsRewritten(u"[a\n  add: 1 // one\n  to: /* two */ 2\n];\nlast"_s);
    QCOMPARE(result.count(u'\n'), 4);
    QVERIFY(result.startsWith(u"a"_s));
    QVERIFY(result.contains(u".add_to("_s));
    QVERIFY(result.endsWith(u"\nlast"_s));
}

void tst_ScriptPreprocessor::hostileTextsEnd_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("opening brackets") << QString(100000, u'[');
    QTest::newRow("closing brackets") << QString(100000, u']');
    QTest::newRow("nested sends") << QString(50000, u'[') + u"a"_s + u" b]"_s.repeated(50000);
    QTest::newRow("nested templates") << u"`${"_s.repeated(50000);
    QTest::newRow("nested braces") << u"{(["_s.repeated(50000);
    QTest::newRow("unclosed comment") << u"/*"_s + QString(1000000, u'[');
    QTest::newRow("unclosed text") << u"'"_s + QString(1000000, u'[');
    QTest::newRow("unclosed expression") << u"/["_s + QString(1000000, u'[');
    QTest::newRow("backslash at the end") << u"'\\"_s;
    QTest::newRow("NUL") << u"[a\0 b\0:\0]"_s;
    QTest::newRow("lone surrogates") << u"["_s + QChar(0xD800) + u" "_s + QChar(0xDC00) + u"]"_s;
    QTest::newRow("colons") << u"[a b:"_s + QString(100000, u':') + u"]"_s;
    QTest::newRow("many sends") << u"[a b:[c d] e:f];\n"_s.repeated(20000);
}

void tst_ScriptPreprocessor::hostileTextsEnd()
{
    QFETCH(QString, source);
    QCOMPARE(withMessageSendsRewritten(source).count(u'\n'), source.count(u'\n'));
}

void tst_ScriptPreprocessor::rewrittenScriptsRun()
{
    TestEnvironment environment;
    const auto session = TestSession::make(environment);
    QCOMPARE(session->run(u"var o = {add_to(a, b) { return a + b }, self() { return this }};\n"
                          "[[o self] add:[[o self] add:1 to:2] to:[4][0]]"_s),
        QVariant(7));
    QCOMPARE(session->exceptions, QStringList());
}

void tst_ScriptPreprocessor::errorsInRewrittenScriptsKeepTheirLines()
{
    TestEnvironment environment;
    const auto session = TestSession::make(environment);
    session->run(u"var o = {};\n[o\n  add:1\n  to:2];"_s);
    session->run(u"var o = {};\n[o self];\nvar = 5"_s);
    QCOMPARE(session->printed.size(), 2);
    QVERIFY(session->printed[0].contains(u"o.add_to is not a function"_s));
    QVERIFY(session->printed[0].contains(u"Contents/Korvan/main.js:2:"_s));
    QVERIFY(session->printed[1].contains(u"Contents/Korvan/main.js:3:5"_s));
}

void tst_ScriptPreprocessor::validScriptsRunAsTheyStand()
{
    TestEnvironment environment;
    const auto session = TestSession::make(environment);
    QCOMPARE(session->run(u"(function f(a) { return [a in {x: 1}] }).toString()"_s),
        QVariant(u"function f(a) { return [a in {x: 1}] }"_s));
}

void tst_ScriptPreprocessor::switchedOff()
{
    TestEnvironment environment;
    const auto session = TestSession::make(environment);
    session->script->setShouldPreprocess(false);
    session->run(u"var o = {self() {}};\n[o self]"_s);
    QCOMPARE(session->exceptions,
        QStringList{
            u"SyntaxError: Unexpected identifier 'self'. Expected either a closing ']' or a ',' following an array element."_s});
}

QTEST_GUILESS_MAIN(tst_ScriptPreprocessor)
#include "tst_scriptpreprocessor.moc"
