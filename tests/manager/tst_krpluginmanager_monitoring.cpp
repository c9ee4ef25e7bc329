// Which folders the manager watches, and what becomes of the registry when they change.

#include "support/MonitoredPlugins.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// What happens on disk.
using Act = void (*)(const MonitoredPlugins &);
Q_DECLARE_METATYPE(Act)

class tst_KRPluginManager_Monitoring : public QObject
{
    Q_OBJECT

private slots:
    void whatReloads_data();
    void whatReloads();
    void nothingIsWatchedWithoutAStore();
    void newSubfolderIsWatchedAfterTheReload();
    void oneMonitorForEachVisitedFolder();
    void folderThatComesAndGoes();
    void linkedFolderThatIsInUse();
    void lastStateOnDiskCounts();
    void manyFilesGiveFewReloads();
    void watchingEnds_data();
    void watchingEnds();
    void setUpByTheHost();
    void monitorsKeepTheirManager();
    void managerEndsInsideOfAReload();
    void twoManagers();
};

void tst_KRPluginManager_Monitoring::whatReloads_data()
{
    QTest::addColumn<Act>("change");
    QTest::addColumn<int>("reloads");
    QTest::addColumn<QStringList>("found");
    const auto row = [](const char *tag, int reloads, const QStringList &found, Act change) {
        QTest::newRow(tag) << change << reloads << found;
    };
    const QStringList abc{u"a"_s, u"b"_s, u"c"_s};

    row("nothing", 0, abc, [](const auto &) {});
    row("a new plug-in", 1, abc + QStringList{u"d"_s}, [](const auto &plugins) { plugins.write("Plugins/d"); });
    row("a new plug-in in a subfolder", 1, abc + QStringList{u"d"_s},
        [](const auto &plugins) { plugins.write("Plugins/sub/d"); });
    row("a new plug-in in another folder", 1, abc + QStringList{u"d"_s},
        [](const auto &plugins) { plugins.write("More/d"); });
    row("a new plug-in behind a link", 1, abc + QStringList{u"d"_s},
        [](const auto &plugins) { plugins.write("elsewhere/d"); });
    row("a plug-in goes", 1, {u"b"_s, u"c"_s},
        [](const auto &plugins) { removeAt(plugins.path("Plugins/a.korvanplugin")); });
    row("a folder goes", 1, {u"a"_s, u"c"_s}, [](const auto &plugins) { removeAt(plugins.path("Plugins/sub")); });
    row("what a link leads to goes", 1, {u"a"_s, u"b"_s},
        [](const auto &plugins) { removeAt(plugins.path("elsewhere")); });
    row("a manifest is saved", 1, abc, [](const auto &plugins) { plugins.write("Plugins/sub/b", "Other"); });
    row("a script is saved", 1, abc,
        [](const auto &plugins) { writeFileAt(plugins.path("Plugins/a.korvanplugin/Contents/Korvan/script.js"), ""); });
    row("an icon is saved", 1, abc, [](const auto &plugins) {
        writeFileAt(plugins.path("Plugins/a.korvanplugin/Contents/Resources/icons/icon.png"), "");
    });
    row("modules of a script", 0, abc, [](const auto &plugins) {
        writeFileAt(plugins.path("Plugins/node_modules/ignored.korvanplugin/Contents/Korvan/script.js"), "");
    });
    row("an entry of an ignored folder", 1, abc, [](const auto &plugins) { plugins.write("Plugins/node_modules/d"); });
    row("beside the folders", 0, abc, [](const auto &plugins) { plugins.write("Others/d"); });
}

void tst_KRPluginManager_Monitoring::whatReloads()
{
    MonitoredPlugins plugins;
    QFETCH(Act, change);
    change(plugins);
    QCOMPARE(plugins.reloads, 0);
    plugins.settle();
    QTEST(plugins.reloads, "reloads");
    QTEST(plugins.found(), "found");
    plugins.settle();
    QTEST(plugins.reloads, "reloads");
}

void tst_KRPluginManager_Monitoring::nothingIsWatchedWithoutAStore()
{
    MonitoredPlugins plugins;
    plugins.manager = std::make_unique<KRPluginManager>(QList{plugins.url("Plugins")}, nullptr, nullptr);
    plugins.manager->reloadPlugins();
    QVERIFY(plugins.manager->folderMonitors().empty());
    plugins.manager->setupFolderMonitoringWithVisitedURLs({plugins.url("Plugins")});
    QVERIFY(plugins.manager->folderMonitors().empty());
    plugins.reloads = 0;
    plugins.write("Plugins/d");
    plugins.settle();
    QCOMPARE(plugins.reloads, 0);
}

void tst_KRPluginManager_Monitoring::newSubfolderIsWatchedAfterTheReload()
{
    MonitoredPlugins plugins;
    makeFolderAt(plugins.path("Plugins/new/deep"));
    readFolderEvents();
    plugins.write("Plugins/new/deep/d"); // nobody watches there yet
    readFolderEvents();
    const auto before = plugins.manager->folderMonitors().size();
    plugins.environment.queue.advance(100ms);
    QCOMPARE(plugins.manager->folderMonitors().size(), before + 2);
    QCOMPARE(plugins.nameOf(u"d"_s), Text(u"Name"_s));
    plugins.write("Plugins/new/deep/d", "Other");
    plugins.write("Plugins/new/deep/e");
    plugins.settle();
    QCOMPARE(plugins.reloads, 2);
    QCOMPARE(plugins.nameOf(u"d"_s), Text(u"Other"_s));
    QCOMPARE(plugins.nameOf(u"e"_s), Text(u"Name"_s));
}

void tst_KRPluginManager_Monitoring::oneMonitorForEachVisitedFolder()
{
    MonitoredPlugins plugins;
    QCOMPARE(plugins.manager->folderMonitors().size(), 5); // Plugins, sub, node_modules, elsewhere, More
    makeLinkAt(plugins.path("root"), "Plugins");
    KRPluginManager manager({plugins.url("root"), plugins.url("Plugins")}, nullptr, plugins.store);
    QVERIFY(manager.folderMonitors().empty()); // nothing was walked yet
    manager.reloadPlugins();
    QCOMPARE(manager.folderMonitors().size(), 5); // the link, and without More
}

void tst_KRPluginManager_Monitoring::folderThatComesAndGoes()
{
    MonitoredPlugins plugins;
    removeAt(plugins.path("Plugins"));
    plugins.settle();
    QVERIFY(plugins.manager->plugins().isEmpty());
    plugins.write("Plugins/a", "Second");
    plugins.settle();
    QCOMPARE(plugins.nameOf(u"a"_s), Text(u"Second"_s));
    renameAt(plugins.path("Plugins"), plugins.path("Renamed"));
    plugins.settle();
    QVERIFY(plugins.manager->plugins().isEmpty());
    plugins.write("Renamed/a", "Third");
    plugins.settle();
    QCOMPARE(plugins.reloads, 3);
    renameAt(plugins.path("Renamed"), plugins.path("Plugins"));
    plugins.settle();
    QCOMPARE(plugins.nameOf(u"a"_s), Text(u"Third"_s));
    plugins.write("Plugins/a", "Fourth");
    plugins.settle();
    QCOMPARE(plugins.nameOf(u"a"_s), Text(u"Fourth"_s));
}

/// The system tells only its parent when somebody's current folder is deleted.
void tst_KRPluginManager_Monitoring::linkedFolderThatIsInUse()
{
    MonitoredPlugins plugins;
    removeAt(plugins.path("elsewhere/c.korvanplugin"));
    plugins.settle();
    const auto previous = QDir::currentPath();
    QVERIFY(QDir::setCurrent(QString::fromUtf8(plugins.path("elsewhere"))));
    removeAt(plugins.path("elsewhere"));
    plugins.settle();
    QVERIFY(QDir::setCurrent(previous));
    QCOMPARE(plugins.reloads, 2);
    plugins.write("elsewhere/c", "Again");
    plugins.settle();
    QCOMPARE(plugins.nameOf(u"c"_s), Text(u"Again"_s));
}

void tst_KRPluginManager_Monitoring::lastStateOnDiskCounts()
{
    MonitoredPlugins plugins;
    for (int i = 0; i < 300; ++i) {
        const auto name = QByteArray::number(i);
        if (i % 2 == 0) {
            plugins.write("Plugins/a", name);
        } else {
            plugins.write("elsewhere/saved/a", name);
            renameAt(plugins.path("elsewhere/saved/a.korvanplugin/Contents/Korvan/manifest.json"),
                plugins.path("Plugins/a.korvanplugin/Contents/Korvan/manifest.json"));
        }
        readFolderEvents();
        plugins.environment.queue.advance(std::chrono::milliseconds(i));
    }
    plugins.settle();
    QCOMPARE(plugins.nameOf(u"a"_s), Text(u"299"_s));
    QVERIFY(plugins.reloads > 100 && plugins.reloads < 300);
}

void tst_KRPluginManager_Monitoring::manyFilesGiveFewReloads()
{
    MonitoredPlugins plugins;
    for (int i = 0; i < 500; ++i) {
        const auto folder = "Plugins/copied/" + QByteArray::number(i / 20);
        writeFileAt(plugins.path(folder + "/p.korvanplugin/" + QByteArray::number(i)), "");
        readFolderEvents();
        plugins.environment.queue.advance(4ms);
    }
    plugins.write("Plugins/copied/24/p");
    plugins.settle();
    QCOMPARE(plugins.nameOf(u"p"_s), Text(u"Name"_s));
    QVERIFY2(plugins.reloads >= 2 && plugins.reloads <= 10, qPrintable(QString::number(plugins.reloads)));
}

void tst_KRPluginManager_Monitoring::watchingEnds_data()
{
    QTest::addColumn<bool>("isSetToNil");
    QTest::newRow("cleared") << false;
    QTest::newRow("registry set to nil") << true;
}

void tst_KRPluginManager_Monitoring::watchingEnds()
{
    MonitoredPlugins plugins;
    QFETCH(bool, isSetToNil);
    plugins.write("Plugins/d");
    readFolderEvents();
    if (isSetToNil)
        plugins.manager->setPlugins(std::nullopt);
    else
        plugins.manager->clearFolderMonitors();
    QVERIFY(plugins.manager->folderMonitors().empty());
    plugins.environment.queue.advance(1h);
    QCOMPARE(plugins.reloads, 0);
    plugins.manager->reloadPlugins();
    QCOMPARE(plugins.manager->folderMonitors().size(), 5);
    plugins.manager->setPlugins(PluginTable());
    QCOMPARE(plugins.manager->folderMonitors().size(), 5); // empty is not nil
}

void tst_KRPluginManager_Monitoring::setUpByTheHost()
{
    MonitoredPlugins plugins;
    plugins.manager->setupFolderMonitoringWithVisitedURLs({plugins.url("elsewhere"), QUrl(u"https://example.com/"_s),
        plugins.url("Plugins/a.korvanplugin/Contents/Korvan/manifest.json")});
    QCOMPARE(plugins.manager->folderMonitors().size(), 1);
    plugins.write("Plugins/a", "Other");
    plugins.settle();
    QCOMPARE(plugins.reloads, 0);
    plugins.write("elsewhere/c", "Other");
    plugins.settle();
    QCOMPARE(plugins.reloads, 1);
    QCOMPARE(plugins.manager->folderMonitors().size(), 5);
    QCOMPARE(plugins.nameOf(u"a"_s), Text(u"Other"_s));
}

void tst_KRPluginManager_Monitoring::monitorsKeepTheirManager()
{
    MonitoredPlugins plugins;
    auto manager = std::make_shared<KRPluginManager>(QList{plugins.url("More")}, nullptr, plugins.store);
    auto *const face = manager.get();
    const std::weak_ptr<KRPluginManager> held = manager;
    manager->reloadPlugins();
    manager.reset();
    QVERIFY(!held.expired());
    plugins.write("More/d");
    plugins.settle();
    QCOMPARE(face->plugins().keys(), QStringList{u"d"_s});
    face->clearFolderMonitors();
    QVERIFY(held.expired());

    manager = std::make_shared<KRPluginManager>(QList{plugins.url("More")}, nullptr, plugins.store);
    const std::weak_ptr<KRPluginManager> second = manager;
    manager->reloadPlugins();
    manager->setPlugins(std::nullopt);
    manager.reset();
    QVERIFY(second.expired());
}

void tst_KRPluginManager_Monitoring::managerEndsInsideOfAReload()
{
    MonitoredPlugins plugins;
    const auto observer = plugins.environment.notificationCenter().addObserver(
        KRPluginManagerDidReloadPluginsNotification, nullptr, [&](const Notification &) { plugins.manager.reset(); });
    plugins.write("Plugins/d");
    plugins.write("Plugins/sub/d");
    plugins.write("elsewhere/d");
    plugins.settle();
    QVERIFY(!plugins.manager);
    plugins.settle();
    QCOMPARE(plugins.reloads, 1);
}

/// What one of them has seen already is still news for the other one.
void tst_KRPluginManager_Monitoring::twoManagers()
{
    MonitoredPlugins plugins;
    KRPluginManager other({plugins.url("Plugins")}, nullptr, plugins.store);
    other.reloadPlugins();
    plugins.write("Plugins/a", "Other");
    other.reloadPlugins();
    QCOMPARE(plugins.nameOf(u"a"_s), Text(u"Name"_s));
    plugins.settle();
    QCOMPARE(plugins.nameOf(u"a"_s), Text(u"Other"_s));
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Monitoring)
#include "tst_krpluginmanager_monitoring.moc"
