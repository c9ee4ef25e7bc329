// What a whole feed comes to: one version and one URL, or a refusal.

#include "updates/UpdatingInfo.h"

#include <QXmlStreamReader>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_UpdatingInfo : public QObject
{
    Q_OBJECT

private slots:
    void bothFormsYieldTheHighestVersion();
};

namespace {

const QUrl feedURL(u"https://example.com/tidy/feed.json"_s);

} // namespace

void tst_UpdatingInfo::bothFormsYieldTheHighestVersion()
{
    const auto json = UpdatingInfo::initWithData(
        R"({"items": [{"version": "1.9", "downloadURL": "a.zip"}, {"version": "1.10", "downloadURL": "b.zip"}]})",
        feedURL);
    QVERIFY(json);
    QCOMPARE(json->versionID(), u"1.10"_s);
    QCOMPARE(json->downloadURL(), QUrl(u"https://example.com/tidy/b.zip"_s));
    const auto xml = UpdatingInfo::sparkleXMLToUpdatingInfo(
        "<rss xmlns:s='http://www.andymatuschak.org/xml-namespaces/sparkle'><channel>"
        "<item><enclosure url='b.zip' s:version='1.10'/></item><item><enclosure url='a.zip' s:version='1.9'/></item>"
        "</channel></rss>",
        feedURL);
    QVERIFY(xml == json);
}

QTEST_GUILESS_MAIN(tst_UpdatingInfo)
#include "tst_updatinginfo.moc"
