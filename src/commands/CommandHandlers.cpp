#include "commands/CommandHandlers.h"

#include "commands/KRPluginCommandKeys.h"
#include "platform/script/ValueText.h"

OrderedVariantDictionary handlersOfEntry(const CommandEntry &entry)
{
    OrderedVariantDictionary handlers;
    if (entry.handlers)
        handlers = *entry.handlers;
    else
        handlers.insert({KRPluginCommandRunHandlerKey, entry.handler.value_or(QStringLiteral("onRun"))});
    handlers.insert({KRPluginCommandSetUpHandlerKey, QStringLiteral("onSetUp")});
    handlers.insert({KRPluginCommandTearDownHandlerKey, QStringLiteral("onTearDown")});
    return handlers;
}

HandlerIndex flattenedHandlers(const OrderedVariantDictionary &handlers)
{
    HandlerIndex index;
    index.reserve(handlers.size());
    for (const auto &[key, function] : handlers) {
        if (key != KRPluginCommandActionsKey)
            index[key] = descriptionOfValue(function);
    }
    const auto actions = handlers.find(KRPluginCommandActionsKey);
    const auto table = actions == handlers.end() ? std::nullopt : orderedDictionary(actions->second);
    if (!table)
        return index;

    const auto begin = QStringLiteral(".begin");
    const auto finish = QStringLiteral(".finish");
    for (const auto &[identifier, function] : *table) {
        const auto name = descriptionOfValue(function);
        index[identifier] = name;
        if (identifier.endsWith(begin) || identifier.endsWith(finish))
            continue;
        index[identifier + begin] = name;
        index[identifier + finish] = name;
    }
    return index;
}
