#pragma once

#include <QString>

/// Whether a relative path leads out of the folder that it starts from.
bool leadsOut(const QString &relativePath);
