#include "plugins/HostActions.h"

#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"

#include <QEventLoop>

HostActions::HostActions(KRPluginManager &manager)
    : m_manager(manager)
    , m_telling(std::make_shared<int>(0))
{ }

HostActions::~HostActions() = default;

QList<KRPluginCommandSpecifier> HostActions::commandsWith(const QString &key)
{
    QList<KRPluginCommandSpecifier> commands;
    const auto plugins = m_manager.plugins();
    for (const auto &plugin : plugins) {
        if (!plugin->isEnabled())
            continue;
        for (const auto &[identifier, command] : plugin->commands()) {
            if (command->handlers().contains(key))
                commands.append(command->commandSpecifier());
        }
    }
    return commands;
}

void HostActions::run(const QList<KRPluginCommandSpecifier> &commands, const QString &key, QVariantMap context)
{
    if (commands.isEmpty())
        return;
    context.insert(QStringLiteral("action"), key);
    auto &queue = LTAppEnvironment::current().mainQueue();
    queue.async([telling = m_telling] { ++*telling; });
    for (const auto &command : commands) {
        m_manager.runHandlerWithKey(key, command.commandIdentifier().value_or(QString()),
            command.pluginBundleIdentifier().value_or(QString()), context);
    }
    queue.async([telling = m_telling] { --*telling; }); // the queue keeps the order
}

void HostActions::tell(const QString &key, const QVariantMap &context)
{
    run(commandsWith(key), key, context);
}

void HostActions::tellPlugin(const QString &identifier, const QString &key, const QVariantMap &context)
{
    auto commands = commandsWith(key);
    commands.removeIf([&identifier](const KRPluginCommandSpecifier &command) {
        return command.pluginBundleIdentifier() != identifier;
    });
    run(commands, key, context);
}

void HostActions::tellAndWait(const QString &key, const QVariantMap &context)
{
    const auto commands = commandsWith(key);
    if (commands.isEmpty())
        return;
    run(commands, key, context);
    QEventLoop loop;
    LTAppEnvironment::current().mainQueue().async([&loop] { loop.quit(); });
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void HostActions::during(const QString &action, const QVariantMap &context, const std::function<QVariantMap()> &work)
{
    tellAndWait(action + QStringLiteral(".begin"), context);
    auto result = context;
    result.insert(work());
    tell(action + QStringLiteral(".finish"), result);
}
