#include "platform/JSON.h"
#include "platform/JSONText.h"

#include <QtTest>

#include <sys/mman.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_JSONParser : public QObject
{
    Q_OBJECT

private slots:
    void values_data();
    void values();
    void malformed_data();
    void malformed();
    void byteOrderMark_data();
    void byteOrderMark();
    void nesting_data();
    void nesting();
    void veryDeepNestingIsAnErrorEverywhere_data();
    void veryDeepNestingIsAnErrorEverywhere();
    void longText();
    void lastOfEqualKeysWins();
    void parserServesManyTexts();
    void doesNotReadBehindTheText_data();
    void doesNotReadBehindTheText();
    void everyCutOffTextIsAnError();
};

void tst_JSONParser::values_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QVariant>("value");

    const auto row = [](const char *tag, const QByteArray &text, const QVariant &value) {
        QTest::newRow(tag) << text << value;
    };
    row("object", R"({"a": {"b": [1, "x"]}})",
        QVariantMap{{u"a"_s, QVariantMap{{u"b"_s, QVariantList{qlonglong(1), u"x"_s}}}}});
    row("empty object", "{}", QVariantMap());
    row("empty array", "[]", QVariantList());
    row("text alone", R"("x")", u"x"_s);
    row("empty text", R"("")", u""_s);
    row("true", "true", true);
    row("false", "false", false);
    row("null", "null", QVariant::fromValue(nullptr));
    row("blanks around", " \t\r\n[1]\n", QVariantList{qlonglong(1)});
    row("integer", "20240101", qlonglong(20240101));
    row("negative integer", "-7", qlonglong(-7));
    row("largest signed", "9223372036854775807", std::numeric_limits<qlonglong>::max());
    row("smallest signed", "-9223372036854775808", std::numeric_limits<qlonglong>::min());
    row("above signed", "9223372036854775808", qulonglong(9223372036854775808ULL));
    row("largest unsigned", "18446744073709551615", std::numeric_limits<qulonglong>::max());
    row("above unsigned", "18446744073709551616", 18446744073709551616.0);
    row("below signed", "-9223372036854775809", -9223372036854775808.0);
    row("fraction", "1.5", 1.5);
    row("whole number with a point", "2.0", 2.0);
    row("exponent", "1e3", 1000.0);
    row("exponents of both signs", "[1E+2, 5e-1]", QVariantList{100.0, 0.5});
    row("largest double", "1.7976931348623157e308", std::numeric_limits<double>::max());
    row("too small for a double", "1e-999", 0.0);
    row("escapes", R"("\"\\\/\b\f\n\r\t\u00e4")", u"\"\\/\b\f\n\r\t\u00E4"_s);
    row("surrogate pair", R"("\ud83d\ude00")", u"\U0001F600"_s);
    row("escaped NUL", R"("a\u0000b")", QString(u"a\0b"_s));
    row("UTF-8", "\"\xC3\xA4\xF0\x9F\x98\x80\"", u"\u00E4\U0001F600"_s);
    row("DEL", "\"\x7F\"", QString(QChar(0x7F)));
    row("numbers inside a text stay text", R"(["12345678901234567890123", "\"99999999999999999999"])",
        QVariantList{u"12345678901234567890123"_s, u"\"99999999999999999999"_s});
    row("long number beside such texts", R"([12345678901234567890123, "1\\", "99999999999999999999", -1e-5])",
        QVariantList{12345678901234567890123.0, u"1\\"_s, u"99999999999999999999"_s, -1e-5});
    row("long number leaves the others as they are",
        R"([100000000000000000000, 9223372036854775807, 0.12345678901234567890123, 1e-0000000000000000000003, true])",
        QVariantList{1e20, std::numeric_limits<qlonglong>::max(), 0.12345678901234568, 1e-3, true});
    row("number of many digits", QByteArray(300, '9'), 1e300);
}

void tst_JSONParser::values()
{
    QFETCH(QByteArray, text);
    QFETCH(QVariant, value);
    const auto result = variantFromJSON(text);

    QVERIFY2(result.isOk(), result.isOk() ? "" : qPrintable(result.error().localizedDescription));
    QCOMPARE(result.value(), value);
    QCOMPARE(result.value().typeId(), value.typeId());
    if (value.typeId() == QMetaType::QVariantList) {
        const auto elements = result.value().toList();
        const auto expected = value.toList();
        for (qsizetype i = 0; i < expected.size(); ++i)
            QCOMPARE(elements[i].typeId(), expected[i].typeId());
    }
}

void tst_JSONParser::malformed_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("only blanks") << " \n"_ba;
    QTest::newRow("only a byte-order mark") << "\xEF\xBB\xBF"_ba;
    QTest::newRow("byte-order mark inside") << "[\xEF\xBB\xBF]"_ba;
    QTest::newRow("two byte-order marks") << "\xEF\xBB\xBF\xEF\xBB\xBF[]"_ba;
    QTest::newRow("UTF-16") << QByteArray("\xFF\xFE[\0]\0", 6);
    QTest::newRow("Latin-1 in a text") << "[\"caf\xE9\"]"_ba;
    QTest::newRow("Latin-1 in a key") << "{\"caf\xE9\": 1}"_ba;
    QTest::newRow("surrogate in UTF-8") << "\"\xED\xA0\x80\""_ba;
    QTest::newRow("overlong UTF-8") << "\"\xC0\x80\""_ba;
    QTest::newRow("open object") << R"({"a": 1)"_ba;
    QTest::newRow("open text") << R"(["a)"_ba;
    QTest::newRow("wrong bracket") << "[1}"_ba;
    QTest::newRow("comma at the end") << "[1,]"_ba;
    QTest::newRow("no comma") << "[1 2]"_ba;
    QTest::newRow("no colon") << R"({"a" 1})"_ba;
    QTest::newRow("key without quotation marks") << "{a: 1}"_ba;
    QTest::newRow("apostrophes") << "['a']"_ba;
    QTest::newRow("comment") << "[1] // one"_ba;
    QTest::newRow("two values") << "{} {}"_ba;
    QTest::newRow("NUL behind") << QByteArray("[]\0", 3);
    QTest::newRow("line feed in a text") << "\"a\nb\""_ba;
    QTest::newRow("unknown escape") << R"("\x41")"_ba;
    QTest::newRow("short escape") << R"("\u12")"_ba;
    QTest::newRow("word in capitals") << "True"_ba;
    QTest::newRow("longer word") << "nullx"_ba;
    QTest::newRow("leading zero") << "[01]"_ba;
    QTest::newRow("leading zero of a long number") << "[012345678901234567890123]"_ba;
    QTest::newRow("plus sign") << "[+1]"_ba;
    QTest::newRow("no digit behind the point") << "[1.]"_ba;
    QTest::newRow("no digit before the point") << "[.5]"_ba;
    QTest::newRow("no digit in the exponent") << "[1e]"_ba;
    QTest::newRow("minus sign alone") << "[-]"_ba;
    QTest::newRow("hexadecimal") << "[0x10]"_ba;
    QTest::newRow("NaN") << "[NaN]"_ba;
    QTest::newRow("too large for a double") << "[1e999]"_ba;
    QTest::newRow("too many digits for a double") << QByteArray(400, '9');
}

void tst_JSONParser::malformed()
{
    QFETCH(QByteArray, text);
    const auto result = variantFromJSON(text);

    QVERIFY(!result.isOk());
    QCOMPARE(result.error().domain, u"json"_s);
    QVERIFY(result.error().code != 0);
    QVERIFY(!result.error().localizedDescription.isEmpty());
}

void tst_JSONParser::byteOrderMark_data()
{
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("object") << R"({"a":1})"_ba;
    QTest::newRow("with a long number") << R"({"a":1,"b":123456789012345678901234})"_ba;
    QTest::newRow("blanks behind the mark") << R"(  {"a":1} )"_ba;
}

void tst_JSONParser::byteOrderMark()
{
    QFETCH(QByteArray, text);
    const auto plain = variantFromJSON(text);
    const auto marked = variantFromJSON("\xEF\xBB\xBF" + text);

    QVERIFY(plain.isOk());
    QVERIFY(marked.isOk());
    QCOMPARE(marked.value(), plain.value());
    QCOMPARE(marked.value().toMap().value(u"a"_s), QVariant(1));
}

void tst_JSONParser::nesting_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("isOk");

    QTest::newRow("500 deep") << 500 << true;
    QTest::newRow("1,023 deep") << 1023 << true;
    QTest::newRow("1,025 deep") << 1025 << false;
    QTest::newRow("100,000 deep") << 100'000 << false;
    QTest::newRow("5,000,000 deep") << 5'000'000 << false;
}

void tst_JSONParser::nesting()
{
    QFETCH(int, depth);
    QFETCH(bool, isOk);
    const auto arrays = variantFromJSON(QByteArray(depth, '[') + QByteArray(depth, ']'));
    const auto objects = variantFromJSON(QByteArray(R"({"a":)").repeated(depth) + '1' + QByteArray(depth, '}'));

    QCOMPARE(arrays.isOk(), isOk);
    QCOMPARE(objects.isOk(), isOk);
}

void tst_JSONParser::veryDeepNestingIsAnErrorEverywhere_data()
{
    QTest::addColumn<QByteArray>("text");

    const QByteArray open(100'000, '[');
    QTest::newRow("never closed") << open;
    QTest::newRow("in a key's value") << "{\"version\": \"1\", \"menu\": " + open + QByteArray(100'000, ']') + '}';
    QTest::newRow("mixed") << QByteArray(R"([{"a":)").repeated(100'000);
    QTest::newRow("behind a long number") << "[123456789012345678901234," + open;
    QTest::newRow("only closed") << QByteArray(100'000, ']');
    QTest::newRow("blanks between") << QByteArray("[ \n").repeated(100'000);
}

void tst_JSONParser::veryDeepNestingIsAnErrorEverywhere()
{
    QFETCH(QByteArray, text);
    QVERIFY(!variantFromJSON(text).isOk());
}

void tst_JSONParser::longText()
{
    constexpr qsizetype length = 16 * 1024 * 1024;
    const auto result = variantFromJSON('"' + QByteArray(length, 'x') + '"');
    QVERIFY(result.isOk());
    QCOMPARE(result.value().toString().size(), length);

    const auto numbers = variantFromJSON('[' + QByteArray("1,").repeated(1'000'000) + "123456789012345678901234]");
    QVERIFY(numbers.isOk());
    QCOMPARE(numbers.value().toList().size(), 1'000'001);
    QCOMPARE(numbers.value().toList().constFirst(), QVariant(1));
}

void tst_JSONParser::lastOfEqualKeysWins()
{
    const auto result = variantFromJSON(R"({"a": 1, "b": 2, "a": "three", "\u0062": [4]})");
    QVERIFY(result.isOk());
    QCOMPARE(result.value().toMap(), (QVariantMap{{u"a"_s, u"three"_s}, {u"b"_s, QVariantList{4}}}));
}

void tst_JSONParser::parserServesManyTexts()
{
    JSONParser parser;
    QVERIFY(parser.parse("[1]").isOk());
    QVERIFY(!parser.parse("[1").isOk());
    QVERIFY(!parser.parse(QByteArray(100'000, '[')).isOk());
    QVERIFY(!parser.parse("\"\xFF\"").isOk());
    QVERIFY(!parser.parse({}).isOk());

    const auto large = parser.parse('[' + QByteArray("\"text\",").repeated(10'000) + "0]");
    QVERIFY(large.isOk());
    QCOMPARE(large.value().elementCount(), std::size_t(10'001));
    const auto small = parser.parse(R"({"a": "b"})");
    QVERIFY(small.isOk());
    QCOMPARE(small.value().toVariant(), QVariant(QVariantMap{{u"a"_s, u"b"_s}}));
}

void tst_JSONParser::doesNotReadBehindTheText_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isOk");

    QTest::newRow("text") << R"(["abc"])"_ba << true;
    QTest::newRow("text alone") << R"("abc")"_ba << true;
    QTest::newRow("number alone") << "12345"_ba << true;
    QTest::newRow("long number alone") << "123456789012345678901234"_ba << true;
    QTest::newRow("word alone") << "true"_ba << true;
    QTest::newRow("open text") << R"(["abc)"_ba << false;
    QTest::newRow("cut-off escape") << R"(["\u12)"_ba << false;
    QTest::newRow("backslash at the end") << R"("\)"_ba << false;
    QTest::newRow("cut-off word") << "tru"_ba << false;
    QTest::newRow("cut-off UTF-8") << "\"\xF0\x9F"_ba << false;
}

/// The text ends where memory ends; whoever reads on is stopped by the system.
void tst_JSONParser::doesNotReadBehindTheText()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, isOk);
    const auto page = std::size_t(::sysconf(_SC_PAGESIZE));
    auto *const memory =
        static_cast<char *>(::mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    QVERIFY(memory != MAP_FAILED);
    QCOMPARE(::mprotect(memory + page, page, PROT_NONE), 0);
    auto *const start = memory + page - text.size();
    std::copy(text.begin(), text.end(), start);

    const auto result = variantFromJSON(QByteArray::fromRawData(start, text.size()));
    QCOMPARE(::munmap(memory, 2 * page), 0);
    QCOMPARE(result.isOk(), isOk);
    if (isOk)
        QCOMPARE(result.value(), variantFromJSON(text).value());
}

void tst_JSONParser::everyCutOffTextIsAnError()
{
    const auto text =
        R"({"name": "\u00e4\n", "numbers": [1, -2.5e+3, 123456789012345678901234], "ok": true, "no": null})"_ba;
    QVERIFY(variantFromJSON(text).isOk());
    for (qsizetype length = 0; length < text.size(); ++length)
        QVERIFY2(!variantFromJSON(text.left(length)).isOk(), text.left(length).constData());
}

QTEST_GUILESS_MAIN(tst_JSONParser)
#include "tst_jsonparser.moc"
