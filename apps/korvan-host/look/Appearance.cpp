#include "look/Appearance.h"

#include "look/PlainStyle.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QToolTip>

namespace {

struct Colours
{
    QRgb window;
    QRgb base;
    QRgb alternate;
    QRgb button;
    QRgb text;
    QRgb faintText;
    QRgb accent;
    QRgb border;
};

constexpr Colours lightColours{
    0xFFF5F5F7, 0xFFFFFFFF, 0xFFF8F8FA, 0xFFFFFFFF, 0xFF1D1D1F, 0xFF9A9AA2, 0xFF3A6FF7, 0xFFD5D5DB};
constexpr Colours darkColours{
    0xFF26272B, 0xFF1D1E21, 0xFF232428, 0xFF34353B, 0xFFEDEDF0, 0xFF80818A, 0xFF5B8BFF, 0xFF3F4047};

bool isQtsOwnStyle()
{
    static const bool isFusion =
        QApplication::style()->name().compare(QStringLiteral("fusion"), Qt::CaseInsensitive) == 0;
    return isFusion;
}

/// What Qt would take from the desktop, before anything was changed here.
const QPalette &systemPalette()
{
    static const QPalette palette = QApplication::palette();
    return palette;
}

Appearance current = Appearance::System;

bool isDarkPalette(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QPalette paletteOf(const Colours &colours)
{
    QPalette palette;
    const auto set = [&palette](std::initializer_list<QPalette::ColorRole> roles, QRgb colour) {
        for (const auto role : roles)
            palette.setColor(role, QColor::fromRgba(colour));
    };
    set({QPalette::Window, QPalette::ToolTipBase}, colours.window);
    set({QPalette::Base, QPalette::Light}, colours.base);
    set({QPalette::AlternateBase, QPalette::Midlight}, colours.alternate);
    set({QPalette::Button}, colours.button);
    set({QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText, QPalette::BrightText},
        colours.text);
    set({QPalette::PlaceholderText}, colours.faintText);
    set({QPalette::Highlight, QPalette::Link}, colours.accent);
    set({QPalette::Mid, QPalette::Dark}, colours.border);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Shadow, QColor::fromRgba(colours.border).darker(150));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor::fromRgba(colours.faintText));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor::fromRgba(colours.border));
    return palette;
}

} // namespace

Appearance appearanceNamed(const QString &name)
{
    if (name == u"light")
        return Appearance::Light;
    return name == u"dark" ? Appearance::Dark : Appearance::System;
}

QString nameOf(Appearance appearance)
{
    switch (appearance) {
    case Appearance::Light:
        return QStringLiteral("light");
    case Appearance::Dark:
        return QStringLiteral("dark");
    case Appearance::System:
        break;
    }
    return QStringLiteral("system");
}

void applyAppearance(Appearance appearance)
{
    current = appearance;
    const bool isSystemDark = isDarkPalette(systemPalette());
    if (!isQtsOwnStyle())
        return;
    static const bool isPlain = (QApplication::setStyle(new PlainStyle), true);
    Q_UNUSED(isPlain);
    const bool dark = appearance == Appearance::Dark || (appearance == Appearance::System && isSystemDark);
    const auto palette = paletteOf(dark ? darkColours : lightColours);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

Appearance currentAppearance()
{
    return current;
}

bool isDark()
{
    return isDarkPalette(QApplication::palette());
}
