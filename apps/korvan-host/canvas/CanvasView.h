#pragma once

#include "canvas/CanvasInteraction.h"

#include <QGraphicsView>

#include <memory>

class QRubberBand;

/// The canvas as the user sees it: zooms, scrolls, and hands the rest of what mouse and keyboard do to a
/// CanvasInteraction.
///
/// - zoom: Control with the wheel, pinching, zoomBy() and its like
/// - scroll: the wheel, the middle button, the left one while Space is held
/// - arrow keys move what is selected by a point, with Shift by ten; one press with all its repetitions is one step
class CanvasView final : public QGraphicsView
{
    Q_OBJECT

public:
    CanvasView(std::shared_ptr<Document> document, DocumentUndoStack &undo, QWidget *parent = nullptr);
    ~CanvasView() override;

    CanvasScene &canvasScene() { return m_scene; }
    CanvasInteraction &interaction() { return m_interaction; }

    static constexpr double smallestZoom = 0.02;
    static constexpr double largestZoom = 64;
    /// Pixels per point, without the screen's own ratio.
    double zoom() const { return transform().m11(); }
    /// Zooms, within the bounds, so that what is at that place of the window stays there.
    void setZoom(double zoom, QPointF anchor);
    /// The same around the middle.
    void setZoom(double zoom);
    void zoomBy(double factor) { setZoom(zoom() * factor); }
    /// Shows all layers; an empty canvas at 100 %.
    void zoomToFit();
    void zoomToSelection();
    /// What of the document is seen in the middle.
    QPointF centreOfView() const;

signals:
    void zoomChanged(double zoom);

protected:
    bool viewportEvent(QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void changeEvent(QEvent *event) override;
    void drawBackground(QPainter *painter, const QRectF &rect) override;

private:
    void showSelection();
    void showRubberBand();
    void showRectangle(const QRectF &rectangle);
    void scrollBy(QPoint pixels);
    void startPan(QPoint position);
    void endPan();
    void updateCursor(QPointF position);
    bool nudge(const QKeyEvent &event);
    void endNudge();
    void zoomDidChange();

    CanvasScene m_scene;
    SelectionFrame *m_frame; // the scene's
    CanvasInteraction m_interaction;
    QRubberBand *m_rubberBand; // the viewport's
    std::optional<QPoint> m_pan;
    bool m_isSpaceHeld = false;
    /// While an arrow key is held.
    std::unique_ptr<DocumentHistory::Group> m_nudge;
};
