// Which names a script's text defines, told without running it.

#include "platform/script/ScriptOutline.h"

#include <QFile>
#include <QtTest>

using namespace Qt::StringLiterals;
using Definition = ScriptOutline::Definition;

Q_DECLARE_METATYPE(ScriptOutline::Definition)

class tst_ScriptOutline : public QObject
{
    Q_OBJECT

private slots:
    void definitions_data();
    void definitions();
    void literals_data();
    void literals();
    void unfinishedTextsEnd_data();
    void unfinishedTextsEnd();
    void deepTextsEnd();
    void otherNames();
};

void tst_ScriptOutline::definitions_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<Definition>("expected");
    const auto row = [](const char *tag, const QString &source, Definition expected) {
        QTest::newRow(tag) << source << expected;
    };
    const auto defined = Definition::Defined;
    const auto possible = Definition::Possible;
    const auto uncertain = Definition::Uncertain;
    const auto missing = Definition::Missing;

    row("no text", u""_s, missing);
    row("function", u"function f() {}"_s, defined);
    row("generator", u"function* f() {}"_s, defined);
    row("asynchronous function", u"async function f() {}"_s, defined);
    row("function behind a label", u"a: function f() {}"_s, defined);
    row("function in a block", u"{ function f() {} }"_s, defined);
    row("function behind a condition", u"if (a) function f() {}"_s, defined);
    row("function behind a statement without a semicolon", u"a = 1\nfunction f() {}"_s, defined);
    row("function behind a return value's line", u"var g = () => 1\nfunction f() {}"_s, defined);
    row("function as an argument", u"g(function f() {})"_s, missing);
    row("function as a value", u"g = function f() {}"_s, missing);
    row("function behind an operator on another line", u"g =\nfunction f() {}"_s, missing);
    row("function that is called at once", u"(function f() {})()"_s, missing);
    row("function behind void", u"void function f() {}"_s, missing);
    row("function in a function", u"function g() { function f() {} }"_s, missing);
    row("function in an arrow function", u"const g = () => { function f() {} }"_s, missing);
    row("function in a getter", u"var o = { get a() { function f() {} } }"_s, missing);
    row("parameter", u"function g(f, { f: h }, [i = f]) {}"_s, missing);

    row("class", u"class f {}"_s, defined);
    row("class as a value", u"g = class f {}"_s, missing);
    row("class in a block", u"{ class f {} }"_s, missing);
    row("method", u"class A { f() {} static f() {} get f() {} async *f() {} }"_s, missing);
    row("field", u"class A { f = 1; static f = () => 1; #f = 2 }"_s, missing);
    row("variable in a static block", u"class A { static { var f = 1 } }"_s, missing);
    row("this in a class", u"class A { constructor() { this.f = 1 } }"_s, missing);
    row("function behind a class", u"class A extends B { x = {} }\nfunction f() {}"_s, defined);

    row("var", u"var f"_s, defined);
    row("let", u"let f = 1"_s, defined);
    row("const", u"const f = () => {}"_s, defined);
    row("second variable", u"var a = { b: [1, 2] }, f = 1"_s, defined);
    row("variable behind a function's body", u"let a = function (x, y) { return x }, f"_s, defined);
    row("variable behind a template", u"let a = `x${{ b: [1, 2] }}y${2}z`, f"_s, defined);
    row("variable that a line's end parts from a call", u"let a = b\nf()"_s, missing);
    row("variable over several lines", u"let a =\n  1 +\n  2\n  , f"_s, defined);
    row("var in a block", u"try { var f } catch (e) {}"_s, defined);
    row("let in a block", u"{ let f }"_s, missing);
    row("var of a loop", u"for (var f = 0; f < 1; ++f) {}"_s, defined);
    row("var of a loop over a list", u"for (var f of []) {}"_s, defined);
    row("let of a loop", u"for (let f = 0; f < 1; ++f) {}"_s, missing);
    row("var in a function", u"function g() { var f }"_s, missing);

    row("object pattern", u"const { f } = a"_s, defined);
    row("object pattern with another name", u"const { a: f } = b"_s, defined);
    row("nested pattern with defaults", u"const { a: { b: [, f = 1] } = {} } = c"_s, defined);
    row("rest of a pattern", u"const [a, ...f] = b"_s, defined);
    row("variable behind a pattern", u"const { a } = b, f = 1"_s, defined);
    row("assigned pattern", u"({ f } = a)"_s, possible);
    row("assigned list pattern", u"[f] = a"_s, possible);

    row("assignment", u"f = 1"_s, defined);
    row("assignment in a function", u"function g() { f = 1 }"_s, possible);
    row("comparison", u"a == f; f == 1; f === 1; f != 1; f >= 1"_s, missing);
    row("arrow function's parameter", u"a(f => 1)"_s, missing);
    row("member of this", u"this.f = 1"_s, defined);
    row("member of this in a function", u"function g() { this.f = 1 }"_s, possible);
    row("subscript of this", u"this['f'] = 1"_s, defined);
    row("member of the global object in a function", u"function g() { globalThis.f = 1 }"_s, defined);
    row("member of another object", u"a.f = 1"_s, missing);
    row("member of another name of this", u"var root = this; root.f = 1"_s, possible);
    row("export", u"exports.f = 1; module.exports = { f: f2 }"_s, missing);
    row("export beside another name of this", u"(function () {}).call(this); exports.f = 1"_s, missing);
    row("key of an object", u"a = { f: 1, 'f': 2, f() {}, [f]: 3 }"_s, missing);
    row("label", u"f: for (;;) { break f }"_s, missing);

    row("computed name", u"this[a] = 1"_s, uncertain);
    row("computed name on the global object", u"function g() { globalThis['f' + 1] = 1 }"_s, uncertain);
    row("read of a computed name", u"var a = this[b]"_s, missing);
    row("evaluated text", u"eval(a)"_s, uncertain);
    row("function from text", u"new Function('a')()"_s, uncertain);
    row("object whose members are copied", u"Object.assign(globalThis, a)"_s, uncertain);
    row("method named eval", u"a.eval(b)"_s, missing);
    row("defined beside computed names", u"eval(a); function f() {}"_s, defined);
}

void tst_ScriptOutline::definitions()
{
    QFETCH(QString, source);
    QTEST(ScriptOutline(source).definitionOf(u"f"_s), "expected");
}

void tst_ScriptOutline::literals_data()
{
    QTest::addColumn<QString>("source");
    const QString sources[] = {u"// function g() {"_s, u"/* { \n ( */"_s, u"#!/usr/bin/env x {"_s, u"'{ \\' ('"_s,
        u"\"{ \\\" (\""_s, u"'a\\\n{'"_s, u"'a\\\r\n{'"_s, u"`{ \\` ${'}'} (`"_s, u"`a ${`b ${`c { ${1}`} (`} {`"_s,
        u"`${{ a: { b: `}` } }} {`"_s, u"`$ {`"_s, u"/{/"_s, u"/[/{]/g"_s, u"/\\/{/.test(a)"_s, u"a = /'/"_s,
        u"a = b / c / d; '{'"_s, u"a = (b) / c; a = '{/'"_s, u"a = b[0] / c; a = '{/'"_s, u"a++ / 2; '{/'"_s,
        u"if (a) /{/.test(b)"_s, u"while (a) /'/.test(b)"_s, u"function g() { return /{/ }"_s, u"typeof /'/"_s,
        u"a => /{/"_s, u"{} /{/.test(a)"_s, u"a = {} / 2; '{/'"_s, u"a = { b: 1 }\n/ 2; '{/'"_s, u"a ? /{/ : /'/"_s,
        u"a.return / 2; '{/'"_s, u"a?.b / 2; '{/'"_s, u"a?.5 : '{'"_s, u"1. / 2; '{/'"_s, u"0x1E + 1; '{'"_s,
        u"1e+3 + 1_000n + 0b1 + .5; '{'"_s, u"a\u2028'{'"_s, u"var größe = '{', \U00010400 = 1"_s,
        u"var \\u0061bc = 1, a\\u{62} = '{'"_s, u"a?.['{']"_s, u"a ?? '{'"_s, u"a ||= /{/"_s, u"a ?\?= '{'"_s,
        u"a\n++b"_s, u"let\na"_s, u"var async = 1, get = 2, of = 3, static_ = 4"_s, u"\uFEFF'{'"_s, u"''"_s,
        u"a: { break a }"_s, u"switch (a) { case /{/: default: /'/ }"_s, u"do /{/.test(a); while (/'/.test(b))"_s,
        u"class A { static x = /{/; [`}`]() {} #p = 1; has(o) { return #p in o } }"_s,
        u"async () => { for await (const a of b) /{/.test(a) }"_s, u"function* g() { yield /{/ }"_s, u"throw /{/"_s};
    for (const auto &source : sources)
        QTest::addRow("%s", qPrintable(source)) << source;
}

/// What is in literals is no script, and a function behind them is found.
void tst_ScriptOutline::literals()
{
    QFETCH(QString, source);
    const ScriptOutline outline(source + u"\n;function f() {}"_s);
    QCOMPARE(outline.definitionOf(u"f"_s), Definition::Defined);
    QCOMPARE(outline.definitionOf(u"gone"_s), Definition::Missing);
}

void tst_ScriptOutline::unfinishedTextsEnd_data()
{
    QTest::addColumn<QString>("source");
    const QString sources[] = {u"'a"_s, u"'a\\"_s, u"`a"_s, u"`a${"_s, u"`a${b"_s, u"`a${`b${"_s, u"/a"_s, u"/a[/"_s,
        u"/a\\"_s, u"/*"_s, u"//"_s, u"#!"_s, u"function"_s, u"function*"_s, u"class"_s, u"class f"_s, u"class f {"_s,
        u"var"_s, u"var {"_s, u"var [a"_s, u"var a ="_s, u"this."_s, u"this["_s, u"this['a'"_s, u"{([`${"_s, u"})]"_s,
        u"}`"_s, u"=>"_s, u"a ="_s, u"\\u"_s, QString(QChar(0xD83D)), QString(QChar(0)), u"0x"_s, u"1e+"_s, u"."_s,
        u"async"_s, u"eval("_s, u"static {"_s};
    for (const auto &source : sources)
        QTest::addRow("%s", qPrintable(source)) << source;
}

void tst_ScriptOutline::unfinishedTextsEnd()
{
    QFETCH(QString, source);
    for (const auto &before : {u""_s, u"function f() {}\n"_s}) {
        const ScriptOutline outline(before + source);
        QVERIFY(outline.definitionOf(u"gone"_s) == Definition::Missing
            || outline.definitionOf(u"gone"_s) == Definition::Uncertain);
        QCOMPARE(outline.definitionOf(u"f"_s) == Definition::Defined, !before.isEmpty() || source.contains(u" f"_s));
    }
}

void tst_ScriptOutline::deepTextsEnd()
{
    constexpr qsizetype depth = 100000;
    for (const auto &opening : {u"("_s, u"["_s, u"{"_s, u"`${"_s, u"class A {"_s, u"var a = ["_s}) {
        const ScriptOutline outline(opening.repeated(depth));
        QCOMPARE(outline.definitionOf(u"f"_s), Definition::Uncertain); // brackets stay open
    }
}

/// An outline keeps its text, and answers for each name of it.
void tst_ScriptOutline::otherNames()
{
    const ScriptOutline outline(QString(u"function größe() {}\nvar $a, _b, \U00010400 = 1"_s));
    for (const auto &name : {u"größe"_s, u"$a"_s, u"_b"_s, u"\U00010400"_s})
        QCOMPARE(outline.definitionOf(name), Definition::Defined);
    QCOMPARE(outline.definitionOf(u"Größe"_s), Definition::Missing);
    QCOMPARE(outline.definitionOf(u""_s), Definition::Missing);
}

QTEST_GUILESS_MAIN(tst_ScriptOutline)
#include "tst_scriptoutline.moc"
