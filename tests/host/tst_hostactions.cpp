// What plug-ins hear of the application, in the whole program.

#include "HostFixture.h"

#include "bundles/KRPluginBundle.h"
#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"

using namespace Qt::StringLiterals;

namespace {

/// Prints each action that it hears: "key", the names of what is selected, the path's last part, and whatever else.
const QByteArray listener = R"(
function heard(context) {
    const parts = [context.action];
    if (context.document)
        parts.push(context.document.name());
    if (context.selection)
        parts.push('[' + context.selection.map((layer) => layer.id()).join(' ') + ']');
    if (context.oldSelection)
        parts.push('old [' + context.oldSelection.map((layer) => layer.id()).join(' ') + ']');
    if (context.changes)
        parts.push(context.changes.map((change) => change.type + (change.layer ? ' ' + change.layer.id() : '')).join(', '));
    if (context.path)
        parts.push(context.path.split('/').pop());
    if (context.saved !== undefined)
        parts.push(context.saved);
    if (context.closed !== undefined)
        parts.push(context.closed);
    print(parts.join('; '));
})";

QByteArray commandFor(const QByteArray &actions, const QByteArray &function = "heard")
{
    QByteArrayList entries;
    const auto names = actions.split(' ');
    for (const auto &name : names)
        entries.append('"' + name + R"(": ")" + function + '"');
    return R"({"script": "script.js", "handlers": {"actions": {)" + entries.join(", ") + "}}}";
}

/// Lets everything happen that waits in the main queue, and what that has put there.
void settle()
{
    for (int round = 0; round < 4; ++round) {
        bool isDone = false;
        LTAppEnvironment::current().mainQueue().async([&] { isDone = true; });
        QTRY_VERIFY(isDone);
    }
}

} // namespace

class tst_HostActions : public QObject, private HostFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void cleanup() { removeFolder(); }

    void startupAndShutdown();
    void startupReachesWhatIsEnabledLater();
    void disabledPluginsHearNothing();
    void selectionIsToldOncePerTurn();
    void aHandlerMaySelect();
    void aHandlerThatSelectsLaterComesToAnEnd();
    void changesAreToldTogether();
    void aHandlerMayChangeTheDocument();
    void dragsLast_data();
    void dragsLast();
    void changesInADragBelongToIt_data();
    void changesInADragBelongToIt();
    void documentsAreOpenedSavedAndClosed();
    void whatAHandlerDoesBeforeSavingIsSaved();
    void whatAHandlerDoesBeforeClosingIsAskedAbout_data();
    void whatAHandlerDoesBeforeClosingIsAskedAbout();
    void handlersOfTheKeyAloneAreReachedToo();

private:
    QStringList takeLog()
    {
        settle();
        return std::exchange(m_log, {});
    }
};

void tst_HostActions::startupAndShutdown()
{
    plugin(u"listener"_s, commandFor("Startup Shutdown"), listener);
    start();
    QCOMPARE(takeLog(), QStringList{u"Startup"_s});
    m_host->plugins().shutDown();
    QCOMPARE(m_log, QStringList{u"Shutdown"_s}); // it waits for the handlers
}

void tst_HostActions::startupReachesWhatIsEnabledLater()
{
    plugin(u"listener"_s, commandFor("Startup"), listener);
    start();
    QCOMPARE(takeLog().size(), 1);
    auto &manager = m_host->plugins().manager();
    manager.reloadPlugins();
    QCOMPARE(takeLog(), QStringList()); // it has heard of it
    manager.disablePlugin(manager.plugins().value(u"com.example.listener"_s));
    QCOMPARE(takeLog(), QStringList());
    manager.enablePlugin(manager.plugins().value(u"com.example.listener"_s));
    QTRY_COMPARE(m_log, QStringList{u"Startup"_s});
}

void tst_HostActions::disabledPluginsHearNothing()
{
    plugin(u"listener"_s, commandFor("Startup SelectionChanged"), listener);
    m_options.safeMode = true;
    auto &window = start();
    click(window, 50, 50);
    QCOMPARE(takeLog(), QStringList());
}

void tst_HostActions::selectionIsToldOncePerTurn()
{
    plugin(u"listener"_s, commandFor("SelectionChanged"), listener);
    auto &window = start();
    takeLog();
    click(window, 50, 50);
    QCOMPARE(takeLog(),
        (QStringList{
            u"SelectionChanged.begin; Sample; [box]; old []"_s, u"SelectionChanged.finish; Sample; [box]; old []"_s}));
    auto &document = *window.document();
    document.setSelection({});
    document.setSelection({layer(u"disc"_s)});
    document.setSelection({layer(u"left"_s), layer(u"right"_s)});
    QCOMPARE(takeLog(),
        (QStringList{u"SelectionChanged.begin; Sample; []; old [box]"_s,
            u"SelectionChanged.finish; Sample; [left right]; old [box]"_s}));
}

void tst_HostActions::aHandlerMaySelect()
{
    plugin(u"selector"_s, commandFor("SelectionChanged.finish", "select"), R"(
function select(context) {
    const layers = context.document.allLayers();
    const next = layers[(layers.findIndex((layer) => layer.id() === context.selection[0].id()) + 1) % layers.length];
    context.document.setSelection([next]);
    print(next.id());
})");
    auto &window = start();
    click(window, 50, 50);
    QCOMPARE(takeLog(), QStringList{u"disc"_s});
    QCOMPARE(selectionOf(*window.document()), u"disc"_s);
    click(window, 50, 50);
    QCOMPARE(takeLog(), QStringList{u"disc"_s});
}

void tst_HostActions::aHandlerThatSelectsLaterComesToAnEnd()
{
    plugin(u"selector"_s, commandFor("SelectionChanged.finish", "select"), R"(
let calls = 0;
async function select(context) {
    const layers = context.document.allLayers();
    const document = context.document;
    const selected = context.selection[0].id();
    await new Promise((resolve) => setTimeout(resolve, 0));
    document.setSelection([layers[(layers.findIndex((layer) => layer.id() === selected) + 1) % layers.length]]);
    print('selected');
})");
    auto &window = start();
    click(window, 50, 50);
    QTRY_VERIFY(m_log.size() >= 2);
    // It would go on for ever: as often as it may within a second, it has been told.
    QTRY_COMPARE(m_log.size(), 3);
    settle();
    QCOMPARE(m_log.size(), 3);
}

void tst_HostActions::changesAreToldTogether()
{
    plugin(u"listener"_s, commandFor("DocumentChanged"), listener);
    auto &window = start();
    takeLog();
    layer(u"box"_s)->setName(u"Crate"_s);
    layer(u"box"_s)->setFrame({{u"x"_s, 5}});
    window.document()->removeLayer(layer(u"disc"_s));
    window.document()->setName(u"Changed"_s);
    QCOMPARE(takeLog(), QStringList{u"DocumentChanged; Changed; []; changed box, removed disc, document"_s});
}

void tst_HostActions::aHandlerMayChangeTheDocument()
{
    plugin(u"namer"_s, commandFor("DocumentChanged", "name"), R"(
function name(context) {
    for (const {layer} of context.changes)
        layer.setName(layer.name() + '!');
    print('named');
})");
    start();
    layer(u"box"_s)->setName(u"Crate"_s);
    QCOMPARE(takeLog(), QStringList{u"named"_s});
    QCOMPARE(layer(u"box"_s)->name(), u"Crate!"_s);
}

void tst_HostActions::dragsLast_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QByteArray>("action");

    QTest::newRow("moving") << QPointF(50, 50) << QByteArray("LayersMoved");
    QTest::newRow("resizing") << QPointF(100, 100) << QByteArray("LayersResized");
}

void tst_HostActions::dragsLast()
{
    QFETCH(QPointF, from);
    QFETCH(QByteArray, action);
    plugin(u"listener"_s, commandFor("LayersMoved LayersResized DocumentChanged"), listener);
    auto &window = start();
    click(window, 50, 50);
    takeLog();
    drag(window, from, from + QPointF(40, 30));
    const auto name = QString::fromLatin1(action);
    QCOMPARE(takeLog(),
        (QStringList{name + u".begin; Sample; [box]"_s, name + u".finish; Sample; [box]"_s,
            u"DocumentChanged; Sample; [box]; changed box"_s}));
}

void tst_HostActions::changesInADragBelongToIt_data()
{
    QTest::addColumn<bool>("isBrokenOff");

    QTest::newRow("undone") << false;
    QTest::newRow("broken off") << true;
}

void tst_HostActions::changesInADragBelongToIt()
{
    QFETCH(bool, isBrokenOff);
    plugin(u"adder"_s, commandFor("LayersMoved.begin", "add"),
        "function add(context) { context.document.addLayer({type: 'oval'}); }");
    auto &window = start();
    layer(u"disc"_s)->setName(u"Wheel"_s);
    const auto frame = layer(u"box"_s)->frame();
    auto &viewport = *window.canvas().viewport();
    QTest::mousePress(&viewport, Qt::LeftButton, {}, place(window, 50, 50));
    moveMouse(viewport, place(window, 70, 70), {}, Qt::LeftButton);
    settle();
    QCOMPARE(window.document()->layers().size(), 4);
    if (isBrokenOff)
        QTest::keyClick(&window.canvas(), Qt::Key_Escape);
    QTest::mouseRelease(&viewport, Qt::LeftButton, {}, place(window, 70, 70));
    QCOMPARE(window.session().undo().count(), isBrokenOff ? 1 : 2);
    if (!isBrokenOff)
        window.session().undo().undo();
    QCOMPARE(window.document()->layers().size(), 3);
    QCOMPARE(layer(u"box"_s)->frame(), frame);
    window.session().undo().undo();
    QCOMPARE(layer(u"disc"_s)->name(), u"Disc"_s);
    QVERIFY(!window.isWindowModified());
}

void tst_HostActions::documentsAreOpenedSavedAndClosed()
{
    plugin(u"listener"_s, commandFor("NewDocument OpenDocument SaveDocument CloseDocument"), listener);
    auto &window = start();
    QCOMPARE(takeLog(),
        (QStringList{u"OpenDocument.begin; sample.json"_s, u"OpenDocument.finish; Sample; []; sample.json"_s}));
    QVERIFY(window.files().saveTo(path(u"copy.json"_s)));
    QCOMPARE(takeLog(),
        (QStringList{
            u"SaveDocument.begin; Sample; []; copy.json"_s, u"SaveDocument.finish; Sample; []; copy.json; true"_s}));
    m_host->newDocument();
    QCOMPARE(takeLog(), QStringList{u"NewDocument; Untitled; []"_s});
    window.close();
    QCOMPARE(
        takeLog(), (QStringList{u"CloseDocument.begin; Sample; []"_s, u"CloseDocument.finish; copy.json; true"_s}));
}

void tst_HostActions::whatAHandlerDoesBeforeSavingIsSaved()
{
    plugin(u"stamper"_s, commandFor("SaveDocument.begin", "stamp"),
        "function stamp(context) { context.document.setName('Stamped'); }");
    auto &window = start();
    QVERIFY(window.files().save());
    QVERIFY(readFile(path(u"sample.json"_s)).contains("Stamped"));
    QVERIFY(!window.isWindowModified());
}

void tst_HostActions::whatAHandlerDoesBeforeClosingIsAskedAbout_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("isClosed");
    QTest::addColumn<bool>("isSaved");

    QTest::newRow("save") << u"Save"_s << true << true;
    QTest::newRow("lose it") << u"Discard"_s << true << false;
    QTest::newRow("stay") << u"Cancel"_s << false << false;
}

void tst_HostActions::whatAHandlerDoesBeforeClosingIsAskedAbout()
{
    QFETCH(QString, answer);
    QFETCH(bool, isClosed);
    QFETCH(bool, isSaved);
    plugin(u"closer"_s, commandFor("CloseDocument.begin", "stamp"),
        "function stamp(context) { context.document.setName('Stamped'); }");
    plugin(u"listener"_s, commandFor("CloseDocument.finish"), listener);
    auto &window = start();
    takeLog();
    const DialogAnswer dialog(answer);
    QCOMPARE(window.close(), isClosed);
    QVERIFY(dialog.wasShown());
    QCOMPARE(readFile(path(u"sample.json"_s)).contains("Stamped"), isSaved);
    QCOMPARE(m_host->windows().size(), isClosed ? 0 : 1);
    QCOMPARE(takeLog(), QStringList{u"CloseDocument.finish; sample.json; "_s + (isClosed ? u"true"_s : u"false"_s)});
}

void tst_HostActions::handlersOfTheKeyAloneAreReachedToo()
{
    plugin(u"listener"_s, R"({"script": "script.js", "handlers": {"onDocumentChanged": "heard"}})", listener);
    start();
    takeLog();
    layer(u"box"_s)->setName(u"Crate"_s);
    QCOMPARE(takeLog(), QStringList{u"onDocumentChanged; Sample; []; changed box"_s});
}

QTEST_MAIN(tst_HostActions)
#include "tst_hostactions.moc"
