#include "platform/JSON.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_JSONView : public QObject
{
    Q_OBJECT

private slots:
    void typedLookups_data();
    void typedLookups();
    void numberTexts_data();
    void numberTexts();
    void membersComeInOrder();
    void elementsComeInOrder();
    void scalarsHaveNeitherMembersNorElements_data();
    void scalarsHaveNeitherMembersNorElements();
    void utf8IsWhatStringIs_data();
    void utf8IsWhatStringIs();
};

void tst_JSONView::typedLookups_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("found");

    QTest::newRow("text") << R"("x")"_ba << u"string=x"_s;
    QTest::newRow("empty text is a text") << R"("")"_ba << u"string="_s;
    QTest::newRow("text of digits is no number") << R"("1")"_ba << u"string=1"_s;
    QTest::newRow("text true is no boolean") << R"("true")"_ba << u"string=true"_s;
    QTest::newRow("byte-order mark inside is a character") << "\"\xEF\xBB\xBFx\""_ba << u"string=\uFEFFx"_s;
    QTest::newRow("integer") << "7"_ba << u"number=7"_s;
    QTest::newRow("1 is no boolean") << "1"_ba << u"number=1"_s;
    QTest::newRow("0 is no boolean") << "0"_ba << u"number=0"_s;
    QTest::newRow("true is no number") << "true"_ba << u"boolean=true"_s;
    QTest::newRow("false is no number") << "false"_ba << u"boolean=false"_s;
    QTest::newRow("null is nothing") << "null"_ba << u""_s;
    QTest::newRow("array") << "[1, \"x\", true]"_ba << u"array"_s;
    QTest::newRow("object") << R"({"a": 1})"_ba << u"object"_s;
}

void tst_JSONView::typedLookups()
{
    QFETCH(QByteArray, text);
    JSONParser parser;
    const auto root = parser.parse(text);
    QVERIFY(root.isOk());
    const auto &view = root.value();

    QStringList found;
    if (view.string())
        found.append(u"string="_s + *view.string());
    if (view.numberText())
        found.append(u"number="_s + *view.numberText());
    if (view.boolean())
        found.append(u"boolean="_s + (*view.boolean() ? u"true"_s : u"false"_s));
    if (view.isArray())
        found.append(u"array"_s);
    if (view.isObject())
        found.append(u"object"_s);
    QTEST(found.join(u','), "found");
    QCOMPARE(view.utf8().has_value(), view.string().has_value());
}

void tst_JSONView::numberTexts_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<QString>("text");

    const auto row = [](const char *tag, const QByteArray &number, const QString &text) {
        QTest::newRow(tag) << number << text;
    };
    row("date", "20240101", u"20240101"_s);
    row("one", "1", u"1"_s);
    row("fraction", "1.5", u"1.5"_s);
    row("no zeros behind the point", "1.50", u"1.5"_s);
    row("no point behind a whole number", "2.0", u"2"_s);
    row("shortest that says the same", "0.1", u"0.1"_s);
    row("many decimals", "3.141592653589793", u"3.141592653589793"_s);
    row("negative", "-12", u"-12"_s);
    row("negative fraction", "-0.25", u"-0.25"_s);
    row("zero", "0", u"0"_s);
    row("negative zero", "-0", u"0"_s);
    row("exponent", "1e3", u"1000"_s);
    row("negative exponent", "1.5e-3", u"0.0015"_s);
    row("small without an exponent", "1e-7", u"0.0000001"_s);
    row("large without an exponent", "1e21", u"1000000000000000000000"_s);
    row("largest signed", "9223372036854775807", u"9223372036854775807"_s);
    row("smallest signed", "-9223372036854775808", u"-9223372036854775808"_s);
    row("largest unsigned", "18446744073709551615", u"18446744073709551615"_s);
    row("too long for 64 bits", "100000000000000000000", u"100000000000000000000"_s);
}

void tst_JSONView::numberTexts()
{
    QFETCH(QByteArray, number);
    JSONParser parser;
    const auto root = parser.parse(number);
    QVERIFY(root.isOk());
    QTEST(root.value().numberText().value_or(u"nil"_s), "text");
}

void tst_JSONView::membersComeInOrder()
{
    JSONParser parser;
    const auto root = parser.parse(R"({"b": 1, "a": "x", "": null, "b": 2, "\u0000": 3})");
    QVERIFY(root.isOk());

    QStringList keys;
    QVariantList values;
    root.value().forEachMember([&](std::string_view key, JSONView value) {
        keys.append(textFromUTF8(key));
        values.append(value.toVariant());
    });
    QCOMPARE(keys, (QStringList{u"b"_s, u"a"_s, u""_s, u"b"_s, QString(QChar(u'\0'))}));
    QCOMPARE(values, (QVariantList{1, u"x"_s, QVariant::fromValue(nullptr), 2, 3}));
    QCOMPARE(root.value().elementCount(), std::size_t(0));
}

void tst_JSONView::elementsComeInOrder()
{
    JSONParser parser;
    const auto root = parser.parse(R"(["b", [1, 2], {}, false])");
    QVERIFY(root.isOk());

    QVariantList values;
    root.value().forEachElement([&](JSONView value) { values.append(value.toVariant()); });
    QCOMPARE(values, (QVariantList{u"b"_s, QVariantList{1, 2}, QVariantMap(), false}));
    QCOMPARE(root.value().elementCount(), std::size_t(4));
    root.value().forEachMember([](std::string_view, JSONView) { QFAIL("an array has no members"); });
}

void tst_JSONView::scalarsHaveNeitherMembersNorElements_data()
{
    QTest::addColumn<QByteArray>("text");

    for (const char *text : {"1", "1.5", "\"text\"", "true", "null", "{}", "[]"})
        QTest::newRow(text) << QByteArray(text);
}

void tst_JSONView::scalarsHaveNeitherMembersNorElements()
{
    QFETCH(QByteArray, text);
    JSONParser parser;
    const auto root = parser.parse(text);
    QVERIFY(root.isOk());

    QCOMPARE(root.value().elementCount(), std::size_t(0));
    root.value().forEachMember([](std::string_view, JSONView) { QFAIL("no members expected"); });
    root.value().forEachElement([](JSONView) { QFAIL("no elements expected"); });
}

void tst_JSONView::utf8IsWhatStringIs_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QByteArray>("utf8");

    QTest::newRow("plain") << R"("text")"_ba
                           << "text"_ba;
    QTest::newRow("escapes") << R"("\u00e4\n")"_ba
                             << "\xC3\xA4\n"_ba;
    QTest::newRow("surrogate pair") << R"("\ud83d\ude00")"_ba
                                    << "\xF0\x9F\x98\x80"_ba;
    QTest::newRow("NUL inside") << R"("a\u0000b")"_ba << QByteArray("a\0b", 3);
    QTest::newRow("empty") << R"("")"_ba
                           << ""_ba;
}

void tst_JSONView::utf8IsWhatStringIs()
{
    QFETCH(QByteArray, json);
    QFETCH(QByteArray, utf8);
    JSONParser parser;
    const auto root = parser.parse(json);
    QVERIFY(root.isOk());

    QCOMPARE(QByteArray(root.value().utf8()->data(), qsizetype(root.value().utf8()->size())), utf8);
    QCOMPARE(*root.value().string(), QString::fromUtf8(utf8));
    QVERIFY(!root.value().string()->isNull());
}

QTEST_GUILESS_MAIN(tst_JSONView)
#include "tst_jsonview.moc"
