#include "platform/Menu.h"

MenuItem MenuItem::separatorItem()
{
    MenuItem item;
    item.isSeparator = true;
    return item;
}

void Menu::addItem(MenuItem item)
{
    m_items.push_back(std::move(item));
}

void Menu::addItemWithTitle(const QString &title, const MenuAction &action, std::shared_ptr<Menu> submenu)
{
    MenuItem item;
    item.title = title;
    item.action = action;
    item.submenu = std::move(submenu);
    addItem(std::move(item));
}

const MenuItem *Menu::itemWithTitle(const QString &title) const
{
    for (; m_indexed < m_items.size(); ++m_indexed) {
        const auto &added = m_items[m_indexed].title;
        if (!m_indexByTitle.contains(added))
            m_indexByTitle.insert(added, m_indexed);
    }
    const auto found = m_indexByTitle.constFind(title);
    return found == m_indexByTitle.cend() ? nullptr : &m_items[*found];
}

std::vector<MenuItem> Menu::takeItems()
{
    auto items = std::move(m_items);
    setItems({});
    return items;
}

void Menu::setItems(std::vector<MenuItem> items)
{
    m_items = std::move(items);
    m_indexByTitle.clear();
    m_indexed = 0;
}
