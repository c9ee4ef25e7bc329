// What a whole feed comes to: one version and one URL, or a refusal.

#include "platform/JSONText.h"
#include "support/JSONSchema.h"
#include "updates/FeedLimits.h"
#include "updates/UpdatingInfo.h"
#include "updates/UpdatingInfoError.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QtTest>

#include <algorithm>
#include <future>

using namespace Qt::StringLiterals;

class tst_UpdatingInfo : public QObject
{
    Q_OBJECT

private slots:
    void theHighestVersionIsOffered();
    void aParserYieldsWhatTheBytesYield();
    void anAppcastThatOffersNothing_data();
    void anAppcastThatOffersNothing();
    void errors_data();
    void errors();
    void anOfferLeavesTheErrorUntouched();
    void nobodyHasToAskForTheError();
    void theLargestFeedIsRead();
    void aCutOffFeedOffersNothing();
    void hostileFeeds_data();
    void hostileFeeds();
    void anyThreadMayRead();
    void theGuidesFeedsAreRead();
    void theGuideListsTheErrors();
};

namespace {

const QUrl feedURL(u"https://example.com/tidy/feed.json"_s);
const QByteArray sparkle = R"(xmlns:s="http://www.andymatuschak.org/xml-namespaces/sparkle")";

/// 1.10 between others.
const QByteArray jsonFeed = R"({"items": [{"version": "1.9", "downloadURL": "tidy-1.9.zip"},)"
                            R"({"version": "1.10", "downloadURL": "tidy-1.10.zip"},)"
                            R"({"version": "1.8", "downloadURL": "tidy-1.8.zip"}]})";
const QByteArray appcast = "<rss " + sparkle
    + "><channel><item><enclosure url='tidy-1.9.zip' s:version='1.9'/></item>"
      "<item><enclosure url='tidy-1.10.zip' s:version='1.10'/></item>"
      "<item><enclosure url='tidy-1.8.zip' s:version='1.8'/></item></channel></rss>";

QByteArray readSource(const QString &path)
{
    QFile file(QStringLiteral(KORVAN_SOURCE_DIR "/") + path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

/// The examples of one language in the guide.
QList<QByteArray> guideExamples(const QString &language)
{
    const QRegularExpression fence(u"```%1\\n(.*?)```"_s.arg(language), QRegularExpression::DotMatchesEverythingOption);
    QList<QByteArray> examples;
    for (const auto &match : fence.globalMatch(QString::fromUtf8(readSource(u"docs/update-feeds.md"_s))))
        examples.append(match.captured(1).toUtf8());
    return examples;
}

QByteArray numbered(int count, const QByteArray &before, const QByteArray &after)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += before + QByteArray::number(i, 36) + after;
    return text;
}

} // namespace

void tst_UpdatingInfo::theHighestVersionIsOffered()
{
    const auto json = UpdatingInfo::initWithData(jsonFeed, feedURL);
    QVERIFY(json);
    QCOMPARE(json->versionID(), u"1.10"_s);
    QCOMPARE(json->downloadURL(), QUrl(u"https://example.com/tidy/tidy-1.10.zip"_s));
    QVERIFY(UpdatingInfo::sparkleXMLToUpdatingInfo(appcast, feedURL) == json);
}

void tst_UpdatingInfo::aParserYieldsWhatTheBytesYield()
{
    QXmlStreamReader parser(appcast);
    const auto info = UpdatingInfo::sparkleXMLToUpdatingInfoWithXmlParser(parser, feedURL);
    QVERIFY(info);
    QVERIFY(info == UpdatingInfo::sparkleXMLToUpdatingInfo(appcast, feedURL));
    QXmlStreamReader failing(appcast.chopped(1));
    QVERIFY(!UpdatingInfo::sparkleXMLToUpdatingInfoWithXmlParser(failing, feedURL));
    QXmlStreamReader declaring("<!DOCTYPE rss [<!ENTITY a 'b'>]>" + appcast);
    QVERIFY(!UpdatingInfo::sparkleXMLToUpdatingInfoWithXmlParser(declaring, feedURL));
}

void tst_UpdatingInfo::anAppcastThatOffersNothing_data()
{
    QTest::addColumn<QByteArray>("xml");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a page that is XML") << QByteArray("<html><body>404</body></html>");
    QTest::newRow("a page that is none") << QByteArray("<!DOCTYPE html><html><body>404<br></body></html>");
    QTest::newRow("a JSON feed") << jsonFeed;
    QTest::newRow("no items") << QByteArray("<rss><channel/></rss>");
    QTest::newRow("files only") << QByteArray(appcast).replace("url='", "url='file:///");
    QTest::newRow("blank versions only")
        << QByteArray(appcast).replace("1.", "").replace("'9'", "' '").replace("'10'", "''").replace("'8'", "'&#9;'");
}

void tst_UpdatingInfo::anAppcastThatOffersNothing()
{
    QFETCH(QByteArray, xml);

    QVERIFY(!UpdatingInfo::sparkleXMLToUpdatingInfo(xml, feedURL));
}

void tst_UpdatingInfo::errors_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("text");

    QTest::newRow("too large") << jsonFeed.leftJustified(largestFeed + 1) << 1
                               << u"The update feed “https://example.com/tidy/feed.json” is larger than 4 MB."_s;
    QTest::newRow("no JSON") << QByteArray("<html>404</html>") << 2
                             << u"The update feed “https://example.com/tidy/feed.json” is not valid JSON."_s;
    QTest::newRow("no feed") << QByteArray("[]") << 3
                             << u"The update feed “https://example.com/tidy/feed.json” has neither a version with a "
                                u"download URL nor a list of items."_s;
    const auto nothing =
        u"The update feed “https://example.com/tidy/feed.json” offers no version that can be downloaded."_s;
    QTest::newRow("no items") << QByteArray(R"({"items": []})") << 4 << nothing;
    QTest::newRow("a number as the version")
        << QByteArray(R"({"version": 1.2, "downloadURL": "a.zip"})") << 4 << nothing;
    QTest::newRow("a file as the archive")
        << QByteArray(R"({"version": "1", "downloadURL": "file:///a"})") << 4 << nothing;
    QTest::newRow("a blank version") << QByteArray(R"({"version": " ", "downloadURL": "a.zip"})") << 4 << nothing;
}

void tst_UpdatingInfo::errors()
{
    QFETCH(QByteArray, json);
    QFETCH(int, code);
    QFETCH(QString, text);

    KRError error;
    QVERIFY(!UpdatingInfo::initWithData(json, feedURL, &error));
    QCOMPARE(error.domain, u"KRUpdatingInfoErrorDomain"_s);
    QCOMPARE(error.domain, updatingInfoErrorDomain());
    QCOMPARE(error.code, code);
    QCOMPARE(error.localizedDescription, text);
}

void tst_UpdatingInfo::anOfferLeavesTheErrorUntouched()
{
    const KRError before{u"domain"_s, 7, u"text"_s};
    KRError error = before;
    QVERIFY(UpdatingInfo::initWithData(jsonFeed, feedURL, &error));
    QCOMPARE(error, before);
}

void tst_UpdatingInfo::nobodyHasToAskForTheError()
{
    QVERIFY(!UpdatingInfo::initWithData("[]", feedURL));
    QVERIFY(!UpdatingInfo::initWithData("[]", feedURL, nullptr));
}

void tst_UpdatingInfo::theLargestFeedIsRead()
{
    QVERIFY(UpdatingInfo::initWithData(jsonFeed.leftJustified(largestFeed), feedURL));
    QVERIFY(UpdatingInfo::sparkleXMLToUpdatingInfo(appcast.leftJustified(largestFeed), feedURL));
    QVERIFY(!UpdatingInfo::sparkleXMLToUpdatingInfo(appcast.leftJustified(largestFeed + 1), feedURL));
}

void tst_UpdatingInfo::aCutOffFeedOffersNothing()
{
    for (qsizetype size = 0; size < jsonFeed.size(); ++size)
        QVERIFY2(!UpdatingInfo::initWithData(jsonFeed.first(size), feedURL), QByteArray::number(size));
    for (qsizetype size = 0; size < appcast.size(); ++size)
        QVERIFY2(!UpdatingInfo::sparkleXMLToUpdatingInfo(appcast.first(size), feedURL), QByteArray::number(size));
}

// Each of these would keep a parser without bounds busy for minutes, or take all memory.
void tst_UpdatingInfo::hostileFeeds_data()
{
    QTest::addColumn<QByteArray>("bytes");

    const auto row = [](const char *tag, const QByteArray &bytes) { QTest::newRow(tag) << bytes; };
    const auto declaring = [](const QByteArray &declarations) {
        return "<!DOCTYPE rss [" + declarations + "]>" + appcast;
    };
    const auto inTitle = [](const QByteArray &content) {
        return QByteArray(appcast).insert(appcast.indexOf("<item>"), "<title>" + content + "</title>");
    };
    QByteArray entities = "<!ENTITY a0 'haha'>";
    for (int i = 1; i < 40; ++i) {
        const auto reference = "&a" + QByteArray::number(i - 1) + ';';
        entities += "<!ENTITY a" + QByteArray::number(i) + " '" + reference.repeated(8) + "'>";
    }
    row("entities of entities", "<!DOCTYPE rss [" + entities + "]><rss>&a39;</rss>");
    row("one entity many times",
        "<!DOCTYPE rss [<!ENTITY a '" + QByteArray(100'000, 'a') + "'>]><rss>" + QByteArray("&a;").repeated(100'000)
            + "</rss>");
    row("entity of itself", "<!DOCTYPE rss [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><rss>&a;</rss>");
    row("declared attributes", declaring(numbered(100'000, "<!ATTLIST rss a", " CDATA 'x'>")));
    row("declared entities", declaring(numbered(100'000, "<!ENTITY a", " 'x'>")));
    row("many attributes", inTitle("<a" + numbered(300'000, " a", "=''") + "/>"));
    row("many namespaces",
        inTitle("<a" + numbered(100'000, " xmlns:a", "='x'") + '>' + QByteArray("<a0:b/>").repeated(100'000) + "</a>"));
    row("deep elements", inTitle(QByteArray("<a>").repeated(500'000) + QByteArray("</a>").repeated(500'000)));
    row("deep elements that never end", QByteArray("<a>").repeated(1'000'000));
    row("deep lists", QByteArray("[").repeated(500'000) + QByteArray("]").repeated(500'000));
    row("deep lists that never end", QByteArray("[").repeated(1'000'000));
    row("deep objects", QByteArray(R"({"items":)").repeated(400'000));
    row("deep items", QByteArray(R"({"items":[)").repeated(300'000) + QByteArray("]}").repeated(300'000));
    row("100 MB that begin as an appcast", inTitle(QByteArray(100'000'000, 'a')));
    row("100 MB that begin as JSON", jsonFeed.leftJustified(100'000'000));
    row("100 MB of zeros", QByteArray(100'000'000, '\0'));
    row("items without a usable version",
        "{\"items\":[" + QByteArray(R"({"version":"","downloadURL":"a"},)").repeated(100'000) + "{}]}");
}

void tst_UpdatingInfo::hostileFeeds()
{
    QFETCH(QByteArray, bytes);

    KRError error;
    QVERIFY(!UpdatingInfo::initWithData(bytes, feedURL, &error));
    QCOMPARE(error.domain, updatingInfoErrorDomain());
    QVERIFY(!UpdatingInfo::sparkleXMLToUpdatingInfo(bytes, feedURL));
}

void tst_UpdatingInfo::anyThreadMayRead()
{
    const auto readBoth = [] {
        bool areRead = true;
        for (int i = 0; i < 200; ++i) {
            const auto json = UpdatingInfo::initWithData(jsonFeed, feedURL);
            areRead = areRead && json && json == UpdatingInfo::sparkleXMLToUpdatingInfo(appcast, feedURL)
                && !UpdatingInfo::initWithData("{}", feedURL);
        }
        return areRead;
    };
    std::vector<std::future<bool>> readers;
    for (int i = 0; i < 4; ++i)
        readers.push_back(std::async(std::launch::async, readBoth));
    QVERIFY(std::all_of(readers.begin(), readers.end(), [](auto &reader) { return reader.get(); }));
}

void tst_UpdatingInfo::theGuidesFeedsAreRead()
{
    const JSONSchema schema(variantFromJSON(readSource(u"docs/schemas/update-feed.schema.json"_s)).value().toMap());
    const QUrl published(u"https://example.com/tidy-layers/feed.json"_s);
    QList<std::optional<UpdatingInfo>> feeds;
    for (const auto &example : guideExamples(u"json"_s)) {
        const auto value = variantFromJSON(example);
        QVERIFY(value);
        if (value.value().toMap().contains(u"appcast"_s))
            continue; // a manifest
        QVERIFY(schema.accepts(value.value()));
        feeds.append(UpdatingInfo::initWithData(example, published));
    }
    for (const auto &example : guideExamples(u"xml"_s))
        feeds.append(UpdatingInfo::sparkleXMLToUpdatingInfo(example, published));

    QCOMPARE(feeds.size(), 3);
    for (const auto &feed : feeds) {
        QVERIFY(feed);
        QCOMPARE(feed->versionID(), u"1.10"_s);
        QVERIFY(feed->downloadURL().toString().startsWith(u"https://example.com/tidy-layers/"_s));
        QVERIFY(feed->downloadURL().toString().endsWith(u"tidy-layers-1.10.zip"_s));
    }
}

void tst_UpdatingInfo::theGuideListsTheErrors()
{
    const auto guide = QString::fromUtf8(readSource(u"docs/update-feeds.md"_s));
    for (const auto code : {UpdatingInfoErrorCode::TooLarge, UpdatingInfoErrorCode::NotJSON,
             UpdatingInfoErrorCode::NotAFeed, UpdatingInfoErrorCode::NothingOffered}) {
        const auto error = updatingInfoError(code, QUrl(u"…"_s));
        QVERIFY(guide.contains(u"| %1 | %2 |"_s.arg(error.code).arg(error.localizedDescription)));
    }
}

QTEST_GUILESS_MAIN(tst_UpdatingInfo)
#include "tst_updatinginfo.moc"
