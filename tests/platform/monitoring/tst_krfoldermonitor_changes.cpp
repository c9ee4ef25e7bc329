// Which changes on disk a monitor tells of.

#include "platform/FileURL.h"
#include "platform/monitoring/KRFolderMonitor.h"
#include "support/FolderEventsReading.h"
#include "support/PathFiles.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// What happens to the files of a folder.
using Act = void (*)(const TemporaryFolder &);

void rename(const TemporaryFolder &folder, const QByteArray &from, const QByteArray &to)
{
    renameAt(folder.path(from), folder.path(to));
}

void remove(const TemporaryFolder &folder, const QByteArray &path)
{
    removeAt(folder.path(path));
}

void write(const TemporaryFolder &folder, const QByteArray &path)
{
    static int number = 0;
    writeFileAt(folder.path(path), "content " + QByteArray::number(++number));
}

void nothing(const TemporaryFolder &) { }

} // namespace

Q_DECLARE_METATYPE(Act)

class tst_KRFolderMonitor_Changes : public QObject
{
    Q_OBJECT

private slots:
    void inAFolder_data();
    void inAFolder();
    void inPackages_data();
    void inPackages();
    void whereFoldersComeAndGo_data();
    void whereFoldersComeAndGo();
};

void tst_KRFolderMonitor_Changes::inAFolder_data()
{
    QTest::addColumn<Act>("change");
    QTest::addColumn<int>("told");
    const auto row = [](const char *tag, int told, Act change) { QTest::newRow(tag) << change << told; };

    row("nothing", 0, nothing);
    row("a file comes", 1, [](const auto &folder) { write(folder, "watched/new"); });
    row("a hidden file comes", 1, [](const auto &folder) { write(folder, "watched/.new"); });
    row("a folder comes", 1, [](const auto &folder) { makeFolderAt(folder.path("watched/new")); });
    row("a link comes", 1, [](const auto &folder) { makeLinkAt(folder.path("watched/new"), "file"); });
    row("a file goes", 1, [](const auto &folder) { remove(folder, "watched/file"); });
    row("a folder goes", 1, [](const auto &folder) { remove(folder, "watched/folder"); });
    row("a file is renamed", 1, [](const auto &folder) { rename(folder, "watched/file", "watched/other"); });
    row("a file is moved out", 1, [](const auto &folder) { rename(folder, "watched/file", "file"); });
    row("a file is moved in", 1, [](const auto &folder) { rename(folder, "outside", "watched/outside"); });
    row("a file is replaced", 1, [](const auto &folder) { rename(folder, "outside", "watched/file"); });
    row("permissions of an entry", 1, [](const auto &folder) { ::chmod(folder.path("watched/file"), 0600); });
    row("permissions of the folder", 1, [](const auto &folder) { ::chmod(folder.path("watched"), 0755); });
    row("many changes", 1, [](const auto &folder) {
        for (int i = 0; i < 500; ++i)
            write(folder, "watched/" + QByteArray::number(i));
    });
    row("a file is written", 0, [](const auto &folder) { write(folder, "watched/file"); });
    row("an entry below", 0, [](const auto &folder) { write(folder, "watched/folder/new"); });
    row("a write into a package that nobody asked for", 0,
        [](const auto &folder) { write(folder, "watched/P.package/file"); });
    row("an entry beside", 0, [](const auto &folder) { write(folder, "new"); });
}

void tst_KRFolderMonitor_Changes::inAFolder()
{
    QFETCH(Act, change);
    TestEnvironment environment;
    const TemporaryFolder folder;
    for (const auto *path : {"outside", "watched/file", "watched/folder/file", "watched/P.package/file"})
        write(folder, path);
    int told = 0;
    const auto monitor =
        KRFolderMonitor::initWithURL(fileURLFromPath(folder.path("watched"), FileKind::Folder), [&] { ++told; });
    change(folder);
    QCOMPARE(told, 0);
    letFoldersSettle(environment);
    QTEST(told, "told");
    letFoldersSettle(environment);
    QTEST(told, "told");
}

void tst_KRFolderMonitor_Changes::inPackages_data()
{
    QTest::addColumn<Act>("before");
    QTest::addColumn<Act>("change");
    QTest::addColumn<int>("told");
    // `before` is told of, and settled, before the change.
    const auto row = [](const char *tag, int told, Act before, Act change) {
        QTest::newRow(tag) << before << change << told;
    };

    row("a file is written", 1, nothing, [](const auto &folder) { write(folder, "watched/P.package/deep/file"); });
    row("a file at the top is written", 1, nothing,
        [](const auto &folder) { write(folder, "watched/P.package/file"); });
    row("a file is appended to", 1, nothing, [](const auto &folder) {
        const int file = ::open(folder.path("watched/P.package/deep/file"), O_WRONLY | O_APPEND | O_CLOEXEC);
        QCOMPARE(::write(file, "x", 1), 1);
        readFolderEvents(); // the file is still open
        ::close(file);
    });
    row("a file is truncated", 1, nothing,
        [](const auto &folder) { QCOMPARE(::truncate(folder.path("watched/P.package/deep/file"), 0), 0); });
    row("a file is replaced", 1, nothing,
        [](const auto &folder) { rename(folder, "outside", "watched/P.package/deep/file"); });
    row("a file is read", 0, nothing, [](const auto &folder) {
        QFile file(QString::fromUtf8(folder.path("watched/P.package/deep/file")));
        QVERIFY(file.open(QIODevice::ReadOnly) && !file.readAll().isEmpty());
    });
    row("a file goes", 1, nothing, [](const auto &folder) { remove(folder, "watched/P.package/deep/file"); });
    row("extension in capitals", 1, nothing, [](const auto &folder) { write(folder, "watched/Q.PACKAGE/file"); });
    row("a package behind a link", 1, nothing, [](const auto &folder) { write(folder, "linked/R.package/file"); });
    row("behind a link in a package", 1, nothing, [](const auto &folder) { write(folder, "linked/file"); });
    row("a plain folder", 0, nothing, [](const auto &folder) { write(folder, "watched/plain/file"); });
    row("a package in a plain folder", 0, nothing,
        [](const auto &folder) { write(folder, "watched/plain/S.package/file"); });
    row("a hidden package", 0, nothing, [](const auto &folder) { write(folder, "watched/.T.package/file"); });
    row("a folder of an ignored name", 0, nothing,
        [](const auto &folder) { write(folder, "watched/P.package/modules/file"); });
    row(
        "a folder of an ignored name and an extension", 0,
        [](const auto &folder) { makeFolderAt(folder.path("watched/P.package/modules.old")); },
        [](const auto &folder) { write(folder, "watched/P.package/modules.old/file"); });
    row("a hidden folder", 0, nothing, [](const auto &folder) { write(folder, "watched/P.package/.git/file"); });
    row(
        "a new hidden folder", 0, [](const auto &folder) { makeFolderAt(folder.path("watched/P.package/.new")); },
        [](const auto &folder) { write(folder, "watched/P.package/.new/file"); });
    row("a hidden file", 1, nothing, [](const auto &folder) { write(folder, "watched/P.package/deep/.file"); });

    row(
        "a new package", 1, [](const auto &folder) { write(folder, "watched/N.package/deep/file"); },
        [](const auto &folder) { write(folder, "watched/N.package/deep/file"); });
    row(
        "a new folder in a package", 1, [](const auto &folder) { write(folder, "watched/P.package/a/b/c/file"); },
        [](const auto &folder) { write(folder, "watched/P.package/a/b/c/file"); });
    row(
        "a folder renamed in a package", 1,
        [](const auto &folder) { rename(folder, "watched/P.package/deep", "watched/P.package/renamed"); },
        [](const auto &folder) { write(folder, "watched/P.package/renamed/file"); });
    row(
        "a folder moved into a package", 1,
        [](const auto &folder) { rename(folder, "watched/plain", "watched/P.package/moved"); },
        [](const auto &folder) { write(folder, "watched/P.package/moved/S.package/file"); });
    row(
        "a folder moved out of a package", 0,
        [](const auto &folder) { rename(folder, "watched/P.package/deep", "moved"); },
        [](const auto &folder) { write(folder, "moved/file"); });
    row(
        "a package renamed", 1, [](const auto &folder) { rename(folder, "watched/P.package", "watched/O.package"); },
        [](const auto &folder) { write(folder, "watched/O.package/deep/file"); });
    row(
        "a package that is none any more", 0,
        [](const auto &folder) { rename(folder, "watched/P.package", "watched/P"); },
        [](const auto &folder) { write(folder, "watched/P/deep/file"); });
    row(
        "a folder made a package", 1, [](const auto &folder) { rename(folder, "watched/plain", "watched/M.package"); },
        [](const auto &folder) { write(folder, "watched/M.package/S.package/file"); });
    row(
        "a package moved away", 0, [](const auto &folder) { rename(folder, "watched/P.package", "P.package"); },
        [](const auto &folder) { write(folder, "P.package/deep/file"); });
    row(
        "a package made anew", 1,
        [](const auto &folder) {
            remove(folder, "watched/P.package");
            write(folder, "watched/P.package/deep/file");
        },
        [](const auto &folder) { write(folder, "watched/P.package/deep/file"); });
    row(
        "a new link to a package", 1,
        [](const auto &folder) {
            write(folder, "linked/N.package/file");
            makeLinkAt(folder.path("watched/N"), "../linked/N.package");
        },
        [](const auto &folder) { write(folder, "linked/N.package/file"); });
    row("the package behind a link goes", 1, nothing, [](const auto &folder) { remove(folder, "linked/R.package"); });
    row(
        "the package behind a link comes back", 1, [](const auto &folder) { remove(folder, "linked"); },
        [](const auto &folder) { write(folder, "linked/R.package/file"); });
    row(
        "the package behind a link was made anew", 1,
        [](const auto &folder) {
            remove(folder, "linked/R.package");
            write(folder, "linked/R.package/file");
        },
        [](const auto &folder) { write(folder, "linked/R.package/file"); });
    row("a link that led nowhere", 1, nothing, [](const auto &folder) { write(folder, "nowhere/T.package/file"); });
    row(
        "a link that led to a link that led nowhere", 1,
        [](const auto &folder) { makeLinkAt(folder.path("watched/chain"), "dangling/T.package"); },
        [](const auto &folder) { makeFolderAt(folder.path("nowhere")); });
}

void tst_KRFolderMonitor_Changes::inPackages()
{
    QFETCH(Act, before);
    QFETCH(Act, change);
    TestEnvironment environment;
    const TemporaryFolder folder;
    for (const auto *path : {"outside", "linked/file", "linked/R.package/file", "watched/P.package/file",
             "watched/P.package/deep/file", "watched/P.package/modules/file", "watched/P.package/.git/file",
             "watched/Q.PACKAGE/file", "watched/plain/file", "watched/plain/S.package/file", "watched/.T.package/file"})
        write(folder, path);
    makeLinkAt(folder.path("watched/R"), "../linked/R.package");
    makeLinkAt(folder.path("watched/P.package/link"), "../../linked");
    makeLinkAt(folder.path("watched/P.package/up"), "..");
    makeLinkAt(folder.path("watched/dangling"), folder.path("nowhere"));
    int told = 0;
    const auto monitor = KRFolderMonitor::initWithURL(
        fileURLFromPath(folder.path("watched"), FileKind::Folder), [&] { ++told; }, {"package", {"modules"}});
    before(folder);
    letFoldersSettle(environment);
    told = 0;
    change(folder);
    letFoldersSettle(environment);
    QTEST(told, "told");
    letFoldersSettle(environment);
    QTEST(told, "told");
}

void tst_KRFolderMonitor_Changes::whereFoldersComeAndGo_data()
{
    QTest::addColumn<Act>("before");
    QTest::addColumn<Act>("change");
    QTest::addColumn<int>("told");
    const auto row = [](const char *tag, int told, Act before, Act change) {
        QTest::newRow(tag) << before << change << told;
    };
    constexpr Act removeIt = [](const auto &folder) { remove(folder, "a"); };
    constexpr Act renameIt = [](const auto &folder) { rename(folder, "a/b/watched", "a/b/renamed"); };

    row("it is deleted", 1, nothing, [](const auto &folder) { remove(folder, "a/b/watched"); });
    row("it is deleted with those above", 1, nothing, removeIt);
    row("it is renamed", 1, nothing, renameIt);
    row(
        "it is deleted while it is somebody's current folder", 1,
        [](const auto &folder) { remove(folder, "a/b/watched/file"); },
        [](const auto &folder) {
            const auto previous = QDir::currentPath();
            QVERIFY(QDir::setCurrent(QString::fromUtf8(folder.path("a/b/watched"))));
            remove(folder, "a/b/watched");
            readFolderEvents();
            QVERIFY(QDir::setCurrent(previous));
        });
    row("it comes back", 1, removeIt, [](const auto &folder) { write(folder, "a/b/watched/file"); });
    row("only those above come back", 0, removeIt, [](const auto &folder) { makeFolderAt(folder.path("a/b")); });
    row("it comes back in steps", 1, removeIt, [](const auto &folder) {
        makeFolderAt(folder.path("a"));
        readFolderEvents();
        makeFolderAt(folder.path("a/b"));
        readFolderEvents();
        makeFolderAt(folder.path("a/b/watched"));
    });
    row(
        "it comes back, and so did the one above that was left", 1, [](const auto &folder) { remove(folder, "a/b"); },
        [](const auto &folder) {
            rename(folder, "a", "old");
            write(folder, "a/b/watched/file");
        });
    row(
        "it has come back", 1,
        [](const auto &folder) {
            remove(folder, "a");
            write(folder, "a/b/watched/file");
        },
        [](const auto &folder) { write(folder, "a/b/watched/new"); });
    row(
        "a package in what has come back", 1,
        [](const auto &folder) {
            remove(folder, "a");
            write(folder, "a/b/watched/P.package/file");
        },
        [](const auto &folder) { write(folder, "a/b/watched/P.package/file"); });
    row("it was renamed, and something happens there", 0, renameIt,
        [](const auto &folder) { write(folder, "a/b/renamed/new"); });
    row("it is renamed back", 1, renameIt, [](const auto &folder) { rename(folder, "a/b/renamed", "a/b/watched"); });
    row(
        "another one has its name", 1,
        [](const auto &folder) {
            rename(folder, "a/b/watched", "a/b/renamed");
            makeFolderAt(folder.path("a/b/watched"));
        },
        [](const auto &folder) { write(folder, "a/b/watched/new"); });
    row(
        "another one is renamed over it", 1,
        [](const auto &folder) {
            remove(folder, "a/b/watched/file");
            rename(folder, "other", "a/b/watched");
        },
        [](const auto &folder) { write(folder, "a/b/watched/new"); });
    row("a file comes in its place", 0, removeIt, [](const auto &folder) { write(folder, "a/b/watched"); });
    row(
        "a folder in place of the file that had its name", 1,
        [](const auto &folder) {
            remove(folder, "a/b/watched");
            write(folder, "a/b/watched");
        },
        [](const auto &folder) {
            remove(folder, "a/b/watched");
            makeFolderAt(folder.path("a/b/watched"));
        });
    row(
        "a link has its name", 1,
        [](const auto &folder) {
            remove(folder, "a/b/watched");
            makeLinkAt(folder.path("a/b/watched"), "../../other");
        },
        [](const auto &folder) { write(folder, "other/new"); });
    row(
        "the link leads elsewhere", 1,
        [](const auto &folder) {
            remove(folder, "a/b/watched");
            makeLinkAt(folder.path("a/b/watched"), "../../other");
        },
        [](const auto &folder) {
            makeLinkAt(folder.path("a/b/link"), "../../third");
            rename(folder, "a/b/link", "a/b/watched");
        });
}

void tst_KRFolderMonitor_Changes::whereFoldersComeAndGo()
{
    QFETCH(Act, before);
    QFETCH(Act, change);
    TestEnvironment environment;
    const TemporaryFolder folder;
    write(folder, "a/b/watched/file");
    makeFolderAt(folder.path("other"));
    makeFolderAt(folder.path("third"));
    int told = 0;
    const auto monitor = KRFolderMonitor::initWithURL(
        fileURLFromPath(folder.path("a/b/watched"), FileKind::Folder), [&] { ++told; }, {"package", {}});
    before(folder);
    letFoldersSettle(environment);
    told = 0;
    change(folder);
    letFoldersSettle(environment);
    QTEST(told, "told");
    letFoldersSettle(environment);
    QTEST(told, "told");
}

QTEST_GUILESS_MAIN(tst_KRFolderMonitor_Changes)
#include "tst_krfoldermonitor_changes.moc"
