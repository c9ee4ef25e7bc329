// Files that are replaced as a whole or not at all.

#include "platform/AtomicFile.h"
#include "platform/FileReading.h"
#include "support/ForkedProcess.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_AtomicFile : public QObject
{
    Q_OBJECT

private slots:
    void newFileAndItsFolders();
    void replacesTheOldOne();
    void linkStaysALink();
    void deviceStaysADevice();
    void whatCannotBeWritten_data();
    void whatCannotBeWritten();
    void fullDiskKeepsTheOldFile();
    void readOnlyDiskKeepsTheOldFile();
    void unreadableFileIsKept();
    void everyKeptFileHasANameOfItsOwn();
    void sameFileIsKeptOnce();
    void nothingIsKeptOfNothing();
    void folderCannotBeKept();

private:
    QByteArray path(const char *name) const { return QFile::encodeName(m_folder.filePath(QLatin1String(name))); }
    QByteArray content(const char *name) const
    {
        const auto read = readFile(path(name), 1'000'000);
        return read ? read.value() : "nothing";
    }

    QTemporaryDir m_folder;
};

void tst_AtomicFile::newFileAndItsFolders()
{
    QVERIFY(!writeFileAtomically(path("a/b/file"), "text"));
    QCOMPARE(content("a/b/file"), "text");
    QCOMPARE(QDir(m_folder.filePath(u"a/b"_s)).entryList(QDir::Files), QStringList{u"file"_s});
}

void tst_AtomicFile::replacesTheOldOne()
{
    QVERIFY(!writeFileAtomically(path("replaced"), "a long old text"));
    QVERIFY(!writeFileAtomically(path("replaced"), "new"));
    QCOMPARE(content("replaced"), "new");
}

void tst_AtomicFile::linkStaysALink()
{
    QVERIFY(!writeFileAtomically(path("target"), "old"));
    QVERIFY(QFile::link(m_folder.filePath(u"target"_s), m_folder.filePath(u"link"_s)));
    QVERIFY(!writeFileAtomically(path("link"), "new"));
    QVERIFY(QFileInfo(m_folder.filePath(u"link"_s)).isSymLink());
    QCOMPARE(content("target"), "new");
}

void tst_AtomicFile::deviceStaysADevice()
{
    QVERIFY(!writeFileAtomically("/dev/null", "text"));
    QVERIFY(std::filesystem::is_character_file("/dev/null"));

    const auto pipe = path("pipe");
    QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
    const int reader = ::open(pipe.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    QVERIFY(!writeFileAtomically(pipe, "text"));
    char text[8];
    QCOMPARE(::read(reader, text, sizeof text), 4);
    ::close(reader);
}

void tst_AtomicFile::whatCannotBeWritten_data()
{
    QTest::addColumn<QByteArray>("path");

    QVERIFY(QDir(m_folder.path()).mkpath(u"folder"_s));
    QVERIFY(!writeFileAtomically(path("plain"), "plain"));
    QTest::newRow("no path") << QByteArray();
    QTest::newRow("zero in the path") << path("a") + '\0' + "b";
    QTest::newRow("a folder") << path("folder");
    QTest::newRow("below a file") << path("plain/file");
    QTest::newRow("where nobody may write") << QByteArray("/proc/nothing/file");
    QCOMPARE(::mkfifo(path("nobody reads").constData(), 0600), 0);
    QTest::newRow("a pipe that nobody reads") << path("nobody reads");
    QTest::newRow("a full device") << QByteArray("/dev/full");
    QTest::newRow("a name that is too long") << path("") + QByteArray(300, 'x');
}

void tst_AtomicFile::whatCannotBeWritten()
{
    QFETCH(QByteArray, path);
    const auto error = writeFileAtomically(path, "text");
    QVERIFY(error);
    QVERIFY(!error->localizedDescription.isEmpty());
    QCOMPARE(content("plain"), "plain");
}

void tst_AtomicFile::fullDiskKeepsTheOldFile()
{
    const auto disk = m_folder.filePath(u"full"_s);
    QVERIFY(QDir().mkpath(disk));
    const auto result = resultOnSmallDisk(disk, 65536, [&] {
        const auto file = QFile::encodeName(disk + u"/file"_s);
        if (writeFileAtomically(file, QByteArray(20'000, 'a')))
            return QByteArray("cannot write at all");
        if (!writeFileAtomically(file, QByteArray(60'000, 'b')))
            return QByteArray("the disk is not full");
        const auto names = QDir(disk).entryList(QDir::Files);
        return names == QStringList{u"file"_s} ? readFile(file, 100'000).value() : QByteArray("something was left");
    });
    QCOMPARE(result, QByteArray(20'000, 'a'));
}

void tst_AtomicFile::readOnlyDiskKeepsTheOldFile()
{
    const auto disk = m_folder.filePath(u"read-only"_s);
    QVERIFY(QDir().mkpath(disk));
    const auto result = resultOnSmallDisk(disk, 65536, [&] {
        const auto file = QFile::encodeName(disk + u"/file"_s);
        if (writeFileAtomically(file, "old"))
            return QByteArray("cannot write at all");
        makeSmallDiskReadOnly(disk);
        return writeFileAtomically(file, "new") ? readFile(file, 100).value() : QByteArray("it was written");
    });
    QCOMPARE(result, "old");
}

void tst_AtomicFile::unreadableFileIsKept()
{
    QVERIFY(!writeFileAtomically(path("garbage"), "garbage"));
    QVERIFY(QFile::setPermissions(m_folder.filePath(u"garbage"_s), {}));
    QCOMPARE(keepUnreadableFile(path("garbage")).value(), path("garbage.unreadable"));
    QVERIFY(!writeFileAtomically(path("garbage"), "new"));
    QVERIFY(QFile::setPermissions(m_folder.filePath(u"garbage.unreadable"_s), QFile::ReadOwner));
    QCOMPARE(content("garbage.unreadable"), "garbage");
}

void tst_AtomicFile::everyKeptFileHasANameOfItsOwn()
{
    for (const auto *const text : {"first", "second", "third"}) {
        QVERIFY(!writeFileAtomically(path("again"), text));
        QVERIFY(keepUnreadableFile(path("again")));
    }
    QCOMPARE(content("again.unreadable"), "first");
    QCOMPARE(content("again.unreadable-2"), "second");
    QCOMPARE(content("again.unreadable-3"), "third");
    QCOMPARE(content("again"), "third");
}

/// A change that failed after it, on a full disk for example, is tried again.
void tst_AtomicFile::sameFileIsKeptOnce()
{
    QVERIFY(!writeFileAtomically(path("once"), "garbage"));
    QCOMPARE(keepUnreadableFile(path("once")).value(), path("once.unreadable"));
    QCOMPARE(keepUnreadableFile(path("once")).value(), path("once.unreadable"));
    QCOMPARE(content("once.unreadable"), "garbage");
    QVERIFY(!QFile::exists(m_folder.filePath(u"once.unreadable-2"_s)));
}

void tst_AtomicFile::nothingIsKeptOfNothing()
{
    QCOMPARE(keepUnreadableFile(path("missing")).value(), QByteArray());
    QVERIFY(!QFile::exists(m_folder.filePath(u"missing.unreadable"_s)));
}

void tst_AtomicFile::folderCannotBeKept()
{
    QVERIFY(QDir(m_folder.path()).mkpath(u"somefolder"_s));
    QVERIFY(!keepUnreadableFile(path("somefolder")));
}

QTEST_APPLESS_MAIN(tst_AtomicFile)
#include "tst_atomicfile.moc"
