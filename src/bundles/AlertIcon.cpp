#include "bundles/AlertIcon.h"

#include "platform/ThumbnailDrawing.h"

#include <algorithm>

namespace {

constexpr QSize iconSize(64, 64);
constexpr QSize thumbnailSize(56, 56);
constexpr qreal cornerRadius = 7;
/// 8 points are left below it, where the shadows fall.
constexpr QPointF thumbnailPlace(4, 0);
/// More than any screen has, and little memory.
constexpr qreal mostPixelsOfAPoint = 8;

} // namespace

QImage alertIconOf(const QImage &icon, qreal devicePixelRatio)
{
    const auto scale = devicePixelRatio >= 1 ? std::min(devicePixelRatio, mostPixelsOfAPoint) : 1.0;
    auto canvas = emptyImage(iconSize, scale);
    if (icon.isNull())
        return canvas;
    const auto thumb = thumbnail(icon, thumbnailSize, cornerRadius, scale);
    const QRectF place(thumbnailPlace, QSizeF(thumbnailSize));
    drawWithShadow(canvas, thumb, place, {QColor::fromRgbF(0, 0, 0, 0.08F), {0, 4}, 4});
    drawWithShadow(canvas, thumb, place, {QColor::fromRgbF(0, 0, 0, 0.15F), {0, 1}, 1});
    return canvas;
}
