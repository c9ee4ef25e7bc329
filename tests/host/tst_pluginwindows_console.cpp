// The console, and the question about scripts that take long, in the whole program.

#include "PluginWindowsFixture.h"

#include <QStatusBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

class tst_PluginWindows_Console : public QObject, private PluginWindowsFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void cleanup() { removeFolder(); }

    void theConsoleShowsWhatCommandsLog();
    void theConsoleOpensTheEditor();
    void errorsLeadToTheConsole();
    void theConsoleStopsACommand();
    void aScriptThatTakesTooLongIsAskedFor_data();
    void aScriptThatTakesTooLongIsAskedFor();

private:
    QString shown(int row, LogModel::Column column) const
    {
        return table().model()->index(row, column).data().toString();
    }
};

void tst_PluginWindows_Console::theConsoleShowsWhatCommandsLog()
{
    plugin(u"greeter"_s, greetCommand, greetScript);
    startActive();
    showConsole();
    QTest::keyClick(&window(), Qt::Key_G, Qt::ControlModifier | Qt::AltModifier);
    QTRY_COMPARE(table().model()->rowCount(), 1);
    QCOMPARE(shown(0, LogModel::PluginColumn), u"greeter"_s);
    QCOMPARE(shown(0, LogModel::MessageColumn), u"Hello, Sample"_s);
    QTRY_COMPARE(window().statusBar()->currentMessage(), u"Hello, Sample"_s);
}

void tst_PluginWindows_Console::theConsoleOpensTheEditor()
{
    plugin(u"broken"_s, R"({"name": "Break", "script": "script.js"})", "function onRun() {\n    missing();\n}");
    writeFile(path(u"editor"_s),
        "#!/bin/sh\necho \"$1:$KORVAN_EDITOR_LINE\" > '" + path(u"edited.part"_s).toUtf8() + "'\nmv '"
            + path(u"edited.part"_s).toUtf8() + "' '" + path(u"edited"_s).toUtf8() + "'\n");
    QFile::setPermissions(path(u"editor"_s), QFile::ReadOwner | QFile::ExeOwner);
    startActive();
    m_host->plugins().environment().userDefaults().setValue(u"Plugin Editor"_s, path(u"editor"_s));
    showConsole();
    choose({u"Plugins"_s, u"broken"_s, u"Break"_s});
    QTRY_COMPARE(table().model()->rowCount(), 1);
    QCOMPARE(shown(0, LogModel::PlaceColumn), u"script.js:2"_s);
    const auto place = table().visualRect(table().model()->index(0, LogModel::PlaceColumn));
    QTest::mouseClick(table().viewport(), Qt::LeftButton, {}, place.center());
    QTRY_VERIFY(QFile::exists(path(u"edited"_s)));
    const auto script = QFileInfo(path(u"plugins/broken.korvanplugin/Contents/Korvan/script.js"_s)).canonicalFilePath();
    QCOMPARE(QString::fromUtf8(readFile(path(u"edited"_s))), script + u":2\n"_s);
}

void tst_PluginWindows_Console::errorsLeadToTheConsole()
{
    plugin(u"broken"_s, R"({"name": "Break", "identifier": "break", "script": "script.js", "shortcut": "cmd alt b"})",
        "function onRun() { missing(); }");
    plugin(u"greeter"_s, greetCommand, greetScript);
    auto &window = startActive();
    auto &indicator = find<QToolButton>(window, u"ErrorIndicator"_s);
    const auto run = [&window](Qt::Key key) { QTest::keyClick(&window, key, Qt::ControlModifier | Qt::AltModifier); };
    run(Qt::Key_G);
    QTRY_COMPARE(m_log.size(), 1);
    QVERIFY(!indicator.isVisible());
    run(Qt::Key_B);
    run(Qt::Key_B);
    QTRY_COMPARE(m_log.size(), 3);
    QTRY_VERIFY(indicator.isVisible());
    QTRY_COMPARE(indicator.text(), u"Errors: 2"_s);
    QVERIFY2(indicator.toolTip().contains(u">broken: "_s), qPrintable(indicator.toolTip()));
    QTest::mouseClick(&indicator, Qt::LeftButton);
    QVERIFY(console().isVisible());
    QVERIFY(!indicator.isVisible());
    QTRY_COMPARE(table().model()->rowCount(), 3);
    choose({u"Plugins"_s, u"broken"_s, u"Break"_s}); // which is seen there
    QTRY_COMPARE(m_log.size(), 4);
    QVERIFY(!indicator.isVisible());
}

void tst_PluginWindows_Console::theConsoleStopsACommand()
{
    plugin(u"ticker"_s, R"({"name": "Tick", "identifier": "tick", "script": "script.js"})",
        "function onRun() { setInterval(() => {}, 60000); }");
    startActive();
    showConsole();
    QVERIFY(!console().findChild<QPushButton *>(u"StopButton"_s));
    choose({u"Plugins"_s, u"ticker"_s, u"Tick"_s});
    QTRY_VERIFY(console().findChild<QPushButton *>(u"StopButton"_s));
    QCOMPARE(m_host->plugins().manager().runningCommands().size(), 1);
    QTRY_VERIFY(find<QPushButton>(console(), u"StopButton"_s).isVisible());
    QTest::mouseClick(&find<QPushButton>(console(), u"StopButton"_s), Qt::LeftButton);
    QTRY_VERIFY(m_host->plugins().manager().runningCommands().isEmpty());
    QTRY_VERIFY(!console().findChild<QPushButton *>(u"StopButton"_s));
}

void tst_PluginWindows_Console::aScriptThatTakesTooLongIsAskedFor_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("isFinished");

    QTest::newRow("stopped") << u"Stop"_s << false;
    QTest::newRow("goes on") << u"Keep Waiting"_s << true;
}

void tst_PluginWindows_Console::aScriptThatTakesTooLongIsAskedFor()
{
    QFETCH(QString, answer);
    QFETCH(bool, isFinished);
    plugin(u"slow"_s, R"({"name": "Compute", "script": "script.js"})",
        "function onRun() { const end = Date.now() + 2000; while (Date.now() < end) {} print('finished'); }");
    startActive();
    m_host->plugins().environment().userDefaults().setValue(u"KRPluginScriptTimeLimit"_s, 0.1);
    const DialogAnswer dialog(answer, DialogAnswer::Times::Always);
    choose({u"Plugins"_s, u"slow"_s, u"Compute"_s});
    QTRY_VERIFY(dialog.wasShown());
    QVERIFY2(dialog.text().contains(u"A script has been running for a long time."_s), qPrintable(dialog.text()));
    QTRY_VERIFY(!m_log.isEmpty());
    QCOMPARE(m_log.first() == u"finished"_s, isFinished);
}

QTEST_MAIN(tst_PluginWindows_Console)
#include "tst_pluginwindows_console.moc"
