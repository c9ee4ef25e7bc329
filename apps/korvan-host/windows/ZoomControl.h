#pragma once

#include <QToolButton>

class CanvasView;

/// Shows a canvas's zoom, and offers others.
class ZoomControl final : public QToolButton
{
    Q_OBJECT

public:
    explicit ZoomControl(CanvasView &canvas, QWidget *parent = nullptr);

private:
    void show(double zoom);
};
