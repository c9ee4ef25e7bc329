#include "CommandLineFixture.h"

#include <QJsonArray>
#include <QRegularExpression>
#include <QtTest>

using namespace Qt::StringLiterals;

/// The program as it is started from a shell, on the shared library.
class tst_CommandLine : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void exitCodes_data();
    void exitCodes();
    void listSortsByIdentifierAndDescribesEverything();
    void listKeepsTheManifestsOrder();
    void loaderErrorsGoToStandardError();
    void safeModeDisablesEverything();
    void foldersKeepTheirOrder();
    void usualFoldersComeFromTheSettings();
    void hostVersionDecidesCompatibility();
    void infoTakesIdentifierOrPath();
    void runLogsAndReturns();
    void runWorksOnADocument();
    void runPassesTheContext();
    void runWaitsForPromisesAndTimers();
    void runGivesUpWaiting();
    void handlersShareALivingSession();
    void returnValueIsWhatJSONCanHold();
    void longestPluginIdentifierWins();
    void standaloneScriptHasTheDocumentAtHand();
    void standaloneErrorsHaveTheAuthorsLines_data();
    void standaloneErrorsHaveTheAuthorsLines();
    void everyExampleMistakeIsReported_data();
    void everyExampleMistakeIsReported();
    void timeLimitNamesTheCommand();
    void compareVersions_data();
    void compareVersions();
    void jsonStandsBeforeOrAfterTheCommand();
    void demoShowsTheMainJob();
    void noColoursWithoutATerminal();
    void helpManualAndCompletionsKnowEveryOption();
};

void tst_CommandLine::exitCodes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message");

    const auto help = u"Run with --help for more information."_s;
    QTest::newRow("no command") << QStringList() << 2 << help;
    QTest::newRow("unknown command") << QStringList{u"fly"_s} << 2 << help;
    QTest::newRow("unknown option") << QStringList{u"list"_s, u"--fast"_s} << 2 << help;
    QTest::newRow("missing argument") << QStringList{u"info"_s} << 2 << help;
    QTest::newRow("nothing to run") << QStringList{u"run"_s} << 2 << help;
    QTest::newRow("two things to run") << QStringList{u"run"_s, u"a/b"_s, u"--standalone"_s, u"x.js"_s} << 2 << help;
    QTest::newRow("a wait that is no number") << QStringList{u"run"_s, u"a/b"_s, u"--wait"_s, u"long"_s} << 2 << help;
    QTest::newRow("a negative wait") << QStringList{u"run"_s, u"a/b"_s, u"--wait"_s, u"-1"_s} << 2 << help;
    QTest::newRow("a context that is no object")
        << QStringList{u"run"_s, u"a/b"_s, u"--context"_s, u"[1]"_s} << 2 << help;
    QTest::newRow("a setting that is no JSON") << QStringList{u"list"_s, u"--default"_s, u"Key=text"_s} << 2 << help;
    QTest::newRow("a setting without a value") << QStringList{u"list"_s, u"--default"_s, u"Key"_s} << 2 << help;
    QTest::newRow("a setting that is an object") << QStringList{u"list"_s, u"--default"_s, u"Key={}"_s} << 2 << help;
    QTest::newRow("help") << QStringList{u"--help"_s} << 0 << QString();
    QTest::newRow("help of a command") << QStringList{u"run"_s, u"--help"_s} << 0 << QString();
    QTest::newRow("version") << QStringList{u"--version"_s} << 0 << QString();
    QTest::newRow("an argument behind an option that may be repeated") << QStringList{u"info"_s, u"--folder"_s,
        examples + u"/plugins"_s, u"com.example.tidy-layers"_s} << 0 << QString();
    QTest::newRow("no plug-ins") << QStringList{u"list"_s} << 0 << QString();
    QTest::newRow("unknown plug-in") << QStringList{u"info"_s, u"none"_s} << 1
                                     << u"korvan-plugins: There is no plug-in \"none\"."_s;
    QTest::newRow("unknown command of a plug-in") << QStringList{u"run"_s,
        u"none/run"_s} << 1 << u"korvan-plugins: There is no command \"none/run\". No plug-in here has any."_s;
    QTest::newRow("a misspelt command")
        << QStringList{u"--folder"_s, examples + u"/plugins"_s, u"run"_s, u"com.example.card-deck/mak"_s} << 1
        << u"korvan-plugins: There is no command \"com.example.card-deck/mak\". Did you mean "
           "\"com.example.card-deck/make\"?"_s;
    QTest::newRow("a command in a folder that is not there")
        << QStringList{u"--folder"_s, u"nosuch"_s, u"run"_s, u"none/run"_s} << 1
        << u"korvan-plugins: There is no command \"none/run\". The folder \"nosuch\" does not exist."_s;
    QTest::newRow("missing standalone script") << QStringList{u"run"_s, u"--standalone"_s,
        u"none.js"_s} << 1 << u"korvan-plugins: Cannot read the script \"none.js\": No such file or directory"_s;
}

void tst_CommandLine::exitCodes()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);

    const auto finished = run(arguments);
    QTEST(finished.exitCode, "exitCode");
    QCOMPARE(finished.errors.isEmpty() ? QString() : finished.errors.last(), message);
}

void tst_CommandLine::listSortsByIdentifierAndDescribesEverything()
{
    plugin(u"Second"_s, R"({"identifier": "b"})");
    plugin(u"First"_s, R"({"identifier": "a", "name": "First", "version": 2, "author": "Ada", "authorEmail": "a@b.c",
        "description": "Does it", "homepage": "https://example.com/x y", "appcast": "https://example.com/feed.json",
        "suppliesData": true, "compatibleVersion": "97", "maxCompatibleVersion": "98", "icon": "i/i.png",
        "commands": [{"script": "script.js", "shortcut": "Cmd Shift K", "scope": "application"}]})");

    const auto finished = run({u"--folder"_s, u"plugins"_s, u"list"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    const auto plugins = finished.json().value(u"plugins"_s).toArray();
    QCOMPARE(plugins.size(), 2);
    QCOMPARE(plugins[1].toObject().value(u"identifier"_s).toString(), u"b"_s);
    const auto path = QDir(m_folder->path()).canonicalPath() + u"/plugins/First.korvanplugin"_s;
    const QJsonObject command{{u"identifier"_s, u"script"_s}, {u"name"_s, u"script"_s}, {u"script"_s, u"script.js"_s},
        {u"handlers"_s,
            QJsonObject{{u"run"_s, u"onRun"_s}, {u"setUp"_s, u"onSetUp"_s}, {u"tearDown"_s, u"onTearDown"_s}}},
        {u"shortcut"_s, u"Cmd Shift K"_s}, {u"shortcutKey"_s, u"k"_s}, {u"shortcutModifiers"_s, 0x120000},
        {u"scope"_s, u"application"_s}, {u"hasRunHandler"_s, true}};
    const QJsonObject expected{{u"identifier"_s, u"a"_s}, {u"name"_s, u"First"_s}, {u"version"_s, u"2"_s},
        {u"path"_s, path}, {u"enabled"_s, true}, {u"incompatible"_s, false}, {u"compatible"_s, true},
        {u"author"_s, u"Ada"_s}, {u"authorEmail"_s, u"a@b.c"_s}, {u"description"_s, u"Does it"_s},
        {u"homepage"_s, u"https://example.com/x%20y"_s}, {u"appcast"_s, u"https://example.com/feed.json"_s},
        {u"suppliesData"_s, true}, {u"compatibleVersion"_s, u"97"_s}, {u"maxCompatibleVersion"_s, u"98"_s},
        {u"icon"_s, u"i/i.png"_s}, {u"commands"_s, QJsonArray{command}}};
    QCOMPARE(plugins[0].toObject(), expected);
    const auto absent = plugins[1].toObject();
    for (const auto &key : {u"author"_s, u"authorEmail"_s, u"description"_s, u"homepage"_s, u"appcast"_s,
             u"compatibleVersion"_s, u"maxCompatibleVersion"_s, u"icon"_s})
        QVERIFY2(absent.value(key).isNull() && absent.contains(key), qPrintable(key));
}

void tst_CommandLine::listKeepsTheManifestsOrder()
{
    plugin(u"P"_s, R"({"identifier": "p", "commands": [
        {"script": "script.js", "identifier": "zebra", "handlers": {"z": "1", "run": "2", "a": "3"}},
        {"script": "script.js", "identifier": "apple"}]})");
    const auto output = run({u"--folder"_s, u"plugins"_s, u"--json"_s, u"list"_s}).output;
    QVERIFY(output.indexOf("\"zebra\"") < output.indexOf("\"apple\""));
    QVERIFY(output.indexOf("\"z\"") < output.indexOf("\"run\""));
    QVERIFY(output.indexOf("\"run\"") < output.indexOf("\"a\""));
}

void tst_CommandLine::loaderErrorsGoToStandardError()
{
    plugin(u"Bad"_s, "[]");
    const auto finished = run({u"--folder"_s, u"plugins"_s, u"list"_s, u"--json"_s});
    const auto folder = QDir(m_folder->path()).canonicalPath();
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json().value(u"plugins"_s).toArray(), QJsonArray());
    QCOMPARE(finished.errors,
        QStringList{
            u"Unable to parse manifest.json at URL: file://%1/plugins/Bad.korvanplugin/Contents/Korvan/manifest.json error: (null)"_s
                .arg(folder)});
}

void tst_CommandLine::safeModeDisablesEverything()
{
    plugin(u"P"_s, R"({"identifier": "p"})");
    const auto isEnabled = [this](const QStringList &options) {
        const auto plugins = run(options + QStringList{u"--folder"_s, u"plugins"_s, u"--json"_s, u"list"_s})
                                 .json()
                                 .value(u"plugins"_s)
                                 .toArray();
        return plugins[0].toObject().value(u"enabled"_s).toBool();
    };
    QVERIFY(isEnabled({}));
    QVERIFY(!isEnabled({u"--safe-mode"_s}));
}

void tst_CommandLine::foldersKeepTheirOrder()
{
    for (const auto &folder : {u"one"_s, u"two"_s}) {
        writeFile(m_folder->filePath(folder + u"/P.korvanplugin/Contents/Korvan/manifest.json"_s),
            R"({"identifier": "p", "name": ")" + folder.toUtf8() + "\"}");
    }
    const auto nameWith = [this](const QStringList &folders) {
        const auto plugins = run(folders + QStringList{u"list"_s, u"--json"_s}).json().value(u"plugins"_s).toArray();
        return plugins[0].toObject().value(u"name"_s).toString();
    };
    QCOMPARE(nameWith({u"--folder"_s, u"one"_s, u"--folder"_s, u"two"_s}), u"two"_s);
    QCOMPARE(nameWith({u"--folder"_s, u"two"_s, u"--folder"_s, u"one"_s}), u"one"_s);
}

void tst_CommandLine::usualFoldersComeFromTheSettings()
{
    writeFile(m_folder->filePath(u"support/Plugins/A.korvanplugin/Contents/Korvan/manifest.json"_s),
        R"({"identifier": "a"})");
    plugin(u"B"_s, R"({"identifier": "b"})");
    const auto extra = u"AdditionalPluginFolders=[\"%1\", \"/no/such/folder\"]"_s.arg(m_folder->filePath(u"plugins"_s));
    const auto finished = run({u"--support-dir"_s, u"support"_s, u"--default"_s, extra, u"--json"_s, u"list"_s});
    QCOMPARE(finished.json().value(u"plugins"_s).toArray().size(), 2);

    writeFile(m_folder->filePath(u"settings.ini"_s),
        "[General]\nAdditionalPluginFolders=" + m_folder->filePath(u"plugins"_s).toUtf8() + "\n");
    const auto fromFile =
        run({u"--support-dir"_s, u"support"_s, u"--defaults"_s, u"settings.ini"_s, u"--json"_s, u"list"_s});
    QCOMPARE(fromFile.json().value(u"plugins"_s).toArray().size(), 2);
}

void tst_CommandLine::hostVersionDecidesCompatibility()
{
    plugin(u"P"_s, R"({"identifier": "p", "compatibleVersion": "50", "maxCompatibleVersion": "60"})");
    const auto isCompatible = [this](const QString &version) {
        return run({u"--folder"_s, u"plugins"_s, u"--host-version"_s, version, u"--json"_s, u"info"_s, u"p"_s})
            .json()
            .value(u"compatible"_s)
            .toBool();
    };
    QVERIFY(isCompatible(u"60.9"_s));
    QVERIFY(!isCompatible(u"61"_s));
}

void tst_CommandLine::infoTakesIdentifierOrPath()
{
    plugin(u"P"_s, R"({"identifier": "p", "version": "1.5", "menu": {"title": "T", "items": ["-"]}})");
    const auto path = m_folder->filePath(u"plugins/P.korvanplugin"_s);
    const auto installed = run({u"--folder"_s, u"plugins"_s, u"info"_s, u"p"_s, u"--json"_s}).json();
    const auto byPath = run({u"--folder"_s, u"empty"_s, u"info"_s, path, u"--json"_s}).json();
    QCOMPARE(installed.value(u"versionedIdentifier"_s).toString(), u"p(1.5)"_s);
    QCOMPARE(installed.value(u"menuDescription"_s).toObject(),
        QJsonObject({{u"title"_s, u"T"_s}, {u"items"_s, QJsonArray{u"-"_s}}}));
    QCOMPARE(byPath, installed);

    const auto missing = run({u"info"_s, u"none"_s, u"--json"_s});
    QCOMPARE(missing.exitCode, 1);
    QCOMPARE(
        missing.json(), QJsonObject({{u"error"_s, QJsonObject{{u"message"_s, u"There is no plug-in \"none\"."_s}}}}));
}

void tst_CommandLine::runLogsAndReturns()
{
    plugin(u"P"_s, R"({"identifier": "p", "commands": [{"script": "script.js", "identifier": "c"}]})",
        "function onRun() { print('one'); console.log({a: [1]}); return {x: 1.5, y: null}; }");
    const auto finished = run({u"--folder"_s, u"plugins"_s, u"run"_s, u"p/c"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    const QJsonObject expected{{u"log"_s,
                                   QJsonArray{QJsonObject{{u"level"_s, u"log"_s}, {u"stringValue"_s, u"one"_s}},
                                       QJsonObject{{u"level"_s, u"log"_s}, {u"stringValue"_s, u"{\"a\": [1]}"_s}}}},
        {u"returnValue"_s, QJsonObject{{u"x"_s, 1.5}, {u"y"_s, QJsonValue::Null}}},
        {u"logString"_s, u"one\n{\"a\": [1]}"_s}, {u"finished"_s, true}};
    QCOMPARE(finished.json(), expected);

    const auto forPeople = run({u"--folder"_s, u"plugins"_s, u"run"_s, u"p/c"_s});
    QCOMPARE(forPeople.output, QByteArray("one\n{\"a\": [1]}\n→ {\"x\": 1.5, \"y\": null}\n"));
}

void tst_CommandLine::runWorksOnADocument()
{
    const auto document = examples + u"/documents/poster.json"_s;
    const auto result = m_folder->filePath(u"result.json"_s);
    const auto finished = run({u"--folder"_s, examples + u"/plugins"_s, u"run"_s, u"com.example.rename-layers/number"_s,
        u"--document"_s, document, u"--dump-document"_s, result, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json().value(u"returnValue"_s).toInt(), 2);

    QFile file(result);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto changed = QJsonDocument::fromJson(file.readAll()).object();
    const auto layers = changed.value(u"layers"_s).toArray();
    QCOMPARE(layers[1].toObject().value(u"name"_s).toString(), u"01 Sun"_s);
    QCOMPARE(layers[0].toObject().value(u"name"_s).toString(), u"Background"_s);
    QCOMPARE(changed.value(u"selection"_s).toArray(), QJsonArray({u"sun"_s, u"title"_s}));

    const auto missing = run({u"--folder"_s, examples + u"/plugins"_s, u"run"_s, u"com.example.rename-layers/number"_s,
        u"--document"_s, u"none.json"_s, u"--dump-document"_s, m_folder->filePath(u"not-made.json"_s), u"--json"_s});
    QCOMPARE(missing.exitCode, 1);
    QVERIFY(missing.json().contains(u"error"_s));
    QVERIFY(!QFile::exists(m_folder->filePath(u"not-made.json"_s)));
}

void tst_CommandLine::runPassesTheContext()
{
    plugin(u"P"_s, R"({"identifier": "p", "commands": [{"script": "script.js", "identifier": "c"}]})",
        "function onRun(context) { return [context.a, context.deep.b, 'document' in context, 'selection' in context, "
        "context.command.identifier(), context.plugin.identifier()]; }");
    const auto finished = run({u"--folder"_s, u"plugins"_s, u"run"_s, u"p/c"_s, u"--context"_s,
        uR"({"a": 1, "deep": {"b": [true]}})"_s, u"--json"_s});
    QCOMPARE(finished.json().value(u"returnValue"_s).toArray(),
        QJsonArray({1, QJsonArray{true}, false, false, u"c"_s, u"p"_s}));
}

void tst_CommandLine::runWaitsForPromisesAndTimers()
{
    plugin(u"P"_s, R"({"identifier": "p", "commands": [{"script": "script.js", "identifier": "c"}]})",
        "async function onRun() { await new Promise((done) => setTimeout(done, 20)); print('late'); return 7; }");
    const auto finished = run({u"--folder"_s, u"plugins"_s, u"run"_s, u"p/c"_s, u"--json"_s}).json();
    QCOMPARE(finished.value(u"returnValue"_s).toInt(), 7);
    QCOMPARE(finished.value(u"logString"_s).toString(), u"late"_s);
    QVERIFY(finished.value(u"finished"_s).toBool());
}

void tst_CommandLine::runGivesUpWaiting()
{
    plugin(u"P"_s, R"({"identifier": "p", "commands": [{"script": "script.js", "identifier": "c"}]})",
        "function onRun() { __command.setStayRunning(true); return 'here'; }");
    const auto finished = run({u"--folder"_s, u"plugins"_s, u"run"_s, u"p/c"_s, u"--wait"_s, u"0.05"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json().value(u"finished"_s).toBool(true), false);
    QCOMPARE(finished.json().value(u"returnValue"_s).toString(), u"here"_s);
}

void tst_CommandLine::handlersShareALivingSession()
{
    const auto arguments = QStringList{u"--folder"_s, examples + u"/plugins"_s, u"run"_s,
        u"com.example.layer-watcher/watch"_s, u"--document"_s, examples + u"/documents/poster.json"_s, u"--handler"_s,
        u"run"_s, u"--handler"_s, u"stop"_s, u"--json"_s};
    const auto finished = run(arguments);
    QCOMPARE(finished.exitCode, 0);
    const auto runs = finished.json().value(u"runs"_s).toArray();
    QCOMPARE(runs.size(), 2);
    QCOMPARE(runs[0].toObject().value(u"logString"_s).toString(), u"Watching 7 layers"_s);
    QCOMPARE(runs[1].toObject().value(u"logString"_s).toString(), u"Watching no more"_s);
    QVERIFY(runs[1].toObject().value(u"finished"_s).toBool());
}

void tst_CommandLine::returnValueIsWhatJSONCanHold()
{
    plugin(u"P"_s, R"({"identifier": "p", "commands": [{"script": "script.js", "identifier": "c"}]})",
        "function onRun(context) { return [undefined, () => 1, context.command, NaN, new Date(0), 'text']; }");
    const auto finished = run({u"--folder"_s, u"plugins"_s, u"run"_s, u"p/c"_s, u"--json"_s}).json();
    const auto null = QJsonValue::Null;
    QCOMPARE(finished.value(u"returnValue"_s).toArray(),
        QJsonArray({null, null, null, null, u"1970-01-01T00:00:00.000Z"_s, u"text"_s}));
}

void tst_CommandLine::longestPluginIdentifierWins()
{
    plugin(u"Short"_s, R"({"identifier": "a", "commands": [{"script": "script.js", "identifier": "b/c"}]})",
        "function onRun() { return 'short'; }");
    const auto spec = QStringList{u"--folder"_s, u"plugins"_s, u"run"_s, u"a/b/c"_s, u"--json"_s};
    QCOMPARE(run(spec).json().value(u"returnValue"_s).toString(), u"short"_s);
    plugin(u"Long"_s, R"({"identifier": "a/b", "commands": [{"script": "script.js", "identifier": "c"}]})",
        "function onRun() { return 'long'; }");
    QCOMPARE(run(spec).json().value(u"returnValue"_s).toString(), u"long"_s);
}

void tst_CommandLine::standaloneScriptHasTheDocumentAtHand()
{
    writeFile(m_folder->filePath(u"scripts/count layers.v1.js"_s),
        "print(doc.name() + ' ' + selection.length);\nreturn korvan.command.identifier();\n");
    const auto finished = run({u"run"_s, u"--standalone"_s, u"scripts/count layers.v1.js"_s, u"--document"_s,
        examples + u"/documents/poster.json"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json().value(u"logString"_s).toString(), u"Poster 2"_s);
    QCOMPARE(finished.json().value(u"returnValue"_s).toString(), u"count layers.v1"_s);
}

void tst_CommandLine::standaloneErrorsHaveTheAuthorsLines_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("place");
    QTest::newRow("thrown") << QByteArray("var x = 1;\nx.none.more;\n") << u"bad.js:2:"_s;
    QTest::newRow("a bracket too many") << QByteArray("print(1);\n  print(2));\n") << u"bad.js:2:11"_s;
    QTest::newRow("a bracket too few, one line") << QByteArray("if (true) { print(1)") << u"bad.js:1:20"_s;
    QTest::newRow("a bracket too few, several lines") << QByteArray("if (true) {\n  print(1)\n\n") << u"bad.js:2:10"_s;
}

void tst_CommandLine::standaloneErrorsHaveTheAuthorsLines()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, place);
    writeFile(m_folder->filePath(u"bad.js"_s), script);
    const auto finished = run({u"run"_s, u"--standalone"_s, u"bad.js"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    QVERIFY2(finished.json().value(u"logString"_s).toString().contains(place), finished.output.constData());
}

void tst_CommandLine::everyExampleMistakeIsReported_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("error");

    QTest::newRow("syntax") << u"syntax"_s
                            << u"SyntaxError: Unexpected token ';'\n    at Contents/Korvan/syntax.js:2:44"_s;
    QTest::newRow("while loading")
        << u"loading"_s << u"ReferenceError: Can't find variable: context\n    at Contents/Korvan/loading.js:2:23"_s;
    QTest::newRow("in a handler") << u"handler"_s
                                  << u"Uncaught script exception: TypeError: null is not an object (evaluating "
                                     "'layer.frame')\n    at widthOf (Contents/Korvan/mistakes.js:6:17)\n    at divide "
                                     "(Contents/Korvan/mistakes.js:2:19)"_s;
    QTest::newRow("in a timer") << u"timer"_s
                                << u"Error: Too late to be caught\n    at Contents/Korvan/mistakes.js:11:24"_s;
    QTest::newRow("in a promise")
        << u"promise"_s
        << u"TypeError: A promise that is not kept\n    at promised (Contents/Korvan/mistakes.js:17:24)"_s;
    QTest::newRow("missing module")
        << u"module"_s
        << u"Uncaught script exception: Error: Cannot find module './not-here'.\n    at needy "
           "(Contents/Korvan/mistakes.js:21:19)"_s;
    QTest::newRow("missing handler") << u"missing"_s
                                     << u"Error in command Missing Handler Script at path %1/plugins/Broken "
                                        "Script.korvanplugin/Contents/Korvan/mistakes.js does not contain a handler "
                                        "function named: nowhere."_s.arg(QDir(examples).canonicalPath());
}

void tst_CommandLine::everyExampleMistakeIsReported()
{
    QFETCH(QString, command);
    QFETCH(QString, error);

    const auto finished =
        run({u"--folder"_s, examples + u"/plugins"_s, u"run"_s, u"com.example.broken-script/"_s + command,
            u"--document"_s, examples + u"/documents/poster.json"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    const QJsonArray log{QJsonObject{{u"level"_s, u"error"_s}, {u"stringValue"_s, error}}};
    QCOMPARE(finished.json().value(u"log"_s).toArray(), log);
    QVERIFY(finished.json().value(u"finished"_s).toBool());
}

void tst_CommandLine::timeLimitNamesTheCommand()
{
    const auto finished = run({u"--folder"_s, examples + u"/plugins"_s, u"run"_s,
        u"com.example.broken-script/endless"_s, u"--default"_s, u"KRPluginScriptTimeLimit=0.2"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    QVERIFY(finished.json()
                .value(u"logString"_s)
                .toString()
                .contains(u"The script of the command \"com.example.broken-script/endless\" was stopped"_s));
    QVERIFY(finished.json().value(u"finished"_s).toBool());
}

void tst_CommandLine::compareVersions_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("result");

    QTest::newRow("older") << u"1.0-beta"_s << u"1.0"_s << -1;
    QTest::newRow("equal") << u"v1"_s << u"1.0"_s << 0;
    QTest::newRow("newer") << u"1.10"_s << u"1.9"_s << 1;
}

void tst_CommandLine::compareVersions()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    const auto finished = run({u"compare-versions"_s, first, second, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    QTEST(finished.json().value(u"result"_s).toInt(99), "result");
}

void tst_CommandLine::jsonStandsBeforeOrAfterTheCommand()
{
    const auto before = run({u"--json"_s, u"compare-versions"_s, u"1"_s, u"2"_s});
    const auto after = run({u"compare-versions"_s, u"1"_s, u"2"_s, u"--json"_s});
    QCOMPARE(before.output, after.output);
    QVERIFY(!before.json().isEmpty());
}

void tst_CommandLine::demoShowsTheMainJob()
{
    const auto examplePlugins = QDir(examples + u"/plugins"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();

    const auto finished = run({u"demo"_s});
    QCOMPARE(finished.exitCode, 0);
    QVERIFY(finished.output.contains(QByteArray::number(examplePlugins) + " plug-ins were found"));
    for (const auto *const text : {"Report Colours              Ctrl+Shift+P", "Sun → 01 Sun", "+ Note on 01 Sun",
             "Renamed: 01 Sun → Renamed by the user", "SyntaxError", "The document was saved and read again",
             "The user disables Colour Palette", "Colours of the Day"})
        QVERIFY2(finished.output.contains(text), text);

    const auto json = run({u"demo"_s, u"--json"_s});
    QCOMPARE(json.exitCode, 0);
    QVERIFY(json.json().value(u"ok"_s).toBool());
}

void tst_CommandLine::noColoursWithoutATerminal()
{
    QVERIFY(!run({u"demo"_s}).output.contains('\033'));
}

void tst_CommandLine::helpManualAndCompletionsKnowEveryOption()
{
    QStringList words;
    const QRegularExpression option(u"^ +(?:-h,)?(--[a-z-]+)"_s, QRegularExpression::MultilineOption);
    const QRegularExpression command(u"^  ([a-z-]+) "_s, QRegularExpression::MultilineOption);
    const auto help = QString::fromUtf8(run({u"--help"_s}).output);
    const auto commandList = help.mid(help.indexOf(u"Subcommands:"_s));
    QStringList commands;
    for (auto match = command.globalMatch(commandList); match.hasNext();)
        commands.append(match.next().captured(1));
    QVERIFY(commands.size() >= 5);
    auto pages = help;
    for (const auto &name : commands)
        pages += QString::fromUtf8(run({name, u"--help"_s}).output);
    for (auto match = option.globalMatch(pages); match.hasNext();)
        words.append(match.next().captured(1));
    words.removeDuplicates();
    QVERIFY(words.size() >= 16);

    for (const auto *const name : {"korvan-plugins.1", "completions/korvan-plugins.bash", "completions/_korvan-plugins",
             "completions/korvan-plugins.fish"}) {
        QFile file(QStringLiteral(KORVAN_SOURCE_DIR "/apps/korvan-plugins/") + QLatin1String(name));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto text = QString::fromUtf8(file.readAll()).remove(QRegularExpression(u"\\\\f[BIR]"_s)).remove(u'\\');
        for (const auto &word : words + commands) {
            const auto bare = QString(word).remove(QRegularExpression(u"^--"_s));
            QVERIFY2(text.contains(QRegularExpression(
                         u"(^|[^a-z-])(--)?%1($|[^a-z-])"_s.arg(bare), QRegularExpression::MultilineOption)),
                qPrintable(u"%1 is not in %2"_s.arg(word, QLatin1String(name))));
        }
    }
}

QTEST_GUILESS_MAIN(tst_CommandLine)
#include "tst_commandline.moc"
