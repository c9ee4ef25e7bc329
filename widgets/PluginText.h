#pragma once

#include "widgets/Export.h"

#include <QString>

// Texts that plug-ins have written, for places that show plain text. A name may hold line ends, characters that turn
// the reading direction of what follows, or a megabyte. Any thread.

/// In one line: line ends, tabs and other control characters are spaces, direction marks are gone.
KORVAN_WIDGETS_EXPORT QString plainLine(const QString &text, qsizetype longest = 300);

/// The same with its lines.
KORVAN_WIDGETS_EXPORT QString plainLines(const QString &text, qsizetype longest = 20'000);

/// For labels of buttons and menus, where "&" marks a key.
KORVAN_WIDGETS_EXPORT QString withoutMnemonics(const QString &text);

/// For tool tips, which take a text for markup when it looks like that: the beginning of it, as it is.
KORVAN_WIDGETS_EXPORT QString plainToolTip(const QString &text);
