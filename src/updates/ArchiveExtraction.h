#pragma once

#include "platform/Export.h"
#include "platform/KRError.h"
#include "platform/archive/LTZipReader.h"

#include <QString>
#include <QUrl>

// Unpacks archives that strangers made, on the caller's thread. Errors have the domain
// "com.veldmark.pluginmanager.updating", code 0 and a localized text, but for those of making the destination.

/// Unpacks an archive below `folder`, which is made with all folders above it.
///
/// Stops at the first entry that cannot be unpacked; what was unpacked before stays. Whatever the archive says, nothing
/// outside of `folder` is made or changed: folders are entered by their handles, and one that a link takes out of
/// `folder` is refused. Files and links that stand in an entry's place are replaced, folders are not. New files and
/// folders have the attributes that new ones usually have; the archive's owners and permissions are not taken over.
///
/// False with `error` set (if given) when something failed; false with `error` untouched, deliberately, when the
/// archive has no entries or cannot be read at all.
KORVAN_EXPORT bool decompressPluginZip(const QUrl &zip, const QUrl &folder, KRError *error = nullptr);

/// Unpacks one entry to `target`, whose folder has to exist and is not checked. A link is made as the entry says,
/// wherever it leads; that it could not be made is deliberately no error. On failure there is nothing at `target`,
/// unless there is a folder.
KORVAN_EXPORT bool decompressFile(
    const QString &path, LTZipReader &reader, const QUrl &target, KRError *error = nullptr);

/// Sets `error` (if given) to one of the domain above. True in every case.
KORVAN_EXPORT bool makeDecompressError(KRError *error, const QString &description);
