#pragma once

#include "document/Document.h"

#include <QGraphicsScene>
#include <QHash>

#include <memory>

class LayerItem;

/// A document's layers as items, each kept up to date: changes are taken over together, once per turn of the event
/// loop, so that a command that changes thousands of layers is not slowed down.
///
/// The items are all at the top level, in the order of the document, since frames are the document's coordinates and
/// groups draw nothing.
class CanvasScene final : public QGraphicsScene
{
    Q_OBJECT

public:
    explicit CanvasScene(std::shared_ptr<Document> document);
    ~CanvasScene() override;

    const std::shared_ptr<Document> &document() const { return m_document; }

    /// The topmost layer there that draws something; null for none.
    LayerPointer layerAt(QPointF position);
    /// All that draw something in the rectangle, in no order.
    QList<LayerPointer> layersIn(const QRectF &rectangle);
    /// What all layers take up; a null rectangle for an empty document.
    QRectF contentRect();
    /// Takes over what has changed now.
    void flush();

signals:
    /// After layers, or which of them are selected, have changed.
    void changedOnCanvas();

private:
    void documentChanged(const DocumentEvent &event);
    void addItems(const LayerPointer &layer);
    void removeItems(const LayerPointer &layer);
    void markStale(const LayerPointer &layer);
    void flushLater();
    void refreshStale();
    void restack();
    void growSceneRect();
    double opacityAround(const Layer &layer) const;

    std::shared_ptr<Document> m_document;
    QHash<const Layer *, LayerItem *> m_items;
    QList<std::weak_ptr<Layer>> m_stale;
    bool m_isOrderStale = true;
    bool m_isFlushPlanned = false;
    DocumentObserver m_observer;
};
