#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QSize>

// Pictures out of pictures, on QtGui's images alone: without a screen, on any thread. Sizes and places are in points, y
// goes down; a picture's device pixel ratio says how many of its pixels a point has.

/// The whole of a new, transparent picture.
QImage emptyImage(const QSize &size, qreal devicePixelRatio);

/// The picture scaled until it fills the size, what is too much of it cut off on both sides alike, with rounded
/// corners. Of a null image a transparent one.
QImage thumbnail(const QImage &image, const QSize &size, qreal cornerRadius, qreal devicePixelRatio);

struct DropShadow
{
    QColor colour;
    QPointF offset;
    /// Twice the standard deviation of the blur, which is Gaussian.
    qreal blurRadius = 0;
};

/// Draws the whole picture into the rectangle, its shadow below it, over what the canvas holds.
void drawWithShadow(QImage &canvas, const QImage &image, const QRectF &rectangle, const DropShadow &shadow);
