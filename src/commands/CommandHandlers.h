#pragma once

#include "commands/CommandEntry.h"
#include "platform/OrderedDictionary.h"

#include <QString>

#include <optional>

/// Handler key to function name, in the manifest's order.
using HandlerIndex = OrderedStringDictionary;

/// The table of an entry: its "handlers", or {"run": "handler" or "onRun"}; "setUp" and "tearDown" are added where they
/// are missing.
OrderedVariantDictionary handlersOfEntry(const CommandEntry &entry);

/// The table with its "actions" laid out: an action stands under its identifier and under that with ".begin" and
/// ".finish", or under the identifier alone when it ends in one of them. Actions override other handlers, and later
/// actions earlier ones. A function name that is no text is taken by its text.
HandlerIndex flattenedHandlers(const OrderedVariantDictionary &handlers);
