#pragma once

#include "platform/LTAppEnvironment.h"

#include <QString>

/// Keeps the logs of commands, by their identifier, and shows them: a host's console. Main thread only.
///
/// An entry is a dictionary with "command" (the command that logged, as a weak script object), "payload" (a list of
/// the one logged value, or of "null"), "stringValue" (its text) and "level" ("log" or "error").
class KORVAN_EXPORT KRPluginLogAction : public LogTarget
{
public:
    /// `logStringFor:`. The sender's log as text.
    virtual QString logStringFor(const QString &sender) = 0;
    /// `clearLogFor:`. Empties the sender's log.
    virtual void clearLogFor(const QString &sender) = 0;
};
