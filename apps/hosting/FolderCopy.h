#pragma once

#include <QString>

/// Copies a folder's files and subfolders, links as links; false when one of them cannot be copied. The folder that it
/// is copied to may be there, with other files.
bool copyFolder(const QString &from, const QString &to);
