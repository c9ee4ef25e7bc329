#pragma once

#include "canvas/CanvasScene.h"
#include "canvas/ResizeHandles.h"
#include "document/DocumentHistory.h"
#include "editing/LayerFrames.h"

#include <QPointF>

#include <memory>
#include <optional>

/// What the mouse does between a press and a release. All positions are the document's.
class CanvasDrag
{
public:
    virtual ~CanvasDrag();

    virtual void moveTo(QPointF position, Qt::KeyboardModifiers modifiers) = 0;
    /// Puts everything back.
    virtual void cancel() = 0;

    /// What hosts tell plug-ins of it: "LayersMoved", "LayersResized"; "" for what changes no layer.
    virtual QString action() const { return {}; }
};

/// Moves layers, by whole points. With Shift along one axis only.
class MoveDrag final : public CanvasDrag
{
public:
    MoveDrag(Document &document, const QList<LayerPointer> &layers, QPointF start);

    void moveTo(QPointF position, Qt::KeyboardModifiers modifiers) override;
    void cancel() override;
    QString action() const override { return QStringLiteral("LayersMoved"); }

private:
    DocumentHistory::Group m_step;
    FrameSnapshot m_frames;
    QPointF m_start;
};

/// Resizes layers to a new rectangle around all of them. With Shift the proportions stay.
class ResizeDrag final : public CanvasDrag
{
public:
    ResizeDrag(Document &document, const QList<LayerPointer> &layers, const QRectF &bounds, ResizeHandle handle,
        QPointF start);

    void moveTo(QPointF position, Qt::KeyboardModifiers modifiers) override;
    void cancel() override;
    QString action() const override { return QStringLiteral("LayersResized"); }

private:
    DocumentHistory::Group m_step;
    FrameSnapshot m_frames;
    QRectF m_bounds;
    ResizeHandle m_handle;
    QPointF m_start;
};

/// Selects whatever a rectangle touches. With Shift in addition to what was selected.
class SelectDrag final : public CanvasDrag
{
public:
    /// `group`: where layers are selected one by one; null for the document's top level.
    SelectDrag(CanvasScene &scene, const LayerPointer &group, QPointF start, Qt::KeyboardModifiers modifiers);

    void moveTo(QPointF position, Qt::KeyboardModifiers modifiers) override;
    void cancel() override;
    const QRectF &rectangle() const { return m_rectangle; }

private:
    CanvasScene &m_scene;
    LayerPointer m_group;
    QPointF m_start;
    QRectF m_rectangle;
    QList<LayerPointer> m_selectedBefore;
    QList<LayerPointer> m_kept;
};

/// The layer, or the one around it, that is among the layers of the group (of the top level for null). Null when it is
/// not in there.
LayerPointer ancestorIn(const LayerPointer &layer, const LayerPointer &group);
