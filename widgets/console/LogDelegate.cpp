#include "widgets/console/LogDelegate.h"

#include "widgets/Tones.h"
#include "widgets/console/LogModel.h"

#include <QPainter>

namespace {

QColor textColor(const QModelIndex &index, const QPalette &palette)
{
    const auto level = static_cast<LogLevel>(index.data(LogModel::LevelRole).toInt());
    if (index.column() == LogModel::PlaceColumn)
        return toneColor(Tone::Accent, palette);
    if (index.column() != LogModel::MessageColumn)
        return toneColor(Tone::Quiet, palette);
    if (level == LogLevel::Log)
        return palette.color(QPalette::Text);
    return toneColor(level == LogLevel::Error ? Tone::Error : Tone::Warning, palette);
}

void paintBackground(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    const auto level = static_cast<LogLevel>(index.data(LogModel::LevelRole).toInt());
    if (option.state.testFlag(QStyle::State_Selected))
        painter.fillRect(option.rect, toneBackground(Tone::Accent, option.palette));
    else if (level != LogLevel::Log)
        painter.fillRect(
            option.rect, toneBackground(level == LogLevel::Error ? Tone::Error : Tone::Warning, option.palette));
}

} // namespace

LogDelegate::LogDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{ }

void LogDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    constexpr int padding = 5; // as the styles' headers
    painter->save();
    paintBackground(*painter, option, index);
    auto font = option.font;
    font.setUnderline(index.column() == LogModel::PlaceColumn);
    painter->setFont(font);
    painter->setPen(textColor(index, option.palette));
    const auto inner = option.rect.adjusted(padding, 0, -padding, 0);
    const auto text =
        QFontMetrics(font).elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight, inner.width());
    painter->drawText(inner, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, text);
    painter->restore();
}
