#pragma once

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QtTest>

/// The visible action of that title; the program ends with a message where there is none.
inline QAction *actionIn(const QWidget &menu, const QString &title)
{
    QStringList titles;
    const auto actions = menu.actions();
    for (auto *const action : actions) {
        titles.append(action->text().remove(u'&'));
        if (action->isVisible() && titles.last() == title)
            return action;
    }
    qFatal("there is no \"%s\" among: %s", qPrintable(title), qPrintable(titles.join(QStringLiteral(", "))));
}

/// Opens a menu of the bar, and the menus in it, and chooses the last of the titles, all with the mouse.
inline void chooseFromMenu(QMenuBar &bar, const QStringList &titles)
{
    auto *action = actionIn(bar, titles.first());
    QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(action).center());
    for (const auto &title : titles.mid(1)) {
        auto *const menu = action->menu();
        QVERIFY(menu);
        QTRY_VERIFY(menu->isVisible());
        action = actionIn(*menu, title);
        QVERIFY2(action->isEnabled(), qPrintable(title));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
    }
}
