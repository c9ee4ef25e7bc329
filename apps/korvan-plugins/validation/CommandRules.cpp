#include "validation/ManifestRules.h"

#include "commands/KRPluginCommandKeys.h"

#include <QHash>

namespace {

void checkIdentifiers(Manifest &manifest, const QList<CommandFacts> &commands)
{
    QHash<QString, QString> seen;
    for (const auto &command : commands) {
        if (const auto first = seen.constFind(command.identifier); first != seen.constEnd()) {
            manifest.error(command.identifierKey, command.identifierOffset,
                QStringLiteral("The identifier “%1” is also that of %2, which this command replaces.")
                    .arg(command.identifier, *first));
        } else {
            seen.insert(command.identifier, command.key);
        }
    }
}

void checkHandlers(Manifest &manifest, const CommandFacts &command)
{
    const auto key = Manifest::keyOfMember(command.key, KRPluginCommandHandlersKey);
    const auto *const table = command.node->value(KRPluginCommandHandlersKey, JSONNode::Type::Object);
    if (!table)
        return;
    if (const auto *const handler = command.node->member(KRPluginCommandHandlerKey)) {
        manifest.warning(Manifest::keyOfMember(command.key, KRPluginCommandHandlerKey), handler->offset,
            QStringLiteral("“handler” is not read beside “handlers”."));
    }
    for (const auto &member : table->members) {
        const bool isAround =
            member.key == KRPluginCommandSetUpHandlerKey || member.key == KRPluginCommandTearDownHandlerKey;
        const bool isEmptyTable = member.key == KRPluginCommandActionsKey && member.value.members.empty();
        if (!isAround && !isEmptyTable)
            return;
    }
    manifest.error(key, table->offset, QStringLiteral("The command has no handler that can be run."));
}

} // namespace

void checkCommands(Manifest &manifest, const QList<CommandFacts> &commands)
{
    checkIdentifiers(manifest, commands);
    for (const auto &command : commands)
        checkHandlers(manifest, command);
}
