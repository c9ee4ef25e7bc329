// One run of a command that goes well: what happens, in which order, and what the handler is given.

#include "commands/KRPluginCommand.h"
#include "commands/KRPluginStandaloneScript.h"
#include "platform/script/ScriptValue.h"
#include "support/FakeCommandManager.h"
#include "support/NilableText.h"
#include "support/TestCommand.h"
#include "support/TestEnvironment.h"
#include "support/TestPlugin.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray chattyScript = R"(
    print('evaluated');
    function onSetUp(context) { print('set up'); context.mark = 'the same context'; kept = context; }
    function onRun(context) { print('run in ' + context.mark); return 'done'; }
    function onTearDown() { print('torn down with ' + kept.mark + ' and ' + arguments.length); }
    var kept;
)";
const QStringList chatter{
    u"evaluated"_s, u"set up"_s, u"run in the same context"_s, u"torn down with the same context and 0"_s};

/// A function for scripts that calls back.
QVariant native(const std::function<QVariant(const QVariantList &)> &function)
{
    return QVariant::fromValue(NativeFunction{function});
}

} // namespace

class tst_KRPluginCommand_Running : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everythingInItsOrder();
    void entryPoints_data();
    void entryPoints();
    void setUpAndTearDownAreOptional();
    void setUpAndTearDownMayBeNamedOtherwise();
    void completionComesAfterTearDown();
    void runNeedsNoManager();
    void managerIsKeptWeakly();

    void contextHasItsFourKeys();
    void contextWithoutPlugin();
    void contextKeepsTheCallersKeys();
    void contextOfTheCallerIsNotChanged();
    void contextIsLiveForTheHost();
    void contextIsEmptyAfterwards();
    void scriptFromTextStandsInTheUnsavedPlugin();
    void contextPathMayHoldAnyBytes();

    void commandIsAGlobal();
    void environmentNamesTheScript();
    void scriptHandedOverIsKept();
    void standaloneScriptRuns();
    void returnValue_data();
    void returnValue();
    void returnValueStaysWithoutAHandler();

private:
    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<FakeCommandManager> m_manager;
};

void tst_KRPluginCommand_Running::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_manager = std::make_unique<FakeCommandManager>();
}

void tst_KRPluginCommand_Running::cleanup()
{
    m_manager.reset();
    m_environment.reset();
}

void tst_KRPluginCommand_Running::everythingInItsOrder()
{
    const TestPlugin plugin(*m_environment, chattyScript);
    m_manager->log = std::make_shared<RecordingLogAction>();
    const auto log = m_manager->log;
    const auto result = plugin.command()->run(
        {}, m_manager.get(), [log](const QString &text) { log->events.append(u"completion "_s + text); });
    QCOMPARE(result, Text(chatter.join(u'|')));
    QCOMPARE(log->events,
        (QStringList{u"clear tidy"_s, u"stop com.example.tidy/tidy"_s, u"log: "_s + chatter[0], u"log: "_s + chatter[1],
            u"log: "_s + chatter[2], u"log: "_s + chatter[3], u"completion "_s + chatter.join(u'|')}));
    QCOMPARE(m_manager->tracked, nullptr);

    const auto command = plugin.command();
    QCOMPARE(command->returnValue(), QVariant(u"done"_s));
    QCOMPARE(command->session(), nullptr);
    QCOMPARE(command->context(), nullptr);
    QVERIFY(!command->errorInScript());
    QCOMPARE(m_environment->systemLogLines, QStringList());
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(0));
}

void tst_KRPluginCommand_Running::entryPoints_data()
{
    using Run = std::function<Text(KRPluginCommand &, KRPluginCommandManager *, KRPluginCommand::Completion)>;
    QTest::addColumn<Run>("run");
    QTest::addColumn<bool>("completes");
    QTest::addColumn<QString>("called");

    const QVariantMap context;
    QTest::newRow("run:manager:") << Run([context](auto &command, auto *manager, auto) {
        return command.run(context, manager);
    }) << false << u"run"_s;
    QTest::newRow("run:manager:onComplete:") << Run([context](auto &command, auto *manager, auto completion) {
        return command.run(context, manager, completion);
    }) << true << u"run"_s;
    QTest::newRow("runHandlerWithKey:context:manager:") << Run([context](auto &command, auto *manager, auto) {
        return command.runHandlerWithKey(u"Save.finish"_s, context, manager);
    }) << false << u"saved"_s;
    QTest::newRow("runHandlerWithKey:context:manager:onComplete:") << Run(
        [context](auto &command, auto *manager, auto completion) {
            return command.runHandlerWithKey(u"Save.finish"_s, context, manager, completion);
        }) << true << u"saved"_s;
    QTest::newRow("runHandler:context:manager:") << Run([context](auto &command, auto *manager, auto) {
        return command.runHandler(u"unlisted"_s, context, manager);
    }) << false << u"unlisted"_s;
    QTest::newRow("runHandler:context:manager:onComplete:") << Run(
        [context](auto &command, auto *manager, auto completion) {
            return command.runHandler(u"unlisted"_s, context, manager, completion);
        }) << true << u"unlisted"_s;
    QTest::newRow("runHandler:withOptionalKey:context:manager:onComplete:") << Run(
        [context](auto &command, auto *manager, auto completion) {
            return command.runHandler(std::optional(u"unlisted"_s), u"any key"_s, context, manager, completion);
        }) << true << u"unlisted"_s;
}

void tst_KRPluginCommand_Running::entryPoints()
{
    using Run = std::function<Text(KRPluginCommand &, KRPluginCommandManager *, KRPluginCommand::Completion)>;
    QFETCH(Run, run);
    QFETCH(bool, completes);
    const auto script = std::make_shared<KRPluginScript>(
        u"function go() { print('run') } function onSaved() { print('saved') } const unlisted = () => print('unlisted')"_s,
        u"a.js"_s);
    const OrderedVariantDictionary actions{{u"Save"_s, u"onSaved"_s}};
    const auto command = std::make_shared<KRPluginCommand>(script, u"a"_s, u"A"_s,
        OrderedVariantDictionary{{u"run"_s, u"go"_s}, {u"actions"_s, QVariant::fromValue(actions)}}, std::nullopt,
        KRPluginCommand::Scope::Document);
    QStringList completions;
    const auto result = run(*command, m_manager.get(), [&](const QString &log) { completions.append(log); });
    QFETCH(QString, called);
    QCOMPARE(result, Text(called));
    QCOMPARE(completions, completes ? QStringList{called} : QStringList());
}

void tst_KRPluginCommand_Running::setUpAndTearDownAreOptional()
{
    const auto command = commandWithSource(u"var onSetUp = 5; function onRun() { print('run'); }"_s);
    QCOMPARE(command->run({}, m_manager.get()), Text(u"run"_s));
    QCOMPARE(command->session(), nullptr);

    const auto bare = std::make_shared<KRPluginCommand>(
        std::make_shared<KRPluginScript>(
            u"function onSetUp() { print('never') } function onRun() { print('run') }"_s, u"a.js"_s),
        u"a"_s, u"A"_s, u"onRun"_s, KRPluginCommand::Scope::Document);
    QCOMPARE(bare->run({}, m_manager.get()), Text(u"run"_s));
}

void tst_KRPluginCommand_Running::setUpAndTearDownMayBeNamedOtherwise()
{
    const auto script = std::make_shared<KRPluginScript>(
        u"const a = () => print('a'); let b = function () { print('b') }; class C {} async function c() { print('c') }"_s,
        u"a.js"_s);
    const auto command = std::make_shared<KRPluginCommand>(script, u"a"_s, u"A"_s,
        OrderedVariantDictionary{{u"setUp"_s, u"a"_s}, {u"run"_s, u"b"_s}, {u"tearDown"_s, u"c"_s}}, std::nullopt,
        KRPluginCommand::Scope::Document);
    QCOMPARE(command->run({}, m_manager.get()), Text(u"a\nb\nc"_s));
}

void tst_KRPluginCommand_Running::completionComesAfterTearDown()
{
    const auto command = commandWithSource(QString::fromUtf8(chattyScript));
    std::shared_ptr<COScript> sessionAtCompletion = std::make_shared<COScript>(COScript::CoreModules(), u""_s);
    command->run({}, m_manager.get(), [&](const QString &) { sessionAtCompletion = command->session(); });
    QCOMPARE(sessionAtCompletion, nullptr);
}

void tst_KRPluginCommand_Running::runNeedsNoManager()
{
    const TestPlugin plugin(*m_environment, chattyScript);
    QStringList completions;
    const auto expected = chatter.join(u'\n');
    const auto result = plugin.command()->run({}, nullptr, [&](const QString &log) { completions.append(log); });
    QCOMPARE(result, Text(expected));
    QCOMPARE(completions, QStringList{expected});
    QCOMPARE(plugin.command()->manager(), nullptr);
}

void tst_KRPluginCommand_Running::managerIsKeptWeakly()
{
    const auto command = commandWithSource(QString::fromUtf8(chattyScript));
    command->run({}, m_manager.get());
    QCOMPARE(command->manager(), m_manager.get());
    m_manager.reset();
    QCOMPARE(command->manager(), nullptr);
    QCOMPARE(command->logString(), chatter.join(u'\n'));
}

void tst_KRPluginCommand_Running::contextHasItsFourKeys()
{
    const TestPlugin plugin(*m_environment, R"(
        function onRun(context) {
            return [Object.keys(context), context.scriptPath, context.scriptURL,
                context.command === __command, context.plugin === __command.pluginBundle(), arguments.length];
        })");
    plugin.command()->run({}, m_manager.get());
    QCOMPARE(plugin.command()->returnValue(),
        (QVariantList{QVariantList{u"command"_s, u"plugin"_s, u"scriptPath"_s, u"scriptURL"_s}, plugin.scriptPath(),
            plugin.scriptURL().toString(QUrl::FullyEncoded), true, true, 1LL}));
}

void tst_KRPluginCommand_Running::contextWithoutPlugin()
{
    const auto command =
        commandWithSource(u"function onRun(context) { return [Object.keys(context), 'plugin' in context] }"_s);
    command->run({}, m_manager.get());
    QCOMPARE(
        command->returnValue(), (QVariantList{QVariantList{u"command"_s, u"scriptPath"_s, u"scriptURL"_s}, false}));
}

void tst_KRPluginCommand_Running::contextKeepsTheCallersKeys()
{
    const TestPlugin plugin(*m_environment, R"(
        function onRun(context) {
            return [context.document, context.nothing === null, context.command.identifier(), context.plugin.name(),
                context.scriptPath, typeof context.scriptURL];
        })");
    const QVariantMap context{
        {u"document"_s, u"a document"_s},
        {u"nothing"_s, QVariant::fromValue(nullptr)},
        {u"command"_s, u"the caller's"_s},
        {u"plugin"_s, u"the caller's"_s},
        {u"scriptPath"_s, u"the caller's"_s},
        {u"scriptURL"_s, 5},
    };
    plugin.command()->run(context, m_manager.get());
    QCOMPARE(plugin.command()->returnValue(),
        (QVariantList{u"a document"_s, true, u"tidy"_s, u"Tidy"_s, plugin.scriptPath(), u"string"_s}));
}

void tst_KRPluginCommand_Running::contextOfTheCallerIsNotChanged()
{
    const auto command = commandWithSource(
        u"function onRun(context) { context.list.push(2); context.map.b = 2; context.more = 3; delete context.text }"_s);
    const QVariantMap context{
        {u"list"_s, QVariantList{1}}, {u"map"_s, QVariantMap{{u"a"_s, 1}}}, {u"text"_s, u"text"_s}};
    const auto before = context;
    command->run(context, m_manager.get());
    QVERIFY(!command->errorInScript());
    QCOMPARE(context, before);
}

void tst_KRPluginCommand_Running::contextIsLiveForTheHost()
{
    const auto command = commandWithSource(u"function onRun(context) { context.added = 7; return context.look(); }"_s);
    const auto look = native([&command](const QVariantList &) { return command->context()->value(u"added"_s); });
    command->run({{u"look"_s, look}}, m_manager.get());
    QCOMPARE(command->returnValue(), QVariant(7));
}

void tst_KRPluginCommand_Running::contextIsEmptyAfterwards()
{
    const auto command = commandWithSource(u"function onRun(context) { context.keep(); }"_s);
    ScriptDictionaryPointer kept;
    const auto keep = native([&](const QVariantList &) {
        kept = command->context();
        return QVariant(kept->keys().size());
    });
    command->run({{u"keep"_s, keep}}, m_manager.get());
    QVERIFY(kept);
    QVERIFY(kept->isEmpty());
    QCOMPARE(command->context(), nullptr);
}

void tst_KRPluginCommand_Running::scriptFromTextStandsInTheUnsavedPlugin()
{
    m_manager->unsavedPlugin = QUrl(u"file:///Plug%20ins/Untitled.korvanplugin/"_s);
    const auto command =
        commandWithSource(u"function onRun(context) { return [context.scriptPath, context.scriptURL]; }"_s);
    command->run({}, m_manager.get());
    QCOMPARE(command->returnValue(),
        (QVariantList{u"/Plug ins/Untitled.korvanplugin"_s, u"file:///Plug%20ins/Untitled.korvanplugin/"_s}));
}

void tst_KRPluginCommand_Running::contextPathMayHoldAnyBytes()
{
    TestPlugin plugin(*m_environment, "");
    plugin.write(u"a %20'\" ö.js"_s, "function onRun(context) { return [context.scriptPath, context.scriptURL]; }");
    const auto path = QFileInfo(plugin.scriptPath()).path() + u"/a %20'\" ö.js"_s;
    const auto command = commandWithScript(KRPluginScript::initWithURL(QUrl::fromLocalFile(path)));
    command->run({}, m_manager.get());
    const auto result = command->returnValue().toList();
    QCOMPARE(result.value(0), QVariant(path));
    QVERIFY(result.value(1).toString().endsWith(u"/a%20%2520'%22%20%C3%B6.js"_s));
}

void tst_KRPluginCommand_Running::commandIsAGlobal()
{
    const auto command = commandWithSource(uR"(
        print(__command.identifier());
        function onSetUp(context) { print(context.command === __command) }
        function onRun(context) { print(context.command === __command) }
        function onTearDown() { print(__command.name()) })"_s);
    QCOMPARE(command->run({}, m_manager.get()), Text(u"tidy\ntrue\ntrue\nTidy Layers"_s));
}

void tst_KRPluginCommand_Running::environmentNamesTheScript()
{
    const TestPlugin plugin(*m_environment, "function onRun(context) { context.look() }");
    QVariantMap environment;
    const auto look = native([&](const QVariantList &) {
        environment = plugin.command()->session()->env();
        return QVariant();
    });
    plugin.command()->run({{u"look"_s, look}}, m_manager.get());
    QCOMPARE(environment, (QVariantMap{{u"scriptURL"_s, plugin.scriptURL()}}));
}

void tst_KRPluginCommand_Running::scriptHandedOverIsKept()
{
    const auto command = commandWithSource(u"function onRun() {}"_s);
    command->run({}, m_manager.get());
    QCOMPARE(command->executingScript(), Text(u"function onRun() {}"_s));
}

void tst_KRPluginCommand_Running::standaloneScriptRuns()
{
    const auto script = std::make_shared<KRPluginStandaloneScript>(
        u"return [doc, selection, korvan === context, context.doc];"_s, u"Untitled"_s);
    const auto command = commandWithScript(script);
    const QVariantList selection{1LL, 2LL};
    command->run({{u"document"_s, u"a document"_s}, {u"selection"_s, selection}}, m_manager.get());
    QCOMPARE(command->returnValue(), (QVariantList{u"a document"_s, selection, true, u"a document"_s}));
    QCOMPARE(command->executingScript(), script->script());
    command->run({}, m_manager.get());
    QCOMPARE(command->returnValue(), (QVariantList{QVariant(), QVariant(), true, QVariant()}));
}

void tst_KRPluginCommand_Running::returnValue_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("number") << u"1.5"_s << QVariant(1.5);
    QTest::newRow("whole number") << u"2"_s << QVariant(2LL);
    QTest::newRow("text") << u"'a'"_s << QVariant(u"a"_s);
    QTest::newRow("boolean") << u"false"_s << QVariant(false);
    QTest::newRow("nothing") << u""_s << QVariant();
    QTest::newRow("null") << u"null"_s << QVariant::fromValue(nullptr);
    QTest::newRow("list") << u"[1, ['a']]"_s << QVariant(QVariantList{1LL, QVariantList{u"a"_s}});
    QTest::newRow("object") << u"({a: {b: 1}})"_s << QVariant(QVariantMap{{u"a"_s, QVariantMap{{u"b"_s, 1LL}}}});
}

void tst_KRPluginCommand_Running::returnValue()
{
    QFETCH(QString, expression);
    const auto command = commandWithSource(u"function onRun() { return %1; }"_s.arg(expression));
    command->run({}, m_manager.get());
    QTEST(command->returnValue(), "value");
}

void tst_KRPluginCommand_Running::returnValueStaysWithoutAHandler()
{
    const auto command = commandWithSource(u"function onRun() { return 5; }"_s);
    command->run({}, m_manager.get());
    command->runHandler(u"missing"_s, {}, m_manager.get());
    QCOMPARE(command->returnValue(), QVariant(5));
}

QTEST_GUILESS_MAIN(tst_KRPluginCommand_Running)
#include "tst_krplugincommand_running.moc"
