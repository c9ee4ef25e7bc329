// Enabling, the state file, the vendor's list, watching and message ports, from the command line.

#include "CommandLineFixture.h"
#include "support/servers/ChildProcess.h"
#include "support/servers/NginxServer.h"

#include <QJsonArray>
#include <QSysInfo>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const auto oneCommand = R"(, "version": "1.0", "commands": [{"script": "script.js", "identifier": "c", "name": "C"}]})";

QByteArray manifestOf(const QByteArray &identifier)
{
    return R"({"identifier": ")" + identifier + "\"" + oneCommand;
}

QStringList texts(const QJsonValue &array)
{
    QStringList texts;
    const auto elements = array.toArray();
    for (const auto &element : elements)
        texts.append(element.toString());
    return texts;
}

/// A command that runs until it is stopped, and the documents that it prints.
class RunningCommand
{
public:
    RunningCommand(const QString &folder, const QStringList &arguments)
    {
        m_process.setWorkingDirectory(folder);
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, folder);
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(KORVAN_PLUGINS_PROGRAM), arguments);
        m_process.waitForStarted();
    }
    ~RunningCommand()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    RunningCommand(const RunningCommand &) = delete;
    RunningCommand &operator=(const RunningCommand &) = delete;

    QJsonObject nextDocument()
    {
        while (!m_process.canReadLine() && m_process.state() == QProcess::Running) {
            if (!m_process.waitForReadyRead(30000))
                return {};
        }
        return QJsonDocument::fromJson(m_process.readLine()).object();
    }
    /// -1 when it does not end.
    int exitCodeAfter(int signal)
    {
        ::kill(pid_t(m_process.processId()), signal);
        return m_process.waitForFinished(30000) && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode()
                                                                                                  : -1;
    }
    bool isRunning() { return !m_process.waitForFinished(0) && m_process.state() == QProcess::Running; }

private:
    QProcess m_process;
};

} // namespace

class tst_CommandLine_State : public QObject, CommandLineFixture
{
    Q_OBJECT

private slots:
    void init();

    void disablingAndEnabling();
    void unknownPluginChangesNothing();
    void enablingInSafeMode();
    void stateShowsEverything();
    void stateThatCannotBeWritten();
    void shippedListIsInForce();
    void downloadedListIsInForceBeforeTheShippedOne();
    void updateFromAWebServer();
    void failedUpdateIsSilent_data();
    void failedUpdateIsSilent();
    void watchTellsOfEveryReload();
    void watchTellsWhatChanged_data();
    void watchTellsWhatChanged();
    void watchEndsWithSignals_data();
    void watchEndsWithSignals();
    void watchRegistersIncompatiblePlugins();
    void portsFromEndToEnd();
    void portsThatCannotBe_data();
    void portsThatCannotBe();

private:
    QStringList with(const QStringList &arguments) const
    {
        return QStringList{u"--folder"_s, u"plugins"_s, u"--support-dir"_s, u"support"_s, u"--host-version"_s,
                   u"95.3"_s, u"--resources"_s, u"resources"_s, u"--json"_s}
        + arguments;
    }
    QString suffix() const { return QSysInfo::currentCpuArchitecture() == u"x86_64" ? u"_x86_64"_s : QString(); }
    QStringList disabledPlugins() const
    {
        QStringList identifiers;
        const auto plugins = run(with({u"list"_s})).json().value(u"plugins"_s).toArray();
        for (const auto &plugin : plugins) {
            if (!plugin.toObject().value(u"enabled"_s).toBool())
                identifiers.append(plugin.toObject().value(u"identifier"_s).toString());
        }
        return identifiers;
    }
};

void tst_CommandLine_State::init()
{
    makeFolder();
    for (const auto *const name : {"a", "b", "c"})
        plugin(QLatin1String(name), manifestOf(name));
}

void tst_CommandLine_State::disablingAndEnabling()
{
    const auto disabled = run(with({u"disable"_s, u"a"_s, u"c"_s}));
    QCOMPARE(disabled.exitCode, 0);
    QCOMPARE(disabled.json().value(u"plugins"_s).toArray().size(), 2);
    QCOMPARE(disabled.json().value(u"plugins"_s).toArray().at(1).toObject().value(u"identifier"_s).toString(), u"c"_s);
    QCOMPARE(disabledPlugins(), QStringList({u"a"_s, u"c"_s}));
    QCOMPARE(run(with({u"enable"_s, u"a"_s})).exitCode, 0);
    QCOMPARE(disabledPlugins(), QStringList{u"c"_s});
    QCOMPARE(run(with({u"menu"_s})).json().value(u"items"_s).toArray().size(), 2);
}

void tst_CommandLine_State::unknownPluginChangesNothing()
{
    const auto finished = run(with({u"disable"_s, u"a"_s, u"unknown"_s}));
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(finished.json().value(u"error"_s).toObject().value(u"message"_s).toString(),
        u"There is no plug-in \"unknown\"."_s);
    QCOMPARE(disabledPlugins(), QStringList());
    QCOMPARE(run(with({u"disable"_s})).exitCode, 2);
}

void tst_CommandLine_State::enablingInSafeMode()
{
    QCOMPARE(run(with({u"--safe-mode"_s, u"enable"_s, u"b"_s})).exitCode, 0);
    QCOMPARE(disabledPlugins(), QStringList({u"a"_s, u"c"_s}));
}

void tst_CommandLine_State::stateShowsEverything()
{
    run(with({u"disable"_s, u"b"_s}));
    writeFile(m_folder->filePath(u"support/PluginsToDisable95.3%1.json"_s.arg(suffix())), R"({"a": "0.9"})");
    const auto state =
        run(with({u"--default"_s, u"KRPluginManagerNumberOfIncompatiblePluginsDisabled=4"_s, u"state"_s}));
    QCOMPARE(state.exitCode, 0);
    const QJsonObject expected{
        {u"metadata"_s, QJsonObject{{u"b"_s, QJsonObject{{u"disabled"_s, true}}}}},
        {u"incompatiblePluginVersions"_s, QJsonObject{{u"a"_s, u"0.9"_s}}},
        {u"numberOfIncompatiblePluginsDisabled"_s, 4},
    };
    QCOMPARE(state.json(), expected);
    const auto empty = run({u"--folder"_s, u"none"_s, u"--support-dir"_s, u"none"_s, u"state"_s, u"--json"_s});
    QCOMPARE(empty.json().value(u"metadata"_s).toObject(), QJsonObject());
}

void tst_CommandLine_State::stateThatCannotBeWritten()
{
    QVERIFY(QDir(m_folder->path()).mkpath(u"support/PluginMetadata.plist"_s)); // a folder in its place
    const auto finished = run(with({u"disable"_s, u"a"_s}));
    QCOMPARE(finished.exitCode, 1);
    QVERIFY(finished.json().value(u"plugins"_s).toArray().first().toObject().value(u"enabled"_s).toBool());
    QCOMPARE(finished.errors, QStringList{u"korvan-plugins: The state of \"a\" could not be changed."_s});
}

void tst_CommandLine_State::shippedListIsInForce()
{
    writeFile(m_folder->filePath(u"resources/PluginsToDisable%1.plist"_s.arg(suffix())),
        "<plist version=\"1.0\"><dict><key>b</key><string>1.0</string></dict></plist>");
    const auto shown = run(with({u"blocklist"_s, u"show"_s}));
    QCOMPARE(shown.json(),
        (QJsonObject{{u"incompatiblePluginVersions"_s, QJsonObject{{u"b"_s, u"1.0"_s}}}, {u"newlyDisabled"_s, 0}}));
    QCOMPARE(disabledPlugins(), QStringList{u"b"_s});
    QCOMPARE(run(with({u"state"_s})).json().value(u"numberOfIncompatiblePluginsDisabled"_s).toInt(), 0);
}

void tst_CommandLine_State::downloadedListIsInForceBeforeTheShippedOne()
{
    writeFile(m_folder->filePath(u"resources/PluginsToDisable%1.plist"_s.arg(suffix())),
        "<plist version=\"1.0\"><dict><key>b</key><string>1.0</string></dict></plist>");
    writeFile(m_folder->filePath(u"support/PluginsToDisable95.3%1.json"_s.arg(suffix())), R"({"c": "1.0"})");
    QCOMPARE(disabledPlugins(), QStringList{u"c"_s});
}

void tst_CommandLine_State::updateFromAWebServer()
{
    const NginxServer server;
    qputenv("SSL_CERT_FILE", QFile::encodeName(server.certificateAuthorityFile()));
    writeFile(server.documentRoot() + u"/blocklist/plugins/95.3%1.json"_s.arg(suffix()), R"({"a": "1.0", "x": "2"})");
    const auto endpoint = server.baseUrl().toString(QUrl::StripTrailingSlash);
    const auto update = with({u"--blocklist-url"_s, endpoint, u"blocklist"_s, u"update"_s});

    const auto first = run(update);
    QCOMPARE(first.exitCode, 0);
    QCOMPARE(first.json(),
        (QJsonObject{{u"incompatiblePluginVersions"_s, QJsonObject{{u"a"_s, u"1.0"_s}, {u"x"_s, u"2"_s}}},
            {u"newlyDisabled"_s, 1}}));
    QCOMPARE(disabledPlugins(), QStringList{u"a"_s});
    QCOMPARE(run(with({u"state"_s})).json().value(u"numberOfIncompatiblePluginsDisabled"_s).toInt(), 1);

    const auto again = run(update);
    QCOMPARE(again.json().value(u"newlyDisabled"_s).toInt(), 0);
    QCOMPARE(again.json().value(u"incompatiblePluginVersions"_s).toObject().size(), 2);

    QCOMPARE(run(with({u"enable"_s, u"a"_s})).exitCode, 0); // the user insists
    QCOMPARE(disabledPlugins(), QStringList());
    qunsetenv("SSL_CERT_FILE");
}

void tst_CommandLine_State::failedUpdateIsSilent_data()
{
    QTest::addColumn<QString>("endpoint");

    QTest::newRow("nobody answers") << u"https://127.0.0.1:1"_s;
    QTest::newRow("plain HTTP") << u"http://example.com"_s;
    QTest::newRow("no URL") << u"nothing"_s;
    QTest::newRow("empty") << u""_s;
}

void tst_CommandLine_State::failedUpdateIsSilent()
{
    QFETCH(QString, endpoint);
    const auto finished = run(with({u"--blocklist-url"_s, endpoint, u"blocklist"_s, u"update"_s}));
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json(), (QJsonObject{{u"incompatiblePluginVersions"_s, QJsonObject()}, {u"newlyDisabled"_s, 0}}));
    QCOMPARE(finished.errors, QStringList());
}

void tst_CommandLine_State::watchTellsOfEveryReload()
{
    RunningCommand watch(m_folder->path(), with({u"watch"_s}));
    const auto first = watch.nextDocument();
    QCOMPARE(first.value(u"event"_s).toString(), u"reload"_s);
    QCOMPARE(first.value(u"plugins"_s).toInt(), 3);
    QCOMPARE(texts(first.value(u"added"_s)), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QVERIFY(first.value(u"milliseconds"_s).toDouble() > 0);

    plugin(u"b"_s, manifestOf("b"), "function onRun() { return 'saved' }");
    const auto changed = watch.nextDocument();
    QCOMPARE(texts(changed.value(u"changed"_s)), QStringList{u"b"_s});
    QCOMPARE(texts(changed.value(u"added"_s)), QStringList());
    QCOMPARE(texts(changed.value(u"removed"_s)), QStringList());

    QVERIFY(QDir(m_folder->filePath(u"plugins/a.korvanplugin"_s)).removeRecursively());
    plugin(u"d"_s, manifestOf("d"));
    QStringList added;
    QStringList removed;
    while (added.isEmpty() || removed.isEmpty()) { // in one reload, or in two when the machine is slow
        const auto next = watch.nextDocument();
        QVERIFY(!next.isEmpty());
        added += texts(next.value(u"added"_s));
        removed += texts(next.value(u"removed"_s));
    }
    QCOMPARE(added, QStringList{u"d"_s});
    QCOMPARE(removed, QStringList{u"a"_s});
}

void tst_CommandLine_State::watchTellsWhatChanged_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("script of a command") << u"plugins/b.korvanplugin/Contents/Korvan/script.js"_s;
    QTest::newRow("script that another one requires") << u"plugins/b.korvanplugin/Contents/Korvan/lib/module.js"_s;
    QTest::newRow("resource") << u"plugins/b.korvanplugin/Contents/Resources/icon.svg"_s;
    QTest::newRow("file that is linked") << u"sources/linked.js"_s;
}

void tst_CommandLine_State::watchTellsWhatChanged()
{
    QFETCH(QString, file);
    const auto place = m_folder->filePath(file);
    writeFile(place, "before");
    writeFile(m_folder->filePath(u"sources/linked.js"_s), "before");
    QVERIFY(QFile::link(m_folder->filePath(u"sources/linked.js"_s),
        m_folder->filePath(u"plugins/b.korvanplugin/Contents/Korvan/linked.js"_s)));
    RunningCommand watch(m_folder->path(), with({u"watch"_s}));
    QVERIFY(!watch.nextDocument().isEmpty());
    writeFile(place, "afterwards");
    QCOMPARE(texts(watch.nextDocument().value(u"changed"_s)), QStringList{u"b"_s});
}

void tst_CommandLine_State::watchEndsWithSignals_data()
{
    QTest::addColumn<int>("signal");

    QTest::newRow("interrupt") << SIGINT;
    QTest::newRow("terminate") << SIGTERM;
}

void tst_CommandLine_State::watchEndsWithSignals()
{
    QFETCH(int, signal);
    RunningCommand watch(m_folder->path(), with({u"watch"_s}));
    QVERIFY(!watch.nextDocument().isEmpty());
    QVERIFY(watch.isRunning());
    QCOMPARE(watch.exitCodeAfter(signal), 0);
}

void tst_CommandLine_State::watchRegistersIncompatiblePlugins()
{
    writeFile(
        m_folder->filePath(u"support/PluginsToDisable95.3%1.json"_s.arg(suffix())), R"({"c": "1.0", "d": "1.0"})");
    {
        RunningCommand watch(m_folder->path(), with({u"--defaults"_s, u"defaults.ini"_s, u"watch"_s}));
        QVERIFY(!watch.nextDocument().isEmpty());
        plugin(u"d"_s, manifestOf("d"));
        QVERIFY(!watch.nextDocument().isEmpty());
        QCOMPARE(watch.exitCodeAfter(SIGTERM), 0);
    }
    const auto state = run(with({u"--defaults"_s, u"defaults.ini"_s, u"state"_s})).json();
    QCOMPARE(state.value(u"numberOfIncompatiblePluginsDisabled"_s).toInt(), 2);
    QCOMPARE(state.value(u"metadata"_s).toObject().keys(), QStringList({u"c"_s, u"d"_s}));
}

void tst_CommandLine_State::portsFromEndToEnd()
{
    const auto port = m_folder->filePath(u"port"_s);
    RunningCommand listener(m_folder->path(), {u"listen"_s, port, u"--json"_s});
    while (run({u"send"_s, port, u"first ü"_s, u"--json"_s}).exitCode != 0) // until it listens
        QVERIFY(listener.isRunning());
    QCOMPARE(listener.nextDocument(), (QJsonObject{{u"message"_s, u"first ü"_s}}));
    const auto second = run({u"send"_s, port, u""_s, u"--json"_s});
    QCOMPARE(second.json(), (QJsonObject{{u"sent"_s, true}}));
    QCOMPARE(listener.nextDocument(), (QJsonObject{{u"message"_s, u""_s}}));
    QCOMPARE(listener.exitCodeAfter(SIGINT), 0);
    const auto late = run({u"send"_s, port, u"late"_s, u"--json"_s});
    QCOMPARE(late.exitCode, 1);
    QCOMPARE(late.json(), (QJsonObject{{u"sent"_s, false}}));
}

void tst_CommandLine_State::portsThatCannotBe_data()
{
    QTest::addColumn<QString>("port");

    QTest::newRow("a file") << u"/etc/hostname"_s;
    QTest::newRow("empty") << u""_s;
    QTest::newRow("in no folder") << u"/no/such/folder/port"_s;
}

void tst_CommandLine_State::portsThatCannotBe()
{
    QFETCH(QString, port);
    const auto finished = run({u"listen"_s, port, u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    QVERIFY(finished.json().contains(u"error"_s));
}

QTEST_GUILESS_MAIN(tst_CommandLine_State)
#include "tst_commandline_state.moc"
