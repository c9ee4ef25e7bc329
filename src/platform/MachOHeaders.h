#pragma once

#include <QByteArrayView>
#include <QtGlobal>

#include <vector>

/// The processors of compiled programs and libraries in the Mach-O format, by their type numbers. Of the others, only
/// the numbers are passed on.
inline constexpr quint32 cpuTypeX86_64 = 0x01000007;
inline constexpr quint32 cpuTypeARM64 = 0x0100000C;

/// So many bytes from a file's beginning hold all that machOCPUTypes() looks at.
inline constexpr qsizetype machOHeadersSize = 8 + 44 * 32;

/// The CPU type of each slice of a Mach-O file, in order: one for a plain file, one for each entry of a universal
/// file's table (with 32-bit or 64-bit offsets). `beginning` holds the file's first machOHeadersSize bytes, or all of a
/// shorter one. Pure; any thread.
///
/// Empty for whatever is no Mach-O file, and for one whose header, or table, is cut short. Numbers may be in either
/// byte order. Where a table says that its slices lie is not looked at: whoever loads a slice judges it, and so no such
/// number can lead astray here.
std::vector<quint32> machOCPUTypes(QByteArrayView beginning);
