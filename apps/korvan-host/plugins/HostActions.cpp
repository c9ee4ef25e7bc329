#include "plugins/HostActions.h"

#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"

#include <QEventLoop>

namespace {

template <class IsMeant>
QList<KRPluginCommandSpecifier> commandsWith(const QString &key, KRPluginManager &manager, const IsMeant &isMeant)
{
    QList<KRPluginCommandSpecifier> commands;
    const auto plugins = manager.plugins();
    for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin) {
        if (!(*plugin)->isEnabled() || !isMeant(plugin.key()))
            continue;
        for (const auto &[identifier, command] : (*plugin)->commands()) {
            if (command->handlers().contains(key))
                commands.append(command->commandSpecifier());
        }
    }
    return commands;
}

QList<KRPluginCommandSpecifier> commandsWith(const QString &key, KRPluginManager &manager)
{
    return commandsWith(key, manager, [](const QString &) { return true; });
}

} // namespace

HostActions::HostActions(KRPluginManager &manager)
    : m_manager(manager)
    , m_telling(std::make_shared<int>(0))
{ }

HostActions::~HostActions() = default;

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
    run(commandsWith(key, m_manager), key, context);
}

void HostActions::tellPlugins(const QSet<QString> &identifiers, const QString &key, const QVariantMap &context)
{
    const auto isMeant = [&identifiers](const QString &identifier) { return identifiers.contains(identifier); };
    run(commandsWith(key, m_manager, isMeant), key, context);
}

void HostActions::tellAndWait(const QString &key, const QVariantMap &context)
{
    const auto commands = commandsWith(key, m_manager);
    if (commands.isEmpty())
        return;
    run(commands, key, context);
    const auto loop = std::make_shared<QEventLoop>(); // the end of the application may be faster than the queue
    LTAppEnvironment::current().mainQueue().async([loop] { loop->quit(); });
    loop->exec(QEventLoop::ExcludeUserInputEvents);
}

void HostActions::during(const QString &action, const QVariantMap &context, const std::function<QVariantMap()> &work)
{
    tellAndWait(action + QStringLiteral(".begin"), context);
    auto result = context;
    result.insert(work());
    tell(action + QStringLiteral(".finish"), result);
}
