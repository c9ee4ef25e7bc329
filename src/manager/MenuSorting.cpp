#include "manager/MenuSorting.h"

#include "platform/Menu.h"

#include <QCollator>

#include <algorithm>

namespace {

/// Makes the keys by which titles are compared. A key is made once for each title: comparing two titles directly costs
/// several times as much as comparing their keys.
class TitleKeys
{
public:
    TitleKeys()
    {
        m_collator.setCaseSensitivity(Qt::CaseInsensitive);
        // Without a language texts are ordered by their characters' numbers, and case counts.
        m_mustFold = m_collator.locale().language() == QLocale::C;
    }

    QCollatorSortKey operator()(const QString &title) const
    {
        return m_collator.sortKey(m_mustFold ? title.toCaseFolded() : title);
    }

private:
    QCollator m_collator;
    bool m_mustFold;
};

struct KeyedItem
{
    QCollatorSortKey key;
    std::size_t index;
};

void sortItems(Menu &menu, const TitleKeys &keyOf)
{
    auto items = menu.takeItems();
    std::vector<KeyedItem> order;
    order.reserve(items.size());
    for (const auto &item : items)
        order.push_back({keyOf(item.title), order.size()});
    std::sort(order.begin(), order.end(), [](const KeyedItem &first, const KeyedItem &second) {
        const int comparison = first.key.compare(second.key);
        return comparison != 0 ? comparison < 0 : first.index < second.index;
    });
    std::vector<MenuItem> sorted;
    sorted.reserve(items.size());
    for (const auto &keyed : order)
        sorted.push_back(std::move(items[keyed.index]));
    menu.setItems(std::move(sorted));
}

} // namespace

void sortMenu(Menu &menu, SortExtent extent)
{
    const TitleKeys keyOf;
    std::vector<Menu *> unsorted{&menu};
    while (!unsorted.empty()) { // menus nest as deep as plug-ins like: no recursion
        auto *const next = unsorted.back();
        unsorted.pop_back();
        sortItems(*next, keyOf);
        if (extent == SortExtent::TopLevel)
            continue;
        for (const auto &item : next->items()) {
            if (item.submenu)
                unsorted.push_back(item.submenu.get());
        }
    }
}
