#include "platform/Menu.h"

#include <QtTest>

#include <algorithm>

using namespace Qt::StringLiterals;

class tst_Menu : public QObject
{
    Q_OBJECT

private slots:
    void itemsKeepTheirOrder();
    void separatorHasNoTitle();
    void itemWithSubmenu();
    void firstItemOfATitleIsFound();
    void titlesAreFoundAfterEveryChange();
    void copiesAreTheirOwnButShareSubmenus();
    void askingForManyTitles();
    void deepMenusAreFreed();
};

namespace {

MenuItem itemTitled(const QString &title, const QVariant &representedObject = {})
{
    MenuItem item;
    item.title = title;
    item.representedObject = representedObject;
    return item;
}

} // namespace

void tst_Menu::itemsKeepTheirOrder()
{
    Menu menu(u"Plugins"_s);
    QCOMPARE(menu.title(), u"Plugins"_s);
    QVERIFY(menu.isEmpty());
    for (const auto &title : {u"b"_s, u"a"_s, u"b"_s})
        menu.addItem(itemTitled(title));
    QVERIFY(!menu.isEmpty());
    QStringList titles;
    for (const auto &item : menu.items())
        titles.append(item.title);
    QCOMPARE(titles, (QStringList{u"b"_s, u"a"_s, u"b"_s}));
}

void tst_Menu::separatorHasNoTitle()
{
    const auto separator = MenuItem::separatorItem();
    QVERIFY(separator.isSeparator);
    QCOMPARE(separator.title, QString());
    QVERIFY(!separator.action && !separator.submenu);
    QVERIFY(!MenuItem().isSeparator);
}

void tst_Menu::itemWithSubmenu()
{
    Menu menu;
    const auto submenu = std::make_shared<Menu>(u"Sort"_s);
    QStringList chosen;
    menu.addItemWithTitle(
        u"Sort it"_s, [&](const MenuItem &item) { chosen.append(item.title); }, submenu);
    const auto &item = menu.items().front();
    QCOMPARE(item.title, u"Sort it"_s);
    QCOMPARE(item.submenu, submenu);
    QCOMPARE(item.keyEquivalent, QString());
    QVERIFY(!item.representedObject.isValid());
    item.action(item);
    QCOMPARE(chosen, QStringList{u"Sort it"_s});
}

void tst_Menu::firstItemOfATitleIsFound()
{
    Menu menu;
    QVERIFY(!menu.itemWithTitle(u"a"_s));
    menu.addItem(itemTitled(u"A"_s, 0));
    menu.addItem(itemTitled(u"a"_s, 1));
    menu.addItem(itemTitled(u"a"_s, 2));
    QCOMPARE(menu.itemWithTitle(u"a"_s)->representedObject.toInt(), 1);
    QVERIFY(!menu.itemWithTitle(QString()));
    menu.addItem(MenuItem::separatorItem());
    QVERIFY(menu.itemWithTitle(QString())->isSeparator);
}

void tst_Menu::titlesAreFoundAfterEveryChange()
{
    Menu menu;
    menu.addItem(itemTitled(u"a"_s, 1));
    QVERIFY(menu.itemWithTitle(u"a"_s));
    menu.addItem(itemTitled(u"b"_s, 2));
    QCOMPARE(menu.itemWithTitle(u"b"_s)->representedObject.toInt(), 2);

    auto items = menu.takeItems();
    QCOMPARE(items.size(), 2U);
    QVERIFY(menu.isEmpty());
    QVERIFY(!menu.itemWithTitle(u"a"_s));

    std::reverse(items.begin(), items.end());
    menu.setItems(std::move(items));
    QCOMPARE(menu.itemWithTitle(u"a"_s), &menu.items()[1]);
    QCOMPARE(menu.itemWithTitle(u"b"_s), &menu.items()[0]);
    menu.setItems({itemTitled(u"c"_s)});
    QVERIFY(!menu.itemWithTitle(u"b"_s));
    QVERIFY(menu.itemWithTitle(u"c"_s));
}

void tst_Menu::copiesAreTheirOwnButShareSubmenus()
{
    Menu menu;
    menu.addItemWithTitle(u"Sort"_s, nullptr, std::make_shared<Menu>());
    QVERIFY(menu.itemWithTitle(u"Sort"_s));
    auto copy = menu;
    copy.addItem(itemTitled(u"a"_s));
    QVERIFY(copy.itemWithTitle(u"a"_s));
    QVERIFY(!menu.itemWithTitle(u"a"_s));
    QCOMPARE(copy.itemWithTitle(u"Sort"_s)->submenu, menu.itemWithTitle(u"Sort"_s)->submenu);
    QVERIFY(copy.itemWithTitle(u"Sort"_s) != menu.itemWithTitle(u"Sort"_s));
}

void tst_Menu::askingForManyTitles()
{
    // In the time of a search from the front for each, this would not end today.
    constexpr int count = 300'000;
    Menu menu;
    for (int i = 0; i < count; ++i) {
        const auto title = QString::number(i);
        QVERIFY(!menu.itemWithTitle(title));
        menu.addItem(itemTitled(title, i));
    }
    QCOMPARE(menu.itemWithTitle(u"299999"_s)->representedObject.toInt(), count - 1);
}

void tst_Menu::deepMenusAreFreed()
{
    auto menu = std::make_shared<Menu>(u"innermost"_s);
    const std::weak_ptr<Menu> innermost = menu;
    for (int depth = 0; depth < 1024; ++depth) {
        auto outer = std::make_shared<Menu>();
        outer->addItemWithTitle(u"more"_s, nullptr, std::move(menu));
        menu = std::move(outer);
    }
    QVERIFY(!innermost.expired());
    menu.reset();
    QVERIFY(innermost.expired());
}

QTEST_GUILESS_MAIN(tst_Menu)
#include "tst_menu.moc"
