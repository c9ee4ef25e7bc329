#include "MenuMirrorFixture.h"

#include "manager/KRPluginManager.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class tst_MenuMirror : public QObject, private MenuMirrorFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsEverything();
    void titlesAreShownAsTheyAre_data();
    void titlesAreShownAsTheyAre();
    void noActionIsTakenForTheSystems();
    void triggeringCallsTheItemsAction();
    void triggeringAnItemWithoutAction();
    void commandsOfThePlugins();
    void shortcutsWork();
    void shortcutsOfSubmenusWork();
    void shortcutsOfWhatIsGoneDoNotWork();
    void firstOfSeveralKeepsTheShortcut();
    void submenusAreFilledWhenTheyOpen();
    void submenusOpenedAgain();
    void showingAgainReplaces();
    void hostsActionsStayWhereTheyAre();

private:
    /// Shows the window and presses Ctrl+Shift+K in it.
    void pressShortcut();

    const MenuAction m_note = [this](const MenuItem &item) { m_chosen.append(item.title); };
};

void tst_MenuMirror::init()
{
    makeWindow();
}

void tst_MenuMirror::cleanup()
{
    m_mirror.reset();
    m_window.reset();
}

void tst_MenuMirror::pressShortcut()
{
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    QTest::keyClick(m_window.get(), Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
}

void tst_MenuMirror::showsEverything()
{
    auto menu = menuOf({u"a"_s});
    menu.addItem(MenuItem::separatorItem());
    auto submenu = menuOf({u"b"_s, u"c"_s});
    submenu.addItem(MenuItem::separatorItem());
    submenu.addItemWithTitle(u"inner"_s, nullptr, std::make_shared<Menu>(menuOf({u"d"_s})));
    menu.addItemWithTitle(u"Sub"_s, nullptr, std::make_shared<Menu>(submenu));
    menu.addItemWithTitle(u"Empty"_s, nullptr, std::make_shared<Menu>());
    m_mirror->show(menu);
    QCOMPARE(textOf(*m_menu), u"a - Sub[b c - inner[d]] Empty[]"_s);
}

void tst_MenuMirror::titlesAreShownAsTheyAre_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");

    QTest::newRow("plain") << u"Tidy Layers…"_s << u"Tidy Layers…"_s;
    QTest::newRow("an ampersand marks no key") << u"Tidy & Clean"_s << u"Tidy && Clean"_s;
    QTest::newRow("two of them") << u"&&"_s << u"&&&&"_s;
    QTest::newRow("a tab begins no shortcut") << u"Tidy\tCtrl+Q"_s << u"Tidy Ctrl+Q"_s;
    QTest::newRow("empty") << QString() << QString();
}

void tst_MenuMirror::titlesAreShownAsTheyAre()
{
    QFETCH(QString, title);

    auto menu = menuOf({title});
    menu.addItemWithTitle(title, nullptr, std::make_shared<Menu>());
    m_mirror->show(menu);
    QTEST(m_menu->actions()[0]->text(), "text");
    QTEST(m_menu->actions()[1]->text(), "text");
    QVERIFY(m_menu->actions()[0]->shortcut().isEmpty());
}

void tst_MenuMirror::noActionIsTakenForTheSystems()
{
    auto menu = menuOf({u"Settings"_s});
    menu.addItemWithTitle(u"About"_s, nullptr, std::make_shared<Menu>());
    m_mirror->show(menu);
    for (auto *const action : m_menu->actions())
        QCOMPARE(action->menuRole(), QAction::NoRole);
}

void tst_MenuMirror::triggeringCallsTheItemsAction()
{
    QList<MenuItem> chosen;
    auto item = itemOf(
        u"b"_s, [&](const MenuItem &itself) { chosen.append(itself); }, u"k"_s, command);
    item.representedObject = 7;
    auto menu = menuOf({u"a"_s});
    menu.addItem(item);
    m_mirror->show(menu);
    menu = {}; // what is shown does not need it
    m_menu->actions()[1]->trigger();
    QCOMPARE(chosen.size(), 1);
    QCOMPARE(chosen[0].title, u"b"_s);
    QCOMPARE(chosen[0].representedObject, QVariant(7));
    QCOMPARE(chosen[0].keyEquivalent, u"k"_s);
}

void tst_MenuMirror::triggeringAnItemWithoutAction()
{
    m_mirror->show(menuOf({u"a"_s}));
    m_menu->actions()[0]->trigger();
    QCOMPARE(textOf(*m_menu), u"a"_s);
}

void tst_MenuMirror::commandsOfThePlugins()
{
    const QTemporaryDir folder;
    const auto scripts = folder.filePath(u"Tidy.korvanplugin/Contents/Korvan"_s);
    QVERIFY(QDir().mkpath(scripts));
    QFile script(scripts + u"/s.js"_s);
    QVERIFY(script.open(QIODevice::WriteOnly));
    QFile manifest(scripts + u"/manifest.json"_s);
    QVERIFY(manifest.open(QIODevice::WriteOnly));
    manifest.write(R"({"identifier": "com.example.tidy", "commands": [
        {"script": "s.js", "name": "Tidy & Clean", "identifier": "tidy", "shortcut": "cmd shift k"}]})");
    manifest.close();

    KRPluginManager manager({QUrl::fromLocalFile(folder.path() + u'/')}, nullptr, nullptr);
    manager.reloadPlugins();
    std::shared_ptr<KRPluginCommand> chosen;
    Menu menu;
    manager.addPluginsToMenu(menu, [&](const MenuItem &item) {
        chosen = manager.commandWithSpecifier(item.representedObject.value<KRPluginCommandSpecifier>());
    });
    m_mirror->show(menu);
    QCOMPARE(textOf(*m_menu), u"Tidy[Tidy && Clean]"_s);
    auto *const action = m_menu->actions().first()->menu()->actions().first();
    QCOMPARE(action->shortcut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_K));
    action->trigger();
    QVERIFY(chosen);
    QCOMPARE(chosen->identifier().value_or(QString()), u"tidy"_s);
}

void tst_MenuMirror::shortcutsWork()
{
    Menu menu;
    menu.addItem(itemOf(u"plain"_s, m_note, u"k"_s, command));
    menu.addItem(itemOf(u"shifted"_s, m_note, u"k"_s, command | shift));
    m_mirror->show(menu);
    pressShortcut();
    QCOMPARE(m_chosen, QStringList{u"shifted"_s});
}

void tst_MenuMirror::shortcutsOfSubmenusWork()
{
    const auto inner = std::make_shared<Menu>();
    inner->addItem(itemOf(u"inner"_s, m_note, u"k"_s, command | shift));
    Menu menu;
    menu.addItemWithTitle(u"Sub"_s, nullptr, inner);
    m_mirror->show(menu);
    pressShortcut();
    QCOMPARE(m_chosen, QStringList{u"inner"_s});
}

void tst_MenuMirror::shortcutsOfWhatIsGoneDoNotWork()
{
    const auto inner = std::make_shared<Menu>();
    inner->addItem(itemOf(u"old"_s, m_note, u"k"_s, command | shift));
    Menu menu;
    menu.addItemWithTitle(u"Sub"_s, nullptr, inner);
    m_mirror->show(menu);
    Menu replacement;
    replacement.addItem(itemOf(u"new"_s, m_note, u"k"_s, command | shift));
    m_mirror->show(replacement);
    pressShortcut();
    QCOMPARE(m_chosen, QStringList{u"new"_s});
    m_mirror->show({});
    pressShortcut();
    QCOMPARE(m_chosen.size(), 1);
}

void tst_MenuMirror::firstOfSeveralKeepsTheShortcut()
{
    const auto inner = std::make_shared<Menu>();
    inner->addItem(itemOf(u"first"_s, m_note, u"k"_s, command | shift));
    Menu menu;
    menu.addItemWithTitle(u"Sub"_s, nullptr, inner);
    menu.addItem(itemOf(u"second"_s, m_note, u"k"_s, command | shift));
    for (int round = 0; round < 2; ++round) { // what was shown before takes no shortcut away
        m_mirror->show(menu);
        m_chosen.clear();
        pressShortcut();
        QCOMPARE(m_chosen, QStringList{u"first"_s});
    }
    m_menu->actions()[1]->trigger();
    QCOMPARE(m_chosen.last(), u"second"_s);
}

void tst_MenuMirror::submenusAreFilledWhenTheyOpen()
{
    const auto makeSubmenu = [this](const QString &title, const QString &key) {
        const auto deepest = std::make_shared<Menu>();
        deepest->addItem(itemOf(title, m_note, key, command | shift));
        const auto submenu = std::make_shared<Menu>();
        submenu->addItemWithTitle(u"deeper"_s, nullptr, deepest);
        return submenu;
    };
    Menu menu;
    menu.addItemWithTitle(u"has a shortcut"_s, nullptr, makeSubmenu(u"a"_s, u"k"_s));
    menu.addItemWithTitle(u"has one that is taken"_s, nullptr, makeSubmenu(u"b"_s, u"k"_s));
    menu.addItemWithTitle(u"has none"_s, nullptr, makeSubmenu(u"c"_s, {}));
    m_mirror->show(menu);
    QList<bool> areEmpty;
    for (auto *const action : m_menu->actions())
        areEmpty.append(action->menu()->isEmpty());
    QCOMPARE(areEmpty, (QList<bool>{false, true, true}));
    QCOMPARE(textOf(*m_menu), u"has a shortcut[deeper[a]] has one that is taken[deeper[b]] has none[deeper[c]]"_s);
    pressShortcut();
    QCOMPARE(m_chosen, QStringList{u"a"_s});
}

void tst_MenuMirror::submenusOpenedAgain()
{
    Menu menu;
    menu.addItemWithTitle(u"Sub"_s, nullptr, std::make_shared<Menu>(menuOf({u"a"_s, u"b"_s})));
    m_mirror->show(menu);
    QCOMPARE(textOf(*m_menu), u"Sub[a b]"_s);
    QCOMPARE(textOf(*m_menu), u"Sub[a b]"_s);
}

void tst_MenuMirror::showingAgainReplaces()
{
    m_mirror->show(menuOf({u"a"_s, u"b"_s}));
    m_mirror->show(menuOf({u"c"_s}));
    QCOMPARE(textOf(*m_menu), u"c"_s);
    m_mirror->show({});
    QCOMPARE(textOf(*m_menu), QString());
    m_mirror->show(menuOf({u"d"_s, u"e"_s}));
    QCOMPARE(textOf(*m_menu), u"d e"_s);
}

void tst_MenuMirror::hostsActionsStayWhereTheyAre()
{
    m_menu->addAction(u"Manage"_s);
    m_menu->addSeparator();
    m_mirror->show(menuOf({u"b"_s, u"c"_s}));
    QCOMPARE(textOf(*m_menu), u"Manage - b c"_s);
    m_menu->addAction(u"Help"_s);
    m_mirror->show(menuOf({u"d"_s, u"e"_s}));
    QCOMPARE(textOf(*m_menu), u"Manage - d e Help"_s);
}

QTEST_MAIN(tst_MenuMirror)
#include "tst_menumirror.moc"
