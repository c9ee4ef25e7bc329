#include "TerminalPresenter.h"

#include "NumberAnswer.h"
#include "Output.h"

#include <algorithm>
#include <cmath>

namespace {

/// Who speaks, and what about.
QStringList headLines(const UserMessage &message)
{
    QStringList lines;
    const auto title = message.title.isEmpty() ? message.text : message.title;
    lines.append(message.sender.isEmpty() ? title : QStringLiteral("%1: %2").arg(message.sender, title));
    if (!message.title.isEmpty() && !message.text.isEmpty())
        lines.append(message.text);
    return lines;
}

/// By its text, by its number from 1, or by its text in other cases: a list may hold numbers, and texts that differ in
/// their cases only.
std::optional<int> indexOf(const QString &answer, const QStringList &texts)
{
    if (const auto index = texts.indexOf(answer); index >= 0)
        return int(index);
    bool isNumber = false;
    const int number = answer.toInt(&isNumber);
    if (isNumber && number >= 1 && number <= texts.size())
        return number - 1;
    for (int i = 0; i < texts.size(); ++i) {
        if (texts.at(i).compare(answer, Qt::CaseInsensitive) == 0)
            return i;
    }
    return std::nullopt;
}

class ProgressLines final : public ProgressPresentation
{
public:
    /// `interruption` ends with it.
    ProgressLines(const ProgressTask &task, std::shared_ptr<void> interruption)
        : m_head(headLines(task).first())
        , m_interruption(std::move(interruption))
    { }

    void setText(const QString &text) override
    {
        if (text == m_text)
            return;
        m_text = text;
        print();
    }

    void setFraction(std::optional<double> fraction) override
    {
        const int tenths = fraction ? int(std::floor(std::clamp(*fraction, 0.0, 1.0) * 10)) : -1;
        if (tenths == m_tenths)
            return;
        m_tenths = tenths;
        print();
    }

private:
    void print() const
    {
        auto line = m_head;
        if (m_tenths >= 0)
            line += QStringLiteral(" %1 %").arg(m_tenths * 10);
        if (!m_text.isEmpty())
            line += QStringLiteral(" – ") + m_text;
        printToStandardError(line);
    }

    QString m_head;
    std::shared_ptr<void> m_interruption;
    QString m_text;
    int m_tenths = -1;
};

} // namespace

struct TerminalPresenter::Prompt
{
    QStringList lines;
    /// False: no answer to this question, which is asked again.
    std::function<bool(const QString &line)> accept;
    std::function<void()> cancel;
};

/// The prompts that wait; the first of them is on the terminal.
struct TerminalPresenter::Queue : std::enable_shared_from_this<Queue>
{
    explicit Queue(int input)
        : lines(input)
    { }

    void add(const std::shared_ptr<Prompt> &prompt)
    {
        prompts.push_back(prompt);
        if (prompts.size() == 1)
            show();
    }

    void remove(const std::shared_ptr<Prompt> &prompt)
    {
        const bool isShown = !prompts.empty() && prompts.front() == prompt;
        prompts.erase(std::remove(prompts.begin(), prompts.end(), prompt), prompts.end());
        if (isShown)
            show();
    }

    void show()
    {
        if (prompts.empty())
            return;
        for (const auto &line : prompts.front()->lines)
            printToStandardError(line);
        if (!lines.isWaiting()) // a prompt that is gone leaves its line to the next one
            lines.next([self = weak_from_this()](const std::optional<QString> &line) {
                if (const auto queue = self.lock())
                    queue->take(line);
            });
    }

    void take(const std::optional<QString> &line)
    {
        if (prompts.empty())
            return;
        const auto prompt = prompts.front();
        if (!line) {
            printToStandardError(
                QStringLiteral("No answer to \"%1\": the input has ended.").arg(prompt->lines.first()));
            prompts.pop_front();
            prompt->cancel();
            show();
            return;
        }
        prompts.pop_front(); // its callback may ask the next question
        const auto asked = prompts.size();
        if (!prompt->accept(*line))
            prompts.push_front(prompt);
        const bool isShownAlready = asked == 0 && !prompts.empty() && lines.isWaiting();
        if (!isShownAlready)
            show();
    }

    InputLines lines;
    std::deque<std::shared_ptr<Prompt>> prompts;
};

TerminalPresenter::TerminalPresenter(int input)
    : m_queue(std::make_shared<Queue>(input))
{ }

TerminalPresenter::~TerminalPresenter() = default;

UserPresenter::PresentationPointer TerminalPresenter::add(std::shared_ptr<Prompt> prompt)
{
    class PromptPresentation final : public Presentation
    {
    public:
        PromptPresentation(std::weak_ptr<Queue> queue, std::shared_ptr<Prompt> prompt)
            : m_queue(std::move(queue))
            , m_prompt(std::move(prompt))
        { }
        ~PromptPresentation() override
        {
            if (const auto queue = m_queue.lock())
                queue->remove(m_prompt);
        }

    private:
        std::weak_ptr<Queue> m_queue;
        std::shared_ptr<Prompt> m_prompt;
    };

    m_queue->add(prompt);
    return std::make_unique<PromptPresentation>(m_queue, prompt);
}

void TerminalPresenter::showMessage(const UserMessage &message)
{
    const auto lines = headLines(message);
    for (const auto &line : lines)
        printToStandardError(line);
}

UserPresenter::PresentationPointer TerminalPresenter::askForIndex(
    const UserMessage &message, const QStringList &texts, int usual, Callback<int> answered)
{
    auto lines = headLines(message);
    for (int i = 0; i < texts.size(); ++i)
        lines.append(QStringLiteral("  %1. %2").arg(i + 1).arg(texts.at(i)));
    lines.append(QStringLiteral("A number or a text from the list [%1]:").arg(texts.value(usual)));
    const auto accept = [texts, usual, answered](const QString &line) {
        const auto index = line.trimmed().isEmpty() ? std::optional(usual) : indexOf(line.trimmed(), texts);
        if (index)
            answered(index);
        else
            printToStandardError(QStringLiteral("\"%1\" is not in the list.").arg(line.trimmed()));
        return index.has_value();
    };
    return add(std::make_shared<Prompt>(Prompt{lines, accept, [answered] { answered(std::nullopt); }}));
}

UserPresenter::PresentationPointer TerminalPresenter::ask(const UserQuestion &question, Callback<int> answered)
{
    return askForIndex(question, question.buttons, question.defaultButton, std::move(answered));
}

UserPresenter::PresentationPointer TerminalPresenter::askChoice(const ChoicePrompt &prompt, Callback<int> answered)
{
    return askForIndex(prompt, prompt.choices, prompt.selected, std::move(answered));
}

UserPresenter::PresentationPointer TerminalPresenter::askText(const TextPrompt &prompt, Callback<QString> answered)
{
    auto lines = headLines(prompt);
    lines.append(prompt.value.isEmpty() ? QStringLiteral("A text:") : QStringLiteral("A text [%1]:").arg(prompt.value));
    const auto accept = [usual = prompt.value, answered](const QString &line) {
        answered(line.isEmpty() ? usual : line);
        return true;
    };
    return add(std::make_shared<Prompt>(Prompt{lines, accept, [answered] { answered(std::nullopt); }}));
}

UserPresenter::PresentationPointer TerminalPresenter::askNumber(const NumberPrompt &prompt, Callback<double> answered)
{
    auto lines = headLines(prompt);
    lines.append(QStringLiteral("A number [%1]:").arg(prompt.value, 0, 'g', 15));
    const auto accept = [prompt, answered](const QString &line) {
        const auto text = line.trimmed();
        bool isNumber = text.isEmpty();
        const double number = isNumber ? prompt.value : text.toDouble(&isNumber);
        const auto refusal =
            isNumber ? refusalOfNumber(prompt, number) : QStringLiteral("\"%1\" is no number.").arg(text);
        if (refusal)
            printToStandardError(*refusal);
        else
            answered(number);
        return !refusal;
    };
    return add(std::make_shared<Prompt>(Prompt{lines, accept, [answered] { answered(std::nullopt); }}));
}

std::unique_ptr<ProgressPresentation> TerminalPresenter::showProgress(
    const ProgressTask &task, std::function<void()> cancelled)
{
    std::shared_ptr<void> interruption;
    if (task.cancelling == ProgressTask::Cancelling::Offered) {
        auto interruptions = m_interruptions.lock();
        if (!interruptions)
            m_interruptions = interruptions = std::make_shared<Interruptions>();
        interruption = Interruptions::add(interruptions, [cancelled = std::move(cancelled)] {
            printToStandardError(QStringLiteral("Asked to stop. Press Ctrl-C again to end at once."));
            cancelled();
        });
    }
    printToStandardError(headLines(task).join(u'\n'));
    return std::make_unique<ProgressLines>(task, std::move(interruption));
}
