#include "CommandRunner.h"

#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"
#include "platform/script/ScriptValue.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>

bool CommandResult::hasErrors() const
{
    return std::any_of(log.begin(), log.end(),
        [](const QVariantMap &entry) { return entry.value(QStringLiteral("level")).toString() == u"error"; });
}

CommandRunner::CommandRunner(KRPluginManager &manager, LogCollector &log, std::shared_ptr<KRPluginCommand> command)
    : m_manager(manager)
    , m_log(log)
    , m_command(std::move(command))
{ }

void CommandRunner::run(const QString &key, const QVariantMap &context)
{
    collectLog();
    QEventLoop loop;
    start(key, context);
    // Comes after the run: the main queue keeps the order.
    LTAppEnvironment::current().mainQueue().async([&loop] { loop.quit(); });
    loop.exec();

    CommandResult result;
    result.returnValue = m_command->returnValue();
    result.logString = m_command->logString();
    result.isFinished = !isRunning();
    m_results.append(result);
    collectLog();
}

void CommandRunner::start(const QString &key, const QVariantMap &context)
{
    const auto &specifier = m_command->commandSpecifier();
    if (specifier.pluginBundleIdentifier()) {
        m_manager.runHandlerWithKey(
            key, specifier.commandIdentifier().value_or(QString()), *specifier.pluginBundleIdentifier(), context);
        return;
    }
    LTAppEnvironment::current().mainQueue().async(
        [this, key, context] { m_command->runHandlerWithKey(key, context, &m_manager); });
}

bool CommandRunner::isRunning() const
{
    return m_manager.isCommandRunning(m_command->commandSpecifier());
}

void CommandRunner::collectLog()
{
    const auto entries = m_log.takeEntries();
    if (!m_results.isEmpty())
        m_results.last().log.append(entries);
}

void CommandRunner::wait(std::chrono::milliseconds longest)
{
    constexpr std::chrono::milliseconds pause(10);
    const QDeadlineTimer deadline(longest);
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        if (!isRunning() || deadline.hasExpired())
            loop.quit();
    });
    if (isRunning()) {
        timer.start(pause);
        loop.exec();
    }
    collectLog();
    if (m_results.isEmpty())
        return;
    m_results.last().logString = m_command->logString();
    for (auto &result : m_results)
        result.isFinished = result.isFinished || !isRunning();
}

QList<CommandResult> CommandRunner::takeResults()
{
    for (auto &result : m_results) {
        if (result.returnValue.metaType() == QMetaType::fromType<ScriptValue>())
            result.returnValue = result.returnValue.value<ScriptValue>().settledValue();
    }
    return std::exchange(m_results, {});
}
