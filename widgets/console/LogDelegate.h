#pragma once

#include <QStyledItemDelegate>

/// Draws a log entry: quiet time and plug-in, the message in the colour of its level, the place as a link.
class LogDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit LogDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
