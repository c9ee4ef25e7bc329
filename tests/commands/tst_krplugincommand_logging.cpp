// What becomes of what scripts print, and of the errors of their runs.

#include "commands/KRPluginCommand.h"
#include "support/FakeCommandManager.h"
#include "support/TestCommand.h"
#include "support/TestEnvironment.h"
#include "support/TestPlugin.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const auto null = QVariant::fromValue(nullptr);

QVariantMap readyMade(const QVariantMap &changes = {})
{
    QVariantMap entry{{u"stringValue"_s, u"text"_s}, {u"level"_s, u"warning"_s}, {u"payload"_s, QVariantList{1, 2}}};
    entry.insert(changes);
    return entry;
}

QVariantMap without(QVariantMap entry, const QString &key)
{
    entry.remove(key);
    return entry;
}

ScriptObjectPointer objectIn(const QVariant &value)
{
    return value.value<WeakScriptObjectPointer>().lock();
}

} // namespace

class tst_KRPluginCommand_Logging : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void entryHasExactlyFourKeys();
    void entryOfEveryValue_data();
    void entryOfEveryValue();
    void levels();
    void readyMadeEntryPassesAsItIs_data();
    void readyMadeEntryPassesAsItIs();
    void incompleteEntryIsAValue_data();
    void incompleteEntryIsAValue();
    void scriptCannotChangeWhatItPrinted();
    void entriesGoToTheLogAction();
    void commandWithoutIdentifierLogsUnderNoName();
    void logActionThatIsGoneLeavesEntriesHere();
    void managerThatIsGoneLeavesEntriesHere();
    void logStringJoinsTexts();
    void logStringDescribesEntriesWithoutText();
    void logStringIsThatOfTheLogAction();
    void runClearsBothStores();
    void clearingLeavesOtherSendersAlone();
    void logKeepsNobodyAlive_data();
    void logKeepsNobodyAlive();
    void everyWayToPrintGivesOneEntry_data();
    void everyWayToPrintGivesOneEntry();

private:
    QVariantMap onlyEntry() const;
    /// With the log action in use.
    void useLogAction();

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<FakeCommandManager> m_manager;
    std::shared_ptr<KRPluginCommand> m_command;
};

void tst_KRPluginCommand_Logging::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_manager = std::make_unique<FakeCommandManager>();
    m_command = commandWithSource(u"function onRun() {}"_s);
}

void tst_KRPluginCommand_Logging::cleanup()
{
    m_command.reset();
    m_manager.reset();
    m_environment.reset();
}

QVariantMap tst_KRPluginCommand_Logging::onlyEntry() const
{
    const auto logs = m_command->logsWhenRunViaTests();
    return logs.size() == 1 ? logs.first().toMap() : QVariantMap();
}

void tst_KRPluginCommand_Logging::useLogAction()
{
    m_manager->log = std::make_shared<RecordingLogAction>();
    m_command->setManager(m_manager.get());
}

void tst_KRPluginCommand_Logging::entryHasExactlyFourKeys()
{
    m_command->print(u"hello"_s);
    QCOMPARE(onlyEntry().keys(), (QStringList{u"command"_s, u"level"_s, u"payload"_s, u"stringValue"_s}));
    QCOMPARE(objectIn(onlyEntry().value(u"command"_s)), m_command);
}

void tst_KRPluginCommand_Logging::entryOfEveryValue_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("payload");
    QTest::addColumn<QString>("text");

    QTest::newRow("text") << QVariant(u"a"_s) << QVariant(u"a"_s) << u"a"_s;
    QTest::newRow("empty text") << QVariant(u""_s) << QVariant(u""_s) << u""_s;
    QTest::newRow("nil") << QVariant() << QVariant(u"null"_s) << u"(null)"_s;
    QTest::newRow("null") << null << QVariant(u"null"_s) << u"(null)"_s;
    QTest::newRow("number") << QVariant(1.5) << QVariant(1.5) << u"1.5"_s;
    QTest::newRow("boolean") << QVariant(true) << QVariant(true) << u"true"_s;
    const QVariantList list{1, u"b"_s, null};
    QTest::newRow("list") << QVariant(list) << QVariant(list) << u"[1, \"b\", null]"_s;
    const QVariantMap map{{u"a"_s, 1}};
    QTest::newRow("dictionary") << QVariant(map) << QVariant(map) << u"{\"a\": 1}"_s;
}

void tst_KRPluginCommand_Logging::entryOfEveryValue()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, payload);
    m_command->print(value);
    QCOMPARE(onlyEntry().value(u"payload"_s), QVariant(QVariantList{payload}));
    QTEST(onlyEntry().value(u"stringValue"_s).toString(), "text");
}

void tst_KRPluginCommand_Logging::levels()
{
    m_command->print(u"a"_s);
    m_command->error(u"b"_s);
    m_command->log(u"c"_s, u"notice"_s);
    QStringList levels;
    const auto logs = m_command->logsWhenRunViaTests();
    for (const auto &entry : logs)
        levels.append(entry.toMap().value(u"level"_s).toString());
    QCOMPARE(levels, (QStringList{u"log"_s, u"error"_s, u"notice"_s}));
}

void tst_KRPluginCommand_Logging::readyMadeEntryPassesAsItIs_data()
{
    QTest::addColumn<QVariantMap>("entry");
    QTest::newRow("the three keys") << readyMade();
    QTest::newRow("further keys") << readyMade({{u"command"_s, u"mine"_s}, {u"extra"_s, 1}});
    QTest::newRow("values of any type") << readyMade({{u"stringValue"_s, 5}, {u"level"_s, null}});
}

void tst_KRPluginCommand_Logging::readyMadeEntryPassesAsItIs()
{
    QFETCH(QVariantMap, entry);
    m_command->log(entry, u"error"_s);
    QCOMPARE(onlyEntry(), entry);
}

void tst_KRPluginCommand_Logging::incompleteEntryIsAValue_data()
{
    QTest::addColumn<QVariantMap>("value");
    QTest::newRow("no stringValue") << without(readyMade(), u"stringValue"_s);
    QTest::newRow("no level") << without(readyMade(), u"level"_s);
    QTest::newRow("no payload") << without(readyMade(), u"payload"_s);
    QTest::newRow("nil counts as absent") << readyMade({{u"level"_s, QVariant()}});
}

void tst_KRPluginCommand_Logging::incompleteEntryIsAValue()
{
    QFETCH(QVariantMap, value);
    m_command->log(value, u"error"_s);
    QCOMPARE(onlyEntry().value(u"payload"_s), QVariant(QVariantList{value}));
    QCOMPARE(onlyEntry().value(u"level"_s), QVariant(u"error"_s));
}

void tst_KRPluginCommand_Logging::scriptCannotChangeWhatItPrinted()
{
    m_command = commandWithSource(u"function onRun() { const a = [1, {b: 2}]; print(a); a.push(3); a[1].b = 4; }"_s);
    m_command->run({}, nullptr);
    const QVariant printed = QVariantList{1LL, QVariantMap{{u"b"_s, 2LL}}};
    QCOMPARE(onlyEntry().value(u"payload"_s), QVariant(QVariantList{printed}));
    QCOMPARE(m_command->logString(), u"[1, {\"b\": 2}]"_s);
}

void tst_KRPluginCommand_Logging::entriesGoToTheLogAction()
{
    useLogAction();
    m_command->print(u"a"_s);
    m_command->error(u"b"_s);
    QCOMPARE(m_manager->log->events, (QStringList{u"log: a"_s, u"error: b"_s}));
    QCOMPARE(m_manager->log->entries.first().first, u"tidy"_s);
    QCOMPARE(objectIn(m_manager->log->entries.first().second.value(u"command"_s)), m_command);
    QCOMPARE(m_command->logsWhenRunViaTests(), QVariantList());
}

void tst_KRPluginCommand_Logging::commandWithoutIdentifierLogsUnderNoName()
{
    m_command =
        std::make_shared<KRPluginCommand>(nullptr, std::nullopt, u"A"_s, u"onRun"_s, KRPluginCommand::Scope::Document);
    useLogAction();
    m_command->print(u"a"_s);
    QCOMPARE(m_manager->log->texts(u""_s), QStringList{u"a"_s});
    QCOMPARE(m_command->logString(), u"a"_s);
}

void tst_KRPluginCommand_Logging::logActionThatIsGoneLeavesEntriesHere()
{
    useLogAction();
    m_command->print(u"a"_s);
    m_manager->log.reset();
    m_command->print(u"b"_s);
    QCOMPARE(m_command->logString(), u"b"_s);
    QCOMPARE(m_command->logsWhenRunViaTests().size(), 1);
}

void tst_KRPluginCommand_Logging::managerThatIsGoneLeavesEntriesHere()
{
    useLogAction();
    const auto log = m_manager->log;
    m_manager.reset();
    m_command->print(u"b"_s);
    QCOMPARE(m_command->manager(), nullptr);
    QCOMPARE(m_command->logString(), u"b"_s);
    QVERIFY(log->entries.isEmpty());
}

void tst_KRPluginCommand_Logging::logStringJoinsTexts()
{
    QCOMPARE(m_command->logString(), QString());
    m_command->print(u"a"_s);
    m_command->print(u"b"_s);
    QCOMPARE(m_command->logString(), u"a\nb"_s);
    m_command->print(u""_s);
    m_command->error(QVariant());
    QCOMPARE(m_command->logString(), u"a\nb\n\n(null)"_s);
}

void tst_KRPluginCommand_Logging::logStringDescribesEntriesWithoutText()
{
    m_command->setLogsWhenRunViaTests({QVariantMap{{u"stringValue"_s, u"a"_s}}, QVariantMap{{u"level"_s, u"log"_s}}});
    QCOMPARE(m_command->logString(), u"a\n{\"level\": \"log\"}"_s);
}

void tst_KRPluginCommand_Logging::logStringIsThatOfTheLogAction()
{
    m_command->print(u"kept before"_s);
    useLogAction();
    QCOMPARE(m_command->logString(), QString());
    m_command->print(u"a"_s);
    m_command->print(u"b"_s);
    QCOMPARE(m_command->logString(), u"a|b"_s);
}

void tst_KRPluginCommand_Logging::runClearsBothStores()
{
    m_command = commandWithSource(u"function onRun() { print('new'); }"_s);
    m_command->print(u"kept before"_s);
    useLogAction();
    m_command->print(u"logged before"_s);
    m_manager->log->events.clear();
    QCOMPARE(m_command->run({}, m_manager.get()), std::optional(u"new"_s));
    QCOMPARE(m_manager->log->events, (QStringList{u"clear tidy"_s, u"stop tidy"_s, u"log: new"_s}));
    QCOMPARE(m_command->logsWhenRunViaTests(), QVariantList());
}

void tst_KRPluginCommand_Logging::clearingLeavesOtherSendersAlone()
{
    useLogAction();
    m_manager->log->log({{u"stringValue"_s, u"other"_s}}, u"other"_s);
    m_command->clearLog();
    QCOMPARE(m_manager->log->texts(u"other"_s), QStringList{u"other"_s});
}

void tst_KRPluginCommand_Logging::logKeepsNobodyAlive_data()
{
    QTest::addColumn<QString>("statement");
    QTest::newRow("the command") << u"print(context.command)"_s;
    QTest::newRow("the plug-in") << u"print(context.plugin)"_s;
    QTest::newRow("inside a list") << u"print([1, [context.command, context.plugin]])"_s;
    QTest::newRow("inside an object") << u"print({a: {b: context.plugin}})"_s;
    QTest::newRow("in a ready-made entry") << u"console.error(context.plugin)"_s;
    QTest::newRow("the whole context") << u"print(context)"_s;
    QTest::newRow("put into the context") << u"context.mine = [context.plugin]; context.me = context.command"_s;
    QTest::newRow("returned") << u"return context.command"_s;
    QTest::newRow("returned inside a list") << u"return [{plugin: context.plugin}]"_s;
}

void tst_KRPluginCommand_Logging::logKeepsNobodyAlive()
{
    QFETCH(QString, statement);
    TestPlugin plugin(*m_environment, "function onRun(context) { " + statement.toUtf8() + "; }");
    const std::weak_ptr weakBundle = plugin.bundle;
    const std::weak_ptr weakCommand = plugin.command();
    plugin.command()->run({}, nullptr);
    QVERIFY(!plugin.command()->errorInScript());
    plugin.bundle.reset();
    QVERIFY(weakBundle.expired());
    QVERIFY(weakCommand.expired());
}

void tst_KRPluginCommand_Logging::everyWayToPrintGivesOneEntry_data()
{
    QTest::addColumn<QString>("statement");
    QTest::addColumn<QString>("level");
    QTest::addColumn<QVariant>("payload");
    QTest::addColumn<QString>("text");

    QTest::newRow("print") << u"print('a')"_s << u"log"_s << QVariant(u"a"_s) << u"a"_s;
    QTest::newRow("print nothing") << u"print()"_s << u"log"_s << QVariant(u"null"_s) << u"(null)"_s;
    QTest::newRow("print null") << u"print(null)"_s << u"log"_s << QVariant(u"null"_s) << u"(null)"_s;
    QTest::newRow("log") << u"log('a')"_s << u"log"_s << QVariant(u"a"_s) << u"a"_s;
    QTest::newRow("console.log") << u"console.log('a')"_s << u"log"_s << QVariant(u"a"_s) << u"a"_s;
    QTest::newRow("console.error") << u"console.error('a')"_s << u"error"_s << QVariant(u"a"_s) << u"a"_s;
    QTest::newRow("command.print") << u"context.command.print(1)"_s << u"log"_s << QVariant(1LL) << u"1"_s;
    QTest::newRow("command.error") << u"context.command.error('a')"_s << u"error"_s << QVariant(u"a"_s) << u"a"_s;
    QTest::newRow("command.log_atLevel") << u"context.command.log_atLevel('a', 'debug')"_s << u"debug"_s
                                         << QVariant(u"a"_s) << u"a"_s;
    QTest::newRow("__command.print") << u"__command.print('a')"_s << u"log"_s << QVariant(u"a"_s) << u"a"_s;
    QTest::newRow("ready-made entry of a script")
        << u"print({stringValue: 's', level: 'l', payload: ['p']})"_s << u"l"_s << QVariant(u"p"_s) << u"s"_s;
}

void tst_KRPluginCommand_Logging::everyWayToPrintGivesOneEntry()
{
    QFETCH(QString, statement);
    QFETCH(QVariant, payload);
    m_command = commandWithSource(u"function onRun(context) { %1; }"_s.arg(statement));
    m_command->run({}, m_manager.get());
    QCOMPARE(m_command->logsWhenRunViaTests().size(), 1);
    QTEST(onlyEntry().value(u"level"_s).toString(), "level");
    QCOMPARE(onlyEntry().value(u"payload"_s), QVariant(QVariantList{payload}));
    QTEST(onlyEntry().value(u"stringValue"_s).toString(), "text");
}

QTEST_GUILESS_MAIN(tst_KRPluginCommand_Logging)
#include "tst_krplugincommand_logging.moc"
