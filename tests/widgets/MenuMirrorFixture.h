#pragma once

#include "platform/Menu.h"
#include "widgets/MenuMirror.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QtTest>

#include <memory>

using namespace Qt::StringLiterals;

inline constexpr auto shift = static_cast<unsigned>(ModifierFlag::Shift);
inline constexpr auto command = static_cast<unsigned>(ModifierFlag::Command);

inline MenuItem itemOf(
    const QString &title, const MenuAction &action = nullptr, const QString &key = {}, unsigned modifiers = 0)
{
    MenuItem item;
    item.title = title;
    item.action = action;
    item.keyEquivalent = key;
    item.keyEquivalentModifierMask = modifiers;
    return item;
}

inline Menu menuOf(const QStringList &titles)
{
    Menu menu;
    for (const auto &title : titles)
        menu.addItem(itemOf(title));
    return menu;
}

/// What the user's opening of a submenu tells it first.
inline void open(QMenu &menu)
{
    emit menu.aboutToShow();
}

/// The menu in one line: actions by text, separators as "-", submenus, each opened, in brackets.
inline QString textOf(const QMenu &menu)
{
    QStringList texts;
    for (auto *const action : menu.actions()) {
        if (action->menu())
            open(*action->menu());
        const auto submenu = action->menu() ? u"["_s + textOf(*action->menu()) + u"]"_s : QString();
        texts.append(action->isSeparator() ? u"-"_s : action->text() + submenu);
    }
    return texts.join(u' ');
}

/// A mirror in the menu of a window, and what was chosen there.
class MenuMirrorFixture
{
protected:
    void makeWindow()
    {
        m_mirror.reset();
        m_window = std::make_unique<QMainWindow>();
        m_menu = m_window->menuBar()->addMenu(u"Plugins"_s);
        m_mirror = std::make_unique<MenuMirror>(m_menu);
        m_chosen.clear();
    }

    std::unique_ptr<QMainWindow> m_window;
    QMenu *m_menu = nullptr; // in the window's menu bar
    std::unique_ptr<MenuMirror> m_mirror;
    QStringList m_chosen;
};
