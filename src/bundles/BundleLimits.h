#pragma once

#include <QtGlobal>

/// A larger manifest is not read.
inline constexpr qint64 largestManifest = 16 * 1024 * 1024;

/// A larger icon counts as unreadable.
inline constexpr qint64 largestIcon = 64 * 1024 * 1024;
