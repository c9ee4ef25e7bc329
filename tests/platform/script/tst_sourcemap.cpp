#include "platform/script/SourceMapReader.h"

#include "platform/script/ScriptSourceMaps.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// As a bundler has made it of two files, in one line: "(()=>{function e(r,o){let n=r.red+o.red;if(n>3)throw new
/// RangeError(`too red: ${n}`);return n}function u(r){return e({red:r},{red:4})}globalThis.onRun=function(o){return
/// u(2)};})();"
const QByteArray bundled = R"({"version": 3, "sources": ["../../src/colours.ts", "../../src/main.ts"], "mappings":
"MAEO,SAASA,EAAWC,EAAeC,EAAwB,CAE9D,IAAMC,EAASF,EAAM,IAAMC,EAAO,IAClC,GAAIC,EAAS,EACT,MAAM,IAAI,WAAW,YAAYA,CAAM,EAAE,EAC7C,OAAOA,CACX,CCNA,SAASC,EAAaC,EAAuB,CACzC,OAAOC,EAAW,CAAE,IAAKD,CAAM,EAAG,CAAE,IAAK,CAAE,CAAC,CAChD,CAEC,WAAmB,MAAQ,SAAeE,EAAkB,CACzD,OAAOH,EAAa,CAAC,CACzB",
"names": ["mixColours", "first", "second", "answer", "mixAllOfThem", "count", "mixColours", "context"]})";

/// Line 1: column 1 is a.js:1:1 "a", column 5 nobody's, column 9 b.js:3:2. Line 3: column 3 is a.js:2:1.
const QByteArray plain = R"({"version": 3, "sources": ["a.js", "b.js"], "names": ["a"],
"mappings": "AAAAA,I,ICEC;;EDDD"})";

QString described(const std::optional<SourceMap::Place> &place)
{
    return place ? u"%1:%2:%3 %4"_s.arg(place->source).arg(place->line).arg(place->column).arg(place->name).trimmed()
                 : u"nobody's"_s;
}

QByteArray mapOf(const QByteArray &members)
{
    return R"({"version": 3, "sources": ["a.js"], "names": [], "mappings": "AAAA", )" + members + '}';
}

} // namespace

class tst_SourceMap : public QObject
{
    Q_OBJECT

private slots:
    void places_data();
    void places();
    void refused_data();
    void refused();
    void hugeMapsAreRefused();
    void references_data();
    void references();
};

void tst_SourceMap::places_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("place");
    const auto row = [](const char *tag, const QByteArray &json, int line, int column, const QString &place) {
        QTest::newRow(tag) << json << line << column << place;
    };
    row("before the first segment", bundled, 1, 1, u"nobody's"_s);
    row("a function's name", bundled, 1, 16, u"../../src/colours.ts:3:17 mixColours"_s);
    row("inside of a segment", bundled, 1, 50, u"../../src/colours.ts:7:9"_s);
    row("a name of another file", bundled, 1, 104, u"../../src/main.ts:3:10 mixAllOfThem"_s);
    row("a call", bundled, 1, 116, u"../../src/main.ts:4:12 mixColours"_s);
    row("behind the last segment", bundled, 1, 900, u"../../src/main.ts:9:1"_s);
    row("another line", bundled, 2, 1, u"nobody's"_s);
    row("a line that is none", bundled, 0, 1, u"nobody's"_s);
    row("a column that is none", bundled, 1, 0, u"nobody's"_s);

    row("the first segment", plain, 1, 1, u"a.js:1:1 a"_s);
    row("up to the next one", plain, 1, 4, u"a.js:1:1 a"_s);
    row("generated from nothing", plain, 1, 6, u"nobody's"_s);
    row("backwards in lines", plain, 1, 9, u"b.js:3:2"_s);
    row("an empty line", plain, 2, 1, u"nobody's"_s);
    row("a later line", plain, 3, 3, u"a.js:2:1"_s);
    row("a later line's beginning", plain, 3, 2, u"nobody's"_s);

    row("large numbers", mapOf(R"("mappings": "gkxhEAg+xhE+jxhE")"), 1, 2000000, u"nobody's"_s);
    row("a source root", mapOf(R"("sourceRoot": "../src")"), 1, 1, u"../src/a.js:1:1"_s);
    row("a source root with a slash", mapOf(R"("sourceRoot": "/src/")"), 1, 1, u"/src/a.js:1:1"_s);
    row("a source without a name", mapOf(R"("sources": [null])"), 1, 1, u"nobody's"_s);
    row("segments out of order", mapOf(R"("mappings": "IACA,JADA")"), 1, 1, u"a.js:1:1"_s);
    row("segments out of order, the later", mapOf(R"("mappings": "IACA,JADA")"), 1, 5, u"a.js:2:1"_s);
    row("no mappings", mapOf(R"("mappings": "")"), 1, 1, u"nobody's"_s);
    row("no names", QByteArray(R"({"version": 3, "sources": ["a.js"], "mappings": "AAAA"})"), 1, 1, u"a.js:1:1"_s);
    row("members that nobody knows", mapOf(R"("x_google_ignoreList": [0], "file": 5)"), 1, 1, u"a.js:1:1"_s);
    row("a line against being run", ")]}'\n" + mapOf(R"("file": "b.js")"), 1, 1, u"a.js:1:1"_s);

    const QByteArray first = R"({"version": 3, "sources": ["a.js"], "names": ["x"], "mappings": "AAAAA;AACAA"})";
    const QByteArray second = R"({"version": 3, "sources": ["b.js"], "names": ["y"], "mappings": "AAAAA,EAAEA;AACAA"})";
    const auto sections = R"({"version": 3, "sections": [{"offset": {"line": 0, "column": 0}, "map": )" + first
        + R"(}, {"offset": {"line": 1, "column": 10}, "map": )" + second + "}]}";
    row("sections: the first", sections, 1, 1, u"a.js:1:1 x"_s);
    row("sections: before the second", sections, 2, 10, u"a.js:2:1 x"_s);
    row("sections: the second", sections, 2, 11, u"b.js:1:1 y"_s);
    row("sections: columns of the first line", sections, 2, 13, u"b.js:1:3 y"_s);
    row("sections: lines behind it", sections, 3, 1, u"b.js:2:3 y"_s);
    row("no sections", R"({"version": 3, "sections": []})", 1, 1, u"nobody's"_s);
}

void tst_SourceMap::places()
{
    QFETCH(const QByteArray, json);
    QFETCH(const int, line);
    QFETCH(const int, column);
    const auto map = sourceMapFromJSON(json);
    QVERIFY(map);
    QTEST(described(map->find(line, column)), "place");
}

void tst_SourceMap::refused_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("<!DOCTYPE html>");
    QTest::newRow("not UTF-8") << QByteArray("\xff\xfe{}");
    QTest::newRow("an array") << QByteArray("[]");
    QTest::newRow("another version") << QByteArray(R"({"version": 2, "sources": ["a.js"], "mappings": "AAAA"})");
    QTest::newRow("a version as text") << QByteArray(R"({"version": "3", "sources": ["a.js"], "mappings": "AAAA"})");
    QTest::newRow("no sources") << QByteArray(R"({"version": 3, "mappings": "AAAA"})");
    QTest::newRow("mappings of another type") << mapOf(R"("mappings": [1])");
    QTest::newRow("a character that is none") << mapOf(R"("mappings": "AA!A")");
    QTest::newRow("a character beyond ASCII") << mapOf(R"("mappings": "AAÄA")");
    QTest::newRow("an unfinished number") << mapOf(R"("mappings": "AAAg")");
    QTest::newRow("a number without end") << mapOf(R"("mappings": "gggggggggggggggA")");
    QTest::newRow("a number of 40 bits") << mapOf(R"("mappings": "A///////fAA")");
    QTest::newRow("two numbers") << mapOf(R"("mappings": "AA")");
    QTest::newRow("three numbers") << mapOf(R"("mappings": "AAA")");
    QTest::newRow("six numbers") << mapOf(R"("names": ["a"], "mappings": "AAAAAA")");
    QTest::newRow("a column below zero") << mapOf(R"("mappings": "DAAA")");
    QTest::newRow("a line below zero") << mapOf(R"("mappings": "AADA")");
    QTest::newRow("a source that there is not") << mapOf(R"("mappings": "ACAA")");
    QTest::newRow("a name that there is not") << mapOf(R"("mappings": "AAAAA")");
    QTest::newRow("sections of another type") << QByteArray(R"({"version": 3, "sections": {}})");
    QTest::newRow("a section without an offset")
        << QByteArray(R"({"version": 3, "sections": [{"map": )" + mapOf(R"("file": "")") + "}]}");
    QTest::newRow("a section elsewhere") << QByteArray(
        R"({"version": 3, "sections": [{"offset": {"line": 0, "column": 0}, "url": "b.map"}]})");
    QTest::newRow("a section in a section") << QByteArray(
        R"({"version": 3, "sections": [{"offset": {"line": 0, "column": 0}, "map": {"version": 3, "sections": []}}]})");
    QTest::newRow("sections out of order") << QByteArray(
        R"({"version": 3, "sections": [{"offset": {"line": 1, "column": 0}, "map": )" + mapOf(R"("file": "")")
        + R"(}, {"offset": {"line": 0, "column": 0}, "map": )" + mapOf(R"("file": "")") + "}]}");
    QTest::newRow("a section far below") << QByteArray(
        R"({"version": 3, "sections": [{"offset": {"line": 2000000000, "column": 0}, "map": )" + mapOf(R"("file": "")")
        + "}]}");
}

void tst_SourceMap::refused()
{
    QFETCH(const QByteArray, json);
    QVERIFY(!sourceMapFromJSON(json));
}

void tst_SourceMap::hugeMapsAreRefused()
{
    QVERIFY(!sourceMapFromJSON(mapOf(R"("mappings": ")" + QByteArray(4'000'001, ';') + '"')));
    QVERIFY(!sourceMapFromJSON(mapOf(R"("mappings": ")" + QByteArray(4'000'001 * 2, 'A').replace("AA", "A,") + '"')));
}

void tst_SourceMap::references_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("reference");
    QTest::newRow("at the end") << u"a();\n//# sourceMappingURL=a.js.map"_s << u"a.js.map"_s;
    QTest::newRow("in a line of the end") << u"a(); //# sourceMappingURL=a.js.map\r\n\n"_s << u"a.js.map"_s;
    QTest::newRow("the old sign") << u"//@ sourceMappingURL=a.js.map\n"_s << u"a.js.map"_s;
    QTest::newRow("before another comment") << u"//# sourceMappingURL=a.js.map\n//# sourceURL=b\n"_s << u"a.js.map"_s;
    QTest::newRow("the last one") << u"//# sourceMappingURL=a.map\nb();\n//# sourceMappingURL=b.map"_s << u"b.map"_s;
    QTest::newRow("before the brace of bare statements") << u"a();\n//# sourceMappingURL=a.map\n}"_s << u"a.map"_s;
    QTest::newRow("before more of the script") << u"//# sourceMappingURL=a.map\nb();"_s << QString();
    QTest::newRow("in a text") << u"a('//# sourceMappingURL=' + b);"_s << QString();
    QTest::newRow("with a blank in it") << u"//# sourceMappingURL=a b.map"_s << QString();
    QTest::newRow("none") << u"a();"_s << QString();
    QTest::newRow("nothing") << QString() << QString();
}

void tst_SourceMap::references()
{
    QFETCH(const QString, script);
    QTEST(sourceMapReference(script).toString(), "reference");
}

QTEST_GUILESS_MAIN(tst_SourceMap)
#include "tst_sourcemap.moc"
