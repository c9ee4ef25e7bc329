// Moves inside of a file system and between two: whole, never over anything, and taken back when asked.

#include "platform/FileDescriptor.h"
#include "platform/FileReading.h"
#include "platform/FolderListing.h"
#include "platform/HiddenSibling.h"
#include "platform/ItemMove.h"
#include "support/ForkedProcess.h"
#include "support/PathFiles.h"

#include <QDir>
#include <QtTest>

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

class tst_ItemMove : public QObject
{
    Q_OBJECT

private slots:
    void moves_data();
    void moves();
    void fails_data();
    void fails();
    void takenBack_data();
    void takenBack();
    void keepsWhatBelongsToFiles();
    void preparedOnly();
    void sourceThatMayNotBeTakenAway();
    void fullDisk();
    void leftoversGo();
    void whatIsInUseStays();
    void siblingsAreHiddenAndNew();
};

namespace {

enum class Disks { One, Two };

/// Runs the work with two folders, which are on one file system or on two. What the work answers.
QByteArray between(Disks disks, const std::function<QByteArray(const QByteArray &from, const QByteArray &to)> &work)
{
    const TemporaryFolder folder;
    const auto from = folder.path("from");
    const auto to = folder.path("to");
    makeFolderAt(from);
    makeFolderAt(to);
    if (disks == Disks::One)
        return work(from, to);
    return resultOnSmallDisk(QFile::decodeName(to), 1'000'000, [&] { return work(from, to); });
}

void addRowsOfDisks()
{
    QTest::addColumn<Disks>("disks");
    QTest::newRow("on one file system") << Disks::One;
    QTest::newRow("to another file system") << Disks::Two;
}

/// Everything in a folder, hidden entries included: names, kinds, and what files and links say.
QByteArray listed(const QByteArray &folder)
{
    QByteArrayList lines;
    const auto names =
        QDir(QFile::decodeName(folder))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const auto &entry : names) {
        const auto name = QFile::encodeName(entry);
        const auto path = folder + '/' + name;
        struct stat status;
        if (::lstat(path.constData(), &status) != 0)
            return "an entry that is none";
        char target[100] = {};
        if (S_ISLNK(status.st_mode) && ::readlink(path.constData(), target, sizeof target - 1) > 0)
            lines.append(name + " -> " + target);
        else if (S_ISDIR(status.st_mode))
            lines.append(name + "(" + listed(path) + ")");
        else if (S_ISREG(status.st_mode))
            lines.append(name + "=" + readFile(path, 1'000'000).value());
        else
            lines.append(name + (S_ISFIFO(status.st_mode) ? " pipe" : " other"));
    }
    return lines.join(' ');
}

QByteArray told(const KRError &error)
{
    return error.domain.toUtf8() + ' ' + QByteArray::number(error.code) + ' ' + error.localizedDescription.toUtf8();
}

QByteArray errorOf(const std::optional<KRError> &error)
{
    return error ? told(*error) : "fine"_ba;
}

QByteArray bothListed(const QByteArray &from, const QByteArray &to)
{
    return listed(from) + " | " + listed(to);
}

void makeItem(const QByteArray &path)
{
    writeFileAt(path + "/deep/er/file", "text");
    writeFileAt(path + "/.hidden", "");
    makeFolderAt(path + "/empty");
    makeLinkAt(path + "/dangling", "nowhere");
    makeLinkAt(path + "/up", "..");
    makePipeAt(path + "/pipe");
}

constexpr const char *itemText = ".hidden= dangling -> nowhere deep(er(file=text)) empty() pipe pipe up -> ..";

} // namespace

void tst_ItemMove::moves_data()
{
    QTest::addColumn<Disks>("disks");
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("expected");

    for (const auto disks : {Disks::One, Disks::Two}) {
        const auto *const where = disks == Disks::One ? "on one file system" : "to another file system";
        QTest::addRow("folder %s", where) << disks << "folder"_ba
                                          << " | moved(" + QByteArray(itemText) + ')';
        QTest::addRow("file %s", where) << disks << "file"_ba
                                        << " | moved=text"_ba;
        QTest::addRow("link %s", where) << disks << "link"_ba
                                        << " | moved -> target"_ba;
        QTest::addRow("pipe %s", where) << disks << "pipe"_ba
                                        << " | moved pipe"_ba;
    }
}

void tst_ItemMove::moves()
{
    QFETCH(Disks, disks);
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, expected);
    const auto result = between(disks, [&kind](const QByteArray &from, const QByteArray &to) {
        const auto item = from + "/item";
        if (kind == "folder")
            makeItem(item);
        else if (kind == "file")
            writeFileAt(item, "text");
        else if (kind == "link")
            makeLinkAt(item, "target");
        else
            makePipeAt(item);
        KRError error;
        return moveItem(item, to + "/moved", &error) && error == KRError() ? bothListed(from, to) : told(error);
    });
    QCOMPARE(result, expected);
}

void tst_ItemMove::fails_data()
{
    QTest::addColumn<Disks>("disks");
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<int>("code");

    const auto zero = "ze"_ba + '\0' + "ro";
    for (const auto disks : {Disks::One, Disks::Two}) {
        const auto *const where = disks == Disks::One ? "on one file system" : "to another file system";
        QTest::addRow("missing, %s", where) << disks << "missing"_ba
                                            << "new"_ba << ENOENT;
        QTest::addRow("over a file, %s", where) << disks << "item"_ba
                                                << "file"_ba << EEXIST;
        QTest::addRow("over a folder, %s", where) << disks << "item"_ba
                                                  << "folder"_ba << EEXIST;
        QTest::addRow("over an empty folder, %s", where) << disks << "item"_ba
                                                         << "empty"_ba << EEXIST;
        QTest::addRow("over a link to nothing, %s", where) << disks << "item"_ba
                                                           << "dangling"_ba << EEXIST;
        QTest::addRow("a file over a file, %s", where) << disks << "alone"_ba
                                                       << "file"_ba << EEXIST;
        QTest::addRow("a link over a file, %s", where) << disks << "link"_ba
                                                       << "file"_ba << EEXIST;
        QTest::addRow("into no folder, %s", where) << disks << "item"_ba
                                                   << "missing/new"_ba << ENOENT;
        QTest::addRow("below a file, %s", where) << disks << "item"_ba
                                                 << "file/new"_ba << ENOTDIR;
        QTest::addRow("zero in the source, %s", where) << disks << zero << "new"_ba << EINVAL;
        QTest::addRow("zero in the target, %s", where) << disks << "item"_ba << zero << EINVAL;
        QTest::addRow("a name that is too long, %s", where)
            << disks << "item"_ba << QByteArray(300, 'x') << ENAMETOOLONG;
    }
}

void tst_ItemMove::fails()
{
    QFETCH(Disks, disks);
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(int, code);
    const auto result = between(disks, [&](const QByteArray &fromFolder, const QByteArray &toFolder) {
        makeItem(fromFolder + "/item");
        writeFileAt(fromFolder + "/alone", "alone");
        makeLinkAt(fromFolder + "/link", "target");
        writeFileAt(toFolder + "/file", "kept");
        writeFileAt(toFolder + "/folder/file", "kept");
        makeFolderAt(toFolder + "/empty");
        makeLinkAt(toFolder + "/dangling", "nowhere");
        const auto before = bothListed(fromFolder, toFolder);
        KRError error;
        const bool isMoved = moveItem(fromFolder + '/' + from, toFolder + '/' + to, &error);
        const auto after = bothListed(fromFolder, toFolder);
        return isMoved || after != before ? "it has become " + after : QByteArray::number(error.code);
    });
    QCOMPARE(result, QByteArray::number(code));
}

void tst_ItemMove::takenBack_data()
{
    addRowsOfDisks();
}

void tst_ItemMove::takenBack()
{
    QFETCH(Disks, disks);
    const auto result = between(disks, [](const QByteArray &from, const QByteArray &to) {
        makeItem(from + "/item");
        const auto before = bothListed(from, to);
        {
            ItemMove move(from + "/item", to + "/moved");
            const auto error = errorOf(move.prepare()) + errorOf(move.carryOut());
            if (error != "finefine" || itemExists(from + "/item") || !itemExists(to + "/moved"))
                return "not moved: " + error + bothListed(from, to);
            if (const auto failure = move.takeBack())
                return "not taken back: " + told(*failure);
        }
        return bothListed(from, to) == before ? "as before"_ba : bothListed(from, to);
    });
    QCOMPARE(result, "as before"_ba);
}

void tst_ItemMove::keepsWhatBelongsToFiles()
{
    const auto result = between(Disks::Two, [](const QByteArray &from, const QByteArray &to) {
        const auto file = from + "/item/file";
        writeFileAt(file, QByteArray(300'000, 'x'));
        const timespec times[] = {{1'000'000, 5}, {2'000'000, 7}};
        ::chmod(file.constData(), 04751);
        ::utimensat(AT_FDCWD, file.constData(), times, 0);
        ::chmod((from + "/item").constData(), 0550);
        KRError error;
        if (!moveItem(from + "/item", to + "/moved", &error))
            return told(error);
        struct stat status;
        struct stat folder;
        const auto moved = to + "/moved/file";
        if (::stat(moved.constData(), &status) != 0 || ::stat((to + "/moved").constData(), &folder) != 0)
            return "nothing"_ba;
        return QByteArray::number(status.st_mode & 07777, 8) + ' ' + QByteArray::number(folder.st_mode & 07777, 8) + ' '
            + QByteArray::number(qint64(status.st_mtim.tv_sec)) + '.'
            + QByteArray::number(qint64(status.st_mtim.tv_nsec)) + ' ' + QByteArray::number(qint64(status.st_size));
    });
    QCOMPARE(result, "751 550 2000000.7 300000"_ba);
}

void tst_ItemMove::preparedOnly()
{
    const auto result = between(Disks::Two, [](const QByteArray &from, const QByteArray &to) {
        makeItem(from + "/item");
        const auto before = bothListed(from, to);
        {
            ItemMove move(from + "/item", to + "/moved");
            if (move.prepare() || bothListed(from, to) == before || !visibleEntries(to).empty())
                return "nothing was prepared, or all can see it"_ba;
        }
        return bothListed(from, to) == before ? "as before"_ba : bothListed(from, to);
    });
    QCOMPARE(result, "as before"_ba);
}

void tst_ItemMove::sourceThatMayNotBeTakenAway()
{
    // From a disk that can only be read: a copy that leaves its source is no move.
    const auto result = between(Disks::Two, [](const QByteArray &to, const QByteArray &from) {
        makeItem(from + "/item");
        makeSmallDiskReadOnly(QFile::decodeName(from));
        const auto before = bothListed(from, to);
        KRError error;
        if (moveItem(from + "/item", to + "/moved", &error))
            return "moved"_ba;
        return bothListed(from, to) == before ? told(error) : bothListed(from, to);
    });
    QCOMPARE(result, "posix 30 Read-only file system"_ba);
}

void tst_ItemMove::fullDisk()
{
    const auto result = between(Disks::Two, [](const QByteArray &from, const QByteArray &to) {
        writeFileAt(from + "/item/first", QByteArray(600'000, 'x'));
        writeFileAt(from + "/item/second", QByteArray(600'000, 'x'));
        KRError error;
        if (moveItem(from + "/item", to + "/moved", &error))
            return "moved"_ba;
        return listed(to).isEmpty() && visibleEntries(from + "/item").size() == 2 ? told(error) : listed(to);
    });
    QCOMPARE(result, "posix 28 No space left on device"_ba);
}

void tst_ItemMove::leftoversGo()
{
    const auto result = between(Disks::One, [](const QByteArray &from, const QByteArray &to) {
        writeFileAt(from + "/item", "text");
        makeItem(hiddenSibling(from + "/any"));
        makeItem(hiddenSibling(to + "/any"));
        writeFileAt(hiddenSibling(to + "/any"), "half");
        writeFileAt(to + "/.korvan", "somebody's own");
        return moveItem(from + "/item", to + "/moved") ? bothListed(from, to) : "not moved"_ba;
    });
    QCOMPARE(result, " | .korvan=somebody's own moved=text"_ba);
}

void tst_ItemMove::whatIsInUseStays()
{
    const TemporaryFolder folder;
    const auto inUse = hiddenSibling(folder.path("any"));
    writeFileAt(inUse + "/file", "text");
    FileDescriptor lock(::open(inUse.constData(), O_RDONLY | O_CLOEXEC));
    QCOMPARE(::flock(lock.get(), LOCK_EX), 0);
    removeForgottenSiblings(folder.path());
    QVERIFY(itemExists(inUse + "/file"));
    lock.close();
    removeForgottenSiblings(folder.path());
    QVERIFY(!itemExists(inUse));
}

void tst_ItemMove::siblingsAreHiddenAndNew()
{
    const auto first = hiddenSibling("/folder/tidy.korvanplugin");
    QVERIFY(first.startsWith("/folder/."));
    QVERIFY(!first.endsWith("korvanplugin"));
    QVERIFY(first != hiddenSibling("/folder/tidy.korvanplugin"));
}

QTEST_GUILESS_MAIN(tst_ItemMove)
#include "tst_itemmove.moc"
