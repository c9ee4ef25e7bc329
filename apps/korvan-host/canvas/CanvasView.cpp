#include "canvas/CanvasView.h"

#include "canvas/SelectionFrame.h"
#include "editing/LayerCommands.h"

#include <QApplication>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPinchGesture>
#include <QRubberBand>
#include <QScrollBar>
#include <QStyleHints>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {

constexpr double zoomOfWheelStep = 1.2;

QPointF nudgeOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return {-1, 0};
    case Qt::Key_Right:
        return {1, 0};
    case Qt::Key_Up:
        return {0, -1};
    case Qt::Key_Down:
        return {0, 1};
    default:
        return {};
    }
}

} // namespace

CanvasView::CanvasView(std::shared_ptr<Document> document, DocumentUndoStack &undo, QWidget *parent)
    : QGraphicsView(parent)
    , m_scene(std::move(document))
    , m_frame(new SelectionFrame)
    , m_interaction(m_scene, *m_frame, undo)
    , m_rubberBand(new QRubberBand(QRubberBand::Rectangle, viewport()))
{
    m_scene.addItem(m_frame);
    setScene(&m_scene);
    // Scrolling then moves the pixels that are there and draws the rest alone.
    setViewportUpdateMode(MinimalViewportUpdate);
    setCacheMode(CacheNone);
    setOptimizationFlag(DontSavePainterState); // each layer sets all that it uses
    setRenderHint(QPainter::Antialiasing);
    setTransformationAnchor(NoAnchor);
    setResizeAnchor(NoAnchor);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFrameShape(NoFrame);
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->grabGesture(Qt::PinchGesture);
    setAccessibleName(tr("Canvas"));
    setAccessibleDescription(tr("The layers as they look. Arrow keys move what is selected."));

    connect(&m_scene, &CanvasScene::changedOnCanvas, this, &CanvasView::showSelection);
    connect(&m_interaction, &CanvasInteraction::selectionRectangleChanged, this, &CanvasView::showRubberBand);
    zoomDidChange();
    showSelection();
}

CanvasView::~CanvasView() = default;

void CanvasView::showSelection()
{
    QList<QRectF> outlines;
    const auto selected = m_scene.document()->selection();
    for (const auto &layer : selected)
        outlines.append(boundsOf(*layer));
    m_frame->setOutlines(outlines);
}

void CanvasView::showRubberBand()
{
    const auto rectangle = m_interaction.selectionRectangle();
    if (rectangle)
        m_rubberBand->setGeometry(mapFromScene(*rectangle).boundingRect());
    m_rubberBand->setVisible(rectangle.has_value());
}

void CanvasView::setZoom(double zoom, QPointF anchor)
{
    const auto bounded = std::clamp(zoom, smallestZoom, largestZoom);
    const auto inScene = viewportTransform().inverted().map(anchor);
    setTransform(QTransform::fromScale(bounded, bounded));
    const auto moved = viewportTransform().map(inScene) - anchor;
    scrollBy(-moved.toPoint());
    zoomDidChange();
}

void CanvasView::setZoom(double zoom)
{
    setZoom(zoom, QRectF(viewport()->rect()).center());
}

void CanvasView::zoomDidChange()
{
    m_frame->setPixelsPerPoint(zoom());
    m_interaction.setDragDistance(QApplication::startDragDistance() / 3.0 / zoom());
    emit zoomChanged(zoom());
}

void CanvasView::zoomToFit()
{
    m_scene.flush();
    const auto content = m_scene.contentRect();
    if (!content.isEmpty())
        return showRectangle(content);
    setZoom(1);
    centerOn(0, 0);
}

void CanvasView::zoomToSelection()
{
    if (!m_frame->bounds().isEmpty())
        showRectangle(m_frame->bounds());
}

void CanvasView::showRectangle(const QRectF &rectangle)
{
    constexpr double margin = 40; // in pixels
    const auto room = QSizeF(viewport()->size()) - QSizeF(2 * margin, 2 * margin);
    const auto zoom = std::min(room.width() / rectangle.width(), room.height() / rectangle.height());
    setZoom(std::min(zoom, 4.0)); // a lone small layer does not fill the window
    centerOn(rectangle.center());
}

QPointF CanvasView::centreOfView() const
{
    return mapToScene(viewport()->rect().center());
}

void CanvasView::scrollBy(QPoint pixels)
{
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - pixels.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - pixels.y());
}

bool CanvasView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::NativeGesture) {
        auto *const gesture = static_cast<QNativeGestureEvent *>(event);
        if (gesture->gestureType() == Qt::ZoomNativeGesture)
            setZoom(zoom() * (1 + gesture->value()), gesture->position());
        return true;
    }
    if (event->type() == QEvent::Gesture) {
        auto *const pinch =
            static_cast<QPinchGesture *>(static_cast<QGestureEvent *>(event)->gesture(Qt::PinchGesture));
        if (pinch)
            setZoom(zoom() * pinch->scaleFactor(), viewport()->mapFromGlobal(pinch->centerPoint()));
        return true;
    }
    return QGraphicsView::viewportEvent(event);
}

void CanvasView::wheelEvent(QWheelEvent *event)
{
    const auto steps = QPointF(event->angleDelta()) / QWheelEvent::DefaultDeltasPerStep;
    if (event->modifiers() & Qt::ControlModifier) {
        setZoom(zoom() * std::pow(zoomOfWheelStep, steps.y()), event->position());
    } else {
        constexpr double pixelsOfStep = 60;
        auto pixels = event->pixelDelta().isNull() ? (steps * pixelsOfStep).toPoint() : event->pixelDelta();
        if (event->modifiers() & Qt::ShiftModifier && pixels.x() == 0)
            pixels = {pixels.y(), 0};
        scrollBy(pixels);
    }
    event->accept();
}

void CanvasView::startPan(QPoint position)
{
    m_pan = position;
    viewport()->setCursor(Qt::ClosedHandCursor);
}

void CanvasView::endPan()
{
    m_pan.reset();
    viewport()->setCursor(m_isSpaceHeld ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void CanvasView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && m_isSpaceHeld))
        startPan(event->position().toPoint());
    else if (event->button() == Qt::LeftButton)
        m_interaction.press(mapToScene(event->position().toPoint()), event->modifiers());
}

void CanvasView::mouseMoveEvent(QMouseEvent *event)
{
    const auto position = event->position().toPoint();
    if (m_pan) {
        scrollBy(position - *m_pan);
        m_pan = position;
        return;
    }
    m_interaction.move(mapToScene(position), event->modifiers());
    updateCursor(mapToScene(position));
}

void CanvasView::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_pan)
        endPan();
    else if (event->button() == Qt::LeftButton)
        m_interaction.release();
}

void CanvasView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && !m_isSpaceHeld)
        m_interaction.doubleClick(mapToScene(event->position().toPoint()));
}

void CanvasView::updateCursor(QPointF position)
{
    if (!m_isSpaceHeld)
        viewport()->setCursor(m_interaction.cursorAt(position));
}

void CanvasView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        m_isSpaceHeld = true;
        viewport()->setCursor(Qt::OpenHandCursor);
    } else if (event->key() == Qt::Key_Escape) {
        m_interaction.escape();
    } else if (!nudge(*event) && event->key() != Qt::Key_Space) {
        event->ignore(); // not to the base, which scrolls by the arrow keys
    }
}

bool CanvasView::nudge(const QKeyEvent &event)
{
    constexpr double largeStep = 10;
    const auto offset = nudgeOf(event.key());
    if (offset.isNull() || m_interaction.isDragging())
        return false;
    auto &document = *m_scene.document();
    if (!m_nudge)
        m_nudge = std::make_unique<DocumentHistory::Group>(document, tr("Move"));
    moveSelection(document, event.modifiers() & Qt::ShiftModifier ? offset * largeStep : offset);
    return true;
}

void CanvasView::endNudge()
{
    m_nudge.reset();
}

void CanvasView::keyReleaseEvent(QKeyEvent *event)
{
    if (event->isAutoRepeat())
        return;
    if (event->key() == Qt::Key_Space) {
        m_isSpaceHeld = false;
        if (!m_pan)
            viewport()->setCursor(Qt::ArrowCursor);
    }
    if (!nudgeOf(event->key()).isNull())
        endNudge();
}

void CanvasView::focusOutEvent(QFocusEvent *event)
{
    m_isSpaceHeld = false;
    endNudge();
    QGraphicsView::focusOutEvent(event);
}

void CanvasView::changeEvent(QEvent *event)
{
    QGraphicsView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        viewport()->update();
}

/// A little darker than the windows around it, so that white paper is seen.
void CanvasView::drawBackground(QPainter *painter, const QRectF &rect)
{
    const auto window = palette().color(QPalette::Window);
    painter->fillRect(rect, window.lightness() > 127 ? window.darker(107) : window.darker(135));
}
