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
    void controlCharacters_data();
    void controlCharacters();
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

void tst_CommandLine_Output::controlCharacters_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("shown");
    const auto escaped = R"(Alpha\u001b[31m\u000a\u0009\u007f\u009bm  )"_ba;
    const auto withLayout = "Alpha\\u001b[31m\n\t\\u007f\\u009bm"_ba;
    QTest::newRow("in a table") << QStringList{u"menu"_s} << escaped;
    QTest::newRow("in a description") << QStringList{u"info"_s, u"p"_s} << withLayout;
    QTest::newRow("in what a script logs") << QStringList{u"run"_s, u"p/a"_s} << withLayout;
    QTest::newRow("as JSON they stay") << QStringList{u"info"_s, u"p"_s, u"--json"_s} << R"(Alpha\u001b[31m\n\t)"_ba;
}

void tst_CommandLine_Output::controlCharacters()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, shown);
    const auto name = R"("Alpha\u001b[31m\n\t\u007f\u009bm")"_ba;
    plugin(u"P"_s,
        R"({"identifier": "p", "name": )" + name
            + R"(, "commands": [{"script": "script.js", "identifier": "a", "name": )" + name
            + R"(}], "menu": {"items": ["a"]}})",
        "function onRun() { console.log(" + name + "); throw new Error(" + name + ") }");
    const auto finished = run(arguments + QStringList{u"--folder"_s, u"plugins"_s});
    QVERIFY2(finished.output.contains(shown), finished.output.constData());
    for (const auto &text : {QString::fromUtf8(finished.output), finished.errors.join(u'\n')}) {
        QVERIFY2(!text.contains(u'\x1b'), qPrintable(text));
        QVERIFY2(arguments.contains(u"--json"_s) || !text.contains(u'\x9b'), qPrintable(text));
    }
}

QTEST_GUILESS_MAIN(tst_CommandLine_Output)
#include "tst_commandline_output.moc"
