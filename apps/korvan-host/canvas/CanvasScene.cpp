#include "canvas/CanvasScene.h"

#include "canvas/LayerItem.h"
#include "editing/LayerFrames.h"

#include <QTimer>

CanvasScene::CanvasScene(std::shared_ptr<Document> document)
    : m_document(std::move(document))
{
    setItemIndexMethod(BspTreeIndex);
    const auto layers = m_document->layers();
    for (const auto &layer : layers)
        addItems(layer);
    m_observer = m_document->observe([this](const DocumentEvent &event) { documentChanged(event); });
    flush();
}

CanvasScene::~CanvasScene() = default;

void CanvasScene::documentChanged(const DocumentEvent &event)
{
    switch (event.kind) {
    case DocumentEvent::Kind::LayerAdded:
        addItems(event.layer);
        m_isOrderStale = true;
        break;
    case DocumentEvent::Kind::LayerRemoved:
        removeItems(event.layer);
        break;
    case DocumentEvent::Kind::LayerMoved:
        markStale(event.layer); // into a group of another opacity
        m_isOrderStale = true;
        break;
    case DocumentEvent::Kind::LayerChanged:
        markStale(event.layer);
        break;
    case DocumentEvent::Kind::SelectionChanged:
        break;
    case DocumentEvent::Kind::DocumentChanged:
        return;
    }
    flushLater();
}

void CanvasScene::addItems(const LayerPointer &layer)
{
    if (!m_items.contains(layer.get())) {
        auto *const item = new LayerItem(layer);
        m_items.insert(layer.get(), item);
        m_stale.append(layer);
        addItem(item);
    }
    const auto layers = layer->layers();
    for (const auto &inner : layers)
        addItems(inner);
}

void CanvasScene::removeItems(const LayerPointer &layer)
{
    delete m_items.take(layer.get());
    const auto layers = layer->layers();
    for (const auto &inner : layers)
        removeItems(inner);
}

void CanvasScene::markStale(const LayerPointer &layer)
{
    auto *const item = m_items.value(layer.get());
    if (!item || item->isStale())
        return;
    item->setStale(true);
    m_stale.append(layer);
}

void CanvasScene::flushLater()
{
    if (m_isFlushPlanned)
        return;
    m_isFlushPlanned = true;
    QTimer::singleShot(0, this, &CanvasScene::flush);
}

void CanvasScene::flush()
{
    m_isFlushPlanned = false;
    refreshStale();
    if (m_isOrderStale)
        restack();
    growSceneRect();
    emit changedOnCanvas();
}

void CanvasScene::refreshStale()
{
    // A group's opacity is one of everything inside it: the list grows while it is gone through.
    for (qsizetype index = 0; index < m_stale.size(); ++index) {
        const auto layer = m_stale[index].lock();
        auto *const item = layer ? m_items.value(layer.get()) : nullptr;
        if (!item)
            continue;
        const auto before = item->opacityForChildren();
        item->refresh(opacityAround(*layer));
        if (item->opacityForChildren() == before)
            continue;
        const auto layers = layer->layers();
        for (const auto &inner : layers)
            markStale(inner);
    }
    m_stale.clear();
}

double CanvasScene::opacityAround(const Layer &layer) const
{
    const auto parent = layer.parent();
    const auto *const item = parent ? m_items.value(parent.get()) : nullptr;
    return item ? item->opacityForChildren() : 1;
}

void CanvasScene::restack()
{
    m_isOrderStale = false;
    double order = 0;
    const auto layers = m_document->allLayers();
    for (const auto &layer : layers) {
        if (auto *const item = m_items.value(layer.get()))
            item->setZValue(++order);
    }
}

/// There is always room around the layers to scroll into, and it never shrinks: what is seen would jump otherwise.
void CanvasScene::growSceneRect()
{
    constexpr double room = 20000;
    const auto needed = contentRect().adjusted(-room, -room, room, room);
    if (!sceneRect().contains(needed))
        setSceneRect(sceneRect().united(needed));
}

QRectF CanvasScene::contentRect()
{
    QRectF content;
    for (const auto *const item : std::as_const(m_items))
        content |= item->boundingRect().translated(item->pos());
    return content;
}

LayerPointer CanvasScene::layerAt(QPointF position)
{
    flush();
    const auto found = items(position, Qt::IntersectsItemShape, Qt::DescendingOrder);
    for (auto *const item : found) {
        if (const auto *const layerItem = qgraphicsitem_cast<LayerItem *>(item)) {
            const auto layer = layerItem->layer();
            if (layer && layer->type() != u"group")
                return layer;
        }
    }
    return nullptr;
}

QList<LayerPointer> CanvasScene::layersIn(const QRectF &rectangle)
{
    flush();
    QList<LayerPointer> layers;
    const auto found = items(rectangle, Qt::IntersectsItemShape);
    for (auto *const item : found) {
        const auto *const layerItem = qgraphicsitem_cast<LayerItem *>(item);
        const auto layer = layerItem ? layerItem->layer() : nullptr;
        if (layer && layer->type() != u"group")
            layers.append(layer);
    }
    return layers;
}
