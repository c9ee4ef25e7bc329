#pragma once

#include "platform/Export.h"

#include <QStringList>
#include <QUrl>

// What is known of a compiled program or library from its file alone. Of URLs that are no local file's, nothing. Any
// thread.

/// Whether this process may execute the file at the URL, or search the folder; of a link, what it leads to. False when
/// that cannot be found out.
KORVAN_EXPORT bool isExecutable(const QUrl &url);

/// Whether a regular file itself is at the URL: a link to one is none. False when that cannot be found out.
KORVAN_EXPORT bool isRegularFile(const QUrl &url);

/// The architectures that the Mach-O file at the URL was built for, "x86_64", "arm64" and "arm64e", in the order of its
/// slices. Links are followed. A slice for 64-bit Arm gives both of the Arm names, whichever of them it is, and one for
/// any other processor gives none. Empty for files of other kinds, and where there is none that can be read. Reads only
/// the headers, and waits for nobody.
KORVAN_EXPORT QStringList architectures(const QUrl &url);
