#pragma once

#include <QString>

/// How the names of downloads begin.
inline const QString downloadFilePrefix = QStringLiteral("korvan-download-");

/// Says that a download's open file is in use, until all descriptors of it are closed: also when the program is killed.
void markAsInUse(int file);

/// Removes from the folder what killed programs of this user have left there: downloads that are not in use. Does
/// nothing for a folder that this process has looked into before.
void removeAbandonedDownloads(const QString &folder);
