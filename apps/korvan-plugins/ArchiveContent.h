#pragma once

#include "platform/KRError.h"
#include "platform/Result.h"

#include <QStringList>

#include <optional>

// What goes into a plug-in's archive, and whether it comes out again.

/// Everything in a folder at any depth but what is for its author (tests, files for an editor), links not followed,
/// each by its path from there, in the order of the paths. An error when something could not be listed, or has a name
/// that is not UTF-8, as paths in archives are.
Result<QStringList> itemsToPack(const QString &folder);

/// Reads the archive as hosts do. An error names the first file that they do not unpack.
std::optional<KRError> flawOfArchive(const QString &archive);

/// "\"a\" cannot be packed: it cannot be read." for such a reason.
KRError refusal(const QString &path, const char *reason);
