#include "commands/services/UserInterfaceService.h"

#include "platform/LTAppEnvironment.h"
#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptEvents.h"
#include "platform/script/ScriptException.h"

#include <algorithm>
#include <chrono>

namespace {

/// Else a loop could bury the user under windows.
constexpr std::size_t mostAtOnce = 20;

constexpr auto questionSignature = "(options: Record<string, unknown>, done: Function)";

QString textIn(const QVariantMap &options, const QString &key)
{
    return options.value(key).toString();
}

QStringList textsIn(const QVariantMap &options, const QString &key)
{
    QStringList texts;
    const auto elements = options.value(key).toList();
    for (const auto &element : elements)
        texts.append(element.toString());
    return texts;
}

AlertStyle styleAt(int index)
{
    constexpr AlertStyle styles[] = {AlertStyle::Informational, AlertStyle::Warning, AlertStyle::Critical};
    return index >= 0 && index < 3 ? styles[index] : AlertStyle::Informational;
}

} // namespace

/// The script's handle of a progress; finish() ends it, as the session's end
/// does.
class UserInterfaceService::Progress final : public ScriptObject
{
public:
    Progress(UserInterfaceService &service, std::unique_ptr<ProgressPresentation> presentation)
        : m_service(service)
        , m_presentation(std::move(presentation))
    { }

    /// Null for an unknown fraction.
    void setFraction(const QVariant &fraction)
    {
        const bool isKnown = fraction.isValid() && fraction.typeId() != QMetaType::Nullptr;
        if (m_presentation)
            m_presentation->setFraction(isKnown ? std::optional(fraction.toDouble()) : std::nullopt);
    }

    void setText(const QString &text)
    {
        if (m_presentation)
            m_presentation->setText(text);
    }

    void finish()
    {
        const auto self = shared_from_this(); // the service lets go of it
        m_presentation.reset();
        m_service.forget(this);
    }

    const ScriptClass &scriptClass() const override
    {
        static constexpr ScriptOperation operations[] = {
            scriptOperation<&Progress::setFraction>("setFraction", "(fraction: number | null)"),
            scriptOperation<&Progress::setText>("setText", "(text)"),
            scriptOperation<&Progress::finish>("finish"),
        };
        static constexpr ScriptClass scriptClass{"ProgressService", operations};
        return scriptClass;
    }

private:
    UserInterfaceService &m_service; // which owns it
    std::unique_ptr<ProgressPresentation> m_presentation;
};

UserInterfaceService::UserInterfaceService(ServiceContext context)
    : m_context(std::move(context))
    , m_life(std::make_shared<char>())
{ }

UserInterfaceService::~UserInterfaceService() = default;

QString UserInterfaceService::sender() const
{
    const auto command = m_context.command.lock();
    if (!command)
        return {};
    const auto bundle = command->pluginBundle();
    const auto name = bundle ? bundle->name() : std::nullopt;
    return name.value_or(command->name().value_or(QString()));
}

template <class Message>
Message UserInterfaceService::messageFrom(const QVariantMap &options) const
{
    Message message;
    message.sender = sender();
    message.title = textIn(options, QStringLiteral("title"));
    message.text = textIn(options, QStringLiteral("text"));
    return message;
}

void UserInterfaceService::showMessage(const QString &text)
{
    const UserMessage message{sender(), {}, text};
    if (auto *const presenter = LTAppEnvironment::current().userPresenter())
        presenter->showMessage(message);
    else
        LTAppEnvironment::current().systemLog(QStringLiteral("%1: %2").arg(message.sender, text));
}

template <class Answer>
void UserInterfaceService::present(const UserMessage &message, const QVariant &done, const Show<Answer> &show)
{
    if (m_waiting.size() >= mostAtOnce) {
        throw ScriptException(QStringLiteral("At most %1 questions can wait for the user at once. "
                                             "Await the answer of one before asking "
                                             "the next.")
                                  .arg(mostAtOnce));
    }
    const int id = ++m_latest;
    const auto answered = [this, life = std::weak_ptr(m_life), id, function = done.value<ScriptValue>()](
                              const std::optional<Answer> &answer) {
        runAsScriptEvent([this, life, id, function, answer] {
            if (!life.expired())
                finish(id, function, answer ? QVariant(*answer) : QVariant::fromValue(nullptr));
        });
    };
    m_waiting[id].keepsRunning = m_context.keepRunning();
    if (auto *const presenter = LTAppEnvironment::current().userPresenter()) {
        m_waiting[id].presentation = show(*presenter, answered);
        return;
    }
    if (const auto host = m_context.host.lock())
        host->print(QStringLiteral("Nobody can be asked here, so \"%1\" has no answer.").arg(message.title));
    LTAppEnvironment::runOnMainQueue([answered] { answered(std::nullopt); });
}

void UserInterfaceService::finish(int id, const ScriptValue &done, const QVariant &answer)
{
    // Kept to the end: what the script does with the answer is what keeps its
    // session running next.
    const auto entry = m_waiting.extract(id);
    if (!entry.empty())
        done.call({answer});
}

void UserInterfaceService::ask(const QVariantMap &options, const QVariant &done)
{
    auto question = messageFrom<UserQuestion>(options);
    question.style = styleAt(options.value(QStringLiteral("style")).toInt());
    question.buttons = textsIn(options, QStringLiteral("buttons"));
    question.defaultButton = options.value(QStringLiteral("defaultButton")).toInt();
    present<int>(question, done, [&question](UserPresenter &presenter, UserPresenter::Callback<int> answered) {
        return presenter.ask(question, std::move(answered));
    });
}

void UserInterfaceService::askText(const QVariantMap &options, const QVariant &done)
{
    auto prompt = messageFrom<TextPrompt>(options);
    prompt.value = textIn(options, QStringLiteral("value"));
    const bool hasManyLines = options.value(QStringLiteral("hasManyLines")).toBool();
    prompt.lines = hasManyLines ? TextPrompt::Lines::Many : TextPrompt::Lines::One;
    present<QString>(prompt, done, [&prompt](UserPresenter &presenter, UserPresenter::Callback<QString> answered) {
        return presenter.askText(prompt, std::move(answered));
    });
}

void UserInterfaceService::askNumber(const QVariantMap &options, const QVariant &done)
{
    auto prompt = messageFrom<NumberPrompt>(options);
    prompt.value = options.value(QStringLiteral("value")).toDouble();
    prompt.minimum = options.value(QStringLiteral("minimum")).toDouble();
    prompt.maximum = options.value(QStringLiteral("maximum")).toDouble();
    constexpr int mostDecimals = 15;
    prompt.decimals = std::clamp(options.value(QStringLiteral("decimals")).toInt(), 0, mostDecimals);
    present<double>(prompt, done, [&prompt](UserPresenter &presenter, UserPresenter::Callback<double> answered) {
        return presenter.askNumber(prompt, std::move(answered));
    });
}

void UserInterfaceService::askChoice(const QVariantMap &options, const QVariant &done)
{
    auto prompt = messageFrom<ChoicePrompt>(options);
    prompt.choices = textsIn(options, QStringLiteral("choices"));
    prompt.selected = options.value(QStringLiteral("selected")).toInt();
    present<int>(prompt, done, [&prompt](UserPresenter &presenter, UserPresenter::Callback<int> answered) {
        return presenter.askChoice(prompt, std::move(answered));
    });
}

ScriptObjectPointer UserInterfaceService::showProgress(const QVariantMap &options, const QVariant &cancelled)
{
    if (m_progresses.size() >= mostAtOnce) {
        throw ScriptException(QStringLiteral("At most %1 progresses can be shown at once. Call "
                                             "finish() of those that are done.")
                                  .arg(mostAtOnce));
    }
    auto task = messageFrom<ProgressTask>(options);
    const bool isCancellable = options.value(QStringLiteral("cancellable")).toBool();
    task.cancelling = isCancellable ? ProgressTask::Cancelling::Offered : ProgressTask::Cancelling::NotOffered;
    auto *const presenter = LTAppEnvironment::current().userPresenter();
    const auto tellScript = [function = cancelled.value<ScriptValue>()] {
        runAsScriptEvent([function] { function.call({}); });
    };
    m_progresses.push_back(
        std::make_shared<Progress>(*this, presenter ? presenter->showProgress(task, tellScript) : nullptr));
    return m_progresses.back();
}

void UserInterfaceService::pause(const QVariant &done)
{
    const int id = ++m_latest;
    const auto goOn = [this, id, function = done.value<ScriptValue>()] {
        runAsScriptEvent([this, life = std::weak_ptr(m_life), id, function] {
            if (life.expired())
                return;
            const auto entry = m_pauses.extract(id); // kept to the end, as in finish()
            function.call({});
        });
    };
    m_pauses[id] = {
        m_context.keepRunning(), LTAppEnvironment::current().mainQueue().callAfter(std::chrono::milliseconds(0), goOn)};
}

void UserInterfaceService::forget(const Progress *progress)
{
    m_progresses.remove_if([progress](const auto &known) { return known.get() == progress; });
}

const ScriptClass &UserInterfaceService::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&UserInterfaceService::showMessage>("showMessage", "(text)"),
        scriptOperation<&UserInterfaceService::ask>("ask", questionSignature),
        scriptOperation<&UserInterfaceService::askText>("askText", questionSignature),
        scriptOperation<&UserInterfaceService::askNumber>("askNumber", questionSignature),
        scriptOperation<&UserInterfaceService::askChoice>("askChoice", questionSignature),
        scriptOperation<&UserInterfaceService::showProgress>(
            "showProgress", "(options: Record<string, unknown>, cancelled: Function): ProgressService"),
        scriptOperation<&UserInterfaceService::pause>("pause", "(done: Function)"),
    };
    static constexpr ScriptClass scriptClass{"UserInterfaceService", operations};
    return scriptClass;
}
