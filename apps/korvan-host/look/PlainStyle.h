#pragma once

#include <QProxyStyle>

/// Qt's own style without the shading of its bars: flat areas, set apart by single lines in the palette's colours.
class PlainStyle final : public QProxyStyle
{
public:
    PlainStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    void drawControl(
        ControlElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const override;
    void drawPrimitive(
        PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const override;

private:
    void drawMenuBarItem(const QStyleOptionMenuItem &item, QPainter &painter) const;
};
