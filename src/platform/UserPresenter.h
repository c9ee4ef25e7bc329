#pragma once

#include "platform/AlertPresenter.h"
#include "platform/Export.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <limits>
#include <memory>
#include <optional>

/// Who tells or asks the user something, and what. Plain texts in the user's language; a plug-in may have written any
/// of them.
struct UserMessage
{
    /// Whoever speaks, a plug-in's name for example, so that nobody can pass for the application.
    QString sender;
    /// What it is about, in a few words.
    QString title;
    QString text;
};

struct UserQuestion : UserMessage
{
    AlertStyle style = AlertStyle::Informational;
    /// At least one.
    QStringList buttons;
    /// Which of them the Return key presses.
    int defaultButton = 0;
};

struct TextPrompt : UserMessage
{
    enum class Lines { One, Many };

    QString value;
    Lines lines = Lines::One;
};

struct NumberPrompt : UserMessage
{
    double value = 0;
    double minimum = std::numeric_limits<double>::lowest();
    double maximum = std::numeric_limits<double>::max();
    int decimals = 0;
};

struct ChoicePrompt : UserMessage
{
    /// At least one.
    QStringList choices;
    int selected = 0;
};

struct ProgressTask : UserMessage
{
    enum class Cancelling { Offered, NotOffered };

    Cancelling cancelling = Cancelling::Offered;
};

/// Something that is shown to the user, or waits to be. Destroying it takes it away; its callback, if it has one, is
/// not called then, nor ever again. May outlive its presenter.
class KORVAN_EXPORT Presentation
{
public:
    virtual ~Presentation();

protected:
    Presentation() = default;
    Presentation(const Presentation &) = delete;
    Presentation &operator=(const Presentation &) = delete;
};

class KORVAN_EXPORT ProgressPresentation : public Presentation
{
public:
    ~ProgressPresentation() override;

    virtual void setText(const QString &text) = 0;
    /// From 0 to 1; nil when nobody knows.
    virtual void setFraction(std::optional<double> fraction) = 0;
};

/// Talks with the user for plug-ins: in windows, on a terminal. Main thread only.
///
/// Every function comes back at once. The callbacks are called on the main thread from its event loop, never from
/// inside the function, at most once, and with nil when the user has answered nothing; they may destroy the
/// presentation.
class KORVAN_EXPORT UserPresenter
{
public:
    template <class Answer>
    using Callback = std::function<void(std::optional<Answer> answer)>;
    using PresentationPointer = std::unique_ptr<Presentation>;

    virtual ~UserPresenter();

    /// A short message that goes by itself.
    virtual void showMessage(const UserMessage &message) = 0;
    /// Answers the index of a button.
    [[nodiscard]] virtual PresentationPointer ask(const UserQuestion &question, Callback<int> answered) = 0;
    [[nodiscard]] virtual PresentationPointer askText(const TextPrompt &prompt, Callback<QString> answered) = 0;
    /// Answers a number within the bounds.
    [[nodiscard]] virtual PresentationPointer askNumber(const NumberPrompt &prompt, Callback<double> answered) = 0;
    /// Answers the index of a choice.
    [[nodiscard]] virtual PresentationPointer askChoice(const ChoicePrompt &prompt, Callback<int> answered) = 0;
    /// Stays until it is destroyed, also after the user has asked to cancel.
    [[nodiscard]] virtual std::unique_ptr<ProgressPresentation> showProgress(
        const ProgressTask &task, std::function<void()> cancelled) = 0;
};
