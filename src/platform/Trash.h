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

/// Moves a file, a link or a folder to the user's trash, under a name that nothing has there. Where the system has none
/// for the item's disk it comes into the trash of the user's own data, also across file systems.
///
/// Nil with the error when it is still at its place.
std::optional<TrashedItem> moveToTrash(const QByteArray &path, KRError *error = nullptr);

/// Moves it from the trash to where it was. Nil when it is there.
std::optional<KRError> takeOutOfTrash(const TrashedItem &item);
