#pragma once

#include <QTreeWidget>
#include <QVariantMap>

/// Values of a JSON object as a tree that can be read and copied, not changed.
class JSONTree final : public QTreeWidget
{
    Q_OBJECT

public:
    explicit JSONTree(QWidget *parent = nullptr);

    void setValues(const QVariantMap &values);

private:
    QVariantMap m_values;
};
