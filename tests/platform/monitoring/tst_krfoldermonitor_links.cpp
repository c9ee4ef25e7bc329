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
    void linksInsideOfPackages_data();
    void linksInsideOfPackages();
    void linksThatAreNotFollowed_data();
    void linksThatAreNotFollowed();
    void linkToVeryManyFolders();

private:
    QByteArray path(const QByteArray &relativePath) const { return m_folder->path(relativePath); }
    /// Does what a row says: "folder a", "write a", "remove a", "rename a b", "link a text", "relink a text".
    void perform(const QByteArray &action) const;
    std::unique_ptr<KRFolderMonitor> monitor(const QByteArray &relativePath)
    {
        return KRFolderMonitor::initWithURL(
            fileURLFromPath(path(relativePath), FileKind::Folder), [this] { ++m_told; }, {"package", {"node_modules"}});
    }
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
    const auto watching = monitor(watched);
    QVERIFY(watching);
    QCOMPARE(toldAfterwards(), 0);
    perform(change);
    QCOMPARE(toldAfterwards(), 1);
    QCOMPARE(toldAfterwards(), 0);
    if (inside.isEmpty())
        return;
    perform(inside);
    QCOMPARE(toldAfterwards(), 1);
}

void tst_KRFolderMonitor_Links::linksInsideOfPackages_data()
{
    QTest::addColumn<QByteArrayList>("before");
    QTest::addColumn<QByteArrayList>("changes"); // each is told of

    const QByteArrayList contents{"link watched/P.package/Contents ../../build/Contents"};
    QTest::newRow("in a linked folder") << contents << QByteArrayList{"write build/Contents/manifest"};
    QTest::newRow("deep in a linked folder") << contents << QByteArrayList{"write build/Contents/Korvan/script"};
    QTest::newRow("new folder in a linked folder")
        << contents << QByteArrayList{"write build/Contents/new/file", "write build/Contents/new/file"};
    QTest::newRow("linked folder is built anew")
        << contents
        << QByteArrayList{"rename build old", "write build/Contents/manifest", "write build/Contents/manifest"};
    QTest::newRow("linked folder comes later")
        << QByteArrayList{"link watched/P.package/Contents ../../late"}
        << QByteArrayList{"write late/Korvan/script", "write late/Korvan/script"};
    QTest::newRow("link on the way leads elsewhere")
        << QByteArrayList{"link watched/P.package/Contents ../../ext/cur/plain"}
        << QByteArrayList{"relink ext/cur v2", "write ext/v2/plain/file"};
    QTest::newRow("the link itself leads elsewhere")
        << contents << QByteArrayList{"relink watched/P.package/Contents ../../ext/v1", "write ext/v1/plain/file"};
    QTest::newRow("link in a linked folder") << contents + QByteArrayList{"link build/Contents/more ../../ext/v1"}
                                             << QByteArrayList{"write ext/v1/plain/file"};
    QTest::newRow("link that comes later")
        << QByteArrayList{}
        << QByteArrayList{"link watched/P.package/Contents ../../build/Contents", "write build/Contents/Korvan/script"};

    const QByteArrayList script{"link watched/P.package/s.js ../../ext/v1/s.js", "write ext/v1/s.js"};
    QTest::newRow("linked file is written") << script << QByteArrayList{"write ext/v1/s.js", "write ext/v1/s.js"};
    QTest::newRow("linked file is renamed over")
        << script + QByteArrayList{"write new.js"} << QByteArrayList{"rename new.js ext/v1/s.js", "write ext/v1/s.js"};
    QTest::newRow("linked file goes") << script << QByteArrayList{"remove ext/v1/s.js", "write ext/v1/s.js"};
    QTest::newRow("linked file behind a link")
        << QByteArrayList{"link watched/P.package/s.js ../../ext/cur/s.js", "write ext/v1/s.js", "write ext/v2/s.js"}
        << QByteArrayList{"write ext/v1/s.js", "relink ext/cur v2", "write ext/v2/s.js"};
    QTest::newRow("in a linked package") << QByteArrayList{"link watched/x ../ext/v1/One.package",
        "link ext/v1/One.package/s.js ../../s.js"}
                                         << QByteArrayList{"write ext/s.js", "write ext/s.js"};
}

void tst_KRFolderMonitor_Links::linksInsideOfPackages()
{
    QFETCH(QByteArrayList, before);
    QFETCH(QByteArrayList, changes);
    perform("write watched/P.package/file");
    perform("write build/Contents/manifest");
    perform("write build/Contents/Korvan/script");
    for (const auto &action : before)
        perform(action);
    const auto watching = monitor("watched");
    QCOMPARE(toldAfterwards(), 0);
    for (const auto &change : changes) {
        perform(change);
        QVERIFY2(toldAfterwards() == 1, change.constData());
    }
    QCOMPARE(toldAfterwards(), 0);
}

void tst_KRFolderMonitor_Links::linksThatAreNotFollowed_data()
{
    QTest::addColumn<QByteArray>("link");
    QTest::addColumn<QByteArray>("change");
    QTest::newRow("to the folder around") << "link watched/P.package/up .."_ba
                                          << "write watched/plain/file"_ba;
    QTest::newRow("to a folder further up") << "link watched/P.package/up ../../.."_ba
                                            << "write ext/v1/plain/file"_ba;
    QTest::newRow("to the root") << "link watched/P.package/up /"_ba
                                 << "write ext/v1/plain/file"_ba;
    QTest::newRow("of an ignored name") << "link watched/P.package/node_modules ../../ext"_ba
                                        << "write ext/v1/plain/file"_ba;
    QTest::newRow("hidden") << "link watched/P.package/.x ../../ext"_ba
                            << "write ext/v1/plain/file"_ba;
    QTest::newRow("other files beside a linked one") << "link watched/P.package/s.js ../../ext/v1/plain/file"_ba
                                                     << "write ext/v1/plain/other"_ba;
}

void tst_KRFolderMonitor_Links::linksThatAreNotFollowed()
{
    QFETCH(QByteArray, link);
    QFETCH(QByteArray, change);
    perform("folder watched/plain");
    perform("write watched/P.package/file");
    perform(link);
    const auto watching = monitor("watched");
    perform(change);
    QCOMPARE(toldAfterwards(), 0);
    perform("write watched/P.package/file");
    QCOMPARE(toldAfterwards(), 1);
}

/// What is near is watched, and the package itself whatever its links lead to.
void tst_KRFolderMonitor_Links::linkToVeryManyFolders()
{
    const QTemporaryDir inMemory(u"/dev/shm/tst_KRFolderMonitor_Links-XXXXXX"_s);
    const auto root = inMemory.isValid() ? inMemory.path().toUtf8() : path("many");
    for (int i = 0; i < 2000; ++i)
        makeFolderAt(root + '/' + QByteArray::number(i) + "/deep");
    perform("write watched/P.package/zzz/deep/file");
    makeLinkAt(path("watched/P.package/many"), root);
    const auto watching = monitor("watched");
    writeFileAt(root + "/file", "");
    QCOMPARE(toldAfterwards(), 1);
    perform("write watched/P.package/zzz/deep/file");
    QCOMPARE(toldAfterwards(), 1);
    int told = 0;
    for (int i = 0; i < 2000; ++i) {
        writeFileAt(root + '/' + QByteArray::number(i) + "/deep/file", "");
        told += toldAfterwards();
    }
    QCOMPARE(told, 0);
}

QTEST_GUILESS_MAIN(tst_KRFolderMonitor_Links)
#include "tst_krfoldermonitor_links.moc"
