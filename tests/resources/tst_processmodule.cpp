// The module "process" as the application answers it, where it deliberately is not node's.

#include "commands/KRPluginCommand.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QFile>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_ProcessModule : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_environment.reset(); }

    void answers_data();
    void answers();
    void outputIsLogged();
    void environmentIsACopy();

private:
    /// Runs the expression as the handler of a script in a file.
    QVariant result(const QString &expression)
    {
        const auto path = m_environment->path(u"script.js"_s);
        const auto source = u"function onRun() { try { return %1; } catch (error) { return String(error); } }"_s;
        writeFile(path, source.arg(expression).toUtf8());
        const auto script = KRPluginScript::initWithURL(QUrl::fromLocalFile(path));
        m_command = std::make_shared<KRPluginCommand>(
            script, u"process"_s, u"Process"_s, u"onRun"_s, KRPluginCommand::Scope::Document);
        m_command->run({}, nullptr);
        return m_command->returnValue();
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::shared_ptr<KRPluginCommand> m_command;
};

void tst_ProcessModule::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    QVERIFY(QFile::link(QStringLiteral(KORVAN_RESOURCES_FOLDER), m_environment->path(u"resources"_s)));
}

void tst_ProcessModule::answers_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("version is the application's") << u"process.version"_s << QVariant(u"v98.3"_s);
    QTest::newRow("no version of node") << u"typeof process.versions.node"_s << QVariant(u"undefined"_s);
    QTest::newRow("process") << u"process.pid"_s << QVariant(QCoreApplication::applicationPid());
    QTest::newRow("program") << u"process.execPath === process.argv[0] && process.execPath"_s
                             << QVariant(QCoreApplication::applicationFilePath());
    QTest::newRow("script") << u"process.argv[1].endsWith('/script.js')"_s << QVariant(true);
    QTest::newRow("exit")
        << u"process.exit()"_s
        << QVariant(u"Error: process.exit() would act on the whole application. Return from the handler instead."_s);
    QTest::newRow("chdir")
        << u"process.chdir('/')"_s
        << QVariant(u"Error: process.chdir() would act on the whole application. Use absolute paths instead."_s);
    QTest::newRow("memory") << u"process.memoryUsage().rss > 1000000"_s << QVariant(true);
    QTest::newRow("events") << u"process instanceof require('events')"_s << QVariant(true);
}

void tst_ProcessModule::answers()
{
    QFETCH(QString, expression);
    QTEST(result(expression), "value");
}

void tst_ProcessModule::outputIsLogged()
{
    QCOMPARE(result(u"process.stdout.write('one\\n') && process.stderr.write('two')"_s), QVariant(true));
    const auto log = m_command->logsWhenRunViaTests();
    QCOMPARE(log.size(), 2);
    QCOMPARE(log[0].toMap().value(u"stringValue"_s), QVariant(u"one"_s));
    QCOMPARE(log[1].toMap().value(u"stringValue"_s), QVariant(u"two"_s));
    QCOMPARE(log[1].toMap().value(u"level"_s), QVariant(u"error"_s));
}

void tst_ProcessModule::environmentIsACopy()
{
    qputenv("KORVAN_TEST_VARIABLE", "outside");
    QCOMPARE(result(u"[process.env.KORVAN_TEST_VARIABLE, process.env.KORVAN_TEST_VARIABLE = 'inside'].join()"_s),
        QVariant(u"outside,inside"_s));
    QCOMPARE(qgetenv("KORVAN_TEST_VARIABLE"), "outside"_ba);
    QCOMPARE(result(u"process.env.KORVAN_TEST_VARIABLE"_s), QVariant(u"outside"_s));
}

QTEST_GUILESS_MAIN(tst_ProcessModule)
#include "tst_processmodule.moc"
