// Folders that come and go, and monitors that end at any moment.

#include "platform/monitoring/KRFolderMonitor.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QDir>
#include <QtTest>

#include <vector>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_KRFolderMonitor_Lifetimes : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_environment.reset(); }

    void deletedAndMadeAgain();
    void renamedAndMadeAgain();
    void renamedThereAndBack();
    void replacedByAnother();
    void folderThatDoesNotExistYet_data();
    void folderThatDoesNotExistYet();
    void whatCannotBeWatched_data();
    void whatCannotBeWatched();
    void lostChangesMeanEverything();
    void tenThousandFolders();
    void diesInItsOwnCall();
    void allDieInOneCall();
    void ownerDiesInTheCall();
    void comesInACall();

private:
    QString path(const QString &name = {}) const { return m_environment->path(u"top/folder/"_s + name); }
    std::unique_ptr<KRFolderMonitor> watch(const QString &folder)
    {
        return KRFolderMonitor::initWithURL(QUrl::fromLocalFile(folder), [this] { ++m_calls; }, {"package", {}});
    }
    void settle()
    {
        QCoreApplication::processEvents();
        m_environment->queue.advance(5s);
    }
    int callsAfterwards()
    {
        settle();
        return std::exchange(m_calls, 0);
    }

    std::unique_ptr<TestEnvironment> m_environment;
    int m_calls = 0;
};

namespace {

/// Where thousands of folders come and go quickly: in memory, where the system has such a place.
QString templateForManyFolders()
{
    const QFileInfo memory(u"/dev/shm"_s);
    return (memory.isWritable() ? memory.filePath() : QDir::tempPath()) + u"/korvan-XXXXXX"_s;
}

} // namespace

void tst_KRFolderMonitor_Lifetimes::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_calls = 0;
    QVERIFY(QDir().mkpath(path(u"A.package"_s)));
}

void tst_KRFolderMonitor_Lifetimes::deletedAndMadeAgain()
{
    const auto monitor = watch(path());
    for (int times = 0; times < 3; ++times) {
        QVERIFY(QDir(path()).removeRecursively());
        QCOMPARE(callsAfterwards(), 1);
        QVERIFY(QDir().mkpath(path(u"B.package"_s)));
        QCOMPARE(callsAfterwards(), 1);
        writeFile(path(u"B.package/file"_s), "text");
        QCOMPARE(callsAfterwards(), 1);
    }
    QVERIFY(QDir(m_environment->path(u"top"_s)).removeRecursively()); // with the folder above
    QCOMPARE(callsAfterwards(), 1);
    QVERIFY(QDir().mkpath(path()));
    QCOMPARE(callsAfterwards(), 1);
    writeFile(path(u"file"_s), "text");
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Lifetimes::renamedAndMadeAgain()
{
    const auto monitor = watch(path());
    QVERIFY(QDir().rename(path(), m_environment->path(u"top/other"_s)));
    QCOMPARE(callsAfterwards(), 1);
    writeFile(m_environment->path(u"top/other/file"_s), "text"); // it is not ours any more
    writeFile(m_environment->path(u"top/other/A.package/file"_s), "text");
    QCOMPARE(callsAfterwards(), 0);
    QVERIFY(QDir().mkpath(path()));
    QCOMPARE(callsAfterwards(), 1);
    writeFile(path(u"file"_s), "text");
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Lifetimes::renamedThereAndBack()
{
    const auto monitor = watch(path());
    QVERIFY(QDir().rename(path(), m_environment->path(u"top/other"_s)));
    QVERIFY(QDir().rename(m_environment->path(u"top/other"_s), path()));
    QCOMPARE(callsAfterwards(), 1);
    writeFile(path(u"A.package/file"_s), "text");
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Lifetimes::replacedByAnother()
{
    const auto monitor = watch(path());
    QVERIFY(QDir().mkpath(m_environment->path(u"new/B.package"_s)));
    QVERIFY(QDir().rename(path(), m_environment->path(u"old"_s)));
    QVERIFY(QDir().rename(m_environment->path(u"new"_s), path()));
    QCOMPARE(callsAfterwards(), 1);
    writeFile(path(u"B.package/file"_s), "text");
    QCOMPARE(callsAfterwards(), 1);
    writeFile(m_environment->path(u"old/A.package/file"_s), "text");
    QCOMPARE(callsAfterwards(), 0);
}

void tst_KRFolderMonitor_Lifetimes::folderThatDoesNotExistYet_data()
{
    QTest::addColumn<QString>("folder");

    QTest::newRow("in a folder that is there") << u"top/new"_s;
    QTest::newRow("in one that is not there either") << u"top/a/b/c"_s;
}

void tst_KRFolderMonitor_Lifetimes::folderThatDoesNotExistYet()
{
    QFETCH(QString, folder);
    const auto monitor = watch(m_environment->path(folder));
    QVERIFY(monitor);
    QVERIFY(QDir().mkpath(m_environment->path(u"top/unrelated"_s)));
    QCOMPARE(callsAfterwards(), 0);
    QVERIFY(QDir().mkpath(m_environment->path(folder)));
    QCOMPARE(callsAfterwards(), 1);
    writeFile(m_environment->path(folder + u"/B.package/file"_s), "text");
    QCOMPARE(callsAfterwards(), 1);
    writeFile(m_environment->path(folder + u"/B.package/file"_s), "more");
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Lifetimes::whatCannotBeWatched_data()
{
    QTest::addColumn<QUrl>("url");

    QTest::newRow("nothing") << QUrl();
    QTest::newRow("a file") << QUrl::fromLocalFile(u"/etc/hostname"_s);
    QTest::newRow("a device") << QUrl::fromLocalFile(u"/dev/null"_s);
    QTest::newRow("on another computer") << QUrl(u"file://example.com/folder"_s);
    QTest::newRow("not a file at all") << QUrl(u"https://example.com/"_s);
}

void tst_KRFolderMonitor_Lifetimes::whatCannotBeWatched()
{
    QFETCH(QUrl, url);
    QVERIFY(!KRFolderMonitor::initWithURL(url, [] {}));
}

void tst_KRFolderMonitor_Lifetimes::lostChangesMeanEverything()
{
    QFile limit(u"/proc/sys/fs/inotify/max_queued_events"_s);
    QVERIFY(limit.open(QIODevice::ReadOnly));
    const int most = limit.readAll().trimmed().toInt();
    const QTemporaryDir noise(templateForManyFolders());
    const auto noisy = KRFolderMonitor::initWithURL(QUrl::fromLocalFile(noise.path()), [] {});
    const auto monitor = watch(path());
    for (int number = 0; number <= most / 2; ++number) { // each is two changes that are not the same
        QVERIFY(QDir().mkdir(noise.filePath(u"folder"_s)));
        QVERIFY(QDir().rmdir(noise.filePath(u"folder"_s)));
    }
    writeFile(path(u"B.package/file"_s), "text"); // this change is lost
    QCOMPARE(callsAfterwards(), 1);
    writeFile(path(u"B.package/file"_s), "more");
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Lifetimes::tenThousandFolders()
{
    const QTemporaryDir top(templateForManyFolders());
    std::vector<std::unique_ptr<KRFolderMonitor>> monitors;
    for (int number = 0; number < 10'000; ++number) {
        const auto folder = top.filePath(QString::number(number));
        QVERIFY(QDir().mkdir(folder));
        monitors.push_back(watch(folder));
        QVERIFY(monitors.back());
    }
    writeFile(top.filePath(u"0/file"_s), "text");
    writeFile(top.filePath(u"9999/file"_s), "text");
    QCOMPARE(callsAfterwards(), 2);
}

void tst_KRFolderMonitor_Lifetimes::diesInItsOwnCall()
{
    std::unique_ptr<KRFolderMonitor> monitor;
    monitor = KRFolderMonitor::initWithURL(QUrl::fromLocalFile(path()), [this, &monitor] {
        monitor.reset();
        ++m_calls;
    });
    const auto other = watch(path());
    writeFile(path(u"file"_s), "text");
    QCOMPARE(callsAfterwards(), 2);
    writeFile(path(u"other"_s), "text");
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Lifetimes::allDieInOneCall()
{
    std::vector<std::unique_ptr<KRFolderMonitor>> monitors;
    for (int number = 0; number < 3; ++number) {
        monitors.push_back(KRFolderMonitor::initWithURL(QUrl::fromLocalFile(path()), [this, &monitors] {
            monitors.clear();
            ++m_calls;
        }));
    }
    writeFile(path(u"file"_s), "text");
    QCOMPARE(callsAfterwards(), 1);
    const auto later = watch(path());
    writeFile(path(u"other"_s), "text");
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Lifetimes::ownerDiesInTheCall()
{
    struct Owner
    {
        std::unique_ptr<KRFolderMonitor> monitor;
        int calls = 0;
    };
    auto owner = std::make_shared<Owner>();
    const std::weak_ptr observed = owner;
    owner->monitor = KRFolderMonitor::initWithURL(QUrl::fromLocalFile(path()), [owner, this] {
        owner->monitor.reset(); // the last thing that holds the owner is this call
        ++owner->calls;
        m_calls = owner->calls;
    });
    owner.reset();
    writeFile(path(u"file"_s), "text");
    QCOMPARE(callsAfterwards(), 1);
    QVERIFY(observed.expired());
}

void tst_KRFolderMonitor_Lifetimes::comesInACall()
{
    std::unique_ptr<KRFolderMonitor> second;
    const auto first =
        KRFolderMonitor::initWithURL(QUrl::fromLocalFile(path()), [this, &second] { second = watch(path()); });
    writeFile(path(u"file"_s), "text");
    QCOMPARE(callsAfterwards(), 0);
    writeFile(path(u"other"_s), "text");
    settle();
    QVERIFY(m_calls <= 1); // the second one was replaced meanwhile, or called before
    QVERIFY(second);
}

QTEST_GUILESS_MAIN(tst_KRFolderMonitor_Lifetimes)
#include "tst_krfoldermonitor_lifetimes.moc"
