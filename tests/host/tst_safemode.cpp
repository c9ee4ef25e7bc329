// What comes of a start that ends while plug-ins are loading, with the program itself.

#include "HostFixture.h"
#include "support/servers/ChildProcess.h"

#include "bundles/KRPluginBundle.h"
#include "widgets/plugins/PluginsWindow.h"

using namespace Qt::StringLiterals;

class tst_SafeMode : public QObject, private HostFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void cleanup() { removeFolder(); }

    void theOptionEnablesNoPlugin();
    void isOfferedAfterACrash_data();
    void isOfferedAfterACrash();
    void isNotOfferedAfterAnEnd();

private:
    int runProgram(const QStringList &arguments) const;
    int enabledPlugins() const { return int(m_host->plugins().manager().enabledPlugins().size()); }
};

/// Answers its exit code.
int tst_SafeMode::runProgram(const QStringList &arguments) const
{
    ChildProcess process({QStringLiteral(KORVAN_HOST_PROGRAM),
        QStringList{u"--folder"_s, path(u"plugins"_s), u"--support-dir"_s, path(u"support"_s), u"--defaults"_s,
            path(u"defaults.ini"_s), u"--blocklist-url"_s, u"http://127.0.0.1:1"_s}
            + arguments,
        path(u"."_s), path(u"output"_s), {"QT_QPA_PLATFORM=offscreen"}});
    return process.waitForEnd();
}

void tst_SafeMode::theOptionEnablesNoPlugin()
{
    plugin(u"any"_s, R"({"name": "Any", "script": "script.js"})", "function onRun() {}");
    m_options.safeMode = true;
    start();
    QCOMPARE(enabledPlugins(), 0);
    QCOMPARE(m_host->plugins().manager().plugins().size(), 1);
    QVERIFY(!menuAction(window(), u"Any"_s));
}

void tst_SafeMode::isOfferedAfterACrash_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("enabled");

    QTest::newRow("taken") << u"Safe Mode"_s << 0;
    QTest::newRow("declined") << u"Load Plug-ins"_s << 1;
}

void tst_SafeMode::isOfferedAfterACrash()
{
    QFETCH(QString, answer);
    plugin(u"crasher"_s, R"({"script": "script.js", "handlers": {"actions": {"Startup": "crash"}}})",
        "function crash() { const end = Date.now() + 60000; print(process.pid); while (Date.now() < end) {} }");
    // A handler of "Startup" that is killed.
    writeFile(path(u"killer.sh"_s),
        "#!/bin/sh\n\"$@\" &\nid=$!\n"
        "while [ ! -e \""
            + path(u"support/LoadingPlugins"_s).toUtf8()
            + "\" ]; do :; done\n"
              "kill -9 $id\nwait $id\n");
    ChildProcess process({u"/bin/sh"_s,
        QStringList{path(u"killer.sh"_s), QStringLiteral(KORVAN_HOST_PROGRAM), u"--folder"_s, path(u"plugins"_s),
            u"--support-dir"_s, path(u"support"_s), u"--defaults"_s, path(u"defaults.ini"_s)},
        path(u"."_s), path(u"output"_s), {"QT_QPA_PLATFORM=offscreen"}});
    QCOMPARE(process.waitForEnd(), 128 + 9);
    QVERIFY(QFile::exists(path(u"support/LoadingPlugins"_s)));

    plugin(u"crasher"_s, R"({"name": "Tamed", "script": "script.js"})", "function onRun() {}");
    const DialogAnswer dialog(answer);
    start();
    QVERIFY(dialog.wasShown());
    QTEST(enabledPlugins(), "enabled");
    QCOMPARE(m_host->pluginWindows().plugins().isVisible(), answer == u"Safe Mode"_s); // to remove what is to blame
    QTRY_VERIFY(!QFile::exists(path(u"support/LoadingPlugins"_s)));
}

void tst_SafeMode::isNotOfferedAfterAnEnd()
{
    plugin(u"any"_s, R"({"name": "Any", "script": "script.js"})", "function onRun() {}");
    QCOMPARE(runProgram({u"--screenshots"_s, path(u"pictures"_s)}), 0);
    QVERIFY(QFile::exists(path(u"pictures/host-light.png"_s)));
    const DialogAnswer dialog(u"Safe Mode"_s);
    start();
    QVERIFY(!dialog.wasShown());
    QCOMPARE(enabledPlugins(), 1);
}

QTEST_MAIN(tst_SafeMode)
#include "tst_safemode.moc"
