#pragma once

#include "platform/Export.h"
#include "platform/Result.h"

#include <QByteArray>

/// Reads the whole of a regular file. Follows links.
///
/// Never blocks on a pipe or a device (they are refused) and never reads more than `maximumSize` bytes (a larger file
/// is an error). The array has at least `padding` bytes of spare room behind its end, for parsers that look ahead.
KORVAN_EXPORT Result<QByteArray> readFile(const QByteArray &path, qint64 maximumSize, qsizetype padding = 0);

/// Reads at most `size` bytes from the beginning of a regular file, however large. Follows links, and refuses pipes and
/// devices without blocking on them.
Result<QByteArray> readBeginning(const QByteArray &path, qsizetype size);

/// Larger than any file of text that a plug-in sensibly carries; keeps a runaway file from filling the memory.
inline constexpr qint64 largestTextFile = 256 * 1024 * 1024;

/// The operating system's error as a value: domain "posix", its number, its text.
KRError systemError(int number);
