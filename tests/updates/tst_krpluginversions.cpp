#include "support/TestEnvironment.h"
#include "support/TestUpdates.h"

#include <QFile>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_KRPluginVersions : public QObject
{
    Q_OBJECT

private slots:
    void newRecord();
    void addedVersions();
    void laterEntryReplacesEarlier();
    void copiesStayAsTheyAre();
    void latestVersion_data();
    void latestVersion();
    void updateAvailable_data();
    void updateAvailable();
    void downloadedMeansAPlaceInTheWarehouse();
};

void tst_KRPluginVersions::newRecord()
{
    const QUrl feed(u"https://example.com/feed"_s);
    const KRPluginVersions record(u"com.example.a"_s, feed);
    QCOMPARE(record.identifier(), u"com.example.a"_s);
    QCOMPARE(record.updatingInfoURL(), feed);
    QCOMPARE(record.versions(), QStringList());
    QCOMPARE(record.versionsDictionary(), VersionsDictionary());
    QVERIFY(!record.latestVersionAvailable());
}

void tst_KRPluginVersions::addedVersions()
{
    const auto record = recordOf(u"a"_s, {u"1.0"_s, u"2.0"_s});
    QCOMPARE(record->versions(), (QStringList{u"1.0"_s, u"2.0"_s}));
    QVERIFY(record->isVersionListed(u"1.0"_s));
    QVERIFY(!record->isVersionListed(u"1"_s)); // versions are texts here, equal in order or not
    QCOMPARE(record->downloadURLForVersion(u"2.0"_s), QUrl(u"https://example.com/2.0.zip"_s));
    QCOMPARE(record->downloadURLForVersion(u"3.0"_s), QUrl());
}

void tst_KRPluginVersions::laterEntryReplacesEarlier()
{
    const auto record = recordOf(u"a"_s, {u"1.0"_s});
    record->addVersions({{u"1.0"_s, {{downloadURLKey, QUrl(u"https://example.com/other.zip"_s)}}}});
    QCOMPARE(record->versions(), QStringList{u"1.0"_s});
    QCOMPARE(record->downloadURLForVersion(u"1.0"_s), QUrl(u"https://example.com/other.zip"_s));
}

void tst_KRPluginVersions::copiesStayAsTheyAre()
{
    const auto record = recordOf(u"a"_s, {u"1.0"_s});
    const auto copy = record->versionsDictionary();
    record->addVersions({{u"1.0"_s, {}}, {u"2.0"_s, {}}});
    QCOMPARE(copy.keys(), QStringList{u"1.0"_s});
    QCOMPARE(copy[u"1.0"_s][downloadURLKey].toUrl(), QUrl(u"https://example.com/1.0.zip"_s));
}

void tst_KRPluginVersions::latestVersion_data()
{
    QTest::addColumn<QStringList>("versions");
    QTest::addColumn<QString>("latest");
    QTest::newRow("one") << QStringList{u"1.0"_s} << u"1.0"_s;
    QTest::newRow("by number, not by text") << QStringList{u"1.10"_s, u"1.9"_s} << u"1.10"_s;
    QTest::newRow("beta before release") << QStringList{u"2.0-beta"_s, u"2.0"_s} << u"2.0"_s;
}

void tst_KRPluginVersions::latestVersion()
{
    QFETCH(QStringList, versions);
    QFETCH(QString, latest);
    QCOMPARE(recordOf(u"a"_s, versions)->latestVersionAvailable(), latest);
}

void tst_KRPluginVersions::updateAvailable_data()
{
    QTest::addColumn<QStringList>("offered");
    QTest::addColumn<std::optional<QString>>("installed");
    QTest::addColumn<bool>("isAvailable");
    const auto row = [](const char *tag, const QStringList &offered, const std::optional<QString> &installed, bool is) {
        QTest::newRow(tag) << offered << installed << is;
    };
    row("installed is older", {u"1.0"_s, u"1.1"_s}, u"1.0"_s, true);
    row("installed is the latest", {u"1.0"_s, u"1.1"_s}, u"1.1"_s, false);
    row("installed is the latest, written otherwise", {u"1.1"_s}, u"1.1.0"_s, false);
    row("installed is newer", {u"1.0"_s, u"1.1"_s}, u"1.2"_s, false);
    row("not installed", {u"1.0"_s}, {}, true);
    row("nothing offered", {}, u"1.0"_s, false);
    row("nothing offered, not installed", {}, {}, false);
}

void tst_KRPluginVersions::updateAvailable()
{
    QFETCH(QStringList, offered);
    QFETCH(std::optional<QString>, installed);
    QFETCH(bool, isAvailable);
    QCOMPARE(recordOf(u"a"_s, offered)->isUpdateAvailableForVersion(installed), isAvailable);
}

void tst_KRPluginVersions::downloadedMeansAPlaceInTheWarehouse()
{
    const TestEnvironment environment;
    const auto record = recordOf(u"a"_s, {u"1.0"_s});
    QVERIFY(record->isVersionDownloaded(u"1.0"_s));
    QVERIFY(record->isVersionDownloaded(u"no such version"_s));
    QVERIFY(!QFile::exists(environment.path(u"support/PluginsWarehouse/a"_s)));
    QVERIFY(!record->isVersionDownloaded(u"../.."_s));
}

QTEST_GUILESS_MAIN(tst_KRPluginVersions)
#include "tst_krpluginversions.moc"
