#pragma once

#include <QImage>

/// A plug-in's picture as dialogs show it: 64 by 64 points, a thumbnail with rounded corners and two soft shadows below
/// it. Of a null image an empty one of that size. Any thread.
QImage alertIconOf(const QImage &icon, qreal devicePixelRatio);
