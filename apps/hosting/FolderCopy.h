#pragma once

#include <QString>

/// Copies the files and subfolders of a folder, or of the one that a link leads to, links in it as links; false when
/// one of them cannot be copied. The folder that it is copied to may be there, with other files.
bool copyFolder(const QString &from, const QString &to);
