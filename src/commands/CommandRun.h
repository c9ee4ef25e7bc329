#pragma once

#include "commands/KRPluginCommand.h"

#include <QPointer>
#include <QUrl>

#include <memory>
#include <optional>

/// One run of a command: finds the session to run in (a new one, or that of an earlier run which is still alive),
/// calls the handler, and ends the session or leaves it to the manager.
///
/// Two commands take part: the one that was started, and the one that runs. They differ when an earlier run of the same
/// specifier is still alive: then that command runs, and the started one receives the return value.
class CommandRun
{
public:
    CommandRun(std::shared_ptr<KRPluginCommand> started, std::optional<QString> function, QString key,
        KRPluginCommandManager *manager);

    /// The running command's log; nil when there was no running command.
    std::optional<QString> perform(const QVariantMap &context, const KRPluginCommand::Completion &onComplete);

private:
    void begin();
    /// Where the command's script lies, or would be saved.
    QUrl scriptURLOf(const KRPluginCommand &command) const;
    ScriptDictionaryPointer prepare(const QVariantMap &context);
    void callHandler(const ScriptDictionaryPointer &context);
    void reportMissingHandler();
    void reportException(const QString &exception);
    void finish(const KRPluginCommand::Completion &onComplete);

    std::shared_ptr<KRPluginCommand> m_started;
    std::shared_ptr<KRPluginCommand> m_running;
    std::optional<QString> m_function;
    QString m_key;
    QPointer<KRPluginCommandManager> m_manager;
    QUrl m_scriptURL;
};
