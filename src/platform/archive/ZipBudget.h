#pragma once

#include <QtGlobal>

/// What an archive may ask of a machine. An archive is written by strangers: a few kilobytes of it can claim, and hold,
/// petabytes.
struct ZipBudget
{
    /// With more entries than this, or a longer directory of them, none of an archive's entries can be read.
    quint64 entries = 50'000;
    quint64 directoryBytes = 64 * 1024 * 1024;
    /// The unpacked size of one entry, which is held in memory whole.
    quint64 entrySize = 512 * 1024 * 1024;
    /// The unpacked sizes of the entries up to and with one, in the archive's order.
    quint64 totalSize = Q_UINT64_C(2) * 1024 * 1024 * 1024;
    /// Unpacked to packed size, of an entry that is larger than what follows. What plug-ins carry stays far below.
    quint64 ratio = 250;
    quint64 sizeOfAnyRatio = 1024 * 1024;
    /// The folders that the entries up to and with one need, and those around one entry. Empty entries cost an archive
    /// next to nothing, the folders around them cost a disk four kilobytes each.
    quint64 folders = 50'000;
    qsizetype deepestEntry = 128;
};
