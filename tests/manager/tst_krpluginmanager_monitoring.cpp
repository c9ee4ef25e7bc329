// Which folders the manager watches, and what becomes of the registry when they change.

#include "manager/KRPluginManager.h"
#include "platform/FileURL.h"
#include "support/FolderEventsReading.h"
#include "support/NilableText.h"
#include "support/PathFiles.h"

#include <QtTest>

#include <cstdio>
#include <filesystem>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Does something while a reload asks it.
class StateStore final : public KRPluginManagingState
{
public:
    bool shouldEnablePluginIdentifier(const QString &, const std::optional<QString> &) override
    {
        whenAsked();
        return true;
    }
    bool isPluginWithIdentifier(const QString &, const std::optional<QString> &) const override { return false; }
    void updateMetadataWithPluginIndentifiers(const QStringList &) override { whenToldOfIdentifiers(); }

    std::function<void()> whenAsked = [] {};
    std::function<void()> whenToldOfIdentifiers = [] {};
};

/// What happens to the files of a folder.
using Act = void (*)(const TemporaryFolder &);

void plugin(const TemporaryFolder &folder, const QByteArray &path, const QByteArray &name = "Name")
{
    const auto identifier = path.mid(path.lastIndexOf('/') + 1);
    writeFileAt(folder.path(path + ".korvanplugin/Contents/Korvan/manifest.json"),
        "{\"identifier\": \"" + identifier + "\", \"name\": \"" + name + "\"}");
}

void rename(const TemporaryFolder &folder, const QByteArray &from, const QByteArray &to)
{
    if (::rename(folder.path(from).constData(), folder.path(to).constData()) != 0)
        qFatal("cannot rename %s", from.constData());
}

void remove(const TemporaryFolder &folder, const QByteArray &path)
{
    if (std::filesystem::remove_all(folder.path(path).toStdString()) == 0)
        qFatal("cannot remove %s", path.constData());
}

} // namespace

Q_DECLARE_METATYPE(Act)

class tst_KRPluginManager_Monitoring : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void whatReloads_data();
    void whatReloads();
    void nothingIsWatchedWithoutAStore();
    void newSubfolderIsWatchedAfterTheReload();
    void oneMonitorForEachVisitedFolder();
    void folderThatComesAndGoes();
    void lastStateOnDiskCounts();
    void manyFilesGiveFewReloads();
    void writtenDuringAReload_data();
    void writtenDuringAReload();
    void reloadInsideOfAReload();
    void changesBeforeAReloadAreNoNews();
    void watchingEnds_data();
    void watchingEnds();
    void setUpByTheHost();
    void monitorsKeepTheirManager();
    void managerEndsInsideOfAReload();
    void twoManagers();

private:
    QUrl url(const QByteArray &path) const { return fileURLFromPath(m_folder->path(path), FileKind::Folder); }
    void settle() { letFoldersSettle(*m_environment); }
    /// As the registry has it; nil when it has no such plug-in.
    Text nameOf(const QString &identifier) const;

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<TemporaryFolder> m_folder;
    std::shared_ptr<StateStore> m_store;
    std::unique_ptr<KRPluginManager> m_manager;
    NotificationObserver m_observer;
    int m_reloads = 0;
};

/// A manager of "Plugins" and "More", loaded.
void tst_KRPluginManager_Monitoring::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_folder = std::make_unique<TemporaryFolder>();
    plugin(*m_folder, "Plugins/a");
    plugin(*m_folder, "Plugins/sub/b");
    plugin(*m_folder, "Plugins/node_modules/ignored");
    plugin(*m_folder, "elsewhere/c");
    makeLinkAt(m_folder->path("Plugins/link"), "../elsewhere");
    makeFolderAt(m_folder->path("More"));
    m_store = std::make_shared<StateStore>();
    m_manager = std::make_unique<KRPluginManager>(QList{url("Plugins"), url("More")}, nullptr, m_store);
    m_manager->reloadPlugins();
    m_reloads = 0;
    m_observer = m_environment->notificationCenter().addObserver(
        KRPluginManagerDidReloadPluginsNotification, nullptr, [this](const Notification &) { ++m_reloads; });
}

void tst_KRPluginManager_Monitoring::cleanup()
{
    m_observer = {};
    m_manager.reset();
    m_folder.reset();
    m_environment.reset();
}

Text tst_KRPluginManager_Monitoring::nameOf(const QString &identifier) const
{
    const auto bundle = m_manager->plugins().value(identifier);
    return bundle ? bundle->name() : nil;
}

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
    row("a new plug-in", 1, abc + QStringList{u"d"_s}, [](const auto &folder) { plugin(folder, "Plugins/d"); });
    row("a new plug-in in a subfolder", 1, abc + QStringList{u"d"_s},
        [](const auto &folder) { plugin(folder, "Plugins/sub/d"); });
    row("a new plug-in in another folder", 1, abc + QStringList{u"d"_s},
        [](const auto &folder) { plugin(folder, "More/d"); });
    row("a new plug-in behind a link", 1, abc + QStringList{u"d"_s},
        [](const auto &folder) { plugin(folder, "elsewhere/d"); });
    row("a plug-in goes", 1, {u"b"_s, u"c"_s}, [](const auto &folder) { remove(folder, "Plugins/a.korvanplugin"); });
    row("a folder goes", 1, {u"a"_s, u"c"_s}, [](const auto &folder) { remove(folder, "Plugins/sub"); });
    row("what a link leads to goes", 1, {u"a"_s, u"b"_s}, [](const auto &folder) { remove(folder, "elsewhere"); });
    row("a manifest is saved", 1, abc, [](const auto &folder) { plugin(folder, "Plugins/sub/b", "Other"); });
    row("a script is saved", 1, abc,
        [](const auto &folder) { writeFileAt(folder.path("Plugins/a.korvanplugin/Contents/Korvan/script.js"), ""); });
    row("an icon is saved", 1, abc, [](const auto &folder) {
        writeFileAt(folder.path("Plugins/a.korvanplugin/Contents/Resources/icons/icon.png"), "");
    });
    row("modules of a script", 0, abc, [](const auto &folder) {
        writeFileAt(folder.path("Plugins/node_modules/ignored.korvanplugin/Contents/Korvan/script.js"), "");
    });
    row("an entry of an ignored folder", 1, abc, [](const auto &folder) { plugin(folder, "Plugins/node_modules/d"); });
    row("beside the folders", 0, abc, [](const auto &folder) { plugin(folder, "Others/d"); });
}

void tst_KRPluginManager_Monitoring::whatReloads()
{
    QFETCH(Act, change);
    change(*m_folder);
    QCOMPARE(m_reloads, 0);
    settle();
    QTEST(m_reloads, "reloads");
    QTEST(m_manager->plugins().keys(), "found");
    settle();
    QTEST(m_reloads, "reloads");
}

void tst_KRPluginManager_Monitoring::nothingIsWatchedWithoutAStore()
{
    m_manager = std::make_unique<KRPluginManager>(QList{url("Plugins")}, nullptr, nullptr);
    m_manager->reloadPlugins();
    QVERIFY(m_manager->folderMonitors().empty());
    m_manager->setupFolderMonitoringWithVisitedURLs({url("Plugins")});
    QVERIFY(m_manager->folderMonitors().empty());
    m_reloads = 0;
    plugin(*m_folder, "Plugins/d");
    settle();
    QCOMPARE(m_reloads, 0);
}

void tst_KRPluginManager_Monitoring::newSubfolderIsWatchedAfterTheReload()
{
    makeFolderAt(m_folder->path("Plugins/new/deep"));
    readFolderEvents();
    plugin(*m_folder, "Plugins/new/deep/d"); // nobody watches there yet
    readFolderEvents();
    const auto before = m_manager->folderMonitors().size();
    m_environment->queue.advance(100ms);
    QCOMPARE(m_manager->folderMonitors().size(), before + 2);
    QCOMPARE(nameOf(u"d"_s), Text(u"Name"_s));
    plugin(*m_folder, "Plugins/new/deep/d", "Other");
    plugin(*m_folder, "Plugins/new/deep/e");
    settle();
    QCOMPARE(m_reloads, 2);
    QCOMPARE(nameOf(u"d"_s), Text(u"Other"_s));
    QCOMPARE(nameOf(u"e"_s), Text(u"Name"_s));
}

void tst_KRPluginManager_Monitoring::oneMonitorForEachVisitedFolder()
{
    QCOMPARE(m_manager->folderMonitors().size(), 5); // Plugins, sub, node_modules, elsewhere, More
    makeLinkAt(m_folder->path("root"), "Plugins");
    KRPluginManager manager({url("root"), url("Plugins")}, nullptr, m_store);
    QVERIFY(manager.folderMonitors().empty()); // nothing was walked yet
    manager.reloadPlugins();
    QCOMPARE(manager.folderMonitors().size(), 5); // the link, and without More
}

void tst_KRPluginManager_Monitoring::folderThatComesAndGoes()
{
    remove(*m_folder, "Plugins");
    settle();
    QVERIFY(m_manager->plugins().isEmpty());
    plugin(*m_folder, "Plugins/a", "Second");
    settle();
    QCOMPARE(nameOf(u"a"_s), Text(u"Second"_s));
    rename(*m_folder, "Plugins", "Renamed");
    settle();
    QVERIFY(m_manager->plugins().isEmpty());
    plugin(*m_folder, "Renamed/a", "Third");
    settle();
    QCOMPARE(m_reloads, 3);
    rename(*m_folder, "Renamed", "Plugins");
    settle();
    QCOMPARE(nameOf(u"a"_s), Text(u"Third"_s));
    plugin(*m_folder, "Plugins/a", "Fourth");
    settle();
    QCOMPARE(nameOf(u"a"_s), Text(u"Fourth"_s));
}

void tst_KRPluginManager_Monitoring::lastStateOnDiskCounts()
{
    for (int i = 0; i < 300; ++i) {
        const auto name = QByteArray::number(i);
        if (i % 2 == 0) {
            plugin(*m_folder, "Plugins/a", name);
        } else {
            plugin(*m_folder, "elsewhere/saved/a", name);
            rename(*m_folder, "elsewhere/saved/a.korvanplugin/Contents/Korvan/manifest.json",
                "Plugins/a.korvanplugin/Contents/Korvan/manifest.json");
        }
        readFolderEvents();
        m_environment->queue.advance(std::chrono::milliseconds(i));
    }
    settle();
    QCOMPARE(nameOf(u"a"_s), Text(u"299"_s));
    QVERIFY(m_reloads > 100 && m_reloads < 300);
}

void tst_KRPluginManager_Monitoring::manyFilesGiveFewReloads()
{
    for (int i = 0; i < 500; ++i) {
        const auto folder = "Plugins/copied/" + QByteArray::number(i / 20);
        writeFileAt(m_folder->path(folder + "/p.korvanplugin/" + QByteArray::number(i)), "");
        readFolderEvents();
        m_environment->queue.advance(4ms);
    }
    plugin(*m_folder, "Plugins/copied/24/p");
    settle();
    QCOMPARE(nameOf(u"p"_s), Text(u"Name"_s));
    QVERIFY2(m_reloads >= 2 && m_reloads <= 10, qPrintable(QString::number(m_reloads)));
}

void tst_KRPluginManager_Monitoring::writtenDuringAReload_data()
{
    QTest::addColumn<QString>("when");
    QTest::addColumn<bool>("isRead");
    for (const auto &when : {u"asked"_s, u"told"_s, u"notified"_s}) {
        for (const bool isRead : {false, true}) {
            const auto tag = when + (isRead ? u", read of in a nested event loop"_s : u", read of later"_s);
            QTest::newRow(qPrintable(tag)) << when << isRead;
        }
    }
}

/// The walk has seen everything already when the store is asked.
void tst_KRPluginManager_Monitoring::writtenDuringAReload()
{
    QFETCH(QString, when);
    QFETCH(bool, isRead);
    bool isWritten = false;
    const auto write = [&] {
        if (std::exchange(isWritten, true))
            return;
        plugin(*m_folder, "Plugins/a", "During");
        plugin(*m_folder, "Plugins/new/d", "During");
        plugin(*m_folder, "elsewhere/e", "During");
        if (isRead)
            readFolderEvents();
    };
    if (when == u"asked"_s)
        m_store->whenAsked = write;
    else if (when == u"told"_s)
        m_store->whenToldOfIdentifiers = write;
    const auto observer = m_environment->notificationCenter().addObserver(
        KRPluginManagerDidReloadPluginsNotification, nullptr, [&](const Notification &) {
            if (when == u"notified"_s)
                write();
        });
    plugin(*m_folder, "Plugins/a", "Before");
    settle();
    QCOMPARE(m_reloads, 1);
    QCOMPARE(nameOf(u"a"_s), Text(u"Before"_s));
    settle();
    QCOMPARE(m_reloads, 2);
    for (const auto &identifier : {u"a"_s, u"d"_s, u"e"_s})
        QCOMPARE(nameOf(identifier), Text(u"During"_s));
    settle();
    QCOMPARE(m_reloads, 2);
}

/// A nested event loop may even deliver; the outer reload then puts its older registry in place of the newer one.
void tst_KRPluginManager_Monitoring::reloadInsideOfAReload()
{
    bool isWritten = false;
    m_store->whenToldOfIdentifiers = [&] {
        if (std::exchange(isWritten, true))
            return;
        plugin(*m_folder, "Plugins/a", "During");
        settle();
        QCOMPARE(m_reloads, 1);
    };
    m_store->whenAsked = [&] {
        if (std::exchange(isWritten, true))
            return;
        plugin(*m_folder, "Plugins/a", "During");
        settle();
    };
    m_manager->reloadPlugins();
    settle();
    QCOMPARE(nameOf(u"a"_s), Text(u"During"_s));
    const auto reloads = m_reloads;
    settle();
    QCOMPARE(m_reloads, reloads);
}

void tst_KRPluginManager_Monitoring::changesBeforeAReloadAreNoNews()
{
    plugin(*m_folder, "Plugins/a", "Other");
    readFolderEvents();
    plugin(*m_folder, "elsewhere/c", "Other");
    m_manager->reloadPlugins();
    m_environment->queue.advance(1h);
    settle();
    QCOMPARE(m_reloads, 1);
}

void tst_KRPluginManager_Monitoring::watchingEnds_data()
{
    QTest::addColumn<bool>("isSetToNil");
    QTest::newRow("cleared") << false;
    QTest::newRow("registry set to nil") << true;
}

void tst_KRPluginManager_Monitoring::watchingEnds()
{
    QFETCH(bool, isSetToNil);
    plugin(*m_folder, "Plugins/d");
    readFolderEvents();
    if (isSetToNil)
        m_manager->setPlugins(std::nullopt);
    else
        m_manager->clearFolderMonitors();
    QVERIFY(m_manager->folderMonitors().empty());
    m_environment->queue.advance(1h);
    QCOMPARE(m_reloads, 0);
    m_manager->reloadPlugins();
    QCOMPARE(m_manager->folderMonitors().size(), 5);
    m_manager->setPlugins(PluginTable());
    QCOMPARE(m_manager->folderMonitors().size(), 5); // empty is not nil
}

void tst_KRPluginManager_Monitoring::setUpByTheHost()
{
    m_manager->setupFolderMonitoringWithVisitedURLs({url("elsewhere"), QUrl(u"https://example.com/"_s),
        url("Plugins/a.korvanplugin/Contents/Korvan/manifest.json")});
    QCOMPARE(m_manager->folderMonitors().size(), 1);
    plugin(*m_folder, "Plugins/a", "Other");
    settle();
    QCOMPARE(m_reloads, 0);
    plugin(*m_folder, "elsewhere/c", "Other");
    settle();
    QCOMPARE(m_reloads, 1);
    QCOMPARE(m_manager->folderMonitors().size(), 5);
    QCOMPARE(nameOf(u"a"_s), Text(u"Other"_s));
}

void tst_KRPluginManager_Monitoring::monitorsKeepTheirManager()
{
    auto manager = std::make_shared<KRPluginManager>(QList{url("More")}, nullptr, m_store);
    auto *const face = manager.get();
    const std::weak_ptr<KRPluginManager> held = manager;
    manager->reloadPlugins();
    manager.reset();
    QVERIFY(!held.expired());
    plugin(*m_folder, "More/d");
    settle();
    QCOMPARE(face->plugins().keys(), QStringList{u"d"_s});
    face->clearFolderMonitors();
    QVERIFY(held.expired());

    manager = std::make_shared<KRPluginManager>(QList{url("More")}, nullptr, m_store);
    const std::weak_ptr<KRPluginManager> second = manager;
    manager->reloadPlugins();
    manager->setPlugins(std::nullopt);
    manager.reset();
    QVERIFY(second.expired());
}

void tst_KRPluginManager_Monitoring::managerEndsInsideOfAReload()
{
    const auto observer = m_environment->notificationCenter().addObserver(
        KRPluginManagerDidReloadPluginsNotification, nullptr, [this](const Notification &) { m_manager.reset(); });
    plugin(*m_folder, "Plugins/d");
    plugin(*m_folder, "Plugins/sub/d");
    plugin(*m_folder, "elsewhere/d");
    settle();
    QVERIFY(!m_manager);
    settle();
    QCOMPARE(m_reloads, 1);
}

/// What one of them has seen already is still news for the other one.
void tst_KRPluginManager_Monitoring::twoManagers()
{
    KRPluginManager other({url("Plugins")}, nullptr, m_store);
    other.reloadPlugins();
    plugin(*m_folder, "Plugins/a", "Other");
    other.reloadPlugins();
    QCOMPARE(nameOf(u"a"_s), Text(u"Name"_s));
    settle();
    QCOMPARE(nameOf(u"a"_s), Text(u"Other"_s));
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Monitoring)
#include "tst_krpluginmanager_monitoring.moc"
