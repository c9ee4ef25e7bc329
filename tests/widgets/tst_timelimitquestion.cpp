#include "widgets/console/TimeLimitQuestion.h"

#include "commands/KRPluginCommand.h"
#include "manager/KRPluginManager.h"
#include "platform/UserDefaults.h"
#include "support/BundleBuilder.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using namespace Qt::StringLiterals;
using Decision = ScriptTimeLimitDecision;

class tst_TimeLimitQuestion : public QObject
{
    Q_OBJECT

private slots:
    void buttons_data();
    void buttons();
    void texts();
    void escapeGoesOn();
    void windowGoesWhileTheQuestionIsOpen();
    void questionGoesWhileItIsOpen();
    void applicationEnds();
    void questionInsideAQuestion();
    void scriptThatTakesTooLong();

private:
    /// Calls `visit` with the latest question as soon as one is shown.
    static void whenAsked(const std::function<void(QMessageBox &)> &visit);
    static void press(QMessageBox &box, const QString &button)
    {
        QTest::mouseClick(box.findChild<QPushButton *>(button), Qt::LeftButton);
    }
};

void tst_TimeLimitQuestion::whenAsked(const std::function<void(QMessageBox &)> &visit)
{
    QTimer::singleShot(0, qApp, [visit] {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        visit(*box);
    });
}

void tst_TimeLimitQuestion::buttons_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<Decision>("decision");

    QTest::newRow("stop") << u"StopScript"_s << Decision::Stop;
    QTest::newRow("keep waiting") << u"KeepWaiting"_s << Decision::GoOn;
}

void tst_TimeLimitQuestion::buttons()
{
    QFETCH(QString, button);
    const TimeLimitQuestion question;
    whenAsked([&button](QMessageBox &box) { press(box, button); });
    QTEST(question.ask(u"com.example.a/run"_s, 10), "decision");
}

void tst_TimeLimitQuestion::texts()
{
    const TimeLimitQuestion question;
    whenAsked([](QMessageBox &box) {
        QCOMPARE(box.text(), u"A script has been running for a long time."_s);
        QCOMPARE(box.informativeText(),
            u"“<b>a</b>/run” has computed for 2.5 seconds. Meanwhile the application cannot do anything else."_s);
        for (auto *const label : box.findChildren<QLabel *>())
            QCOMPARE(label->textFormat(), Qt::PlainText);
        QCOMPARE(box.windowModality(), Qt::ApplicationModal);
        press(box, u"KeepWaiting"_s);
    });
    question.ask(u"<b>a</b>\u202e/run"_s, 2.5);
}

void tst_TimeLimitQuestion::escapeGoesOn()
{
    const TimeLimitQuestion question;
    whenAsked([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QCOMPARE(question.ask(u"a/run"_s, 10), Decision::GoOn);
}

void tst_TimeLimitQuestion::windowGoesWhileTheQuestionIsOpen()
{
    auto window = std::make_unique<QWidget>();
    const TimeLimitQuestion question(window.get());
    whenAsked([&window](QMessageBox &) { window.reset(); });
    QCOMPARE(question.ask(u"a/run"_s, 10), Decision::Stop);
    whenAsked([](QMessageBox &box) { press(box, u"KeepWaiting"_s); });
    QCOMPARE(question.ask(u"a/run"_s, 10), Decision::GoOn); // without a window
}

void tst_TimeLimitQuestion::questionGoesWhileItIsOpen()
{
    auto question = std::make_unique<TimeLimitQuestion>();
    whenAsked([&question](QMessageBox &box) {
        question.reset();
        press(box, u"KeepWaiting"_s);
    });
    QCOMPARE(question->ask(u"a/run"_s, 10), Decision::GoOn);
}

void tst_TimeLimitQuestion::applicationEnds()
{
    const TimeLimitQuestion question;
    auto decision = Decision::GoOn;
    QTimer::singleShot(0, qApp, [&] { decision = question.ask(u"a/run"_s, 10); });
    QTimer::singleShot(1, qApp, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    QCOMPARE(decision, Decision::Stop);
}

void tst_TimeLimitQuestion::questionInsideAQuestion()
{
    const TimeLimitQuestion question;
    auto inner = Decision::GoOn;
    whenAsked([&](QMessageBox &outer) {
        whenAsked([](QMessageBox &box) {
            QVERIFY(box.informativeText().contains(u"b/run"_s));
            press(box, u"StopScript"_s);
        });
        inner = question.ask(u"b/run"_s, 10);
        press(outer, u"KeepWaiting"_s);
    });
    QCOMPARE(question.ask(u"a/run"_s, 10), Decision::GoOn);
    QCOMPARE(inner, Decision::Stop);
}

/// With the engine's own watchdog, and the answer that ends the script.
void tst_TimeLimitQuestion::scriptThatTakesTooLong()
{
    class Environment final : public LTAppEnvironment
    {
    public:
        ScriptTimeLimitDecision scriptExceededTimeLimit(const QString &name, double seconds) override
        {
            names.append(name);
            return question.ask(name, seconds);
        }
        UserDefaults &userDefaults() override { return defaults; }

        QStringList names;
        QTemporaryDir folder;
        UserDefaults defaults{folder.filePath(u"defaults.ini"_s)};
        TimeLimitQuestion question;
        Installation installation{*this};
    };
    Environment environment;
    environment.defaults.setValue(KRPluginCommandScriptTimeLimitKey, 0.05);
    QTimer presser;
    int questions = 0;
    connect(&presser, &QTimer::timeout, this, [&questions] {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box)
            press(*box, ++questions == 1 ? u"KeepWaiting"_s : u"StopScript"_s);
    });
    presser.start(1);
    BundleBuilder builder(environment.folder.path(), u"a"_s);
    builder.manifest(R"({"identifier": "a", "commands": [{"identifier": "run", "script": "script.js"}]})")
        .script(u"script.js"_s, "function onRun() { for (;;); }");
    KRPluginManager manager({QUrl::fromLocalFile(environment.folder.path() + u'/')}, nullptr, nullptr);
    manager.reloadPlugins();
    const auto command = manager.commandWithSpecifier({u"a"_s, u"run"_s});
    QVERIFY(command);
    const auto log = command->run({}, &manager).value_or(QString());
    QVERIFY2(log.contains(u"was stopped"_s), qPrintable(log));
    QCOMPARE(environment.names, QStringList({u"a/run"_s, u"a/run"_s}));
}

QTEST_MAIN(tst_TimeLimitQuestion)
#include "tst_timelimitquestion.moc"
