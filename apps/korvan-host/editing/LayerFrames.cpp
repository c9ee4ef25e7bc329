#include "editing/LayerFrames.h"

#include <QSet>

#include <algorithm>
#include <cmath>

namespace {

constexpr double precision = 100;

QVariant frameNumber(double value)
{
    const double rounded = std::round(value * precision) / precision;
    if (rounded == std::floor(rounded) && std::abs(rounded) < 1e15)
        return qlonglong(rounded);
    return rounded;
}

bool isInsideOneOf(const LayerPointer &layer, const QSet<LayerPointer> &layers)
{
    for (auto parent = layer->parent(); parent; parent = parent->parent()) {
        if (layers.contains(parent))
            return true;
    }
    return false;
}

/// The position between two rectangles' edges; an edge's own where there is nothing in between.
double mapped(double value, double fromStart, double fromLength, double toStart, double toLength)
{
    return fromLength == 0 ? toStart : toStart + (value - fromStart) / fromLength * toLength;
}

} // namespace

QRectF frameOf(const Layer &layer)
{
    const auto frame = layer.frame();
    const auto number = [&frame](const QString &key) { return frame.value(key).toDouble(); };
    return {number(QStringLiteral("x")), number(QStringLiteral("y")), number(QStringLiteral("width")),
        number(QStringLiteral("height"))};
}

void setFrameOf(Layer &layer, const QRectF &frame)
{
    layer.setFrame({{QStringLiteral("x"), frameNumber(frame.x())}, {QStringLiteral("y"), frameNumber(frame.y())},
        {QStringLiteral("width"), frameNumber(frame.width())},
        {QStringLiteral("height"), frameNumber(frame.height())}});
}

QRectF boundsOf(const Layer &layer)
{
    const auto frame = frameOf(layer);
    return frame.isEmpty() && !layer.layers().isEmpty() ? boundsOf(layer.layers()) : frame;
}

QRectF boundsOf(const QList<LayerPointer> &layers)
{
    if (layers.isEmpty())
        return {};
    auto bounds = boundsOf(*layers.first());
    for (const auto &layer : layers) {
        const auto own = boundsOf(*layer);
        // Not united(), which takes a rectangle without width or height for none.
        bounds.setCoords(std::min(bounds.left(), own.left()), std::min(bounds.top(), own.top()),
            std::max(bounds.right(), own.right()), std::max(bounds.bottom(), own.bottom()));
    }
    return bounds;
}

QList<LayerPointer> outermostOf(const QList<LayerPointer> &layers)
{
    if (layers.size() < 2)
        return layers;
    QList<LayerPointer> outermost;
    const QSet<LayerPointer> all(layers.begin(), layers.end());
    std::copy_if(layers.begin(), layers.end(), std::back_inserter(outermost),
        [&all](const LayerPointer &layer) { return !isInsideOneOf(layer, all); });
    return outermost;
}

QList<LayerPointer> orderedOutermostOf(const Document &document, const QList<LayerPointer> &layers)
{
    const auto outermost = outermostOf(layers);
    if (outermost.size() < 2)
        return outermost;
    const QSet<LayerPointer> chosen(outermost.begin(), outermost.end());
    auto ordered = document.allLayers();
    ordered.removeIf([&chosen](const LayerPointer &layer) { return !chosen.contains(layer); });
    return ordered;
}

FrameSnapshot::FrameSnapshot(const QList<LayerPointer> &layers)
{
    auto pending = outermostOf(layers);
    while (!pending.isEmpty()) {
        const auto layer = pending.takeLast();
        m_frames.append({layer, frameOf(*layer)});
        pending += layer->layers();
    }
}

void FrameSnapshot::applyOffset(QPointF offset) const
{
    for (const auto &[layer, frame] : m_frames)
        setFrameOf(*layer, frame.translated(offset));
}

void FrameSnapshot::applyRect(const QRectF &from, const QRectF &to) const
{
    const auto horizontal = [&](double x) { return mapped(x, from.x(), from.width(), to.x(), to.width()); };
    const auto vertical = [&](double y) { return mapped(y, from.y(), from.height(), to.y(), to.height()); };
    for (const auto &[layer, frame] : m_frames) {
        const QPointF topLeft(horizontal(frame.left()), vertical(frame.top()));
        setFrameOf(*layer, QRectF(topLeft, QPointF(horizontal(frame.right()), vertical(frame.bottom()))));
    }
}
