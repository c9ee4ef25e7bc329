#pragma once

#include <QMap>
#include <QString>
#include <QUrl>

/// Modules that scripts require by name, and the files that implement them.
using ScriptCoreModules = QMap<QString, QUrl>;
