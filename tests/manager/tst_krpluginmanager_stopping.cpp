// What a host shows of the commands that run, how it ends them, and how it removes their plug-ins.

#include "bundles/KRPluginBundle.h"
#include "manager/KRPluginManager.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class tst_KRPluginManager_Stopping : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void listOfNothing();
    void listWithAges();
    void ageBeginsAgainWithARun();
    void commandWithoutAName();
    void changesAreTold();
    void stopping();
    void stoppingWhatDoesNotRun();
    void tearDownThatFails();
    void tearDownThatRunsTheCommandAgain();
    void stoppingInsideOfTheNotification();
    void managerThatGoesWhileStopping();

    void movingToTheTrash();
    void movingWhatIsNotThere();
    void movingFails();

private:
    KRPluginCommandSpecifier specifier(const QString &plugin = u"a"_s) const { return {plugin, u"run"_s}; }
    void install(const QString &identifier, const QByteArray &source);
    void run(const QString &identifier = u"a"_s);
    QStringList runningNames() const;

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<KRPluginManager> m_manager;
    QStringList m_ends;
};

namespace {

const QByteArray runningScript = "function onRun() { setTimeout(() => {}, 36e5) }\n";

QByteArray withTearDown(const QByteArray &statements)
{
    return runningScript + "function onTearDown() { " + statements + " }";
}

} // namespace

void tst_KRPluginManager_Stopping::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_environment->path(u"data"_s)));
    m_manager = std::make_unique<KRPluginManager>(KRPluginManager::pluginsURLs(), nullptr, nullptr);
    m_ends.clear();
}

void tst_KRPluginManager_Stopping::cleanup()
{
    m_manager.reset();
    m_environment.reset();
}

void tst_KRPluginManager_Stopping::install(const QString &identifier, const QByteArray &source)
{
    BundleBuilder(m_environment->path(u"support/Plugins"_s), identifier)
        .manifest(R"({"identifier": ")" + identifier.toUtf8() + R"(", "name": "Plug-in )" + identifier.toUtf8()
            + R"(", "commands": [{"identifier": "run", "name": "Run It", "script": "script.js"}]})")
        .script(u"script.js"_s, source);
    m_manager->reloadPlugins();
}

void tst_KRPluginManager_Stopping::run(const QString &identifier)
{
    m_manager->commandWithSpecifier(specifier(identifier))->run({}, m_manager.get(), [this](const QString &log) {
        m_ends.append(u"end: "_s + log);
    });
}

QStringList tst_KRPluginManager_Stopping::runningNames() const
{
    QStringList names;
    for (const auto &command : m_manager->runningCommands())
        names.append(command.pluginName + u": "_s + command.name);
    return names;
}

void tst_KRPluginManager_Stopping::listOfNothing()
{
    QVERIFY(m_manager->runningCommands().isEmpty());
}

void tst_KRPluginManager_Stopping::listWithAges()
{
    install(u"b"_s, runningScript);
    install(u"a"_s, runningScript);
    run(u"b"_s);
    m_environment->queue.advance(90s);
    run(u"a"_s);
    m_environment->queue.advance(5s);
    QCOMPARE(runningNames(), QStringList({u"Plug-in b: Run It"_s, u"Plug-in a: Run It"_s}));
    const auto running = m_manager->runningCommands();
    QCOMPARE(running[0].age, std::chrono::milliseconds(95s));
    QCOMPARE(running[1].age, std::chrono::milliseconds(5s));
    QCOMPARE(running[1].specifier, specifier());
}

void tst_KRPluginManager_Stopping::ageBeginsAgainWithARun()
{
    install(u"a"_s, runningScript);
    run();
    m_environment->queue.advance(90s);
    run();
    QCOMPARE(m_manager->runningCommands().size(), 1);
    QCOMPARE(m_manager->runningCommands().first().age, 0ms);
}

void tst_KRPluginManager_Stopping::commandWithoutAName()
{
    const auto script = std::make_shared<KRPluginScript>(QString::fromUtf8(runningScript), u"alone.js"_s);
    const auto command = std::make_shared<KRPluginCommand>(
        script, u"alone"_s, std::nullopt, u"onRun"_s, KRPluginCommand::Scope::Application);
    command->run({}, m_manager.get());
    QCOMPARE(runningNames(), QStringList{u": "_s});
}

void tst_KRPluginManager_Stopping::changesAreTold()
{
    install(u"a"_s, runningScript);
    QList<qsizetype> counts;
    const auto observer =
        m_environment->notificationCenter().addObserver(KRPluginManagerRunningCommandsDidChangeNotification,
            m_manager.get(), [&](const Notification &) { counts.append(m_manager->runningCommands().size()); });
    run();
    QCOMPARE(counts, QList<qsizetype>{1});
    m_environment->queue.advance(10s); // polls change nothing
    QCOMPARE(counts, QList<qsizetype>{1});
    m_environment->queue.advance(3700s);
    QCOMPARE(counts, QList<qsizetype>({1, 0}));
}

void tst_KRPluginManager_Stopping::stopping()
{
    install(u"a"_s, withTearDown("print('torn down')"));
    install(u"b"_s, runningScript);
    run(u"a"_s);
    run(u"b"_s);
    const auto command = m_manager->commandWithSpecifier(specifier());
    QVERIFY(m_manager->stopCommand(specifier()));
    QCOMPARE(m_ends, QStringList{u"end: torn down"_s});
    QCOMPARE(runningNames(), QStringList{u"Plug-in b: Run It"_s});
    QVERIFY(!command->session());
    QVERIFY(!m_manager->stopCommand(specifier()));
    m_environment->queue.advance(100s);
    QCOMPARE(m_ends.size(), 1);
}

void tst_KRPluginManager_Stopping::stoppingWhatDoesNotRun()
{
    install(u"a"_s, runningScript);
    QVERIFY(!m_manager->stopCommand(specifier()));
    QVERIFY(!m_manager->stopCommand({}));
    QVERIFY(!m_manager->stopCommand({std::nullopt, u"run"_s}));
    QCOMPARE(m_ends, QStringList());
}

void tst_KRPluginManager_Stopping::tearDownThatFails()
{
    install(u"a"_s, withTearDown("throw new Error('no')"));
    run();
    QVERIFY(m_manager->stopCommand(specifier()));
    QVERIFY(m_manager->runningCommands().isEmpty());
    QCOMPARE(m_ends.size(), 1);
    QVERIFY(m_ends.first().contains(u"Error: no"_s));
}

void tst_KRPluginManager_Stopping::tearDownThatRunsTheCommandAgain()
{
    install(u"a"_s, withTearDown("setTimeout(() => {}, 1)"));
    run();
    QVERIFY(m_manager->stopCommand(specifier()));
    QVERIFY(m_manager->runningCommands().isEmpty());
    m_environment->queue.advance(10s);
    QCOMPARE(m_ends.size(), 1);
}

void tst_KRPluginManager_Stopping::stoppingInsideOfTheNotification()
{
    install(u"a"_s, runningScript);
    const auto observer =
        m_environment->notificationCenter().addObserver(KRPluginManagerRunningCommandsDidChangeNotification,
            m_manager.get(), [&](const Notification &) { m_manager->stopCommand(specifier()); });
    run();
    QVERIFY(m_manager->runningCommands().isEmpty());
    QCOMPARE(m_ends.size(), 1);
    QCOMPARE(m_manager->lastTimerInterval(), 0.0);
}

void tst_KRPluginManager_Stopping::managerThatGoesWhileStopping()
{
    install(u"a"_s, runningScript);
    m_manager->commandWithSpecifier(specifier())->run({}, m_manager.get(), [this](const QString &) {
        m_manager.reset();
    });
    QVERIFY(m_manager->stopCommand(specifier()));
    QVERIFY(!m_manager);
}

void tst_KRPluginManager_Stopping::movingToTheTrash()
{
    install(u"a"_s, withTearDown("print('torn down')"));
    install(u"b"_s, runningScript);
    run(u"a"_s);
    run(u"b"_s);
    KRError error;
    QVERIFY(m_manager->movePluginToTrash(m_manager->plugins().value(u"a"_s), &error));
    QCOMPARE(error, KRError());
    QCOMPARE(m_ends, QStringList{u"end: torn down"_s});
    QCOMPARE(runningNames(), QStringList{u"Plug-in b: Run It"_s});
    QVERIFY(QFile::exists(m_environment->path(u"data/Trash/files/a.korvanplugin/Contents/Korvan/script.js"_s)));
    QVERIFY(m_manager->plugins().contains(u"a"_s)); // until the next reload
    m_manager->reloadPlugins();
    QCOMPARE(m_manager->plugins().keys(), QStringList{u"b"_s});
}

void tst_KRPluginManager_Stopping::movingWhatIsNotThere()
{
    KRError error;
    QVERIFY(!m_manager->movePluginToTrash(nullptr, &error));
    const auto bundle = KRPluginBundle::initWithName(u"a"_s, u"a"_s, {}, QImage());
    QVERIFY(!m_manager->movePluginToTrash(bundle, &error));
    QCOMPARE(error, KRError());
}

void tst_KRPluginManager_Stopping::movingFails()
{
    install(u"a"_s, runningScript);
    const auto bundle = m_manager->plugins().value(u"a"_s);
    QVERIFY(QDir(bundle->url().toLocalFile()).removeRecursively());
    KRError error;
    QVERIFY(!m_manager->movePluginToTrash(bundle, &error));
    QVERIFY(!error.localizedDescription.isEmpty());
    QVERIFY(m_manager->movePluginToTrash(bundle) == false);
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Stopping)
#include "tst_krpluginmanager_stopping.moc"
