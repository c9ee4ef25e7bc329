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
    /// As high as what is shown, up to a limit.
    void fitHeight();

    QVariantMap m_values;
};
