#pragma once

#include "platform/JSON.h"
#include "platform/LogMessages.h"
#include "platform/script/COScript.h"

/// What the bundles share that one thread loads, one after another.
struct PluginLoading
{
    const COScript::CoreModules &coreModules;
    JSONParser parser;
    LogMessages messages;
};
