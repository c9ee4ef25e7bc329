#pragma once

#include "platform/KRError.h"

#include <QByteArray>

#include <optional>

/// An item that was thrown away, as long as one may want it back.
struct TrashedItem
{
    /// Where it was.
    QByteArray from;
    /// Where it is.
    QByteArray inTrash;
};

/// Moves a file, a link or a folder to the trash in the user's own data, under a name that nothing has there; also from
/// another file system. A user who has no trash yet gets one.
///
/// Nil with the error when that fails, and the item is still at its place. Any thread.
std::optional<TrashedItem> moveToTrash(const QByteArray &path, KRError *error = nullptr);

/// Moves it from the trash to where it was. Nil when it is there.
std::optional<KRError> takeOutOfTrash(const TrashedItem &item);
