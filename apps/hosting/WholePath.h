#pragma once

#include <QString>

/// The same path for the same file, whatever links and folders the given one goes through. The file itself need not
/// exist.
QString wholePath(const QString &path);
