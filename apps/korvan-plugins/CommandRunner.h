#pragma once

#include "commands/KRPluginCommand.h"
#include "hosting/LogCollector.h"
#include "manager/KRPluginManager.h"

#include <QVariantMap>

#include <chrono>
#include <memory>

/// What one run of a handler has left behind.
struct CommandResult
{
    QList<QVariantMap> log;
    QVariant returnValue;
    QString logString;
    bool isFinished = true;

    bool hasErrors() const;
};

/// Runs handlers of one command, one after another, and waits for what they leave running.
class CommandRunner
{
public:
    /// `command` is one of the manager's plug-ins, or a command of its own without a plug-in.
    CommandRunner(KRPluginManager &manager, LogCollector &log, std::shared_ptr<KRPluginCommand> command);

    /// Runs the handler of that key through the manager, and returns as soon as it has.
    void run(const QString &key, const QVariantMap &context);
    /// Waits until the command has finished, at most so long.
    void wait(std::chrono::milliseconds longest);

    /// The results of all runs. A promise that has settled is replaced by its value.
    QList<CommandResult> takeResults();

private:
    void start(const QString &key, const QVariantMap &context);
    bool isRunning() const;
    void collectLog();

    KRPluginManager &m_manager;
    LogCollector &m_log;
    std::shared_ptr<KRPluginCommand> m_command;
    QList<CommandResult> m_results;
};
