#include "look/PlainStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace {

void drawLine(QPainter &painter, const QStyleOption &option, const QRect &line)
{
    painter.fillRect(line, option.palette.mid());
}

/// Around what is entered: the style's own line is hardly seen on dark windows.
void drawOutline(QPainter &painter, const QStyleOption &option)
{
    const bool isDark = option.palette.window().color().lightness() < option.palette.windowText().color().lightness();
    if (!isDark || option.state.testFlag(QStyle::State_HasFocus))
        return;
    constexpr double roundness = 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(option.palette.mid().color().lighter(140));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), roundness, roundness);
    painter.restore();
}

} // namespace

PlainStyle::PlainStyle()
    : QProxyStyle(QStringLiteral("fusion"))
{ }

int PlainStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_DockWidgetSeparatorExtent:
        return 1;
    case PM_ToolBarItemMargin:
        return 6;
    case PM_ToolBarItemSpacing:
    case PM_MenuBarVMargin:
        return 2;
    case PM_ToolBarSeparatorExtent:
        return 15;
    case PM_MenuBarHMargin:
        return 6;
    case PM_ToolBarFrameWidth:
        return 1;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

void PlainStyle::drawControl(
    ControlElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    if (element == CE_ToolBar || element == CE_MenuBarEmptyArea) {
        painter->fillRect(option->rect, option->palette.window());
        if (element == CE_ToolBar)
            drawLine(*painter, *option, {option->rect.bottomLeft(), QSize(option->rect.width(), 1)});
        return;
    }
    if (const auto *const item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
        item && element == CE_MenuBarItem)
        return drawMenuBarItem(*item, *painter);
    QProxyStyle::drawControl(element, option, painter, widget);
}

void PlainStyle::drawMenuBarItem(const QStyleOptionMenuItem &item, QPainter &painter) const
{
    const bool isOpen = item.state & State_Selected && item.state & State_Sunken;
    painter.fillRect(item.rect, isOpen ? item.palette.highlight() : item.palette.window());
    const bool showsKeys = proxy()->styleHint(SH_UnderlineShortcut, &item) != 0;
    proxy()->drawItemText(&painter, item.rect,
        Qt::AlignCenter | Qt::TextSingleLine | (showsKeys ? Qt::TextShowMnemonic : Qt::TextHideMnemonic), item.palette,
        item.state & State_Enabled, item.text, isOpen ? QPalette::HighlightedText : QPalette::WindowText);
}

void PlainStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case PE_IndicatorDockWidgetResizeHandle:
        return drawLine(*painter, *option, option->rect);
    case PE_IndicatorToolBarSeparator: {
        constexpr int margin = 6;
        const auto rect = option->rect;
        return drawLine(*painter, *option, {rect.center().x(), rect.top() + margin, 1, rect.height() - 2 * margin});
    }
    case PE_PanelStatusBar:
        return drawLine(*painter, *option, {option->rect.topLeft(), QSize(option->rect.width(), 1)});
    case PE_FrameStatusBarItem:
    case PE_PanelMenuBar:
        return;
    case PE_IndicatorCheckBox:
    case PE_FrameLineEdit:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return drawOutline(*painter, *option);
    default:
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}
