#include "canvas/LayerItem.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionGraphicsItem>

LayerItem::LayerItem(const LayerPointer &layer)
    : m_layer(layer)
{ }

void LayerItem::refresh(double inheritedOpacity)
{
    m_isStale = false;
    const auto own = layer();
    if (!own)
        return;
    const auto appearance = appearanceOf(*own);
    const auto opacity = appearance.opacity * inheritedOpacity;
    const auto &old = m_painter.appearance();
    if (appearance == old && opacity == m_opacity)
        return;
    if (appearance.frame.size() != old.frame.size())
        prepareGeometryChange();
    setPos(appearance.frame.topLeft());
    m_painter.setAppearance(appearance);
    m_opacity = opacity;
    update();
}

QRectF LayerItem::boundingRect() const
{
    return {{}, m_painter.appearance().frame.size()};
}

QPainterPath LayerItem::shape() const
{
    QPainterPath path;
    if (m_painter.appearance().shape == LayerAppearance::Shape::Oval)
        path.addEllipse(boundingRect());
    else
        path.addRect(boundingRect());
    return path;
}

void LayerItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    m_painter.paint(
        *painter, QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter->worldTransform()), m_opacity);
}
