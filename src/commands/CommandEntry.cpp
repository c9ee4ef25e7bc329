#include "commands/CommandEntry.h"

#include "commands/KRPluginCommandKeys.h"
#include "platform/script/ValueText.h"

namespace {

std::optional<OrderedVariantDictionary> orderedDictionary(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<OrderedVariantDictionary>())
        return value.value<OrderedVariantDictionary>();
    if (value.typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    OrderedVariantDictionary dictionary;
    const auto map = value.toMap();
    for (auto entry = map.begin(); entry != map.end(); ++entry)
        dictionary.insert({entry.key(), entry.value()});
    return dictionary;
}

std::optional<QString> stringForKey(const OrderedVariantDictionary &dictionary, const QString &key)
{
    const auto found = dictionary.find(key);
    if (found == dictionary.end() || found->second.typeId() != QMetaType::QString)
        return std::nullopt;
    return found->second.toString();
}

void addHandlers(HandlerTable::Handlers &handlers, const OrderedVariantDictionary &dictionary)
{
    for (const auto &[key, function] : dictionary)
        handlers.emplace_back(key, descriptionOfValue(function));
}

} // namespace

HandlerTable HandlerTable::fromDictionary(const OrderedVariantDictionary &dictionary)
{
    HandlerTable table;
    auto handlers = dictionary;
    if (const auto actions = handlers.find(KRPluginCommandActionsKey); actions != handlers.end()) {
        addHandlers(table.actions, orderedDictionary(actions->second).value_or(OrderedVariantDictionary()));
        handlers.erase(actions);
    }
    addHandlers(table.handlers, handlers);
    return table;
}

std::optional<CommandEntry> CommandEntry::fromVariant(const QVariant &value)
{
    const auto dictionary = orderedDictionary(value);
    if (!dictionary)
        return std::nullopt;
    CommandEntry entry;
    entry.script = stringForKey(*dictionary, KRPluginCommandScriptPathKey);
    entry.name = stringForKey(*dictionary, KRPluginCommandNameKey);
    entry.identifier = stringForKey(*dictionary, KRPluginCommandIdentifierKey);
    const auto handlers = dictionary->find(KRPluginCommandHandlersKey);
    if (const auto table = handlers == dictionary->end() ? std::nullopt : orderedDictionary(handlers->second))
        entry.handlers = HandlerTable::fromDictionary(*table);
    entry.handler = stringForKey(*dictionary, KRPluginCommandHandlerKey);
    entry.shortcut = stringForKey(*dictionary, KRPluginCommandShortcutKey);
    entry.scope = stringForKey(*dictionary, KRPluginCommandScopeKey);
    return entry;
}
