#include "windows/ZoomControl.h"

#include "canvas/CanvasView.h"

#include <QMenu>

ZoomControl::ZoomControl(CanvasView &canvas, QWidget *parent)
    : QToolButton(parent)
{
    setAccessibleName(tr("Zoom"));
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    auto *const menu = new QMenu(this);
    for (const int percent : {25, 50, 100, 200, 400}) {
        menu->addAction(tr("%1 %").arg(percent), &canvas, [&canvas, percent] { canvas.setZoom(percent / 100.0); });
    }
    menu->addSeparator();
    menu->addAction(tr("Fit in Window"), &canvas, [&canvas] { canvas.zoomToFit(); });
    // Above the button: it stands at the window's lower edge.
    connect(this, &QToolButton::clicked, menu,
        [this, menu] { menu->popup(mapToGlobal(QPoint(0, -menu->sizeHint().height()))); });
    connect(&canvas, &CanvasView::zoomChanged, this, &ZoomControl::show);
    show(canvas.zoom());
}

void ZoomControl::show(double zoom)
{
    setText(tr("%1 %").arg(qRound(zoom * 100)));
}
