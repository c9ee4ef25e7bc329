#pragma once

#include "validation/Manifest.h"

#include <QString>

/// Reports what a script requires and the plug-in does not have. `key` is the one that names the script.
void checkModules(Manifest &manifest, const QString &key, const QString &scriptPath, const QString &source);
