#pragma once

#include "platform/script/ScriptChecker.h"
#include "validation/Problem.h"

#include <QStringList>

#include <vector>

/// Everything that is wrong with the bundle at an absolute path: first what concerns its manifest, in the order of the
/// text, then what concerns its scripts. A folder is no bundle without the extension. Nothing of it is run.
Problems validateBundle(const QString &path, ScriptChecker &checker);

/// The same of many bundles, in their order, with all processors.
std::vector<Problems> validateBundles(const QStringList &paths, ScriptChecker &checker);
