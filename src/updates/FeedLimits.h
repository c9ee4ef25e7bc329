#pragma once

#include <QtGlobal>

// What a feed may measure. Far beyond what is published, and small enough that refusing or reading the worst takes
// a second or two.

/// In bytes; whoever downloads a feed can stop there.
inline constexpr qsizetype largestFeed = 4 * 1024 * 1024;
/// Elements in elements of an appcast; a title of markup instead of text does not come near.
inline constexpr int deepestAppcastElement = 32;
/// In UTF-16 code units.
inline constexpr qsizetype longestVersion = 128;
/// In UTF-16 code units; servers take no longer ones.
inline constexpr qsizetype longestDownloadURL = 8192;
