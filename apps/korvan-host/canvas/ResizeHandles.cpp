#include "canvas/ResizeHandles.h"

#include <algorithm>

namespace {

/// -1: the rectangle's left or top edge, 1: the other, 0: neither.
struct Edges
{
    int horizontal;
    int vertical;
};

Edges edgesOf(ResizeHandle handle)
{
    switch (handle) {
    case ResizeHandle::TopLeft:
        return {-1, -1};
    case ResizeHandle::Top:
        return {0, -1};
    case ResizeHandle::TopRight:
        return {1, -1};
    case ResizeHandle::Right:
        return {1, 0};
    case ResizeHandle::BottomRight:
        return {1, 1};
    case ResizeHandle::Bottom:
        return {0, 1};
    case ResizeHandle::BottomLeft:
        return {-1, 1};
    case ResizeHandle::Left:
        return {-1, 0};
    }
    return {0, 0};
}

double resizedLength(double length, double change)
{
    return std::max(length + change, std::min(length, 1.0));
}

/// Where a side of the new length begins: the edge that is not dragged stays, or the middle.
double startOf(double start, double length, double newLength, int edge)
{
    if (edge == 0)
        return start + (length - newLength) / 2;
    return edge < 0 ? start + length - newLength : start;
}

} // namespace

QPointF positionOf(ResizeHandle handle, const QRectF &rectangle)
{
    const auto edges = edgesOf(handle);
    return rectangle.center()
        + QPointF(edges.horizontal * rectangle.width() / 2, edges.vertical * rectangle.height() / 2);
}

Qt::CursorShape cursorOf(ResizeHandle handle)
{
    const auto edges = edgesOf(handle);
    if (edges.horizontal == 0)
        return Qt::SizeVerCursor;
    if (edges.vertical == 0)
        return Qt::SizeHorCursor;
    return edges.horizontal == edges.vertical ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

QRectF resized(const QRectF &rectangle, ResizeHandle handle, QPointF offset, Proportions proportions)
{
    const auto edges = edgesOf(handle);
    auto width = resizedLength(rectangle.width(), edges.horizontal * offset.x());
    auto height = resizedLength(rectangle.height(), edges.vertical * offset.y());
    if (proportions == Proportions::Kept && !rectangle.isEmpty()) {
        const auto horizontal = width / rectangle.width();
        const auto vertical = height / rectangle.height();
        const bool isCorner = edges.horizontal != 0 && edges.vertical != 0;
        const auto factor = isCorner ? std::max(horizontal, vertical) : edges.horizontal != 0 ? horizontal : vertical;
        width = rectangle.width() * factor;
        height = rectangle.height() * factor;
    }
    return {startOf(rectangle.x(), rectangle.width(), width, edges.horizontal),
        startOf(rectangle.y(), rectangle.height(), height, edges.vertical), width, height};
}
