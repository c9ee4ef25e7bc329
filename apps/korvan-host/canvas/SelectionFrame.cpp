#include "canvas/SelectionFrame.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>
#include <limits>

namespace {

// In pixels.
constexpr double handleSide = 8;
constexpr double reach = 7;
/// A frame smaller than that has no room for handles at the middles of its sides.
constexpr double smallestForMiddles = 32;

bool isCorner(ResizeHandle handle)
{
    return handle == ResizeHandle::TopLeft || handle == ResizeHandle::TopRight || handle == ResizeHandle::BottomRight
        || handle == ResizeHandle::BottomLeft;
}

} // namespace

SelectionFrame::SelectionFrame()
{
    setZValue(std::numeric_limits<double>::max());
    setVisible(false);
}

void SelectionFrame::setOutlines(const QList<QRectF> &outlines)
{
    if (outlines == m_outlines)
        return;
    prepareGeometryChange();
    m_outlines = outlines;
    m_bounds = outlines.value(0);
    for (const auto &outline : outlines) {
        m_bounds.setCoords(std::min(m_bounds.left(), outline.left()), std::min(m_bounds.top(), outline.top()),
            std::max(m_bounds.right(), outline.right()), std::max(m_bounds.bottom(), outline.bottom()));
    }
    setVisible(!outlines.isEmpty());
    update();
}

void SelectionFrame::setPixelsPerPoint(double pixels)
{
    prepareGeometryChange();
    m_pixelsPerPoint = pixels;
}

std::optional<ResizeHandle> SelectionFrame::handleAt(QPointF position) const
{
    if (m_outlines.isEmpty())
        return std::nullopt;
    const bool isSmall = std::min(m_bounds.width(), m_bounds.height()) * m_pixelsPerPoint < smallestForMiddles;
    for (const auto handle : allResizeHandles) {
        if (isSmall && !isCorner(handle))
            continue;
        const auto distance = (position - positionOf(handle, m_bounds)) * m_pixelsPerPoint;
        if (std::abs(distance.x()) <= reach && std::abs(distance.y()) <= reach)
            return handle;
    }
    return std::nullopt;
}

QRectF SelectionFrame::boundingRect() const
{
    const auto margin = handleSide / m_pixelsPerPoint;
    return m_bounds.adjusted(-margin, -margin, margin, margin);
}

/// Nothing: clicks are meant for the layers.
QPainterPath SelectionFrame::shape() const
{
    return {};
}

void SelectionFrame::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    const auto accent = QGuiApplication::palette().color(QPalette::Active, QPalette::Highlight);
    QPen pen(accent, 1.25);
    pen.setCosmetic(true);
    painter->setOpacity(1);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    for (const auto &outline : std::as_const(m_outlines))
        painter->drawRect(outline);
    if (m_outlines.size() > 1)
        painter->drawRect(m_bounds);

    const auto half = handleSide / 2 / m_pixelsPerPoint;
    const bool isSmall = std::min(m_bounds.width(), m_bounds.height()) * m_pixelsPerPoint < smallestForMiddles;
    painter->setBrush(Qt::white);
    for (const auto handle : allResizeHandles) {
        if (isSmall && !isCorner(handle))
            continue;
        const auto centre = positionOf(handle, m_bounds);
        painter->drawRoundedRect(QRectF(centre - QPointF(half, half), centre + QPointF(half, half)),
            1.5 / m_pixelsPerPoint, 1.5 / m_pixelsPerPoint);
    }
}
