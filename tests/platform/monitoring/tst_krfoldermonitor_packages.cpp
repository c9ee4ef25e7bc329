// What is told of changes in folders.

#include "platform/monitoring/KRFolderMonitor.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_KRFolderMonitor_Packages : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void changesOfEntries_data();
    void changesOfEntries();
    void whatIsNotTold_data();
    void whatIsNotTold();
    void changesInsidePackages_data();
    void changesInsidePackages();
    void whatIsNotToldOfPackages_data();
    void whatIsNotToldOfPackages();
    void savingByRenamingOver();
    void newFolderInAPackageIsWatched();
    void packageThatComesIsWatched_data();
    void packageThatComesIsWatched();
    void packageThatLeftIsNotWatched();
    void manyChangesAreOneCall();
    void endlessChangesAreAHandfulOfCalls();
    void quietTimeIsKept();
    void everyMonitorOfAFolderIsCalled();
    void oneFolderByTwoPaths();
    void endOfAMonitorIsTheEndOfItsCalls();

private:
    QString path(const QString &name = {}) const { return m_environment->path(u"folder/"_s + name); }
    std::unique_ptr<KRFolderMonitor> watch(const QString &folder)
    {
        return KRFolderMonitor::initWithURL(
            QUrl::fromLocalFile(folder), [this] { ++m_calls; }, {"package", {"node_modules"}});
    }
    /// Lets the monitors see what has happened, and enough time pass.
    int callsAfterwards()
    {
        QCoreApplication::processEvents();
        m_environment->queue.advance(5s);
        return std::exchange(m_calls, 0);
    }
    /// Does what a row says: "write a", "append a", "remove a", "rename a b", "mkdir a", "rmdir a", "link a b",
    /// "protect a".
    void perform(const QString &action);

    std::unique_ptr<TestEnvironment> m_environment;
    int m_calls = 0;
};

void tst_KRFolderMonitor_Packages::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_calls = 0;
    writeFile(path(u"file"_s), "text");
    writeFile(path(u"sub/file"_s), "text");
    writeFile(path(u"A.package/Contents/manifest"_s), "text");
    writeFile(path(u"A.package/Contents/deep/er/script"_s), "text");
    writeFile(path(u"A.package/node_modules/library/file"_s), "text");
    writeFile(path(u"A.package/.git/file"_s), "text");
    writeFile(m_environment->path(u"elsewhere/B.package/Contents/manifest"_s), "text");
    writeFile(m_environment->path(u"elsewhere/file"_s), "text");
}

void tst_KRFolderMonitor_Packages::cleanup()
{
    m_environment.reset();
}

void tst_KRFolderMonitor_Packages::perform(const QString &action)
{
    const auto words = action.split(u' ');
    const auto first = path(words.value(1));
    const auto second = path(words.value(2));
    QFile file(first);
    if (words.first() == u"write") {
        writeFile(first, "new text");
    } else if (words.first() == u"append") {
        QVERIFY(file.open(QIODevice::Append) && file.write("more") == 4);
    } else if (words.first() == u"remove") {
        QVERIFY(file.remove());
    } else if (words.first() == u"rename") {
        QVERIFY(QDir().rename(first, second));
    } else if (words.first() == u"mkdir") {
        QVERIFY(QDir().mkpath(first));
    } else if (words.first() == u"rmdir") {
        QVERIFY(QDir(first).removeRecursively());
    } else if (words.first() == u"link") {
        QVERIFY(QFile::link(first, second));
    } else if (words.first() == u"protect") {
        QVERIFY(file.setPermissions(QFile::ReadOwner));
    } else {
        QFAIL("unknown action");
    }
}

void tst_KRFolderMonitor_Packages::changesOfEntries_data()
{
    QTest::addColumn<QString>("action");

    QTest::newRow("file comes") << u"write new"_s;
    QTest::newRow("file goes") << u"remove file"_s;
    QTest::newRow("file is renamed") << u"rename file other"_s;
    QTest::newRow("file moves in") << u"rename ../elsewhere/file new"_s;
    QTest::newRow("file moves out") << u"rename file ../elsewhere/new"_s;
    QTest::newRow("folder comes") << u"mkdir new"_s;
    QTest::newRow("folder goes") << u"rmdir sub"_s;
    QTest::newRow("folder is renamed") << u"rename sub other"_s;
    QTest::newRow("link comes") << u"link file new"_s;
    QTest::newRow("package comes") << u"rename ../elsewhere/B.package B.package"_s;
    QTest::newRow("package goes") << u"rmdir A.package"_s;
    QTest::newRow("attributes of an entry") << u"protect file"_s;
}

void tst_KRFolderMonitor_Packages::changesOfEntries()
{
    QFETCH(QString, action);
    const auto monitor = watch(path());
    QVERIFY(monitor);
    QCOMPARE(callsAfterwards(), 0);
    perform(action);
    QCOMPARE(callsAfterwards(), 1);
    QCOMPARE(callsAfterwards(), 0);
}

void tst_KRFolderMonitor_Packages::whatIsNotTold_data()
{
    QTest::addColumn<QString>("action");

    QTest::newRow("content of a file") << u"append file"_s;
    QTest::newRow("entries of a sub-folder") << u"write sub/new"_s;
    QTest::newRow("elsewhere") << u"write ../elsewhere/new"_s;
}

void tst_KRFolderMonitor_Packages::whatIsNotTold()
{
    QFETCH(QString, action);
    const auto monitor = watch(path());
    perform(action);
    QCOMPARE(callsAfterwards(), 0);
}

void tst_KRFolderMonitor_Packages::changesInsidePackages_data()
{
    QTest::addColumn<QString>("action");

    QTest::newRow("manifest is saved") << u"write A.package/Contents/manifest"_s;
    QTest::newRow("manifest grows") << u"append A.package/Contents/manifest"_s;
    QTest::newRow("manifest goes") << u"remove A.package/Contents/manifest"_s;
    QTest::newRow("script deep inside") << u"write A.package/Contents/deep/er/script"_s;
    QTest::newRow("new script") << u"write A.package/Contents/deep/new"_s;
    QTest::newRow("folder of scripts goes") << u"rmdir A.package/Contents/deep"_s;
    QTest::newRow("folder of scripts is renamed") << u"rename A.package/Contents/deep A.package/Contents/other"_s;
    QTest::newRow("empty folder") << u"mkdir A.package/new"_s;
    QTest::newRow("attributes") << u"protect A.package/Contents/manifest"_s;
}

void tst_KRFolderMonitor_Packages::changesInsidePackages()
{
    QFETCH(QString, action);
    const auto monitor = watch(path());
    perform(action);
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Packages::whatIsNotToldOfPackages_data()
{
    QTest::addColumn<QString>("action");

    QTest::newRow("in an ignored folder") << u"write A.package/node_modules/library/file"_s;
    QTest::newRow("in a hidden folder") << u"write A.package/.git/file"_s;
    QTest::newRow("in a package of another folder") << u"write ../elsewhere/B.package/Contents/manifest"_s;
}

void tst_KRFolderMonitor_Packages::whatIsNotToldOfPackages()
{
    QFETCH(QString, action);
    const auto monitor = watch(path());
    perform(action);
    QCOMPARE(callsAfterwards(), 0);
    const auto plain = KRFolderMonitor::initWithURL(QUrl::fromLocalFile(path()), [this] { ++m_calls; });
    perform(u"write A.package/Contents/manifest"_s);
    QCOMPARE(callsAfterwards(), 1); // by the first one only: the other knows of no packages
}

void tst_KRFolderMonitor_Packages::savingByRenamingOver()
{
    const auto monitor = watch(path());
    for (int times = 0; times < 5; ++times) {
        perform(u"write ../elsewhere/saved"_s);
        QVERIFY(QFile::remove(path(u"A.package/Contents/manifest"_s)));
        perform(u"rename ../elsewhere/saved A.package/Contents/manifest"_s);
        QCOMPARE(callsAfterwards(), 1);
    }
}

void tst_KRFolderMonitor_Packages::newFolderInAPackageIsWatched()
{
    const auto monitor = watch(path());
    perform(u"write A.package/Contents/new/er/script"_s); // filled before anybody has seen it
    QCOMPARE(callsAfterwards(), 1);
    perform(u"append A.package/Contents/new/er/script"_s);
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Packages::packageThatComesIsWatched_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("change");

    QTest::newRow("it is made") << u"write C.package/Contents/manifest"_s << u"append C.package/Contents/manifest"_s;
    QTest::newRow("it moves in") << u"rename ../elsewhere/B.package B.package"_s
                                 << u"append B.package/Contents/manifest"_s;
    QTest::newRow("a folder becomes one") << u"rename sub sub.package"_s << u"append sub.package/file"_s;
    QTest::newRow("a link to it") << u"link ../elsewhere/B.package B"_s
                                  << u"append ../elsewhere/B.package/Contents/manifest"_s;
    QTest::newRow("its name in capitals") << u"write C.PACKAGE/file"_s << u"append C.PACKAGE/file"_s;
}

void tst_KRFolderMonitor_Packages::packageThatComesIsWatched()
{
    QFETCH(QString, action);
    QFETCH(QString, change);
    const auto monitor = watch(path());
    perform(action);
    QCOMPARE(callsAfterwards(), 1);
    perform(change);
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Packages::packageThatLeftIsNotWatched()
{
    const auto monitor = watch(path());
    perform(u"rename A.package ../elsewhere/A.package"_s);
    QCOMPARE(callsAfterwards(), 1);
    perform(u"write ../elsewhere/A.package/Contents/manifest"_s);
    QCOMPARE(callsAfterwards(), 0);
    perform(u"rename ../elsewhere/A.package A.package"_s);
    QCOMPARE(callsAfterwards(), 1);
    perform(u"write A.package/Contents/manifest"_s);
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Packages::manyChangesAreOneCall()
{
    const auto monitor = watch(path());
    for (int number = 0; number < 500; ++number)
        writeFile(path(u"C.package/Contents/%1/file"_s.arg(number)), "text");
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Packages::endlessChangesAreAHandfulOfCalls()
{
    const auto monitor = watch(path());
    for (int number = 0; number < 100; ++number) { // 5 seconds
        writeFile(path(QString::number(number)), "text");
        QCoreApplication::processEvents();
        m_environment->queue.advance(50ms);
    }
    QVERIFY2(m_calls >= 4 && m_calls <= 6, qPrintable(QString::number(m_calls)));
}

void tst_KRFolderMonitor_Packages::quietTimeIsKept()
{
    const auto monitor = watch(path());
    perform(u"write first"_s);
    QCoreApplication::processEvents();
    m_environment->queue.advance(99ms);
    QCOMPARE(m_calls, 0);
    perform(u"write second"_s);
    QCoreApplication::processEvents();
    m_environment->queue.advance(99ms);
    QCOMPARE(m_calls, 0);
    m_environment->queue.advance(1ms);
    QCOMPARE(m_calls, 1);
}

void tst_KRFolderMonitor_Packages::everyMonitorOfAFolderIsCalled()
{
    const auto first = watch(path());
    auto second = watch(path());
    const auto other = watch(m_environment->path(u"elsewhere"_s));
    perform(u"write new"_s);
    QCOMPARE(callsAfterwards(), 2);
    second.reset();
    perform(u"write newer"_s);
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Packages::oneFolderByTwoPaths()
{
    QVERIFY(QFile::link(path(), m_environment->path(u"link"_s)));
    auto direct = watch(path());
    const auto byLink = watch(m_environment->path(u"link"_s));
    perform(u"write new"_s);
    QCOMPARE(callsAfterwards(), 2);
    direct.reset();
    perform(u"write newer"_s);
    QCOMPARE(callsAfterwards(), 1);
    perform(u"append A.package/Contents/manifest"_s);
    QCOMPARE(callsAfterwards(), 1);
}

void tst_KRFolderMonitor_Packages::endOfAMonitorIsTheEndOfItsCalls()
{
    auto monitor = watch(path());
    perform(u"write new"_s);
    monitor.reset();
    QCOMPARE(callsAfterwards(), 0);
    monitor = watch(path());
    perform(u"write newer"_s);
    QCoreApplication::processEvents();
    monitor.reset(); // after the change was seen, before it was told
    QCOMPARE(callsAfterwards(), 0);
}

QTEST_GUILESS_MAIN(tst_KRFolderMonitor_Packages)
#include "tst_krfoldermonitor_packages.moc"
