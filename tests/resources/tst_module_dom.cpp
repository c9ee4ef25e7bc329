#include "resources/ModuleFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray sample = R"({
  "name": "Sample",
  "layers": [
    {"id": "a", "name": "Card", "type": "rectangle", "frame": {"x": 1, "y": 2, "width": 30, "height": 40},
     "style": {"fill": "#FF0000", "cornerRadius": 4}},
    {"id": "g", "name": "Group", "type": "group", "layers": [
      {"id": "t", "name": "Title", "type": "text", "text": "Hello", "style": {"fontSize": 17}},
      {"id": "h", "name": "Inner", "type": "group", "layers": [
        {"id": "r", "name": "007", "type": "rectangle", "frame": {"width": 7}},
        {"id": "i", "name": "Photo", "type": "image", "image": "/a.png"}
      ]}
    ]},
    {"id": "o", "name": "Größe", "type": "oval"}
  ],
  "selection": ["t", "a"]
})";

/// An application with documents open.
class Documents final : public OpenDocuments
{
public:
    QList<ScriptObjectPointer> documents() const override { return open; }
    ScriptObjectPointer activeDocument() const override { return active; }

    QList<ScriptObjectPointer> open;
    ScriptObjectPointer active;
};

const QByteArray prologue = R"(
    const dom = require('korvan/dom');
    const document = dom.activeDocument();
    const byID = (id) => document.layerWithID(id);
    const show = (...values) => print(values.map((value) => typeof value === 'string' ? value : JSON.stringify(value)).join(' '));
    const ids = (layers) => print(layers.map((layer) => layer.id).join(' '));
    const attempt = (work) => { try { work(); print('no error'); } catch (error) { print(`${error.name}: ${error.message}`); } };
)";

} // namespace

class tst_Module_Dom : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void objects_data();
    void objects();
    void selectors_data();
    void selectors();
    void errors_data();
    void errors();
    void everyChangeIsUndoneInOneStep_data();
    void everyChangeIsUndoneInOneStep();
    void failedCreationChangesNothing();
    void changesAreVisibleAtOnce();
    void documentsOfTheApplication();
    void withoutDocuments();
    void laterRunsAreStepsOfTheirOwn();

private:
    std::unique_ptr<ModuleFixture> m_fixture;
};

void tst_Module_Dom::init()
{
    m_fixture = std::make_unique<ModuleFixture>();
    m_fixture->setDocument(sample);
}

void tst_Module_Dom::cleanup()
{
    m_fixture.reset();
}

void tst_Module_Dom::objects_data()
{
    QTest::addColumn<QByteArray>("statements");
    QTest::addColumn<QString>("expected");

    QTest::newRow("a document") << QByteArray("show(document.name); ids(document.children); ids(document.layers)")
                                << u"Sample\na g o\na g t h r i o"_s;
    QTest::newRow("a layer") << QByteArray("const l = byID('a'); show(l.id, l.name, l.type, l.text, l.image)")
                             << u"a Card rectangle null null"_s;
    QTest::newRow("as JSON") << QByteArray("show(byID('a'))")
                             << uR"({"id":"a","type":"rectangle","name":"Card",)"
                                uR"("frame":{"height":40,"width":30,"x":1,"y":2},)"
                                uR"("style":{"cornerRadius":4,"fill":"#FF0000"}})"_s;
    QTest::newRow("as text")
        << QByteArray("print(`${byID('a')} in ${document}`); print(byID('a'))")
        << u"the rectangle layer \"Card\" in the document \"Sample\"\nthe rectangle layer \"Card\""_s;
    QTest::newRow("parents") << QByteArray("show(byID('r').parent === byID('h'), byID('a').parent === document, "
                                           "byID('a').group, byID('t').group.name, byID('t').document === document)")
                             << u"true true null Group true"_s;
    QTest::newRow("indexes") << QByteArray("show(byID('o').index, byID('t').index)") << u"2 0"_s;
    QTest::newRow("the same is the same")
        << QByteArray("show(byID('t') === byID('t'), document.find('text') === byID('t'), "
                      "document.children[1].children[0] === byID('t'))")
        << u"true true true"_s;
    QTest::newRow("the context's are accepted")
        << QByteArray("show(dom.from(context.document) === document, dom.from(context.selection[0]) === byID('t')); "
                      "byID('t').moveTo(context.document, 0); document.selection = [context.selection[1]]; "
                      "ids(document.children); ids(document.selection); "
                      "show(dom.from(document) === document, byID('a').hostObject === context.selection[1])")
        << u"true true\nt a g o\na\ntrue true"_s;
    QTest::newRow("a name") << QByteArray("byID('a').name = 'New'; show(byID('a').name, context.selection[1].name())")
                            << u"New New"_s;
    QTest::newRow("parts of a frame") << QByteArray("const l = byID('a'); l.frame.x += 10; l.frame.width = 5; "
                                                    "l.frame = { y: -1.5 }; show({ ...l.frame }, 'x' in l.frame, "
                                                    "Object.keys(l.frame).length)")
                                      << uR"({"height":40,"width":5,"x":11,"y":-1.5} true 4)"_s;
    QTest::newRow("a frame that is kept is live") << QByteArray(
        "const { frame } = byID('a'); context.selection[1].setFrame({ x: 9 }); show(frame.x, frame === "
        "byID('a').frame)") << u"9 true"_s;
    QTest::newRow("keys of a style") << QByteArray(
        "const { style } = byID('a'); style.fill = '#00FF00'; style.opacity = 0.5; "
        "delete style.cornerRadius; show(style, style.none ?? 'none')")
                                     << uR"({"fill":"#00FF00","opacity":0.5} none)"_s;
    QTest::newRow("a whole style") << QByteArray("byID('a').style = { border: '#000000' }; show(byID('a').style)")
                                   << uR"({"border":"#000000"})"_s;
    QTest::newRow("a text") << QByteArray("byID('t').text = ''; show(byID('t').text === '')") << u"true"_s;
    QTest::newRow("an image") << QByteArray("const l = byID('i'); show(l.image); l.image = null; show(l.image)")
                              << u"/a.png\nnull"_s;
    QTest::newRow("selecting") << QByteArray("byID('o').isSelected = true; byID('t').isSelected = false; "
                                             "ids(document.selection); show(byID('o').isSelected)")
                               << u"a o\ntrue"_s;
    QTest::newRow("a new layer") << QByteArray(
        "const l = document.create({ type: 'oval' }); show(l.name, { ...l.frame }, l.index); "
        "ids(document.children)") << u"Oval {\"height\":100,\"width\":100,\"x\":0,\"y\":0} 3\na g o layer-8"_s;
    QTest::newRow("a new layer at a place")
        << QByteArray("const l = byID('g').create({ type: 'text', name: 'N', text: 'T', frame: { x: 3 }, "
                      "style: { fontSize: 9 }, index: 0 }); show(l.text, l.frame.x, l.style.fontSize, l.index)")
        << u"T 3 9 0"_s;
    QTest::newRow("a new tree") << QByteArray(
        "const g = document.create({ type: 'group', name: 'G', index: 1, children: "
        "[{ type: 'oval' }, { type: 'group', children: [{ type: 'text' }] }] }); "
        "show([...g].map((l) => l.type), g.index)")
                                << uR"(["oval","group","text"] 1)"_s;
    QTest::newRow("a duplicate") << QByteArray(
        "const copy = byID('g').duplicate(); show(copy.name, copy.index, [...copy].length, "
        "copy !== byID('g'))") << u"Group 2 4 true"_s;
    QTest::newRow("moves") << QByteArray(
        "byID('a').moveTo(byID('h')); byID('r').moveTo(document, 0); byID('o').moveTo(document); "
        "ids(document.layers)")
                           << u"r g t h i a o"_s;
    QTest::newRow("removed") << QByteArray(
        "const l = byID('t'); l.remove(); show(l.isRemoved, l.name, l.parent, l.document, "
        "l.index, byID('t')); print(l)")
                             << u"true Title null null -1 null\na removed layer"_s;
    QTest::newRow("a removed group takes its layers along")
        << QByteArray("const r = byID('r'); byID('g').remove(); show(r.isRemoved)") << u"true"_s;
    QTest::newRow("find takes a function") << QByteArray("show(document.find((l) => l.frame.width === 7).id, "
                                                         "byID('g').findAll((l) => l.type === 'group').length, "
                                                         "document.find(() => false))")
                                           << u"r 1 null"_s;
    QTest::newRow("find does not try every way through nested groups") << QByteArray(
        "let at = document; for (let i = 0; i < 60; ++i) at = at.create({ type: 'group' }); "
        "show(document.find('oval ' + 'group '.repeat(30) + 'text'), "
        "document.find('group '.repeat(60)) === at)") << u"null true"_s;
    QTest::newRow("an id is looked for where it is asked") << QByteArray(
        "show(byID('g').find('#r') === byID('r'), byID('h').find('#t'), byID('g').find('#g'), "
        "document.findAll('#none').length)") << u"true null null 0"_s;
    QTest::newRow("inspected")
        << QByteArray("const { inspect } = require('util'); show(inspect(byID('r'), { breakLength: Infinity })); "
                      "show(inspect(document, { depth: 0 }));")
        << u"Layer { id: 'r', type: 'rectangle', name: '007', frame: { height: 0, width: 7, x: 0, y: 0 }, style: {} }\n"
           "Document { name: 'Sample', children: [Array] }"_s;
    QTest::newRow("iterating") << QByteArray(
        "let n = ''; for (const l of document) n += l.id; for (const l of byID('g')) n += l.id; "
        "show(n)") << u"agthriothri"_s;
    QTest::newRow("arrays are of their moment") << QByteArray(
        "const all = document.children; byID('a').remove(); show(all.length, "
        "Object.isFrozen(all))") << u"3 true"_s;
    QTest::newRow("the document's name") << QByteArray("document.name = 'New'; show(context.document.name())")
                                         << u"New"_s;
    QTest::newRow("symbols are taken") << QByteArray("const key = Symbol(); byID('a')[key] = 5; show(byID('a')[key])")
                                       << u"5"_s;
    QTest::newRow("all open documents") << QByteArray("show(dom.documents().length, dom.documents()[0] === document)")
                                        << u"1 true"_s;
}

void tst_Module_Dom::objects()
{
    QFETCH(QByteArray, statements);
    QFETCH(QString, expected);
    QCOMPARE(m_fixture->run(prologue + statements).join(u'\n'), expected);
}

void tst_Module_Dom::selectors_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<QString>("expected");

    QTest::newRow("all") << u"*"_s << u"a g t h r i o"_s;
    QTest::newRow("a type") << u"rectangle"_s << u"a r"_s;
    QTest::newRow("an id") << u"#t"_s << u"t"_s;
    QTest::newRow("a type with an id") << u"text#t"_s << u"t"_s;
    QTest::newRow("a name") << u"[name=\"Title\"]"_s << u"t"_s;
    QTest::newRow("a name in single quotes") << u"text[name='Title']"_s << u"t"_s;
    QTest::newRow("a name without quotes") << u"[name=Größe]"_s << u"o"_s;
    QTest::newRow("a name that looks like a number") << u"[name=007]"_s << u"r"_s;
    QTest::newRow("spaces everywhere") << u"  rectangle[ name = \"Card\" ] , #t"_s << u"a t"_s;
    QTest::newRow("beginning") << u"[name^=Ti]"_s << u"t"_s;
    QTest::newRow("end") << u"[name$=\"o\"]"_s << u"i"_s;
    QTest::newRow("middle") << u"[name*=r]"_s << u"a g h o"_s;
    QTest::newRow("unequal") << u"rectangle[name!=\"Card\"]"_s << u"r"_s;
    QTest::newRow("a number") << u"[width=30]"_s << u"a"_s;
    QTest::newRow("a number in quotes") << u"[width=\"30\"]"_s << u"a"_s;
    QTest::newRow("above") << u"[width>7]"_s << u"a"_s;
    QTest::newRow("at least") << u"[width>=7]"_s << u"a r"_s;
    QTest::newRow("below a fraction") << u"rectangle[x<0.5]"_s << u"r"_s;
    QTest::newRow("at most") << u"rectangle[y<=2]"_s << u"a r"_s;
    QTest::newRow("a negative number") << u"[x>-1][x<1][width=0]"_s << u"g t h i o"_s;
    QTest::newRow("a style") << u"[style.fill=\"#FF0000\"]"_s << u"a"_s;
    QTest::newRow("a style that is there") << u"[style.fontSize]"_s << u"t"_s;
    QTest::newRow("a text that is there") << u"[text]"_s << u"t"_s;
    QTest::newRow("an image") << u"[image$=png]"_s << u"i"_s;
    QTest::newRow("selected") << u"text:selected"_s << u"t"_s;
    QTest::newRow("children") << u"group > rectangle"_s << u"r"_s;
    QTest::newRow("children without spaces") << u"#g>group>*"_s << u"r i"_s;
    QTest::newRow("inside") << u"#g rectangle"_s << u"r"_s;
    QTest::newRow("inside, tried again further out") << u"#g > group *"_s << u"r i"_s;
    QTest::newRow("several") << u"oval, text, #t"_s << u"t o"_s;
    QTest::newRow("nothing") << u"oval[name=Star]"_s << u""_s;
}

void tst_Module_Dom::selectors()
{
    QFETCH(QString, selector);
    QFETCH(QString, expected);
    m_fixture->context.insert(u"selector"_s, selector);
    QCOMPARE(m_fixture->run(prologue + "ids(document.findAll(context.selector))"), QStringList{expected});
}

void tst_Module_Dom::errors_data()
{
    QTest::addColumn<QByteArray>("statement");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *tag, const char *statement, const QString &expected) {
        QTest::newRow(tag) << QByteArray(statement) << expected;
    };
    row("a removed layer", "const l = byID('t'); l.remove(); attempt(() => { l.name = 'New'; })",
        u"Error: The layer \"Title\" was removed from its document. Ask isRemoved before using a layer that was kept, "
        u"or "
        "look for it again with find()."_s);
    row("no name", "attempt(() => { byID('a').name = 5; })",
        u"TypeError: The name of a layer has to be a text, but is the number 5."_s);
    row("no such style", "attempt(() => { byID('a').style.fil = '#000000'; })",
        u"TypeError: The style of a rectangle layer has no key \"fil\". Did you mean \"fill\"? It has: opacity, fill, "
        "border, borderWidth, cornerRadius."_s);
    row("a style of another type", "attempt(() => { byID('o').style = { fontSize: 3 }; })",
        u"TypeError: The style of an oval layer has no key \"fontSize\". It has: opacity, fill, border, borderWidth."_s);
    row("a style's value", "attempt(() => { byID('a').style.fill = undefined; })",
        u"TypeError: The style's \"fill\" has to be a text, a number or a boolean, but is nothing (undefined). Delete "
        u"the "
        "key to take it out of the style."_s);
    row("an opacity", "attempt(() => { byID('a').style.opacity = 5; })",
        u"RangeError: The style's \"opacity\" has to be a number from 0 to 1, but is the number 5."_s);
    row("a name that layers do not have", "attempt(() => { byID('a').nme = 5; })",
        u"TypeError: A layer has no \"nme\". Did you mean \"name\"? What can be assigned to: name, frame, style, text, "
        "image, isSelected. Values of your own are kept with of() of \"korvan/settings\"."_s);
    row("a name that documents do not have", "attempt(() => { document.title = 'A'; })",
        u"TypeError: A document has no \"title\". What can be assigned to: name, selection. Values of your own are "
        u"kept "
        "with of() of \"korvan/settings\"."_s);
    row("a read-only property", "attempt(() => { byID('a').id = 'x'; })",
        u"TypeError: The \"id\" of a layer cannot be assigned to. What can be: name, frame, style, text, image, "
        "isSelected."_s);
    row("the beginning of a part of a frame", "attempt(() => { byID('a').frame.w = 3; })",
        u"TypeError: A frame has no \"w\". Did you mean \"width\"? It has: x, y, width, height."_s);
    row("a letter that begins nothing", "attempt(() => { byID('a').frame.q = 3; })",
        u"TypeError: A frame has no \"q\". It has: x, y, width, height."_s);
    row("a type that no layer has", "attempt(() => document.find('#g > Text[name=Title]'))",
        u"TypeError: The selector \"#g > Text[name=Title]\" asks for the type \"Text\", which no layer has. Did you "
        u"mean "
        "\"text\"? There are: group, rectangle, oval, text, image."_s);
    row("a value of two words", "attempt(() => document.find('[name=Far Hill]'))",
        u"SyntaxError: The selector \"[name=Far Hill]\" is wrong at character 11 (\"Hill]\"): \"]\" or quotes around a "
        "value of several words was expected. Selectors look like text[name=\"Title\"], group > rectangle or #id."_s);
    row("no such part of a frame", "attempt(() => { byID('a').frame.widht = 3; })",
        u"TypeError: A frame has no \"widht\". Did you mean \"width\"? It has: x, y, width, height."_s);
    row("a frame's value", "attempt(() => { byID('a').frame.x = NaN; })",
        u"TypeError: The frame's \"x\" has to be a number, but is the number NaN."_s);
    row("a negative width", "attempt(() => { byID('a').frame = { width: -1 }; })",
        u"RangeError: The frame's \"width\" cannot be less than 0, but is -1."_s);
    row("a text without a text layer", "attempt(() => { byID('a').text = 'New'; })",
        u"TypeError: Only text layers have a text; this is a rectangle layer."_s);
    row("no text", "attempt(() => { byID('t').text = null; })",
        u"TypeError: The text of a layer has to be a text, but is null."_s);
    row("no such type", "attempt(() => document.create({ type: 'rectangel' }))",
        u"TypeError: A new layer needs a type (group, rectangle, oval, text, image), but was given the text "
        "\"rectangel\". Did you mean \"rectangle\"?"_s);
    row("no such option", "attempt(() => document.create({ type: 'text', txt: '' }))",
        u"TypeError: create() knows no option \"txt\". Did you mean \"text\"? It knows: type, name, frame, style, "
        u"text, "
        "image, children, index."_s);
    row("children without a group", "attempt(() => document.create({ type: 'text', children: [{ type: 'text' }] }))",
        u"TypeError: Only groups have children; this is a text layer."_s);
    row("created in no group", "attempt(() => byID('t').create({ type: 'text' }))",
        u"TypeError: create() of a layer needs a group, but the text layer \"Title\" is none. Put the layer into the "
        "group around it, group."_s);
    row("moved into itself", "attempt(() => byID('g').moveTo(byID('h')))",
        u"Error: the group layer \"Group\" cannot be moved into itself."_s);
    row("moved nowhere", "attempt(() => byID('g').moveTo('h'))",
        u"TypeError: A layer moves into a group or its document, but was given the text \"h\"."_s);
    row("a wrong index", "attempt(() => byID('g').moveTo(document, -1))",
        u"TypeError: The index of a layer has to be 0 or a whole number above it, but is the number -1."_s);
    row("selecting no layer", "attempt(() => { document.selection = ['a']; })",
        u"TypeError: What is selected has to be a layer, but is the text \"a\"."_s);
    row("selecting no array", "attempt(() => { document.selection = byID('a'); })",
        u"TypeError: The selection has to be an array of layers, but is an object."_s);
    row("looking for nothing", "attempt(() => document.find())",
        u"TypeError: find() takes a selector or a function, but was given nothing (undefined)."_s);
    row("moved into a removed group", "const g = byID('g'); g.remove(); attempt(() => byID('a').moveTo(g))",
        u"Error: The layer \"Group\" was removed from its document. Ask isRemoved before using a layer that was kept, "
        u"or "
        "look for it again with find()."_s);
    row("gaps among children", "attempt(() => document.create({ type: 'group', children: [, { type: 'text' }] }))",
        u"TypeError: create() takes an object with its options, but was given nothing (undefined)."_s);
    row("an image that is nowhere", "attempt(() => document.create({ type: 'image', image: 'pic.png' }))",
        u"TypeError: The image of a layer is the text \"pic.png\", but has to be a whole path or a URL. That of an "
        u"image "
        "in the plug-in's Resources is context.plugin.urlForResourceNamed('NAME')."_s);
    row("a long selector is cut off", "attempt(() => document.find('a'.repeat(100000) + '!'))",
        u"SyntaxError: The selector \"%1…\" is wrong at character 100001 (\"!\"): \">\", \",\", a step or the end was "
        "expected. Selectors look like text[name=\"Title\"], group > rectangle or #id."_s.arg(QString(100, u'a')));
    row("an unfinished selector", "attempt(() => document.find('text[name='))",
        u"SyntaxError: The selector \"text[name=\" is wrong at its end: a value was expected. Selectors look like "
        "text[name=\"Title\"], group > rectangle or #id."_s);
    row("a selector with an unknown attribute", "attempt(() => document.find('[colour=red]'))",
        u"SyntaxError: The selector \"[colour=red]\" is wrong at character 2 (\"colour=red\"): one of id, name, type, "
        "text, image, x, y, width, height and style.KEY was expected. Selectors look like text[name=\"Title\"], group "
        "> "
        "rectangle or #id."_s);
    row("a selector with more behind it", "attempt(() => document.find('text)'))",
        u"SyntaxError: The selector \"text)\" is wrong at character 5 (\")\"): \">\", \",\", a step or the end was "
        "expected. Selectors look like text[name=\"Title\"], group > rectangle or #id."_s);
    row("an empty selector", "attempt(() => document.find(''))",
        u"SyntaxError: The selector \"\" is wrong at its end: a type of layer, \"*\", \"#\", \"[\" or \":selected\" "
        u"was "
        "expected. Selectors look like text[name=\"Title\"], group > rectangle or #id."_s);
    row("new", "attempt(() => new dom.Layer())",
        u"TypeError: A script cannot make a layer with new. Use create() of a document or a group."_s);
    row("from nothing", "attempt(() => dom.from(null))",
        u"TypeError: from() takes a layer or a document of the context, but was given null."_s);
}

void tst_Module_Dom::errors()
{
    QFETCH(QByteArray, statement);
    QFETCH(QString, expected);
    QCOMPARE(m_fixture->run(prologue + statement), QStringList{expected});
}

void tst_Module_Dom::everyChangeIsUndoneInOneStep_data()
{
    QTest::addColumn<QByteArray>("statements");

    QTest::newRow("everything") << QByteArray(R"(
        byID('a').name = 'New'; byID('a').frame.x = 7; byID('a').style.fill = '#000000'; byID('t').text = 'New';
        const group = document.create({ type: 'group', children: [{ type: 'oval' }] });
        byID('h').moveTo(group, 0); byID('o').remove(); group.duplicate(); document.selection = [group];
        document.name = 'New';)");
    QTest::newRow("after a pause") << QByteArray("byID('a').name = '1'; await null; byID('a').name = '2'");
    QTest::newRow("in a later turn") << QByteArray(
        "byID('a').name = '1'; await require('korvan/ui').alert('Go on?'); byID('t').text = '2'");
}

void tst_Module_Dom::everyChangeIsUndoneInOneStep()
{
    QFETCH(QByteArray, statements);
    m_fixture->user.answers = {0};
    const auto before = jsonFromDocument(*m_fixture->document);
    QCOMPARE(m_fixture->run(prologue + statements), QStringList());
    QVERIFY(jsonFromDocument(*m_fixture->document) != before);
    auto &history = m_fixture->document->history();
    QCOMPARE(history.undoText(), u"Tidy Layers"_s);
    history.undo();
    QCOMPARE(jsonFromDocument(*m_fixture->document), before);
    QVERIFY(!history.canUndo());
}

void tst_Module_Dom::failedCreationChangesNothing()
{
    const auto lines = m_fixture->run(prologue
        + "attempt(() => document.create({ type: 'group', children: [{ type: 'oval' }, { type: 'text', style: { a: 1 } "
          "}] }))");
    QVERIFY(lines.value(0).startsWith(u"TypeError: The style of a text layer has no key \"a\""_s));
    QVERIFY(!m_fixture->document->history().canUndo());
}

void tst_Module_Dom::changesAreVisibleAtOnce()
{
    QStringList seen;
    const auto observer = m_fixture->document->observe([&](const DocumentEvent &event) {
        seen.append(event.layer ? event.layer->name() : u"-"_s);
        m_fixture->manager.log->events.append(u"log: seen"_s);
    });
    QCOMPARE(
        m_fixture->run(prologue + "byID('a').name = 'New'; print('changed'); byID('t').remove(); print('removed')"),
        QStringList({u"seen"_s, u"changed"_s, u"seen"_s, u"seen"_s, u"removed"_s}));
    QCOMPARE(seen, QStringList({u"New"_s, u"Title"_s, u"-"_s}));
}

void tst_Module_Dom::documentsOfTheApplication()
{
    Documents documents;
    const auto other = documentFromJSON(R"({"name": "Other", "layers": [{"type": "oval"}]})").value();
    documents.open = {other, m_fixture->document};
    documents.active = other;
    m_fixture->environment.documents = &documents;
    const QByteArray statements = "show(dom.documents().map((d) => d.name), document.name); ";
    QCOMPARE(m_fixture->run(prologue + statements
                 + "attempt(() => byID('a').moveTo(dom.documents()[0])); "
                   "attempt(() => { document.selection = dom.documents()[0].layers.slice(); })"),
        QStringList({uR"(["Other","Sample"] Sample)"_s,
            u"Error: the rectangle layer \"Card\" cannot be moved to another document. Create a layer there instead."_s,
            u"Error: the oval layer \"\" is not in the document \"Sample\", so it cannot be selected there."_s}));
    m_fixture->context.clear();
    QCOMPARE(m_fixture->run(prologue + statements), QStringList({uR"(["Other","Sample"] Other)"_s}));
}

void tst_Module_Dom::withoutDocuments()
{
    m_fixture->context.clear();
    QCOMPARE(m_fixture->run(prologue + "show(document, dom.documents())"), QStringList({u"null []"_s}));
}

void tst_Module_Dom::laterRunsAreStepsOfTheirOwn()
{
    m_fixture->run(prologue + "byID('a').name = '1'");
    m_fixture->run(prologue + "byID('a').name = '2'");
    m_fixture->document->history().undo();
    QCOMPARE(m_fixture->document->layerWithID(u"a"_s)->name(), u"1"_s);
}

QTEST_GUILESS_MAIN(tst_Module_Dom)
#include "tst_module_dom.moc"
