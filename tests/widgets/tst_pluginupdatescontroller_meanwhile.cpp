// Updates, and what else happens to the plug-ins meanwhile.

#include "PluginsFixture.h"
#include "widgets/plugins/PluginUpdatesController.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using Phase = PluginUpdateState::Phase;

class tst_PluginUpdatesController_Meanwhile : public QObject, private PluginsFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void hostHasCheckedBefore();
    void hostChecksAndReloads();
    void pluginGoesWhileItsUpdateWaits();
    void pluginGoesDuringItsDownload();
    void newerOneInstalledByHand_data();
    void newerOneInstalledByHand();
    void newerOneInstalledAfterAFailure();
    void controllerGoesWhileDownloading();
    void nextControllerFindsWhatWasDownloaded();
    void managerGoesFirst();
    void managerGoesWhileDownloading();

private:
    void check();
    void checkByHost();
    void installByHand(const QString &version);
    Phase phase(const QString &identifier) const { return m_updates->state(identifier).phase; }
    void waitForPhase(const QString &identifier, Phase expected) const
    {
        waitUntil([&] { return phase(identifier) == expected; });
    }

    std::unique_ptr<PluginUpdatesController> m_updates;
};

void tst_PluginUpdatesController_Meanwhile::init()
{
    setUp();
    m_updates = std::make_unique<PluginUpdatesController>(*m_manager);
}

void tst_PluginUpdatesController_Meanwhile::cleanup()
{
    m_updates.reset();
    tearDown();
}

void tst_PluginUpdatesController_Meanwhile::check()
{
    m_updates->check();
    waitUntil([this] { return !m_updates->isChecking(); });
}

void tst_PluginUpdatesController_Meanwhile::checkByHost()
{
    bool hasEnded = false;
    m_manager->checkForPluginUpdates({}, {}, [&] { LTAppEnvironment::runOnMainQueue([&] { hasEnded = true; }); });
    waitUntil([&] { return hasEnded; });
}

void tst_PluginUpdatesController_Meanwhile::installByHand(const QString &version)
{
    auto plugin = pluginWithFeed(u"b"_s);
    plugin.version = version;
    install(plugin);
}

void tst_PluginUpdatesController_Meanwhile::hostHasCheckedBefore()
{
    installWithUpdate(u"a"_s);
    checkByHost();
    m_updates = std::make_unique<PluginUpdatesController>(*m_manager);
    QCOMPARE(m_updates->available(), QStringList{u"a"_s});
    QCOMPARE(m_updates->state(u"a"_s).version, u"2.0"_s);
}

void tst_PluginUpdatesController_Meanwhile::hostChecksAndReloads()
{
    installWithUpdate(u"a"_s);
    checkByHost();
    m_manager->reloadPlugins();
    QCOMPARE(m_updates->available(), QStringList{u"a"_s});
}

void tst_PluginUpdatesController_Meanwhile::pluginGoesWhileItsUpdateWaits()
{
    installWithUpdate(u"a"_s);
    installWithUpdate(u"b"_s);
    check();
    m_updates->updateAll();
    QVERIFY(QDir(pluginsFolder() + u"/b.korvanplugin"_s).removeRecursively());
    m_manager->reloadPlugins();
    QCOMPARE(m_updates->state(u"b"_s), PluginUpdateState());
    waitForPhase(u"a"_s, Phase::Installed);
    QVERIFY(!m_server->requestedPaths().contains("/b.zip"));
}

void tst_PluginUpdatesController_Meanwhile::pluginGoesDuringItsDownload()
{
    installWithUpdate(u"a"_s);
    installWithUpdate(u"b"_s);
    m_server->setAnswer("/a.zip", Answer::silence());
    check();
    m_updates->updateAll();
    m_server->waitForRequests(3);
    QVERIFY(QDir(pluginsFolder() + u"/a.korvanplugin"_s).removeRecursively());
    m_manager->reloadPlugins();
    waitForPhase(u"b"_s, Phase::Installed); // the others go on
    QCOMPARE(m_updates->state(u"a"_s), PluginUpdateState());
    QVERIFY(!m_manager->plugins().contains(u"a"_s));
}

void tst_PluginUpdatesController_Meanwhile::newerOneInstalledByHand_data()
{
    QTest::addColumn<Phase>("when");

    QTest::newRow("before its update begins") << Phase::Available;
    QTest::newRow("while its update waits") << Phase::Waiting;
    QTest::newRow("during its download") << Phase::Downloading;
}

/// An update must not put an older version in its place.
void tst_PluginUpdatesController_Meanwhile::newerOneInstalledByHand()
{
    QFETCH(Phase, when);
    installWithUpdate(u"b"_s);
    if (when == Phase::Waiting)
        installWithUpdate(u"a"_s); // which comes first
    check();
    if (when != Phase::Available)
        m_updates->updateAll();
    QCOMPARE(phase(u"b"_s), when);
    installByHand(u"2.1"_s);
    waitForPhase(u"b"_s, Phase::Idle);
    m_updates->update(u"b"_s);
    QCOMPARE(phase(u"b"_s), Phase::Idle);
    QCOMPARE(installedVersion(u"b"_s), u"2.1"_s);
}

void tst_PluginUpdatesController_Meanwhile::newerOneInstalledAfterAFailure()
{
    installWithUpdate(u"b"_s);
    m_server->setAnswer("/b.zip", Answer::response(500));
    check();
    m_updates->update(u"b"_s);
    waitForPhase(u"b"_s, Phase::Failed);
    m_manager->reloadPlugins();
    QCOMPARE(phase(u"b"_s), Phase::Failed);
    installByHand(u"2.1"_s);
    QCOMPARE(phase(u"b"_s), Phase::Idle);
}

void tst_PluginUpdatesController_Meanwhile::controllerGoesWhileDownloading()
{
    installWithUpdate(u"a"_s);
    check();
    m_updates->update(u"a"_s);
    m_updates.reset();
    waitUntil([this] { return m_manager->isPluginUpdateDownloadedWithIdentifier(u"a"_s, u"2.0"_s); });
    QCOMPARE(installedVersion(u"a"_s), u"1.0"_s);
}

void tst_PluginUpdatesController_Meanwhile::nextControllerFindsWhatWasDownloaded()
{
    installWithUpdate(u"a"_s);
    check();
    m_updates->update(u"a"_s);
    m_updates.reset();
    waitUntil([this] { return m_manager->isPluginUpdateDownloadedWithIdentifier(u"a"_s, u"2.0"_s); });
    m_updates = std::make_unique<PluginUpdatesController>(*m_manager);
    m_updates->update(u"a"_s);
    QCOMPARE(phase(u"a"_s), Phase::Installed);
    QCOMPARE(m_server->requestedPaths().count("/a.zip"), 1);
}

void tst_PluginUpdatesController_Meanwhile::managerGoesFirst()
{
    installWithUpdate(u"a"_s);
    check();
    m_manager.reset();
    m_updates->check();
    m_updates->update(u"a"_s);
    m_updates->cancel(u"a"_s);
    QVERIFY(!m_updates->isChecking());
}

void tst_PluginUpdatesController_Meanwhile::managerGoesWhileDownloading()
{
    installWithUpdate(u"a"_s);
    installWithUpdate(u"b"_s);
    m_server->setAnswer("/a.zip", Answer::silence());
    check();
    m_updates->updateAll();
    m_manager.reset();
    m_updates->cancelAll();
    m_updates->updateAll();
    QCOMPARE(phase(u"b"_s), Phase::Waiting); // what it knew
}

QTEST_MAIN(tst_PluginUpdatesController_Meanwhile)
#include "tst_pluginupdatescontroller_meanwhile.moc"
