#include "commands/CommandHandlers.h"

#include "commands/KRPluginCommandKeys.h"

namespace {

const auto defaultRunFunction = QStringLiteral("onRun");
const auto defaultSetUpFunction = QStringLiteral("onSetUp");
const auto defaultTearDownFunction = QStringLiteral("onTearDown");

HandlerIndex indexWithRunHandler(const QString &function)
{
    HandlerIndex index;
    index.reserve(3);
    index.insert({KRPluginCommandRunHandlerKey, function});
    index.insert({KRPluginCommandSetUpHandlerKey, defaultSetUpFunction});
    index.insert({KRPluginCommandTearDownHandlerKey, defaultTearDownFunction});
    return index;
}

void layOutActions(const HandlerTable::Handlers &actions, HandlerIndex &index)
{
    const auto begin = QStringLiteral(".begin");
    const auto finish = QStringLiteral(".finish");
    for (const auto &[identifier, function] : actions) {
        index[identifier] = function;
        if (identifier.endsWith(begin) || identifier.endsWith(finish))
            continue;
        index[identifier + begin] = function;
        index[identifier + finish] = function;
    }
}

HandlerIndex indexOfHandlers(const HandlerTable &table)
{
    HandlerIndex index;
    index.reserve(table.handlers.size() + 2 + 3 * table.actions.size());
    for (const auto &[key, function] : table.handlers)
        index[key] = function;
    return index;
}

} // namespace

HandlerIndex flattenedHandlers(const HandlerTable &table)
{
    auto index = indexOfHandlers(table);
    layOutActions(table.actions, index);
    return index;
}

std::shared_ptr<const HandlerIndex> handlersOfEntry(const CommandEntry &entry)
{
    static const auto usual = std::make_shared<const HandlerIndex>(indexWithRunHandler(defaultRunFunction));
    if (!entry.handlers)
        return entry.handler ? std::make_shared<const HandlerIndex>(indexWithRunHandler(*entry.handler)) : usual;
    auto index = indexOfHandlers(*entry.handlers);
    index.insert({KRPluginCommandSetUpHandlerKey, defaultSetUpFunction});
    index.insert({KRPluginCommandTearDownHandlerKey, defaultTearDownFunction});
    layOutActions(entry.handlers->actions, index);
    return std::make_shared<const HandlerIndex>(std::move(index));
}
