// The typings say what is there: compared with what scripts find, and with what a compiler makes of scripts.

#include "platform/FileReading.h"
#include "platform/JSONText.h"
#include "resources/ModuleFixture.h"
#include "support/Guides.h"
#include "support/servers/ChildProcess.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const auto sources = QStringLiteral(KORVAN_SOURCE_DIR);
const auto typings = sources + u"/resources/typings"_s;

/// What the program prints, errors too.
QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    const QTemporaryDir folder;
    const auto output = folder.filePath(u"output"_s);
    ChildProcess({program, arguments, folder.path(), output, {}}).waitForEnd();
    return readFile(output.toUtf8(), 1024 * 1024).value();
}

/// What the compiler says of the files, with the options of an author's editor.
QString complaintsAbout(const QStringList &files, const QVariantMap &furtherOptions = {})
{
    const QTemporaryDir folder;
    QVariantMap options{{u"allowJs"_s, true}, {u"noEmit"_s, true}};
    options.insert(furtherOptions);
    const QVariantMap project{
        {u"extends"_s, typings + u"/jsconfig.json"_s},
        {u"compilerOptions"_s, options},
        {u"files"_s, files + QStringList{typings + u"/index.d.ts"_s, typings + u"/testing.d.ts"_s}},
        {u"include"_s, QVariantList()},
    };
    QFile file(folder.filePath(u"tsconfig.json"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(jsonFromVariant(project, JSONStyle::Compact)) < 0)
        return file.errorString();
    file.close();
    return QString::fromUtf8(outputOf(
        QStringLiteral(KORVAN_NODE), {QStringLiteral(KORVAN_TYPESCRIPT "/bin/tsc"), u"-p"_s, file.fileName()}));
}

QStringList scriptsIn(const QString &folder)
{
    QStringList scripts;
    QDirIterator files(folder, {u"*.js"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        scripts.append(files.next());
    scripts.sort();
    return scripts;
}

/// What the compiler sees, as tests/resources/typings/names.mjs prints it.
const QVariantMap &namesInTypings()
{
    static const QVariantMap names = [] {
        const auto text = outputOf(QStringLiteral(KORVAN_NODE),
            {sources + u"/tests/resources/typings/names.mjs"_s, QStringLiteral(KORVAN_TYPESCRIPT "/lib/typescript.js"),
                typings});
        const auto value = variantFromJSON(text);
        return value ? value.value().toMap() : QVariantMap{{u"error"_s, text}};
    }();
    return names;
}

/// The names of an object and of those that it inherits from, but for those of every object and every function. Names
/// that begin with an underscore are the implementation's.
constexpr auto namesFunction = R"(
    function namesOf(value) {
        const everywhere = ['constructor', 'prototype', 'arguments', 'caller', 'super_'];
        if (typeof value === 'function')
            everywhere.push('length', 'name');
        const names = new Set();
        for (let object = value; object && object !== Object.prototype && object !== Function.prototype;
             object = Object.getPrototypeOf(object)) {
            for (const name of Object.getOwnPropertyNames(object)) {
                if (!everywhere.includes(name) && !name.startsWith('_'))
                    names.add(name);
            }
        }
        return [...names].sort().join(' ');
    }
)";

QStringList namesAtRunTime(const QString &expression)
{
    ModuleFixture fixture;
    fixture.setDocument("{}");
    const auto lines = fixture.run(namesFunction + ("print(namesOf("_ba + expression.toUtf8() + "));"));
    return lines.value(0).split(u' ');
}

} // namespace

class tst_Typings : public QObject
{
    Q_OBJECT

private slots:
    void typingsOfTheHostAreCurrent();
    void examplesHaveNoMistakes_data();
    void examplesHaveNoMistakes();
    void examplesOfGuidesHaveNoMistakes_data();
    void examplesOfGuidesHaveNoMistakes();
    void mistakesAreReported_data();
    void mistakesAreReported();
    void modulesHaveWhatTheirTypingsSay_data();
    void modulesHaveWhatTheirTypingsSay();
    void objectsHaveWhatTheirTypingsSay_data();
    void objectsHaveWhatTheirTypingsSay();
    void globalsAreWhatTheTypingsSay();
};

void tst_Typings::typingsOfTheHostAreCurrent()
{
    QFile file(typings + u"/host.d.ts"_s);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto generated = outputOf(QStringLiteral(KORVAN_TYPINGS_PROGRAM), {});
    QVERIFY2(file.readAll() == generated, "Run ./dev typings: the tables of what scripts may use have changed.");
}

void tst_Typings::examplesHaveNoMistakes_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("plug-ins") << sources + u"/examples/plugins"_s;
    QTest::newRow("templates") << sources + u"/examples/templates"_s;
}

void tst_Typings::examplesHaveNoMistakes()
{
    QFETCH(QString, folder);
    QStringList scripts;
    for (const auto &script : scriptsIn(folder)) {
        // One is made of mistakes, the other's messages in brackets are none of the language.
        if (!script.contains(u"/Broken Script."_s) && !script.contains(u"/Bracket Notes."_s))
            scripts.append(script);
    }
    QVERIFY(!scripts.isEmpty());
    QCOMPARE(complaintsAbout(scripts), QString());
}

void tst_Typings::examplesOfGuidesHaveNoMistakes_data()
{
    QTest::addColumn<QString>("name");
    for (const auto &name :
        {u"first-plugin.md"_s, u"scripts.md"_s, u"plugin-api.md"_s, u"node-modules.md"_s, u"plugin-authors.md"_s})
        QTest::newRow(qPrintable(name)) << name;
}

void tst_Typings::examplesOfGuidesHaveNoMistakes()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;
    QStringList scripts;
    for (const auto &block : blocksOfGuide(name)) {
        if (block.language != u"js" || block.remark(u"no JavaScript"_s) || block.remark(u"with a mistake"_s))
            continue;
        // What stands there is the inside of a handler, or a whole file.
        const bool isFile =
            block.text.contains(u"function on") || block.text.contains(u"\nit(") || block.text.contains(u"describe(");
        QFile script(folder.filePath(u"example%1.js"_s.arg(scripts.size() + 1)));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write(isFile
                ? block.text.toUtf8()
                : "/** @param {Korvan.Context} context */ async function onRun(context) {" + block.text.toUtf8() + "}");
        scripts.append(script.fileName());
    }
    QCOMPARE(complaintsAbout(scripts), QString());
}

void tst_Typings::mistakesAreReported_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QVariantMap>("options");
    QTest::newRow("with the options of new plug-ins") << u"mistakes.js"_s << QVariantMap();
    QTest::newRow("null and undefined") << u"nulls.js"_s << QVariantMap{{u"strictNullChecks"_s, true}};
}

void tst_Typings::mistakesAreReported()
{
    QFETCH(QString, file);
    QFETCH(QVariantMap, options);
    // The file says of its lines that the compiler has to complain; that complains of those of which it does not.
    QCOMPARE(complaintsAbout({sources + u"/tests/resources/typings/"_s + file}, options), QString());
}

void tst_Typings::modulesHaveWhatTheirTypingsSay_data()
{
    QTest::addColumn<QString>("module");
    for (const auto *const module :
        {"korvan", "korvan/async", "korvan/data-supplier", "korvan/dom", "korvan/settings", "korvan/ui", "buffer",
            "console", "events", "os", "path", "process", "querystring", "stream", "string_decoder", "timers", "util"})
        QTest::newRow(module) << QString::fromLatin1(module);
}

void tst_Typings::modulesHaveWhatTheirTypingsSay()
{
    QFETCH(QString, module);
    const auto modules = namesInTypings().value(u"modules"_s).toMap();
    QCOMPARE(namesAtRunTime(u"require('%1')"_s.arg(module)), modules.value(module).toStringList());
    const bool isOfApplication = module.startsWith(u"korvan");
    QCOMPARE(modules.contains(u"node:"_s + module), !isOfApplication);
    if (!isOfApplication)
        QCOMPARE(modules.value(u"node:"_s + module), modules.value(module));
}

void tst_Typings::objectsHaveWhatTheirTypingsSay_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("prototype");
    QTest::newRow("Hold") << u"korvan/async.Hold"_s << u"require('korvan/async').Hold.prototype"_s;
    QTest::newRow("Document") << u"korvan/dom.Document"_s << u"require('korvan/dom').Document.prototype"_s;
    QTest::newRow("Layer") << u"korvan/dom.Layer"_s << u"require('korvan/dom').Layer.prototype"_s;
    QTest::newRow("Progress") << u"korvan/ui.Progress"_s << u"require('korvan/ui').Progress.prototype"_s;
    for (const auto *const global :
        {"AbortController", "AbortSignal", "Event", "EventTarget", "URL", "URLSearchParams"}) {
        QTest::newRow(global) << QString::fromLatin1(global) << QLatin1String(global) + u".prototype"_s;
    }
    QTest::newRow("performance") << u"performance"_s << u"performance"_s;
}

void tst_Typings::objectsHaveWhatTheirTypingsSay()
{
    QFETCH(QString, name);
    QFETCH(QString, prototype);
    const auto expected = namesInTypings().value(u"classes"_s).toMap().value(name).toStringList();
    QVERIFY(!expected.isEmpty());
    QCOMPARE(namesAtRunTime(prototype), expected);
}

void tst_Typings::globalsAreWhatTheTypingsSay()
{
    ModuleFixture fixture;
    fixture.setDocument("{}");
    const QByteArray later =
        "AbortController AbortSignal Buffer DOMException Event EventTarget Headers Request Response "
        "TextDecoder TextEncoder URL URLSearchParams atob btoa fetch performance process structuredClone";
    const auto printed = fixture.run("/* " + later + " */ print(Object.getOwnPropertyNames(globalThis).join(' '));");
    auto found = printed.value(0).split(u' ');
    auto declared = namesInTypings().value(u"globals"_s).toStringList();
    QVERIFY(declared.size() > 30);
    // Only required files have these; a script has its own functions, and an engine more than the language asks for.
    for (const auto *const name : {"module", "exports"})
        QVERIFY(declared.removeOne(QString::fromLatin1(name)));
    const auto language = namesInTypings().value(u"language"_s).toStringList();
    QStringList missing;
    std::copy_if(language.begin(), language.end(), std::back_inserter(missing),
        [&](const auto &name) { return name != u"globalThis" && !found.contains(name); });
    QCOMPARE(missing, QStringList{u"SharedArrayBuffer"_s}); // for workers, which scripts have not
    const QStringList ofTheEngine{u"Float16Array"_s, u"Iterator"_s, u"WebAssembly"_s, u"onRun"_s};
    erase_if(found, [&](const auto &name) { return language.contains(name) || ofTheEngine.contains(name); });
    std::sort(found.begin(), found.end());
    std::sort(declared.begin(), declared.end());
    QCOMPARE(found, declared);
}

QTEST_GUILESS_MAIN(tst_Typings)
#include "tst_typings.moc"
