// Values as JSON, and back.

#include "platform/JSONText.h"
#include "platform/OrderedDictionary.h"

#include <QUrl>
#include <QtTest>

#include <limits>

using namespace Qt::StringLiterals;

class tst_JSONText : public QObject
{
    Q_OBJECT

private slots:
    void compact_data();
    void compact();
    void indented();
    void survivesBothWays_data();
    void survivesBothWays();
    void endlessReferencesOfOneValue();
};

void tst_JSONText::compact_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("text");

    const auto row = [](const char *tag, const QVariant &value, const QByteArray &text) {
        QTest::newRow(tag) << value << text;
    };
    row("nil", {}, "null");
    row("null", QVariant::fromValue(nullptr), "null");
    row("true", true, "true");
    row("integer", -5, "-5");
    row("64 bits", std::numeric_limits<qlonglong>::min(), "-9223372036854775808");
    row("unsigned 64 bits", std::numeric_limits<qulonglong>::max(), "18446744073709551615");
    row("fraction", 0.1, "0.1");
    row("whole", 3.0, "3");
    row("large", 1e300, "1e+300");
    row("not a number", std::numeric_limits<double>::quiet_NaN(), "null");
    row("infinity", std::numeric_limits<double>::infinity(), "null");
    row("text", u"ü \"\\/\b\f\n\r\t\x01\x7F"_s, "\"ü \\\"\\\\/\\u0008\\u000c\\n\\u000d\\t\\u0001\\u007f\"");
    row("NUL", u"a\0b"_s, "\"a\\u0000b\"");
    row("outside of the basic plane", u"\U0001F600"_s, "\"\xF0\x9F\x98\x80\"");
    row("half of a surrogate pair cannot be read back", u"a"_s + QChar(0xD800) + u"b"_s,
        "\"a\xEF\xBF\xBD"
        "b\"");
    row("other half of a surrogate pair in a key", QVariantMap{{QString(QChar(0xDC00)), 1}}, "{\"\xEF\xBF\xBD\":1}");
    row("empty list", QVariantList(), "[]");
    row("list", QVariantList{1, u"a"_s, QVariantList()}, "[1,\"a\",[]]");
    row("texts", QStringList{u"a"_s, u"b"_s}, "[\"a\",\"b\"]");
    row("empty dictionary", QVariantMap(), "{}");
    row("dictionary", QVariantMap{{u"b"_s, 1}, {u"a\""_s, QVariantMap()}}, "{\"a\\\"\":{},\"b\":1}");
    row("URL", QUrl(u"https://example.com/ü b"_s), "\"https://example.com/%C3%BC%20b\"");
    row("what JSON cannot hold", QVariant::fromValue(QSize(1, 2)), "null");
}

void tst_JSONText::compact()
{
    QFETCH(QVariant, value);
    QTEST(jsonFromVariant(value, JSONStyle::Compact), "text");
}

void tst_JSONText::indented()
{
    const QVariantMap value{{u"a"_s, QVariantList{1, QVariantMap{{u"b"_s, true}}, QVariantList()}}, {u"c"_s, {}}};
    QCOMPARE(jsonFromVariant(value, JSONStyle::Indented),
        "{\n  \"a\": [\n    1,\n    {\n      \"b\": true\n    },\n    []\n  ],\n  \"c\": null\n}\n"_ba);
}

void tst_JSONText::survivesBothWays_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const auto *text : {"null", "[1,-1,0,0.1,1e+300,5e-324,18446744073709551615]", "{\"\":{\"\":[]}}",
             "\"\xEF\xBB\xBFx\"", "[true,false,null,\"\\u0000\"]"})
        QTest::newRow(text) << QByteArray(text);
}

void tst_JSONText::survivesBothWays()
{
    QFETCH(QByteArray, text);
    const auto value = variantFromJSON(text);
    QVERIFY(value.isOk());
    QCOMPARE(jsonFromVariant(value.value(), JSONStyle::Compact), text);
}

void tst_JSONText::endlessReferencesOfOneValue()
{
    QVariant value = QVariantList{1};
    for (int i = 0; i < 10; ++i)
        value = QVariantList{value, value};
    QCOMPARE(jsonFromVariant(value, JSONStyle::Compact).count('1'), 1024);
}

QTEST_GUILESS_MAIN(tst_JSONText)
#include "tst_jsontext.moc"
