// Values as property lists, and back.

#include "platform/PropertyList.h"
#include "platform/PropertyListBounds.h"

#include <QDateTime>
#include <QtEndian>
#include <QtTest>
#include <plist/plist.h>

#include <limits>

using namespace Qt::StringLiterals;

class tst_PropertyList : public QObject
{
    Q_OBJECT

private slots:
    void survivesBothWays_data();
    void survivesBothWays();
    void binaryFormIsRead();
    void whatOthersWrite_data();
    void whatOthersWrite();
    void whatCannotBeWritten_data();
    void whatCannotBeWritten();
    void whatIsNoPropertyList_data();
    void whatIsNoPropertyList();
    void hostileForms_data();
    void hostileForms();
    void aSharedPartIsNoHostility();
};

namespace {

QByteArray document(const QByteArray &content)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist>\n"
           "<plist version=\"1.0\">"
        + content + "</plist>\n";
}

QByteArray inBinary(const QByteArray &xml)
{
    plist_t list = nullptr;
    ::plist_from_xml(xml.constData(), uint32_t(xml.size()), &list);
    char *bytes = nullptr;
    uint32_t length = 0;
    ::plist_to_bin(list, &bytes, &length);
    const QByteArray copy(bytes, qsizetype(length));
    ::plist_to_bin_free(bytes);
    ::plist_free(list);
    return copy;
}

/// A binary list of arrays: each refers to the given objects. References and offsets have four bytes.
QByteArray binaryArrays(const QList<QList<quint32>> &arrays)
{
    QByteArray bytes = "bplist00";
    QByteArray table;
    const auto number = [](quint32 value) {
        QByteArray text(4, '\0');
        qToBigEndian(value, text.data());
        return text;
    };
    for (const auto &references : arrays) {
        table += number(quint32(bytes.size()));
        bytes += char(0xAF);
        bytes += char(0x12); // a whole number of four bytes: the count
        bytes += number(quint32(references.size()));
        for (const auto reference : references)
            bytes += number(reference);
    }
    const auto tableOffset = quint32(bytes.size());
    bytes += table + QByteArray(6, '\0') + char(4) + char(4) + QByteArray(4, '\0') + number(quint32(arrays.size()))
        + QByteArray(8, '\0') + QByteArray(4, '\0') + number(tableOffset);
    return bytes;
}

} // namespace

void tst_PropertyList::survivesBothWays_data()
{
    QTest::addColumn<QVariant>("value");

    const auto row = [](const char *tag, const QVariant &value) { QTest::newRow(tag) << value; };
    row("true", true);
    row("false", false);
    row("whole number", 5LL);
    row("negative number", -5LL);
    row("smallest number", std::numeric_limits<qlonglong>::min());
    row("largest number", std::numeric_limits<qlonglong>::max());
    row("fraction", 0.25);
    row("text", u"Tidy layers"_s);
    row("empty text", u""_s);
    row("markup in a text", u"</string><true/> & \"quotes\" <![CDATA[ ]]>"_s);
    row("white space of a text", u" \n\t x \n"_s);
    row("text beyond ASCII", u"ü \U0001F600"_s);
    row("bytes", QByteArray("a\0b\xFF", 4));
    row("date", QDateTime(QDate(2026, 11, 21), QTime(8, 30, 15), Qt::UTC));
    row("date before the epoch", QDateTime(QDate(1999, 12, 31), QTime(23, 59, 59), Qt::UTC));
    row("empty array", QVariantList());
    row("array", QVariantList{1LL, u"a"_s, QVariantMap()});
    row("empty dictionary", QVariantMap());
    row("dictionary", QVariantMap{{u"a"_s, 1LL}, {u"b"_s, QVariantMap{{u"c"_s, true}}}});
    row("markup in a key", QVariantMap{{u"</key> & <dict>"_s, true}});
    row("empty key", QVariantMap{{u""_s, true}});
    row("white space in a key", QVariantMap{{u"a\t\n\r"_s, true}});
    row("white space of a key", QVariantMap{{u" a\n"_s, true}});
}

void tst_PropertyList::survivesBothWays()
{
    QFETCH(QVariant, value);

    const auto written = propertyListFromVariant(value);
    QVERIFY(written);
    QVERIFY(written.value().startsWith("<?xml"));
    const auto read = variantFromPropertyList(written.value());
    QVERIFY(read);
    QCOMPARE(read.value(), value);
}

void tst_PropertyList::binaryFormIsRead()
{
    const QVariantMap value{{u"com.example.tidy"_s, QVariantMap{{u"disabled"_s, true}, {u"seen"_s, u"1.0"_s}}},
        {u"numbers"_s, QVariantList{1LL, -1LL, 0.5}}};
    const auto bytes = inBinary(propertyListFromVariant(value).value());
    QVERIFY(bytes.startsWith("bplist00"));
    const auto read = variantFromPropertyList(bytes);
    QVERIFY(read);
    QCOMPARE(read.value(), QVariant(value));
}

void tst_PropertyList::whatOthersWrite_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QVariant>("value");

    const auto row = [](const char *tag, const QByteArray &bytes, const QVariant &value) {
        QTest::newRow(tag) << bytes << value;
    };
    row("empty dictionary", document("<dict/>"), QVariantMap());
    row("comments", document("<!-- <dict> --><dict><!-- a --><key>a</key><true/></dict>"), QVariantMap{{u"a"_s, true}});
    row("character data", document("<dict><key>a</key><string><![CDATA[</dict><b>]]></string></dict>"),
        QVariantMap{{u"a"_s, u"</dict><b>"_s}});
    row("entities", document("<string>&lt;&amp;&#65;</string>"), u"<&A"_s);
    row("without a document type", "<plist version=\"1.0\"><dict><key>a</key><true/></dict></plist>",
        QVariantMap{{u"a"_s, true}});
    row("the later of two equal keys",
        document("<dict><key>a</key><integer>1</integer><key>a</key><integer>2</integer></dict>"),
        QVariantMap{{u"a"_s, 2LL}});
}

void tst_PropertyList::whatOthersWrite()
{
    QFETCH(QByteArray, bytes);
    const auto read = variantFromPropertyList(bytes);
    QVERIFY(read);
    QTEST(read.value(), "value");
}

void tst_PropertyList::whatCannotBeWritten_data()
{
    QTest::addColumn<QVariant>("value");

    QTest::newRow("nil") << QVariant();
    QTest::newRow("null") << QVariant::fromValue(nullptr);
    QTest::newRow("nil in a dictionary") << QVariant(QVariantMap{{u"a"_s, QVariant()}});
    QTest::newRow("nil in an array") << QVariant(QVariantList{QVariant()});
    QTest::newRow("zero character in a text") << QVariant(u"a\0b"_s);
    QTest::newRow("zero character in a key") << QVariant(QVariantMap{{u"a\0b"_s, true}});
    QTest::newRow("control character in a text") << QVariant(u"a\x1F"_s);
    QTest::newRow("half of a surrogate pair in a key") << QVariant(QVariantMap{{QString(QChar(0xDC00)), true}});
    QTest::newRow("date without a date") << QVariant(QDateTime());
    QTest::newRow("date far away") << QVariant(QDateTime(QDate(3000, 1, 1), QTime(0, 0), Qt::UTC));
    QTest::newRow("value of another kind") << QVariant(QSize(1, 2));
}

void tst_PropertyList::whatCannotBeWritten()
{
    QFETCH(QVariant, value);
    const auto written = propertyListFromVariant(value);
    QVERIFY(!written);
    QVERIFY(!written.error().localizedDescription.isEmpty());
}

void tst_PropertyList::whatIsNoPropertyList_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("text") << QByteArray("plug-ins");
    QTest::newRow("JSON") << QByteArray("{\"a\": 1}");
    QTest::newRow("other markup") << QByteArray("<html><body/></html>");
    QTest::newRow("cut off") << document("<dict><key>a</key><tr").left(190);
    QTest::newRow("key without a value") << document("<dict><key>a</key></dict>");
    QTest::newRow("binary head alone") << QByteArray("bplist00");
    QTest::newRow("binary cut off") << inBinary(document("<dict><key>a</key><true/></dict>")).chopped(1);
    QTest::newRow("binary noise") << QByteArray("bplist00") + QByteArray(200, '\xD3');
    QTest::newRow("zeros") << QByteArray(500, '\0');
    QTest::newRow("list in another old form") << QByteArray("{ a = b; }");
}

void tst_PropertyList::whatIsNoPropertyList()
{
    QFETCH(QByteArray, bytes);
    const auto read = variantFromPropertyList(bytes);
    // What the parser makes of half a document is its business, as long as it makes no dictionary with content.
    QVERIFY(!read || read.value().toMap().isEmpty());
}

void tst_PropertyList::hostileForms_data()
{
    QTest::addColumn<QByteArray>("bytes");

    constexpr int levels = 200'000;
    QTest::newRow("dictionaries nested deeply") << document(QByteArray("<dict><key>a</key>").repeated(levels));
    QTest::newRow("arrays nested deeply") << document(QByteArray("<array>").repeated(levels));
    QTest::newRow("ends hidden in comments") << document(QByteArray("<array><!--</array>-->").repeated(levels));
    QTest::newRow("ends hidden in character data")
        << document(QByteArray("<array><string><![CDATA[</array>]]></string>").repeated(levels));
    QTest::newRow("ends hidden in instructions") << document(QByteArray("<array><?a </array>?>").repeated(levels));

    QList<QList<quint32>> chain;
    for (quint32 i = 1; i < levels; ++i)
        chain.append(QList<quint32>{i});
    chain.append(QList<quint32>());
    QTest::newRow("binary nested deeply") << binaryArrays(chain);

    QList<QList<quint32>> doubling;
    for (quint32 i = 1; i < 40; ++i)
        doubling.append(QList<quint32>{i, i});
    doubling.append(QList<quint32>());
    QTest::newRow("binary that doubles on every level") << binaryArrays(doubling);

    QList<quint32> everyObject;
    for (quint32 i = 1; i < 3000; ++i)
        everyObject.append(i);
    QList<QList<quint32>> wide{everyObject};
    for (int i = 1; i < 3000; ++i)
        wide.append(QList<quint32>(3000, 2999));
    wide.last().clear();
    QTest::newRow("binary with the same in all places") << binaryArrays(wide);
    QTest::newRow("a zero between the tags") << document(QByteArray("<string>a\0b</string>", 20));
    QTest::newRow("binary text with a zero")
        << inBinary(document("<string>abc</string>")).replace("abc", QByteArray("a\0c", 3));
    QTest::newRow("binary key with a zero")
        << inBinary(document("<dict><key>abc</key><true/></dict>")).replace("abc", QByteArray("a\0c", 3));
    QTest::newRow("binary wide text with a zero")
        << inBinary(document("<string>aü</string>")).replace(QByteArray("\0a", 2), QByteArray("\0\0", 2));
    QTest::newRow("binary that holds itself") << binaryArrays({{1}, {0}});
}

void tst_PropertyList::hostileForms()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!isPropertyListWithinBounds(bytes));
    QVERIFY(!variantFromPropertyList(bytes));
}

void tst_PropertyList::aSharedPartIsNoHostility()
{
    const auto bytes = binaryArrays({{1, 1, 2}, {2}, {}});
    QVERIFY(isPropertyListWithinBounds(bytes));
    const auto read = variantFromPropertyList(bytes);
    QVERIFY(read);
    const QVariant empty = QVariantList();
    const QVariant one = QVariantList({empty});
    QCOMPARE(read.value(), QVariant(QVariantList({one, one, empty})));
}

QTEST_APPLESS_MAIN(tst_PropertyList)
#include "tst_propertylist.moc"
