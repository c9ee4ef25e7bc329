// What the program prints, whatever the command.

#include "CommandLineFixture.h"

using namespace Qt::StringLiterals;

class tst_CommandLine_Output : public QObject, CommandLineFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }

    void outputThatCannotBeWritten_data();
    void outputThatCannotBeWritten();
};

void tst_CommandLine_Output::outputThatCannotBeWritten_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("text on a full disk") << QStringList{u"menu"_s} << u"/dev/full"_s << 1;
    QTest::newRow("JSON on a full disk") << QStringList{u"menu"_s, u"--json"_s} << u"/dev/full"_s << 1;
    QTest::newRow("help on a full disk") << QStringList{u"--help"_s} << u"/dev/full"_s << 1;
    QTest::newRow("wrong usage stays that") << QStringList{u"no-such-command"_s} << u"/dev/full"_s << 2;
    QTest::newRow("written") << QStringList{u"menu"_s} << u"/dev/null"_s << 0;
}

void tst_CommandLine_Output::outputThatCannotBeWritten()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, file);
    QFETCH(int, exitCode);
    const auto finished = run(arguments, file);
    QCOMPARE(finished.exitCode, exitCode);
    QCOMPARE(finished.errors.contains(u"korvan-plugins: The output could not be written."_s), exitCode == 1);
}

QTEST_GUILESS_MAIN(tst_CommandLine_Output)
#include "tst_commandline_output.moc"
