#include "validation/CommandFacts.h"

#include "commands/KRPluginCommandKeys.h"

namespace {

/// As hosts name a command: the script's last path component, up to its last dot.
QString nameOfScript(const QString &script)
{
    const auto trimmed = script.endsWith(u'/') ? script.chopped(1) : script;
    const auto name = trimmed.mid(trimmed.lastIndexOf(u'/') + 1);
    const auto dot = name.lastIndexOf(u'.');
    return dot > 0 ? name.left(dot) : name;
}

void readIdentifier(CommandFacts &command)
{
    const auto use = [&](const QString &key) {
        const auto *const value = command.node->value(key, JSONNode::Type::String);
        if (!value)
            return false;
        command.identifierKey = Manifest::keyOfMember(command.key, key);
        command.identifierOffset = value->offset;
        command.identifier = value->text;
        return true;
    };
    if (use(KRPluginCommandIdentifierKey))
        return;
    if (!use(KRPluginCommandNameKey) && use(KRPluginCommandScriptPathKey))
        command.identifier = nameOfScript(command.script);
    command.identifier = command.identifier.toLower();
}

void addHandlers(CommandFacts &command, const QString &key, const JSONNode &table)
{
    for (const auto &member : table.members) {
        const auto memberKey = Manifest::keyOfMember(key, member.key);
        if (member.value.isString() && !member.value.text.isEmpty())
            command.handlers.append({memberKey, member.value.text, member.value.offset});
    }
}

void readHandlers(CommandFacts &command)
{
    const auto key = Manifest::keyOfMember(command.key, KRPluginCommandHandlersKey);
    if (const auto *const table = command.node->value(KRPluginCommandHandlersKey, JSONNode::Type::Object)) {
        command.hasRunHandler = table->member(KRPluginCommandRunHandlerKey);
        addHandlers(command, key, *table);
        if (const auto *const actions = table->value(KRPluginCommandActionsKey, JSONNode::Type::Object))
            addHandlers(command, Manifest::keyOfMember(key, KRPluginCommandActionsKey), *actions);
        return;
    }
    command.hasRunHandler = true;
    if (command.node->member(KRPluginCommandHandlersKey))
        return; // of a wrong type, which is said already
    const auto handlerKey = Manifest::keyOfMember(command.key, KRPluginCommandHandlerKey);
    if (const auto *const handler = command.node->value(KRPluginCommandHandlerKey, JSONNode::Type::String)) {
        if (!handler->text.isEmpty())
            command.handlers.append({handlerKey, handler->text, handler->offset});
    } else if (!command.node->member(KRPluginCommandHandlerKey)) {
        command.handlers.append({handlerKey, QStringLiteral("onRun"), command.scriptOffset});
    }
}

} // namespace

QList<CommandFacts> commandsOf(const Manifest &manifest)
{
    QList<CommandFacts> commands;
    const auto *const array = manifest.root().value(u"commands", JSONNode::Type::Array);
    if (!array)
        return commands;
    qsizetype index = -1;
    for (const auto &element : array->elements) {
        ++index;
        const auto *const script = element.value(KRPluginCommandScriptPathKey, JSONNode::Type::String);
        if (!script)
            continue;
        CommandFacts command;
        command.key = Manifest::keyOfElement(QStringLiteral("commands"), index);
        command.node = &element;
        command.script = script->text;
        command.scriptOffset = script->offset;
        readIdentifier(command);
        readHandlers(command);
        commands.append(command);
    }
    return commands;
}
