// Paths that lead through links and folders: what is told when one of these changes.

#include "platform/FileURL.h"
#include "platform/monitoring/KRFolderMonitor.h"
#include "support/FolderEventsReading.h"
#include "support/PathFiles.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_KRFolderMonitor_Links : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void changesOnTheWay_data();
    void changesOnTheWay();

private:
    QByteArray path(const QByteArray &relativePath) const { return m_folder->path(relativePath); }
    /// Does what a row says: "folder a", "write a", "remove a", "rename a b", "link a text", "relink a text".
    void perform(const QByteArray &action) const;
    int toldAfterwards()
    {
        letFoldersSettle(*m_environment);
        return std::exchange(m_told, 0);
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<TemporaryFolder> m_folder;
    int m_told = 0;
};

void tst_KRFolderMonitor_Links::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_folder = std::make_unique<TemporaryFolder>();
    m_told = 0;
    for (const QByteArray version : {"v1", "v2"}) {
        writeFileAt(path("ext/" + version + "/One.package/file"), version);
        writeFileAt(path("ext/" + version + "/plain/file"), version);
    }
    makeLinkAt(path("ext/cur"), "v1");
    makeFolderAt(path("watched"));
}

void tst_KRFolderMonitor_Links::cleanup()
{
    m_folder.reset();
    m_environment.reset();
}

void tst_KRFolderMonitor_Links::perform(const QByteArray &action) const
{
    const auto words = action.split(' ');
    const auto place = path(words.value(1));
    if (words.first() == "folder") {
        makeFolderAt(place);
    } else if (words.first() == "write") {
        writeFileAt(place, "new");
    } else if (words.first() == "remove") {
        removeAt(place);
    } else if (words.first() == "rename") {
        renameAt(place, path(words.value(2)));
    } else if (words.first() == "link") {
        makeLinkAt(place, words.value(2));
    } else if (words.first() == "relink") {
        makeLinkAt(place + ".new", words.value(2));
        renameAt(place + ".new", place);
    } else {
        QFAIL("unknown action");
    }
}

void tst_KRFolderMonitor_Links::changesOnTheWay_data()
{
    QTest::addColumn<QByteArrayList>("before");
    QTest::addColumn<QByteArray>("watched");
    QTest::addColumn<QByteArray>("change");
    QTest::addColumn<QByteArray>("inside"); // what is watched afterwards

    const QByteArrayList packageThroughLinks{"link watched/x.package ../ext/cur/One.package"};
    QTest::newRow("link on the way to a package leads elsewhere") << packageThroughLinks << "watched"_ba
                                                                  << "relink ext/cur v2"_ba
                                                                  << "write ext/v2/One.package/file"_ba;
    QTest::newRow("link on the way to a package leads nowhere for a while")
        << packageThroughLinks + QByteArrayList{"relink ext/cur nowhere"} << "watched"_ba
        << "relink ext/cur v2"_ba
        << "write ext/v2/One.package/file"_ba;
    QTest::newRow("link on the way to a package comes")
        << packageThroughLinks + QByteArrayList{"remove ext/cur"} << "watched"_ba
        << "link ext/cur v2"_ba
        << "write ext/v2/One.package/file"_ba;
    QTest::newRow("link on the way to a plain folder leads elsewhere")
        << QByteArrayList{"link watched/x ../ext/cur"} << "watched"_ba
        << "relink ext/cur v2"_ba
        << ""_ba;
    QTest::newRow("link on the way to the folder leads elsewhere") << QByteArrayList{} << "ext/cur/plain"_ba
                                                                   << "relink ext/cur v2"_ba
                                                                   << "write ext/v2/plain/new"_ba;
    QTest::newRow("link behind the folder's own link leads elsewhere")
        << QByteArrayList{"link L ext/cur/plain"} << "L"_ba
        << "relink ext/cur v2"_ba
        << "write ext/v2/plain/new"_ba;
    QTest::newRow("link behind a link behind a link")
        << QByteArrayList{"link ext/now cur", "link L ext/now/plain"} << "L"_ba
        << "relink ext/cur v2"_ba
        << "write ext/v2/plain/new"_ba;
    QTest::newRow("folder that a link leads through moves in")
        << QByteArrayList{"link L ext/cur/late/plain", "folder v3/plain"} << "L"_ba
        << "rename v3 ext/v1/late"_ba
        << "write ext/v1/late/plain/new"_ba;

    const QByteArrayList deep{"folder a/b/c/d"};
    QTest::newRow("folder two levels above is renamed") << deep << "a/b/c/d"_ba
                                                        << "rename a/b z"_ba
                                                        << "rename z a/b"_ba;
    QTest::newRow("folder three levels above is renamed") << deep << "a/b/c/d"_ba
                                                          << "rename a z"_ba
                                                          << "rename z a"_ba;
    QTest::newRow("folder above comes anew, with the same in it")
        << deep + QByteArrayList{"folder z/b/c/d", "rename a y"} << "a/b/c/d"_ba
        << "rename z a"_ba
        << "write a/b/c/d/new"_ba;
    QTest::newRow("folder above what a link leads to is renamed")
        << QByteArrayList{"folder a/b/c/P.package", "link watched/P.package ../a/b/c/P.package"} << "watched"_ba
        << "rename a/b z"_ba
        << "rename z a/b"_ba;
    QTest::newRow("folder above a link on the way is renamed")
        << QByteArrayList{"folder a/b/c", "link a/b/c/link ../../../ext/v1/plain", "link L a/b/c/link"} << "L"_ba
        << "rename a z"_ba
        << "rename z a"_ba;
}

void tst_KRFolderMonitor_Links::changesOnTheWay()
{
    QFETCH(QByteArrayList, before);
    QFETCH(QByteArray, watched);
    QFETCH(QByteArray, change);
    QFETCH(QByteArray, inside);
    for (const auto &action : before)
        perform(action);
    const auto monitor = KRFolderMonitor::initWithURL(
        fileURLFromPath(path(watched), FileKind::Folder), [this] { ++m_told; }, {"package", {}});
    QVERIFY(monitor);
    QCOMPARE(toldAfterwards(), 0);
    perform(change);
    QCOMPARE(toldAfterwards(), 1);
    QCOMPARE(toldAfterwards(), 0);
    if (inside.isEmpty())
        return;
    perform(inside);
    QCOMPARE(toldAfterwards(), 1);
}

QTEST_GUILESS_MAIN(tst_KRFolderMonitor_Links)
#include "tst_krfoldermonitor_links.moc"
