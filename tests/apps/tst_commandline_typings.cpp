// What a new plug-in has for its author's editor: scripts are completed and checked at once, and users get nothing of
// it.

#include "CommandLineFixture.h"

#include <QDirIterator>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

void addTemplateRows()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("script");
    QTest::newRow("command") << u"command"_s << u"command.js"_s;
    QTest::newRow("long-running") << u"long-running"_s << u"counter.js"_s;
    QTest::newRow("data-supplier") << u"data-supplier"_s << u"names.js"_s;
}

QByteArray request(const QString &command, const QJsonObject &arguments)
{
    static int latest = 0;
    const QJsonObject request{
        {u"seq"_s, ++latest}, {u"type"_s, u"request"_s}, {u"command"_s, command}, {u"arguments"_s, arguments}};
    return QJsonDocument(request).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

class tst_CommandLine_Typings : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init();
    void newPluginsAreWithoutMistakes_data() { addTemplateRows(); }
    void newPluginsAreWithoutMistakes();
    void mistakesInThemAreFound();
    void editorsCompleteAtOnce_data() { addTemplateRows(); }
    void editorsCompleteAtOnce();
    void testsFindWhatTheirTypingsSay();
    void usersGetNothingOfThem();
    void validationPassesOverThem();

private:
    QString path(const QString &name) const { return m_folder->filePath(u"plugins/New.korvanplugin/"_s + name); }
    Finished create(const QString &templateName) const
    {
        return run({u"--folder"_s, u"plugins"_s, u"create"_s, u"New"_s, u"--template"_s, templateName});
    }
    /// What one of the compiler's programs answers, in the plug-in's folder.
    QString answerOf(const char *program, const QStringList &arguments, const QByteArray &input = {}) const
    {
        QProcess process;
        process.setWorkingDirectory(path({}));
        process.start(QStringLiteral(KORVAN_NODE),
            QStringList{QStringLiteral(KORVAN_TYPESCRIPT "/bin/") + QLatin1String(program)} + arguments);
        process.write(input);
        process.closeWriteChannel();
        return process.waitForFinished(-1) ? QString::fromUtf8(process.readAllStandardOutput()) : process.errorString();
    }
    QString complaints() const { return answerOf("tsc", {u"-p"_s, u"jsconfig.json"_s}); }
};

void tst_CommandLine_Typings::init()
{
    makeFolder();
}

void tst_CommandLine_Typings::newPluginsAreWithoutMistakes()
{
    QFETCH(QString, name);
    QCOMPARE(create(name).exitCode, 0);
    QCOMPARE(complaints(), QString());
}

void tst_CommandLine_Typings::mistakesInThemAreFound()
{
    QCOMPARE(create(u"command"_s).exitCode, 0);
    writeFile(path(u"Contents/Korvan/mistake.js"_s), "require('korvan/dom').activeDocument().nam;\n");
    const auto found = complaints();
    QVERIFY2(found.startsWith(u"Contents/Korvan/mistake.js(1,40): error"), qPrintable(found));
    QVERIFY2(found.contains(u"'nam' does not exist"), qPrintable(found));
}

void tst_CommandLine_Typings::editorsCompleteAtOnce()
{
    QFETCH(QString, name);
    QFETCH(QString, script);
    QCOMPARE(create(name).exitCode, 0);
    // As an editor asks: it opens a script of the plug-in, with what its author is about to write at the end.
    const auto file = QFileInfo(path(u"Contents/Korvan/"_s + script)).canonicalFilePath();
    const QStringList lines{u"/** @param {Korvan.Context} context */ const f = (context) => context."_s,
        u"require('korvan/ui')."_s, u"require('path')."_s};
    const auto text = QString::fromUtf8(fileContent(file)) + lines.join(u";\n"_s);
    QByteArray requests = request(u"open"_s, {{u"file"_s, file}, {u"fileContent"_s, text}});
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const auto line = text.count(u'\n') + 1 - lines.size() + 1 + i;
        requests +=
            request(u"completionInfo"_s, {{u"file"_s, file}, {u"line"_s, line}, {u"offset"_s, lines.at(i).size() + 1}});
    }
    const auto answer = answerOf("tsserver", {u"--disableAutomaticTypingAcquisition"_s}, requests);
    for (const auto *const key : {"document", "selection", "command", "plugin", "scriptPath", "askNumber", "basename"})
        QVERIFY2(answer.contains(u"\"name\":\"%1\""_s.arg(QLatin1String(key))), key);
}

void tst_CommandLine_Typings::testsFindWhatTheirTypingsSay()
{
    QCOMPARE(create(u"command"_s).exitCode, 0);
    // The compiler tells of a name that is too much on the left or on the right, the test of one that is not there.
    writeFile(path(u"tests/names.test.js"_s), R"(
        const testing = require('korvan/testing');
        const names = /** @type {const} */ (['afterEach', 'assert', 'beforeEach', 'clearLog', 'clock', 'describe', 'expect',
            'it', 'log', 'network', 'openDocument', 'redo', 'runCommand', 'snapshot',
            'supplyData', 'test', 'undo', 'undoText', 'user']);
        /** @type {(keyof typeof testing)[]} */
        const inTypings = [...names];
        /** @type {Record<Exclude<keyof typeof testing, typeof names[number]>, never>} */
        const others = {};
        const ofTheProgram = ['perform'];

        describe('the module of tests', () => {
            it('has these names', () => {
                expect(Object.keys(testing).sort()).to.deep.equal([...inTypings, ...ofTheProgram].sort());
                expect(others).to.be.empty;
            });
        });
    )");
    QCOMPARE(complaints(), QString());
    const auto tested = run({u"test"_s, path({})});
    QVERIFY2(tested.exitCode == 0, tested.output.constData());
}

void tst_CommandLine_Typings::usersGetNothingOfThem()
{
    QCOMPARE(create(u"command"_s).exitCode, 0);
    QVERIFY(QFileInfo(path(u".typings/index.d.ts"_s)).isFile());
    QVERIFY(!QFileInfo::exists(path(u".typings/jsconfig.json"_s)));
    QCOMPARE(run({u"pack"_s, path({}), u"--output"_s, u"new.zip"_s}).exitCode, 0);
    const auto unpacked = run({u"unpack"_s, u"new.zip"_s, u"unpacked"_s});
    QCOMPARE(unpacked.exitCode, 0);
    QStringList files;
    QDirIterator items(m_folder->filePath(u"unpacked"_s), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (items.hasNext())
        files.append(QDir(m_folder->filePath(u"unpacked"_s)).relativeFilePath(items.next()));
    files.sort();
    QCOMPARE(files,
        (QStringList{
            u"New.korvanplugin/Contents/Korvan/command.js"_s, u"New.korvanplugin/Contents/Korvan/manifest.json"_s}));
}

void tst_CommandLine_Typings::validationPassesOverThem()
{
    QCOMPARE(create(u"command"_s).exitCode, 0);
    const auto validated = run({u"validate"_s, path({})});
    QCOMPARE(validated.exitCode, 0);
    QVERIFY2(
        !validated.output.contains("typings") && !validated.output.contains("jsconfig"), validated.output.constData());
}

QTEST_GUILESS_MAIN(tst_CommandLine_Typings)
#include "tst_commandline_typings.moc"
