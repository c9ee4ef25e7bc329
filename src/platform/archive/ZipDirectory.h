#pragma once

#include "platform/archive/ZipBudget.h"

#include <QByteArray>

#include <optional>
#include <vector>

/// What an archive's directory says of an entry.
struct ZipEntry
{
    enum class State {
        Sound,
        /// Breaks a budget, contradicts itself or the rest of the archive, or needs what the reader does not do. It
        /// must not be read.
        Refused
    };

    bool isSymbolicLink() const;
    bool hasFlag(quint16 flag) const { return (flags & flag) != 0; }

    /// As it is in the archive.
    QByteArray name;
    quint16 madeBy = 0;
    quint16 flags = 0;
    quint16 method = 0;
    quint32 checksum = 0;
    quint64 packedSize = 0;
    quint64 size = 0;
    quint64 headerOffset = 0;
    quint32 attributes = 0;
    State state = State::Sound;
};

namespace ZipFlag {
inline constexpr quint16 encrypted = 1 << 0;
/// Sizes and checksum come after the data.
inline constexpr quint16 hasDescriptor = 1 << 3;
inline constexpr quint16 stronglyEncrypted = 1 << 6;
inline constexpr quint16 headersEncrypted = 1 << 13;
} // namespace ZipFlag

namespace ZipMethod {
inline constexpr quint16 stored = 0;
inline constexpr quint16 deflated = 8;
} // namespace ZipMethod

/// The directory at an archive's end.
struct ZipDirectory
{
    /// In the archive's order. Of an archive with too many of them only the first, so that there is something to
    /// refuse.
    std::vector<ZipEntry> entries;
    bool isWithinBudget = true;
    /// Where the directory begins: behind all data.
    quint64 offset = 0;
};

/// Nil when the file is no archive, is cut off, or goes over several disks. Entries are not yet looked at.
std::optional<ZipDirectory> readZipDirectory(int file, const ZipBudget &budget);
