#pragma once

#include "platform/Export.h"
#include "platform/KRError.h"
#include "platform/Result.h"

#include <QByteArray>

#include <optional>

/// Writes the whole of a file, or leaves what was there: the bytes are on the disk before the new file takes the old
/// one's place. A device or a pipe is written to, and stays. Nil when it was written. Reentrant; other processes may
/// write the same file at the same time, the last one counts.
[[nodiscard]] KORVAN_EXPORT std::optional<KRError> replaceFileAtomically(
    const QByteArray &path, const QByteArray &bytes);

/// The same, and makes the folders on the way.
[[nodiscard]] std::optional<KRError> writeFileAtomically(const QByteArray &path, const QByteArray &bytes);

/// Whether something stands there that is neither a file nor a folder, links followed: a device, a pipe.
KORVAN_EXPORT bool isDevice(const QByteArray &path);

/// Keeps the file beside itself, under its name with ".unreadable" (".unreadable-2" and so on) behind it, without
/// reading it. Answers the path under which it is kept; empty when there is none.
Result<QByteArray> keepUnreadableFile(const QByteArray &path);
