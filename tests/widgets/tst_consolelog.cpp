#include "widgets/console/ConsoleLog.h"

#include "PluginsFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_ConsoleLog : public QObject, private PluginsFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void whatACommandPrints();
    void errorWithItsPlace();
    void errorOfATimer();
    void clearingOfALogLeavesTheConsole();
    void manyEntriesOfOneRun();
    void longEntriesOfOneRun();
    void messagesOfTheFramework();
    void levels_data();
    void levels();
    void pluginsThatHaveLogged();
    void entryWithoutAnything();

private:
    void run(const QByteArray &script);
    const LogEntry &entry(int row);

    std::shared_ptr<ConsoleLog> m_log;
};

void tst_ConsoleLog::init()
{
    setUp();
    m_log = std::make_shared<ConsoleLog>();
    m_manager->setLogAction(m_log);
}

void tst_ConsoleLog::cleanup()
{
    m_environment->target = nullptr;
    m_log.reset();
    tearDown();
}

void tst_ConsoleLog::run(const QByteArray &script)
{
    install({u"com.example.a"_s, u"Tidy"_s, u"1.0"_s, {}, script});
    m_manager->runHandlerWithKey(u"run"_s, u"run"_s, u"com.example.a"_s, {});
    m_environment->queue.advance(LogModel::frame);
}

const LogEntry &tst_ConsoleLog::entry(int row)
{
    return m_log->entries().entry(row);
}

void tst_ConsoleLog::whatACommandPrints()
{
    run("function onRun() { print('one'); console.log('two') }");
    QCOMPARE(m_log->entries().rowCount(), 2);
    QCOMPARE(entry(0).text, u"one"_s);
    QCOMPARE(entry(1).text, u"two"_s);
    QCOMPARE(entry(0).level, LogLevel::Log);
    QCOMPARE(entry(0).pluginIdentifier, u"com.example.a"_s);
    QCOMPARE(entry(0).pluginName, u"Tidy"_s);
    QCOMPARE(entry(0).command, u"Run It"_s);
    QVERIFY(entry(0).time.isValid());
    QCOMPARE(m_log->logStringFor(u"run"_s), u"one\ntwo"_s);
}

void tst_ConsoleLog::errorWithItsPlace()
{
    run("function onRun() {\n  nothing.there()\n}");
    QCOMPARE(m_log->entries().rowCount(), 1);
    QCOMPARE(entry(0).level, LogLevel::Error);
    QCOMPARE(entry(0).file.fileName(), u"script.js"_s);
    QCOMPARE(entry(0).line, 2);
}

/// Which comes without its command.
void tst_ConsoleLog::errorOfATimer()
{
    run("function onRun() { setTimeout(() => {\n  nothing.there() }, 5) }");
    m_environment->queue.advance(std::chrono::milliseconds(100));
    QCOMPARE(m_log->entries().rowCount(), 1);
    QCOMPARE(entry(0).level, LogLevel::Error);
    QCOMPARE(entry(0).pluginIdentifier, u"com.example.a"_s);
    QCOMPARE(entry(0).file.fileName(), u"script.js"_s);
    QCOMPARE(entry(0).line, 2);
}

void tst_ConsoleLog::clearingOfALogLeavesTheConsole()
{
    run("function onRun() { print('one') }");
    m_log->clearLogFor(u"run"_s);
    QCOMPARE(m_log->logStringFor(u"run"_s), QString());
    QCOMPARE(m_log->entries().rowCount(), 1);
    run("function onRun() { print('again') }"); // a run begins with an empty log of its own
    QCOMPARE(m_log->logStringFor(u"run"_s), u"again"_s);
    QCOMPARE(m_log->entries().rowCount(), 2);
}

void tst_ConsoleLog::manyEntriesOfOneRun()
{
    run("function onRun() { for (let i = 0; i < 10001; ++i) print(i) }");
    const auto texts = m_log->logStringFor(u"run"_s).split(u'\n');
    QCOMPARE(texts.size(), 10000);
    QCOMPARE(texts.last(), u"10000"_s);
}

void tst_ConsoleLog::longEntriesOfOneRun()
{
    const QString half(LogModel::mostCharacters / 2, u'x');
    for (int i = 0; i < 3; ++i)
        m_log->log({{u"stringValue"_s, half}}, u"run"_s);
    m_log->log({{u"stringValue"_s, u"last"_s}}, u"run"_s);
    QCOMPARE(m_log->logStringFor(u"run"_s), half + u"\nlast"_s);
}

void tst_ConsoleLog::messagesOfTheFramework()
{
    m_environment->target = m_log.get();
    BundleBuilder(pluginsFolder(), u"broken"_s).manifest("{");
    m_manager->reloadPlugins();
    m_environment->queue.advance(LogModel::frame);
    QVERIFY(m_log->entries().rowCount() > 0);
    QCOMPARE(entry(0).pluginIdentifier, QString());
    QCOMPARE(entry(0).pluginName, u"Application"_s);
}

void tst_ConsoleLog::levels_data()
{
    QTest::addColumn<QString>("level");
    QTest::addColumn<LogLevel>("expected");

    QTest::newRow("log") << u"log"_s << LogLevel::Log;
    QTest::newRow("error") << u"error"_s << LogLevel::Error;
    QTest::newRow("warn") << u"warn"_s << LogLevel::Warning;
    QTest::newRow("warning") << u"warning"_s << LogLevel::Warning;
    QTest::newRow("whatever a plug-in makes up") << u"fatal"_s << LogLevel::Log;
    QTest::newRow("none") << QString() << LogLevel::Log;
}

void tst_ConsoleLog::levels()
{
    QFETCH(QString, level);
    m_log->log({{u"stringValue"_s, u"text"_s}, {u"level"_s, level}}, u"somebody"_s);
    m_environment->queue.advance(LogModel::frame);
    QTEST(entry(0).level, "expected");
}

void tst_ConsoleLog::pluginsThatHaveLogged()
{
    QSignalSpy appeared(m_log.get(), &ConsoleLog::pluginAppeared);
    run("function onRun() { print(1); print(2) }");
    QCOMPARE(appeared, QList<QVariantList>{QVariantList({u"com.example.a"_s, u"Tidy"_s})});
    const QHash<QString, QString> expected{{u"com.example.a"_s, u"Tidy"_s}};
    QCOMPARE(m_log->plugins(), expected);
}

void tst_ConsoleLog::entryWithoutAnything()
{
    m_log->log({}, QString());
    m_log->log({{u"command"_s, u"no command"_s}, {u"stringValue"_s, 7}}, QString());
    m_environment->queue.advance(LogModel::frame);
    QCOMPARE(m_log->entries().rowCount(), 2);
    QCOMPARE(entry(0).text, QString());
    QCOMPARE(entry(1).text, u"7"_s);
}

QTEST_MAIN(tst_ConsoleLog)
#include "tst_consolelog.moc"
