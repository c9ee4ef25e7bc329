// A registry that follows its folders.

#include "manager/KRPluginManager.h"
#include "platform/script/COScript.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_KRPluginManager_Following : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingIsWatchedWithoutAStateStore();
    void nothingIsWatchedBeforeTheFirstReload();
    void pluginThatComes();
    void savedManifestAndScript();
    void newSubfolderIsWatchedAfterItsReload();
    void ignoredFolderIsWatchedAtItsOwnLevel();
    void linkAndTargetAreWatched();
    void rootFolderComesAndGoes();
    void copyingManyFilesIsAHandfulOfReloads();
    void writeDuringTheWalk();
    void writeWhileBundlesAreLoaded();
    void eventLoopInsideOfAReload();
    void lastStateEndsUpInTheRegistry();
    void reloadIsNoChange();
    void ownReloadTakesPendingChangesAlong();
    void incompatiblePluginsAreCountedAnew();
    void registrySetToNilWatchesNothing();
    void monitorsKeepASharedManager();
    void managerThatIsNotSharedJustEnds();
    void managerEndsInItsOwnReload();
    void monitorsOfOtherFolders();

private:
    QString path(const QString &name = {}) const { return m_environment->path(u"Plugins/"_s + name); }
    void plugin(const QString &name, const QByteArray &version = "1.0") const
    {
        const auto identifier = name.section(u'/', -1).toUtf8();
        writeFile(path(name + u".korvanplugin/Contents/Korvan/manifest.json"_s),
            "{\"identifier\": \"" + identifier + "\", \"version\": \"" + version
                + "\", \"commands\": [{\"script\": \"s.js\", \"identifier\": \"c\"}]}");
        writeFile(path(name + u".korvanplugin/Contents/Korvan/s.js"_s), "var version = '" + version + "';");
    }
    std::shared_ptr<KRPluginManager> makeManager(const QList<QUrl> &folders)
    {
        auto manager = std::make_shared<KRPluginManager>(folders, nullptr, m_state);
        m_observer = m_environment->notificationCenter().addObserver(
            KRPluginManagerDidReloadPluginsNotification, manager.get(), [this](const Notification &) {
                ++m_reloads;
                if (m_onReload)
                    std::exchange(m_onReload, nullptr)();
            });
        manager->reloadPlugins();
        m_reloads = 0;
        return manager;
    }
    std::shared_ptr<KRPluginManager> makeManager() { return makeManager({QUrl::fromLocalFile(path())}); }
    /// Once all has come to rest.
    int reloadsAfterwards()
    {
        int before = -1;
        while (std::exchange(before, m_reloads) != m_reloads) {
            QCoreApplication::processEvents();
            m_environment->queue.advance(5s);
        }
        return std::exchange(m_reloads, 0);
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<KRPluginManagingState> m_state;
    NotificationObserver m_observer;
    int m_reloads = 0;
    std::function<void()> m_onReload;
};

namespace {

QString versionOf(KRPluginManager &manager, const QString &identifier)
{
    const auto bundle = manager.plugins().value(identifier);
    return bundle ? bundle->version().value_or(u"nil"_s) : u"none"_s;
}

/// Does something once, while a reload tells of a plug-in that it cannot read.
class DisturbingLogTarget final : public LogTarget
{
public:
    void log(const QVariantMap &, const QString &) override
    {
        if (disturb)
            std::exchange(disturb, nullptr)();
    }

    std::function<void()> disturb;
};

} // namespace

void tst_KRPluginManager_Following::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_state = std::make_shared<KRPluginManagingState>(QUrl::fromLocalFile(m_environment->path(u"state.plist"_s)));
    m_reloads = 0;
    plugin(u"a"_s);
}

void tst_KRPluginManager_Following::cleanup()
{
    m_observer.reset();
    m_onReload = nullptr;
    m_state.reset();
    m_environment.reset();
}

void tst_KRPluginManager_Following::nothingIsWatchedWithoutAStateStore()
{
    m_state.reset();
    const auto manager = makeManager();
    QVERIFY(!manager->monitorForChanges());
    QCOMPARE(manager->folderMonitors().size(), 0U);
    manager->setupFolderMonitoringWithVisitedURLs({QUrl::fromLocalFile(path())});
    QCOMPARE(manager->folderMonitors().size(), 0U);
    plugin(u"b"_s);
    QCOMPARE(reloadsAfterwards(), 0);
}

void tst_KRPluginManager_Following::nothingIsWatchedBeforeTheFirstReload()
{
    KRPluginManager manager({QUrl::fromLocalFile(path())}, nullptr, m_state);
    QVERIFY(manager.monitorForChanges());
    QCOMPARE(manager.folderMonitors().size(), 0U);
}

void tst_KRPluginManager_Following::pluginThatComes()
{
    const auto manager = makeManager();
    QCOMPARE(manager->folderMonitors().size(), 1U);
    plugin(u"b"_s);
    QCOMPARE(reloadsAfterwards(), 1);
    QCOMPARE(manager->plugins().keys(), QStringList({u"a"_s, u"b"_s}));
    QVERIFY(QDir(path(u"a.korvanplugin"_s)).removeRecursively());
    QCOMPARE(reloadsAfterwards(), 1);
    QCOMPARE(manager->plugins().keys(), QStringList{u"b"_s});
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::savedManifestAndScript()
{
    const auto manager = makeManager();
    for (const auto *const version : {"1.1", "1.2", "1.3"}) {
        plugin(u"a"_s, version);
        QCOMPARE(reloadsAfterwards(), 1);
        QCOMPARE(versionOf(*manager, u"a"_s), QLatin1String(version));
    }
    writeFile(path(u"a.korvanplugin/Contents/Korvan/s.js"_s), "saved");
    QCOMPARE(reloadsAfterwards(), 1);
    QCOMPARE(manager->plugins().value(u"a"_s)->commands().at(u"c"_s)->script()->script(), std::optional(u"saved"_s));
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::newSubfolderIsWatchedAfterItsReload()
{
    const auto manager = makeManager();
    QVERIFY(QDir().mkpath(path(u"sub"_s)));
    plugin(u"sub/b"_s); // before anybody has seen the folder
    QCOMPARE(reloadsAfterwards(), 1);
    QCOMPARE(manager->plugins().keys(), QStringList({u"a"_s, u"b"_s}));
    QCOMPARE(manager->folderMonitors().size(), 2U);
    plugin(u"sub/c"_s);
    QCOMPARE(reloadsAfterwards(), 1);
    QCOMPARE(manager->plugins().keys(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::ignoredFolderIsWatchedAtItsOwnLevel()
{
    QVERIFY(QDir().mkpath(path(u"node_modules/library"_s)));
    const auto manager = makeManager();
    QCOMPARE(manager->folderMonitors().size(), 2U);
    writeFile(path(u"node_modules/file"_s), "text");
    QCOMPARE(reloadsAfterwards(), 1);
    writeFile(path(u"node_modules/library/file"_s), "text");
    QCOMPARE(reloadsAfterwards(), 0);
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::linkAndTargetAreWatched()
{
    QVERIFY(QFile::link(path(), m_environment->path(u"link"_s)));
    const auto manager = makeManager({QUrl::fromLocalFile(m_environment->path(u"link/"_s))});
    QCOMPARE(manager->folderMonitors().size(), 2U);
    plugin(u"b"_s);
    QCOMPARE(reloadsAfterwards(), 1); // though two monitors saw it
    QCOMPARE(manager->plugins().keys(), QStringList({u"a"_s, u"b"_s}));
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::rootFolderComesAndGoes()
{
    const auto manager = makeManager();
    QVERIFY(QDir(path()).removeRecursively());
    QCOMPARE(reloadsAfterwards(), 1);
    QVERIFY(manager->plugins().isEmpty());
    plugin(u"b"_s);
    QCOMPARE(reloadsAfterwards(), 1);
    QCOMPARE(manager->plugins().keys(), QStringList{u"b"_s});
    QVERIFY(QDir().rename(path(), m_environment->path(u"Elsewhere"_s)));
    QCOMPARE(reloadsAfterwards(), 1);
    QVERIFY(manager->plugins().isEmpty());
    QVERIFY(QDir().rename(m_environment->path(u"Elsewhere"_s), path()));
    QCOMPARE(reloadsAfterwards(), 1);
    QCOMPARE(manager->plugins().keys(), QStringList{u"b"_s});
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::copyingManyFilesIsAHandfulOfReloads()
{
    const auto manager = makeManager();
    for (int number = 0; number < 100; ++number) { // 500 files and folders in 4 seconds
        plugin(u"sub%1/p%2"_s.arg(number % 10).arg(number));
        QCoreApplication::processEvents();
        m_environment->queue.advance(40ms);
    }
    const auto reloads = reloadsAfterwards();
    QVERIFY2(reloads >= 1 && reloads <= 6, qPrintable(QString::number(reloads)));
    QCOMPARE(manager->plugins().size(), 101);
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::writeDuringTheWalk()
{
    // The walk tells of an ignored folder once all folders were listed.
    QVERIFY(QDir().mkpath(path(u"vendor"_s)));
    DisturbingLogTarget target;
    m_environment->target = &target;
    const auto manager = makeManager();
    writeFile(path(u"broken.korvanplugin/Contents/Korvan/manifest.json"_s), "{");
    target.disturb = [this] { plugin(u"late"_s); };
    QCOMPARE(reloadsAfterwards(), 2);
    QCOMPARE(manager->plugins().keys(), QStringList({u"a"_s, u"late"_s}));
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::writeWhileBundlesAreLoaded()
{
    DisturbingLogTarget target;
    m_environment->target = &target;
    writeFile(path(u"0.korvanplugin/Contents/Korvan/manifest.json"_s), "{");
    target.disturb = [this] { plugin(u"a"_s, "9.9"); }; // in the very first reload, where nothing was watched before
    const auto manager = std::make_shared<KRPluginManager>(QList<QUrl>{QUrl::fromLocalFile(path())}, nullptr, m_state);
    manager->reloadPlugins();
    reloadsAfterwards();
    QCOMPARE(versionOf(*manager, u"a"_s), u"9.9"_s);
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::eventLoopInsideOfAReload()
{
    DisturbingLogTarget target;
    m_environment->target = &target;
    const auto manager = makeManager();
    writeFile(path(u"broken.korvanplugin/Contents/Korvan/manifest.json"_s), "{");
    target.disturb = [this] { // as an alert would
        plugin(u"late"_s);
        QCoreApplication::processEvents();
        m_environment->queue.advance(5s);
    };
    QVERIFY(reloadsAfterwards() >= 2);
    QCOMPARE(manager->plugins().keys(), QStringList({u"a"_s, u"late"_s}));
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::lastStateEndsUpInTheRegistry()
{
    const auto manager = makeManager();
    for (int number = 0; number < 200; ++number) {
        plugin(u"a"_s, "2." + QByteArray::number(number));
        if (number % 3 == 0)
            QCoreApplication::processEvents();
        m_environment->queue.advance(std::chrono::milliseconds(number % 7 * 37));
        if (number % 50 == 49) {
            reloadsAfterwards();
            QCOMPARE(versionOf(*manager, u"a"_s), u"2.%1"_s.arg(number));
        }
    }
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::reloadIsNoChange()
{
    const auto manager = makeManager();
    QCOMPARE(reloadsAfterwards(), 0);
    manager->reloadPlugins();
    QCOMPARE(reloadsAfterwards(), 1);
    plugin(u"b"_s);
    QCOMPARE(reloadsAfterwards(), 1);
    QCOMPARE(reloadsAfterwards(), 0);
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::ownReloadTakesPendingChangesAlong()
{
    const auto manager = makeManager();
    plugin(u"b"_s);
    QCoreApplication::processEvents(); // seen, and not yet told
    plugin(u"c"_s); // not yet seen
    manager->reloadPlugins();
    QCOMPARE(manager->plugins().keys(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(reloadsAfterwards(), 1); // the one above
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::incompatiblePluginsAreCountedAnew()
{
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"b"_s, u"1.0"_s}});
    const auto manager = makeManager();
    QCOMPARE(manager->numberOfIncompatiblePluginsDisabled(), 0);
    plugin(u"b"_s);
    QCOMPARE(reloadsAfterwards(), 1);
    QCOMPARE(manager->numberOfIncompatiblePluginsDisabled(), 1);
    QVERIFY(!manager->plugins().value(u"b"_s)->isEnabled());
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::registrySetToNilWatchesNothing()
{
    const auto manager = makeManager();
    manager->setPlugins(std::nullopt);
    QCOMPARE(manager->folderMonitors().size(), 0U);
    plugin(u"b"_s);
    QCOMPARE(reloadsAfterwards(), 0);
    QCOMPARE(manager->plugins().size(), 2); // asked for, it is loaded anew, and watched
    QCOMPARE(manager->folderMonitors().size(), 1U);
    manager->clearFolderMonitors();
}

void tst_KRPluginManager_Following::monitorsKeepASharedManager()
{
    auto manager = makeManager();
    const std::weak_ptr observed = manager;
    manager.reset();
    plugin(u"b"_s);
    QCOMPARE(reloadsAfterwards(), 1);
    QVERIFY(!observed.expired());
    observed.lock()->clearFolderMonitors();
    QVERIFY(observed.expired());
}

void tst_KRPluginManager_Following::managerThatIsNotSharedJustEnds()
{
    {
        KRPluginManager manager({QUrl::fromLocalFile(path())}, nullptr, m_state);
        manager.reloadPlugins();
        QCOMPARE(manager.folderMonitors().size(), 1U);
        plugin(u"b"_s);
        QCoreApplication::processEvents();
        m_environment->queue.advance(5s);
        QCOMPARE(manager.plugins().size(), 2);
        plugin(u"c"_s);
        QCoreApplication::processEvents();
    }
    QCOMPARE(reloadsAfterwards(), 0);
}

void tst_KRPluginManager_Following::managerEndsInItsOwnReload()
{
    auto manager = makeManager();
    auto *const address = manager.get();
    const std::weak_ptr observed = manager;
    manager.reset();
    m_onReload = [address] { address->setPlugins(std::nullopt); };
    plugin(u"b"_s);
    reloadsAfterwards();
    if (const auto survivor = observed.lock()) // it was asked for its plug-ins again
        survivor->clearFolderMonitors();
    QVERIFY(observed.expired());
}

void tst_KRPluginManager_Following::monitorsOfOtherFolders()
{
    const auto manager = makeManager();
    QVERIFY(QDir().mkpath(m_environment->path(u"other"_s)));
    manager->setupFolderMonitoringWithVisitedURLs(
        {QUrl::fromLocalFile(m_environment->path(u"other/"_s)), QUrl(u"https://example.com/"_s)});
    QCOMPARE(manager->folderMonitors().size(), 1U);
    plugin(u"b"_s);
    QCOMPARE(reloadsAfterwards(), 0);
    writeFile(m_environment->path(u"other/file"_s), "text");
    QCOMPARE(reloadsAfterwards(), 1);
    QCOMPARE(manager->plugins().size(), 2);
    manager->clearFolderMonitors();
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Following)
#include "tst_krpluginmanager_following.moc"
