#include "document/DocumentFile.h"

#include "platform/script/COScript.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray sample = R"({
  "name": "Sample", "pages": [1, 2], "userInfo": {"com.example": {"a": 1}},
  "layers": [
    {"id": "a", "name": "A", "type": "rectangle", "frame": {"x": 1, "y": 2, "width": 3, "height": 4}, "blur": 5},
    {"id": "g", "name": "G", "type": "group", "layers": [
      {"id": "t", "name": "T", "type": "text", "text": "Hello", "userInfo": {"com.example": {"b": [1, null]}}},
      {"id": 7, "name": "N", "type": "image"}
    ]}
  ],
  "selection": ["t", 7]
})";

std::shared_ptr<Document> sampleDocument()
{
    return documentFromJSON(sample).value();
}

QStringList namesOf(const QList<LayerPointer> &layers)
{
    QStringList names;
    for (const auto &layer : layers)
        names.append(layer->name());
    return names;
}

} // namespace

class tst_Document : public QObject
{
    Q_OBJECT

private slots:
    void everyKeySurvivesALoadAndSave();
    void selectionKeepsItsOrder();
    void unreadableDocuments_data();
    void unreadableDocuments();
    void filesThatAreNoneAreNamed_data();
    void filesThatAreNoneAreNamed();
    void failedWriteLeavesTheFileAlone();
    void addedLayersGetIdentifiersOfTheirOwn();
    void addingTwiceOrElsewhereIsRefused();
    void removedLayersAreInNoDocument();
    void movedLayersStayWithinTheirSiblings();
    void duplicatesAreWhole();
    void duplicatesOfCrowdedGroupsAreWhole();
    void scriptsWorkOnTheDocument();
    void scriptsAreToldWhatIsWrong();
    void wrongValuesOfScriptsChangeNothing_data();
    void wrongValuesOfScriptsChangeNothing();
    void groupsAreNotTooDeep();
    void whatCannotBeReadAgainIsNotWritten();
};

void tst_Document::everyKeySurvivesALoadAndSave()
{
    const auto json = jsonFromDocument(*sampleDocument());
    const auto saved = QJsonDocument::fromJson(json).object();
    auto expected = QJsonDocument::fromJson(sample).object();
    QCOMPARE(saved, expected);
}

void tst_Document::selectionKeepsItsOrder()
{
    const auto document = sampleDocument();
    QCOMPARE(namesOf(document->selection()), QStringList({u"T"_s, u"N"_s}));

    document->setSelection({document->layerWithID(u"a"_s), document->layerWithID(u"t"_s), document->layerWithID(u"a"_s),
        nullptr, std::make_shared<Layer>(QVariantMap())});
    QCOMPARE(namesOf(document->selection()), QStringList({u"A"_s, u"T"_s}));
}

void tst_Document::unreadableDocuments_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("message");

    QTest::newRow("no JSON") << QByteArray("{") << u""_s;
    QTest::newRow("an array") << QByteArray("[]") << u"A document is a JSON object."_s;
    QTest::newRow("layers that are no array") << QByteArray(R"({"layers": {}})") << u"\"layers\" has to be an array."_s;
    QTest::newRow("a layer that is no object") << QByteArray(R"({"layers": [1]})") << u"A layer has to be an object."_s;
    QTest::newRow("an identifier that is no text")
        << QByteArray(R"({"layers": [{"id": []}]})") << u"A layer's \"id\" has to be a text or a number."_s;
    QTest::newRow("an identifier twice") << QByteArray(R"({"layers": [{"id": "a"}, {"layers": [{"id": "a"}]}]})")
                                         << u"Two layers have the id \"a\"."_s;
    QTest::newRow("a selection that is no array")
        << QByteArray(R"({"selection": "a"})") << u"\"selection\" has to be an array."_s;
    QTest::newRow("a selected layer that does not exist")
        << QByteArray(R"({"selection": ["a"]})") << u"The selected layer \"a\" does not exist."_s;
}

void tst_Document::unreadableDocuments()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, message);

    const auto document = documentFromJSON(json);
    QVERIFY(!document);
    QVERIFY(!document.error().localizedDescription.isEmpty());
    if (!message.isEmpty())
        QCOMPARE(document.error().localizedDescription, message);
}

void tst_Document::filesThatAreNoneAreNamed_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << u"/no/such/file.json"_s;
    QTest::newRow("folder") << u"/dev"_s;
    QTest::newRow("device without an end") << u"/dev/zero"_s;
}

void tst_Document::filesThatAreNoneAreNamed()
{
    QFETCH(QString, path);
    const auto document = readDocument(path);
    QVERIFY(!document);
    QVERIFY(document.error().localizedDescription.startsWith(u"Cannot read the document \"%1\": "_s.arg(path)));
}

void tst_Document::failedWriteLeavesTheFileAlone()
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(u"design.json"_s);
    QVERIFY(!writeDocument(*sampleDocument(), path));
    QCOMPARE(jsonFromDocument(*readDocument(path).value()), jsonFromDocument(*sampleDocument()));

    const auto error = writeDocument(*sampleDocument(), folder.filePath(u"none/design.json"_s));
    QVERIFY(error);
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{u"design.json"_s});
}

void tst_Document::addedLayersGetIdentifiersOfTheirOwn()
{
    const auto document = sampleDocument();
    const auto unnamed = std::make_shared<Layer>(QVariantMap());
    const auto taken = std::make_shared<Layer>(QVariantMap{{u"id"_s, u"a"_s}});

    QVERIFY(document->addLayer(unnamed, nullptr));
    QVERIFY(document->addLayer(taken, document->layerWithID(u"g"_s)));

    QVERIFY(!unnamed->id().isEmpty());
    QVERIFY(taken->id() != u"a"_s && taken->id() != unnamed->id());
    QCOMPARE(document->layerWithID(taken->id()), taken);
    QCOMPARE(taken->parent(), document->layerWithID(u"g"_s));
}

void tst_Document::addingTwiceOrElsewhereIsRefused()
{
    const auto document = sampleDocument();
    const auto other = sampleDocument();

    QVERIFY(!document->addLayer(document->layerWithID(u"a"_s), nullptr));
    QVERIFY(!document->addLayer(std::make_shared<Layer>(QVariantMap()), other->layerWithID(u"g"_s)));
    QCOMPARE(jsonFromDocument(*document), jsonFromDocument(*sampleDocument()));
    QCOMPARE(jsonFromDocument(*other), jsonFromDocument(*sampleDocument()));
}

void tst_Document::removedLayersAreInNoDocument()
{
    const auto document = sampleDocument();
    const auto group = document->layerWithID(u"g"_s);
    const auto text = document->layerWithID(u"t"_s);

    QVERIFY(document->removeLayer(group));
    QVERIFY(!document->removeLayer(group));

    QVERIFY(!group->document() && !text->document());
    QVERIFY(!document->layerWithID(u"t"_s));
    QVERIFY(document->selection().isEmpty());
    QCOMPARE(namesOf(document->allLayers()), QStringList{u"A"_s});
}

void tst_Document::movedLayersStayWithinTheirSiblings()
{
    const auto document = sampleDocument();
    const auto a = document->layerWithID(u"a"_s);

    document->moveLayer(a, 99);
    QCOMPARE(namesOf(document->layers()), QStringList({u"G"_s, u"A"_s}));
    document->moveLayer(a, -5);
    QCOMPARE(namesOf(document->layers()), QStringList({u"A"_s, u"G"_s}));
}

void tst_Document::duplicatesAreWhole()
{
    const auto document = sampleDocument();
    const auto copy = document->duplicateLayer(document->layerWithID(u"g"_s));

    QCOMPARE(namesOf(document->layers()), QStringList({u"A"_s, u"G"_s, u"G"_s}));
    QCOMPARE(document->layers().last(), copy);
    QCOMPARE(namesOf(copy->layers()), QStringList({u"T"_s, u"N"_s}));
    QCOMPARE(copy->layers().first()->parent(), copy);
    QCOMPARE(copy->layers().first()->text(), std::optional(u"Hello"_s));
    QCOMPARE(namesOf(document->layerWithID(u"g"_s)->layers()), QStringList({u"T"_s, u"N"_s}));
    QStringList ids;
    for (const auto &layer : document->allLayers())
        ids.append(layer->id());
    QCOMPARE(ids.removeDuplicates(), 0);
}

void tst_Document::duplicatesOfCrowdedGroupsAreWhole()
{
    const auto document = std::make_shared<Document>();
    const auto group = std::make_shared<Layer>(QVariantMap{{u"name"_s, u"Crowd"_s}});
    document->addLayer(group, nullptr);
    for (int number = 0; number < 100; ++number)
        document->addLayer(std::make_shared<Layer>(QVariantMap{{u"name"_s, QString::number(number)}}), group);

    const auto copy = document->duplicateLayer(document->layers().first());

    QCOMPARE(namesOf(copy->layers()), namesOf(group->layers()));
    QCOMPARE(group->layers().size(), 100);
    QCOMPARE(document->allLayers().size(), 202);
}

namespace {

struct Printed final : COPrintController
{
    void print(const QVariant &value) override { values.append(value); }
    void scriptEncounteredException(const ScriptException &exception) override { errors.append(exception.message()); }

    QVariantList values;
    QStringList errors;
};

std::shared_ptr<Printed> runScript(const std::shared_ptr<Document> &document, const QString &source)
{
    auto printed = std::make_shared<Printed>();
    COScript session({}, u"test"_s);
    session.setPrintController(printed);
    session.pushObject(QVariant::fromValue(ScriptObjectPointer(document)), u"doc"_s);
    session.executeString(source);
    return printed;
}

} // namespace

void tst_Document::scriptsWorkOnTheDocument()
{
    const auto document = sampleDocument();
    const auto printed = runScript(document, uR"(
        const group = doc.layerWithID('g');
        const added = group.addLayer({name: 'New', type: 'oval', frame: {x: 1, y: 1, width: 2, height: 2}});
        added.setFrame({width: 20});
        added.setStyle({fill: '#FF0000'});
        added.setText('words');
        added.moveToIndex(0);
        doc.setSelection([added]);
        doc.setName('Changed');
        print(added.parent() === group && added.document() === doc && doc.selection()[0] === added);
        print([doc.name(), added.frame(), added.style(), added.text(), doc.layers().length, doc.allLayers().length]);
        print(doc.layerWithID('a').text());
        print(doc.layerWithID('t').userInfo());
        print(doc.layerWithID('none'));
        added.duplicate().remove();
        doc.layerWithID('a').remove();
    )"_s);

    QCOMPARE(printed->errors, QStringList());
    QCOMPARE(printed->values.value(0), QVariant(true));
    const QVariantList expected{u"Changed"_s,
        QVariantMap{{u"x"_s, 1LL}, {u"y"_s, 1LL}, {u"width"_s, 20LL}, {u"height"_s, 2LL}},
        QVariantMap{{u"fill"_s, u"#FF0000"_s}}, u"words"_s, 2LL, 5LL};
    QCOMPARE(printed->values.value(1), QVariant(expected));
    QCOMPARE(printed->values.value(2), QVariant::fromValue(nullptr));
    QVERIFY(printed->values.value(3).toMap().contains(u"com.example"_s));
    QCOMPARE(printed->values.value(4), QVariant::fromValue(nullptr));
    QCOMPARE(namesOf(document->allLayers()), QStringList({u"G"_s, u"New"_s, u"T"_s, u"N"_s}));
}

void tst_Document::scriptsAreToldWhatIsWrong()
{
    const auto document = sampleDocument();
    const auto printed = runScript(document, uR"(
        const attempt = (work) => { try { work(); } catch (error) { print(error.message); } };
        const layer = doc.layerWithID('a');
        attempt(() => layer.setFrame({width: 'wide'}));
        attempt(() => layer.setFrame(5));
        attempt(() => doc.setSelection('a'));
        layer.remove();
        attempt(() => layer.remove());
        attempt(() => layer.duplicate());
    )"_s);

    QCOMPARE(printed->errors, QStringList());
    const QVariantList expected{u"The frame's \"width\" has to be a number."_s,
        u"Argument 1 of setFrame has to be a plain object."_s, u"Argument 1 of setSelection has to be an array."_s,
        u"The layer \"A\" is in no document any more."_s, u"The layer \"A\" is in no document any more."_s};
    QCOMPARE(printed->values, expected);
}

void tst_Document::wrongValuesOfScriptsChangeNothing_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("message");

    const auto types = u"A new layer needs a type, one of: group, rectangle, oval, text, image."_s;
    const auto noGroup = u"The layer \"T\" is no group and cannot hold layers. Take a group, or the top level of the "
                         "document."_s;
    const auto noLayer = u"Argument 1 of setSelection has to hold layers only, but its element %1 is none. Layers are "
                         "what layers(), allLayers() and layerWithID(id) answer."_s;
    QTest::newRow("a new layer without values") << u"doc.addLayer({})"_s << types;
    QTest::newRow("a new layer of an unknown type") << u"doc.addLayer({type: 'weird'})"_s << types;
    QTest::newRow("a new layer of a type that is no text") << u"doc.insertLayer({type: ['text']}, null, 0)"_s << types;
    QTest::newRow("a new layer in a group, without a type") << u"doc.layerWithID('g').addLayer({name: 'A'})"_s << types;
    QTest::newRow("a name that is no text")
        << u"doc.addLayer({type: 'oval', name: 5})"_s << u"The name of a new layer has to be a text."_s;
    QTest::newRow("a frame that is no object")
        << u"doc.addLayer({type: 'oval', frame: 5})"_s << u"The frame of a new layer has to be a plain object."_s;
    QTest::newRow("a new layer with half a frame")
        << u"doc.addLayer({type: 'oval', frame: {x: NaN}})"_s << u"The frame's \"x\" has to be a number."_s;
    QTest::newRow("a new layer in a text") << u"doc.layerWithID('t').addLayer({type: 'oval'})"_s << noGroup;
    QTest::newRow("a new layer at a place in a text")
        << u"doc.insertLayer({type: 'oval'}, doc.layerWithID('t'), 0)"_s << noGroup;
    QTest::newRow("moved into a text") << u"doc.layerWithID('a').moveTo(doc.layerWithID('t'), 0)"_s << noGroup;
    QTest::newRow("no number") << u"doc.layerWithID('a').setFrame({y: 5, x: NaN})"_s
                               << u"The frame's \"x\" has to be a number."_s;
    QTest::newRow("an endless frame") << u"doc.layerWithID('a').setFrame({width: Infinity})"_s
                                      << u"The frame's \"width\" has to be a number."_s;
    QTest::newRow("a boolean") << u"doc.layerWithID('a').setFrame({x: true})"_s
                               << u"The frame's \"x\" has to be a number."_s;
    QTest::newRow("a size below 0") << u"doc.layerWithID('a').setFrame({width: -3})"_s
                                    << u"The frame's \"width\" cannot be less than 0."_s;
    QTest::newRow("a key that frames do not have")
        << u"doc.layerWithID('a').setFrame({with: 10})"_s << u"A frame has no \"with\". It has: x, y, width, height."_s;
    QTest::newRow("a style that cannot be saved")
        << u"doc.layerWithID('a').setStyle({opacity: NaN})"_s
        << u"The style's \"opacity\" is a number that no document can hold."_s;
    QTest::newRow("a selection of numbers") << u"doc.setSelection([1, {}])"_s << noLayer.arg(0);
    QTest::newRow("a selection with something else")
        << u"doc.setSelection([doc.layerWithID('a'), doc])"_s << noLayer.arg(1);
}

void tst_Document::wrongValuesOfScriptsChangeNothing()
{
    QFETCH(QString, source);
    QFETCH(QString, message);

    const auto document = sampleDocument();
    const auto printed = runScript(document, u"try { %1 } catch (error) { print(error.message) }"_s.arg(source));
    QCOMPARE(printed->values, QVariantList{message});
    QCOMPARE(jsonFromDocument(*document), jsonFromDocument(*sampleDocument()));
}

void tst_Document::groupsAreNotTooDeep()
{
    const auto document = sampleDocument();
    const auto printed = runScript(document, uR"(
        let group = doc.layerWithID('g'), levels = 1;
        const attempt = (step) => { try { step() } catch (error) { print(error.message) } };
        attempt(() => { for (; levels < 1000; ++levels) group = group.addLayer({name: 'G', type: 'group'}) });
        print(levels);
        attempt(() => doc.insertLayer({type: 'oval'}, group, 0));
        attempt(() => doc.layerWithID('a').moveTo(group, 0));
        const pair = doc.addLayer({type: 'group'}), inner = pair.addLayer({type: 'group'});
        attempt(() => pair.moveTo(group.parent(), 0));
        inner.moveTo(group.parent(), 0);
        print(inner.parent().name());
    )"_s);
    const auto tooDeep = u"Groups can be at most 250 levels deep."_s;
    QCOMPARE(printed->values, (QVariantList{tooDeep, 250, tooDeep, tooDeep, tooDeep, u"G"_s}));

    const QTemporaryDir folder;
    const auto path = folder.filePath(u"deep.json"_s);
    QVERIFY(!writeDocument(*document, path));
    QCOMPARE(jsonFromDocument(*readDocument(path).value()), jsonFromDocument(*document));
}

void tst_Document::whatCannotBeReadAgainIsNotWritten()
{
    const QTemporaryDir folder;
    const auto path = folder.filePath(u"design.json"_s);
    const auto document = sampleDocument();
    QVERIFY(!writeDocument(*document, path));
    LayerPointer group;
    for (int level = 0; level < 1000; ++level) {
        const auto inner = std::make_shared<Layer>(QVariantMap{{u"type"_s, u"group"_s}});
        QVERIFY(document->addLayer(inner, std::exchange(group, inner)));
    }
    const auto error = writeDocument(*document, path);
    QVERIFY(error);
    QVERIFY2(error->localizedDescription.contains(path), qPrintable(error->localizedDescription));
    QCOMPARE(jsonFromDocument(*readDocument(path).value()), jsonFromDocument(*sampleDocument()));
}

QTEST_GUILESS_MAIN(tst_Document)
#include "tst_document.moc"
