// From the menu to the script and back, in the whole program.

#include "HostFixture.h"

#include "bundles/KRPluginBundle.h"
#include "editing/LayerFrames.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArray moveAll = R"(
function onRun(context) {
    for (const layer of context.selection)
        layer.setFrame({x: layer.frame().x + 10});
    for (const layer of context.document.allLayers())
        layer.setName(layer.name() + '!');
    print(context.action === undefined ? 'ran' : 'action');
})";

} // namespace

class tst_PluginsMenuController : public QObject, private HostFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void cleanup() { removeFolder(); }

    void aCommandIsOneStep();
    void shortcutsRunCommands();
    void theWindowsOwnShortcutsStay();
    void aCommandWorksOnItsWindow();
    void aCommandFindsTheOpenDocuments();
    void longRunningCommandsAreSeenWhileTheyRun();
    void followsTheDiskAndTheUsersChoice();
    void saysThatThereAreNone();
    void errorsAreSaid();
};

void tst_PluginsMenuController::aCommandIsOneStep()
{
    plugin(u"mover"_s, R"({"name": "Move All", "script": "script.js"})", moveAll);
    auto &window = start();
    auto &undo = window.session().undo();
    click(window, 50, 50);
    QVERIFY(!window.isWindowModified());
    QCoreApplication::processEvents(); // the handles are there with the next turn
    const auto before = window.canvas().grab().toImage();

    menuAction(window, u"Move All"_s)->trigger();
    QTRY_COMPARE(m_log, QStringList{u"ran"_s});
    QCOMPARE(frameOf(*layer(u"box"_s)), QRectF(10, 0, 100, 100));
    QCOMPARE(layer(u"left"_s)->name(), u"Left!"_s);
    QTRY_VERIFY(window.canvas().grab().toImage() != before);
    QVERIFY(window.isWindowModified());
    QCOMPARE(undo.count(), 1);
    QCOMPARE(undo.undoText(), u"Move All"_s);

    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(frameOf(*layer(u"box"_s)), QRectF(0, 0, 100, 100));
    QCOMPARE(layer(u"left"_s)->name(), u"Left"_s);
    QVERIFY(!window.isWindowModified());
    QTRY_COMPARE(window.canvas().grab().toImage(), before);
}

void tst_PluginsMenuController::shortcutsRunCommands()
{
    plugin(u"mover"_s, R"({"name": "Move All", "script": "script.js", "shortcut": "cmd shift k"})", moveAll);
    auto &window = start();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
    QTRY_COMPARE(layer(u"box"_s)->name(), u"Box!"_s);
}

void tst_PluginsMenuController::theWindowsOwnShortcutsStay()
{
    plugin(u"mover"_s,
        R"({"name": "Move All", "script": "script.js", "shortcut": "cmd d"},
           {"name": "Also", "script": "script.js", "shortcut": "cmd z"})",
        moveAll);
    auto &window = start();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    click(window, 50, 50);
    QTRY_VERIFY(menuAction(window, u"Duplicate"_s)->isEnabled());
    QTest::keyClick(&window, Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(window.document()->layers().size(), 4);
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(window.document()->layers().size(), 3);
    QCOMPARE(menuAction(window, u"Move All"_s)->shortcut(), QKeySequence());
}

void tst_PluginsMenuController::aCommandWorksOnItsWindow()
{
    plugin(u"mover"_s, R"({"name": "Move All", "script": "script.js"})", moveAll);
    auto &first = start();
    auto &second = *m_host->newDocument();
    QCOMPARE(m_host->windows().size(), 2);
    menuAction(first, u"Move All"_s)->trigger();
    QTRY_COMPARE(first.document()->layerWithID(u"box"_s)->name(), u"Box!"_s);
    QCOMPARE(second.session().undo().count(), 0);
}

void tst_PluginsMenuController::aCommandFindsTheOpenDocuments()
{
    plugin(u"finder"_s, R"({"name": "Find", "script": "script.js"})", R"(
const { activeDocument, documents } = require('korvan/dom');
function onRun() {
    print(`${documents().map((document) => document.name).join(', ')}; ${activeDocument().name}`);
})");
    start();
    menuAction(*m_host->newDocument(), u"Find"_s)->trigger();
    QTRY_COMPARE(m_log, QStringList{u"Sample, Untitled; Untitled"_s});
}

void tst_PluginsMenuController::longRunningCommandsAreSeenWhileTheyRun()
{
    plugin(u"slow"_s, R"({"name": "Slow", "script": "script.js"})", R"(
let rounds = 0;
function onRun(context) {
    const layer = context.document.layerWithID('box');
    const timer = setInterval(() => {
        layer.setFrame({x: layer.frame().x + 1});
        if (++rounds === 5)
            clearInterval(timer);
    }, 1);
})");
    auto &window = start();
    QList<double> seen;
    connect(&window.canvas().canvasScene(), &CanvasScene::changedOnCanvas, this,
        [&] { seen.append(frameOf(*layer(u"box"_s)).x()); });
    menuAction(window, u"Slow"_s)->trigger();
    QTRY_COMPARE(frameOf(*layer(u"box"_s)).x(), 5.0);
    QTRY_VERIFY(seen.size() >= 5);
    QCOMPARE(window.session().undo().count(), 1); // all that one run does
}

void tst_PluginsMenuController::followsTheDiskAndTheUsersChoice()
{
    plugin(u"mover"_s, R"({"name": "Move All", "script": "script.js"})", moveAll);
    auto &window = start();
    QVERIFY(menuAction(window, u"Move All"_s));
    QVERIFY(!menuAction(window, u"Another"_s));
    plugin(u"other"_s, R"({"name": "Another", "script": "script.js"})", moveAll);
    QTRY_VERIFY_WITH_TIMEOUT(menuAction(window, u"Another"_s), 20000);
    auto &manager = m_host->plugins().manager();
    manager.disablePlugin(manager.plugins().value(u"com.example.mover"_s));
    QTRY_VERIFY(!menuAction(window, u"Move All"_s));
    manager.enablePlugin(manager.plugins().value(u"com.example.mover"_s));
    QTRY_VERIFY(menuAction(window, u"Move All"_s));
}

void tst_PluginsMenuController::saysThatThereAreNone()
{
    auto &window = start();
    auto *const nothing = menuAction(window, u"No Plug-ins"_s);
    QVERIFY(nothing->isVisible());
    QVERIFY(!nothing->isEnabled());
    plugin(u"mover"_s, R"({"name": "Move All", "script": "script.js"})", moveAll);
    m_host->plugins().manager().reloadPlugins();
    QTRY_VERIFY(!nothing->isVisible());
}

void tst_PluginsMenuController::errorsAreSaid()
{
    plugin(u"broken"_s, R"({"name": "Break", "script": "script.js"})", "function onRun() { missing(); }");
    auto &window = start();
    menuAction(window, u"Break"_s)->trigger();
    QTRY_COMPARE(m_log.size(), 1);
    QVERIFY(m_log[0].contains(u"missing"_s));
    QCOMPARE(window.session().undo().count(), 0);
}

QTEST_MAIN(tst_PluginsMenuController)
#include "tst_pluginsmenucontroller.moc"
