#include "commands/CommandEntry.h"

#include "commands/KRPluginCommandKeys.h"

namespace {

std::optional<QString> stringForKey(const OrderedVariantDictionary &dictionary, const QString &key)
{
    const auto found = dictionary.find(key);
    if (found == dictionary.end() || found->second.typeId() != QMetaType::QString)
        return std::nullopt;
    return found->second.toString();
}

} // namespace

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

std::optional<CommandEntry> CommandEntry::fromVariant(const QVariant &value)
{
    const auto dictionary = orderedDictionary(value);
    if (!dictionary)
        return std::nullopt;
    CommandEntry entry;
    entry.script = stringForKey(*dictionary, KRPluginCommandScriptPathKey);
    entry.name = stringForKey(*dictionary, KRPluginCommandNameKey);
    entry.identifier = stringForKey(*dictionary, KRPluginCommandIdentifierKey);
    if (const auto handlers = dictionary->find(KRPluginCommandHandlersKey); handlers != dictionary->end())
        entry.handlers = orderedDictionary(handlers->second);
    entry.handler = stringForKey(*dictionary, KRPluginCommandHandlerKey);
    entry.shortcut = stringForKey(*dictionary, KRPluginCommandShortcutKey);
    entry.scope = stringForKey(*dictionary, KRPluginCommandScopeKey);
    return entry;
}
