#pragma once

#include "platform/Export.h"

#include <functional>

/// Runs work that calls back into a script, as an event of its own: at once, or as soon as the script that is running
/// now has left, as it may be when it waits in a nested event loop. Main thread only.
KORVAN_EXPORT void runAsScriptEvent(std::function<void()> work);
