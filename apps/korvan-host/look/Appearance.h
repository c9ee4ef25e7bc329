#pragma once

#include <QString>

class QApplication;

/// How the windows are coloured.
enum class Appearance {
    /// As the user's system is.
    System,
    Light,
    Dark
};

/// "system", "light" or "dark"; System for anything else.
Appearance appearanceNamed(const QString &name);
QString nameOf(Appearance appearance);

/// Puts the colours in force for all windows. Only the style that Qt draws itself takes them, elsewhere the system's
/// own style keeps its own.
void applyAppearance(Appearance appearance);
/// What was put in force last.
Appearance currentAppearance();
/// Whether the colours in force are dark ones.
bool isDark();
