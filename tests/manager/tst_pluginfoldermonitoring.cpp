// What changes while a walk or a reload is under way is not lost.

#include "manager/PluginFolderMonitoring.h"
#include "support/MonitoredPlugins.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_PluginFolderMonitoring : public QObject
{
    Q_OBJECT

private slots:
    void writtenDuringTheWalk_data();
    void writtenDuringTheWalk();
    void writtenDuringAReload_data();
    void writtenDuringAReload();
    void reloadInsideOfAReload_data();
    void reloadInsideOfAReload();
    void changesBeforeAReloadAreNoNews();
};

namespace {

/// Writes into folders that a walk has listed already.
class WritingObserver final : public FolderWalkObserver
{
public:
    WritingObserver(WalkWatches &watches, const QByteArray &trigger, std::function<void()> write)
        : m_watches(watches)
        , m_trigger(trigger)
        , m_write(std::move(write))
    { }

    void willVisit(const QByteArray &folder, Arrival arrival) override
    {
        m_watches.willVisit(folder, arrival);
        writeAt(folder);
    }
    void foundBundle(const QByteArray &folder, const QByteArray &entry, const QByteArray &target) override
    {
        m_watches.foundBundle(folder, entry, target);
        writeAt(entry);
    }
    void foundDeadLink(const QByteArray &folder, const QByteArray &entry) override
    {
        m_watches.foundDeadLink(folder, entry);
        writeAt(entry);
    }

private:
    void writeAt(const QByteArray &path)
    {
        if (path.endsWith(m_trigger))
            m_write();
    }

    WalkWatches &m_watches;
    QByteArray m_trigger;
    std::function<void()> m_write;
};

} // namespace

void tst_PluginFolderMonitoring::writtenDuringTheWalk_data()
{
    QTest::addColumn<QByteArray>("trigger");
    QTest::addColumn<QByteArray>("written");
    QTest::addColumn<int>("told");
    QTest::newRow("nothing") << "never"_ba
                             << ""_ba << 0;
    QTest::newRow("between watching and listing") << "root"_ba
                                                  << "root/new"_ba << 1;
    QTest::newRow("above, which was listed") << "two"_ba
                                             << "root/new"_ba << 1;
    QTest::newRow("a folder above") << "two"_ba
                                    << "root/new/file"_ba << 1;
    QTest::newRow("into a bundle that was found") << "P.korvanplugin"_ba
                                                  << "root/P.korvanplugin/deep/file"_ba << 1;
    QTest::newRow("a new folder in a bundle") << "P.korvanplugin"_ba
                                              << "root/P.korvanplugin/new/file"_ba << 1;
    QTest::newRow("into a bundle behind a link") << "link"_ba
                                                 << "elsewhere/Q.korvanplugin/file"_ba << 1;
    QTest::newRow("where a link leads that led nowhere") << "dangling"_ba
                                                         << "nowhere/file"_ba << 1;
    QTest::newRow("elsewhere") << "two"_ba
                               << "other/file"_ba << 0;
}

void tst_PluginFolderMonitoring::writtenDuringTheWalk()
{
    QFETCH(QByteArray, trigger);
    QFETCH(QByteArray, written);
    for (const bool isRead : {false, true}) {
        TestEnvironment environment;
        const TemporaryFolder folder;
        writeFileAt(folder.path("root/P.korvanplugin/deep/file"), "");
        writeFileAt(folder.path("elsewhere/Q.korvanplugin/file"), "");
        makeFolderAt(folder.path("root/one/two"));
        makeFolderAt(folder.path("other"));
        makeLinkAt(folder.path("root/link"), "../elsewhere/Q.korvanplugin");
        makeLinkAt(folder.path("root/dangling"), "../nowhere");
        int told = 0;
        PluginFolderMonitoring monitoring;
        WalkWatches watches({});
        WritingObserver observer(watches, trigger, [&] {
            writeFileAt(folder.path(written), "x");
            if (isRead)
                readFolderEvents();
        });
        FolderWalk walk({}, &observer);
        walk.walk(folder.path("root"));
        monitoring.setUp(watches, [&] {
            ++told;
            monitoring.clear();
        });
        QCOMPARE(told, 0);
        letFoldersSettle(environment);
        QTEST(told, "told");
    }
}

void tst_PluginFolderMonitoring::writtenDuringAReload_data()
{
    QTest::addColumn<QString>("when");
    QTest::addColumn<bool>("isRead");
    // When the store is asked and told, the walk is over, and the monitors are not there yet.
    for (const auto &when : {u"asked"_s, u"told"_s, u"notified"_s}) {
        for (const bool isRead : {false, true}) {
            const auto tag = when + (isRead ? u", read of in a nested event loop"_s : u", read of later"_s);
            QTest::newRow(qPrintable(tag)) << when << isRead;
        }
    }
}

void tst_PluginFolderMonitoring::writtenDuringAReload()
{
    MonitoredPlugins plugins;
    QFETCH(QString, when);
    QFETCH(bool, isRead);
    bool isWritten = false;
    const auto write = [&] {
        if (std::exchange(isWritten, true))
            return;
        plugins.write("Plugins/a", "During");
        plugins.write("Plugins/new/d", "During");
        plugins.write("elsewhere/e", "During");
        if (isRead)
            readFolderEvents();
    };
    if (when == u"asked"_s)
        plugins.store->whenAsked = write;
    else if (when == u"told"_s)
        plugins.store->whenToldOfIdentifiers = write;
    const auto observer = plugins.environment.notificationCenter().addObserver(
        KRPluginManagerDidReloadPluginsNotification, nullptr, [&](const Notification &) {
            if (when == u"notified"_s)
                write();
        });
    plugins.write("Plugins/a", "Before");
    plugins.settle();
    QCOMPARE(plugins.reloads, 1);
    QCOMPARE(plugins.nameOf(u"a"_s), Text(u"Before"_s));
    plugins.settle();
    QCOMPARE(plugins.reloads, 2);
    for (const auto &identifier : {u"a"_s, u"d"_s, u"e"_s})
        QCOMPARE(plugins.nameOf(identifier), Text(u"During"_s));
    plugins.settle();
    QCOMPARE(plugins.reloads, 2);
}

void tst_PluginFolderMonitoring::reloadInsideOfAReload_data()
{
    QTest::addColumn<bool>("whenAsked");
    QTest::newRow("while plug-ins are loaded") << true;
    QTest::newRow("when they are in the registry") << false;
}

/// A nested event loop may even tell of a change; the outer reload then puts its older registry in place of the newer.
void tst_PluginFolderMonitoring::reloadInsideOfAReload()
{
    QFETCH(bool, whenAsked);
    MonitoredPlugins plugins;
    bool isWritten = false;
    (whenAsked ? plugins.store->whenAsked : plugins.store->whenToldOfIdentifiers) = [&] {
        if (std::exchange(isWritten, true))
            return;
        plugins.write("Plugins/a", "During");
        plugins.settle();
        QCOMPARE(plugins.reloads, 1);
    };
    plugins.manager->reloadPlugins();
    QCOMPARE(plugins.reloads, 2);
    plugins.settle();
    QCOMPARE(plugins.reloads, 3);
    QCOMPARE(plugins.nameOf(u"a"_s), Text(u"During"_s));
    plugins.settle();
    QCOMPARE(plugins.reloads, 3);
}

void tst_PluginFolderMonitoring::changesBeforeAReloadAreNoNews()
{
    MonitoredPlugins plugins;
    plugins.write("Plugins/a", "Other");
    readFolderEvents();
    plugins.write("elsewhere/c", "Other");
    plugins.manager->reloadPlugins();
    plugins.environment.queue.advance(1h);
    plugins.settle();
    QCOMPARE(plugins.reloads, 1);
}

QTEST_GUILESS_MAIN(tst_PluginFolderMonitoring)
#include "tst_pluginfoldermonitoring.moc"
