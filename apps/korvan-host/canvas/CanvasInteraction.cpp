#include "canvas/CanvasInteraction.h"

#include "canvas/SelectionFrame.h"
#include "editing/DocumentUndoStack.h"

#include <cmath>

CanvasInteraction::CanvasInteraction(CanvasScene &scene, SelectionFrame &frame, DocumentUndoStack &undo)
    : m_scene(scene)
    , m_frame(frame)
    , m_undo(undo)
{ }

CanvasInteraction::~CanvasInteraction() = default;

LayerPointer CanvasInteraction::layerMeantAt(QPointF position, Qt::KeyboardModifiers modifiers)
{
    const auto layer = m_scene.layerAt(position);
    if (!layer || modifiers & Qt::ControlModifier)
        return layer;
    const auto group = m_enteredGroup.lock();
    if (const auto inside = ancestorIn(layer, group))
        return inside;
    return ancestorIn(layer, nullptr);
}

void CanvasInteraction::press(QPointF position, Qt::KeyboardModifiers modifiers)
{
    Press press{position, modifiers, m_frame.handleAt(position), nullptr};
    if (!press.handle) {
        press.layer = layerMeantAt(position, modifiers);
        press.wasSelected = document().selection().contains(press.layer);
        const auto group = m_enteredGroup.lock();
        if (group && (!press.layer || ancestorIn(press.layer, group) == nullptr))
            m_enteredGroup.reset();
        selectOnPress(press);
    }
    m_press = press;
}

/// What is selected already stays so: the press may begin a drag of all that is.
void CanvasInteraction::selectOnPress(const Press &press)
{
    const bool isExtending = press.modifiers & Qt::ShiftModifier;
    if (!press.layer) {
        if (!isExtending)
            document().setSelection({});
    } else if (!press.wasSelected) {
        document().setSelection(
            isExtending ? document().selection() + QList<LayerPointer>{press.layer} : QList<LayerPointer>{press.layer});
    }
}

void CanvasInteraction::move(QPointF position, Qt::KeyboardModifiers modifiers)
{
    if (!m_press)
        return;
    if (!m_drag) {
        const auto distance = position - m_press->position;
        if (std::hypot(distance.x(), distance.y()) < m_dragDistance)
            return;
        startDrag();
    }
    m_drag->moveTo(position, modifiers);
    emit selectionRectangleChanged();
}

void CanvasInteraction::startDrag()
{
    m_undoIndex = m_undo.index();
    const auto selected = document().selection();
    if (m_press->handle) {
        m_drag =
            std::make_unique<ResizeDrag>(document(), selected, m_frame.bounds(), *m_press->handle, m_press->position);
    } else if (m_press->layer && !selected.isEmpty()) {
        m_drag = std::make_unique<MoveDrag>(document(), selected, m_press->position);
    } else {
        m_drag = std::make_unique<SelectDrag>(m_scene, m_enteredGroup.lock(), m_press->position, m_press->modifiers);
    }
    if (const auto action = m_drag->action(); !action.isEmpty())
        emit dragStarted(action);
}

void CanvasInteraction::release()
{
    const auto press = std::exchange(m_press, std::nullopt);
    if (m_drag)
        return endDrag();
    // A click: only now is it known not to be a drag of everything that is selected.
    if (!press || !press->layer || !press->wasSelected)
        return;
    if (press->modifiers & Qt::ShiftModifier) {
        auto selection = document().selection();
        selection.removeAll(press->layer);
        document().setSelection(selection);
    } else {
        document().setSelection({press->layer});
    }
}

void CanvasInteraction::endDrag()
{
    const auto action = m_drag->action();
    m_drag.reset();
    if (!action.isEmpty())
        emit dragFinished(action);
    emit selectionRectangleChanged();
}

void CanvasInteraction::doubleClick(QPointF position)
{
    const auto layer = m_scene.layerAt(position);
    if (!layer)
        return;
    const auto meant = layerMeantAt(position, {});
    if (meant && meant != layer) {
        m_enteredGroup = meant;
        document().setSelection({ancestorIn(layer, meant)});
    } else if (layer->type() == u"text") {
        document().setSelection({layer});
        emit textEditRequested();
    }
}

void CanvasInteraction::escape()
{
    m_press.reset();
    if (m_drag) {
        m_drag->cancel();
        endDrag();
        m_undo.dropStepsAfter(m_undoIndex);
        return;
    }
    const auto group = m_enteredGroup.lock();
    m_enteredGroup.reset();
    document().setSelection(group && group->document() ? QList<LayerPointer>{group} : QList<LayerPointer>());
}

std::optional<QRectF> CanvasInteraction::selectionRectangle() const
{
    const auto *const drag = dynamic_cast<const SelectDrag *>(m_drag.get());
    return drag ? std::optional(drag->rectangle()) : std::nullopt;
}

Qt::CursorShape CanvasInteraction::cursorAt(QPointF position) const
{
    const auto handle = m_press ? m_press->handle : m_frame.handleAt(position);
    return handle ? cursorOf(*handle) : Qt::ArrowCursor;
}
