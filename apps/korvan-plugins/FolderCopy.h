#pragma once

#include <QString>

/// Copies a folder's files and subfolders; false when one of them cannot be copied.
bool copyFolder(const QString &from, const QString &to);
