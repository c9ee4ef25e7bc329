#pragma once

#include "platform/Export.h"

#include <QString>
#include <QStringList>

#include <optional>

/// The order of version texts: -1 when `first` is older than `second`, 0 when they are equal, 1 when it is newer.
///
/// Components stand between dots; one that is missing (or empty) counts as 0, so "1" equals "1.0". Inside a component,
/// runs of digits compare as numbers of any length. What is not a digit sorts before its absence: "1.0-beta" < "1.0" <
/// "1.0.1" and "1.0b2" < "1.0b10". A "v" or "V" before the first digit and white space around the text are ignored.
/// Nil (no text at all) is older than every version and equal to itself. The order is a strict weak order over all
/// texts. Reentrant; allocates nothing.
KORVAN_EXPORT int LTCompareVersions(const std::optional<QString> &first, const std::optional<QString> &second);

/// The newest of the versions, the earliest listed among equals; nil for an empty list.
KORVAN_EXPORT std::optional<QString> LTHighestVersionNumber(const QStringList &versions);
