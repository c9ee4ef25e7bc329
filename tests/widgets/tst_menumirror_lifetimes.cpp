// What becomes of the actions, the menu and the mirror, in whatever order they go.

#include "MenuMirrorFixture.h"

#include <QPointer>

namespace {

/// Lets go of what waits to be deleted.
void deleteDeferred()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class tst_MenuMirror_Lifetimes : public QObject, private MenuMirrorFixture
{
    Q_OBJECT

private slots:
    void init() { makeWindow(); }

    void whatTheHostHasDeleted();
    void whatIsReplacedIsDeleted();
    void showingAgainFromAnAction_data();
    void showingAgainFromAnAction();
    void endOfTheMirror();
    void endOfTheMenuFromAnAction();
    void mirrorOutlivesTheMenu();
};

void tst_MenuMirror_Lifetimes::whatTheHostHasDeleted()
{
    m_mirror->show(menuOf({u"a"_s, u"b"_s, u"c"_s}));
    m_menu->addAction(u"Help"_s);
    delete m_menu->actions()[2];
    m_menu->removeAction(m_menu->actions()[1]);
    m_mirror->show(menuOf({u"d"_s}));
    QCOMPARE(textOf(*m_menu), u"d Help"_s);
    m_menu->clear();
    m_mirror->show(menuOf({u"e"_s}));
    QCOMPARE(textOf(*m_menu), u"e"_s);
}

void tst_MenuMirror_Lifetimes::whatIsReplacedIsDeleted()
{
    auto menu = menuOf({u"a"_s});
    menu.addItemWithTitle(u"Sub"_s, nullptr, std::make_shared<Menu>(menuOf({u"b"_s})));
    m_mirror->show(menu);
    const QPointer action = m_menu->actions()[0];
    const QPointer submenu = m_menu->actions()[1]->menu();
    open(*submenu);
    const QPointer inner = submenu->actions()[0];
    m_mirror->show({});
    deleteDeferred();
    QVERIFY(!action && !submenu && !inner);
}

void tst_MenuMirror_Lifetimes::showingAgainFromAnAction_data()
{
    QTest::addColumn<bool>("isInSubmenu");
    QTest::newRow("in the menu itself") << false;
    QTest::newRow("in a submenu") << true;
}

void tst_MenuMirror_Lifetimes::showingAgainFromAnAction()
{
    QFETCH(bool, isInSubmenu);

    QPointer<QAction> triggered;
    auto inner = std::make_shared<Menu>();
    inner->addItem(itemOf(u"again"_s, [&](const MenuItem &item) {
        m_mirror->show(menuOf({u"new"_s}));
        m_chosen.append(triggered ? item.title : u"gone too soon"_s);
    }));
    Menu outer;
    outer.addItemWithTitle(u"Sub"_s, nullptr, inner);
    m_mirror->show(isInSubmenu ? outer : *inner);
    triggered = m_menu->actions()[0];
    if (isInSubmenu) {
        open(*triggered->menu());
        triggered = triggered->menu()->actions()[0];
    }
    triggered->trigger();
    QCOMPARE(m_chosen, QStringList{u"again"_s});
    deleteDeferred();
    QVERIFY(!triggered);
    QCOMPARE(textOf(*m_menu), u"new"_s);
}

void tst_MenuMirror_Lifetimes::endOfTheMirror()
{
    m_menu->addAction(u"Manage"_s);
    m_mirror->show(menuOf({u"a"_s}));
    m_mirror.reset();
    QCOMPARE(textOf(*m_menu), u"Manage"_s);
}

void tst_MenuMirror_Lifetimes::endOfTheMenuFromAnAction()
{
    Menu menu;
    menu.addItem(itemOf(u"a"_s, [this](const MenuItem &item) {
        m_window.reset();
        m_chosen.append(item.title);
    }));
    m_mirror->show(menu);
    m_menu->actions()[0]->trigger();
    QCOMPARE(m_chosen, QStringList{u"a"_s});
}

void tst_MenuMirror_Lifetimes::mirrorOutlivesTheMenu()
{
    m_mirror->show(menuOf({u"a"_s}));
    m_window.reset();
    m_mirror->show(menuOf({u"b"_s}));
    m_mirror.reset();
}

QTEST_MAIN(tst_MenuMirror_Lifetimes)
#include "tst_menumirror_lifetimes.moc"
