#pragma once

#include "platform/Export.h"
#include "platform/MenuItem.h"

#include <QKeySequence>

/// The item's shortcut for a Qt menu; empty when it has none, or a key that no keyboard could have.
///
/// Command is Qt's Ctrl, Control its Meta and Option its Alt, so that a shortcut feels at home on every system. A key
/// without a character of its own is named by a control character (return, tab, escape, backspace, delete) or by a
/// character from U+F700 on (arrows, function keys, Home, End and the like). Any thread.
KORVAN_EXPORT QKeySequence keySequenceOf(const MenuItem &item);
