#include "platform/monitoring/PathGuard.h"
#include "support/FolderEventsReading.h"
#include "support/PathFiles.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_PathGuard : public QObject
{
    Q_OBJECT

private slots:
    void hearsOfComingAndGoing();
    void hearsOfFoldersAbove();
};

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
