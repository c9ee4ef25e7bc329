#pragma once

#include "widgets/Export.h"

#include "platform/LTAppEnvironment.h"

#include <QPointer>

class QWidget;

/// Asks whether a script that has computed for too long goes on. Main thread only; needs a QApplication.
///
///     class Environment : public LTAppEnvironment
///     {
///         ScriptTimeLimitDecision scriptExceededTimeLimit(const QString &name, double seconds) override
///         {
///             return m_question.ask(name, seconds);
///         }
///         TimeLimitQuestion m_question;
///     };
class KORVAN_WIDGETS_EXPORT TimeLimitQuestion final
{
public:
    /// The dialog stands before `window`, which may go before this object. It is modal to the whole application.
    explicit TimeLimitQuestion(QWidget *window = nullptr);

    void setWindow(QWidget *window) { m_window = window; }

    /// Comes back when the user has answered. Closing the dialog lets the script go on, to be asked about again. The
    /// answer is to stop when nobody can be asked: the application is ending, or the window goes while the dialog is
    /// open. Questions may nest: another script may come to its limit meanwhile.
    ScriptTimeLimitDecision ask(const QString &name, double seconds) const;

private:
    QPointer<QWidget> m_window;
};
