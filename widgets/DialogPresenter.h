#pragma once

#include "widgets/Export.h"

#include "platform/UserPresenter.h"

#include <QPointer>

class QWidget;

/// Talks with the user in dialogs that leave the program running. Main thread only; needs a QApplication.
///
///     class Environment : public LTAppEnvironment
///     {
///         UserPresenter *userPresenter() override { return &m_presenter; }
///         DialogPresenter m_presenter;
///     };
class KORVAN_WIDGETS_EXPORT DialogPresenter final : public UserPresenter
{
public:
    /// The dialogs stand before `window`, which may go before this object and takes its dialogs with it: those count as
    /// not answered. Without one they are windows of their own.
    explicit DialogPresenter(QWidget *window = nullptr);
    ~DialogPresenter() override;

    void setWindow(QWidget *window) { m_window = window; }

    /// For four seconds at the window's lower edge.
    void showMessage(const UserMessage &message) override;
    PresentationPointer ask(const UserQuestion &question, Callback<int> answered) override;
    PresentationPointer askText(const TextPrompt &prompt, Callback<QString> answered) override;
    PresentationPointer askNumber(const NumberPrompt &prompt, Callback<double> answered) override;
    PresentationPointer askChoice(const ChoicePrompt &prompt, Callback<int> answered) override;
    std::unique_ptr<ProgressPresentation> showProgress(
        const ProgressTask &task, std::function<void()> cancelled) override;

private:
    QPointer<QWidget> m_window;
};
