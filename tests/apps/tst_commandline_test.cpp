// What tests of plug-ins can do, and how they fail.

#include "PluginTestsFixture.h"

using namespace Qt::StringLiterals;

class tst_CommandLine_Test : public QObject, private PluginTestsFixture
{
    Q_OBJECT

private slots:
    void init() { makePlugin(); }
    void passing_data();
    void passing();
    void failing_data();
    void failing();
    void endless_data();
    void endless();
    void eachTestIsFresh();
};

void tst_CommandLine_Test::passing_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("expect") << QByteArray("expect([1, { a: 2 }]).to.deep.equal([1, { a: 2 }]);");
    QTest::newRow("assert") << QByteArray("assert.throws(() => null.x, TypeError);");
    QTest::newRow("modules of the plug-in")
        << QByteArray("expect(require('../Contents/Korvan/lib.js').two).to.equal(2);");
    QTest::newRow("core modules") << QByteArray("expect(require('path').join('a', 'b')).to.equal('a/b');");
    QTest::newRow("a timer of an hour less")
        << QByteArray("await new Promise((resolve) => setTimeout(resolve, 3599000));");
    QTest::newRow("the clock goes as far as it is told")
        << QByteArray("let count = 0; setInterval(() => ++count, 100); const start = clock.now(); await "
                      "clock.advance(1000); expect([count, clock.now() - start]).to.deep.equal([10, 1000]);");
    QTest::newRow("a command and what it does")
        << QByteArray("const run = await runCommand('add', { context: { title: 'Sun' } }); expect(run).to.deep.equal("
                      "{ returnValue: { name: '' }, log: [{ level: 'log', text: 'added' }], isRunning: false });"
                      "expect(snapshot().layers.map((layer) => layer.name)).to.deep.equal(['Sun']);");
    QTest::newRow("another handler") << QByteArray(
        "expect((await runCommand('add', { handler: 'other' })).returnValue).to.equal('other');");
    QTest::newRow("a command's changes are one step")
        << QByteArray("const before = snapshot(); await runCommand('add'); expect(undoText()).to.equal('Add'); undo();"
                      "expect(snapshot()).to.deep.equal(before); redo(); expect(snapshot().layers).to.have.length(1);");
    QTest::newRow("a document of the test's own")
        << QByteArray("openDocument({ name: 'Poster' }); expect((await runCommand('add')).returnValue.name)"
                      ".to.equal('Poster'); expect(require('korvan/dom').activeDocument().name).to.equal('Poster');");
    QTest::newRow("a user who answers") << QByteArray(
        "user.answer('Ada', 'No', 3); expect((await runCommand('ask')).returnValue)"
        ".to.deep.equal(['Ada', 'No', 3]); expect(user.shown[1]).to.deep.equal({ kind: 'alert', title: "
        "'Sure?', text: '', buttons: ['Yes', 'No'] });");
    QTest::newRow("a user who closes questions")
        << QByteArray("user.answer(null, null, null); expect((await runCommand('ask')).returnValue)"
                      ".to.deep.equal([null, null, null]);");
    QTest::newRow("a server that answers")
        << QByteArray("network.answer('https://api.example.com/words', { body: { words: 7 } });"
                      "expect((await runCommand('fetch')).returnValue).to.equal(7);"
                      "expect(network.requests.map(({ method }) => method)).to.deep.equal(['GET']);");
    QTest::newRow("a command that stays running")
        << QByteArray("expect((await runCommand('tick')).isRunning).to.equal(true); await clock.advance(120000);"
                      "expect(log().length).to.equal(2); clearLog(); expect(log()).to.deep.equal([]);");
    QTest::newRow("a command that has waited is not running any more")
        << QByteArray("user.answer('Ada', 'No', 3); network.answer('https://api.example.com/words', { body: {} });"
                      "for (const id of ['ask', 'fetch', 'pause'])"
                      "expect((await runCommand(id)).isRunning, id).to.equal(false);");
    QTest::newRow("a user who cancels") << QByteArray(
        "const run = runCommand('data'); await clock.advance(100); user.cancelProgress();"
        "expect((await run).returnValue).to.equal('cancelled');");
    QTest::newRow("a supplier of data") << QByteArray(
        "openDocument({ layers: [{ type: 'text', name: 'A' }, { type: 'text', name: 'B' }] });"
        "expect(await supplyData('Cities')).to.deep.equal(['near A', 'near B']);"
        "const [layer] = require('korvan/dom').activeDocument().layers;"
        "expect(await supplyData('Cities', [layer])).to.deep.equal(['near A']);");
    QTest::newRow("a timer that is left behind") << QByteArray("setInterval(() => { throw new Error('late'); }, 10);");
    QTest::newRow("a rejection that is handled later")
        << QByteArray("const promise = Promise.reject(new Error('r')); promise.catch(() => {});");
    QTest::newRow("an error that the test expects")
        << QByteArray("const error = await runCommand('throw').catch((reason) => reason);"
                      "expect(error.message).to.contain('null is not an object');");
}

void tst_CommandLine_Test::passing()
{
    QFETCH(const QByteArray, body);
    writeFile(bundle() + u"/Contents/Korvan/lib.js"_s, "exports.two = 2;");
    testFile(u"a.test.js"_s, head + "it('a', async () => { " + body + " });");
    const auto finished = test();
    QVERIFY2(finished.exitCode == 0, finished.output.constData());
    QCOMPARE(finished.errors, QStringList());
    QCOMPARE(result(finished)[u"error"_s], QJsonValue());
    QCOMPARE(finished.json()[u"passed"_s], QJsonValue(1));
}

void tst_CommandLine_Test::failing_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("place");
    const auto placeOfTest = u"tests/a.test.js:1:%1"_s.arg(head.size() + 3);
    QTest::newRow("an assertion") << QByteArray("\n  expect(1).to.equal(2);")
                                  << u"AssertionError: expected 1 to equal 2"_s << u"tests/a.test.js:2:21"_s;
    QTest::newRow("an error") << QByteArray("\n  nothing();") << u"ReferenceError: Can't find variable: nothing"_s
                              << u"tests/a.test.js:2:10"_s;
    QTest::newRow("a rejected promise") << QByteArray("await null;\n  throw new TypeError('bad');")
                                        << u"TypeError: bad"_s << u"tests/a.test.js:2:22"_s;
    QTest::newRow("a value that is no error")
        << QByteArray("throw 'a text';") << u"a text"_s << u"tests/a.test.js:0:0"_s;
    QTest::newRow("an error in a timer") << QByteArray("setTimeout(() => {\n  null.x; }, 5); await clock.advance(9);")
                                         << u"TypeError: null is not an object (evaluating 'null.x')"_s
                                         << u"tests/a.test.js:2:7"_s;
    QTest::newRow("a rejection that nobody awaits")
        << QByteArray("\n  Promise.reject(new Error('r'));") << u"Error: r"_s << u"tests/a.test.js:2:27"_s;
    QTest::newRow("an assertion after a command that nobody awaits")
        << QByteArray("runCommand('add').then(() => {\n  expect(1).to.equal(2); });")
        << u"AssertionError: expected 1 to equal 2"_s << u"tests/a.test.js:2:21"_s;
    QTest::newRow("an assertion after questions that nobody awaits")
        << QByteArray("user.answer('Ada', 'No', 3); runCommand('ask').then(() => {\n  expect(1).to.equal(2); });")
        << u"AssertionError: expected 1 to equal 2"_s << u"tests/a.test.js:2:21"_s;
    QTest::newRow("a command that throws and that nobody awaits")
        << QByteArray("\n  runCommand('throw');")
        << u"Error: The command \"throw\" has failed: TypeError: null is not an object (evaluating 'null.x')"_s
        << u"tests/a.test.js:2:13"_s;
    QTest::newRow("an unknown command")
        << QByteArray("\n  await runCommand('x');")
        << u"Error: The plug-in has no command \"x\". It has: throw, late, loop, ask, fetch, pause, data, undefined, tick, remember, add."_s
        << u"tests/a.test.js:2:19"_s;
    QTest::newRow("an unknown handler")
        << QByteArray("\n  await runCommand('add', { handler: 'x' });")
        << u"Error: The command \"add\" has no handler \"x\". It has: run, other, setUp, tearDown."_s
        << u"tests/a.test.js:2:19"_s;
    QTest::newRow("a handler that is not defined")
        << QByteArray("\n  await runCommand('undefined');")
        << u"Error: The command \"undefined\" has failed: Error in command Undefined Script at path $SCRIPT does not contain a handler function named: onNothing."_s
        << u"tests/a.test.js:2:19"_s;
    QTest::newRow("a command that throws")
        << QByteArray("\n  await runCommand('throw');")
        << u"Error: The command \"throw\" has failed: TypeError: null is not an object (evaluating 'null.x')\n    at onThrow (Contents/Korvan/script.js:2:49)"_s
        << u"tests/a.test.js:2:19"_s;
    QTest::newRow("a command that throws later")
        << QByteArray("await runCommand('late'); await clock.advance(1000);")
        << u"Error: The command \"late\" has failed: TypeError: undefined is not an object (evaluating 'undefined.y')\n    at Contents/Korvan/script.js:3:49"_s
        << placeOfTest;
    QTest::newRow("a question without an answer")
        << QByteArray("user.answer('Ada'); await runCommand('ask');")
        << u"Error: \"Sure?\" was asked, and the test has no answer for it. Say user.answer(…) before."_s
        << placeOfTest;
    QTest::newRow("an answer that does not fit")
        << QByteArray("user.answer('Ada', 'Maybe'); await runCommand('ask');")
        << u"Error: \"Sure?\" cannot be answered with Maybe. It needs one of these texts: \"Yes\", \"No\"."_s
        << placeOfTest;
    QTest::newRow("a number out of bounds")
        << QByteArray("user.answer('Ada', 'No', 0); await runCommand('ask');")
        << u"Error: \"Count\" cannot be answered with 0. The number has to be at least 1 and at most 1000000000000."_s
        << placeOfTest;
    QTest::newRow("a user who cancels nothing")
        << QByteArray("\n  user.cancelProgress();") << u"Error: There is no progress that the user could cancel."_s
        << u"tests/a.test.js:2:22"_s;
    QTest::newRow("an unknown supplier")
        << QByteArray("\n  await supplyData('Towns');")
        << u"Error: The plug-in has no data supplier \"Towns\". It has: \"Cities\", \"Broken\"."_s
        << u"tests/a.test.js:2:19"_s;
    QTest::newRow("a supplier that fails")
        << QByteArray("\n  await supplyData('Broken');")
        << u"Error: The data supplier \"Broken\" has failed: TypeError: It has to answer an array"_s
        << u"tests/a.test.js:2:19"_s;
    QTest::newRow("a text for a number")
        << QByteArray("user.answer('Ada', 'No', '3'); await runCommand('ask');")
        << u"Error: \"Count\" cannot be answered with 3. It needs a number, and this is a text."_s << placeOfTest;
    QTest::newRow("a broken number for a whole one")
        << QByteArray("user.answer('Ada', 'No', 1.5); await runCommand('ask');")
        << u"Error: \"Count\" cannot be answered with 1.5. The number has to be a whole number."_s << placeOfTest;
    QTest::newRow("a promise that does not settle")
        << QByteArray("await new Promise(() => {});")
        << u"Error: The test waits for something that does not come, not within an hour of its clock."_s << placeOfTest;
    QTest::newRow("a document that is none")
        << QByteArray("\n  openDocument('x.json');") << u"Error: "_s << u"tests/a.test.js:2:15"_s;
    QTest::newRow("an error in a listener")
        << QByteArray("const t = new EventTarget(); t.addEventListener('a', () => {\n  throw new Error('x'); }); "
                      "t.dispatchEvent(new Event('a'));")
        << u"Error: x"_s << u"tests/a.test.js:2:18"_s;
    QTest::newRow("nothing that is thrown")
        << QByteArray("throw undefined;") << u"Error: The test has thrown undefined."_s << placeOfTest;
    QTest::newRow("a misspelt option of a command")
        << QByteArray("\n  await runCommand('add', { handlr: 'other' });")
        << u"TypeError: runCommand() knows no option \"handlr\". Did you mean \"handler\"? It knows: handler, context."_s
        << u"tests/a.test.js:2:19"_s;
    QTest::newRow("a misspelt option of an answer")
        << QByteArray("\n  network.answer('https://a.example/', { state: 404 });")
        << u"TypeError: network.answer() knows no option \"state\". Did you mean \"status\"? It knows: status, headers, body, error."_s
        << u"tests/a.test.js:2:17"_s;
    QTest::newRow("a document with an unknown type of layers")
        << QByteArray("\n  openDocument({ layers: [{ type: 'group', layers: [{ type: 'txt' }] }] });")
        << u"TypeError: openDocument() knows no type \"txt\" of layers. Did you mean \"text\"? There are: group, rectangle, oval, text, image."_s
        << u"tests/a.test.js:2:15"_s;
    QTest::newRow("long arrays that have nothing in common")
        << QByteArray("const make = (from) => Array.from({ length: 3000 }, (_, i) => i + from);\n  "
                      "expect(make(0)).to.deep.equal(make(5000));")
        << u"AssertionError: expected"_s << u"tests/a.test.js:2:32"_s;
    QTest::newRow("a test in a test")
        << QByteArray("\n  it('b', () => {});")
        << u"Error: it() is called while the test's file is loaded, not in a test and not later."_s
        << u"tests/a.test.js:2:5"_s;
}

void tst_CommandLine_Test::failing()
{
    QFETCH(const QByteArray, body);
    QFETCH(QString, message);
    QFETCH(const QString, place);
    message.replace(u"$SCRIPT"_s, QFileInfo(bundle()).canonicalFilePath() + u"/Contents/Korvan/script.js"_s);
    testFile(u"a.test.js"_s, head + "it('a', async () => { " + body + " });");
    const auto finished = test();
    QCOMPARE(finished.exitCode, 1);
    const auto error = result(finished)[u"error"_s].toObject();
    QVERIFY2(error[u"message"_s].toString().startsWith(message), finished.output.constData());
    QCOMPARE(
        u"%1:%2:%3"_s.arg(error[u"file"_s].toString()).arg(error[u"line"_s].toInt()).arg(error[u"column"_s].toInt()),
        place);
    const auto stack = error[u"stack"_s].toArray();
    QVERIFY(stack.isEmpty() || stack.first().toString().contains(place));
    QCOMPARE(finished.json()[u"failed"_s], QJsonValue(1));
}

void tst_CommandLine_Test::endless_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("a loop") << QByteArray("for (;;);");
    QTest::newRow("a loop that catches") << QByteArray("while (true) { try { for (;;); } catch {} }");
    QTest::newRow("promises") << QByteArray("return (function next() { return Promise.resolve().then(next); })();");
    QTest::newRow("timers") << QByteArray("(function next() { setTimeout(next, 0); })(); await new Promise(() => {});");
    QTest::newRow("a loop in a command") << QByteArray("await runCommand('loop');");
    QTest::newRow("questions") << QByteArray("const ui = require('korvan/ui'); for (;;) { user.answer('a'); await "
                                             "ui.askText('b'); }");
}

void tst_CommandLine_Test::endless()
{
    QFETCH(const QByteArray, body);
    testFile(u"a.test.js"_s, head + "it('a', async () => { " + body + " }); it('b', () => {});");
    const auto finished = test({u"--limit"_s, u"0.1"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(statuses(finished), QStringList({u"a failed"_s, u"b passed"_s}));
    QVERIFY2(finished.output.contains("than 0.1 seconds."), finished.output.constData());
}

void tst_CommandLine_Test::eachTestIsFresh()
{
    const QByteArray once = "async () => { expect(++globalThis.count).to.equal(1); expect(snapshot().layers).to.deep."
                            "equal([]); await runCommand('add'); expect((await runCommand('remember')).returnValue).to."
                            "equal(1); }";
    testFile(u"a.test.js"_s,
        head
            + "globalThis.count = 0; let order = ''; "
              "beforeEach(() => { order += 'a'; }); afterEach(() => { console.log(order); }); describe('b', () => {"
              "beforeEach(() => { order += 'b'; }); afterEach(() => { order += 'c'; }); it('c', "
            + once + "); it('d', " + once + "); it('e', () => { throw 'x'; }); });");
    const auto finished = test();
    QCOMPARE(statuses(finished), QStringList({u"c passed"_s, u"d passed"_s, u"e failed"_s}));
    for (int index = 0; index < 3; ++index) {
        const auto log = result(finished, index)[u"log"_s].toArray();
        QCOMPARE(log.last().toObject(), (QJsonObject{{u"level"_s, u"log"_s}, {u"stringValue"_s, u"abc"_s}}));
    }
    // What the user has is left alone.
    QVERIFY(!QFile::exists(m_folder->filePath(u"data"_s)));
    QVERIFY(!QFile::exists(m_folder->filePath(u"config"_s)));
}

QTEST_GUILESS_MAIN(tst_CommandLine_Test)
#include "tst_commandline_test.moc"
