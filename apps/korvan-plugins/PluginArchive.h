#pragma once

#include "platform/KRError.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Packs a folder, itself included, into a zip archive at `archive`, which is replaced as a whole or not at all. The
/// same files always give the same bytes: entries are in the order of their paths, without times or owners, and of
/// their permissions only whether they can be run is kept.
///
/// Links that stay in the folder are packed as links. A link that leads out of it, and what is neither file nor folder
/// nor link, is an error: nobody else could use them. So is what hosts do not unpack: names with two dots in a row,
/// with control characters or in other encodings than UTF-8, files that are too large or too many. Empty folders are
/// left out, as hosts leave them out. Nil when it is done.
std::optional<KRError> packFolder(const QString &folder, const QString &archive);
