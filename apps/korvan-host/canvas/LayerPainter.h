#pragma once

#include "canvas/LayerAppearance.h"

#include <memory>

class QImage;
class QPainter;
class TextBlock;

/// Draws one layer, and keeps what that takes: the text's lines, the picture.
class LayerPainter
{
public:
    LayerPainter();
    ~LayerPainter();

    const LayerAppearance &appearance() const { return m_appearance; }
    void setAppearance(const LayerAppearance &appearance);

    /// With the layer's top left corner at the painter's origin. `scale` is how many pixels a point has there: what is
    /// too small to be seen is left out. The painter's pen, brush and opacity are not the same afterwards.
    void paint(QPainter &painter, double scale, double opacity);

private:
    void paintShape(QPainter &painter, double scale) const;
    void paintText(QPainter &painter, double scale);
    void paintImage(QPainter &painter, double scale);
    void paintPlaceholder(QPainter &painter) const;

    LayerAppearance m_appearance;
    std::unique_ptr<TextBlock> m_text;
    std::unique_ptr<QImage> m_image;
};
