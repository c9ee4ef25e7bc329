#pragma once

#include "platform/UserPresenter.h"

#include <QVariantList>

#include <functional>
#include <variant>

/// A user who answers as a test has said beforehand. Main thread only.
class ScriptedUser final : public UserPresenter
{
public:
    /// `complain` is told of a question that has no answer, or another kind of answer.
    explicit ScriptedUser(std::function<void(const QString &complaint)> complain);

    /// Answers for the next questions: the text of a button or a choice, a text, a number, or null to close the
    /// question without an answer.
    void addAnswers(const QVariantList &answers) { m_answers.append(answers); }
    /// Asks to stop what shows a progress that can be cancelled. False when there is none.
    bool cancelProgress();
    /// What was shown, in order: dictionaries with "kind", "title", "text", and what else the kind has.
    const QVariantList &shown() const { return m_shown; }

    void showMessage(const UserMessage &message) override;
    PresentationPointer ask(const UserQuestion &question, Callback<int> answered) override;
    PresentationPointer askText(const TextPrompt &prompt, Callback<QString> answered) override;
    PresentationPointer askNumber(const NumberPrompt &prompt, Callback<double> answered) override;
    PresentationPointer askChoice(const ChoicePrompt &prompt, Callback<int> answered) override;
    std::unique_ptr<ProgressPresentation> showProgress(
        const ProgressTask &task, std::function<void()> cancelled) override;

private:
    /// Why an answer does not fit a question.
    struct Refusal
    {
        QString sentence;
    };
    /// What an answer means for a question.
    template <class Answer>
    using Reading = std::function<std::variant<Answer, Refusal>(const QVariant &answer)>;

    template <class Answer>
    PresentationPointer answer(const UserMessage &message, const Reading<Answer> &read, Callback<Answer> answered);
    PresentationPointer choose(const UserMessage &message, const QStringList &choices, Callback<int> answered);
    QVariant nextAnswer(const UserMessage &message);
    void note(const char *kind, const UserMessage &message, QVariantMap more = {});

    class OpenProgress;

    std::function<void(const QString &)> m_complain;
    QList<OpenProgress *> m_cancellable;
    QVariantList m_answers;
    QVariantList m_shown;
};
