#pragma once

#include <QByteArray>

// Names that an item has while it is being moved: beside the place where it was or will be, hidden, and known to be
// nobody's once the program that gave the name has ended.

/// A path in the folder of `path` where nothing is; different on each call.
QByteArray hiddenSibling(const QByteArray &path);

/// Removes what killed programs have left under such names in the folder. What a running program has locked (flock)
/// stays, as does what cannot be removed.
void removeForgottenSiblings(const QByteArray &folder);
