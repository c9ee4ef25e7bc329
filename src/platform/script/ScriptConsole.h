#pragma once

#include "platform/script/ScriptContext.h"

/// Makes the global "console": an object that puts the library's console in its own place when a script first uses one
/// of its properties, so that sessions without output do not pay for it.
void installConsole(ScriptContext &context);
