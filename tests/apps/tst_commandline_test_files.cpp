// Which tests of plug-ins are run, and what is told of them.

#include "PluginTestsFixture.h"

using namespace Qt::StringLiterals;

class tst_CommandLine_Test_Files : public QObject, private PluginTestsFixture
{
    Q_OBJECT

private slots:
    void init() { makePlugin(); }
    void fileThatCannotBeLoaded_data();
    void fileThatCannotBeLoaded();
    void selection_data();
    void selection();
    void documents();
    void files();
    void fileOutsideOfPlugins();
    void pluginThatCannotBeRead();
    void generatedTests();
    void nothingToTest_data();
    void nothingToTest();
    void nothingIsExplained_data();
    void nothingIsExplained();
    void forPeople();
    void examplesPass_data();
    void examplesPass();
    void templatePasses();
    void testsAreNotPacked();
};

void tst_CommandLine_Test_Files::fileThatCannotBeLoaded_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("message");
    const auto noDone = u"TypeError: Tests have no done(): the function of it() returns a promise, or is async."_s;
    QTest::newRow("no JavaScript") << QByteArray("it('a', () => {}); )") << u"SyntaxError: Unexpected token ')'"_s;
    QTest::newRow("an error") << QByteArray("it('a', () => {}); null.x;")
                              << u"TypeError: null is not an object (evaluating 'null.x')"_s;
    QTest::newRow("a test without a title")
        << QByteArray("it(() => {});") << u"TypeError: it() needs a title, a text that says what is tested."_s;
    QTest::newRow("an async group")
        << QByteArray("describe('a', async () => {});")
        << u"TypeError: The function of describe() must not be async: it only says which tests there are."_s;
    QTest::newRow("a test with done") << QByteArray("it('a', function (done) { done(); });") << noDone;
    QTest::newRow("an async test with done") << QByteArray("it('a', async done => done());") << noDone;
    QTest::newRow("a loop")
        << QByteArray("for (;;);")
        << u"The script of the command \"com.example.words/tests/a.test.js\" was stopped: it ran for more than 0.2 seconds."_s;
}

void tst_CommandLine_Test_Files::fileThatCannotBeLoaded()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, message);
    testFile(u"a.test.js"_s, content);
    testFile(u"b.test.js"_s, "it('b', () => {});");
    const auto finished = test({u"--limit"_s, u"0.2"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(statuses(finished), QStringList({u"(loading the file) failed"_s, u"b passed"_s}));
    QCOMPARE(result(finished)[u"error"_s].toObject()[u"message"_s], QJsonValue(message));
}

void tst_CommandLine_Test_Files::selection_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("expected");
    const QByteArray groups = "describe('Colours', () => { it('mix', () => {}); describe('of the sky', () => "
                              "it('fade', () => {})); }); test('words', () => {});";
    QTest::newRow("all") << groups << QStringList()
                         << QStringList{u"mix passed"_s, u"fade passed"_s, u"words passed"_s};
    QTest::newRow("by a group's title") << groups << QStringList{u"--filter"_s, u"colours › OF"_s}
                                        << QStringList{u"fade passed"_s};
    QTest::newRow("nothing is left") << groups << QStringList{u"--filter"_s, u"zzz"_s} << QStringList();
    QTest::newRow("skip") << QByteArray(
        "it.skip('a', () => {}); describe.skip('b', () => it.only('c', () => {})); it('d');"
        "it('e', () => {});")
                          << QStringList()
                          << QStringList{u"a skipped"_s, u"c skipped"_s, u"d skipped"_s, u"e passed"_s};
    QTest::newRow("only") << QByteArray("it('a', () => {}); describe.only('b', () => { it('c', () => {}); }); "
                                        "it.only('d', () => {});")
                          << QStringList() << QStringList{u"a skipped"_s, u"c passed"_s, u"d passed"_s};
}

void tst_CommandLine_Test_Files::selection()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QStringList, arguments);
    QFETCH(const QStringList, expected);
    testFile(u"a.test.js"_s, content);
    const auto finished = test(arguments);
    QCOMPARE(statuses(finished), expected);
    QCOMPARE(finished.exitCode, expected.join(u' ').contains(u"passed"_s) ? 0 : 1);
}

void tst_CommandLine_Test_Files::documents()
{
    testFile(u"a.test.js"_s, head + "it('a', () => console.log(snapshot().name));");
    testFile(u"deeper/b.test.js"_s,
        head + "it('b', () => { openDocument('../other.json'); console.log(snapshot().name); });");
    testFile(u"document.json"_s, R"({"name": "Beside", "layers": []})");
    testFile(u"other.json"_s, R"({"name": "Other", "layers": []})");
    const auto given = m_folder->filePath(u"given.json"_s);
    writeFile(given, R"({"name": "Given", "layers": []})");
    const auto names = [](const Finished &finished) {
        QStringList texts;
        for (int index = 0; index < 2; ++index)
            texts.append(result(finished, index)[u"log"_s].toArray().first().toObject()[u"stringValue"_s].toString());
        return texts;
    };
    QCOMPARE(names(test()), QStringList({u"Beside"_s, u"Other"_s}));
    QCOMPARE(names(test({u"--document"_s, given})), QStringList({u"Given"_s, u"Other"_s}));
    const auto missing = test({u"--document"_s, u"missing.json"_s});
    QCOMPARE(missing.exitCode, 1);
}

void tst_CommandLine_Test_Files::files()
{
    testFile(u"b.test.js"_s, "it('b', () => {});");
    testFile(u"a/c.test.js"_s, "it('c', () => {});");
    testFile(u"helper.js"_s, "throw 'no test';");
    testFile(u"node_modules/x/d.test.js"_s, "it('d', () => {});");
    writeFile(bundle() + u"/Contents/Korvan/e.test.js"_s, "it('e', () => {});");
    QCOMPARE(statuses(test()), QStringList({u"c passed"_s, u"b passed"_s}));
    QCOMPARE(statuses(run({u"test"_s, bundle() + u"/tests/a"_s, u"--json"_s})), QStringList{u"c passed"_s});
    const auto file = run({u"test"_s, bundle() + u"/tests/b.test.js"_s, u"--json"_s});
    QCOMPARE(statuses(file), QStringList{u"b passed"_s});
    QCOMPARE(result(file)[u"file"_s].toString(), QFileInfo(bundle()).canonicalFilePath() + u"/tests/b.test.js"_s);
}

void tst_CommandLine_Test_Files::fileOutsideOfPlugins()
{
    const auto file = m_folder->filePath(u"plain.js"_s);
    writeFile(file, head + "it('a', () => expect(1).to.equal(1)); it('b', () => runCommand('add'));");
    const auto finished = run({u"test"_s, file, u"--json"_s});
    QCOMPARE(statuses(finished), QStringList({u"a passed"_s, u"b failed"_s}));
    QCOMPARE(result(finished, 1)[u"error"_s].toObject()[u"message"_s].toString(),
        u"Error: The test's file is in no plug-in, so that it has no commands."_s);
}

void tst_CommandLine_Test_Files::pluginThatCannotBeRead()
{
    testFile(u"a.test.js"_s, "it('a', () => {});");
    writeFile(bundle() + u"/Contents/Korvan/manifest.json"_s, "no JSON");
    const auto finished = test();
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(result(finished)[u"error"_s].toObject()[u"message"_s].toString(),
        u"The plug-in \"%1\" cannot be read."_s.arg(QFileInfo(bundle()).canonicalFilePath()));
}

void tst_CommandLine_Test_Files::generatedTests()
{
    const QByteArray map = R"({"version": 3, "sources": ["../src/a.test.ts"], "names": [], "mappings": "AAAA;AAIE"})";
    testFile(u"a.test.js"_s,
        "it('a', () => {\n  null.x; });\n//# sourceMappingURL=data:application/json;base64," + map.toBase64());
    const auto error = result(test())[u"error"_s].toObject();
    QCOMPARE(error[u"file"_s], QJsonValue(u"src/a.test.ts"_s));
    QCOMPARE(error[u"line"_s], QJsonValue(5));
    QCOMPARE(error[u"column"_s], QJsonValue(3));
}

void tst_CommandLine_Test_Files::nothingToTest_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("no such file") << QStringList{u"missing"_s} << 1;
    QTest::newRow("a plug-in without tests") << QStringList{u"plugins/Words.korvanplugin"_s} << 1;
    QTest::newRow("no path") << QStringList() << 2;
    QTest::newRow("no limit") << QStringList{u"plugins/Words.korvanplugin"_s, u"--limit"_s, u"0"_s} << 2;
}

void tst_CommandLine_Test_Files::nothingToTest()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const int, exitCode);
    const auto finished = run(QStringList{u"test"_s, u"--json"_s} + arguments);
    QCOMPARE(finished.exitCode, exitCode);
    QCOMPARE(finished.json().contains(u"error"_s), exitCode == 1);
}

void tst_CommandLine_Test_Files::nothingIsExplained_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    QTest::newRow("an empty file") << QByteArray()
                                   << u"There are no tests in the files: it('title', () => { … }) makes one.\n"_s;
    QTest::newRow("no such title") << QByteArray("it('a', () => {});") << u"No test has \"zzz\" in its title.\n"_s;
    QTest::newRow("a file that cannot be loaded says why itself") << QByteArray("null.x;") << QString();
    QTest::newRow("a test that is skipped") << QByteArray("it.skip('zzz', () => {});") << QString();
}

void tst_CommandLine_Test_Files::nothingIsExplained()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, reason);
    testFile(u"a.test.js"_s, content);
    const auto finished = run({u"test"_s, bundle(), u"--filter"_s, u"zzz"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(QString::fromUtf8(finished.output).section(u"passed, "_s, 1).section(u'\n', 1), reason);
}

void tst_CommandLine_Test_Files::forPeople()
{
    testFile(u"a.test.js"_s,
        "describe('A', () => { it('b', () => { console.log('said');\n"
        "  expect({ a: 1, b: [2] }).to.deep.equal({ a: 1, b: [3] }); }); it('c', () => {}); it.skip('d', () => {}); "
        "});");
    const auto finished = run({u"test"_s, bundle()});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(QString::fromUtf8(finished.output),
        QFileInfo(bundle()).canonicalFilePath()
            + u"/tests/a.test.js\n"
              "  ✗ A › b\n"
              "      said\n"
              "      AssertionError: expected { a: 1, b: [ 2 ] } to deeply equal { a: 1, b: [ 3 ] }\n"
              "          at tests/a.test.js:2:41\n"
              "       {\n"
              "         a: 1,\n"
              "         b: [\n"
              "      -    3\n"
              "      +    2\n"
              "         ]\n"
              "       }\n"
              "      (- expected, + what came)\n"
              "  ✓ A › c\n"
              "  - A › d\n"
              "1 passed, 1 failed, 1 skipped.\n"_s);
}

void tst_CommandLine_Test_Files::examplesPass_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("Rename Layers") << u"Rename Layers"_s;
}

void tst_CommandLine_Test_Files::examplesPass()
{
    QFETCH(const QString, name);
    const auto finished = run({u"test"_s, u"%1/plugins/%2.korvanplugin"_s.arg(examples, name), u"--json"_s});
    QVERIFY2(finished.exitCode == 0, finished.output.constData());
}

void tst_CommandLine_Test_Files::templatePasses()
{
    QCOMPARE(run({u"--folder"_s, u"plugins"_s, u"create"_s, u"Count"_s}).exitCode, 0);
    const auto finished = run({u"test"_s, u"plugins/Count.korvanplugin"_s, u"--json"_s});
    QVERIFY2(finished.exitCode == 0, finished.output.constData());
}

void tst_CommandLine_Test_Files::testsAreNotPacked()
{
    testFile(u"a.test.js"_s, "");
    testFile(u"deeper/b.test.js"_s, "");
    writeFile(bundle() + u"/Contents/Korvan/tests/kept.js"_s, "");
    QCOMPARE(run({u"pack"_s, bundle(), u"--output"_s, u"words.zip"_s}).exitCode, 0);
    QCOMPARE(run({u"unpack"_s, u"words.zip"_s, u"unpacked"_s}).exitCode, 0);
    const auto unpacked = m_folder->filePath(u"unpacked/Words.korvanplugin"_s);
    QCOMPARE(QDir(unpacked).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{u"Contents"_s});
    QVERIFY(QFile::exists(unpacked + u"/Contents/Korvan/tests/kept.js"_s));
}

QTEST_GUILESS_MAIN(tst_CommandLine_Test_Files)
#include "tst_commandline_test_files.moc"
