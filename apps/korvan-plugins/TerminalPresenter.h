#pragma once

#include "InputLines.h"
#include "Interruptions.h"
#include "platform/UserPresenter.h"

#include <deque>
#include <memory>

/// Talks with the user over standard error and an input: each question waits for a line, one question after another,
/// the first that came first. A question that the input's end leaves without an answer counts as cancelled, and that is
/// said.
class TerminalPresenter final : public UserPresenter
{
public:
    /// `input` is a file descriptor, usually standard input's.
    explicit TerminalPresenter(int input);
    ~TerminalPresenter() override;

    void showMessage(const UserMessage &message) override;
    PresentationPointer ask(const UserQuestion &question, Callback<int> answered) override;
    PresentationPointer askText(const TextPrompt &prompt, Callback<QString> answered) override;
    PresentationPointer askNumber(const NumberPrompt &prompt, Callback<double> answered) override;
    PresentationPointer askChoice(const ChoicePrompt &prompt, Callback<int> answered) override;
    /// Prints a line for each new text and each tenth of the way. Ctrl-C asks to cancel; a second one ends the program.
    std::unique_ptr<ProgressPresentation> showProgress(
        const ProgressTask &task, std::function<void()> cancelled) override;

private:
    struct Prompt;
    struct Queue;

    PresentationPointer add(std::shared_ptr<Prompt> prompt);
    PresentationPointer askForIndex(
        const UserMessage &message, const QStringList &texts, int usual, Callback<int> answered);

    /// Shared with the presentations, which may outlive this object.
    std::shared_ptr<Queue> m_queue;
    /// Kept by the progresses that can be cancelled.
    std::weak_ptr<Interruptions> m_interruptions;
};
