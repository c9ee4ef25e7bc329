// When a monitor tells of changes, what it is made for, and how it ends.

#include "platform/FileURL.h"
#include "platform/monitoring/KRFolderMonitor.h"
#include "support/FolderEventsReading.h"
#include "support/PathFiles.h"

#include <QtTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using Monitor = std::unique_ptr<KRFolderMonitor>;

class tst_KRFolderMonitor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void whatCanBeWatched_data();
    void whatCanBeWatched();
    void savedByRenamingAgainAndAgain();
    void folderFilledBeforeItIsWatched();
    void tellsOnceItIsQuiet();
    void tellsAfterASecondAtTheLatest();
    void allFoldersWaitTogether();
    void oneFolderUnderSeveralPaths();
    void oneFolderWatchedInTwoWays();
    void linkToThePackageAround();
    void writingWhileItIsTold();
    void nothingAfterItsEnd();
    void endsInItsOwnCallback_data();
    void endsInItsOwnCallback();
    void madeInACallback();
    void lossOfEvents();
    void tenThousandFolders();

private:
    QByteArray path(const QByteArray &relativePath) const { return m_folder->path(relativePath); }
    Monitor monitor(const QByteArray &relativePath, std::function<void()> changed) const;
    void change(const QByteArray &folder = "watched");
    void advance(std::chrono::milliseconds time) { m_environment->queue.advance(time); }
    void settle() { letFoldersSettle(*m_environment); }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<TemporaryFolder> m_folder;
    int m_files = 0;
};

void tst_KRFolderMonitor::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_folder = std::make_unique<TemporaryFolder>();
    makeFolderAt(path("watched"));
}

void tst_KRFolderMonitor::cleanup()
{
    m_folder.reset();
    m_environment.reset();
}

Monitor tst_KRFolderMonitor::monitor(const QByteArray &relativePath, std::function<void()> changed) const
{
    return KRFolderMonitor::initWithURL(
        fileURLFromPath(path(relativePath), FileKind::Folder), std::move(changed), {"package", {}});
}

/// Something happens in the folder, and is read of.
void tst_KRFolderMonitor::change(const QByteArray &folder)
{
    writeFileAt(path(folder + "/" + QByteArray::number(++m_files)), "");
    readFolderEvents();
}

void tst_KRFolderMonitor::whatCanBeWatched_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("canBeWatched");
    QTest::newRow("folder") << "file://%/watched/"_ba << true;
    QTest::newRow("no slash at the end") << "file://%/watched"_ba << true;
    QTest::newRow("link to a folder") << "file://%/link/"_ba << true;
    QTest::newRow("missing, but may come") << "file://%/missing/deep/"_ba << true;
    QTest::newRow("link to nowhere") << "file://%/dangling/"_ba << true;
    QTest::newRow("root") << "file:///"_ba << true;
    QTest::newRow("file") << "file://%/file"_ba << false;
    QTest::newRow("link to a file") << "file://%/link to file"_ba << false;
    QTest::newRow("pipe") << "file://%/pipe"_ba << false;
    QTest::newRow("no URL") << ""_ba << false;
    QTest::newRow("relative") << "watched"_ba << false;
    QTest::newRow("another scheme") << "https://example.com/watched/"_ba << false;
    QTest::newRow("another computer") << "file://example.com/watched/"_ba << false;
    QTest::newRow("NUL") << "file://%/watched%00x"_ba << false;
}

void tst_KRFolderMonitor::whatCanBeWatched()
{
    QFETCH(QByteArray, text);
    writeFileAt(path("file"), "");
    makePipeAt(path("pipe"));
    makeLinkAt(path("link"), "watched");
    makeLinkAt(path("link to file"), "file");
    makeLinkAt(path("dangling"), "nowhere");
    const QUrl url(QString::fromUtf8(text.replace("%/", m_folder->path() + '/')));
    const auto made = KRFolderMonitor::initWithURL(url, [] {});
    QTEST(made != nullptr, "canBeWatched");
    settle();
}

void tst_KRFolderMonitor::savedByRenamingAgainAndAgain()
{
    writeFileAt(path("watched/P.package/script.js"), "");
    int told = 0;
    const auto watching = monitor("watched", [&] { ++told; });
    for (int i = 1; i <= 5; ++i) {
        writeFileAt(path("watched/P.package/.script.js.new"), QByteArray::number(i));
        renameAt(path("watched/P.package/.script.js.new"), path("watched/P.package/script.js"));
        settle();
        QCOMPARE(told, i);
    }
}

/// The new folders are watched once they are read of; their files are older.
void tst_KRFolderMonitor::folderFilledBeforeItIsWatched()
{
    makeFolderAt(path("watched/P.package"));
    QByteArrayList seen;
    const auto watching = monitor("watched", [&] {
        QFile file(QString::fromUtf8(path("watched/P.package/a/b/file")));
        QVERIFY(file.open(QIODevice::ReadOnly));
        seen.append(file.readAll());
    });
    writeFileAt(path("watched/P.package/a/b/file"), "first");
    settle();
    writeFileAt(path("watched/P.package/a/b/file"), "second");
    settle();
    QCOMPARE(seen, (QByteArrayList{"first", "second"}));
}

void tst_KRFolderMonitor::tellsOnceItIsQuiet()
{
    int told = 0;
    const auto watching = monitor("watched", [&] { ++told; });
    QCOMPARE(m_environment->queue.scheduledCount(), 0);
    for (int i = 0; i < 5; ++i) {
        change();
        advance(99ms);
        QCOMPARE(told, 0);
    }
    advance(1ms);
    QCOMPARE(told, 1);
    QCOMPARE(m_environment->queue.scheduledCount(), 0); // nothing to wait for
    advance(1h);
    QCOMPARE(told, 1);
    change();
    advance(100ms);
    QCOMPARE(told, 2);
}

void tst_KRFolderMonitor::tellsAfterASecondAtTheLatest()
{
    QList<std::chrono::milliseconds> told;
    const auto watching = monitor("watched", [&] { told.append(m_environment->queue.now()); });
    for (int i = 0; i < 500; ++i) {
        change();
        advance(5ms);
    }
    advance(1s);
    QCOMPARE(told, (QList{1000ms, 2000ms, 2595ms}));
}

void tst_KRFolderMonitor::allFoldersWaitTogether()
{
    QByteArrayList told;
    std::vector<Monitor> monitors;
    for (const QByteArray name : {"a", "b", "c"}) {
        makeFolderAt(path(name));
        monitors.push_back(monitor(name, [&told, name] { told.append(name); }));
    }
    change("b");
    advance(60ms);
    change("a");
    advance(60ms);
    change("b");
    advance(99ms);
    QCOMPARE(told, QByteArrayList());
    advance(1ms);
    QCOMPARE(told, (QByteArrayList{"a", "b"})); // each once
}

void tst_KRFolderMonitor::oneFolderUnderSeveralPaths()
{
    makeLinkAt(path("link"), "watched");
    QByteArrayList told;
    const auto direct = monitor("watched", [&] { told.append("direct"); });
    auto linked = monitor("link", [&] { told.append("linked"); });
    const auto other = monitor("watched", [&] { told.append("other"); });
    change();
    settle();
    QCOMPARE(told, (QByteArrayList{"direct", "linked", "other"}));
    linked.reset();
    told.clear();
    change();
    settle();
    QCOMPARE(told, (QByteArrayList{"direct", "other"}));
}

void tst_KRFolderMonitor::oneFolderWatchedInTwoWays()
{
    writeFileAt(path("watched/P.package/file"), "");
    QByteArrayList told;
    const auto around = monitor("watched", [&] { told.append("around"); });
    auto direct = monitor("watched/P.package", [&] { told.append("direct"); });
    writeFileAt(path("watched/P.package/file"), "x");
    settle();
    QCOMPARE(told, QByteArrayList{"around"}); // only packages are watched for writes
    direct.reset();
    writeFileAt(path("watched/P.package/file"), "x");
    settle();
    QCOMPARE(told, (QByteArrayList{"around", "around"}));
}

/// The folder's own events end what else has been watching it.
void tst_KRFolderMonitor::linkToThePackageAround()
{
    makeFolderAt(path("P.package/inside"));
    makeLinkAt(path("P.package/inside/link"), path("P.package"));
    int told = 0;
    const auto watching = monitor("P.package/inside", [&] { ++told; });
    writeFileAt(path("P.package/file"), "");
    settle();
    QCOMPARE(told, 1);
    removeAt(path("P.package/inside/link"));
    settle();
    QCOMPARE(told, 2);
    writeFileAt(path("P.package/file"), "");
    settle();
    QCOMPARE(told, 2);
}

void tst_KRFolderMonitor::writingWhileItIsTold()
{
    int told = 0;
    const auto watching = monitor("watched", [&] {
        if (++told == 1)
            change(); // read of in a nested event loop
        else if (told == 2)
            writeFileAt(path("watched/last"), "");
    });
    change();
    advance(100ms);
    QCOMPARE(told, 1);
    settle();
    QCOMPARE(told, 2);
    settle();
    QCOMPARE(told, 3);
    settle();
    QCOMPARE(told, 3);
}

void tst_KRFolderMonitor::nothingAfterItsEnd()
{
    int told = 0;
    auto watching = monitor("watched", [&] { ++told; });
    writeFileAt(path("watched/unread"), "");
    watching.reset();
    settle();
    watching = monitor("watched", [&] { ++told; });
    change();
    watching.reset();
    advance(1h);
    QCOMPARE(told, 0);
    QCOMPARE(m_environment->queue.scheduledCount(), 0);
}

void tst_KRFolderMonitor::endsInItsOwnCallback_data()
{
    QTest::addColumn<int>("monitors");
    QTest::addColumn<bool>("all");
    QTest::newRow("the only one") << 1 << true;
    QTest::newRow("one of several") << 3 << false;
    QTest::newRow("all of several") << 3 << true;
}

void tst_KRFolderMonitor::endsInItsOwnCallback()
{
    QFETCH(int, monitors);
    QFETCH(bool, all);
    // The callbacks hold the last reference to what holds the monitors.
    const auto told = std::make_shared<int>(0);
    auto owner = std::make_shared<std::vector<Monitor>>();
    for (int i = 0; i < monitors; ++i) {
        owner->push_back(monitor("watched", [owner, told, all, i] {
            ++*told;
            if (all)
                owner->clear();
            else
                (*owner)[std::size_t(i)].reset();
            ++*told; // what the callback holds is still there
        }));
    }
    const std::weak_ptr<std::vector<Monitor>> held = owner;
    owner.reset();
    change();
    advance(100ms);
    QCOMPARE(*told, all ? 2 : 2 * monitors);
    QVERIFY(held.expired());
    advance(1h);
    QCOMPARE(*told, all ? 2 : 2 * monitors);
}

void tst_KRFolderMonitor::madeInACallback()
{
    int toldFirst = 0;
    int toldSecond = 0;
    Monitor second;
    const auto first = monitor("watched", [&] {
        ++toldFirst;
        second = monitor("watched", [&] { ++toldSecond; });
    });
    change();
    advance(100ms);
    advance(1h);
    QCOMPARE(toldFirst, 1);
    QCOMPARE(toldSecond, 0);
    change();
    advance(100ms);
    QCOMPARE(toldSecond, 0); // replaced meanwhile
    QCOMPARE(toldFirst, 2);
}

/// The system keeps a bounded number of events, and then says that some are lost.
void tst_KRFolderMonitor::lossOfEvents()
{
    QFile limit(u"/proc/sys/fs/inotify/max_queued_events"_s);
    QVERIFY(limit.open(QIODevice::ReadOnly));
    const int most = limit.readAll().trimmed().toInt();
    makeFolderAt(path("other"));
    makeFolderAt(path("quiet/P.package"));
    writeFileAt(path("watched/a"), "");
    writeFileAt(path("watched/b"), "");
    QByteArrayList told;
    const auto watching = monitor("watched", [&] { told.append("watched"); });
    const auto other = monitor("other", [&] { told.append("other"); });
    const auto quiet = monitor("quiet", [&] { told.append("quiet"); });
    const QByteArray names[] = {path("watched/a"), path("watched/b")}; // the same event twice in a row counts once
    for (int i = 0; i <= most; ++i)
        ::chmod(names[i % 2].constData(), 0600);
    // All of this is lost.
    QDir(QString::fromUtf8(path("other"))).removeRecursively();
    writeFileAt(path("other/P.package/file"), "");
    writeFileAt(path("quiet/P.package/deep/file"), "");
    settle();
    QCOMPARE(told, (QByteArrayList{"watched", "other", "quiet"}));
    for (const QByteArray changed : {"other", "other/P.package", "quiet/P.package/deep"}) {
        told.clear();
        change(changed);
        advance(100ms);
        QCOMPARE(told, QByteArrayList{changed.split('/').first()});
    }
}

void tst_KRFolderMonitor::tenThousandFolders()
{
    constexpr int count = 10'000;
    // In memory where there is such a place: some disks take half a minute to delete them.
    const QTemporaryDir inMemory(u"/dev/shm/tst_KRFolderMonitor-XXXXXX"_s);
    const auto root = inMemory.isValid() ? inMemory.path().toUtf8() : m_folder->path();
    const auto folder = [&root](
                            int i) { return root + '/' + QByteArray::number(i % 100) + '/' + QByteArray::number(i); };
    std::vector<Monitor> monitors;
    QList<int> told;
    for (int i = 0; i < count; ++i) {
        makeFolderAt(folder(i));
        monitors.push_back(
            KRFolderMonitor::initWithURL(fileURLFromPath(folder(i), FileKind::Folder), [&told, i] { told.append(i); }));
        QVERIFY(monitors.back());
    }
    writeFileAt(folder(9999) + "/file", "");
    writeFileAt(folder(0) + "/file", "");
    settle();
    QCOMPARE(told, (QList{0, 9999}));
    monitors.clear();
    writeFileAt(folder(1) + "/file", "");
    settle();
    QCOMPARE(told.size(), 2);
}

QTEST_GUILESS_MAIN(tst_KRFolderMonitor)
#include "tst_krfoldermonitor.moc"
