#pragma once

#include "canvas/LayerPainter.h"
#include "document/Layer.h"

#include <QGraphicsItem>

/// One layer on the canvas. Groups have an item too, which paints nothing: so an item's layer is never looked for.
class LayerItem final : public QGraphicsItem
{
public:
    enum { Type = UserType + 1 };

    explicit LayerItem(const LayerPointer &layer);

    int type() const override { return Type; }
    LayerPointer layer() const { return m_layer.lock(); }
    /// Takes over what the layer looks like now. `inheritedOpacity` is that of the groups around it.
    void refresh(double inheritedOpacity);
    double opacityForChildren() const { return m_opacity; }
    bool isStale() const { return m_isStale; }
    void setStale(bool isStale) { m_isStale = isStale; }

    QRectF boundingRect() const override;
    /// What a click hits.
    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    std::weak_ptr<Layer> m_layer;
    LayerPainter m_painter;
    double m_opacity = 1;
    bool m_isStale = true;
};
