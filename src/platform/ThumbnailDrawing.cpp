#include "platform/ThumbnailDrawing.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr auto format = QImage::Format_ARGB32_Premultiplied;

/// One value for each pixel, from 0 to 1.
struct Mask
{
    int width = 0;
    int height = 0;
    std::vector<float> values;
};

Mask alphaOf(const QImage &image)
{
    Mask mask{image.width(), image.height(), {}};
    mask.values.reserve(std::size_t(image.width()) * std::size_t(image.height()));
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            mask.values.push_back(float(qAlpha(line[x])) / 255.0F);
    }
    return mask;
}

/// How much each pixel adds to the middle of the one from which it is so many pixels away: a Gaussian's share of it.
/// All of them on both sides make 1; what is further away than three standard deviations would not show.
std::vector<float> gaussianWeights(double deviation)
{
    const auto below = [deviation](double position) { return std::erf(position / (deviation * std::sqrt(2.0))) / 2; };
    std::vector<float> weights;
    const int reach = int(std::ceil(3 * deviation));
    const double all = 2 * below(reach + 0.5);
    for (int distance = 0; distance <= reach; ++distance)
        weights.push_back(float((below(distance + 0.5) - below(distance - 0.5)) / all));
    return weights;
}

/// Blurs the rows and turns the result by exchanging x and y, so that doing it twice blurs both ways. Outside of the
/// mask nothing is.
Mask blurRowsAndTranspose(const Mask &mask, const std::vector<float> &weights)
{
    const int reach = int(weights.size()) - 1;
    Mask result{mask.height, mask.width, std::vector<float>(mask.values.size())};
    for (int y = 0; y < mask.height; ++y) {
        const auto *row = mask.values.data() + std::size_t(y) * std::size_t(mask.width);
        for (int x = 0; x < mask.width; ++x) {
            float sum = 0;
            for (int from = std::max(0, x - reach); from <= std::min(mask.width - 1, x + reach); ++from)
                sum += row[from] * weights[std::size_t(std::abs(from - x))];
            result.values[std::size_t(x) * std::size_t(mask.height) + std::size_t(y)] = sum;
        }
    }
    return result;
}

QImage filledWithColour(const Mask &mask, const QColor &colour)
{
    QImage image(mask.width, mask.height, format);
    auto value = mask.values.begin();
    for (int y = 0; y < mask.height; ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < mask.width; ++x, ++value) {
            const int alpha = int(std::lround(255 * colour.alphaF() * *value));
            line[x] = qPremultiply(qRgba(colour.red(), colour.green(), colour.blue(), alpha));
        }
    }
    return image;
}

/// In pixels of both, whatever their ratios; where nothing has to be scaled, nothing is.
void drawInto(QImage &canvas, const QImage &image, const QRectF &rectangle,
    QPainter::CompositionMode mode = QPainter::CompositionMode_SourceOver)
{
    auto pixels = image;
    pixels.setDevicePixelRatio(1);
    QPainter painter(&canvas);
    painter.scale(1 / canvas.devicePixelRatio(), 1 / canvas.devicePixelRatio());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setCompositionMode(mode);
    painter.drawImage(rectangle, pixels, QRectF(pixels.rect()));
}

/// The shadow alone, on a picture larger than the canvas by `margin` pixels all around, so that what is cast from
/// outside comes in.
QImage shadowOf(
    const QImage &canvas, const QImage &image, const QRectF &rectangle, const DropShadow &shadow, int margin)
{
    const auto scale = canvas.devicePixelRatio();
    QImage cast(canvas.size() + 2 * QSize(margin, margin), format);
    cast.fill(Qt::transparent);
    const auto place = rectangle.translated(shadow.offset);
    drawInto(cast, image, QRectF(place.topLeft() * scale + QPointF(margin, margin), place.size() * scale));
    auto mask = alphaOf(cast);
    if (shadow.blurRadius > 0) {
        const auto weights = gaussianWeights(shadow.blurRadius * scale / 2);
        mask = blurRowsAndTranspose(blurRowsAndTranspose(mask, weights), weights);
    }
    return filledWithColour(mask, shadow.colour);
}

/// How far a rectangle of that height begins behind its side at `y`, for its corners are round.
double cornerInset(double y, double height, double radius)
{
    const double missing = std::max(0.0, radius - std::min(y, height - y));
    return radius - std::sqrt(radius * radius - missing * missing);
}

/// A rectangle with round corners that fills the mask, each pixel by how much of it is covered. A painter's own comes
/// out with corners that are cut off.
Mask roundedRectangle(const QSize &size, double radius)
{
    constexpr int strips = 16; // of a row, each covered exactly
    Mask mask{size.width(), size.height(), {}};
    mask.values.resize(std::size_t(size.width()) * std::size_t(size.height()));
    for (int strip = 0; strip < size.height() * strips; ++strip) {
        const double inset = cornerInset((strip + 0.5) / strips, size.height(), radius);
        auto *const row = mask.values.data() + std::size_t(strip / strips) * std::size_t(size.width());
        for (int x = 0; x < size.width(); ++x) {
            const double covered = std::min(x + 1.0, size.width() - inset) - std::max(double(x), inset);
            row[x] += float(std::clamp(covered, 0.0, 1.0) / strips);
        }
    }
    return mask;
}

/// The largest part in the middle of the image that has the proportions of `size`.
QRect middleOf(const QSize &image, const QSize &size)
{
    const auto part = size.scaled(image, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    return {QPoint((image.width() - part.width()) / 2, (image.height() - part.height()) / 2), part};
}

} // namespace

QImage emptyImage(const QSize &size, qreal devicePixelRatio)
{
    QImage image((QSizeF(size) * devicePixelRatio).toSize(), format);
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(devicePixelRatio);
    return image;
}

QImage thumbnail(const QImage &image, const QSize &size, qreal cornerRadius, qreal devicePixelRatio)
{
    auto result = emptyImage(size, devicePixelRatio);
    if (image.isNull())
        return result;
    const auto picture = image.copy(middleOf(image.size(), size)).convertToFormat(format);
    const auto scaled = picture.scaled(result.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const auto mask = roundedRectangle(result.size(), cornerRadius * devicePixelRatio);
    result = filledWithColour(mask, Qt::black);
    result.setDevicePixelRatio(devicePixelRatio);
    drawInto(result, scaled, QRectF(result.rect()), QPainter::CompositionMode_SourceIn);
    return result;
}

void drawWithShadow(QImage &canvas, const QImage &image, const QRectF &rectangle, const DropShadow &shadow)
{
    const int margin = int(std::ceil(1.5 * shadow.blurRadius * canvas.devicePixelRatio())) + 1;
    const auto cast = shadowOf(canvas, image, rectangle, shadow, margin);
    drawInto(canvas, cast, QRectF(QPointF(-margin, -margin), QSizeF(cast.size())));
    const auto scale = canvas.devicePixelRatio();
    drawInto(canvas, image, QRectF(rectangle.topLeft() * scale, rectangle.size() * scale));
}
