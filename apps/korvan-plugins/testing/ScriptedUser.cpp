#include "ScriptedUser.h"

#include "NumberAnswer.h"
#include "platform/LTAppEnvironment.h"
#include "platform/script/ValueText.h"

namespace {

/// A question that is taken back is not answered any more.
class Open final : public Presentation
{
public:
    std::shared_ptr<char> life = std::make_shared<char>();
};

bool isNull(const QVariant &answer)
{
    return !answer.isValid() || answer.typeId() == QMetaType::Nullptr;
}

} // namespace

/// A progress that can be cancelled is on the user's list for as long as it is shown.
class ScriptedUser::OpenProgress final : public ProgressPresentation
{
public:
    OpenProgress(ScriptedUser &user, const ProgressTask &task, std::function<void()> cancelled)
        : m_user(user)
        , m_cancelled(std::move(cancelled))
    {
        if (task.cancelling == ProgressTask::Cancelling::Offered)
            m_user.m_cancellable.append(this);
    }
    ~OpenProgress() override { m_user.m_cancellable.removeOne(this); }

    void setText(const QString &) override { }
    void setFraction(std::optional<double>) override { }
    std::function<void()> cancelled() const { return m_cancelled; }

private:
    ScriptedUser &m_user; // which outlives all sessions of its test
    std::function<void()> m_cancelled;
};

ScriptedUser::ScriptedUser(std::function<void(const QString &complaint)> complain)
    : m_complain(std::move(complain))
{ }

void ScriptedUser::note(const char *kind, const UserMessage &message, QVariantMap more)
{
    more.insert(QStringLiteral("kind"), QLatin1String(kind));
    more.insert(QStringLiteral("title"), message.title);
    more.insert(QStringLiteral("text"), message.text);
    m_shown.append(more);
}

QVariant ScriptedUser::nextAnswer(const UserMessage &message)
{
    if (!m_answers.isEmpty())
        return m_answers.takeFirst();
    m_complain(QStringLiteral("\"%1\" was asked, and the test has no answer for it. Say user.answer(…) before.")
                   .arg(message.title));
    return {};
}

template <class Answer>
UserPresenter::PresentationPointer ScriptedUser::answer(
    const UserMessage &message, const Reading<Answer> &read, Callback<Answer> answered)
{
    auto open = std::make_unique<Open>();
    const auto given = nextAnswer(message);
    std::optional<Answer> value;
    if (!isNull(given)) {
        const auto reading = read(given);
        if (const auto *const refusal = std::get_if<Refusal>(&reading))
            m_complain(QStringLiteral("\"%1\" cannot be answered with %2. %3")
                           .arg(message.title, descriptionOfValue(given), refusal->sentence));
        else
            value = std::get<Answer>(reading);
    }
    LTAppEnvironment::runOnMainQueue([value, answered = std::move(answered), life = std::weak_ptr(open->life)] {
        if (!life.expired())
            answered(value);
    });
    return open;
}

UserPresenter::PresentationPointer ScriptedUser::choose(
    const UserMessage &message, const QStringList &choices, Callback<int> answered)
{
    const Reading<int> read = [&choices](const QVariant &given) -> std::variant<int, Refusal> {
        const auto index = choices.indexOf(given.toString());
        if (index < 0)
            return Refusal{
                QStringLiteral("It needs one of these texts: \"%1\".").arg(choices.join(QStringLiteral("\", \"")))};
        return int(index);
    };
    return answer<int>(message, read, std::move(answered));
}

void ScriptedUser::showMessage(const UserMessage &message)
{
    note("message", message);
}

UserPresenter::PresentationPointer ScriptedUser::ask(const UserQuestion &question, Callback<int> answered)
{
    note("alert", question, {{QStringLiteral("buttons"), question.buttons}});
    return choose(question, question.buttons, std::move(answered));
}

UserPresenter::PresentationPointer ScriptedUser::askText(const TextPrompt &prompt, Callback<QString> answered)
{
    note("text", prompt, {{QStringLiteral("value"), prompt.value}});
    const Reading<QString> read = [](const QVariant &given) -> std::variant<QString, Refusal> {
        if (given.typeId() != QMetaType::QString)
            return Refusal{QStringLiteral("It needs a text.")};
        return given.toString();
    };
    return answer<QString>(prompt, read, std::move(answered));
}

UserPresenter::PresentationPointer ScriptedUser::askNumber(const NumberPrompt &prompt, Callback<double> answered)
{
    note("number", prompt, {{QStringLiteral("value"), prompt.value}});
    const Reading<double> read = [&prompt](const QVariant &given) -> std::variant<double, Refusal> {
        if (given.typeId() == QMetaType::QString)
            return Refusal{QStringLiteral("It needs a number, and this is a text.")};
        bool isNumber = false;
        const double number = given.toDouble(&isNumber);
        if (!isNumber)
            return Refusal{QStringLiteral("It needs a number.")};
        if (const auto refusal = refusalOfNumber(prompt, number))
            return Refusal{*refusal};
        return number;
    };
    return answer<double>(prompt, read, std::move(answered));
}

UserPresenter::PresentationPointer ScriptedUser::askChoice(const ChoicePrompt &prompt, Callback<int> answered)
{
    note("choice", prompt, {{QStringLiteral("choices"), prompt.choices}});
    return choose(prompt, prompt.choices, std::move(answered));
}

std::unique_ptr<ProgressPresentation> ScriptedUser::showProgress(
    const ProgressTask &task, std::function<void()> cancelled)
{
    note("progress", task);
    return std::make_unique<OpenProgress>(*this, task, std::move(cancelled));
}

bool ScriptedUser::cancelProgress()
{
    const auto asked = m_cancellable; // a callback may end any of them
    for (auto *const progress : asked) {
        if (m_cancellable.contains(progress))
            progress->cancelled()();
    }
    return !asked.isEmpty();
}
