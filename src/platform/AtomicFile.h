#pragma once

#include "platform/KRError.h"

#include <QByteArray>

#include <optional>

/// Writes the whole of a file, or leaves what was there: the bytes are on the disk before the new file takes the old
/// one's place. Makes the folders on the way. Nil when it was written. Reentrant; other processes may write the same
/// file at the same time, the last one counts.
[[nodiscard]] std::optional<KRError> writeFileAtomically(const QByteArray &path, const QByteArray &bytes);

/// Keeps the file beside itself, under its name with ".unreadable" (".unreadable-2" and so on) behind it, without
/// reading it. Nil when it was kept or there is none.
[[nodiscard]] std::optional<KRError> keepUnreadableFile(const QByteArray &path);
