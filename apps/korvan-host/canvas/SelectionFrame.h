#pragma once

#include "canvas/ResizeHandles.h"

#include <QGraphicsItem>
#include <QList>

/// The outlines of the selected layers and the handles around all of them, above everything else. Lines and handles
/// have the same size at every zoom.
class SelectionFrame final : public QGraphicsItem
{
public:
    SelectionFrame();

    /// `outlines` are what the selected layers take up; without any the frame is hidden.
    void setOutlines(const QList<QRectF> &outlines);
    /// What the outlines take up together.
    const QRectF &bounds() const { return m_bounds; }
    /// How many pixels a point has.
    void setPixelsPerPoint(double pixels);
    /// The handle at that place, with some room around it for the hand.
    std::optional<ResizeHandle> handleAt(QPointF position) const;

    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    QList<QRectF> m_outlines;
    QRectF m_bounds;
    double m_pixelsPerPoint = 1;
};
