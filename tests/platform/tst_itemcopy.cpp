// Copies that belong to somebody until they are closed.

#include "platform/FileReading.h"
#include "platform/FolderListing.h"
#include "platform/ItemCopy.h"
#include "support/PathFiles.h"

#include <QtTest>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/xattr.h>

using namespace Qt::StringLiterals;

class tst_ItemCopy : public QObject
{
    Q_OBJECT

private slots:
    void extendedAttributes();
    void lockedUntilItIsClosed_data();
    void lockedUntilItIsClosed();
    void neverOverAnything();
    void namesOfAnyBytes();
};

namespace {

/// What is said about a file, or that its file system has no place for that.
QByteArray noteOf(const QByteArray &path)
{
    char note[20];
    const auto size = ::getxattr(path.constData(), "user.note", note, sizeof note);
    return size < 0 ? "no note"_ba : QByteArray(note, qsizetype(size));
}

} // namespace

void tst_ItemCopy::extendedAttributes()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("item/file"), "text");
    for (const char *const name : {"item", "item/file"})
        ::setxattr(folder.path(name).constData(), "user.note", "tidy\0up", 7, 0);
    QVERIFY(copyItem(folder.path("item"), folder.path("copy")));
    QCOMPARE(noteOf(folder.path("copy")), noteOf(folder.path("item")));
    QCOMPARE(noteOf(folder.path("copy/file")), noteOf(folder.path("item/file")));
}

void tst_ItemCopy::lockedUntilItIsClosed_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("file") << "item/file"_ba;
    QTest::newRow("folder") << "item"_ba;
}

void tst_ItemCopy::lockedUntilItIsClosed()
{
    QFETCH(QByteArray, name);
    const TemporaryFolder folder;
    writeFileAt(folder.path("item/file"), "text");
    auto copy = copyItem(folder.path(name), folder.path("copy"));
    QVERIFY(copy);
    auto owner = std::move(copy).value();
    const FileDescriptor other(::open(folder.path("copy").constData(), O_RDONLY | O_CLOEXEC));
    QVERIFY(::flock(other.get(), LOCK_EX | LOCK_NB) != 0);
    owner.close();
    QCOMPARE(::flock(other.get(), LOCK_EX | LOCK_NB), 0);
}

void tst_ItemCopy::neverOverAnything()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("item"), "new");
    writeFileAt(folder.path("old"), "old");
    const auto copy = copyItem(folder.path("item"), folder.path("old"));
    QVERIFY(!copy);
    QCOMPARE(copy.error().code, EEXIST);
    QCOMPARE(readFile(folder.path("old"), 10).value(), "old"_ba);
}

void tst_ItemCopy::namesOfAnyBytes()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("item/\xff/\xfe"), "text");
    QVERIFY(copyItem(folder.path("item"), folder.path("copy")));
    QCOMPARE(readFile(folder.path("copy/\xff/\xfe"), 10).value(), "text"_ba);
}

QTEST_GUILESS_MAIN(tst_ItemCopy)
#include "tst_itemcopy.moc"
