// Checking plug-ins for their authors: each row is one broken bundle with everything that is reported of it.

#include "ValidateFixture.h"

using namespace Qt::StringLiterals;

class tst_CommandLine_Validate : public QObject, private ValidateFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void syntax_data();
    void syntax();
    void schema_data();
    void schema();
    void rules_data();
    void rules();
    void handlers_data();
    void handlers();
    void scripts_data();
    void scripts();
    void bundles_data();
    void bundles();
    void examplesAreGood();
    void schemaIsWhatEditorsRead();
    void forPeople();
    void nothingThere();

private:
    static void columns()
    {
        QTest::addColumn<QByteArray>("manifest");
        QTest::addColumn<QStringList>("expected");
    }
    void compareManifest() const
    {
        QFETCH(QByteArray, manifest);
        plugin(u"x"_s, manifest);
        QTEST(reports(), "expected");
    }
};

void tst_CommandLine_Validate::syntax_data()
{
    columns();
    const auto row = [](const char *name, const QByteArray &manifest, const QString &place, const QString &message) {
        QTest::newRow(name) << manifest << QStringList{u"error manifest.json:%1: %2"_s.arg(place, message)};
    };
    row("an empty file", "", u"1:1"_s, u"Expected a value, but the text ends."_s);
    row("the text ends", "{\n  \"name\": \"a\"", u"2:14"_s, u"Expected “,” or “}”, but the text ends."_s);
    row("no value", "{\"name\": }", u"1:10"_s, u"Expected a value, but found “}”."_s);
    row("a comma too many", "{\n\"name\": \"a\",\n}", u"2:12"_s, u"A comma may not stand behind the last item."_s);
    row("a comma is missing", "{\"name\": \"a\"\n \"author\": \"b\"}", u"2:2"_s,
        u"Expected “,” or “}”, but found “\"”."_s);
    row("a colon is missing", "{\"name\" \"a\"}", u"1:9"_s, u"Expected “:”, but found “\"”."_s);
    row("a key without quotation marks", "{name: 1}", u"1:2"_s, u"Expected a key in quotation marks, but found “n”."_s);
    row("a comment", "{} // end", u"1:4"_s, u"The text goes on behind its end: “/”."_s);
    row("a string without an end", "{\"name\": \"a\n\"}", u"1:10"_s, u"The string does not end on its line."_s);
    row("a tab in a string, behind an emoji: columns count UTF-16", "{\"name\": \"😀\t\"}", u"1:13"_s,
        u"A control character in a string has to be written as \\u0009."_s);
    row("an unknown escape", "{\"name\": \"\\x\"}", u"1:11"_s, u"There is no such escape."_s);
    row("half of a character", "{\"name\": \"\\ud83d\"}", u"1:11"_s, u"The escape is half of a character."_s);
    row("a number that begins with 0", "{\"version\": 012}", u"1:13"_s, u"A number may not begin with 0."_s);
    row("a number beyond all", "{\"version\": 1e999}", u"1:13"_s, u"The number is too large."_s);
    row("a number without digits", "{\"version\": 1.}", u"1:15"_s, u"Expected a digit, but found “}”."_s);
    row("line ends of other systems", "{\r\n\r\n\"name\": x}", u"3:9"_s, u"Expected a value, but found “x”."_s);
    row("not UTF-8", "{\"name\":\n\"\xff\"}", u"2:2"_s, u"The file is not UTF-8."_s);
    row("an array", "\n []", u"2:2"_s, u"A manifest has to be an object."_s);
    row("deeper than hosts read", QByteArray(1025, '['), u"1:1025"_s, u"The text is nested more than 1,024 deep."_s);
}

void tst_CommandLine_Validate::syntax()
{
    compareManifest();
}

void tst_CommandLine_Validate::schema_data()
{
    columns();
    const auto row = [](const char *name, const QByteArray &manifest, const QString &report) {
        QTest::newRow(name) << manifest << QStringList{report};
    };
    QTest::newRow("nothing is needed") << "{}"_ba << QStringList();
    QTest::newRow("a byte-order mark, a schema")
        << "\xEF\xBB\xBF{\"$schema\": \"manifest.schema.json\"}"_ba << QStringList();
    row("an unknown key", R"({"colour": 1})", u"warning manifest.json:1:2 colour: “colour” means nothing here."_s);
    row("a key with a mistake", R"({"identifer": "a"})",
        u"warning manifest.json:1:2 identifer: “identifer” means nothing here. Do you mean “identifier”?"_s);
    row("a key twice", "{\"name\": \"a\",\n \"name\": \"b\"}",
        u"error manifest.json:2:2 name: “name” is here for the second time; only the last one counts."_s);
    row("a number for a name", R"({"name": 3})",
        u"error manifest.json:1:10 name: Expected a string, but found a number."_s);
    row("null", R"({"author": null})", u"error manifest.json:1:12 author: Expected a string, but found null."_s);
    row("a string for a boolean", R"({"suppliesData": "yes"})",
        u"error manifest.json:1:18 suppliesData: Expected a boolean, but found a string."_s);
    row("an array for a version", R"({"version": []})",
        u"error manifest.json:1:13 version: Expected a string or a number, but found an array."_s);
    row("an object of commands", R"({"commands": {}})",
        u"error manifest.json:1:14 commands: Expected an array, but found an object."_s);
    row("a command that is none", R"({"commands": ["script.js"]})",
        u"error manifest.json:1:15 commands[0]: Expected an object, but found a string."_s);
    row("a command without a script", R"({"commands": [{"name": "a"}]})",
        u"error manifest.json:1:15 commands[0].script: “script” is missing."_s);
    row("an unknown key of a command", R"({"commands": [{"script": "script.js", "shortcuts": "cmd k"}]})",
        u"warning manifest.json:1:39 commands[0].shortcuts: “shortcuts” means nothing here. Do you mean “shortcut”?"_s);
    row("another scope", R"({"commands": [{"script": "script.js", "scope": "Application"}]})",
        u"error manifest.json:1:48 commands[0].scope: “Application” is none of: document, application."_s);
    row("a handler that is no name", R"({"commands": [{"script": "script.js", "handlers": {"run": "onRun", "x": 1}}]})",
        u"error manifest.json:1:73 commands[0].handlers.x: Expected a string, but found a number."_s);
    row("handlers that are no object", R"({"commands": [{"script": "script.js", "handlers": "onRun"}]})",
        u"error manifest.json:1:51 commands[0].handlers: Expected an object, but found a string."_s);
    row("isRoot in a nested menu", R"({"menu": {"items": [{"isRoot": true}]}})",
        u"warning manifest.json:1:22 menu.items[0].isRoot: “isRoot” means nothing here."_s);
    row("a number in a menu", R"({"menu": {"items": [{"items": [1]}]}})",
        u"error manifest.json:1:32 menu.items[0].items[0]: Expected a string or an object, but found a number."_s);
    row("an empty identifier", R"({"identifier": ""})", u"error manifest.json:1:16 identifier: The text is empty."_s);
    row("a version that is none", R"({"version": "new"})",
        u"error manifest.json:1:13 version: “new” is no version such as 1.2 or 2.0-beta.1."_s);
    row("a negative version", R"({"version": -1})", u"error manifest.json:1:13 version: -1 is less than 0."_s);
    row("a bound that is no version", R"({"compatibleVersion": "1..2"})",
        u"error manifest.json:1:23 compatibleVersion: “1..2” is no version such as 1.2 or 2.0-beta.1."_s);
}

void tst_CommandLine_Validate::schema()
{
    compareManifest();
}

void tst_CommandLine_Validate::rules_data()
{
    columns();
    const auto row = [](const char *name, const QByteArray &manifest, const QString &report) {
        QTest::newRow(name) << manifest << QStringList{report};
    };
    row("a number that is another version", R"({"version": 1.10})",
        u"warning manifest.json:1:13 version: The number 1.10 is read as version 1.1. Write it as a string."_s);
    row("bounds the wrong way round", "{\"compatibleVersion\": \"98\",\n\"maxCompatibleVersion\": \"9.8\"}",
        u"error manifest.json:2:25 maxCompatibleVersion: “9.8” is lower than the compatibleVersion “98”."_s);
    row("a homepage without a scheme", R"({"homepage": "example.com"})",
        u"error manifest.json:1:14 homepage: “example.com” has no scheme: write https://…."_s);
    row("a homepage of another kind", R"({"homepage": "ftp://example.com"})",
        u"error manifest.json:1:14 homepage: “ftp://example.com” is no http or https URL."_s);
    row("a URL without a host", R"({"homepage": "https:///a"})",
        u"error manifest.json:1:14 homepage: “https:///a” names no host."_s);
    row("a feed that is not https", R"({"appcast": "http://example.com/feed.json"})",
        u"error manifest.json:1:13 appcast: “http://example.com/feed.json” is not https: hosts do not fetch it."_s);
    QTest::newRow("a feed on this computer") << R"({"appcast": "http://127.0.0.1:8000/feed.json"})"_ba << QStringList();
    row("no icon", R"({"icon": "a.png"})",
        u"error manifest.json:1:10 icon: There is no file “Contents/Resources/a.png”."_s);
    row("two commands of one name",
        "{\"commands\": [{\"script\": \"script.js\"},\n{\"name\": \"Script\", \"script\": \"script.js\"}]}",
        u"error manifest.json:2:10 commands[1].name: The identifier “script” is also that of commands[0], which this command replaces."_s);
    row("a handler beside handlers",
        R"({"commands": [{"script": "script.js", "handler": "onRun", "handlers": {"run": "onRun"}}]})",
        u"warning manifest.json:1:39 commands[0].handler: “handler” is not read beside “handlers”."_s);
    row("nothing to run", R"({"commands": [{"script": "script.js", "handlers": {"actions": {}}}]})",
        u"error manifest.json:1:51 commands[0].handlers: The command has no handler that can be run."_s);
    row("the same shortcut in other words",
        R"({"commands": [{"script": "script.js", "shortcut": "cmd shift k"},
{"identifier": "b", "script": "script.js", "shortcut": "Shift+Command+K"}]})",
        u"error manifest.json:2:56 commands[1].shortcut: The shortcut “cmd shift k” is also that of commands[0]."_s);
    row("a key of many letters", R"({"commands": [{"script": "script.js", "shortcut": "cmd F5"}]})",
        u"warning manifest.json:1:51 commands[0].shortcut: “cmd F5” is the shortcut “cmd 5”: its key is the last character, and “f” means nothing."_s);
    row("a shortcut of nothing",
        R"({"commands": [{"script": "script.js", "shortcut": "cmd k", "handlers": {"x": "onRun"}}]})",
        u"warning manifest.json:1:51 commands[0].shortcut: The command has no run handler that a shortcut could run."_s);
    row("a menu entry without a command", R"({"commands": [{"script": "script.js"}],
"menu": {"items": ["-", {"items": ["script", "skript"]}]}})",
        u"error manifest.json:2:46 menu.items[1].items[1]: There is no command “skript”. Do you mean “script”?"_s);
    row("a menu entry that cannot be run",
        R"({"commands": [{"script": "script.js", "handlers": {"x": "onRun"}}], "menu": {"items": ["script"]}})",
        u"warning manifest.json:1:88 menu.items[0]: The command “script” has no run handler."_s);
    row("no script", R"({"commands": [{"script": "lib/gone.js"}]})",
        u"error manifest.json:1:26 commands[0].script: There is no file “Contents/Korvan/lib/gone.js”."_s);
    row("a script outside", R"({"commands": [{"script": "../../../script.js"}]})",
        u"error manifest.json:1:26 commands[0].script: There is no file “Contents/Korvan/../../../script.js”."_s);
}

void tst_CommandLine_Validate::rules()
{
    compareManifest();
}

void tst_CommandLine_Validate::handlers_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("severity");
    const QString none;
    const auto error = u"error"_s;
    QTest::newRow("a function") << "function f() {}"_ba << none;
    QTest::newRow("an asynchronous generator") << "async function* f() {}"_ba << none;
    QTest::newRow("a constant") << "const a = (b, c) => { b; },\n f = () => 1"_ba << none;
    QTest::newRow("destructured") << "const { a, b: [f] } = require('util')"_ba << none;
    QTest::newRow("a class") << "class f extends Object {}"_ba << none;
    QTest::newRow("an assignment") << "f = function () {}"_ba << none;
    QTest::newRow("a member of this") << "this.f = function () {}"_ba << none;
    QTest::newRow("a member of the global object, in a function")
        << "(() => { globalThis['f'] = () => 1; })()"_ba << none;
    QTest::newRow("a variable in a block") << "if (true) { var f = () => 1 }"_ba << none;
    QTest::newRow("by another name of this") << "(function (root) { root.f = () => 1; })(this)"_ba << none;
    QTest::newRow("a global that everybody has") << "var f2 = 1"_ba << error;
    QTest::newRow("nowhere") << "function g() {}"_ba << error;
    QTest::newRow("in a comment and a string") << "// function f() {}\nvar a = 'function f() {}'"_ba << error;
    QTest::newRow("in a function") << "function g() { function f() {} var f = 1; }"_ba << error;
    QTest::newRow("a constant in a block") << "{ const f = () => 1 }"_ba << error;
    QTest::newRow("a named expression") << "var g = function f() {}"_ba << error;
    QTest::newRow("a method") << "class A { f() {} }\nvar o = { f() {}, f: 1 }"_ba << error;
    QTest::newRow("an export, which such scripts do not have") << "var exports = {}; exports.f = () => 1"_ba << error;
    QTest::newRow("a comparison") << "var g; g == f; f === g"_ba << error;
    QTest::newRow("another case") << "function F() {}"_ba << error;
    QTest::newRow("a computed name") << "for (const n of ['a']) globalThis[n] = () => 1"_ba << u"warning"_s;
    QTest::newRow("evaluated text") << "eval('var ' + 'f')"_ba << u"warning"_s;
}

void tst_CommandLine_Validate::handlers()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, severity);
    plugin(u"x"_s, R"({"commands": [{"script": "script.js", "handler": "f"}]})", script);
    const auto defines = severity == u"error"_s ? u"defines"_s : u"seems to define"_s;
    QStringList expected;
    if (!severity.isEmpty())
        expected.append(
            u"%1 manifest.json:1:50 commands[0].handler: “script.js” %2 no function “f”."_s.arg(severity, defines));
    QCOMPARE(reports(), expected);
}

void tst_CommandLine_Validate::scripts_data()
{
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("expected");
    const auto manifest = R"({"commands": [{"script": "script.js"}]})"_ba;
    QTest::newRow("broken, once for all commands")
        << R"({"commands": [{"script": "script.js"}, {"script": "script.js", "identifier": "b"}]})"_ba
        << "function onRun() {\n    return (1;\n}"_ba
        << QStringList{
               u"error script.js:2:14 commands[0].script: SyntaxError: Unexpected token ';'. Expected ')' to end a compound expression."_s};
    QTest::newRow("a brace is missing")
        << manifest << "function onRun() {\n"_ba
        << QStringList{u"error script.js:2:1 commands[0].script: SyntaxError: Unexpected end of script"_s};
    QTest::newRow("not UTF-8") << manifest << "function onRun() {}\n// \xff"_ba
                               << QStringList{u"error script.js:2:4 commands[0].script: The file is not UTF-8."_s};
    QTest::newRow("message sends") << manifest << "function onRun(c) { return [c name] }"_ba << QStringList();
    QTest::newRow("message sends that are not rewritten")
        << R"({"disableCocoaScriptPreprocessor": true, "commands": [{"script": "script.js"}]})"_ba
        << "function onRun(c) { return [c name] }"_ba
        << QStringList{
               u"error script.js:1:31 commands[0].script: SyntaxError: Unexpected identifier 'name'. Expected either a closing ']' or a ',' following an array element."_s};
    QTest::newRow("nothing is run") << manifest << "for (;;) { }\nfunction onRun() { }"_ba << QStringList();
    QTest::newRow("the handler that is taken for granted")
        << manifest << "function run() { }"_ba
        << QStringList{u"error manifest.json:1:26 commands[0].handler: “script.js” defines no function “onRun”."_s};
    QTest::newRow("handlers by key")
        << R"({"commands": [{"script": "script.js", "handlers": {"run": "onRun", "setUp": "a",
"actions": {"Save.finish": "b", "Open": "onRun"}}}]})"_ba
        << "function onRun() { }"_ba
        << QStringList{u"error manifest.json:1:77 commands[0].handlers.setUp: “script.js” defines no function “a”."_s,
               u"error manifest.json:2:28 commands[0].handlers.actions.Save.finish: “script.js” defines no function “b”."_s};
}

void tst_CommandLine_Validate::scripts()
{
    QFETCH(QByteArray, manifest);
    QFETCH(QByteArray, script);
    plugin(u"x"_s, manifest, script);
    QTEST(reports(), "expected");
}

void tst_CommandLine_Validate::bundles_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("another name")
        << u"other/x.plugin"_s << u"error ../..:1:1: The name of a plug-in's folder has to end in “.korvanplugin”."_s;
    QTest::newRow("a file") << u"other/file.korvanplugin"_s << u"error ../..:1:1: A plug-in has to be a folder."_s;
    QTest::newRow("no manifest") << u"other/empty.KorvanPlugin"_s
                                 << u"error manifest.json:1:1: There is no file “Contents/Korvan/manifest.json”."_s;
}

void tst_CommandLine_Validate::bundles()
{
    QFETCH(QString, path);
    QVERIFY(QDir(m_folder->path()).mkpath(u"other/x.plugin"_s));
    QVERIFY(QDir(m_folder->path()).mkpath(u"other/empty.KorvanPlugin"_s));
    writeFile(m_folder->filePath(u"other/file.korvanplugin"_s), "text");
    QFETCH(QString, expected);
    QCOMPARE(reports(path), QStringList{expected});
}

void tst_CommandLine_Validate::examplesAreGood()
{
    QDir folder(examples + u"/plugins"_s);
    QVERIFY(!folder.isEmpty());
    for (const auto &name : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const auto finished = run({u"validate"_s, folder.filePath(name), u"--json"_s});
        const bool isBroken = name == u"Broken Script.korvanplugin"_s;
        const auto problems = finished.json()[u"bundles"_s].toArray()[0].toObject()[u"problems"_s].toArray();
        QCOMPARE(problems.size(), isBroken ? 3 : 0);
        QCOMPARE(finished.exitCode, isBroken ? 1 : 0);
    }
}

void tst_CommandLine_Validate::schemaIsWhatEditorsRead()
{
    QFile file(QStringLiteral(KORVAN_SOURCE_DIR "/docs/schemas/manifest.schema.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto keys = QJsonDocument::fromJson(file.readAll()).object()[u"properties"_s].toObject().keys();
    QVERIFY(keys.contains(u"commands"_s));
    for (const auto &key : keys) { // each is known, and none may hold null
        plugin(u"x"_s, "{\"" + key.toUtf8() + "\": null}");
        const auto found = reports();
        QCOMPARE(found.size(), 1);
        QVERIFY2(found[0].startsWith(u"error manifest.json"_s) && found[0].contains(u"but found null"),
            qPrintable(found[0]));
    }
}

void tst_CommandLine_Validate::forPeople()
{
    plugin(u"x"_s, "{\"colour\": 1,\n\"name\": 2}");
    plugin(u"y"_s, "{");
    const auto finished = run({u"validate"_s, u"plugins/x.korvanplugin"_s, u"plugins/y.korvanplugin"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(QString::fromUtf8(finished.output),
        u"plugins/x.korvanplugin/Contents/Korvan/manifest.json:1:2: warning: “colour” means nothing here. (colour)\n"
        "plugins/x.korvanplugin/Contents/Korvan/manifest.json:2:9: error: Expected a string, but found a number. "
        "(name)\n"
        "plugins/y.korvanplugin/Contents/Korvan/manifest.json:1:2: error: Expected a key in quotation marks, but the "
        "text ends.\n"
        "2 plug-ins checked: 2 errors, 1 warning.\n"_s);
}

void tst_CommandLine_Validate::nothingThere()
{
    plugin(u"x"_s, "{}");
    const auto finished = run({u"--json"_s, u"validate"_s, u"plugins/x.korvanplugin"_s, u"gone.korvanplugin"_s});
    QCOMPARE(finished.exitCode, 1);
    const QJsonObject error{{u"message"_s, u"There is no file \"gone.korvanplugin\"."_s}};
    QCOMPARE(finished.json(), (QJsonObject{{u"error"_s, error}}));
    QCOMPARE(run({u"validate"_s}).exitCode, 2);
}

QTEST_GUILESS_MAIN(tst_CommandLine_Validate)
#include "tst_commandline_validate.moc"
