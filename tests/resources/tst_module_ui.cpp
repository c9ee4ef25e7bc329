#include "resources/ModuleFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray prologue = R"(
    const ui = require('korvan/ui');
    const show = (value) => print(JSON.stringify(value) ?? 'undefined');
    const attempt = (work) => { try { work(); print('no error'); } catch (error) { print(`${error.name}: ${error.message}`); } };
)";

} // namespace

class tst_Module_UI : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void questions_data();
    void questions();
    void errors_data();
    void errors();
    void questionsKeepTheCommandRunning();
    void theSessionsEndTakesQuestionsAway();
    void severalAtOnce();
    void tooManyAtOnce();
    void withoutAUser();
    void progressTells();
    void progressTakesNoUnknownNames();
    void progressIsCancelled();
    void progressEndsWithItsWork();
    void progressEndsWithTheSession();
    void errorsInAnswersAreReported();

private:
    std::unique_ptr<ModuleFixture> m_fixture;
};

void tst_Module_UI::init()
{
    m_fixture = std::make_unique<ModuleFixture>("\"name\": \"Tidy\",");
}

void tst_Module_UI::cleanup()
{
    m_fixture.reset();
}

void tst_Module_UI::questions_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<QVariant>("answer");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("result");

    const auto row = [](const char *tag, const char *call, const QVariant &answer, const QString &shown,
                         const QString &result) {
        QTest::newRow(tag) << QByteArray(call) << answer << shown << result;
    };
    row("an alert", "ui.alert('Done')", 0, u"question [Tidy] Done (1; OK; 0)"_s, u"\"OK\""_s);
    row("an alert with everything",
        "ui.alert({ title: 'Delete?', text: 'For good.', style: 'critical', buttons: ['Delete', 'Keep'], "
        "defaultButton: 'Keep' })",
        1, u"question [Tidy] Delete? / For good. (2; Delete|Keep; 1)"_s, u"\"Keep\""_s);
    row("an alert that is closed", "ui.alert({ title: 'T', style: 'warning' })", QVariant(),
        u"question [Tidy] T (0; OK; 0)"_s, u"null"_s);
    row("a text", "ui.askText('Name')", u"New"_s, u"text [Tidy] Name"_s, u"\"New\""_s);
    row("an empty text", "ui.askText({ title: 'Name', value: 'Old', lines: 'many' })", u""_s,
        u"text [Tidy] Name (Old; many)"_s, u"\"\""_s);
    row("no text", "ui.askText('Name')", QVariant(), u"text [Tidy] Name"_s, u"null"_s);
    row("a number", "ui.askNumber({ title: 'Columns', value: 3, minimum: 1, maximum: 12 })", 4.0,
        u"number [Tidy] Columns (3; 1 to 12; 0)"_s, u"4"_s);
    row("a number from outside", "ui.askNumber({ title: 'Columns', value: 99, maximum: 12, decimals: 2 })", 0.25,
        u"number [Tidy] Columns (12; -1e+12 to 12; 2)"_s, u"0.25"_s);
    row("zero", "ui.askNumber('Columns')", 0.0, u"number [Tidy] Columns (0; -1e+12 to 1e+12; 0)"_s, u"0"_s);
    row("a choice", "ui.askChoice({ title: 'Colour', choices: ['Red', 'Green'], value: 'Green' })", 0,
        u"choice [Tidy] Colour (Red|Green; 1)"_s, u"\"Red\""_s);
}

void tst_Module_UI::questions()
{
    QFETCH(QByteArray, call);
    QFETCH(QVariant, answer);
    QFETCH(QString, shown);
    QFETCH(QString, result);
    m_fixture->user.answers = {answer};
    QCOMPARE(m_fixture->run(prologue + "show(await " + call + ")"), QStringList{result});
    QCOMPARE(*m_fixture->user.shown, QStringList{shown});
    QCOMPARE(m_fixture->user.openCount(), 0);
    QVERIFY(!m_fixture->isRunning());
}

void tst_Module_UI::errors_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *tag, const char *call, const QString &expected) {
        QTest::newRow(tag) << QByteArray(call) << expected;
    };
    row("no title", "ui.alert({ text: 'A' })",
        u"TypeError: The title of alert() has to be a text, but is nothing (undefined)."_s);
    row("nothing", "ui.askText()",
        u"TypeError: askText() takes an object with its options, but was given nothing "
        "(undefined)."_s);
    row("an option that is misspelt", "ui.alert({ title: 'A', button: ['B'] })",
        u"TypeError: alert() knows no option \"button\". Did you mean \"buttons\"? It knows: title, text, style, "
        u"buttons, "
        "defaultButton."_s);
    row("no buttons", "ui.alert({ title: 'A', buttons: [] })",
        u"TypeError: The buttons have to be an array with at least one text, but are an empty one."_s);
    row("a style", "ui.alert({ title: 'A', style: 'red' })",
        u"TypeError: The style of an alert has to be one of information, warning, critical, but is the text \"red\"."_s);
    row("a default that is no button", "ui.alert({ title: 'A', buttons: ['B'], defaultButton: 'C' })",
        u"TypeError: The default button has to be one of B, but is the text \"C\"."_s);
    row("bounds", "ui.askNumber({ title: 'A', minimum: 2, maximum: 1 })",
        u"RangeError: The minimum of askNumber() (2) is above its maximum (1)."_s);
    row("no number", "ui.askNumber({ title: 'A', value: '1' })",
        u"TypeError: The value of askNumber() has to be a number, but is the text \"1\"."_s);
    row("decimals", "ui.askNumber({ title: 'A', decimals: 1.5 })",
        u"RangeError: The decimals of askNumber() have to be a whole number from 0 to 15, but are 1.5."_s);
    row("no choices", "ui.askChoice('A')",
        u"TypeError: The choices have to be an array with at least one text, but are nothing (undefined)."_s);
    row("a choice that is no text", "ui.askChoice({ title: 'A', choices: [1] })",
        u"TypeError: Each of the choices has to be a text, but is the number 1."_s);
    row("a gap among buttons", "ui.alert({ title: 'A', buttons: ['B', , 'C'] })",
        u"TypeError: Each of the buttons has to be a text, but is nothing (undefined)."_s);
    row("new", "new ui.Progress({ title: 'A', total: 'x' })",
        u"TypeError: A script cannot make a progress with new. Use progress() or withProgress()."_s);
    row("no message", "ui.message(5)", u"TypeError: A message has to be a text, but is the number 5."_s);
}

void tst_Module_UI::errors()
{
    QFETCH(QByteArray, call);
    QFETCH(QString, expected);
    QCOMPARE(m_fixture->run(prologue + "attempt(() => " + call + ")"), QStringList{expected});
    QCOMPARE(*m_fixture->user.shown, QStringList());
}

void tst_Module_UI::questionsKeepTheCommandRunning()
{
    // Not through the handler's promise, which would keep it too.
    m_fixture->runScript("function onRun() { require('korvan/ui').askText('Name').then(print) }");
    QVERIFY(m_fixture->isRunning());
    QCOMPARE(m_fixture->user.openCount(), 1);
}

void tst_Module_UI::theSessionsEndTakesQuestionsAway()
{
    m_fixture->run(prologue + "await ui.askText('Name'); print('never')");
    QCOMPARE(m_fixture->user.openCount(), 1);
    m_fixture->command->abandonSession();
    QCOMPARE(m_fixture->user.openCount(), 0);
    QCOMPARE(m_fixture->settle(), QStringList());
}

void tst_Module_UI::severalAtOnce()
{
    m_fixture->user.answers = {u"1"_s, u"2"_s};
    QCOMPARE(m_fixture->run(prologue + "show(await Promise.all([ui.askText('A'), ui.askText('B')]))"),
        QStringList{uR"(["1","2"])"_s});
}

void tst_Module_UI::tooManyAtOnce()
{
    const auto lines =
        m_fixture->run(prologue + "for (let i = 0; i < 30; ++i) ui.alert('A').catch((e) => print(e.message))");
    QCOMPARE(lines.size(), 10);
    QCOMPARE(lines.first(),
        u"At most 20 questions can wait for the user at once. Await the answer of one before asking the "
        "next."_s);
    QCOMPARE(m_fixture->user.openCount(), 20);
}

void tst_Module_UI::withoutAUser()
{
    m_fixture->environment.user = nullptr;
    QCOMPARE(m_fixture->run(prologue
                 + "show(await ui.askText('Name')); ui.message('Done'); "
                   "await ui.withProgress('Work', (p) => { p.value = 1; })"),
        QStringList({u"Nobody can be asked here, so \"Name\" has no answer."_s, u"null"_s}));
    QVERIFY(!m_fixture->isRunning());
    QCOMPARE(m_fixture->environment.systemLogLines, QStringList{u"Tidy: Done"_s});
}

void tst_Module_UI::progressTells()
{
    QCOMPARE(m_fixture->run(prologue + R"(
        ui.message('Begins');
        const progress = ui.progress({ title: 'Export', text: 'First', total: 4 });
        progress.value += 1; progress.text = 'Second'; progress.finish(); progress.finish(); progress.value = 2;
        show([progress.value, progress.total, progress.text, progress.isCancelled]);
    )"),
        QStringList{uR"([2,4,"Second",false])"_s});
    QCOMPARE(*m_fixture->user.shown,
        QStringList({u"message [Tidy]  / Begins"_s, u"progress [Tidy] Export / First (cancel)"_s, u"progress 0.25"_s,
            u"progress text Second"_s, u"progress ends"_s}));
    QVERIFY(!m_fixture->isRunning());
}

void tst_Module_UI::progressTakesNoUnknownNames()
{
    QCOMPARE(m_fixture->run(prologue
                 + "const progress = ui.progress('A'); attempt(() => { progress.val = 5; }); "
                   "attempt(() => { progress.total = 5; }); progress.finish()"),
        QStringList({u"TypeError: A progress has no \"val\". Did you mean \"value\"? What can be assigned to: value, "
                     "text, onCancel."_s,
            u"TypeError: The \"total\" of a progress cannot be assigned to. What can be: value, text, onCancel."_s}));
}

void tst_Module_UI::progressIsCancelled()
{
    m_fixture->runScript("const ui = require('korvan/ui'); const progress = ui.progress('Export'); let hold;"
                         "function onRun() { hold = require('korvan/async').hold(); "
                         "progress.onCancel = () => { print(progress.isCancelled); progress.finish(); hold.end(); } }");
    QVERIFY(m_fixture->isRunning());
    m_fixture->user.cancelProgress();
    QCOMPARE(m_fixture->settle(), QStringList{u"true"_s});
    QCOMPARE(m_fixture->user.openCount(), 0);
    QVERIFY(!m_fixture->isRunning());
}

void tst_Module_UI::progressEndsWithItsWork()
{
    QCOMPARE(m_fixture->run(prologue + R"(
        show(await ui.withProgress({ title: 'A', cancellable: false }, async (progress) => { progress.value = 1; return 7; }));
        try { await ui.withProgress('B', () => { throw new Error('failed'); }); } catch (error) { print(error.message); }
    )"),
        QStringList({u"7"_s, u"failed"_s}));
    QCOMPARE(*m_fixture->user.shown,
        QStringList({u"progress [Tidy] A"_s, u"progress ?"_s, u"progress ends"_s, u"progress [Tidy] B (cancel)"_s,
            u"progress ends"_s}));
}

void tst_Module_UI::progressEndsWithTheSession()
{
    QCOMPARE(m_fixture->run(prologue + "ui.progress('Export')"), QStringList());
    QVERIFY(!m_fixture->isRunning());
    QCOMPARE(m_fixture->user.openCount(), 0);
}

void tst_Module_UI::errorsInAnswersAreReported()
{
    m_fixture->user.answers = {u"New"_s};
    const auto lines = m_fixture->run(prologue + "await ui.askText('Name'); throw new Error('after the answer')");
    QCOMPARE(lines, QStringList{u"error: Error: after the answer"_s});
    QVERIFY(!m_fixture->isRunning());
}

QTEST_GUILESS_MAIN(tst_Module_UI)
#include "tst_module_ui.moc"
