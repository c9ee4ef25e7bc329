#pragma once

#include "commands/CommandEntry.h"
#include "platform/OrderedDictionary.h"

#include <memory>

/// Handler key to function name, in the manifest's order.
using HandlerIndex = OrderedStringDictionary;

/// The table with its actions laid out: an action stands under its identifier and under that with ".begin" and
/// ".finish", or under the identifier alone when it ends in one of them. Actions override other handlers, and later
/// actions earlier ones.
HandlerIndex flattenedHandlers(const HandlerTable &table);

/// The flat table of an entry: its "handlers", or {"run": "handler" or "onRun"}; "setUp" and "tearDown" are added where
/// they are missing, before the actions are laid out.
std::shared_ptr<const HandlerIndex> handlersOfEntry(const CommandEntry &entry);
