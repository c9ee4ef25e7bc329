#include "ScriptedUser.h"

#include "platform/LTAppEnvironment.h"
#include "platform/script/ValueText.h"

namespace {

/// A question that is taken back is not answered any more.
class Open final : public Presentation
{
public:
    std::shared_ptr<char> life = std::make_shared<char>();
};

class OpenProgress final : public ProgressPresentation
{
public:
    void setText(const QString &) override { }
    void setFraction(std::optional<double>) override { }
};

bool isNull(const QVariant &answer)
{
    return !answer.isValid() || answer.typeId() == QMetaType::Nullptr;
}

} // namespace

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
    const auto value = isNull(given) ? std::nullopt : read(given);
    if (!isNull(given) && !value)
        m_complain(QStringLiteral("\"%1\" cannot be answered with %2.").arg(message.title, descriptionOfValue(given)));
    LTAppEnvironment::runOnMainQueue([value, answered = std::move(answered), life = std::weak_ptr(open->life)] {
        if (!life.expired())
            answered(value);
    });
    return open;
}

UserPresenter::PresentationPointer ScriptedUser::choose(
    const UserMessage &message, const QStringList &choices, Callback<int> answered)
{
    const Reading<int> read = [&choices](const QVariant &given) {
        const auto index = choices.indexOf(given.toString());
        return index < 0 ? std::nullopt : std::optional(int(index));
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
    const Reading<QString> read = [](const QVariant &given) {
        return given.typeId() == QMetaType::QString ? std::optional(given.toString()) : std::nullopt;
    };
    return answer<QString>(prompt, read, std::move(answered));
}

UserPresenter::PresentationPointer ScriptedUser::askNumber(const NumberPrompt &prompt, Callback<double> answered)
{
    note("number", prompt, {{QStringLiteral("value"), prompt.value}});
    const Reading<double> read = [&prompt](const QVariant &given) {
        bool isNumber = given.typeId() != QMetaType::QString;
        const double number = isNumber ? given.toDouble(&isNumber) : 0;
        const bool isUsable = isNumber && number >= prompt.minimum && number <= prompt.maximum;
        return isUsable ? std::optional(number) : std::nullopt;
    };
    return answer<double>(prompt, read, std::move(answered));
}

UserPresenter::PresentationPointer ScriptedUser::askChoice(const ChoicePrompt &prompt, Callback<int> answered)
{
    note("choice", prompt, {{QStringLiteral("choices"), prompt.choices}});
    return choose(prompt, prompt.choices, std::move(answered));
}

std::unique_ptr<ProgressPresentation> ScriptedUser::showProgress(const ProgressTask &task, std::function<void()>)
{
    note("progress", task);
    return std::make_unique<OpenProgress>();
}
