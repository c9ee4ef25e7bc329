#pragma once

#include <QPointF>
#include <QRectF>

#include <array>
#include <optional>

/// The eight places at a selection's edge by which it is resized.
enum class ResizeHandle { TopLeft, Top, TopRight, Right, BottomRight, Bottom, BottomLeft, Left };

inline constexpr std::array allResizeHandles{ResizeHandle::TopLeft, ResizeHandle::Top, ResizeHandle::TopRight,
    ResizeHandle::Right, ResizeHandle::BottomRight, ResizeHandle::Bottom, ResizeHandle::BottomLeft, ResizeHandle::Left};

QPointF positionOf(ResizeHandle handle, const QRectF &rectangle);
Qt::CursorShape cursorOf(ResizeHandle handle);

/// Whether width and height keep their proportions.
enum class Proportions { Free, Kept };

/// The rectangle after its handle was dragged by so much. Neither side becomes smaller than a point; one that was
/// smaller stays.
QRectF resized(const QRectF &rectangle, ResizeHandle handle, QPointF offset, Proportions proportions);
