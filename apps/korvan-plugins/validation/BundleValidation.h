#pragma once

#include "platform/script/ScriptChecker.h"
#include "validation/Problem.h"

/// Everything that is wrong with the bundle at an absolute path: first what concerns its manifest, in the order of the
/// text, then what concerns its scripts. A folder is no bundle without the extension. Nothing of it is run.
Problems validateBundle(const QString &path, ScriptChecker &checker);
