#include "canvas/CanvasDrag.h"

#include "editing/LayerTexts.h"

#include <cmath>

CanvasDrag::~CanvasDrag() = default;

MoveDrag::MoveDrag(Document &document, const QList<LayerPointer> &layers, QPointF start)
    : m_step(document, LayerTexts::tr("Move"))
    , m_frames(layers)
    , m_start(start)
{ }

void MoveDrag::moveTo(QPointF position, Qt::KeyboardModifiers modifiers)
{
    auto offset = position - m_start;
    if (modifiers & Qt::ShiftModifier) {
        const bool isHorizontal = std::abs(offset.x()) > std::abs(offset.y());
        offset = isHorizontal ? QPointF(offset.x(), 0) : QPointF(0, offset.y());
    }
    m_frames.applyOffset({std::round(offset.x()), std::round(offset.y())});
}

void MoveDrag::cancel()
{
    m_frames.applyOffset({});
}

ResizeDrag::ResizeDrag(
    Document &document, const QList<LayerPointer> &layers, const QRectF &bounds, ResizeHandle handle, QPointF start)
    : m_step(document, LayerTexts::tr("Resize"))
    , m_frames(layers)
    , m_bounds(bounds)
    , m_handle(handle)
    , m_start(start)
{ }

void ResizeDrag::moveTo(QPointF position, Qt::KeyboardModifiers modifiers)
{
    const auto offset = position - m_start;
    const QPointF rounded(std::round(offset.x()), std::round(offset.y()));
    const auto proportions = modifiers & Qt::ShiftModifier ? Proportions::Kept : Proportions::Free;
    m_frames.applyRect(m_bounds, resized(m_bounds, m_handle, rounded, proportions));
}

void ResizeDrag::cancel()
{
    m_frames.applyOffset({});
}

SelectDrag::SelectDrag(CanvasScene &scene, const LayerPointer &group, QPointF start, Qt::KeyboardModifiers modifiers)
    : m_scene(scene)
    , m_group(group)
    , m_start(start)
    , m_rectangle(start, QSizeF())
    , m_selectedBefore(scene.document()->selection())
{
    if (modifiers & Qt::ShiftModifier)
        m_kept = m_selectedBefore;
}

void SelectDrag::moveTo(QPointF position, Qt::KeyboardModifiers)
{
    m_rectangle = QRectF(m_start, position).normalized();
    auto selected = m_kept;
    const auto touched = m_scene.layersIn(m_rectangle);
    QSet<LayerPointer> known(selected.begin(), selected.end());
    for (const auto &layer : touched) {
        const auto meant = ancestorIn(layer, m_group);
        if (!meant || known.contains(meant))
            continue;
        known.insert(meant);
        selected.append(meant);
    }
    m_scene.document()->setSelection(selected);
}

void SelectDrag::cancel()
{
    m_scene.document()->setSelection(m_selectedBefore);
}

LayerPointer ancestorIn(const LayerPointer &layer, const LayerPointer &group)
{
    for (auto ancestor = layer; ancestor; ancestor = ancestor->parent()) {
        if (ancestor->parent() == group)
            return ancestor;
    }
    return nullptr;
}
