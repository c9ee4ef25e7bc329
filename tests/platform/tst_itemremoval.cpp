// Folders that go with everything in them, and nothing else.

#include "platform/FolderListing.h"
#include "platform/ItemRemoval.h"
#include "support/ForkedProcess.h"
#include "support/PathFiles.h"

#include <QtTest>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_ItemRemoval : public QObject
{
    Q_OBJECT

private slots:
    void removes_data();
    void removes();
    void forbiddingFolders();
    void deeperThanFilesCanBeOpen();
    void cannotBeRemoved();
};

void tst_ItemRemoval::removes_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("folder") << "folder"_ba;
    QTest::newRow("file") << "file"_ba;
    QTest::newRow("link to a folder") << "link"_ba;
    QTest::newRow("link to nothing") << "dangling"_ba;
    QTest::newRow("pipe") << "pipe"_ba;
    QTest::newRow("nothing") << "missing"_ba;
}

void tst_ItemRemoval::removes()
{
    QFETCH(QByteArray, name);
    const TemporaryFolder folder;
    QByteArrayList rest{"folder", "file", "link", "dangling", "pipe", "other/precious"};
    writeFileAt(folder.path("other/precious"), "text");
    writeFileAt(folder.path("folder/a/b/.hidden"), "text");
    makeLinkAt(folder.path("folder/a/link"), folder.path("other"));
    makeLinkAt(folder.path("folder/a/up"), "..");
    makePipeAt(folder.path("folder/a/pipe"));
    makePipeAt(folder.path("pipe"));
    writeFileAt(folder.path("file"), "text");
    makeLinkAt(folder.path("link"), "other");
    makeLinkAt(folder.path("dangling"), "nowhere");
    QVERIFY(!removeItem(folder.path(name)));
    QVERIFY(!hasEntry(folder.path(name)));
    rest.removeAll(name);
    for (const auto &other : rest)
        QVERIFY2(hasEntry(folder.path(other)), other.constData());
}

void tst_ItemRemoval::forbiddingFolders()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("item/deep/er/file"), "text");
    QCOMPARE(::chmod(folder.path("item/deep/er").constData(), 0), 0);
    QCOMPARE(::chmod(folder.path("item/deep").constData(), 0555), 0);
    QVERIFY(!removeItem(folder.path("item")));
    QVERIFY(!hasEntry(folder.path("item")));
}

void tst_ItemRemoval::deeperThanFilesCanBeOpen()
{
    const TemporaryFolder folder;
    makeFolderAt(folder.path("item/raised-0"));
    makeFolderAt(folder.path("item" + QByteArray("/d").repeated(400)));
    ForkedProcess child([&folder] {
        const rlimit fewFiles{200, 200};
        if (::setrlimit(RLIMIT_NOFILE, &fewFiles) != 0 || removeItem(folder.path("item")))
            ::_exit(1);
    });
    QCOMPARE(child.wait(), 0);
    QVERIFY(!hasEntry(folder.path("item")));
}

void tst_ItemRemoval::cannotBeRemoved()
{
    const TemporaryFolder folder;
    const auto result = resultOnSmallDisk(QFile::decodeName(folder.path()), 65536, [&folder] {
        writeFileAt(folder.path("item/file"), "text");
        makeSmallDiskReadOnly(QFile::decodeName(folder.path()));
        const auto error = removeItem(folder.path("item"));
        return error ? error->localizedDescription.toUtf8() : "removed"_ba;
    });
    QCOMPARE(result, "Read-only file system"_ba);
}

QTEST_GUILESS_MAIN(tst_ItemRemoval)
#include "tst_itemremoval.moc"
