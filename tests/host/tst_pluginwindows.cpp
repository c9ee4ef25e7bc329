// The window for plug-ins in the whole program.

#include "PluginWindowsFixture.h"
#include "look/Shortcuts.h"
#include "support/archives/ZipBuilder.h"
#include "widgets/plugins/PluginListDelegate.h"

#include <QCheckBox>
#include <QFileDialog>

using namespace Qt::StringLiterals;

class tst_PluginWindows : public QObject, private PluginWindowsFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void cleanup() { removeFolder(); }

    void openFromMenus_data();
    void openFromMenus();
    void openByShortcut_data();
    void openByShortcut();
    void thereIsOneOfEach();
    void aCommandIsChosenWithTheMouse();
    void aCommandIsChosenByShortcut();
    void theSwitchChangesTheMenu();
    void searchingAndRemoving();
    void droppedOnADocument();
    void installedFromTheMenu();
    void safeModeIsLeft();
    void safeModeIsEntered();
    void incompatibleOnesAreCounted();
    void theProgramEndsWithItsLastDocument();
    void quitFromThePluginsWindow();

private:
    void clickSwitch(int row) const;
};

void tst_PluginWindows::clickSwitch(int row) const
{
    const auto index = list().model()->index(row, 0);
    QStyleOptionViewItem option;
    option.initFrom(&list());
    option.rect = list().visualRect(index);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, PluginListDelegate::switchRect(option).center());
}

void tst_PluginWindows::openFromMenus_data()
{
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<QString>("opened");

    QTest::newRow("plug-ins, from the plug-ins' menu")
        << QStringList{u"Plugins"_s, u"Plug-ins…"_s} << u"PluginsWindow"_s;
    QTest::newRow("plug-ins, from the windows' menu") << QStringList{u"Window"_s, u"Plug-ins…"_s} << u"PluginsWindow"_s;
    QTest::newRow("console, from the plug-ins' menu") << QStringList{u"Plugins"_s, u"Console"_s} << u"ConsoleWindow"_s;
    QTest::newRow("console, from the windows' menu") << QStringList{u"Window"_s, u"Console"_s} << u"ConsoleWindow"_s;
}

void tst_PluginWindows::openFromMenus()
{
    QFETCH(QStringList, titles);
    QFETCH(QString, opened);
    startActive();
    choose(titles);
    QTRY_COMPARE(QApplication::activeWindow()->objectName(), opened);
    auto *const shown = QApplication::activeWindow();
    QTest::keySequence(shown, closeShortcut());
    QTRY_VERIFY(!shown->isVisible());
}

void tst_PluginWindows::openByShortcut_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("opened");

    QTest::newRow("plug-ins") << Qt::Key_P << u"PluginsWindow"_s;
    QTest::newRow("console") << Qt::Key_C << u"ConsoleWindow"_s;
}

void tst_PluginWindows::openByShortcut()
{
    QFETCH(Qt::Key, key);
    QFETCH(QString, opened);
    QTest::keyClick(&startActive(), key, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_COMPARE(QApplication::activeWindow()->objectName(), opened);
}

void tst_PluginWindows::thereIsOneOfEach()
{
    startActive();
    showPlugins();
    auto *const first = &pluginsWindow();
    first->close();
    m_host->newDocument();
    showPlugins();
    QCOMPARE(&pluginsWindow(), first);
    QVERIFY(first->isVisible());
}

void tst_PluginWindows::aCommandIsChosenWithTheMouse()
{
    plugin(u"greeter"_s, greetCommand, greetScript);
    startActive();
    choose({u"Plugins"_s, u"greeter"_s, u"Greet"_s});
    QTRY_COMPARE(m_log, QStringList{u"Hello, Sample"_s});
}

void tst_PluginWindows::aCommandIsChosenByShortcut()
{
    plugin(u"greeter"_s, greetCommand, greetScript);
    QTest::keyClick(&startActive(), Qt::Key_G, Qt::ControlModifier | Qt::AltModifier);
    QTRY_COMPARE(m_log, QStringList{u"Hello, Sample"_s});
}

void tst_PluginWindows::theSwitchChangesTheMenu()
{
    plugin(u"greeter"_s, greetCommand, greetScript);
    plugin(u"zoomer"_s, R"({"name": "Zoom", "script": "script.js"})", "");
    startActive();
    showPlugins();
    QCOMPARE(list().model()->rowCount(), 2);
    clickSwitch(0);
    QVERIFY(!isEnabled(u"com.example.greeter"_s));
    QVERIFY(isEnabled(u"com.example.zoomer"_s));
    QTRY_VERIFY(!menuAction(window(), u"Greet"_s));
    QTest::keyClick(&window(), Qt::Key_G, Qt::ControlModifier | Qt::AltModifier);
    clickSwitch(0);
    QTRY_VERIFY(menuAction(window(), u"Greet"_s));
    QCOMPARE(m_log, QStringList());
    // The next program knows it too.
    clickSwitch(1);
    m_host.reset();
    start();
    QVERIFY(isEnabled(u"com.example.greeter"_s));
    QVERIFY(!isEnabled(u"com.example.zoomer"_s));
}

void tst_PluginWindows::searchingAndRemoving()
{
    plugin(u"greeter"_s, greetCommand, greetScript);
    plugin(u"zoomer"_s, R"({"name": "Zoom", "script": "script.js"})", "");
    startActive();
    showPlugins();
    QTRY_COMPARE(QApplication::activeWindow(), &pluginsWindow());
    QTest::keyClick(&pluginsWindow(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), u"zoom"_s);
    QCOMPARE(list().model()->rowCount(), 1);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {},
        list().visualRect(list().model()->index(0, 0)).topLeft() + QPoint(60, 12));
    const DialogAnswer dialog(u"Remove"_s);
    click(u"RemoveButton"_s);
    QTRY_VERIFY(dialog.wasShown());
    QTRY_VERIFY(!menuAction(window(), u"Zoom"_s));
    QVERIFY(menuAction(window(), u"Greet"_s));
    QVERIFY(QFile::exists(path(u"data/Trash/files/zoomer.korvanplugin"_s)));
    QVERIFY(!QFile::exists(path(u"plugins/zoomer.korvanplugin"_s)));
}

void tst_PluginWindows::droppedOnADocument()
{
    m_options.folders.reset(); // else nothing would be found where it is installed
    startActive();
    const auto folder = "greeter.korvanplugin/Contents/Korvan/"_ba;
    writeFile(path(u"greeter.zip"_s),
        ZipBuilder({{folder + "manifest.json",
                        R"({"name": "Greeter", "identifier": "com.example.greeter", "version": "1.0", "commands": [)"
                            + greetCommand + "]}"},
                       {folder + "script.js", greetScript}})
            .bytes());
    drop(window(), {path(u"greeter.zip"_s)}, {300, 300});
    QTRY_VERIFY(menuAction(window(), u"Greet"_s));
    QVERIFY(pluginsWindow().isVisible());
    QCOMPARE(notice(), u"“Greeter” is installed, in version 1.0."_s);
    choose({u"Plugins"_s, u"Greeter"_s, u"Greet"_s});
    QTRY_COMPARE(m_log, QStringList{u"Hello, Sample"_s});
    // What is no plug-in is refused in words.
    QDir().mkpath(path(u"Empty.korvanplugin"_s));
    drop(window(), {path(u"Empty.korvanplugin"_s)}, {300, 300});
    QTRY_VERIFY2(notice().contains(u"Empty.korvanplugin"_s), qPrintable(notice()));
    writeFile(path(u"empty.zip"_s), "garbage");
    drop(window(), {path(u"empty.zip"_s)}, {300, 300});
    QTRY_VERIFY2(notice().contains(u"empty.zip"_s), qPrintable(notice()));
}

void tst_PluginWindows::installedFromTheMenu()
{
    startActive();
    choose({u"Plugins"_s, u"Install Plug-in…"_s});
    QTRY_VERIFY(pluginsWindow().findChild<QFileDialog *>());
    QVERIFY(pluginsWindow().findChild<QFileDialog *>()->isVisible());
    pluginsWindow().findChild<QFileDialog *>()->close();
}

void tst_PluginWindows::safeModeIsLeft()
{
    plugin(u"greeter"_s,
        R"({"name": "Greet", "script": "script.js", "handlers": {"run": "onRun", "actions": {"Startup": "begin"}}})",
        greetScript + "function begin() { print('begun'); }");
    m_options.safeMode = true;
    startActive();
    QCOMPARE(m_log, QStringList());
    showPlugins();
    auto &banner = find<QWidget>(pluginsWindow(), u"AllDisabledBanner"_s);
    QVERIFY(banner.isVisible());
    QVERIFY(find<QCheckBox>(pluginsWindow(), u"DisableAll"_s).isChecked());
    QTest::mouseClick(&find<QPushButton>(banner, u"BannerAction"_s), Qt::LeftButton);
    QTRY_VERIFY(menuAction(window(), u"Greet"_s));
    QTRY_COMPARE(m_log, QStringList{u"begun"_s});
    QVERIFY(!banner.isVisible());
}

void tst_PluginWindows::safeModeIsEntered()
{
    plugin(u"greeter"_s, greetCommand, greetScript);
    startActive();
    showPlugins();
    QTest::mouseClick(&find<QCheckBox>(pluginsWindow(), u"DisableAll"_s), Qt::LeftButton, {}, {10, 10});
    QTRY_VERIFY(!menuAction(window(), u"Greet"_s));
    QVERIFY(find<QWidget>(pluginsWindow(), u"AllDisabledBanner"_s).isVisible());
    // It is for this time.
    m_host.reset();
    start();
    QVERIFY(menuAction(window(), u"Greet"_s));
}

void tst_PluginWindows::incompatibleOnesAreCounted()
{
    startActive();
    auto &manager = m_host->plugins().manager();
    manager.setNumberOfIncompatiblePluginsDisabled(2);
    choose({u"Plugins"_s, u"Plug-ins… (2 disabled)"_s});
    auto &banner = find<QWidget>(pluginsWindow(), u"IncompatibleBanner"_s);
    QVERIFY(banner.isVisible());
    QCOMPARE(manager.numberOfIncompatiblePluginsDisabled(), 0);
    choose({u"Plugins"_s, u"Plug-ins…"_s});
}

void tst_PluginWindows::theProgramEndsWithItsLastDocument()
{
    startActive();
    showPlugins();
    choose({u"Window"_s, u"Console"_s});
    QTimer::singleShot(0, &window(), &QWidget::close);
    QTimer::singleShot(20000, this, [] { QCoreApplication::exit(1); });
    connect(qApp, &QGuiApplication::lastWindowClosed, this, [] { QCoreApplication::exit(0); });
    QCOMPARE(QCoreApplication::exec(), 0); // only a loop like the program's tells
    QVERIFY(pluginsWindow().isVisible());
}

void tst_PluginWindows::quitFromThePluginsWindow()
{
    startActive();
    showPlugins();
    QTRY_COMPARE(QApplication::activeWindow(), &pluginsWindow());
    QTest::keyClick(&pluginsWindow(), Qt::Key_Q, Qt::ControlModifier);
    QTRY_VERIFY(m_host->windows().isEmpty());
}

QTEST_MAIN(tst_PluginWindows)
#include "tst_pluginwindows.moc"
