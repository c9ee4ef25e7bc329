#include "canvas/LayerPainter.h"

#include "canvas/ImageStore.h"
#include "canvas/TextBlock.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

// In pixels: below these sizes nobody sees the difference.
constexpr double smallestSeen = 0.3;
constexpr double smallestRounding = 0.75;
constexpr double smallestText = 3;

} // namespace

LayerPainter::LayerPainter() = default;
LayerPainter::~LayerPainter() = default;

void LayerPainter::setAppearance(const LayerAppearance &appearance)
{
    m_appearance = appearance;
    m_text.reset();
    m_image.reset();
}

void LayerPainter::paint(QPainter &painter, double scale, double opacity)
{
    const auto size = m_appearance.frame.size() * scale;
    if (opacity <= 0 || (size.width() < smallestSeen && size.height() < smallestSeen))
        return;
    painter.setOpacity(opacity);
    switch (m_appearance.shape) {
    case LayerAppearance::Shape::None:
        return;
    case LayerAppearance::Shape::Text:
        return paintText(painter, scale);
    case LayerAppearance::Shape::Image:
        return paintImage(painter, scale);
    default:
        return paintShape(painter, scale);
    }
}

void LayerPainter::paintShape(QPainter &painter, double scale) const
{
    const auto &look = m_appearance;
    const QRectF rect({}, look.frame.size());
    const bool isOval = look.shape == LayerAppearance::Shape::Oval;
    const auto radius = std::min({look.cornerRadius, rect.width() / 2, rect.height() / 2});
    const bool hasBorder = look.borderWidth > 0;
    if (!isOval && !hasBorder && radius * scale < smallestRounding)
        return painter.fillRect(rect, look.fill); // many times faster than a path

    painter.setBrush(look.fill.isValid() ? QBrush(look.fill) : QBrush());
    painter.setPen(hasBorder ? QPen(look.border, look.borderWidth) : QPen(Qt::NoPen));
    const auto inset = look.borderWidth / 2; // a border is inside the frame
    const auto inner = rect.adjusted(inset, inset, -inset, -inset);
    if (isOval)
        painter.drawEllipse(inner);
    else if (radius > 0)
        painter.drawRoundedRect(inner, std::max(0.0, radius - inset), std::max(0.0, radius - inset));
    else
        painter.drawRect(inner);
}

void LayerPainter::paintText(QPainter &painter, double scale)
{
    if (m_appearance.text.isEmpty())
        return;
    if (!m_text)
        m_text = std::make_unique<TextBlock>(m_appearance);
    if (m_appearance.font.pixelSize() * scale < smallestText)
        return m_text->drawAsBars(painter, m_appearance.fill);
    painter.setPen(m_appearance.fill);
    m_text->draw(painter);
}

void LayerPainter::paintImage(QPainter &painter, double scale)
{
    if (!m_image)
        m_image = std::make_unique<QImage>(ImageStore::shared().image(m_appearance.image));
    if (m_image->isNull())
        return paintPlaceholder(painter);
    const QRectF rect({}, m_appearance.frame.size());
    // As much of the picture as fills the frame without being bent.
    const auto shown = rect.size().scaled(m_image->size(), Qt::KeepAspectRatio);
    const QRectF source(
        QPointF((m_image->width() - shown.width()) / 2, (m_image->height() - shown.height()) / 2), shown);
    const auto radius = m_appearance.cornerRadius;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (radius * scale < smallestRounding)
        return painter.drawImage(rect, *m_image, source);
    QPainterPath outline;
    outline.addRoundedRect(rect, radius, radius);
    painter.save();
    painter.setClipPath(outline, Qt::IntersectClip);
    painter.drawImage(rect, *m_image, source);
    painter.restore();
}

/// Mountains under a sun, as large as the frame lets them be.
void LayerPainter::paintPlaceholder(QPainter &painter) const
{
    const QRectF rect({}, m_appearance.frame.size());
    const auto radius = std::min({m_appearance.cornerRadius, rect.width() / 2, rect.height() / 2});
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_appearance.fill.isValid() ? m_appearance.fill : QColor(0xE4, 0xE8, 0xEF));
    painter.drawRoundedRect(rect, radius, radius);
    const auto side = std::min(rect.width(), rect.height()) * 0.5;
    const auto centre = rect.center();
    const auto at = [&](double x, double y) { return centre + QPointF(x, y) * side; };
    painter.setBrush(QColor(0xB4, 0xBF, 0xD0));
    painter.drawPolygon(QPolygonF({at(-0.7, 0.4), at(-0.2, -0.25), at(0.1, 0.1), at(0.3, -0.1), at(0.7, 0.4)}));
    painter.drawEllipse(at(0.35, -0.4), side * 0.13, side * 0.13);
}
