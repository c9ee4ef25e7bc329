#include "manager/PluginsMenu.h"

#include "localization/Localizable.h"
#include "manager/MenuSorting.h"
#include "platform/Menu.h"

#include <deque>
#include <optional>

namespace {

const auto titleKey = QStringLiteral("title");
const auto itemsKey = QStringLiteral("items");
const auto rootKey = QStringLiteral("isRoot");

std::optional<QString> titleOf(const QVariantMap &description)
{
    const auto title = description.value(titleKey);
    return title.typeId() == QMetaType::QString ? std::optional(title.toString()) : std::nullopt;
}

QVariantList itemsOf(const QVariantMap &description)
{
    const auto items = description.value(itemsKey);
    const bool isArray = items.typeId() == QMetaType::QVariantList || items.typeId() == QMetaType::QStringList;
    return isArray ? items.toList() : QVariantList();
}

bool isRoot(const QVariantMap &description)
{
    const auto value = description.value(rootKey);
    return value.typeId() == QMetaType::Bool && value.toBool();
}

QString untitled()
{
    return Localizable::tr("untitled");
}

/// The submenu of the item of that title, which is added unless there is one; null when that item has no submenu.
std::shared_ptr<Menu> groupInMenu(Menu &menu, const QString &title)
{
    if (const auto *const item = menu.itemWithTitle(title))
        return item->submenu;
    auto group = std::make_shared<Menu>(title);
    menu.addItemWithTitle(title, nullptr, group);
    return group;
}

/// Fills a menu level by level. Groups wait until the level that they belong to is complete: descriptions nest as deep
/// as plug-ins like, and the result is that of descending at once, since a group adds to its own submenu alone.
class MenuFilling
{
public:
    MenuFilling(const CommandTable &commands, const MenuAction &selector)
        : m_commands(commands)
        , m_selector(selector)
    { }

    void fill(Menu &menu, const QVariantMap &description)
    {
        addLevel(menu, description);
        while (!m_groups.empty()) {
            const auto group = std::move(m_groups.front());
            m_groups.pop_front();
            addLevel(*group.menu, group.description);
        }
    }

private:
    struct Group
    {
        std::shared_ptr<Menu> menu;
        QVariantMap description;
    };

    void addLevel(Menu &menu, const QVariantMap &description)
    {
        const auto items = itemsOf(description);
        for (const auto &item : items) {
            if (item.typeId() == QMetaType::QString)
                addText(menu, item.toString());
            else if (item.typeId() == QMetaType::QVariantMap)
                addGroup(menu, item.toMap());
        }
    }

    void addText(Menu &menu, const QString &text)
    {
        if (text == u'-')
            menu.addItem(MenuItem::separatorItem());
        else
            addCommand(menu, text);
    }

    void addCommand(Menu &menu, const QString &identifier)
    {
        const auto found = m_commands.find(identifier);
        if (found == m_commands.end())
            return;
        auto item = found->second->menuItemWithAction(m_selector);
        item.representedObject = QVariant::fromValue(found->second->commandSpecifier());
        menu.addItem(std::move(item));
    }

    void addGroup(Menu &menu, const QVariantMap &description)
    {
        const auto title = titleOf(description);
        if (auto group = groupInMenu(menu, title ? *title : untitled()))
            m_groups.push_back({std::move(group), description});
    }

    const CommandTable &m_commands;
    const MenuAction &m_selector;
    std::deque<Group> m_groups;
};

void addPlugin(const KRPluginBundle &plugin, Menu &menu, const MenuAction &selector)
{
    const auto description = plugin.menuDescription();
    if (isRoot(description))
        return addCommandsToMenu(plugin.commands(), menu, description, selector);
    const auto name = plugin.name().value_or(QString());
    auto submenu = std::make_shared<Menu>(name);
    addCommandsToMenu(plugin.commands(), *submenu, description, selector);
    if (!submenu->isEmpty())
        menu.addItemWithTitle(titleOf(description).value_or(name), nullptr, std::move(submenu));
}

} // namespace

void addPluginsToMenu(const PluginTable &plugins, Menu &menu, const MenuAction &selector)
{
    for (const auto &plugin : plugins) {
        if (plugin->isEnabled())
            addPlugin(*plugin, menu, selector);
    }
    sortMenu(menu, SortExtent::TopLevel);
}

void addCommandsToMenu(
    const CommandTable &commands, Menu &menu, const QVariantMap &description, const MenuAction &selector)
{
    MenuFilling(commands, selector).fill(menu, description);
}
