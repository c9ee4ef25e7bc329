#pragma once

#include "platform/Export.h"

#include <QString>

enum class AlertStyle { Warning, Informational, Critical };

/// What an alert tells the user. Both texts are plain text in the user's language.
struct Alert
{
    AlertStyle style = AlertStyle::Warning;
    /// What it is about, in a few words.
    QString messageText;
    QString informativeText;
};

/// Shows alerts to the user.
class KORVAN_EXPORT AlertPresenter
{
public:
    virtual ~AlertPresenter();

    /// Shows the alert with the one button that ends it, and comes back when the user has ended it. Called on the main
    /// thread.
    virtual void runModal(const Alert &alert) = 0;
};
