#include "support/TestUpdates.h"
#include "updates/UpdateSummaries.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

using Pairs = QStringList;

/// "identifier version" of every entry.
Pairs pairs(const QMap<QString, QString> &versions)
{
    Pairs list;
    for (const auto &[identifier, version] : versions.toStdMap())
        list.append(identifier + u' ' + version);
    return list;
}

/// "identifier version" of every archive; "nil" for no list.
Pairs pairs(const std::optional<UpdateList> &updates)
{
    if (!updates)
        return {u"nil"_s};
    Pairs list;
    for (const auto &[identifier, archives] : updates->toStdMap()) {
        for (const auto &version : archives.keys())
            list.append(identifier + u' ' + version);
    }
    return list;
}

} // namespace

/// Texts in the rows: "identifier version", and for what is offered "identifier version version …".
class tst_UpdateSummaries : public QObject
{
    Q_OBJECT

private slots:
    void summaries_data();
    void summaries();
    void urlsOfTheArchives();
    void updatesOfSomePlugins();

private:
    UpdateSummaries make(const QStringList &installed, const QStringList &offered, const QStringList &incompatible = {},
        const QStringList &downloaded = {}) const;

    QTemporaryDir m_folder;
};

UpdateSummaries tst_UpdateSummaries::make(const QStringList &installed, const QStringList &offered,
    const QStringList &incompatible, const QStringList &downloaded) const
{
    PluginTable plugins;
    for (const auto &text : installed) {
        const auto words = text.split(u' ');
        plugins.insert(words[0], pluginWithFeed(m_folder.path(), words[0], words[1], {}));
    }
    PluginVersionsTable records;
    for (const auto &text : offered) {
        const auto words = text.split(u' ');
        records.insert(words[0], recordOf(words[0], words.mid(1)));
    }
    const auto isIn = [](const QStringList &list) {
        return [list](const QString &identifier, const QString &version) {
            return list.contains(identifier + u' ' + version);
        };
    };
    return {records, plugins, isIn(incompatible), isIn(downloaded)};
}

void tst_UpdateSummaries::summaries_data()
{
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<QStringList>("offered");
    QTest::addColumn<QStringList>("incompatible");
    QTest::addColumn<QStringList>("downloaded");
    QTest::addColumn<int>("withUpdates");
    QTest::addColumn<QStringList>("compatible");
    QTest::addColumn<QStringList>("latestNotDownloaded");
    QTest::addColumn<QStringList>("compatibleNotDownloaded");
    const QStringList none;
    const QStringList nil{u"nil"_s};
    QTest::newRow("nothing is known") << QStringList{u"a 1"_s} << none << none << none << 0 << none << nil << nil;
    QTest::newRow("newer version") << QStringList{u"a 1"_s} << QStringList{u"a 2"_s} << none << none << 1
                                   << QStringList{u"a"_s} << QStringList{u"a 2"_s} << QStringList{u"a 2"_s};
    QTest::newRow("latest is installed: offered as compatible all the same")
        << QStringList{u"a 2"_s} << QStringList{u"a 2"_s} << none << none << 0 << none << nil << QStringList{u"a 2"_s};
    QTest::newRow("older is offered: offered as compatible all the same")
        << QStringList{u"a 3"_s} << QStringList{u"a 2"_s} << none << none << 0 << none << nil << QStringList{u"a 2"_s};
    QTest::newRow("feed without versions")
        << QStringList{u"a 1"_s} << QStringList{u"a"_s} << none << none << 0 << none << nil << nil;
    QTest::newRow("not installed") << none << QStringList{u"a 2"_s} << none << none << 1 << none
                                   << QStringList{u"a 2"_s} << QStringList{u"a 2"_s};
    QTest::newRow("latest does not work") << QStringList{u"a 1"_s} << QStringList{u"a 2"_s} << QStringList{u"a 2"_s}
                                          << none << 1 << none << QStringList{u"a 2"_s} << nil;
    QTest::newRow("latest of two does not work")
        << QStringList{u"a 1"_s} << QStringList{u"a 2 3"_s} << QStringList{u"a 3"_s} << none << 1 << none
        << QStringList{u"a 3"_s} << QStringList{u"a 2"_s};
    QTest::newRow("latest is downloaded")
        << QStringList{u"a 1"_s} << QStringList{u"a 2 3"_s} << none << QStringList{u"a 3"_s} << 1 << QStringList{u"a"_s}
        << nil << QStringList{u"a 2"_s};
    QTest::newRow("several plug-ins") << QStringList{u"a 1"_s, u"b 1"_s, u"c 1"_s}
                                      << QStringList{u"a 2"_s, u"b 1"_s, u"c 2"_s} << QStringList{u"c 2"_s} << none << 2
                                      << QStringList{u"a"_s} << QStringList{u"a 2"_s, u"c 2"_s}
                                      << QStringList{u"a 2"_s, u"b 1"_s};
}

void tst_UpdateSummaries::summaries()
{
    QFETCH(QStringList, installed);
    QFETCH(QStringList, offered);
    QFETCH(QStringList, incompatible);
    QFETCH(QStringList, downloaded);
    const auto summaries = make(installed, offered, incompatible, downloaded);
    QTEST(int(summaries.numberOfPluginsWithUpdates()), "withUpdates");
    QStringList compatible;
    for (const auto &plugin : summaries.pluginsWithCompatibleUpdates())
        compatible.append(*plugin->identifier());
    QTEST(compatible, "compatible");
    QTEST(pairs(summaries.latestNotDownloaded()), "latestNotDownloaded");
    QTEST(pairs(summaries.compatibleNotDownloaded()), "compatibleNotDownloaded");
}

void tst_UpdateSummaries::urlsOfTheArchives()
{
    const auto summaries = make({u"a 1"_s}, {u"a 2"_s});
    const UpdateList list{{u"a"_s, {{u"2"_s, QUrl(u"https://example.com/2.zip"_s)}}}};
    QVERIFY(summaries.latestNotDownloaded() == list);
    QVERIFY(summaries.compatibleNotDownloaded() == list);
}

void tst_UpdateSummaries::updatesOfSomePlugins()
{
    const auto summaries =
        make({u"a 1"_s, u"b 1"_s, u"c 1"_s, u"d 1"_s}, {u"a 2"_s, u"b 1"_s, u"c 2"_s, u"d 2"_s}, {u"c 2"_s});
    const auto updates = summaries.updatesOf({u"a"_s, u"b"_s, u"c"_s, u"unknown"_s});
    QCOMPARE(pairs(updates), (Pairs{u"a 2"_s, u"c 2"_s}));
    QCOMPARE(pairs(summaries.compatibleOf(updates)), Pairs{u"a 2"_s});
    QCOMPARE(pairs(summaries.updatesOf({})), Pairs());
}

QTEST_GUILESS_MAIN(tst_UpdateSummaries)
#include "tst_updatesummaries.moc"
