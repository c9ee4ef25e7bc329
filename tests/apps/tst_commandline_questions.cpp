// What plug-ins ask on the terminal, and what they supply.

#include "apps/CommandLineFixture.h"

#include <QJsonArray>
#include <QProcess>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

const QByteArray manifest = R"({"name": "Ask", "identifier": "com.example.ask", "version": "1.0",
    "commands": [{"name": "Ask", "identifier": "ask", "script": "script.js"}]})";

const QByteArray supplying =
    R"({"name": "Data", "identifier": "com.example.data", "version": "1.0", "suppliesData": true,
    "commands": [{"name": "Data", "identifier": "data", "script": "script.js",
        "handlers": {"actions": {"Startup": "onStartup"}}}]})";

const QByteArray document = R"({"layers": [{"id": "a", "name": "A", "type": "text", "text": ""},
    {"id": "i", "name": "I", "type": "image"}, {"id": "b", "name": "B", "type": "text", "text": ""}]})";

} // namespace

class tst_CommandLine_Questions : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }

    void answersComeFromTheInput_data();
    void answersComeFromTheInput();
    void withoutInputNothingIsAnswered();
    void questionsStayOutOfTheDocument();
    void progressIsTold();
    void progressIsInterrupted_data();
    void progressIsInterrupted();
    void suppliersAreListed();
    void suppliersFillLayers();
    void suppliersFillSelectedLayersOnly();
    void removedLayersAreNotFilled();
    void supplierProblems_data();
    void supplierProblems();
    void exampleOfCards();
    void exampleOfABrush();

private:
    Finished ask(const QByteArray &statements, const QByteArray &input, const QStringList &options = {}) const
    {
        plugin(u"ask"_s, manifest, "async function onRun() { const ui = require('korvan/ui'); " + statements + " }");
        return run(
            QStringList{u"--folder"_s, m_folder->filePath(u"plugins"_s), u"run"_s, u"com.example.ask/ask"_s} + options,
            {}, input);
    }

    Finished supply(const QStringList &arguments, const QByteArray &script) const
    {
        plugin(u"data"_s, supplying, script);
        return run(QStringList{u"--folder"_s, m_folder->filePath(u"plugins"_s), u"supply"_s} + arguments);
    }
};

void tst_CommandLine_Questions::answersComeFromTheInput_data()
{
    QTest::addColumn<QByteArray>("statements");
    QTest::addColumn<QByteArray>("input");
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QStringList>("errors");

    QTest::newRow("a text") << QByteArray("print(await ui.askText({ title: 'Name', text: 'Of the layer' }))")
                            << QByteArray("New name\n") << QByteArray("New name\n")
                            << QStringList{u"Ask: Name"_s, u"Of the layer"_s, u"A text:"_s};
    QTest::newRow("the text that is there")
        << QByteArray("print(await ui.askText({ title: 'Name', value: 'Old' }))") << QByteArray("\n")
        << QByteArray("Old\n") << QStringList{u"Ask: Name"_s, u"A text [Old]:"_s};
    QTest::newRow("a last line without an end") << QByteArray("print(await ui.askText('Name'))") << QByteArray("New")
                                                << QByteArray("New\n") << QStringList{u"Ask: Name"_s, u"A text:"_s};
    QTest::newRow("lines of another system") << QByteArray("print(await ui.askText('Name'))") << QByteArray("New\r\n")
                                             << QByteArray("New\n") << QStringList{u"Ask: Name"_s, u"A text:"_s};
    QTest::newRow("a number, asked again")
        << QByteArray("print(await ui.askNumber({ title: 'Columns', value: 3, minimum: 1, maximum: 12 }))")
        << QByteArray("many\n99\n 4 \n") << QByteArray("4\n")
        << QStringList{u"Ask: Columns"_s, u"A number [3]:"_s, u"\"many\" is no number."_s, u"Ask: Columns"_s,
               u"A number [3]:"_s, u"The number has to be at least 1 and at most 12."_s, u"Ask: Columns"_s,
               u"A number [3]:"_s};
    QTest::newRow("a whole number, asked again")
        << QByteArray("print(await ui.askNumber('Columns'))") << QByteArray("1.5\n2\n") << QByteArray("2\n")
        << QStringList{u"Ask: Columns"_s, u"A number [0]:"_s, u"The number has to be a whole number."_s,
               u"Ask: Columns"_s, u"A number [0]:"_s};
    QTest::newRow("decimals, asked again")
        << QByteArray("print(await ui.askNumber({ title: 'Factor', decimals: 2, value: 1.239 }))")
        << QByteArray("1.23456\n1.23\n") << QByteArray("1.23\n")
        << QStringList{u"Ask: Factor"_s, u"A number [1.24]:"_s, u"The number can have at most 2 decimals."_s,
               u"Ask: Factor"_s, u"A number [1.24]:"_s};
    QTest::newRow("a button by its number")
        << QByteArray("print(await ui.alert({ title: 'Delete?', buttons: ['Delete', 'Keep'] }))") << QByteArray("2\n")
        << QByteArray("Keep\n")
        << QStringList{
               u"Ask: Delete?"_s, u"  1. Delete"_s, u"  2. Keep"_s, u"A number or a text from the list [Delete]:"_s};
    QTest::newRow("a choice by its text, asked again")
        << QByteArray("print(await ui.askChoice({ title: 'Colour', choices: ['Red', 'Green'], value: 'Green' }))")
        << QByteArray("blue\nRED\n") << QByteArray("Red\n")
        << QStringList{u"Ask: Colour"_s, u"  1. Red"_s, u"  2. Green"_s, u"A number or a text from the list [Green]:"_s,
               u"\"blue\" is not in the list."_s, u"Ask: Colour"_s, u"  1. Red"_s, u"  2. Green"_s,
               u"A number or a text from the list [Green]:"_s};
    QTest::newRow("a choice that is the number of another one")
        << QByteArray("print(await ui.askChoice({ title: 'Columns', choices: ['2', '1', '3'] }))") << QByteArray("1\n")
        << QByteArray("1\n")
        << QStringList{
               u"Ask: Columns"_s, u"  1. 2"_s, u"  2. 1"_s, u"  3. 3"_s, u"A number or a text from the list [2]:"_s};
    QTest::newRow("a button that differs from another one in its case")
        << QByteArray("print(await ui.alert({ title: 'Sure?', buttons: ['OK', 'ok'] }))") << QByteArray("ok\n")
        << QByteArray("ok\n")
        << QStringList{u"Ask: Sure?"_s, u"  1. OK"_s, u"  2. ok"_s, u"A number or a text from the list [OK]:"_s};
    QTest::newRow("one question after another")
        << QByteArray("const [a, b] = await Promise.all([ui.askText('A'), ui.askText('B')]); "
                      "print(a + b + await ui.askText('C'))")
        << QByteArray("1\n2\n3\n") << QByteArray("123\n")
        << QStringList{u"Ask: A"_s, u"A text:"_s, u"Ask: B"_s, u"A text:"_s, u"Ask: C"_s, u"A text:"_s};
    QTest::newRow("commands for the terminal are shown")
        << QByteArray("print(await ui.askText('\\u001b[2JName'))") << QByteArray("\n") << QByteArray("\n")
        << QStringList{u"Ask: \\u001b[2JName"_s, u"A text:"_s};
}

void tst_CommandLine_Questions::answersComeFromTheInput()
{
    QFETCH(QByteArray, statements);
    QFETCH(QByteArray, input);
    QFETCH(QByteArray, output);
    QFETCH(QStringList, errors);
    const auto finished = ask(statements, input);
    QCOMPARE(finished.errors, errors);
    QCOMPARE(finished.output, output);
    QCOMPARE(finished.exitCode, 0);
}

void tst_CommandLine_Questions::withoutInputNothingIsAnswered()
{
    const auto finished = ask("print(await ui.askText('A')); print(await ui.alert('B'))", "");
    QCOMPARE(finished.output, QByteArray("(null)\n(null)\n"));
    QVERIFY(finished.errors.contains(u"No answer to \"Ask: A\": the input has ended."_s));
    QVERIFY(finished.errors.contains(u"No answer to \"Ask: B\": the input has ended."_s));
    QCOMPARE(finished.exitCode, 0);
}

void tst_CommandLine_Questions::questionsStayOutOfTheDocument()
{
    const auto finished = ask("ui.message('Begins'); return await ui.askText('Name')", "New\n", {u"--json"_s});
    QCOMPARE(finished.errors, QStringList({u"Ask: Begins"_s, u"Ask: Name"_s, u"A text:"_s}));
    QCOMPARE(finished.json().value(u"returnValue"_s).toString(), u"New"_s);
}

void tst_CommandLine_Questions::progressIsTold()
{
    const auto finished = ask("await ui.withProgress({ title: 'Export', total: 40 }, async (progress) => { "
                              "for (let i = 1; i <= 8; ++i) { progress.value = i; await progress.pause(); } "
                              "progress.text = 'Nearly'; });",
        "");
    QCOMPARE(finished.errors,
        QStringList({u"Ask: Export"_s, u"Ask: Export 0 %"_s, u"Ask: Export 10 %"_s, u"Ask: Export 20 %"_s,
            u"Ask: Export 20 % – Nearly"_s}));
    QCOMPARE(finished.exitCode, 0);
}

void tst_CommandLine_Questions::progressIsInterrupted_data()
{
    QTest::addColumn<QByteArray>("work");
    QTest::addColumn<int>("interrupts");
    QTest::addColumn<QByteArray>("output");
    const QByteArray untilCancelled = "while (!progress.isCancelled) await progress.pause(); return 'stopped'";
    QTest::newRow("one asks to stop") << untilCancelled << 1 << QByteArray("→ stopped\n");
    QTest::newRow("a second one ends a script that does not listen")
        << QByteArray("for (;;) await progress.pause()") << 2 << QByteArray();
}

void tst_CommandLine_Questions::progressIsInterrupted()
{
    QFETCH(QByteArray, work);
    QFETCH(int, interrupts);
    plugin(u"ask"_s, manifest,
        "function onRun() { return require('korvan/ui').withProgress('Export', async (progress) => { " + work
            + " }); }");
    QProcess process;
    process.setWorkingDirectory(m_folder->path());
    process.start(QStringLiteral(KORVAN_PLUGINS_PROGRAM),
        {u"--folder"_s, u"plugins"_s, u"--support-dir"_s, u"data"_s, u"--defaults"_s, u"defaults"_s, u"run"_s,
            u"com.example.ask/ask"_s});
    auto waitForErrors = [&process, errors = QByteArray()](const QByteArray &text) mutable {
        process.setReadChannel(QProcess::StandardError);
        while (!errors.contains(text) && process.waitForReadyRead())
            errors += process.readAllStandardError();
        return errors.contains(text);
    };
    QVERIFY(waitForErrors("Ask: Export\n"));
    ::kill(pid_t(process.processId()), SIGINT);
    if (interrupts == 2) {
        QVERIFY(waitForErrors("again to end at once.\n"));
        ::kill(pid_t(process.processId()), SIGINT);
    }
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), interrupts == 2 ? QProcess::CrashExit : QProcess::NormalExit);
    QTEST(process.readAllStandardOutput(), "output");
}

void tst_CommandLine_Questions::suppliersAreListed()
{
    const QByteArray script = R"(function onStartup() { const { register } = require('korvan/data-supplier');
        register({ name: 'Cities', kind: 'text', supply: () => [] });
        setTimeout(() => {}, 0);
        register({ id: 'faces', name: 'Faces', kind: 'image', supply: () => [] }); })";
    const auto finished = supply({u"--json"_s}, script);
    QCOMPARE(finished.exitCode, 0);
    const auto suppliers = finished.json().value(u"suppliers"_s).toArray();
    QCOMPARE(suppliers.size(), 2);
    QCOMPARE(QJsonDocument(suppliers.at(1).toObject()).toJson(QJsonDocument::Compact),
        QByteArray(R"({"id":"faces","kind":"image","name":"Faces","plugin":"com.example.data"})"));
    const auto table = supply({}, script);
    QVERIFY2(table.output.contains("com.example.data"), table.output.constData());
    const auto none = supply({}, "function onStartup() {}");
    QCOMPARE(none.output, QByteArray("No plug-in supplies data.\n"));
    QCOMPARE(none.exitCode, 0);
}

void tst_CommandLine_Questions::suppliersFillLayers()
{
    writeFile(m_folder->filePath(u"in.json"_s), document);
    const auto out = m_folder->filePath(u"out.json"_s);
    const auto finished = supply({u"com.example.data"_s, u"Cities"_s, u"--document"_s, m_folder->filePath(u"in.json"_s),
                                     u"--dump-document"_s, out},
        R"(async function onStartup() { await null; const { register } = require('korvan/data-supplier');
            register({ id: 'c', name: 'Cities', kind: 'text', supply: async ({ layers }) => layers.map((l) => 'in ' + l.name) });
            register({ name: 'Faces', kind: 'image', supply: () => ['/a b.png'] }); })");
    QCOMPARE(finished.errors, QStringList());
    QCOMPARE(finished.output, QByteArray("A: in A\nB: in B\n"));
    QCOMPARE(finished.exitCode, 0);
    const auto layers = QJsonDocument::fromJson(fileContent(out)).object().value(u"layers"_s).toArray();
    QCOMPARE(layers.at(0).toObject().value(u"text"_s).toString(), u"in A"_s);
    QCOMPARE(layers.at(2).toObject().value(u"text"_s).toString(), u"in B"_s);

    const auto images = run({u"--folder"_s, m_folder->filePath(u"plugins"_s), u"supply"_s, u"com.example.data"_s,
        u"Faces"_s, u"--document"_s, m_folder->filePath(u"in.json"_s), u"--dump-document"_s, out, u"--json"_s});
    QCOMPARE(images.exitCode, 0);
    QCOMPARE(images.json().value(u"values"_s).toArray().first().toObject().value(u"id"_s).toString(), u"i"_s);
    const auto filled = QJsonDocument::fromJson(fileContent(out)).object().value(u"layers"_s).toArray();
    QCOMPARE(filled.at(1).toObject().value(u"image"_s).toString(), u"file:///a%20b.png"_s);
}

void tst_CommandLine_Questions::suppliersFillSelectedLayersOnly()
{
    auto content = document;
    content.replace("]}", "], \"selection\": [\"b\", \"i\"]}");
    writeFile(m_folder->filePath(u"in.json"_s), content);
    const auto finished = supply({u"com.example.data"_s, u"--document"_s, m_folder->filePath(u"in.json"_s)},
        "function onStartup() { require('korvan/data-supplier').register({ name: 'Cities', kind: 'text', "
        "supply: ({ layers }) => layers.map(() => 'x') }) }");
    QCOMPARE(finished.output, QByteArray("B: x\n"));
}

void tst_CommandLine_Questions::removedLayersAreNotFilled()
{
    writeFile(m_folder->filePath(u"in.json"_s), document);
    const auto finished = supply({u"com.example.data"_s, u"--document"_s, m_folder->filePath(u"in.json"_s)},
        "function onStartup() { require('korvan/data-supplier').register({ name: 'Cities', kind: 'text', "
        "supply({ layers }) { layers[0].remove(); return layers.map(() => 'x') } }) }");
    QCOMPARE(finished.errors, QStringList());
    QCOMPARE(finished.output, QByteArray("B: x\n"));
}

void tst_CommandLine_Questions::supplierProblems_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("expected");

    const QByteArray two = R"(function onStartup() { const { register } = require('korvan/data-supplier');
        register({ name: 'A', kind: 'text', supply() { throw new Error('no network') } });
        register({ name: 'B', kind: 'text', supply: () => new Promise(() => {}) }); })";
    QTest::newRow("no such plug-in") << QStringList{u"com.example.none"_s} << two
                                     << u"korvan-plugins: There is no plug-in \"com.example.none\"."_s;
    QTest::newRow("no such supplier") << QStringList{u"com.example.data"_s, u"C"_s} << two
                                      << u"korvan-plugins: The plug-in \"com.example.data\" supplies no such data."_s;
    QTest::newRow("several") << QStringList{u"com.example.data"_s} << two
                             << u"korvan-plugins: The plug-in \"com.example.data\" has several suppliers. Name one of "
                                "them: \"A\", \"B\"."_s;
    QTest::newRow("no document") << QStringList{u"com.example.data"_s, u"A"_s} << two
                                 << u"korvan-plugins: There are no layers to put data into. Name a document with "
                                    "--document."_s;
    QTest::newRow("a failure") << QStringList{u"com.example.data"_s, u"A"_s, u"--document"_s, u"in.json"_s} << two
                               << u"The data supplier \"A\" has failed: Error: no network"_s;
    QTest::newRow("too late") << QStringList{u"com.example.data"_s, u"B"_s, u"--document"_s, u"in.json"_s, u"--wait"_s,
        u"0.1"_s} << two << u"korvan-plugins: The values did not come in time."_s;
    QTest::newRow("not registered for")
        << QStringList{} << QByteArray("function onStartup() { require('korvan/data-supplier').register({ name: 5 }) }")
        << u"Uncaught script exception: TypeError: The name of a supplier has to be a text, but is the number 5."_s;
}

void tst_CommandLine_Questions::supplierProblems()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, script);
    QFETCH(QString, expected);
    writeFile(m_folder->filePath(u"in.json"_s), document);
    const auto finished = supply(arguments, script);
    QCOMPARE(finished.errors.filter(expected.section(u": "_s, -1)), QStringList(expected));
    QCOMPARE(finished.exitCode, 1);
}

void tst_CommandLine_Questions::exampleOfCards()
{
    const auto out = m_folder->filePath(u"out.json"_s);
    const QStringList example{u"--folder"_s, examples + u"/plugins"_s};
    const auto made = run(example
            + QStringList{u"run"_s, u"com.example.card-deck/make"_s, u"--document"_s,
                examples + u"/documents/poster.json"_s, u"--dump-document"_s, out, u"--json"_s},
        {}, "2\n");
    QCOMPARE(made.exitCode, 0);
    QCOMPARE(made.json().value(u"returnValue"_s).toInt(), 2);
    QCOMPARE(made.errors.first(), u"Card Deck: How many cards?"_s);
    QCOMPARE(made.errors.last(), u"Card Deck: Made 2 cards."_s);

    // Without an answer it makes as many again; what was selected does not get the titles.
    const auto again = run(example
        + QStringList{
            u"run"_s, u"com.example.card-deck/make"_s, u"--document"_s, out, u"--dump-document"_s, out, u"--json"_s});
    QCOMPARE(again.json().value(u"returnValue"_s).toInt(), 2);
    const auto titled = run(example + QStringList{u"supply"_s, u"com.example.card-deck"_s, u"--document"_s, out});
    QVERIFY2(titled.output.contains("Title: Five of Spades\n"), titled.output.constData());
    QCOMPARE(titled.exitCode, 0);
}

void tst_CommandLine_Questions::exampleOfABrush()
{
    const auto out = m_folder->filePath(u"out.json"_s);
    const QStringList example{u"--folder"_s, examples + u"/plugins"_s};
    const auto taken = run(example
        + QStringList{
            u"run"_s, u"com.example.style-brush/take"_s, u"--document"_s, examples + u"/documents/poster.json"_s});
    QCOMPARE(taken.exitCode, 0);
    QCOMPARE(taken.errors, QStringList{u"Style Brush: The brush has the style of the oval layer \"Sun\"."_s});
    const auto painted = run(example
        + QStringList{u"run"_s, u"com.example.style-brush/paint-on"_s, u"--handler"_s, u"run"_s, u"--handler"_s,
            u"SelectionChanged.finish"_s, u"--handler"_s, u"Shutdown"_s, u"--document"_s,
            examples + u"/documents/poster.json"_s, u"--dump-document"_s, out});
    QCOMPARE(painted.exitCode, 0);
    const auto layers = QJsonDocument::fromJson(fileContent(out)).object().value(u"layers"_s).toArray();
    QCOMPARE(layers.at(3).toObject().value(u"style"_s).toObject().value(u"fill"_s).toString(), u"#E8A33D"_s);
    const auto listed = run(example + QStringList{u"supply"_s});
    QVERIFY2(listed.output.contains("Swatch") && listed.output.contains("Card Titles"), listed.output.constData());
}

QTEST_GUILESS_MAIN(tst_CommandLine_Questions)
#include "tst_commandline_questions.moc"
