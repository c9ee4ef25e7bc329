#include "panels/JSONTree.h"

#include "platform/JSONText.h"

#include <QHeaderView>

namespace {

void fill(QTreeWidgetItem &item, const QVariant &value);

void add(QTreeWidgetItem &parent, const QString &key, const QVariant &value)
{
    auto *const item = new QTreeWidgetItem(&parent, {key});
    fill(*item, value);
}

void fill(QTreeWidgetItem &item, const QVariant &value)
{
    if (value.typeId() == QMetaType::QVariantMap) {
        const auto entries = value.toMap();
        for (auto entry = entries.begin(); entry != entries.end(); ++entry)
            add(item, entry.key(), *entry);
    } else if (value.typeId() == QMetaType::QVariantList) {
        const auto elements = value.toList();
        for (qsizetype index = 0; index < elements.size(); ++index)
            add(item, QString::number(index), elements[index]);
    } else {
        item.setText(1, QString::fromUtf8(jsonFromVariant(value, JSONStyle::Compact)));
        item.setToolTip(1, item.text(1));
    }
}

} // namespace

JSONTree::JSONTree(QWidget *parent)
    : QTreeWidget(parent)
{
    setColumnCount(2);
    setHeaderLabels({tr("Key"), tr("Value")});
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    setIndentation(14);
    header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
}

void JSONTree::setValues(const QVariantMap &values)
{
    if (values == m_values)
        return;
    m_values = values;
    clear();
    fill(*invisibleRootItem(), values);
    expandToDepth(1);
}
