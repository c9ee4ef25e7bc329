#pragma once

#include <QString>

/// Changes one key of a bundle's manifest on the disk; false when it cannot be read or written.
bool changeManifest(const QString &bundle, const QString &key, const QString &value);
