#pragma once

#include "platform/Export.h"
#include "platform/MenuItem.h"

#include <QHash>
#include <QString>

#include <vector>

/// A menu as plain data: a title, and items in their order. A value; copies share the submenus of their items. No menu
/// may be its own submenu, at any depth. One thread at a time.
class KORVAN_EXPORT Menu
{
public:
    Menu() = default;
    explicit Menu(const QString &title)
        : m_title(title)
    { }

    const QString &title() const { return m_title; }
    bool isEmpty() const { return m_items.empty(); }
    const std::vector<MenuItem> &items() const { return m_items; }

    /// Appends the item.
    void addItem(MenuItem item);
    /// `addItemWithTitle:target:action:submenu:`. Appends an item that opens the submenu. There is no separate target:
    /// an action is a function object, which holds what it needs.
    void addItemWithTitle(const QString &title, const MenuAction &action, std::shared_ptr<Menu> submenu);
    /// The first item of exactly that title, null when there is none; valid until the menu is changed. A separator's
    /// title is empty. However many items there are, asking about each added one takes the same time.
    const MenuItem *itemWithTitle(const QString &title) const;
    /// Empties the menu.
    std::vector<MenuItem> takeItems();
    /// Replaces all items.
    void setItems(std::vector<MenuItem> items);

private:
    QString m_title;
    std::vector<MenuItem> m_items;
    /// The first item of each title, of the first m_indexed items: made by those who ask, kept by those who add.
    mutable QHash<QString, std::size_t> m_indexByTitle;
    mutable std::size_t m_indexed = 0;
};
