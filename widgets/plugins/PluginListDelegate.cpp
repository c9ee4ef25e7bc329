#include "widgets/plugins/PluginListDelegate.h"

#include "widgets/Tones.h"
#include "widgets/plugins/PluginListModel.h"
#include "widgets/plugins/SwitchDrawing.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

using Badge = PluginListModel::Badge;

namespace {

constexpr int margin = 10;
constexpr int gap = 10;
constexpr int iconSide = 36;

/// Where the parts of a row are, from left to right or the other way round.
struct RowLayout
{
    explicit RowLayout(const QStyleOptionViewItem &option)
        : m_direction(option.direction)
        , m_whole(option.rect)
    {
        const auto inner = m_whole.adjusted(margin, 0, -margin, 0);
        const auto middle = inner.center().y() + 1;
        icon = placed(QRect(inner.left(), middle - iconSide / 2, iconSide, iconSide));
        const auto size = switchSize();
        toggle = placed(QRect(QPoint(inner.right() - size.width() + 1, middle - size.height() / 2), size));
        const int left = inner.left() + iconSide + gap;
        text = QRect(left, inner.top(), inner.right() - size.width() - gap - left, inner.height());
    }
    QRect placed(const QRect &rect) const { return QStyle::visualRect(m_direction, m_whole, rect); }

    QRect icon;
    QRect toggle;
    /// From left to right still: what is in it is placed by itself.
    QRect text;

private:
    Qt::LayoutDirection m_direction;
    QRect m_whole;
};

Tone toneOf(Badge badge)
{
    switch (badge) {
    case Badge::Incompatible:
        return Tone::Warning;
    case Badge::UpdateFailed:
        return Tone::Error;
    case Badge::Running:
        return Tone::Good;
    default:
        return Tone::Accent;
    }
}

QFont nameFont(const QStyleOptionViewItem &option)
{
    auto font = option.font;
    font.setWeight(QFont::DemiBold);
    return font;
}

QFont smallFont(const QStyleOptionViewItem &option)
{
    constexpr qreal ratio = 0.88;
    auto font = option.font;
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * ratio);
    else
        font.setPixelSize(int(font.pixelSize() * ratio));
    return font;
}

/// From the right end of `line`; what of it is left.
QRect drawBadges(QPainter &painter, const QRect &line, const QList<Badge> &badges, const QStyleOptionViewItem &option,
    const RowLayout &layout)
{
    constexpr int padding = 7;
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    auto left = line;
    painter.setFont(smallFont(option));
    const QFontMetrics metrics(painter.font());
    for (auto badge = badges.rbegin(); badge != badges.rend(); ++badge) {
        const auto text = PluginListModel::badgeText(*badge);
        const int width = metrics.horizontalAdvance(text) + 2 * padding;
        if (width > left.width() * 2 / 3)
            break; // the name comes first
        const QRect pill(
            left.right() - width + 1, left.center().y() - metrics.height() / 2, width, metrics.height() + 1);
        const auto tone = toneOf(*badge);
        painter.setPen(Qt::NoPen);
        painter.setBrush(isSelected ? option.palette.color(QPalette::Base) : toneBackground(tone, option.palette));
        painter.drawRoundedRect(layout.placed(pill), pill.height() / 2.0, pill.height() / 2.0);
        painter.setPen(toneColor(tone, option.palette));
        painter.drawText(layout.placed(pill), Qt::AlignCenter | Qt::TextSingleLine, text);
        left.setRight(pill.left() - padding);
    }
    return left;
}

void drawLine(QPainter &painter, const QRect &rect, const QString &text, Qt::LayoutDirection direction)
{
    const auto elided = QFontMetrics(painter.font()).elidedText(text, Qt::ElideRight, rect.width());
    painter.drawText(
        rect, int(QStyle::visualAlignment(direction, Qt::AlignLeft | Qt::AlignVCenter)) | Qt::TextSingleLine, elided);
}

QString secondLine(const QModelIndex &index)
{
    QStringList parts{
        index.data(PluginListModel::VersionRole).toString(), index.data(PluginListModel::AuthorRole).toString()};
    parts.removeAll(QString());
    return parts.join(QStringLiteral("  ·  "));
}

/// A line under the row's texts.
void drawProgress(QPainter &painter, const QRect &text, const QVariant &progress, const QPalette &palette)
{
    if (!progress.isValid())
        return;
    constexpr int height = 3;
    const QRectF track(text.left(), text.bottom() - height - 3, text.width(), height);
    const auto share = progress.toDouble();
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::Base));
    painter.drawRoundedRect(track, height / 2.0, height / 2.0);
    painter.setBrush(toneColor(Tone::Accent, palette));
    painter.drawRoundedRect(
        QRectF(track.topLeft(), QSizeF(track.width() * (share < 0 ? 1 : share), height)), height / 2.0, height / 2.0);
}

bool isSwitchedOn(const QModelIndex &index)
{
    return index.data(Qt::CheckStateRole).value<Qt::CheckState>() == Qt::Checked;
}

void toggle(QAbstractItemModel &model, const QModelIndex &index)
{
    const auto state = isSwitchedOn(index) ? Qt::Unchecked : Qt::Checked;
    model.setData(index, QVariant::fromValue(state), Qt::CheckStateRole);
}

/// The row without its edges.
QRect innerRect(const QStyleOptionViewItem &option)
{
    return option.rect.adjusted(4, 1, -4, -1);
}

void drawBackground(QPainter &painter, const QStyleOptionViewItem &option)
{
    constexpr qreal radius = 7;
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    if (!isSelected && !option.state.testFlag(QStyle::State_MouseOver))
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(toneBackground(isSelected ? Tone::Accent : Tone::Quiet, option.palette));
    painter.drawRoundedRect(innerRect(option), radius, radius);
}

void drawTexts(QPainter &painter, const QStyleOptionViewItem &option, const RowLayout &layout, const QModelIndex &index)
{
    const QFontMetrics nameMetrics(nameFont(option));
    const QFontMetrics smallMetrics(smallFont(option));
    const int top = layout.text.center().y() - (nameMetrics.height() + smallMetrics.height() + 2) / 2 + 1;
    const QRect firstLine(layout.text.left(), top, layout.text.width(), nameMetrics.height());
    const QRect lowerLine(layout.text.left(), firstLine.bottom() + 3, layout.text.width(), smallMetrics.height());
    QList<Badge> badges;
    for (const auto &badge : index.data(PluginListModel::BadgesRole).toList())
        badges.append(static_cast<Badge>(badge.toInt()));
    const auto nameRect = drawBadges(painter, firstLine, badges, option, layout);
    const auto quiet = toneColor(Tone::Quiet, option.palette);
    painter.setFont(nameFont(option));
    painter.setPen(isSwitchedOn(index) ? option.palette.color(QPalette::Text) : quiet);
    drawLine(painter, layout.placed(nameRect), index.data(Qt::DisplayRole).toString(), option.direction);
    painter.setFont(smallFont(option));
    painter.setPen(quiet);
    drawLine(painter, layout.placed(lowerLine), secondLine(index), option.direction);
}

void drawFocus(QPainter &painter, const QStyleOptionViewItem &option)
{
    if (!option.state.testFlag(QStyle::State_HasFocus) || !option.state.testFlag(QStyle::State_KeyboardFocusChange))
        return;
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    focus.rect = innerRect(option);
    const auto *const style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, option.widget);
}

} // namespace

PluginListDelegate::PluginListDelegate(QObject *parent)
    : QStyledItemDelegate(parent)
{ }

QRect PluginListDelegate::switchRect(const QStyleOptionViewItem &option)
{
    return RowLayout(option).toggle;
}

QSize PluginListDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    constexpr int spacing = 18;
    const int lines = QFontMetrics(nameFont(option)).height() + QFontMetrics(smallFont(option)).height() + spacing;
    return {200, std::max(lines, iconSide + spacing)};
}

void PluginListDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const RowLayout layout(option);
    const bool isOn = isSwitchedOn(index);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    drawBackground(*painter, option);
    painter->setOpacity(isOn ? 1 : 0.5);
    index.data(Qt::DecorationRole).value<QIcon>().paint(painter, layout.icon);
    painter->setOpacity(1);
    drawTexts(*painter, option, layout, index);
    drawSwitch(*painter, layout.toggle, isOn ? SwitchState::On : SwitchState::Off, option.palette);
    drawProgress(*painter, layout.placed(layout.text), index.data(PluginListModel::ProgressRole), option.palette);
    drawFocus(*painter, option);
    painter->restore();
}

bool PluginListDelegate::editorEvent(
    QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key != Qt::Key_Space && key != Qt::Key_Select)
            return false;
        toggle(*model, index);
        return true;
    }
    const bool isRelease = event->type() == QEvent::MouseButtonRelease;
    if (!isRelease && event->type() != QEvent::MouseButtonPress && event->type() != QEvent::MouseButtonDblClick)
        return false;
    const auto *const mouse = static_cast<QMouseEvent *>(event);
    if (mouse->button() != Qt::LeftButton || !switchRect(option).contains(mouse->position().toPoint()))
        return false;
    if (isRelease)
        toggle(*model, index);
    return true;
}
