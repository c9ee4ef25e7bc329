#pragma once

#include "platform/script/ScriptChecker.h"
#include "validation/CommandFacts.h"

/// Scripts have to be there, to be valid, and to define the functions that the manifest names.
void checkScripts(Manifest &manifest, const QList<CommandFacts> &commands, ScriptChecker &checker);
