#pragma once

#include <QPalette>
#include <QRect>

class QPainter;

enum class SwitchState { Off, On };

/// In points.
QSize switchSize();

void drawSwitch(QPainter &painter, const QRect &rect, SwitchState state, const QPalette &palette);
