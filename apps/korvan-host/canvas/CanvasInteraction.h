#pragma once

#include "canvas/CanvasDrag.h"

#include <QObject>
#include <QPointer>

class DocumentUndoStack;
class SelectionFrame;

/// What pointing at the canvas does: selecting, moving, resizing. It is given positions in the document, and knows
/// nothing of windows.
///
/// A click selects the outermost group of what is there; a double click goes one group further in, where layers are
/// then selected one by one, and a click outside of it comes out again. With Control the innermost layer is selected at
/// once.
class CanvasInteraction final : public QObject
{
    Q_OBJECT

public:
    CanvasInteraction(CanvasScene &scene, SelectionFrame &frame, DocumentUndoStack &undo);
    ~CanvasInteraction() override;

    void press(QPointF position, Qt::KeyboardModifiers modifiers);
    void move(QPointF position, Qt::KeyboardModifiers modifiers);
    void release();
    void doubleClick(QPointF position);
    /// Takes back the drag that goes on; without one comes out of a group, else selects nothing.
    void escape();
    bool isDragging() const { return m_drag != nullptr; }
    /// Where the rectangle is that selects layers; nil while there is none.
    std::optional<QRectF> selectionRectangle() const;
    Qt::CursorShape cursorAt(QPointF position) const;
    /// How far, in points, the mouse may shake before a press becomes a drag.
    void setDragDistance(double points) { m_dragDistance = points; }

signals:
    /// "LayersMoved" or "LayersResized": layers are about to be dragged, or were.
    void dragStarted(const QString &action);
    void dragFinished(const QString &action);
    /// A text was double-clicked.
    void textEditRequested();
    void selectionRectangleChanged();

private:
    struct Press
    {
        QPointF position;
        Qt::KeyboardModifiers modifiers;
        std::optional<ResizeHandle> handle;
        /// Null: beside all layers.
        LayerPointer layer;
        bool wasSelected = false;
    };

    LayerPointer layerMeantAt(QPointF position, Qt::KeyboardModifiers modifiers);
    void selectOnPress(const Press &press);
    void startDrag();
    void endDrag();
    Document &document() const { return *m_scene.document(); }

    CanvasScene &m_scene;
    SelectionFrame &m_frame;
    DocumentUndoStack &m_undo;
    std::optional<Press> m_press;
    std::unique_ptr<CanvasDrag> m_drag;
    std::weak_ptr<Layer> m_enteredGroup;
    double m_dragDistance = 3;
    int m_undoIndex = 0;
};
