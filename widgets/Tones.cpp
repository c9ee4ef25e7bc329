#include "widgets/Tones.h"

namespace {

QColor mixed(const QColor &first, const QColor &second, qreal share)
{
    const auto part = [share](float one, float other) { return float(one * (1 - share) + other * share); };
    return QColor::fromRgbF(
        part(first.redF(), second.redF()), part(first.greenF(), second.greenF()), part(first.blueF(), second.blueF()));
}

} // namespace

bool isDark(const QPalette &palette)
{
    return palette.color(QPalette::Base).lightnessF() < 0.5F;
}

QColor toneColor(Tone tone, const QPalette &palette)
{
    const bool dark = isDark(palette);
    switch (tone) {
    case Tone::Quiet:
        return mixed(palette.color(QPalette::Text), palette.color(QPalette::Base), 0.4);
    case Tone::Accent:
        return dark ? QColor(0x7c, 0xb3, 0xff) : QColor(0x1d, 0x5f, 0xc4);
    case Tone::Good:
        return dark ? QColor(0x6f, 0xcf, 0x8a) : QColor(0x1b, 0x7a, 0x3d);
    case Tone::Warning:
        return dark ? QColor(0xf0, 0xb8, 0x5a) : QColor(0x9a, 0x5b, 0x00);
    case Tone::Error:
        break;
    }
    return dark ? QColor(0xff, 0x8f, 0x87) : QColor(0xc0, 0x2b, 0x26);
}

QColor toneBackground(Tone tone, const QPalette &palette)
{
    return mixed(palette.color(QPalette::Base), toneColor(tone, palette), isDark(palette) ? 0.2 : 0.11);
}
