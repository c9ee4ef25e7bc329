#pragma once

#include <QString>

/// A shortcut's text is matched by what it contains, not by separators: its key is always the last character, in lower
/// case; "" for an empty text.
QString keyOfShortcut(const QString &shortcut);

/// The mask of ModifierFlag bits for the modifiers that the text names, in any case: "cmd" or "command", "option" or
/// "alt", "control" or "ctrl", "shift".
unsigned modifiersOfShortcut(const QString &shortcut);
