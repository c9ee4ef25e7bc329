#pragma once

#include <QColor>
#include <QPalette>

// Colours that say something, for light and dark palettes alike.

enum class Tone {
    /// As the text around it, but quieter.
    Quiet,
    Accent,
    Good,
    Warning,
    Error
};

bool isDark(const QPalette &palette);

/// For text and symbols on the palette's base.
QColor toneColor(Tone tone, const QPalette &palette);

/// Behind text of that tone.
QColor toneBackground(Tone tone, const QPalette &palette);
