// Which of a feed's candidates counts, and what makes one unusable.

#include "updates/FeedLimits.h"
#include "updates/UpdateCandidates.h"

#include <QtTest>

using namespace Qt::StringLiterals;

using Candidates = std::vector<UpdateCandidate>;
Q_DECLARE_METATYPE(Candidates)

class tst_UpdateCandidates : public QObject
{
    Q_OBJECT

private slots:
    void highestVersionCounts_data();
    void highestVersionCounts();
    void versionsAreKeptOrPassedOver_data();
    void versionsAreKeptOrPassedOver();
    void urls_data();
    void urls();
};

namespace {

const QUrl feedURL(u"https://example.com/plugins/tidy/feed.xml?channel=all#top"_s);
const QString archive = u"https://example.com/tidy.zip"_s;
const QString nothing; // nil

} // namespace

void tst_UpdateCandidates::highestVersionCounts_data()
{
    QTest::addColumn<Candidates>("candidates");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QString>("archiveName");

    const auto row = [](const char *tag, const Candidates &candidates, const QString &version, const QString &name) {
        QTest::newRow(tag) << candidates << version << name;
    };
    row("none", {}, nothing, nothing);
    row("one", {{u"1.0"_s, u"a"_s}}, u"1.0"_s, u"a"_s);
    row("newest first", {{u"1.10"_s, u"a"_s}, {u"1.9"_s, u"b"_s}}, u"1.10"_s, u"a"_s);
    row("newest last", {{u"1.9"_s, u"a"_s}, {u"1.10"_s, u"b"_s}}, u"1.10"_s, u"b"_s);
    row("newest between", {{u"1.9"_s, u"a"_s}, {u"2"_s, u"b"_s}, {u"1.10"_s, u"c"_s}}, u"2"_s, u"b"_s);
    row("first of the same version", {{u"1.0"_s, u"a"_s}, {u"1.0"_s, u"b"_s}}, u"1.0"_s, u"a"_s);
    row("first of equal versions, as it is written", {{u"1"_s, u"a"_s}, {u"1.0"_s, u"b"_s}}, u"1"_s, u"a"_s);
    row("preview before its release", {{u"2.0-beta"_s, u"a"_s}, {u"2.0"_s, u"b"_s}}, u"2.0"_s, u"b"_s);
    row("newest without a usable URL", {{u"1.0"_s, u"a"_s}, {u"9.0"_s, u"file:///a"_s}}, u"1.0"_s, u"a"_s);
    row("newest without a usable URL, first", {{u"9.0"_s, u"file:///a"_s}, {u"1.0"_s, u"a"_s}}, u"1.0"_s, u"a"_s);
    row("same version, first without a usable URL", {{u"1.0"_s, u""_s}, {u"1.0"_s, u"b"_s}}, u"1.0"_s, u"b"_s);
    row("one without a version", {{u""_s, u"a"_s}, {u"1.0"_s, u"b"_s}}, u"1.0"_s, u"b"_s);
    row("only unusable ones", {{u""_s, u"a"_s}, {u"1.0"_s, u""_s}}, nothing, nothing);
}

void tst_UpdateCandidates::highestVersionCounts()
{
    QFETCH(Candidates, candidates);
    QFETCH(QString, version);
    QFETCH(QString, archiveName);

    const auto offer = highestOffer(candidates, QUrl(u"https://example.com/"_s));
    QCOMPARE(offer.has_value(), !version.isNull());
    if (!offer)
        return;
    QCOMPARE(offer->version, version);
    QCOMPARE(offer->downloadURL, QUrl(u"https://example.com/"_s + archiveName));
}

void tst_UpdateCandidates::versionsAreKeptOrPassedOver_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("isUsable");

    const auto row = [](const char *tag, const QString &version, bool isUsable) {
        QTest::newRow(tag) << version << isUsable;
    };
    row("numbers", u"1.2.3"_s, true);
    row("words", u"Tuesday's build"_s, true);
    row("prefix", u"v2"_s, true);
    row("beyond ASCII", u"1.0 \u03B2"_s, true);
    row("slashes", u"../2"_s, true);
    row("spaces around it", u" 1.0 "_s, true);
    row("as long as allowed", QString(longestVersion, u'1'), true);
    row("longer than allowed", QString(longestVersion + 1, u'1'), false);
    row("nil", nothing, false);
    row("empty", u""_s, false);
    row("spaces only", u"   "_s, false);
    row("spaces beyond ASCII only", u"\u00A0\u2003"_s, false);
    row("line feed", u"1\n0"_s, false);
    row("line feed at the end", u"1.0\n"_s, false);
    row("tabulator", u"1\t0"_s, false);
    row("zero character", u"1"_s + QChar(0) + u"2"_s, false);
    row("escape character", u"\u001B[31m1.0"_s, false);
    row("delete character", u"1.0\u007F"_s, false);
    row("control character beyond ASCII", u"1.0\u0085"_s, false);
}

void tst_UpdateCandidates::versionsAreKeptOrPassedOver()
{
    QFETCH(QString, version);
    QFETCH(bool, isUsable);

    const auto offer = highestOffer({{version, archive}}, feedURL);
    QCOMPARE(offer.has_value(), isUsable);
    if (offer)
        QCOMPARE(offer->version, version);
}

void tst_UpdateCandidates::urls_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("feed");
    QTest::addColumn<QString>("expected"); // nil: passed over

    const auto row = [](const char *tag, const QString &text, const QString &expected) {
        QTest::newRow(tag) << text << feedURL.toString() << expected;
    };
    row("https", archive, archive);
    row("http", u"http://example.com/a.zip"_s, u"http://example.com/a.zip"_s);
    row("scheme in capitals", u"HTTPS://example.com/a.zip"_s, u"https://example.com/a.zip"_s);
    row("address", u"http://[::1]:8080/a.zip"_s, u"http://[::1]:8080/a.zip"_s);
    row("query", u"https://example.com/get?id=5&x=%2F"_s, u"https://example.com/get?id=5&x=%2F"_s);
    row("host beyond ASCII", u"https://b\u00FCro.example/a.zip"_s, u"https://xn--bro-hoa.example/a.zip"_s);
    row("space in it", u"https://example.com/a b.zip"_s, u"https://example.com/a%20b.zip"_s);
    row("white space around it", u"\n  https://example.com/a.zip \t"_s, u"https://example.com/a.zip"_s);
    row("beside the feed", u"a.zip"_s, u"https://example.com/plugins/tidy/a.zip"_s);
    row("above the feed", u"../a.zip"_s, u"https://example.com/plugins/a.zip"_s);
    row("above the root", u"../../../../a.zip"_s, u"https://example.com/a.zip"_s);
    row("from the root", u"/a.zip"_s, u"https://example.com/a.zip"_s);
    row("of another host by the feed's scheme", u"//cdn.example.com/a.zip"_s, u"https://cdn.example.com/a.zip"_s);
    row("query only", u"?get=1"_s, u"https://example.com/plugins/tidy/feed.xml?get=1"_s);
    row("nil", nothing, nothing);
    row("empty", u""_s, nothing);
    row("spaces only", u"  "_s, nothing);
    row("file", u"file:///etc/passwd"_s, nothing);
    row("file on a host", u"file://example.com/a.zip"_s, nothing);
    row("ftp", u"ftp://example.com/a.zip"_s, nothing);
    row("data", u"data:application/zip;base64,UEsFBg=="_s, nothing);
    row("javascript", u"javascript:alert(1)"_s, nothing);
    row("scheme that begins alike", u"httpsx://example.com/a.zip"_s, nothing);
    row("no host", u"https:///a.zip"_s, nothing);
    row("scheme before a relative path", u"https:a.zip"_s, nothing);
    row("port out of range", u"https://example.com:99999/a.zip"_s, nothing);
    row("host with a space", u"https://exa mple.com/a.zip"_s, nothing);
    row("line feed in it", u"https://example.com/a\n.zip"_s, nothing);
    row("zero character in it", u"https://example.com/a"_s + QChar(0), nothing);
    const auto longest = u"https://example.com/"_s.leftJustified(longestDownloadURL, u'a');
    row("as long as allowed", longest, longest);
    row("longer than allowed", longest + u'a', nothing);

    QTest::newRow("relative to no feed") << u"a.zip"_s << u""_s << nothing;
    QTest::newRow("absolute without a feed") << archive << u""_s << archive;
    QTest::newRow("relative to a file") << u"a.zip"_s << u"file:///feeds/feed.xml"_s << nothing;
    QTest::newRow("relative to plain http")
        << u"a.zip"_s << u"http://127.0.0.1:80/feed.xml"_s << u"http://127.0.0.1:80/a.zip"_s;
}

void tst_UpdateCandidates::urls()
{
    QFETCH(QString, text);
    QFETCH(QString, feed);
    QFETCH(QString, expected);

    const auto offer = highestOffer({{u"1.0"_s, text}}, QUrl(feed));
    QCOMPARE(offer.has_value(), !expected.isNull());
    if (offer)
        QCOMPARE(QString::fromLatin1(offer->downloadURL.toEncoded()), expected);
}

QTEST_GUILESS_MAIN(tst_UpdateCandidates)
#include "tst_updatecandidates.moc"
