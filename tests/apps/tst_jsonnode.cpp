// A JSON text as validate reads it: values with their places, and what is wrong where.

#include "validation/JSONNode.h"
#include "validation/TextPosition.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_JSONNode : public QObject
{
    Q_OBJECT

private slots:
    void positions_data();
    void positions();
    void numbers_data();
    void numbers();
    void texts_data();
    void texts();
    void lastOfEqualKeysCounts();
    void depth();
};

void tst_JSONNode::positions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::newRow("the text's beginning") << u"x"_s << 1 << 1;
    QTest::newRow("one line") << u"[1, x]"_s << 1 << 5;
    QTest::newRow("line feeds") << u"[\n\nx]"_s << 3 << 1;
    QTest::newRow("carriage returns") << u"[\r\rx]"_s << 3 << 1;
    QTest::newRow("both count once") << u"[\r\n\r\n x]"_s << 3 << 2;
    QTest::newRow("a tab is one column") << u"[\t\tx]"_s << 1 << 4;
    QTest::newRow("UTF-16 counts") << u"[\"😀\", x]"_s << 1 << 8;
    QTest::newRow("behind an escape") << u"[\"\\ud83d\\ude00\", x]"_s << 1 << 18;
    QTest::newRow("a separator of Unicode is no line's end") << u"[\"\u2028\", x]"_s << 1 << 7;
    QTest::newRow("a byte-order mark is none of the text") << u"\uFEFF[]"_s << 1 << 1;
    QTest::newRow("the text's end") << u"[\n1,"_s << 2 << 3;
    QTest::newRow("behind the value") << u"[]\n []"_s << 2 << 2;
}

void tst_JSONNode::positions()
{
    QFETCH(QString, text);
    QFETCH(int, line);
    QFETCH(int, column);
    const auto reading = readJSON(text);
    const auto *const error = std::get_if<JSONSyntaxError>(&reading);
    QVERIFY(error);
    QCOMPARE(positionIn(text, error->offset), (TextPosition{line, column}));
}

void tst_JSONNode::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isNumber");
    for (const char *number : {"0", "-0", "10", "-1.5", "1e3", "1E+3", "1e-3", "0.0e0",
             "123456789012345678901234567890", "1.7976931348623157e308", "1e-400"})
        QTest::newRow(number) << QString::fromLatin1(number) << true;
    for (const char *other : {"+1", "01", "-01", ".5", "1.", "1.e3", "1e", "1e+", "-", "0x1", "1_0", "1e309", "-1e309",
             "NaN", "Infinity", "1a", "--1"})
        QTest::newRow(other) << QString::fromLatin1(other) << false;
}

void tst_JSONNode::numbers()
{
    QFETCH(QString, text);
    QFETCH(bool, isNumber);
    const auto reading = readJSON(u" [%1 ]"_s.arg(text));
    const auto *const root = std::get_if<JSONNode>(&reading);
    QCOMPARE(root != nullptr, isNumber);
    if (!root)
        return;
    QCOMPARE(root->offset, 1);
    QCOMPARE(root->elements.front().type, JSONNode::Type::Number);
    QCOMPARE(root->elements.front().text, text);
    QCOMPARE(root->elements.front().offset, 2);
}

void tst_JSONNode::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::optional<QString>>("expected");
    const auto row = [](const char *tag, const QString &text, const std::optional<QString> &expected) {
        QTest::newRow(tag) << text << expected;
    };
    row("empty", u"\"\""_s, u""_s);
    row("escapes", uR"("\"\\\/\b\f\n\r\t")"_s, u"\"\\/\b\f\n\r\t"_s);
    row("escaped characters", uR"("\u0041\u00e4\u00E4\u0000")"_s, u"Aää"_s + QChar(0));
    row("an escaped pair", uR"("\ud83d\ude00")"_s, u"😀"_s);
    row("a plain pair, a deleting character", u"\"😀\u007F\""_s, u"😀\u007F"_s);
    row("half a pair", uR"("\ud83d")"_s, std::nullopt);
    row("the other half", uR"("\ude00")"_s, std::nullopt);
    row("two first halves", uR"("\ud83d\ud83d")"_s, std::nullopt);
    row("a short escape", uR"("\u004")"_s, std::nullopt);
    row("an escape of capital U", uR"("\U0041")"_s, std::nullopt);
    row("a line's end", u"\"a\nb\""_s, std::nullopt);
    row("a control character", u"\"a\u0001\""_s, std::nullopt);
    row("apostrophes", u"'a'"_s, std::nullopt);
    row("no end", u"\"a"_s, std::nullopt);
    row("an escape at the end", u"\"a\\"_s, std::nullopt);
}

void tst_JSONNode::texts()
{
    QFETCH(QString, text);
    QFETCH(std::optional<QString>, expected);
    const auto reading = readJSON(text);
    const auto *const root = std::get_if<JSONNode>(&reading);
    QCOMPARE(root ? std::optional(root->text) : std::nullopt, expected);
    QVERIFY(!root || root->isString());
}

void tst_JSONNode::lastOfEqualKeysCounts()
{
    const auto reading = readJSON(u"{\"a\": \"b\", \"a\": \"c\", \"\\u0061\": 1, \"d\": null}");
    const auto &root = std::get<JSONNode>(reading);
    QCOMPARE(root.members.size(), std::size_t(4));
    QCOMPARE(root.member(u"a"), &root.members[2]);
    QCOMPARE(root.value(u"a", JSONNode::Type::String), nullptr);
    QCOMPARE(root.string(u"a"), std::nullopt);
    QCOMPARE(root.members[1].offset, 11);
    QCOMPARE(root.member(u"gone"), nullptr);
}

void tst_JSONNode::depth()
{
    const auto nested = [](qsizetype depth) { return QString(u"["_s.repeated(depth) + u"]"_s.repeated(depth)); };
    QVERIFY(std::holds_alternative<JSONNode>(readJSON(nested(1024))));
    const auto reading = readJSON(nested(1025));
    QCOMPARE(std::get<JSONSyntaxError>(reading).offset, 1024);
    QVERIFY(std::holds_alternative<JSONSyntaxError>(readJSON(QString(u"{\"a\":"_s.repeated(1000000)))));
}

QTEST_GUILESS_MAIN(tst_JSONNode)
#include "tst_jsonnode.moc"
