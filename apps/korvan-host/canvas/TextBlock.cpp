#include "canvas/TextBlock.h"

#include <QPainter>
#include <QTextOption>

namespace {

/// Of a long text in a frame that is narrower than a word, each character would be a line.
constexpr int mostLines = 2'000;

} // namespace

TextBlock::TextBlock(const LayerAppearance &appearance)
    : m_size(appearance.frame.size())
{
    auto text = appearance.text;
    text.replace(u'\n', QChar::LineSeparator);
    QTextOption option(appearance.alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_layout.setTextOption(option);
    m_layout.setFont(appearance.font);
    m_layout.setText(text);
    m_layout.setCacheEnabled(true);
    m_layout.beginLayout();
    // Lines below the frame are not seen, and a text may be long.
    for (auto line = m_layout.createLine();
         line.isValid() && m_height <= m_size.height() && m_layout.lineCount() <= mostLines;
         line = m_layout.createLine()) {
        line.setLineWidth(m_size.width());
        line.setPosition({0, m_height});
        m_height += line.height();
    }
    m_layout.endLayout();
}

void TextBlock::draw(QPainter &painter) const
{
    if (m_height <= m_size.height())
        return m_layout.draw(&painter, {});
    painter.save();
    painter.setClipRect(QRectF({}, m_size), Qt::IntersectClip);
    m_layout.draw(&painter, {});
    painter.restore();
}

void TextBlock::drawAsBars(QPainter &painter, const QColor &colour) const
{
    constexpr double thickness = 0.5;
    auto faint = colour;
    faint.setAlphaF(colour.alphaF() * 0.6F);
    for (int index = 0; index < m_layout.lineCount(); ++index) {
        const auto line = m_layout.lineAt(index).naturalTextRect();
        const auto bar = QRectF(
            line.x(), line.center().y() - line.height() * thickness / 2, line.width(), line.height() * thickness);
        painter.fillRect(bar & QRectF({}, m_size), faint);
    }
}
