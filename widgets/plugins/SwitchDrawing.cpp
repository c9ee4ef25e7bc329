#include "widgets/plugins/SwitchDrawing.h"

#include "widgets/Tones.h"

#include <QPainter>

QSize switchSize()
{
    return {34, 20};
}

void drawSwitch(QPainter &painter, const QRect &rect, SwitchState state, const QPalette &palette)
{
    const bool isOn = state == SwitchState::On;
    const auto track = QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5);
    const auto radius = track.height() / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(isOn ? QPen(Qt::NoPen) : QPen(toneColor(Tone::Quiet, palette), 1));
    painter.setBrush(isOn ? toneColor(Tone::Accent, palette) : toneBackground(Tone::Quiet, palette));
    painter.drawRoundedRect(track, radius, radius);
    constexpr qreal inset = 3;
    const auto knob = track.height() - 2 * inset;
    const auto left = isOn ? track.right() - inset - knob : track.left() + inset;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isOn ? palette.color(QPalette::Base) : toneColor(Tone::Quiet, palette));
    painter.drawEllipse(QRectF(left, track.top() + inset, knob, knob));
    painter.restore();
}
