#include "support/ScriptedPresenter.h"

#include "platform/LTAppEnvironment.h"

namespace {

QString lineFor(const char *kind, const UserMessage &message, const QString &details = {})
{
    auto line = QStringLiteral("%1 [%2] %3").arg(QLatin1String(kind), message.sender, message.title);
    if (!message.text.isEmpty())
        line += QStringLiteral(" / ") + message.text;
    return details.isEmpty() ? line : QStringLiteral("%1 (%2)").arg(line, details);
}

class Open final : public Presentation
{
public:
    explicit Open(std::shared_ptr<int> count)
        : m_count(std::move(count))
    {
        ++*m_count;
    }
    ~Open() override { --*m_count; }

    std::shared_ptr<char> life = std::make_shared<char>();

private:
    std::shared_ptr<int> m_count;
};

class OpenProgress final : public ProgressPresentation
{
public:
    OpenProgress(std::shared_ptr<int> count, std::shared_ptr<QStringList> shown)
        : m_open(std::move(count))
        , m_shown(std::move(shown))
    { }
    ~OpenProgress() override { m_shown->append(QStringLiteral("progress ends")); }

    void setText(const QString &text) override { m_shown->append(QStringLiteral("progress text ") + text); }
    void setFraction(std::optional<double> fraction) override
    {
        m_shown->append(QStringLiteral("progress ") + (fraction ? QString::number(*fraction) : QStringLiteral("?")));
    }

private:
    Open m_open;
    std::shared_ptr<QStringList> m_shown;
};

} // namespace

ScriptedPresenter::ScriptedPresenter() = default;

ScriptedPresenter::~ScriptedPresenter() = default;

template <class Answer>
UserPresenter::PresentationPointer ScriptedPresenter::present(const QString &line, Callback<Answer> answered)
{
    shown->append(line);
    auto open = std::make_unique<Open>(m_openCount);
    if (answers.isEmpty())
        return open;
    const auto value = answers.takeFirst();
    LTAppEnvironment::runOnMainQueue([value, answered, life = std::weak_ptr(open->life)] {
        if (!life.expired())
            answered(value.isValid() ? std::optional(value.value<Answer>()) : std::nullopt);
    });
    return open;
}

void ScriptedPresenter::showMessage(const UserMessage &message)
{
    shown->append(lineFor("message", message));
}

UserPresenter::PresentationPointer ScriptedPresenter::ask(const UserQuestion &question, Callback<int> answered)
{
    const auto buttons = question.buttons.join(QStringLiteral("|"));
    const auto details = QStringLiteral("%1; %2; %3").arg(int(question.style)).arg(buttons).arg(question.defaultButton);
    return present<int>(lineFor("question", question, details), std::move(answered));
}

UserPresenter::PresentationPointer ScriptedPresenter::askText(const TextPrompt &prompt, Callback<QString> answered)
{
    const auto lines = prompt.lines == TextPrompt::Lines::Many ? QStringLiteral("; many") : QString();
    return present<QString>(lineFor("text", prompt, prompt.value + lines), std::move(answered));
}

UserPresenter::PresentationPointer ScriptedPresenter::askNumber(const NumberPrompt &prompt, Callback<double> answered)
{
    const auto details = QStringLiteral("%1; %2 to %3; %4")
                             .arg(prompt.value)
                             .arg(prompt.minimum)
                             .arg(prompt.maximum)
                             .arg(prompt.decimals);
    return present<double>(lineFor("number", prompt, details), std::move(answered));
}

UserPresenter::PresentationPointer ScriptedPresenter::askChoice(const ChoicePrompt &prompt, Callback<int> answered)
{
    const auto details = QStringLiteral("%1; %2").arg(prompt.choices.join(QStringLiteral("|"))).arg(prompt.selected);
    return present<int>(lineFor("choice", prompt, details), std::move(answered));
}

std::unique_ptr<ProgressPresentation> ScriptedPresenter::showProgress(
    const ProgressTask &task, std::function<void()> cancelled)
{
    const bool isCancellable = task.cancelling == ProgressTask::Cancelling::Offered;
    shown->append(lineFor("progress", task, isCancellable ? QStringLiteral("cancel") : QString()));
    m_cancel = std::move(cancelled);
    return std::make_unique<OpenProgress>(m_openCount, shown);
}
