#include "document/DocumentFile.h"

#include "platform/script/COScript.h"

#include <QUndoStack>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

using Kind = DocumentEvent::Kind;

const QByteArray sample = R"({
  "name": "Sample",
  "layers": [
    {"id": "a", "name": "A", "type": "rectangle"},
    {"id": "g", "name": "G", "type": "group", "layers": [
      {"id": "t", "name": "T", "type": "text", "text": "Hello"},
      {"id": "i", "name": "I", "type": "image"}
    ]},
    {"id": "b", "name": "B", "type": "oval"}
  ],
  "selection": ["t", "a"]
})";

std::shared_ptr<Document> sampleDocument()
{
    return documentFromJSON(sample).value();
}

/// One session that works on the document, as "doc".
struct Script
{
    explicit Script(const std::shared_ptr<Document> &document, const QString &name = u"Script"_s)
        : session({}, name)
    {
        session.pushObject(QVariant::fromValue(ScriptObjectPointer(document)), u"doc"_s);
    }

    void run(const QString &source) { session.executeString(source); }

    COScript session;
};

/// A command of a host's own stack.
class StepCommand final : public QUndoCommand
{
public:
    explicit StepCommand(std::shared_ptr<UndoStep> step)
        : QUndoCommand(step->text())
        , m_step(std::move(step))
    { }

    void undo() override { m_step->undo(); }
    void redo() override { m_step->redo(); }

private:
    std::shared_ptr<UndoStep> m_step;
};

} // namespace

class tst_DocumentHistory : public QObject
{
    Q_OBJECT

private slots:
    void oneRunIsOneStep_data();
    void oneRunIsOneStep();
    void changesOfTheHostAreSteps();
    void groupsAreOneStep();
    void whatTheUserSelectsIsNoStep();
    void anotherChangeInBetweenEndsTheStep();
    void activitiesOfOneSessionAreTwoSteps();
    void whatIsUndoneIsLostWithTheNextChange();
    void removedLayersComeBackAsTheyWere();
    void observersHearOfEachChangeAtOnce();
    void observersMayGoAndChange();
    void hostsMayKeepTheStepsThemselves();
    void smallChangesOfLargeDocumentsAreSmall();
    void movesThatMakeNoTreeAreRefused();
};

void tst_DocumentHistory::oneRunIsOneStep_data()
{
    QTest::addColumn<QString>("source");

    QTest::newRow("a name") << u"doc.layerWithID('a').setName('New')"_s;
    QTest::newRow("the same name twice") << u"doc.layerWithID('a').setName('1'); doc.layerWithID('a').setName('2')"_s;
    QTest::newRow("a frame") << u"doc.layerWithID('a').setFrame({x: 5})"_s;
    QTest::newRow("a style") << u"doc.layerWithID('a').setStyle({fill: '#000000'})"_s;
    QTest::newRow("a text") << u"doc.layerWithID('t').setText('New')"_s;
    QTest::newRow("an image") << u"doc.layerWithID('i').setImage('file:///a.png')"_s;
    QTest::newRow("a new layer, changed") << u"doc.addLayer({name: 'New', type: 'oval'}).setName('Newer')"_s;
    QTest::newRow("a new layer at a place") << u"doc.insertLayer({type: 'oval'}, doc.layerWithID('g'), 1)"_s;
    QTest::newRow("a removed layer that was selected") << u"doc.layerWithID('t').remove()"_s;
    QTest::newRow("a removed group") << u"doc.layerWithID('g').remove()"_s;
    QTest::newRow("all removed, one by one") << u"for (const layer of doc.allLayers().reverse()) layer.remove()"_s;
    QTest::newRow("a layer among its siblings") << u"doc.layerWithID('a').moveToIndex(2)"_s;
    QTest::newRow("a layer into a group") << u"doc.layerWithID('a').moveTo(doc.layerWithID('g'), 1)"_s;
    QTest::newRow("a layer out of its group") << u"doc.layerWithID('t').moveTo(null, 0)"_s;
    QTest::newRow("a duplicate") << u"doc.layerWithID('g').duplicate().setName('Copy')"_s;
    QTest::newRow("a selection") << u"doc.setSelection([doc.layerWithID('b')])"_s;
    QTest::newRow("the document's name") << u"doc.setName('1'); doc.setName('2')"_s;
    QTest::newRow("everything") << uR"(
        const group = doc.addLayer({name: 'Group', type: 'group'});
        for (const layer of doc.layers().slice(0, 3)) layer.moveTo(group, 0);
        doc.layerWithID('g').remove();
        doc.setSelection([group]);
        group.setName('Done');
        doc.setName('Done');
    )"_s;
}

void tst_DocumentHistory::oneRunIsOneStep()
{
    QFETCH(QString, source);
    const auto document = sampleDocument();
    auto &history = document->history();
    const auto before = jsonFromDocument(*document);
    QVERIFY(!history.canUndo());

    Script(document).run(source);
    const auto after = jsonFromDocument(*document);
    QVERIFY(after != before);
    QCOMPARE(history.undoText(), u"Script"_s);

    for (int round = 0; round < 2; ++round) {
        history.undo();
        QCOMPARE(jsonFromDocument(*document), before);
        QVERIFY(!history.canUndo());
        QVERIFY(history.canRedo());
        history.redo();
        QCOMPARE(jsonFromDocument(*document), after);
        QVERIFY(!history.canRedo());
    }
}

void tst_DocumentHistory::changesOfTheHostAreSteps()
{
    const auto document = sampleDocument();
    auto &history = document->history();
    document->layerWithID(u"a"_s)->setName(u"1"_s);
    document->layerWithID(u"a"_s)->setName(u"2"_s);
    document->removeLayer(document->layerWithID(u"t"_s));

    history.undo();
    QVERIFY(document->layerWithID(u"t"_s));
    QCOMPARE(document->selection().size(), 2);
    history.undo();
    QCOMPARE(document->layerWithID(u"a"_s)->name(), u"1"_s);
    history.undo();
    QCOMPARE(document->layerWithID(u"a"_s)->name(), u"A"_s);
    QVERIFY(!history.canUndo());
}

void tst_DocumentHistory::groupsAreOneStep()
{
    const auto document = sampleDocument();
    {
        const DocumentHistory::Group outer(*document, u"Drag"_s);
        document->layerWithID(u"a"_s)->setName(u"1"_s);
        const DocumentHistory::Group inner(*document, u"Other"_s);
        document->layerWithID(u"b"_s)->setName(u"2"_s);
        document->setSelection({});
    }
    QCOMPARE(document->history().undoText(), u"Drag"_s);
    document->history().undo();
    QCOMPARE(jsonFromDocument(*document), jsonFromDocument(*sampleDocument()));
    QVERIFY(!document->history().canUndo());
}

void tst_DocumentHistory::whatTheUserSelectsIsNoStep()
{
    const auto document = sampleDocument();
    document->setSelection({document->layerWithID(u"b"_s)});
    QVERIFY(!document->history().canUndo());
}

void tst_DocumentHistory::anotherChangeInBetweenEndsTheStep()
{
    const auto document = sampleDocument();
    auto &history = document->history();
    Script script(document, u"Long"_s);
    script.run(u"doc.layerWithID('a').setName('1')"_s);
    document->layerWithID(u"a"_s)->setName(u"of the host"_s);
    script.run(u"doc.layerWithID('a').setName('2')"_s);
    script.run(u"doc.layerWithID('b').setName('3')"_s);

    history.undo();
    QCOMPARE(document->layerWithID(u"a"_s)->name(), u"of the host"_s);
    QCOMPARE(document->layerWithID(u"b"_s)->name(), u"B"_s);
    history.undo();
    QCOMPARE(document->layerWithID(u"a"_s)->name(), u"1"_s);
    // An undo ends the step too.
    script.run(u"doc.layerWithID('a').setName('4')"_s);
    history.undo();
    QCOMPARE(document->layerWithID(u"a"_s)->name(), u"1"_s);
}

void tst_DocumentHistory::activitiesOfOneSessionAreTwoSteps()
{
    const auto document = sampleDocument();
    Script script(document);
    script.session.beginActivity(u"First"_s);
    script.run(u"doc.layerWithID('a').setName('1')"_s);
    script.session.beginActivity(u"Second"_s);
    script.run(u"doc.layerWithID('a').setName('2')"_s);

    QCOMPARE(document->history().undoText(), u"Second"_s);
    document->history().undo();
    QCOMPARE(document->history().undoText(), u"First"_s);
    QCOMPARE(document->history().redoText(), u"Second"_s);
}

void tst_DocumentHistory::whatIsUndoneIsLostWithTheNextChange()
{
    const auto document = sampleDocument();
    document->setName(u"1"_s);
    document->history().undo();
    document->setName(u"2"_s);
    QVERIFY(!document->history().canRedo());
    document->history().redo();
    QCOMPARE(document->name(), u"2"_s);
}

void tst_DocumentHistory::removedLayersComeBackAsTheyWere()
{
    const auto document = sampleDocument();
    const auto group = document->layerWithID(u"g"_s);
    const auto text = document->layerWithID(u"t"_s);
    document->removeLayer(group);
    QVERIFY(!text->document());

    document->history().undo();
    QCOMPARE(document->layerWithID(u"g"_s), group);
    QCOMPARE(document->layerWithID(u"t"_s), text);
    QCOMPARE(text->parent(), group);
    QCOMPARE(text->document(), document);
}

void tst_DocumentHistory::observersHearOfEachChangeAtOnce()
{
    const auto document = sampleDocument();
    QList<std::pair<Kind, QString>> events;
    const auto observer = document->observe([&](const DocumentEvent &event) {
        events.append({event.kind, event.layer ? event.layer->name() : document->name()});
    });
    Script(document).run(uR"(
        doc.layerWithID('a').setName('New');
        doc.layerWithID('a').setName('New');
        doc.layerWithID('b').moveTo(doc.layerWithID('g'), 0);
        doc.layerWithID('b').moveTo(doc.layerWithID('g'), 0);
        doc.addLayer({name: 'Added', type: 'oval'});
        doc.layerWithID('t').remove();
        doc.setSelection([]);
        doc.setName('Named');
    )"_s);
    const QList<std::pair<Kind, QString>> expected{{Kind::LayerChanged, u"New"_s}, {Kind::LayerMoved, u"B"_s},
        {Kind::LayerAdded, u"Added"_s}, {Kind::LayerRemoved, u"T"_s}, {Kind::SelectionChanged, u"Sample"_s},
        {Kind::SelectionChanged, u"Sample"_s}, {Kind::DocumentChanged, u"Named"_s}};
    QCOMPARE(events, expected);

    events.clear();
    document->history().undo();
    QVERIFY(events.contains({Kind::LayerAdded, u"T"_s}));
    QVERIFY(events.contains({Kind::LayerRemoved, u"Added"_s}));
    QVERIFY(events.contains({Kind::LayerChanged, u"A"_s}));
}

void tst_DocumentHistory::observersMayGoAndChange()
{
    const auto document = sampleDocument();
    int calls = 0;
    DocumentObserver other;
    const auto observer = document->observe([&](const DocumentEvent &event) {
        other.reset();
        if (++calls == 1 && event.layer)
            event.layer->setName(event.layer->name() + u'!');
    });
    other = document->observe([&](const DocumentEvent &) { QFAIL("is gone"); });
    document->layerWithID(u"a"_s)->setName(u"New"_s);
    QCOMPARE(document->layerWithID(u"a"_s)->name(), u"New!"_s);
    QCOMPARE(calls, 2);
}

void tst_DocumentHistory::hostsMayKeepTheStepsThemselves()
{
    const auto document = sampleDocument();
    const auto before = jsonFromDocument(*document);
    QUndoStack stack;
    document->history().setStepHandler(
        [&](const std::shared_ptr<UndoStep> &step) { stack.push(new StepCommand(step)); });
    Script(document).run(u"doc.layerWithID('g').remove(); doc.layerWithID('a').setName('New')"_s);
    const auto after = jsonFromDocument(*document);

    QCOMPARE(stack.count(), 1);
    QCOMPARE(stack.undoText(), u"Script"_s);
    QVERIFY(!document->history().canUndo());
    stack.undo();
    QCOMPARE(jsonFromDocument(*document), before);
    stack.redo();
    QCOMPARE(jsonFromDocument(*document), after);
}

void tst_DocumentHistory::smallChangesOfLargeDocumentsAreSmall()
{
    const auto document = sampleDocument();
    for (int number = 0; number < 5000; ++number)
        document->addLayer(std::make_shared<Layer>(QVariantMap{{u"name"_s, QString::number(number)}}), nullptr);
    QList<std::shared_ptr<UndoStep>> steps;
    document->history().setStepHandler([&](const std::shared_ptr<UndoStep> &step) { steps.append(step); });
    document->layerWithID(u"a"_s)->setName(u"New"_s);
    Script(document).run(u"for (let i = 0; i < 1000; ++i) doc.layerWithID('b').setFrame({x: i})"_s);

    QCOMPARE(steps.size(), 2);
    QCOMPARE(steps.at(0)->size(), 1);
    QCOMPARE(steps.at(1)->size(), 1);
}

void tst_DocumentHistory::movesThatMakeNoTreeAreRefused()
{
    const auto document = sampleDocument();
    const auto before = jsonFromDocument(*document);
    const auto group = document->layerWithID(u"g"_s);
    const auto inner = std::make_shared<Layer>(QVariantMap{{u"type"_s, u"group"_s}});
    QVERIFY(!document->moveLayer(group, group, 0));
    QVERIFY(!document->moveLayer(inner, group, 0));
    QVERIFY(!document->moveLayer(group, inner, 0));
    QVERIFY(!document->moveLayer(group, sampleDocument()->layerWithID(u"g"_s), 0));
    QCOMPARE(jsonFromDocument(*document), before);
    QVERIFY(document->addLayer(inner, group));
    QVERIFY(!document->moveLayer(group, inner, 0));
    QVERIFY(document->moveLayer(inner, nullptr, 99));
    QCOMPARE(document->layers().last(), inner);
}

QTEST_GUILESS_MAIN(tst_DocumentHistory)
#include "tst_documenthistory.moc"
