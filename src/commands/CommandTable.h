#pragma once

#include "commands/KRPluginCommand.h"
#include "platform/OrderedDictionary.h"

#include <memory>

/// Commands by identifier, in the manifest's order.
using CommandTable = OrderedDictionary<std::shared_ptr<KRPluginCommand>>;
