// What an appcast's items say about their archives.

#include "updates/FeedLimits.h"
#include "updates/SparkleAppcast.h"

#include <QtTest>

using namespace Qt::StringLiterals;

using Candidates = std::vector<UpdateCandidate>;
Q_DECLARE_METATYPE(Candidates)

class tst_SparkleAppcast : public QObject
{
    Q_OBJECT

private slots:
    void items_data();
    void items();
    void documents_data();
    void documents();
    void systems_data();
    void systems();
    void encodings_data();
    void encodings();
    void aBadItemCostsNoOther_data();
    void aBadItemCostsNoOther();
    void refused_data();
    void refused();
};

namespace {

/// The text with the namespace in place of "NAMESPACE".
QByteArray withNamespace(QByteArray text)
{
    return text.replace("NAMESPACE", "http://www.andymatuschak.org/xml-namespaces/sparkle");
}

QByteArray channel(const QByteArray &content)
{
    return withNamespace("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                         "<rss version=\"2.0\" xmlns:sparkle=\"NAMESPACE\"><channel><title>Tidy</title>")
        + content + "</channel></rss>";
}

QByteArray item(const QByteArray &content)
{
    return channel("<item>" + content + "</item>");
}

const Candidates tidy{{u"1.2"_s, u"tidy.zip"_s}};

} // namespace

void tst_SparkleAppcast::items_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<Candidates>("candidates");

    const auto row = [](const char *tag, const QByteArray &xml, const Candidates &candidates) {
        QTest::newRow(tag) << xml << candidates;
    };
    row("version of the enclosure", item(R"(<enclosure url="tidy.zip" sparkle:version="1.2"/>)"), tidy);
    row("version as an element", item(R"(<sparkle:version>1.2</sparkle:version><enclosure url="tidy.zip"/>)"), tidy);
    row("version behind the enclosure", item(R"(<enclosure url="tidy.zip"/><sparkle:version>1.2</sparkle:version>)"),
        tidy);
    row("version of the item", channel(R"(<item sparkle:version="1.2"><enclosure url="tidy.zip"/></item>)"), tidy);
    row("enclosure's version before the item's",
        item(R"(<sparkle:version>7</sparkle:version><enclosure url="tidy.zip" sparkle:version="1.2"/>)"), tidy);
    row("short version of the enclosure", item(R"(<enclosure url="tidy.zip" sparkle:shortVersionString="1.2"/>)"),
        tidy);
    row("short version as an element",
        item(R"(<sparkle:shortVersionString>1.2</sparkle:shortVersionString><enclosure url="tidy.zip"/>)"), tidy);
    row("short version of the item",
        channel(R"(<item sparkle:shortVersionString="1.2"><enclosure url="tidy.zip"/></item>)"), tidy);
    row("version before the short version",
        item(R"(<enclosure url="tidy.zip" sparkle:shortVersionString="7" sparkle:version="1.2"/>)"), tidy);
    row("item's version before the enclosure's short version",
        item(R"(<enclosure url="tidy.zip" sparkle:shortVersionString="7"/><sparkle:version>1.2</sparkle:version>)"),
        tidy);
    row("short version in place of an empty version",
        item(R"(<enclosure url="tidy.zip" sparkle:shortVersionString="1.2" sparkle:version=" "/>)"), tidy);
    row("layout around an element's version",
        item("<sparkle:version>\n    1.2\n  </sparkle:version><enclosure url=\"tidy.zip\"/>"), tidy);
    row("an attribute's version as it is", item(R"(<enclosure url="tidy.zip" sparkle:version=" 1.2 "/>)"),
        {{u" 1.2 "_s, u"tidy.zip"_s}});
    row("character data", item(R"(<sparkle:version><![CDATA[1.]]>2</sparkle:version><enclosure url="tidy.zip"/>)"),
        tidy);
    row("comment in a version", item(R"(<sparkle:version>1<!-- . -->.2</sparkle:version><enclosure url="tidy.zip"/>)"),
        tidy);
    row("element in a version", item(R"(<sparkle:version>1<b>0</b>.2</sparkle:version><enclosure url="tidy.zip"/>)"),
        tidy);
    row("predefined entities", item(R"(<enclosure url="get?a=1&amp;b=&#50;" sparkle:version="1&lt;2"/>)"),
        {{u"1<2"_s, u"get?a=1&b=2"_s}});
    row("last of two versions of an item",
        item(
            R"(<sparkle:version>7</sparkle:version><sparkle:version>1.2</sparkle:version><enclosure url="tidy.zip"/>)"),
        tidy);
    row("two enclosures", item(R"(<enclosure url="a" sparkle:version="1"/><enclosure url="b" sparkle:version="2"/>)"),
        {{u"1"_s, u"a"_s}, {u"2"_s, u"b"_s}});
    row("two items in their order",
        channel(R"(<item><enclosure url="b" sparkle:version="2"/></item>)"
                R"(<item><enclosure url="a" sparkle:version="1"/></item>)"),
        {{u"2"_s, u"b"_s}, {u"1"_s, u"a"_s}});
    row("what else an item says",
        item(R"(<title>7</title><guid>7</guid><pubDate>7</pubDate><description><![CDATA[<b>7]]></description>)"
             R"(<sparkle:minimumSystemVersion>7</sparkle:minimumSystemVersion><sparkle:criticalUpdate/>)"
             R"(<enclosure url="tidy.zip" length="7" type="application/octet-stream" sparkle:edSignature="7")"
             R"( sparkle:version="1.2"/>)"),
        tidy);
}

void tst_SparkleAppcast::items()
{
    QFETCH(QByteArray, xml);
    QFETCH(Candidates, candidates);

    const auto read = readSparkleAppcast(xml);
    QVERIFY(read);
    QCOMPARE(*read, candidates);
}

void tst_SparkleAppcast::documents_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<Candidates>("candidates");

    const auto row = [](const char *tag, const QByteArray &xml, const Candidates &candidates) {
        QTest::newRow(tag) << withNamespace(xml) << candidates;
    };
    row("any prefix",
        R"(<rss xmlns:s="NAMESPACE"><channel><item><enclosure url="tidy.zip" s:version="1.2"/></item></channel></rss>)",
        tidy);
    row("prefix of the element",
        R"(<rss><channel><item><v xmlns="NAMESPACE"/><version xmlns="NAMESPACE">1.2</version>)"
        R"(<enclosure url="tidy.zip"/></item></channel></rss>)",
        tidy);
    row("familiar prefix of another namespace",
        R"(<rss xmlns:sparkle="https://example.com/"><channel><item><enclosure url="a" sparkle:version="1.2"/></item>)"
        R"(</channel></rss>)",
        {});
    row("attribute without a namespace",
        R"(<rss><channel><item><version>1</version><enclosure url="a" version="1.2"/></item></channel></rss>)", {});
    row("namespace of the whole feed",
        R"(<rss xmlns="https://example.com/rss" xmlns:s="NAMESPACE"><channel><item>)"
        R"(<enclosure url="tidy.zip" s:version="1.2"/></item></channel></rss>)",
        tidy);
    row("items and enclosures of other namespaces",
        R"(<rss xmlns:s="NAMESPACE" xmlns:m="https://example.com/media"><channel><m:item><enclosure url="a" s:version="7"/>)"
        R"(</m:item><item s:version="7"><m:enclosure url="b"/><s:enclosure url="c"/></item></channel></rss>)",
        {});
    row("two channels",
        R"(<rss xmlns:s="NAMESPACE"><channel/><channel><item><enclosure url="tidy.zip" s:version="1.2"/></item></channel>)"
        R"(</rss>)",
        tidy);
    row("item in an item",
        R"(<rss xmlns:s="NAMESPACE"><channel><item><item><enclosure url="a" s:version="7"/></item></item></channel></rss>)",
        {});
    row("item beside the channel",
        R"(<rss xmlns:s="NAMESPACE"><channel/><item><enclosure url="a" s:version="7"/></item></rss>)", {});
    row("another kind of document",
        R"(<feed xmlns:s="NAMESPACE"><channel><item><enclosure url="a" s:version="7"/></item></channel></feed>)", {});
    row("a server's page", "<html><head><title>404</title></head><body><p>Not found</p></body></html>", {});
    row("document type of somebody else's",
        R"(<!DOCTYPE rss PUBLIC "-//Example//DTD RSS 0.91//EN" "https://example.com/rss-0.91.dtd">)"
        R"(<rss xmlns:s="NAMESPACE"><channel><item><enclosure url="tidy.zip" s:version="1.2"/></item></channel></rss>)",
        tidy);
    row("comments and instructions around it",
        R"(<?xml version="1.0"?><!-- <a --><?style "a ?><rss/><!-- ' --><?end?>)", {});
    row("empty channel", "<rss><channel/></rss>", {});
}

void tst_SparkleAppcast::documents()
{
    items();
}

void tst_SparkleAppcast::systems_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isOffered");

    const auto row = [](const char *tag, const QByteArray &content, bool isOffered) {
        QTest::newRow(tag) << content << isOffered;
    };
    const auto ofEnclosure = [](const QByteArray &system) {
        return R"(<enclosure url="tidy.zip" sparkle:version="1.2" sparkle:os=")" + system + R"("/>)";
    };
    const QByteArray enclosure = R"(<enclosure url="tidy.zip" sparkle:version="1.2"/>)";
    row("no system", enclosure, true);
    row("empty system", ofEnclosure(""), true);
    row("the format's own system", ofEnclosure("macos"), true);
    row("the format's own system in capitals", ofEnclosure(" macOS "), true);
    row("another system", ofEnclosure("windows"), false);
    row("another system with its processor", ofEnclosure("windows-x64"), false);
    row("a system nobody knows", ofEnclosure("toaster"), false);
    row("another system of the item", "<sparkle:os>linux</sparkle:os>" + enclosure, false);
    row("enclosure's system before the item's", "<sparkle:os>linux</sparkle:os>" + ofEnclosure("macos"), true);
    row("default channel", "<sparkle:channel> </sparkle:channel>" + enclosure, true);
    row("channel that one has to ask for", "<sparkle:channel>beta</sparkle:channel>" + enclosure, false);
    row("channel behind the enclosure", enclosure + "<sparkle:channel>beta</sparkle:channel>", false);
    row("delta", R"(<enclosure url="tidy.zip" sparkle:version="1.2" sparkle:deltaFrom="1.1"/>)", false);
    row("delta in its list", "<sparkle:deltas>" + enclosure + "</sparkle:deltas>", false);
    row("delta beside the archive",
        R"(<sparkle:deltas><enclosure url="d" sparkle:version="1.2" sparkle:deltaFrom="1.1"/></sparkle:deltas>)"
            + enclosure,
        true);
    row("link only", "<sparkle:version>1.2</sparkle:version><link>https://example.com/tidy.zip</link>", false);
    row("enclosure without a URL", R"(<enclosure sparkle:version="1.2"/>)", false);
    row("enclosure with an empty URL", R"(<enclosure url="" sparkle:version="1.2"/>)", false);
    row("URL of Sparkle's namespace", R"(<enclosure sparkle:url="tidy.zip" sparkle:version="1.2"/>)", false);
    row("no version", R"(<enclosure url="tidy.zip"/>)", false);
    row("empty version", R"(<sparkle:version/><enclosure url="tidy.zip" sparkle:version=""/>)", false);
}

void tst_SparkleAppcast::systems()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isOffered);

    const auto read = readSparkleAppcast(item(content));
    QVERIFY(read);
    QCOMPARE(*read, isOffered ? tidy : Candidates());
}

void tst_SparkleAppcast::aBadItemCostsNoOther_data()
{
    QTest::addColumn<QByteArray>("bad");

    const auto row = [](const char *tag, const QByteArray &bad) { QTest::newRow(tag) << bad; };
    row("empty", "<item/>");
    row("no archive", "<item><sparkle:version>9</sparkle:version></item>");
    row("no version", "<item><enclosure url=\"a\"/></item>");
    row("markup for a version", "<item><sparkle:version><b>9</b></sparkle:version><enclosure url=\"a\"/></item>");
    row("another system", "<item><enclosure url=\"a\" sparkle:version=\"9\" sparkle:os=\"windows\"/></item>");
    row("another channel",
        "<item><sparkle:channel>beta</sparkle:channel><enclosure url=\"a\" sparkle:version=\"9\"/></item>");
    row("delta", "<item><enclosure url=\"a\" sparkle:version=\"9\" sparkle:deltaFrom=\"8\"/></item>");
}

void tst_SparkleAppcast::aBadItemCostsNoOther()
{
    QFETCH(QByteArray, bad);

    const QByteArray good = R"(<item><enclosure url="tidy.zip" sparkle:version="1.2"/></item>)";
    for (const auto &content : {good + bad, bad + good, bad + good + bad})
        QCOMPARE(readSparkleAppcast(channel(content)), std::optional(tidy));
}

void tst_SparkleAppcast::encodings_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<bool>("isRead");

    const auto document = [](const QByteArray &encoding) {
        return withNamespace("<?xml version=\"1.0\" encoding=\"" + encoding
            + "\"?><rss xmlns:s=\"NAMESPACE\"><channel>"
              "<item><enclosure url=\"tidy.zip\" s:version=\"\xC3\xBC\"/></item></channel></rss>");
    };
    const auto recoded = [&](QStringConverter::Encoding encoding, const QByteArray &name) {
        QStringEncoder encoder(encoding, QStringConverter::Flag::WriteBom);
        return QByteArray(encoder(QString::fromUtf8(document(name))));
    };
    const auto row = [](const char *tag, const QByteArray &xml, bool isRead) { QTest::newRow(tag) << xml << isRead; };
    row("UTF-8", document("UTF-8"), true);
    row("UTF-8 with a byte-order mark", "\xEF\xBB\xBF" + document("UTF-8"), true);
    row("UTF-16, least first", recoded(QStringConverter::Utf16LE, "UTF-16"), true);
    row("UTF-16, most first", recoded(QStringConverter::Utf16BE, "UTF-16"), true);
    row("UTF-16 that says UTF-8", recoded(QStringConverter::Utf16LE, "UTF-8"), true);
    row("UTF-16 cut in a character", recoded(QStringConverter::Utf16LE, "UTF-16").chopped(1), false);
    row("UTF-16 without a byte-order mark", recoded(QStringConverter::Utf16LE, "UTF-16").sliced(2), false);
    row("UTF-32", recoded(QStringConverter::Utf32LE, "UTF-32"), false);
    row("UTF-8 that says UTF-16", document("UTF-16"), false);
    row("encoding nobody knows", document("EBCDIC-7"), false);
    row("Latin-1 that says so", document("ISO-8859-1").replace("\xC3\xBC", "\xFC"), true);
    row("Latin-1 that says UTF-8", document("UTF-8").replace("\xC3\xBC", "\xFC"), false);
    row("overlong UTF-8", document("UTF-8").replace("\xC3\xBC", "\xC0\xAF"), false);
    row("surrogate in UTF-8", document("UTF-8").replace("\xC3\xBC", "\xED\xA0\x80"), false);
}

void tst_SparkleAppcast::encodings()
{
    QFETCH(QByteArray, xml);
    QFETCH(bool, isRead);

    const auto read = readSparkleAppcast(xml);
    QCOMPARE(read, isRead ? std::optional(Candidates{{u"\u00FC"_s, u"tidy.zip"_s}}) : std::nullopt);
}

void tst_SparkleAppcast::refused_data()
{
    QTest::addColumn<QByteArray>("xml");

    const auto row = [](const char *tag, const QByteArray &xml) { QTest::newRow(tag) << xml; };
    const auto good = item(R"(<enclosure url="tidy.zip" sparkle:version="1.2"/>)");
    const auto withDeclaration = [&](const QByteArray &declaration, const QByteArray &content) {
        auto xml = item(content + R"(<enclosure url="tidy.zip" sparkle:version="1.2"/>)");
        return xml.insert(xml.indexOf("<rss"), "<!DOCTYPE rss " + declaration + ">");
    };
    row("nothing", "");
    row("white space", " \n");
    row("text", "Not found");
    row("JSON", R"({"version": "1.2", "downloadURL": "tidy.zip"})");
    row("a page that is no XML", "<html><body><p>Not found<br></body></html>");
    row("cut off behind an item", good.left(good.indexOf("</channel>")));
    row("cut off in a tag", good.left(good.indexOf("1.2")));
    row("cut off before the last bracket", good.chopped(1));
    row("two documents", good + good.sliced(good.indexOf("<rss")));
    row("text behind the document", good + "a");
    row("zero byte", item(QByteArray("<title>\0</title>", 16)));
    row("control character", item("<title>\x01</title>"));
    row("control character by its number", item("<title>&#1;</title>"));
    row("entity that is not declared", item("<title>&nbsp;</title>"));
    row("prefix that is not declared", item("<a:b/>"));
    row("attribute twice", item(R"(<enclosure url="a" url="b"/>)"));
    row("elements that cross", item("<a><b></a></b>"));
    row("declared entity", withDeclaration(R"([<!ENTITY a "b">])", "&a;"));
    row("declared entity that is not used", withDeclaration(R"([<!ENTITY a "b">])", ""));
    row("declared attribute", withDeclaration(R"([<!ATTLIST item a CDATA "b">])", ""));
    row("entity of a file", withDeclaration(R"([<!ENTITY a SYSTEM "file:///etc/hostname">])", "<title>&a;</title>"));
    row("entity of a document type of somebody else's",
        withDeclaration(R"(SYSTEM "https://example.com/a.dtd" [])", ""));
    row("deeper than allowed",
        item(QByteArray("<a>").repeated(deepestAppcastElement) + QByteArray("</a>").repeated(deepestAppcastElement)));
}

void tst_SparkleAppcast::refused()
{
    QFETCH(QByteArray, xml);

    QVERIFY(!readSparkleAppcast(xml));
}

QTEST_GUILESS_MAIN(tst_SparkleAppcast)
#include "tst_sparkleappcast.moc"
