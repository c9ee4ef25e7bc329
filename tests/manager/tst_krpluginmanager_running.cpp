// Commands that stay running: how they are polled, and how their ends are told.

#include "bundles/KRPluginBundle.h"
#include "manager/KRPluginManager.h"
#include "support/BundleBuilder.h"
#include "support/NilableText.h"
#include "support/TestCommand.h"
#include "support/TestEnvironment.h"
#include "support/TestPlugin.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_KRPluginManager_Running : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void nothingToTrack();
    void finishedCommandEndsAtOnce();
    void pollsAreFartherAndFartherApart();
    void intervalStartsOver();
    void eachCallStartsOneMoreChain();
    void endIsToldOnce();
    void stoppingWhatIsNotTracked();
    void stopping();
    void secondCommandOfASpecifier();
    void burstOfEventsIsOnePoll();
    void eventsOfScriptsPoll();
    void commandFromInsideACompletion();
    void messagesNameTheScriptThatRuns();
    void managerThatGoesEndsItsCommands();
    void managerThatGoesInsideACompletion_data();
    void managerThatGoesInsideACompletion();

    void lookup_data();
    void lookup();
    void handlerRunsLater();
    void handlerOfAnUnknownCommand();
    void handlerOfAManagerThatIsGone();

private:
    /// A command with a session that lives until its timer of so many milliseconds has fired.
    std::shared_ptr<KRPluginCommand> runningFor(int milliseconds);
    KRPluginManager::Completion noting(const QString &name);

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<KRPluginManager> m_manager;
    std::unique_ptr<TestPlugin> m_plugin;
    QStringList m_ends;
};

void tst_KRPluginManager_Running::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_manager = std::make_unique<KRPluginManager>();
    m_ends.clear();
}

void tst_KRPluginManager_Running::cleanup()
{
    m_plugin.reset();
    m_manager.reset();
    m_environment.reset();
}

std::shared_ptr<KRPluginCommand> tst_KRPluginManager_Running::runningFor(int milliseconds)
{
    m_plugin = std::make_unique<TestPlugin>(
        *m_environment, "function onRun(context) { setTimeout(() => print('timer'), context.wait) }");
    m_manager->setPlugins(PluginTable{{u"com.example.tidy"_s, m_plugin->bundle}});
    const auto command = m_plugin->command();
    command->run({{u"wait"_s, milliseconds}}, m_manager.get(), noting(u"run"_s));
    return command;
}

KRPluginManager::Completion tst_KRPluginManager_Running::noting(const QString &name)
{
    return [this, name](const QString &log) { m_ends.append(name + u": "_s + log); };
}

void tst_KRPluginManager_Running::nothingToTrack()
{
    m_manager->trackLongRunningCommand(nullptr, noting(u"never"_s));
    QCOMPARE(m_manager->lastTimerInterval(), 0.0);
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(0));
    QCOMPARE(m_ends, QStringList());
}

void tst_KRPluginManager_Running::finishedCommandEndsAtOnce()
{
    const auto command = commandWithSource(u""_s);
    command->print(u"said"_s);
    m_manager->trackLongRunningCommand(command, noting(u"end"_s));
    QCOMPARE(m_ends, QStringList{u"end: said"_s});
    QVERIFY(!m_manager->isCommandRunning(command->commandSpecifier()));
    QCOMPARE(m_manager->lastTimerInterval(), 0.0);
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(0));
}

void tst_KRPluginManager_Running::pollsAreFartherAndFartherApart()
{
    const auto command = runningFor(1000000);
    QVERIFY(m_manager->isCommandRunning(command->commandSpecifier()));
    for (const double interval : {1, 2, 4, 8, 16, 32, 60, 60, 60}) {
        QCOMPARE(m_manager->lastTimerInterval(), interval);
        m_environment->queue.advance(std::chrono::milliseconds(int(interval * 1000)));
    }
    QCOMPARE(m_ends, QStringList());
}

void tst_KRPluginManager_Running::intervalStartsOver()
{
    auto command = runningFor(2500);
    m_environment->queue.advance(10s);
    QCOMPARE(m_manager->lastTimerInterval(), 0.0);
    QCOMPARE(m_ends, QStringList{u"run: timer"_s});
    command = runningFor(2500);
    QCOMPARE(m_manager->lastTimerInterval(), 1.0);
}

void tst_KRPluginManager_Running::eachCallStartsOneMoreChain()
{
    const auto command = runningFor(1000000);
    m_manager->cleanupFinishedCommands();
    QCOMPARE(m_manager->lastTimerInterval(), 2.0);
    m_manager->cleanupFinishedCommands();
    QCOMPARE(m_manager->lastTimerInterval(), 4.0);
    // The polls after 1, 2 and 4 seconds are all still planned, and all double the one interval.
    m_environment->queue.advance(1s);
    QCOMPARE(m_manager->lastTimerInterval(), 8.0);
    m_environment->queue.advance(1s);
    QCOMPARE(m_manager->lastTimerInterval(), 16.0);
    m_environment->queue.advance(2s);
    QCOMPARE(m_manager->lastTimerInterval(), 32.0);
}

void tst_KRPluginManager_Running::endIsToldOnce()
{
    const auto command = runningFor(500);
    m_environment->queue.advance(100s);
    QCOMPARE(m_ends, QStringList{u"run: timer"_s});
    QVERIFY(!command->session());
    QVERIFY(!m_manager->isCommandRunning(command->commandSpecifier()));
}

void tst_KRPluginManager_Running::stoppingWhatIsNotTracked()
{
    QCOMPARE(m_manager->stopTrackingLongRunningCommandWithSpecifier({u"a"_s, u"b"_s}), nullptr);
    QCOMPARE(m_ends, QStringList());
}

void tst_KRPluginManager_Running::stopping()
{
    const auto command = runningFor(500);
    QCOMPARE(m_manager->stopTrackingLongRunningCommandWithSpecifier(command->commandSpecifier()), command);
    QCOMPARE(m_ends, QStringList{u"run: "_s});
    QVERIFY(command->session()); // whoever stops it tears it down
    QCOMPARE(m_manager->lastTimerInterval(), 1.0);
    m_environment->queue.advance(1s);
    QCOMPARE(m_manager->lastTimerInterval(), 0.0);
    QCOMPARE(m_ends.size(), 1);
    command->tearDownSession();
}

void tst_KRPluginManager_Running::secondCommandOfASpecifier()
{
    const auto first = runningFor(1000000);
    const auto plugin = std::move(m_plugin);
    const TestPlugin again(*m_environment, "function onRun() { setTimeout(() => {}, 1000000) }");
    const auto second = again.command();
    second->run({}, nullptr);
    QCOMPARE(second->commandSpecifier(), first->commandSpecifier());
    m_manager->trackLongRunningCommand(second, nullptr);
    second->print(u"second"_s);
    QCOMPARE(m_manager->stopTrackingLongRunningCommandWithSpecifier(first->commandSpecifier()), second);
    QCOMPARE(m_ends, QStringList{u"run: second"_s}); // the first one's completion stayed
    first->tearDownSession();
    second->tearDownSession();
}

void tst_KRPluginManager_Running::burstOfEventsIsOnePoll()
{
    const auto command = runningFor(1000000);
    for (int i = 0; i < 5; ++i) {
        m_manager->didClearEventStack(nullptr);
        m_environment->queue.advance(50ms);
    }
    QCOMPARE(m_manager->lastTimerInterval(), 1.0);
    m_environment->queue.advance(50ms);
    QCOMPARE(m_manager->lastTimerInterval(), 2.0);
    m_environment->queue.advance(500ms);
    QCOMPARE(m_manager->lastTimerInterval(), 2.0);
}

void tst_KRPluginManager_Running::eventsOfScriptsPoll()
{
    const auto command = runningFor(300);
    m_environment->queue.advance(399ms);
    QCOMPARE(m_ends, QStringList());
    m_environment->queue.advance(1ms); // 0.1 seconds after the timer has fired
    QCOMPARE(m_ends, QStringList{u"run: timer"_s});
}

void tst_KRPluginManager_Running::commandFromInsideACompletion()
{
    const auto command = commandWithSource(u""_s);
    m_manager->trackLongRunningCommand(command, [&](const QString &) {
        m_ends.append(u"outer"_s);
        m_manager->trackLongRunningCommand(command, noting(u"inner"_s));
    });
    QCOMPARE(m_ends, (QStringList{u"outer"_s, u"inner: "_s}));
    QCOMPARE(m_manager->lastTimerInterval(), 0.0);
}

void tst_KRPluginManager_Running::messagesNameTheScriptThatRuns()
{
    const auto running = runningFor(1000000);
    const auto moved = KRPluginBundle::pluginBundleWithURL(
        BundleBuilder(m_environment->path(u"Elsewhere"_s), u"Tidy"_s)
            .manifest(R"({"identifier": "com.example.tidy", "commands": [{"identifier": "tidy", "script": "a.js"}]})")
            .script(u"a.js"_s, "")
            .url());
    const auto log = moved->commands().at(u"tidy"_s)->runHandler(u"missing"_s, {}, m_manager.get());
    QCOMPARE(log,
        Text(
            u"Error in command Tidy Layers Script at path %1 does not contain a handler function named: missing."_s.arg(
                m_plugin->scriptPath())));
}

void tst_KRPluginManager_Running::managerThatGoesEndsItsCommands()
{
    const auto command = runningFor(1000);
    const auto session = command->session();
    m_manager.reset();
    QVERIFY(!session->shouldKeepRunning());
    m_environment->queue.advance(100s);
    QCOMPARE(m_ends, QStringList());
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(0));
}

void tst_KRPluginManager_Running::managerThatGoesInsideACompletion_data()
{
    QTest::addColumn<bool>("isPolled");
    QTest::newRow("in a poll") << true;
    QTest::newRow("when stopped") << false;
}

void tst_KRPluginManager_Running::managerThatGoesInsideACompletion()
{
    const auto command = runningFor(500);
    m_manager->trackLongRunningCommand(command, [this](const QString &) {
        m_manager.reset();
        m_ends.append(u"gone"_s);
    });
    QFETCH(bool, isPolled);
    if (!isPolled)
        m_manager->stopTrackingLongRunningCommandWithSpecifier(command->commandSpecifier());
    m_environment->queue.advance(100s);
    QCOMPARE(m_ends, QStringList{u"gone"_s});
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(0));
}

void tst_KRPluginManager_Running::lookup_data()
{
    QTest::addColumn<Text>("plugin");
    QTest::addColumn<Text>("command");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("known") << Text(u"com.example.tidy"_s) << Text(u"tidy"_s) << true;
    QTest::newRow("unknown command") << Text(u"com.example.tidy"_s) << Text(u"other"_s) << false;
    QTest::newRow("unknown plug-in") << Text(u"other"_s) << Text(u"tidy"_s) << false;
    QTest::newRow("no plug-in") << nil << Text(u"tidy"_s) << false;
    QTest::newRow("no command") << Text(u"com.example.tidy"_s) << nil << false;
    QTest::newRow("empty texts") << Text(u""_s) << Text(u""_s) << false;
}

void tst_KRPluginManager_Running::lookup()
{
    const TestPlugin tidy(*m_environment, "");
    m_manager->setPlugins(PluginTable{{u"com.example.tidy"_s, tidy.bundle}});
    QFETCH(Text, plugin);
    QFETCH(Text, command);
    QTEST(m_manager->commandWithSpecifier({plugin, command}) != nullptr, "isFound");
}

void tst_KRPluginManager_Running::handlerRunsLater()
{
    TestPlugin plugin(
        *m_environment, "function onRun(context) { print(`ran ${context.what} in ${context.plugin.identifier()}`) }");
    m_manager->setPlugins(PluginTable{{u"com.example.tidy"_s, plugin.bundle}});
    m_manager->runHandlerWithKey(u"run"_s, u"tidy"_s, u"com.example.tidy"_s, {{u"what"_s, 5}});
    const auto command = plugin.command();
    QVERIFY(command->hasNeverRun());
    m_manager->setPlugins(PluginTable()); // what was looked up stays, its plug-in included
    plugin.bundle.reset();
    m_environment->queue.runQueued();
    QCOMPARE(command->logString(), u"ran 5 in com.example.tidy"_s);
}

void tst_KRPluginManager_Running::handlerOfAnUnknownCommand()
{
    m_manager->runHandlerWithKey(u"run"_s, u"tidy"_s, u"com.example.tidy"_s, {});
    m_environment->queue.runQueued();
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginManager_Running::handlerOfAManagerThatIsGone()
{
    const TestPlugin plugin(*m_environment, "function onRun() { print('ran') }");
    m_manager->setPlugins(PluginTable{{u"com.example.tidy"_s, plugin.bundle}});
    m_manager->runHandlerWithKey(u"run"_s, u"tidy"_s, u"com.example.tidy"_s, {});
    m_manager.reset();
    m_environment->queue.runQueued();
    QVERIFY(plugin.command()->hasNeverRun());
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Running)
#include "tst_krpluginmanager_running.moc"
