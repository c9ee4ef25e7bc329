#include "platform/monitoring/PathGuard.h"
#include "support/FolderEventsReading.h"
#include "support/PathFiles.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_PathGuard : public QObject
{
    Q_OBJECT

private slots:
    void missingTargets_data();
    void missingTargets();
    void hearsOfComingAndGoing();
    void hearsOfFoldersAbove();
};

void tst_PathGuard::missingTargets_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("missing");
    QTest::newRow("there") << "folder"_ba
                           << "folder"_ba;
    QTest::newRow("link to what is there") << "link"_ba
                                           << "folder"_ba;
    QTest::newRow("missing") << "missing"_ba
                             << "missing"_ba;
    QTest::newRow("several missing") << "folder/a/b/c"_ba
                                     << "folder/a/b/c"_ba;
    QTest::newRow("behind a link") << "link/a/b"_ba
                                   << "folder/a/b"_ba;
    QTest::newRow("link to nowhere") << "dangling"_ba
                                     << "folder/nowhere/deep"_ba;
    QTest::newRow("below a link to nowhere") << "dangling/a/b"_ba
                                             << "folder/nowhere/deep/a/b"_ba;
    QTest::newRow("upwards") << "folder/up"_ba
                             << "other/x"_ba;
    QTest::newRow("link to a link to nowhere") << "chain"_ba
                                               << "folder/nowhere/deep/x"_ba;
    QTest::newRow("links in a circle") << "circle"_ba
                                       << "circle"_ba;
}

void tst_PathGuard::missingTargets()
{
    const TemporaryFolder folder;
    makeFolderAt(folder.path("folder"));
    makeLinkAt(folder.path("link"), "folder");
    makeLinkAt(folder.path("dangling"), folder.path("folder/nowhere/deep"));
    makeLinkAt(folder.path("folder/up"), "../other/x");
    makeLinkAt(folder.path("chain"), "dangling/x");
    makeLinkAt(folder.path("circle"), "circle");
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, missing);
    const auto target = QString::fromUtf8(missingTargetOf(folder.path(path)));
    QCOMPARE(QDir::cleanPath(target), QString::fromUtf8(folder.path(missing)));
}

void tst_PathGuard::hearsOfComingAndGoing()
{
    TestEnvironment environment;
    const TemporaryFolder folder;
    const auto events = FolderEvents::shared();
    int heard = 0;
    const PathGuard guard(*events, folder.path("guarded"), [&] { ++heard; });
    QVERIFY(guard.isWatching());
    makeFolderAt(folder.path("other"));
    writeFileAt(folder.path("other/guarded"), "");
    readFolderEvents();
    QCOMPARE(heard, 0);
    makeFolderAt(folder.path("guarded"));
    readFolderEvents();
    QCOMPARE(heard, 1);
    writeFileAt(folder.path("guarded/file"), "");
    readFolderEvents();
    QCOMPARE(heard, 1);
    removeAt(folder.path("guarded"));
    readFolderEvents();
    QCOMPARE(heard, 2);
    renameAt(folder.path("other"), folder.path("guarded"));
    readFolderEvents();
    QCOMPARE(heard, 3);
}

void tst_PathGuard::hearsOfFoldersAbove()
{
    TestEnvironment environment;
    const TemporaryFolder folder;
    const auto events = FolderEvents::shared();
    makeFolderAt(folder.path("a"));
    int heard = 0;
    const PathGuard guard(*events, folder.path("a/b/c"), [&] { ++heard; });
    makeFolderAt(folder.path("a/c"));
    readFolderEvents();
    QCOMPARE(heard, 0);
    makeFolderAt(folder.path("a/b"));
    readFolderEvents();
    QCOMPARE(heard, 1);
    renameAt(folder.path("a"), folder.path("z"));
    readFolderEvents();
    QCOMPARE(heard, 2);
}

QTEST_GUILESS_MAIN(tst_PathGuard)
#include "tst_pathguard.moc"
