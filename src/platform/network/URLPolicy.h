#pragma once

#include "platform/KRError.h"

#include <QByteArray>
#include <QUrl>

#include <optional>

// Which URLs the library fetches. Feeds and plug-ins name them, so whoever controls a server or the network controls
// them too. Pure functions, any thread.

/// Whether the URL's host is this computer by its name or address ("localhost", 127.0.0.0/8, ::1). No name is looked
/// up.
bool isLoopback(const QUrl &url);

/// Why the URL may not be fetched; nil when it may: https, and plain HTTP on this computer itself.
std::optional<KRError> refusalToFetch(const QUrl &url);

/// Why a redirect may not be followed: as above, and encryption is never given up, not even on this computer.
std::optional<KRError> refusalToFollow(const QUrl &from, const QUrl &to);

/// Where a "Location" header leads; may be relative to the URL that was asked. Invalid when it makes no URL.
QUrl redirectTarget(const QUrl &from, const QByteArray &location);
