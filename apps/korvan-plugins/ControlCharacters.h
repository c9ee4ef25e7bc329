#pragma once

#include <QString>

enum class ControlCharacters {
    All,
    /// Tabs and line ends stay.
    AllButLayout
};

/// The text with control characters as escapes like "\u001b", so that it cannot command a terminal.
QString withoutControlCharacters(const QString &text, ControlCharacters which);
