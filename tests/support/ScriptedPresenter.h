#pragma once

#include "platform/UserPresenter.h"

#include <QList>
#include <QStringList>
#include <QVariant>

#include <memory>

/// A presenter without a user: it writes down what is presented, and answers as a test has said beforehand.
class ScriptedPresenter final : public UserPresenter
{
public:
    ScriptedPresenter();
    ~ScriptedPresenter() override;

    void showMessage(const UserMessage &message) override;
    PresentationPointer ask(const UserQuestion &question, Callback<int> answered) override;
    PresentationPointer askText(const TextPrompt &prompt, Callback<QString> answered) override;
    PresentationPointer askNumber(const NumberPrompt &prompt, Callback<double> answered) override;
    PresentationPointer askChoice(const ChoicePrompt &prompt, Callback<int> answered) override;
    std::unique_ptr<ProgressPresentation> showProgress(
        const ProgressTask &task, std::function<void()> cancelled) override;

    /// How many questions and progresses are there for the user to see.
    int openCount() const { return *m_openCount; }
    /// Asks the newest progress to stop.
    void cancelProgress() const { m_cancel(); }

    /// One for each question, in order, on the main queue; nil answers nothing. A question without one stays open.
    QVariantList answers;
    /// What was shown, one line each.
    std::shared_ptr<QStringList> shown = std::make_shared<QStringList>();

private:
    template <class Answer>
    PresentationPointer present(const QString &line, Callback<Answer> answered);

    std::shared_ptr<int> m_openCount = std::make_shared<int>(0);
    std::function<void()> m_cancel;
};
