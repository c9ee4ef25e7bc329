#include "widgets/DialogPresenter.h"

#include "widgets/PlainText.h"
#include "widgets/PluginText.h"

#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

namespace {

/// Both texts, the title above.
QString labelText(const UserMessage &message)
{
    if (message.title.isEmpty() || message.text.isEmpty())
        return message.title + message.text;
    return message.title + QStringLiteral("\n\n") + message.text;
}

/// A dialog for as long as somebody waits for it.
class DialogPresentation final : public Presentation
{
public:
    explicit DialogPresentation(QDialog *dialog)
        : m_dialog(dialog)
    { }
    ~DialogPresentation() override
    {
        if (!m_dialog)
            return;
        QObject::disconnect(m_dialog, nullptr, nullptr, nullptr);
        m_dialog->hide();
        m_dialog->deleteLater(); // it may be the one whose signal has led here
    }

private:
    QPointer<QDialog> m_dialog;
};

/// Shows the dialog. Once it is answered, or gone with its window, `answered` is called with what `answerOf` finds in
/// it; with nil when it was closed.
template <class Answer, class Dialog>
std::unique_ptr<Presentation> present(Dialog *dialog, UserPresenter::Callback<Answer> answered,
    std::function<std::optional<Answer>(const Dialog &dialog, int result)> answerOf)
{
    auto callback = std::make_shared<UserPresenter::Callback<Answer>>(std::move(answered));
    const auto answerOnce = [callback](std::optional<Answer> answer) {
        if (const auto call = std::exchange(*callback, nullptr))
            call(std::move(answer));
    };
    QObject::connect(dialog, &QDialog::finished, dialog, [dialog, answerOnce, answerOf](int result) {
        dialog->deleteLater();
        answerOnce(answerOf(*dialog, result));
    });
    QObject::connect(dialog, &QObject::destroyed, dialog->window(), [answerOnce] { answerOnce(std::nullopt); });
    showAsPlainText(*dialog);
    dialog->open();
    return std::make_unique<DialogPresentation>(dialog);
}

class ProgressDialogPresentation final : public ProgressPresentation
{
public:
    explicit ProgressDialogPresentation(QProgressDialog *dialog)
        : m_dialog(dialog)
    { }
    ~ProgressDialogPresentation() override
    {
        if (!m_dialog)
            return;
        QObject::disconnect(m_dialog, nullptr, nullptr, nullptr);
        m_dialog->hide();
        m_dialog->deleteLater();
    }

    void setText(const QString &text) override
    {
        if (m_dialog)
            m_dialog->setLabelText(text);
    }

    void setFraction(std::optional<double> fraction) override
    {
        if (!m_dialog)
            return;
        m_dialog->setMaximum(fraction ? wholeProgress : 0);
        m_dialog->setValue(fraction ? int(std::clamp(*fraction, 0.0, 1.0) * wholeProgress) : 0);
    }

private:
    static constexpr int wholeProgress = 1000;

    QPointer<QProgressDialog> m_dialog;
};

} // namespace

DialogPresenter::DialogPresenter(QWidget *window)
    : m_window(window)
{ }

DialogPresenter::~DialogPresenter() = default;

void DialogPresenter::showMessage(const UserMessage &message)
{
    constexpr std::chrono::seconds time(4);
    auto *const label = new QLabel(m_window, Qt::ToolTip);
    label->setAttribute(Qt::WA_DeleteOnClose);
    label->setAttribute(Qt::WA_ShowWithoutActivating);
    label->setObjectName(QStringLiteral("KorvanMessage"));
    label->setTextFormat(Qt::PlainText);
    label->setMargin(8);
    const auto text = labelText(message);
    label->setText(message.sender.isEmpty() ? text : QStringLiteral("%1: %2").arg(message.sender, text));
    label->adjustSize();
    if (m_window) {
        const QPoint bottom(m_window->width() / 2 - label->width() / 2, m_window->height() - 2 * label->height());
        label->move(m_window->mapToGlobal(bottom));
    }
    label->show();
    QTimer::singleShot(time, label, &QWidget::close);
}

UserPresenter::PresentationPointer DialogPresenter::ask(const UserQuestion &question, Callback<int> answered)
{
    auto *const box = new QMessageBox(m_window);
    box->setIcon(messageBoxIcon(question.style));
    box->setWindowTitle(question.sender);
    box->setTextFormat(Qt::PlainText);
    box->setText(question.title);
    box->setInformativeText(question.text);
    QList<QAbstractButton *> buttons;
    for (const auto &text : question.buttons)
        buttons.append(box->addButton(withoutMnemonics(text), QMessageBox::ActionRole));
    if (auto *const button = qobject_cast<QPushButton *>(buttons.value(question.defaultButton)))
        box->setDefaultButton(button);
    // Without one of the usual roles neither Escape nor the window's own button would close the box.
    auto *const escape = box->addButton(QMessageBox::Cancel);
    escape->hide();
    box->setEscapeButton(escape);
    return present<int, QMessageBox>(box, std::move(answered), [buttons](const QMessageBox &answeredBox, int) {
        const auto index = buttons.indexOf(answeredBox.clickedButton());
        return index < 0 ? std::nullopt : std::optional(int(index));
    });
}

UserPresenter::PresentationPointer DialogPresenter::askText(const TextPrompt &prompt, Callback<QString> answered)
{
    auto *const dialog = new QInputDialog(m_window);
    dialog->setWindowTitle(prompt.sender);
    dialog->setLabelText(labelText(prompt));
    dialog->setInputMode(QInputDialog::TextInput);
    dialog->setOption(QInputDialog::UsePlainTextEditForTextInput, prompt.lines == TextPrompt::Lines::Many);
    dialog->setTextValue(prompt.value);
    return present<QString, QInputDialog>(
        dialog, std::move(answered), [](const QInputDialog &answeredDialog, int result) {
            return result == QDialog::Accepted ? std::optional(answeredDialog.textValue()) : std::nullopt;
        });
}

UserPresenter::PresentationPointer DialogPresenter::askNumber(const NumberPrompt &prompt, Callback<double> answered)
{
    auto *const dialog = new QInputDialog(m_window);
    dialog->setWindowTitle(prompt.sender);
    dialog->setLabelText(labelText(prompt));
    dialog->setInputMode(QInputDialog::DoubleInput);
    dialog->setDoubleDecimals(prompt.decimals);
    // What the box can show: it takes its width from its longest number.
    constexpr double longest = 1e12;
    dialog->setDoubleRange(std::max(prompt.minimum, -longest), std::min(prompt.maximum, longest));
    dialog->setDoubleValue(prompt.value);
    return present<double, QInputDialog>(
        dialog, std::move(answered), [](const QInputDialog &answeredDialog, int result) {
            return result == QDialog::Accepted ? std::optional(answeredDialog.doubleValue()) : std::nullopt;
        });
}

UserPresenter::PresentationPointer DialogPresenter::askChoice(const ChoicePrompt &prompt, Callback<int> answered)
{
    auto *const dialog = new QInputDialog(m_window);
    dialog->setWindowTitle(prompt.sender);
    dialog->setLabelText(labelText(prompt));
    dialog->setInputMode(QInputDialog::TextInput);
    dialog->setComboBoxItems(prompt.choices);
    dialog->setTextValue(prompt.choices.value(prompt.selected));
    return present<int, QInputDialog>(
        dialog, std::move(answered), [choices = prompt.choices](const QInputDialog &answeredDialog, int result) {
            const auto index = choices.indexOf(answeredDialog.textValue());
            return result == QDialog::Accepted && index >= 0 ? std::optional(int(index)) : std::nullopt;
        });
}

std::unique_ptr<ProgressPresentation> DialogPresenter::showProgress(
    const ProgressTask &task, std::function<void()> cancelled)
{
    auto *const dialog = new QProgressDialog(m_window);
    dialog->setWindowTitle(task.sender);
    dialog->setLabelText(labelText(task));
    dialog->setMinimumDuration(0);
    dialog->setAutoClose(false);
    dialog->setAutoReset(false);
    dialog->setRange(0, 0);
    showAsPlainText(*dialog);
    QObject::disconnect(dialog, SIGNAL(canceled()), dialog, SLOT(cancel())); // it stays
    if (task.cancelling == ProgressTask::Cancelling::NotOffered)
        dialog->setCancelButton(nullptr);
    auto callback = std::make_shared<std::function<void()>>(std::move(cancelled));
    QObject::connect(dialog, &QProgressDialog::canceled, dialog, [callback] {
        if (const auto call = std::exchange(*callback, nullptr))
            call();
    });
    dialog->open();
    return std::make_unique<ProgressDialogPresentation>(dialog);
}
