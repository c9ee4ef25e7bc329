#include "manager/MenuSorting.h"
#include "platform/Menu.h"

#include <QLocale>
#include <QtTest>

#include <numeric>

using namespace Qt::StringLiterals;

class tst_MenuSorting : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void titles_data();
    void titles();
    void equalTitlesKeepTheirOrder_data();
    void equalTitlesKeepTheirOrder();
    void itemsMoveWhole();
    void onlyTheTopLevel();
    void allSubmenus();
    void deepMenus();

private:
    const QLocale m_locale;
};

namespace {

Menu menuOf(const QStringList &titles)
{
    Menu menu(u"Plugins"_s);
    for (const auto &title : titles) {
        MenuItem item;
        item.title = title;
        item.representedObject = int(menu.items().size());
        menu.addItem(title == u"-"_s ? MenuItem::separatorItem() : item);
    }
    return menu;
}

QStringList titlesOf(const Menu &menu)
{
    QStringList titles;
    for (const auto &item : menu.items())
        titles.append(item.isSeparator ? u"-"_s : item.title);
    return titles;
}

QList<int> numbersOf(const Menu &menu)
{
    QList<int> numbers;
    for (const auto &item : menu.items())
        numbers.append(item.representedObject.toInt());
    return numbers;
}

} // namespace

void tst_MenuSorting::cleanup()
{
    QLocale::setDefault(m_locale);
}

void tst_MenuSorting::titles_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("titles");
    QTest::addColumn<QStringList>("sorted");

    for (const auto &locale : {u"en_US"_s, u"C"_s}) {
        const auto row = [&](const char *what) -> QTestData & {
            return QTest::addRow("%s, %s", what, qPrintable(locale)) << locale;
        };
        row("nothing") << QStringList() << QStringList();
        row("case does not count") << QStringList{u"beta"_s, u"Alpha"_s, u"alpha"_s}
                                   << QStringList{u"Alpha"_s, u"alpha"_s, u"beta"_s};
        row("upper case is not before lower case")
            << QStringList{u"Zebra"_s, u"apple"_s, u"Banana"_s} << QStringList{u"apple"_s, u"Banana"_s, u"Zebra"_s};
        row("separators come first") << QStringList{u"b"_s, u"-"_s, u"a"_s, u"-"_s}
                                     << QStringList{u"-"_s, u"-"_s, u"a"_s, u"b"_s};
        row("a beginning before the whole")
            << QStringList{u"Sort by Name"_s, u"sort"_s} << QStringList{u"sort"_s, u"Sort by Name"_s};
        row("digits are characters, not numbers")
            << QStringList{u"Grid 9"_s, u"Grid 10"_s} << QStringList{u"Grid 10"_s, u"Grid 9"_s};
        row("spaces count") << QStringList{u"ab"_s, u"a b"_s} << QStringList{u"a b"_s, u"ab"_s};
    }
    QTest::newRow("letters with marks beside those without, English")
        << u"en_US"_s << QStringList{u"Zoom"_s, u"Äpfel"_s, u"Apfel"_s, u"Öffnen"_s}
        << QStringList{u"Apfel"_s, u"Äpfel"_s, u"Öffnen"_s, u"Zoom"_s};
    QTest::newRow("letters with marks at the end, Swedish")
        << u"sv_SE"_s << QStringList{u"Öppna"_s, u"Zoom"_s, u"Äpple"_s}
        << QStringList{u"Zoom"_s, u"Äpple"_s, u"Öppna"_s};
    QTest::newRow("two letters that are one, Czech")
        << u"cs_CZ"_s << QStringList{u"Chyba"_s, u"Dopis"_s, u"Hlava"_s, u"Cena"_s}
        << QStringList{u"Cena"_s, u"Dopis"_s, u"Hlava"_s, u"Chyba"_s};
    QTest::newRow("a pair of cases of its own, Turkish")
        << u"tr_TR"_s << QStringList{u"İz"_s, u"Ir"_s, u"ib"_s, u"ıa"_s}
        << QStringList{u"ıa"_s, u"Ir"_s, u"ib"_s, u"İz"_s};
}

void tst_MenuSorting::titles()
{
    QFETCH(QString, locale);
    QFETCH(QStringList, titles);

    QLocale::setDefault(QLocale(locale));
    auto menu = menuOf(titles);
    sortMenu(menu, SortExtent::TopLevel);
    QTEST(titlesOf(menu), "sorted");
    QCOMPARE(menu.title(), u"Plugins"_s);
}

void tst_MenuSorting::equalTitlesKeepTheirOrder_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("English") << u"en_US"_s;
    QTest::newRow("no language") << u"C"_s;
}

void tst_MenuSorting::equalTitlesKeepTheirOrder()
{
    QFETCH(QString, locale);

    QLocale::setDefault(QLocale(locale));
    constexpr int count = 300; // more than what a sort compares one by one
    QStringList titles;
    for (int i = 0; i < count; ++i)
        titles.append(QStringList{u"same"_s, u"SAME"_s, u"Same"_s}[i % 3]);
    auto menu = menuOf(titles);
    sortMenu(menu, SortExtent::TopLevel);
    QCOMPARE(titlesOf(menu), titles);
    QList<int> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0);
    QCOMPARE(numbersOf(menu), numbers);
}

void tst_MenuSorting::itemsMoveWhole()
{
    Menu menu;
    QStringList chosen;
    const auto submenu = std::make_shared<Menu>();
    menu.addItemWithTitle(
        u"b"_s, [&](const MenuItem &item) { chosen.append(item.title); }, submenu);
    MenuItem item;
    item.title = u"a"_s;
    item.keyEquivalent = u"k"_s;
    item.keyEquivalentModifierMask = 7;
    item.representedObject = u"x"_s;
    menu.addItem(item);
    QVERIFY(menu.itemWithTitle(u"b"_s));

    sortMenu(menu, SortExtent::TopLevel);
    QCOMPARE(menu.items()[0].keyEquivalent, u"k"_s);
    QCOMPARE(menu.items()[0].keyEquivalentModifierMask, 7U);
    QCOMPARE(menu.items()[0].representedObject, QVariant(u"x"_s));
    QCOMPARE(menu.items()[1].submenu, submenu);
    menu.items()[1].action(menu.items()[1]);
    QCOMPARE(chosen, QStringList{u"b"_s});
    QCOMPARE(menu.itemWithTitle(u"a"_s), &menu.items()[0]);
}

void tst_MenuSorting::onlyTheTopLevel()
{
    auto menu = menuOf({u"z"_s});
    const auto submenu = std::make_shared<Menu>(menuOf({u"b"_s, u"a"_s}));
    menu.addItemWithTitle(u"y"_s, nullptr, submenu);
    sortMenu(menu, SortExtent::TopLevel);
    QCOMPARE(titlesOf(menu), (QStringList{u"y"_s, u"z"_s}));
    QCOMPARE(titlesOf(*submenu), (QStringList{u"b"_s, u"a"_s}));
}

void tst_MenuSorting::allSubmenus()
{
    auto menu = menuOf({u"z"_s});
    const auto submenu = std::make_shared<Menu>(menuOf({u"b"_s, u"-"_s, u"a"_s}));
    const auto inner = std::make_shared<Menu>(menuOf({u"2"_s, u"1"_s}));
    submenu->addItemWithTitle(u"0"_s, nullptr, inner);
    menu.addItemWithTitle(u"y"_s, nullptr, submenu);
    sortMenu(menu, SortExtent::Submenus);
    QCOMPARE(titlesOf(menu), (QStringList{u"y"_s, u"z"_s}));
    QCOMPARE(titlesOf(*submenu), (QStringList{u"-"_s, u"0"_s, u"a"_s, u"b"_s}));
    QCOMPARE(titlesOf(*inner), (QStringList{u"1"_s, u"2"_s}));
}

void tst_MenuSorting::deepMenus()
{
    const auto innermost = std::make_shared<Menu>(menuOf({u"b"_s, u"a"_s}));
    auto menu = innermost;
    for (int depth = 0; depth < 1024; ++depth) {
        auto outer = std::make_shared<Menu>();
        outer->addItemWithTitle(u"more"_s, nullptr, std::move(menu));
        menu = std::move(outer);
    }
    sortMenu(*menu, SortExtent::Submenus);
    QCOMPARE(titlesOf(*innermost), (QStringList{u"a"_s, u"b"_s}));
}

QTEST_GUILESS_MAIN(tst_MenuSorting)
#include "tst_menusorting.moc"
