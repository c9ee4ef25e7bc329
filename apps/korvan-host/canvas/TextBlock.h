#pragma once

#include "canvas/LayerAppearance.h"

#include <QList>
#include <QSizeF>
#include <QTextLayout>

#include <memory>

class QPainter;

/// A text broken into lines for a width, once, and drawn many times.
class TextBlock
{
public:
    explicit TextBlock(const LayerAppearance &appearance);

    /// Into a rectangle of the layer's size at the painter's origin, in the painter's pen; what does not fit in is cut
    /// off.
    void draw(QPainter &painter) const;
    /// Bars in the lines' place, for sizes at which nobody can read.
    void drawAsBars(QPainter &painter, const QColor &colour) const;

private:
    QSizeF m_size;
    double m_height = 0;
    QTextLayout m_layout;
};
