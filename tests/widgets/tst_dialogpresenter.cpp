#include "widgets/DialogPresenter.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QtTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The visible dialog of that class; null when there is none.
template <class Dialog>
Dialog *shown()
{
    const auto widgets = QApplication::topLevelWidgets();
    for (auto *const widget : widgets) {
        auto *const dialog = qobject_cast<Dialog *>(widget);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

template <class Message>
Message message(const QString &title, const QString &text = {})
{
    Message message;
    message.sender = u"Plug-in"_s;
    message.title = title;
    message.text = text;
    return message;
}

/// What was answered: "" before, "nil" for nothing.
struct Answer
{
    QString text;
    int calls = 0;

    template <class Value>
    UserPresenter::Callback<Value> callback()
    {
        return [this](const std::optional<Value> &value) {
            ++calls;
            text = value ? QVariant(*value).toString() : u"nil"_s;
        };
    }
};

void click(const QDialog &dialog, const QString &text)
{
    const auto buttons = dialog.findChildren<QAbstractButton *>();
    for (auto *const button : buttons) {
        if (button->isVisible() && button->text().remove(u'&') == text)
            return QTest::mouseClick(button, Qt::LeftButton);
    }
    QFAIL("no such button");
}

} // namespace

class tst_DialogPresenter : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void buttonsAnswer();
    void escapeAnswersNothing();
    void returnPressesTheDefaultButton();
    void buttonsKeepTheirAmpersands();
    void textsAreAsked_data();
    void textsAreAsked();
    void numbersAreAsked();
    void choicesAreAsked();
    void cancelAnswersNothing();
    void nothingIsMarkup();
    void takingAQuestionBackCallsNothing();
    void aCallbackMayTakeItsQuestionBack();
    void aWindowTakesItsQuestionsWithIt();
    void progressTellsAndStops();
    void progressWithoutCancel();
    void messagesGoByThemselves();
};

void tst_DialogPresenter::cleanup()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(shown<QDialog>(), nullptr);
}

void tst_DialogPresenter::buttonsAnswer()
{
    DialogPresenter presenter;
    Answer answer;
    auto question = message<UserQuestion>(u"Delete?"_s, u"For good."_s);
    question.buttons = {u"Delete"_s, u"Keep"_s};
    question.style = AlertStyle::Warning;
    const auto presentation = presenter.ask(question, answer.callback<int>());
    QCOMPARE(answer.calls, 0);
    auto *const box = shown<QMessageBox>();
    QVERIFY(box);
    QCOMPARE(box->text(), u"Delete?"_s);
    QCOMPARE(box->informativeText(), u"For good."_s);
    QCOMPARE(box->icon(), QMessageBox::Warning);
    click(*box, u"Keep"_s);
    QCOMPARE(answer.text, u"1"_s);
    QCOMPARE(answer.calls, 1);
}

void tst_DialogPresenter::escapeAnswersNothing()
{
    DialogPresenter presenter;
    Answer answer;
    auto question = message<UserQuestion>(u"Title"_s);
    question.buttons = {u"OK"_s};
    const auto presentation = presenter.ask(question, answer.callback<int>());
    QTest::keyClick(shown<QMessageBox>(), Qt::Key_Escape);
    QCOMPARE(answer.text, u"nil"_s);
}

void tst_DialogPresenter::returnPressesTheDefaultButton()
{
    DialogPresenter presenter;
    Answer answer;
    auto question = message<UserQuestion>(u"Title"_s);
    question.buttons = {u"First"_s, u"Second"_s};
    question.defaultButton = 1;
    const auto presentation = presenter.ask(question, answer.callback<int>());
    QTest::keyClick(shown<QMessageBox>(), Qt::Key_Return);
    QCOMPARE(answer.text, u"1"_s);
}

void tst_DialogPresenter::buttonsKeepTheirAmpersands()
{
    DialogPresenter presenter;
    Answer answer;
    auto question = message<UserQuestion>(u"Title"_s);
    question.buttons = {u"Save & Close"_s};
    const auto presentation = presenter.ask(question, answer.callback<int>());
    const auto buttons = shown<QMessageBox>()->buttons();
    QVERIFY(std::any_of(
        buttons.begin(), buttons.end(), [](const auto *button) { return button->text() == u"Save && Close"_s; }));
    QTest::keyClick(shown<QMessageBox>(), Qt::Key_Return);
    QCOMPARE(answer.text, u"0"_s);
}

void tst_DialogPresenter::textsAreAsked_data()
{
    QTest::addColumn<TextPrompt::Lines>("lines");

    QTest::newRow("one line") << TextPrompt::Lines::One;
    QTest::newRow("many lines") << TextPrompt::Lines::Many;
}

void tst_DialogPresenter::textsAreAsked()
{
    QFETCH(TextPrompt::Lines, lines);
    DialogPresenter presenter;
    Answer answer;
    auto prompt = message<TextPrompt>(u"Name"_s);
    prompt.value = u"Old"_s;
    prompt.lines = lines;
    const auto presentation = presenter.askText(prompt, answer.callback<QString>());
    auto *const dialog = shown<QInputDialog>();
    QVERIFY(dialog);
    QWidget *const editor = lines == TextPrompt::Lines::One
        ? static_cast<QWidget *>(dialog->findChild<QLineEdit *>())
        : static_cast<QWidget *>(dialog->findChild<QPlainTextEdit *>());
    QVERIFY(editor);
    QTest::keyClick(editor, Qt::Key_End);
    QTest::keyClicks(editor, u"er"_s);
    click(*dialog, u"OK"_s);
    QCOMPARE(answer.text, u"Older"_s);
}

void tst_DialogPresenter::numbersAreAsked()
{
    DialogPresenter presenter;
    Answer answer;
    auto prompt = message<NumberPrompt>(u"Columns"_s);
    prompt.value = 3;
    prompt.minimum = 1;
    prompt.maximum = 12;
    prompt.decimals = 1;
    const auto presentation = presenter.askNumber(prompt, answer.callback<double>());
    auto *const dialog = shown<QInputDialog>();
    auto *const box = dialog->findChild<QDoubleSpinBox *>();
    QCOMPARE(box->value(), 3.0);
    box->setValue(99);
    click(*dialog, u"OK"_s);
    QCOMPARE(answer.text, u"12"_s);
}

void tst_DialogPresenter::choicesAreAsked()
{
    DialogPresenter presenter;
    Answer answer;
    auto prompt = message<ChoicePrompt>(u"Colour"_s);
    prompt.choices = {u"Red"_s, u"Green"_s, u"Blue"_s};
    prompt.selected = 1;
    const auto presentation = presenter.askChoice(prompt, answer.callback<int>());
    auto *const dialog = shown<QInputDialog>();
    auto *const box = dialog->findChild<QComboBox *>();
    QCOMPARE(box->currentText(), u"Green"_s);
    box->setCurrentIndex(2);
    click(*dialog, u"OK"_s);
    QCOMPARE(answer.text, u"2"_s);
}

void tst_DialogPresenter::cancelAnswersNothing()
{
    DialogPresenter presenter;
    Answer answer;
    const auto presentation = presenter.askText(message<TextPrompt>(u"Name"_s), answer.callback<QString>());
    click(*shown<QInputDialog>(), u"Cancel"_s);
    QCOMPARE(answer.text, u"nil"_s);
}

void tst_DialogPresenter::nothingIsMarkup()
{
    DialogPresenter presenter;
    Answer answer;
    auto question = message<UserQuestion>(u"<b>Title</b>"_s, u"<img src=\"https://tracker.invalid\">"_s);
    question.buttons = {u"OK"_s};
    auto first = presenter.ask(question, answer.callback<int>());
    auto second = presenter.askText(message<TextPrompt>(u"<b>Title</b>"_s), answer.callback<QString>());
    auto third = presenter.showProgress(message<ProgressTask>(u"<b>Title</b>"_s), nullptr);
    int labels = 0;
    const auto widgets = QApplication::topLevelWidgets();
    for (const auto *const widget : widgets) {
        const auto children = widget->findChildren<QLabel *>();
        for (const auto *const label : children) {
            ++labels;
            QVERIFY(label->text().isEmpty() || label->textFormat() == Qt::PlainText);
        }
    }
    QVERIFY(labels >= 4);
}

void tst_DialogPresenter::takingAQuestionBackCallsNothing()
{
    DialogPresenter presenter;
    Answer answer;
    auto presentation = presenter.askText(message<TextPrompt>(u"Name"_s), answer.callback<QString>());
    presentation.reset();
    QCOMPARE(shown<QInputDialog>(), nullptr);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(answer.calls, 0);
}

void tst_DialogPresenter::aCallbackMayTakeItsQuestionBack()
{
    DialogPresenter presenter;
    UserPresenter::PresentationPointer presentation;
    int calls = 0;
    presentation = presenter.askText(message<TextPrompt>(u"Name"_s), [&](const std::optional<QString> &) {
        ++calls;
        presentation.reset();
    });
    click(*shown<QInputDialog>(), u"OK"_s);
    QCOMPARE(calls, 1);
}

void tst_DialogPresenter::aWindowTakesItsQuestionsWithIt()
{
    auto window = std::make_unique<QWidget>();
    window->show();
    auto presenter = std::make_unique<DialogPresenter>(window.get());
    Answer answer;
    const auto presentation = presenter->askText(message<TextPrompt>(u"Name"_s), answer.callback<QString>());
    presenter.reset();
    QCOMPARE(answer.calls, 0);
    window.reset();
    QCOMPARE(answer.text, u"nil"_s);
    QCOMPARE(answer.calls, 1);
}

void tst_DialogPresenter::progressTellsAndStops()
{
    DialogPresenter presenter;
    int cancelled = 0;
    const auto progress = presenter.showProgress(message<ProgressTask>(u"Exporting"_s), [&] { ++cancelled; });
    auto *const dialog = shown<QProgressDialog>();
    QVERIFY(dialog);
    progress->setText(u"Layer 3"_s);
    progress->setFraction(0.5);
    QCOMPARE(dialog->labelText(), u"Layer 3"_s);
    QCOMPARE(dialog->value() * 2, dialog->maximum());
    progress->setFraction(1);
    progress->setFraction(std::nullopt);
    QCOMPARE(dialog->maximum(), 0);
    click(*dialog, u"Cancel"_s);
    QCOMPARE(cancelled, 1);
    QVERIFY(dialog->isVisible());
}

void tst_DialogPresenter::progressWithoutCancel()
{
    DialogPresenter presenter;
    auto task = message<ProgressTask>(u"Exporting"_s);
    task.cancelling = ProgressTask::Cancelling::NotOffered;
    const auto progress = presenter.showProgress(task, nullptr);
    QCOMPARE(shown<QProgressDialog>()->findChildren<QPushButton *>().size(), 0);
}

void tst_DialogPresenter::messagesGoByThemselves()
{
    QWidget window;
    window.resize(400, 300);
    window.show();
    DialogPresenter presenter(&window);
    presenter.showMessage({u"Plug-in"_s, {}, u"<b>Saved</b>"_s});
    const QPointer<QLabel> label = window.findChild<QLabel *>(u"KorvanMessage"_s);
    QVERIFY(label && label->isVisible());
    QCOMPARE(label->text(), u"Plug-in: <b>Saved</b>"_s);
    QCOMPARE(label->textFormat(), Qt::PlainText);
    QTRY_VERIFY_WITH_TIMEOUT(!label, 20000);
}

QTEST_MAIN(tst_DialogPresenter)
#include "tst_dialogpresenter.moc"
