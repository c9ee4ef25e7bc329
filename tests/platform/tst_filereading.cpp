#include "platform/FileReading.h"
#include "platform/SpareRoom.h"
#include "support/PathFiles.h"

#include <QtTest>

#include <cerrno>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_FileReading : public QObject
{
    Q_OBJECT

private slots:
    void readsWholeFile_data();
    void readsWholeFile();
    void sizeLimit_data();
    void sizeLimit();
    void hugeSparseFileIsRefusedUnread();
    void beginning_data();
    void beginning();
    void paddingIsBehindTheEnd_data();
    void paddingIsBehindTheEnd();
    void spareRoomInFrontDoesNotCount();
    void unreadable_data();
    void unreadable();
    void nulDoesNotShortenPath();
    void nameThatIsNotUTF8();
    void followsLinks();
    void closesWhatItOpened();
    void systemErrorNamesReason();
};

constexpr qint64 limit = 1000;

void tst_FileReading::readsWholeFile_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("text") << "line\nline\n"_ba;
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("NUL and bytes that are no UTF-8") << QByteArray("\0\xFF\r\n\x1A\0", 6);
    QTest::newRow("byte-order mark stays") << "\xEF\xBB\xBFx"_ba;
}

void tst_FileReading::readsWholeFile()
{
    QFETCH(QByteArray, content);
    const TemporaryFolder folder;
    const auto path = folder.path("file");
    writeFileAt(path, content);

    const auto bytes = readFile(path, limit);
    QVERIFY(bytes.isOk());
    QCOMPARE(bytes.value(), content);
}

void tst_FileReading::sizeLimit_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("isRead");

    QTest::newRow("one less") << limit - 1 << true;
    QTest::newRow("exactly the limit") << limit << true;
    QTest::newRow("one more") << limit + 1 << false;
}

void tst_FileReading::sizeLimit()
{
    QFETCH(qint64, size);
    QFETCH(bool, isRead);
    const TemporaryFolder folder;
    const auto path = folder.path("file");
    writeFileAt(path, QByteArray(size, 'x'));

    const auto bytes = readFile(path, limit);
    QCOMPARE(bytes.isOk(), isRead);
    if (isRead)
        QCOMPARE(bytes.value(), QByteArray(size, 'x'));
    else
        QCOMPARE(bytes.error(), systemError(EFBIG));
}

void tst_FileReading::hugeSparseFileIsRefusedUnread()
{
    const TemporaryFolder folder;
    const auto path = folder.path("file");
    writeFileAt(path, {});
    constexpr off_t gigabytes = off_t(1) << 33;
    QCOMPARE(::truncate(path.constData(), gigabytes), 0);

    const auto bytes = readFile(path, largestTextFile);
    QVERIFY(!bytes.isOk());
    QCOMPARE(bytes.error().code, EFBIG);
}

void tst_FileReading::beginning_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("nothing") << qsizetype(0) << QByteArray();
    QTest::newRow("a part") << qsizetype(3) << "beg"_ba;
    QTest::newRow("the file's own size") << qsizetype(9) << "beginning"_ba;
    QTest::newRow("more than there is") << qsizetype(10) << "beginning"_ba;
}

void tst_FileReading::beginning()
{
    QFETCH(qsizetype, size);
    QFETCH(QByteArray, expected);
    const TemporaryFolder folder;
    const auto path = folder.path("file");
    writeFileAt(path, "beginning");
    QCOMPARE(readBeginning(path, size).value(), expected);

    constexpr off_t terabyte = off_t(1) << 40; // more than any memory holds
    QCOMPARE(::truncate(path.constData(), terabyte), 0);
    QCOMPARE(readBeginning(path, size).value(), expected.leftJustified(size, '\0'));
}

void tst_FileReading::paddingIsBehindTheEnd_data()
{
    QTest::addColumn<qsizetype>("size");
    QTest::addColumn<qsizetype>("padding");

    for (const qsizetype size : {0, 1, 15, 64, 999}) {
        for (const qsizetype padding : {0, 1, 32, 64}) {
            QTest::addRow("%d bytes, padding %d", int(size), int(padding)) << size << padding;
        }
    }
}

void tst_FileReading::paddingIsBehindTheEnd()
{
    QFETCH(qsizetype, size);
    QFETCH(qsizetype, padding);
    const TemporaryFolder folder;
    const auto path = folder.path("file");
    writeFileAt(path, QByteArray(size, 'x'));

    const auto bytes = readFile(path, limit, padding);
    QVERIFY(bytes.isOk());
    QCOMPARE(bytes.value(), QByteArray(size, 'x'));
    QVERIFY(spareRoomBehind(bytes.value()) >= padding);
}

void tst_FileReading::spareRoomInFrontDoesNotCount()
{
    QByteArray bytes(200, 'x');
    bytes.reserve(200);
    const auto behind = spareRoomBehind(bytes);
    bytes.remove(0, 100);
    QVERIFY(spareRoomBehind(bytes) <= behind);
    QCOMPARE(spareRoomBehind(QByteArray::fromRawData("text", 4)), 0);
    QCOMPARE(spareRoomBehind(QByteArray()), 0);
}

void tst_FileReading::unreadable_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<int>("code");

    QTest::newRow("missing") << "missing"_ba << ENOENT;
    QTest::newRow("in a missing folder") << "missing/file"_ba << ENOENT;
    QTest::newRow("below a file") << "file/below"_ba << ENOTDIR;
    QTest::newRow("folder") << "folder"_ba << EISDIR;
    QTest::newRow("link to a folder") << "link to folder"_ba << EISDIR;
    QTest::newRow("dangling link") << "dangling"_ba << ENOENT;
    QTest::newRow("links in a circle") << "circle"_ba << ELOOP;
    QTest::newRow("pipe without a writer does not block") << "pipe"_ba << EINVAL;
    QTest::newRow("link to a pipe does not block") << "link to pipe"_ba << EINVAL;
    QTest::newRow("socket") << "socket"_ba << ENXIO;
    QTest::newRow("endless device") << "link to device"_ba << EINVAL;
    QTest::newRow("name too long") << QByteArray(300, 'x') << ENAMETOOLONG;
}

void tst_FileReading::unreadable()
{
    const TemporaryFolder folder;
    const auto inside = [&folder](const QByteArray &name) { return folder.path(name); };
    writeFileAt(inside("file"), "x");
    makeFolderAt(inside("folder"));
    makePipeAt(inside("pipe"));
    makeSocketAt(inside("socket"));
    makeLinkAt(inside("link to folder"), "folder");
    makeLinkAt(inside("dangling"), "missing");
    makeLinkAt(inside("circle"), "circle");
    makeLinkAt(inside("link to pipe"), "pipe");
    makeLinkAt(inside("link to device"), "/dev/zero");
    QFETCH(QByteArray, path);
    QFETCH(int, code);

    for (const auto &bytes : {readFile(inside(path), limit), readBeginning(inside(path), limit)}) {
        QVERIFY(!bytes.isOk());
        QCOMPARE(bytes.error().domain, u"posix"_s);
        QCOMPARE(bytes.error().code, code);
        QVERIFY(!bytes.error().localizedDescription.isEmpty());
    }
}

void tst_FileReading::nulDoesNotShortenPath()
{
    const TemporaryFolder folder;
    const auto path = folder.path("file");
    writeFileAt(path, "x");

    const auto bytes = readFile(path + '\0' + ".js", limit);
    QVERIFY(!bytes.isOk());
    QCOMPARE(bytes.error(), systemError(EINVAL));
    QCOMPARE(readFile({}, limit).error().code, ENOENT);
}

void tst_FileReading::nameThatIsNotUTF8()
{
    const TemporaryFolder folder;
    const auto path = folder.path("\xFF \xC3");
    writeFileAt(path, "x");

    const auto bytes = readFile(path, limit);
    QVERIFY(bytes.isOk());
    QCOMPARE(bytes.value(), "x"_ba);
}

void tst_FileReading::followsLinks()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("file"), "x");
    makeLinkAt(folder.path("first"), "file");
    makeLinkAt(folder.path("second"), folder.path("first"));

    QCOMPARE(readFile(folder.path("second"), limit).value(), "x"_ba);
}

void tst_FileReading::closesWhatItOpened()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("file"), "x");
    makePipeAt(folder.path("pipe"));
    const auto openFiles = [] { return QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System).size(); };

    const auto before = openFiles();
    for (int i = 0; i < 10; ++i) {
        QVERIFY(readFile(folder.path("file"), limit).isOk());
        QVERIFY(!readFile(folder.path("file"), 0).isOk());
        QVERIFY(!readFile(folder.path("pipe"), limit).isOk());
        QVERIFY(readBeginning(folder.path("file"), 1).isOk());
        QVERIFY(!readFile(folder.path(), limit).isOk());
    }
    QCOMPARE(openFiles(), before);
}

void tst_FileReading::systemErrorNamesReason()
{
    const KRError expected{u"posix"_s, ENOENT, u"No such file or directory"_s};
    QCOMPARE(systemError(ENOENT), expected);
}

QTEST_GUILESS_MAIN(tst_FileReading)
#include "tst_filereading.moc"
