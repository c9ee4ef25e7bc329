#pragma once

#include "widgets/Export.h"

#include <QStyledItemDelegate>

/// Draws a row of a PluginListModel: picture, name, version and author, badges, the switch, and how far an update has
/// come. The switch reacts to a click on it, and to the space key on the current row. Main
/// thread only.
class KORVAN_WIDGETS_EXPORT PluginListDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit PluginListDelegate(QObject *parent = nullptr);

    /// Where in a row the switch is.
    static QRect switchRect(const QStyleOptionViewItem &option);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
        const QModelIndex &index) override;
};
