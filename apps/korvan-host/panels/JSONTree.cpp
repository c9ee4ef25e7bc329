#include "panels/JSONTree.h"

#include "platform/JSONText.h"
#include "widgets/PluginText.h"

#include <QHeaderView>

#include <algorithm>

namespace {

constexpr int tallest = 260;

void fill(QTreeWidgetItem &item, const QVariant &value);

void add(QTreeWidgetItem &parent, const QString &key, const QVariant &value)
{
    auto *const item = new QTreeWidgetItem(&parent, {key});
    item->setToolTip(0, plainToolTip(key));
    fill(*item, value);
    item->setFirstColumnSpanned(item->text(1).isEmpty());
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
        item.setToolTip(1, plainToolTip(item.text(1)));
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
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    header()->setSectionResizeMode(QHeaderView::Stretch);
    connect(this, &QTreeWidget::itemExpanded, this, &JSONTree::fitHeight);
    connect(this, &QTreeWidget::itemCollapsed, this, &JSONTree::fitHeight);
}

void JSONTree::setValues(const QVariantMap &values)
{
    if (values == m_values)
        return;
    m_values = values;
    clear();
    fill(*invisibleRootItem(), values);
    expandToDepth(1);
    fitHeight();
}

void JSONTree::fitHeight()
{
    int rows = 0;
    for (auto index = model()->index(0, 0); index.isValid(); index = indexBelow(index))
        ++rows;
    const auto content = header()->sizeHint().height() + rows * sizeHintForRow(0) + 2 * frameWidth();
    setFixedHeight(std::min(content, tallest));
}
