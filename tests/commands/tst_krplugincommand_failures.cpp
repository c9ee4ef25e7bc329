// Runs that go wrong: what is reported, to whom, and what happens all the same.

#include "commands/KRPluginCommand.h"
#include "platform/FileURL.h"
#include "platform/script/ScriptValue.h"
#include "support/FakeCommandManager.h"
#include "support/NilableText.h"
#include "support/TestCommand.h"
#include "support/TestEnvironment.h"
#include "support/TestPlugin.h"

#include <QFile>
#include <QtTest>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

const auto unsavedPath = u"/Plugins/Untitled.korvanplugin"_s;

std::shared_ptr<KRPluginScript> scriptOf(const QString &source)
{
    return std::make_shared<KRPluginScript>(source, u"a.js"_s);
}

} // namespace

class tst_KRPluginCommand_Failures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void commandWithoutScriptDoesNothing();
    void noRunHandler();
    void noHandlerOfTheKey();
    void noFunctionOfTheName_data();
    void noFunctionOfTheName();
    void messageNamesTheFile();
    void messageOfACommandWithoutName();
    void noSourceAtAll();
    void exceptionWhileEvaluatingIsTheOnlyMessage_data();
    void exceptionWhileEvaluatingIsTheOnlyMessage();
    void handlerRunsInWhatWasEvaluated();
    void earlierErrorIsForgotten();
    void exceptionInHandler();
    void exceptionOfAHostFunction();
    void exceptionInSetUp();
    void failedSetUpEndsWithTheNextRun();
    void exceptionInTearDown();
    void exceptionsEverywhereAreReportedOnceEach();

private:
    /// Runs with a completion; the texts of all entries, errors marked.
    QStringList run(const std::shared_ptr<KRPluginCommand> &command, const QVariantMap &context = {});

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<FakeCommandManager> m_manager;
    Text m_result;
    QStringList m_completions;
};

void tst_KRPluginCommand_Failures::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_manager = std::make_unique<FakeCommandManager>();
    m_result = nil;
    m_completions.clear();
}

void tst_KRPluginCommand_Failures::cleanup()
{
    m_manager.reset();
    m_environment.reset();
}

QStringList tst_KRPluginCommand_Failures::run(
    const std::shared_ptr<KRPluginCommand> &command, const QVariantMap &context)
{
    m_result = command->run(context, m_manager.get(), [this](const QString &log) { m_completions.append(log); });
    QStringList texts;
    const auto entries = command->logsWhenRunViaTests();
    for (const auto &entry : entries) {
        const auto map = entry.toMap();
        const bool isError = map.value(u"level"_s) == u"error"_s;
        texts.append((isError ? u"error: "_s : QString()) + map.value(u"stringValue"_s).toString());
    }
    return texts;
}

void tst_KRPluginCommand_Failures::commandWithoutScriptDoesNothing()
{
    const auto command = commandWithScript(nullptr);
    QCOMPARE(run(command), QStringList());
    QCOMPARE(m_result, Text(u""_s));
    QCOMPARE(m_completions, QStringList());
    QCOMPARE(m_manager->events, QStringList());
    QVERIFY(command->hasNeverRun());

    command->print(u"earlier"_s);
    run(command);
    QCOMPARE(m_result, Text(u"earlier"_s));
    QCOMPARE(command->manager(), nullptr);
}

void tst_KRPluginCommand_Failures::noRunHandler()
{
    const auto command = std::make_shared<KRPluginCommand>(scriptOf(u"function onRun() { print('never') }"_s), u"a"_s,
        u"Sort %1 Layers"_s, OrderedVariantDictionary{{u"onRun"_s, u"onRun"_s}}, std::nullopt,
        KRPluginCommand::Scope::Document);
    const auto message =
        u"Error in command Sort %1 Layers Script at path "_s + unsavedPath + u" does not declare a run handler."_s;
    QCOMPARE(run(command), QStringList{u"error: "_s + message});
    QCOMPARE(m_result, Text(message));
    QCOMPARE(m_completions, QStringList{message});
    QCOMPARE(command->session(), nullptr);
    QCOMPARE(command->returnValue(), QVariant());
    QVERIFY(!command->errorInScript());
}

void tst_KRPluginCommand_Failures::noHandlerOfTheKey()
{
    const auto command = commandWithSource(u"function onSave() {}"_s);
    QCOMPARE(command->runHandlerWithKey(u"Save"_s, {}, m_manager.get()),
        Text(u"Error in command Tidy Layers Script at path /Plugins/Untitled.korvanplugin does not declare a run "
             "handler."_s));
}

void tst_KRPluginCommand_Failures::noFunctionOfTheName_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("no script at all") << u""_s;
    QTest::newRow("another name") << u"function onrun() {}"_s;
    QTest::newRow("no function") << u"var onRun = 5;"_s;
    QTest::newRow("inside another function") << u"function a() { function onRun() {} }"_s;
    QTest::newRow("only a property of an object") << u"var a = {onRun() {}};"_s;
}

void tst_KRPluginCommand_Failures::noFunctionOfTheName()
{
    QFETCH(QString, source);
    const auto command = commandWithSource(source + u"\nfunction onTearDown() { print('torn down') }"_s);
    const auto message =
        u"Error in command Tidy Layers Script at path /Plugins/Untitled.korvanplugin does not contain a handler "
        "function named: onRun."_s;
    QCOMPARE(run(command), (QStringList{u"error: "_s + message, u"torn down"_s}));
    QCOMPARE(m_completions, QStringList{message + u"\ntorn down"_s});
    QCOMPARE(m_result, Text(m_completions.first()));
}

void tst_KRPluginCommand_Failures::messageNamesTheFile()
{
    const TestPlugin plugin(*m_environment, "");
    QCOMPARE(run(plugin.command()),
        QStringList{u"error: Error in command Tidy Layers Script at path "_s + plugin.scriptPath()
            + u" does not contain a handler function named: onRun."_s});
}

void tst_KRPluginCommand_Failures::messageOfACommandWithoutName()
{
    const auto command = std::make_shared<KRPluginCommand>(
        scriptOf(u""_s), std::nullopt, std::nullopt, u"on %1 %2"_s, KRPluginCommand::Scope::Document);
    QCOMPARE(run(command),
        QStringList{u"error: Error in command (null) Script at path "_s + unsavedPath
            + u" does not contain a handler function named: on %1 %2."_s});
}

void tst_KRPluginCommand_Failures::noSourceAtAll()
{
    const TestPlugin plugin(*m_environment, "function onRun() {}");
    QVERIFY(QFile::remove(plugin.scriptPath()));
    plugin.command()->script()->reload();
    QCOMPARE(run(plugin.command()),
        QStringList{u"error: Error in command Tidy Layers Script at path "_s + plugin.scriptPath()
            + u" does not contain a handler function named: onRun."_s});
    QCOMPARE(plugin.command()->executingScript(), nil);
}

void tst_KRPluginCommand_Failures::exceptionWhileEvaluatingIsTheOnlyMessage_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("message");
    QTest::newRow("thrown") << QByteArray("\nthrow new Error('early');")
                            << u"Error: early\n    at Contents/Korvan/tidy.js:2:16"_s;
    QTest::newRow("no script") << QByteArray("function {")
                               << u"SyntaxError: Unexpected token '{'\n    at Contents/Korvan/tidy.js:1:10"_s;
}

void tst_KRPluginCommand_Failures::exceptionWhileEvaluatingIsTheOnlyMessage()
{
    QFETCH(QByteArray, source);
    QFETCH(QString, message);
    const TestPlugin plugin(*m_environment, source);
    QCOMPARE(run(plugin.command()), QStringList{u"error: "_s + message});
    QVERIFY(plugin.command()->errorInScript());
    QCOMPARE(m_completions, QStringList{message});
    QCOMPARE(plugin.command()->session(), nullptr);
    // Also where no handler was asked for.
    QCOMPARE(plugin.command()->runHandlerWithKey(u"Save"_s, {}, m_manager.get()), Text(message));
}

void tst_KRPluginCommand_Failures::handlerRunsInWhatWasEvaluated()
{
    const auto command = commandWithSource(u"function onRun() { print('run') } throw new Error('late');"_s);
    const auto texts = run(command);
    QCOMPARE(texts.size(), 2);
    QVERIFY(texts[0].startsWith(u"error: Error: late\n"_s));
    QCOMPARE(texts[1], u"run"_s);
}

void tst_KRPluginCommand_Failures::earlierErrorIsForgotten()
{
    const auto command = commandWithSource(u"function onRun() { throw new Error('x') }"_s);
    run(command);
    QVERIFY(command->errorInScript());
    const auto log = command->runHandler(u"missing"_s, {}, m_manager.get());
    QVERIFY(log->endsWith(u"does not contain a handler function named: missing."_s));
    QVERIFY(!command->errorInScript());
}

void tst_KRPluginCommand_Failures::exceptionInHandler()
{
    const TestPlugin plugin(*m_environment,
        "function onRun(context) {\n"
        "    fail(context);\n"
        "}\n"
        "function fail() { throw new TypeError('too late'); }\n"
        "function onTearDown() { print('torn down'); }\n");
    const auto command = plugin.command();
    command->setReturnValue(5);
    const auto message = u"Uncaught script exception: TypeError: too late\n"
                         "    at fail (Contents/Korvan/tidy.js:4:38)\n"
                         "    at onRun (Contents/Korvan/tidy.js:2:9)"_s;
    QCOMPARE(run(command), (QStringList{u"error: "_s + message, u"torn down"_s}));
    QVERIFY(command->errorInScript());
    QCOMPARE(command->returnValue(), QVariant());
    QCOMPARE(m_completions, QStringList{message + u"\ntorn down"_s});
    QCOMPARE(m_result, Text(m_completions.first()));
    QCOMPARE(command->session(), nullptr);
    QCOMPARE(command->context(), nullptr);
    QCOMPARE(m_manager->tracked, nullptr);
}

void tst_KRPluginCommand_Failures::exceptionOfAHostFunction()
{
    const auto command = commandWithSource(u"function onRun(context) { context.fail(); }"_s);
    const NativeFunction fail{[](const QVariantList &) -> QVariant { throw std::runtime_error("disk full"); }};
    const auto texts = run(command, {{u"fail"_s, QVariant::fromValue(fail)}});
    QCOMPARE(texts.size(), 1);
    QVERIFY(texts[0].startsWith(u"error: Uncaught script exception: Error: disk full\n    at onRun ("_s));
}

void tst_KRPluginCommand_Failures::exceptionInSetUp()
{
    const auto command = commandWithSource(uR"(
        function onSetUp() { print('set up'); throw new Error('not ready'); }
        function onRun() { print('never'); }
        function onTearDown() { print('never'); })"_s);
    command->setReturnValue(5);
    // Deliberately without a message: there is no running command yet that could report it.
    QCOMPARE(run(command), QStringList{u"set up"_s});
    QCOMPARE(m_result, nil);
    QCOMPARE(m_completions, QStringList{u"set up"_s});
    QCOMPARE(command->returnValue(), QVariant());
    QVERIFY(command->errorInScript());
    QVERIFY(command->session());
    QCOMPARE(command->context(), nullptr);
    QCOMPARE(m_manager->tracked, nullptr);
}

void tst_KRPluginCommand_Failures::failedSetUpEndsWithTheNextRun()
{
    const auto command = commandWithSource(uR"(
        function onSetUp(context) { setTimeout(() => print('late'), 10); if (context.fail) throw new Error('x'); }
        function onRun() { print('run'); __command.setStayRunning(true); })"_s);
    run(command, {{u"fail"_s, true}});
    const auto halfMade = command->session();
    QVERIFY(halfMade->shouldKeepRunning());
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(1));

    QCOMPARE(run(command), QStringList{u"run"_s});
    QVERIFY(!halfMade->shouldKeepRunning());
    QVERIFY(command->session() != halfMade);
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(1)); // the new session's
    command->tearDownSession();
}

void tst_KRPluginCommand_Failures::exceptionInTearDown()
{
    const auto command = commandWithSource(uR"(
        function onRun() { return 'done'; }
        function onTearDown() { setTimeout(() => print('late'), 10); throw new Error('stuck'); })"_s);
    const auto texts = run(command);
    QCOMPARE(texts.size(), 1);
    QVERIFY(texts[0].startsWith(u"error: Uncaught script exception: Error: stuck\n    at onTearDown ("_s));
    QCOMPARE(m_completions.size(), 1);
    QCOMPARE(command->returnValue(), QVariant(u"done"_s));
    QCOMPARE(command->session(), nullptr);
    QCOMPARE(command->context(), nullptr);
    QCOMPARE(m_environment->queue.scheduledCount(), std::size_t(0));
}

void tst_KRPluginCommand_Failures::exceptionsEverywhereAreReportedOnceEach()
{
    const auto command = commandWithSource(uR"(
        function onRun() { throw new Error('run'); }
        function onTearDown() { throw new Error('tear down'); }
        throw new Error('evaluate');)"_s);
    const auto texts = run(command);
    QCOMPARE(texts.size(), 3);
    QVERIFY(texts[0].startsWith(u"error: Error: evaluate\n"_s));
    QVERIFY(texts[1].startsWith(u"error: Uncaught script exception: Error: run\n"_s));
    QVERIFY(texts[2].startsWith(u"error: Uncaught script exception: Error: tear down\n"_s));
}

QTEST_GUILESS_MAIN(tst_KRPluginCommand_Failures)
#include "tst_krplugincommand_failures.moc"
