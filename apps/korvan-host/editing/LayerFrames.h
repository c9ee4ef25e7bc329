#pragma once

#include "document/Document.h"

#include <QPair>
#include <QRectF>

/// Where a layer is, in the document's points.
QRectF frameOf(const Layer &layer);
/// Whole numbers stay whole, others are kept to a hundredth of a point.
void setFrameOf(Layer &layer, const QRectF &frame);
/// What the layer takes up: for a group without a size of its own, what its layers take up.
QRectF boundsOf(const Layer &layer);
/// A null rectangle for no layers.
QRectF boundsOf(const QList<LayerPointer> &layers);
/// Without those that are inside another one of the list.
QList<LayerPointer> outermostOf(const QList<LayerPointer> &layers);
/// The same in the document's order, bottom first.
QList<LayerPointer> orderedOutermostOf(const Document &document, const QList<LayerPointer> &layers);

/// The frames of some layers, and of everything inside them, at one moment: what a drag begins with.
class FrameSnapshot
{
public:
    explicit FrameSnapshot(const QList<LayerPointer> &layers);

    /// Puts the layers where they were, moved by so much.
    void applyOffset(QPointF offset) const;
    /// Puts the layers as far into `to` as they were in `from`, scaled by what that takes.
    void applyRect(const QRectF &from, const QRectF &to) const;

private:
    QList<QPair<LayerPointer, QRectF>> m_frames;
};
