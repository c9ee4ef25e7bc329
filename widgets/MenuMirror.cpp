#include "widgets/MenuMirror.h"

#include "platform/Menu.h"
#include "platform/MenuShortcut.h"
#include "widgets/PluginText.h"

#include <QMenu>
#include <QSet>

#include <algorithm>

namespace {

/// The title as text of an action, where "&" marks a key and a tab begins the shortcut.
QString actionText(const QString &title)
{
    return withoutMnemonics(title).replace(u'\t', u' ');
}

/// Makes the actions of a menu's items as children of the menu that they go into. A submenu is filled when it opens,
/// unless a shortcut in it has to work before.
class ActionMaker
{
public:
    enum class Shortcuts { FirstOfEach, None };

    explicit ActionMaker(Shortcuts shortcuts)
        : m_shortcuts(shortcuts)
    { }

    QAction *make(const MenuItem &item, QMenu &parent)
    {
        auto *const action = item.submenu ? makeSubmenu(item.submenu, parent) : new QAction(&parent);
        action->setText(actionText(item.title));
        action->setSeparator(item.isSeparator);
        // Else some systems would move an action named "Settings" or "Quit" to the application's own menu.
        action->setMenuRole(QAction::NoRole);
        giveShortcut(*action, item);
        if (item.action)
            QObject::connect(action, &QAction::triggered, action, [item] { item.action(item); });
        return action;
    }

private:
    QAction *makeSubmenu(const std::shared_ptr<Menu> &items, QMenu &parent)
    {
        auto *const submenu = new QMenu(&parent);
        if (hasFreeShortcut(*items)) {
            fill(*submenu, *items);
        } else {
            const auto fillNow = [submenu, items] { ActionMaker(Shortcuts::None).fill(*submenu, *items); };
            QObject::connect(submenu, &QMenu::aboutToShow, submenu, fillNow, Qt::SingleShotConnection);
        }
        return submenu->menuAction();
    }

    void fill(QMenu &menu, const Menu &items)
    {
        for (const auto &item : items.items())
            menu.addAction(make(item, menu));
    }

    bool hasFreeShortcut(const Menu &menu) const
    {
        return std::any_of(menu.items().begin(), menu.items().end(), [this](const MenuItem &item) {
            return isFree(keySequenceOf(item)) || (item.submenu && hasFreeShortcut(*item.submenu));
        });
    }

    bool isFree(const QKeySequence &shortcut) const
    {
        return m_shortcuts == Shortcuts::FirstOfEach && !shortcut.isEmpty() && !m_taken.contains(shortcut);
    }

    void giveShortcut(QAction &action, const MenuItem &item)
    {
        const auto shortcut = keySequenceOf(item);
        if (!isFree(shortcut))
            return;
        m_taken.insert(shortcut);
        action.setShortcut(shortcut);
    }

    Shortcuts m_shortcuts;
    QSet<QKeySequence> m_taken;
};

/// Not at once: it may be the one that is being triggered.
void disposeLater(QAction *action)
{
    if (auto *const submenu = action->menu())
        submenu->deleteLater(); // together with the action, which belongs to it
    else
        action->deleteLater();
}

} // namespace

MenuMirror::MenuMirror(QMenu *menu)
    : m_menu(menu)
{ }

MenuMirror::~MenuMirror()
{
    clear();
}

void MenuMirror::show(const Menu &menu)
{
    if (!m_menu)
        return;
    auto *const behind = actionBehind();
    clear();
    ActionMaker maker(ActionMaker::Shortcuts::FirstOfEach);
    for (const auto &item : menu.items()) {
        auto *const action = maker.make(item, *m_menu);
        m_menu->insertAction(behind, action);
        m_shown.append(action);
    }
}

void MenuMirror::clear()
{
    for (const auto &action : std::exchange(m_shown, {})) {
        if (!action)
            continue;
        if (m_menu)
            m_menu->removeAction(action);
        disposeLater(action);
    }
}

QAction *MenuMirror::actionBehind() const
{
    const auto actions = m_menu->actions();
    for (auto index = actions.size() - 1; index >= 0; --index) {
        if (m_shown.contains(actions[index]))
            return actions.value(index + 1);
    }
    return nullptr;
}
