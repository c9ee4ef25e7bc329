#pragma once

#include "platform/LTAppEnvironment.h"

#include <QString>

#include <memory>

class KRPluginCommand;

/// Keeps the logs of commands, by their identifier, and shows them: a host's console. Main thread only.
///
/// An entry is a dictionary with "command" (the command that logged, as a weak script object), "payload" (a list of
/// the one logged value, or of "null"), "stringValue" (its text) and "level" ("log" or "error").
class KORVAN_EXPORT KRPluginLogAction : public LogTarget
{
public:
    /// What a command logs comes here first; `from` is its identifier. By default it goes to log(), where an entry that
    /// was made elsewhere, an error of a timer for example, does not tell its command. The command is null when it is
    /// about to go.
    virtual void logFromCommand(
        const QVariantMap &entry, const QString &from, const std::shared_ptr<KRPluginCommand> &command);
    /// `logStringFor:`. The sender's log as text.
    virtual QString logStringFor(const QString &sender) = 0;
    /// `clearLogFor:`. Empties the sender's log.
    virtual void clearLogFor(const QString &sender) = 0;
};
