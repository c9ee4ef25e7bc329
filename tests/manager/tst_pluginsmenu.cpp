#include "manager/KRPluginManager.h"
#include "platform/FileURL.h"
#include "platform/Menu.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTranslator>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// Answers one text under the key "untitled" of the table "Localizable".
class Translation final : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return QByteArray(context) == "Localizable" && QByteArray(source) == "untitled" ? u"ohne Titel"_s : QString();
    }
};

/// The menu in one line: items by title, separators as "-", submenus in brackets behind their title.
QString textOf(const Menu &menu)
{
    QStringList texts;
    for (const auto &item : menu.items()) {
        const auto submenu = item.submenu ? u"["_s + textOf(*item.submenu) + u"]"_s : QString();
        texts.append(item.isSeparator ? u"-"_s : item.title + submenu);
    }
    return texts.join(u' ');
}

QVariantMap jsonMap(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object().toVariantMap();
}

} // namespace

class tst_PluginsMenu : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void descriptions_data();
    void descriptions();
    void registryInTheMenu_data();
    void registryInTheMenu();
    void disabledPluginsContributeNothing();
    void itemsCarrySpecifierActionAndShortcut();
    void menusHaveTitles();
    void hostsItemsAreSortedAlong();
    void hostsSubmenuTakesGroupsOfItsTitle();
    void groupsUntitledInTheUsersLanguage();
    void fillingAgainAppends();
    void commandsOfAnotherPluginAreUnknown();
    void sortingThroughTheManager();
    void deepDescriptions();
    void manyGroupsOfOneLevel();

private:
    /// A plug-in with the commands a, b and c, titled A, B and C.
    void plugin(const QString &name, const QByteArray &keys) const;
    std::unique_ptr<KRPluginManager> loadedManager() const;
    /// The registry in a menu that was empty.
    QString filled() const;

    std::unique_ptr<TestEnvironment> m_environment;
};

void tst_PluginsMenu::init()
{
    m_environment = std::make_unique<TestEnvironment>();
}

void tst_PluginsMenu::cleanup()
{
    QVERIFY2(m_environment->systemLogLines.isEmpty(), "nothing about a menu is worth a message");
    m_environment.reset();
}

void tst_PluginsMenu::plugin(const QString &name, const QByteArray &keys) const
{
    BundleBuilder(m_environment->path(u"Plugins"_s), name)
        .manifest("{\"identifier\": \"" + name.toUtf8() + R"(", "commands": [
            {"script": "s.js", "name": "A", "identifier": "a"},
            {"script": "s.js", "name": "B", "identifier": "b", "shortcut": "ctrl cmd k"},
            {"script": "s.js", "name": "C", "identifier": "c", "handlers": {"other": "onOther"}}])"
            + (keys.isEmpty() ? QByteArray() : ", " + keys) + "}")
        .script(u"s.js"_s, "function onRun() {}");
}

std::unique_ptr<KRPluginManager> tst_PluginsMenu::loadedManager() const
{
    const auto folder = fileURLFromPath(m_environment->path(u"Plugins"_s), FileKind::Folder);
    auto manager = std::make_unique<KRPluginManager>(QList<QUrl>{folder}, nullptr, nullptr);
    manager->reloadPlugins();
    return manager;
}

QString tst_PluginsMenu::filled() const
{
    Menu menu;
    loadedManager()->addPluginsToMenu(menu, nullptr);
    return textOf(menu);
}

void tst_PluginsMenu::descriptions_data()
{
    QTest::addColumn<QByteArray>("description");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *what, const QByteArray &items, const QString &expected) {
        QTest::newRow(what) << "{\"items\": " + items + "}" << expected;
    };
    QTest::newRow("no items") << QByteArray("{}") << QString();
    row("items that are no array", "\"a\"", QString());
    row("items that are null", "null", QString());
    row("items that are an object", R"({"a": "a"})", QString());
    row("commands in the description's order", R"(["b", "a"])", u"B A"_s);
    row("a command twice", R"(["a", "a"])", u"A A"_s);
    row("a command that has no run handler but is named", R"(["c"])", u"C"_s);
    row("separators", R"(["-", "a", "-", "-"])", u"- A - -"_s);
    row("a separator, an unknown command, a command", R"(["-", "none", "a"])", u"- A"_s);
    row("identifiers are exact", R"(["A", " a", "--", ""])", QString());
    row("what means nothing", R"([1, 1.5, true, null, [], ["a"], [["a"]], "a"])", u"A"_s);
    row("a group", R"(["a", {"title": "G", "items": ["b", "-"]}, "c"])", u"A G[B -] C"_s);
    row("a group without a title", R"([{"items": ["a"]}])", u"untitled[A]"_s);
    row("a group whose title is no text", R"([{"title": 7, "items": ["a"]}])", u"untitled[A]"_s);
    row("a group with an empty title", R"([{"title": "", "items": ["a"]}])", u"[A]"_s);
    row("an empty group stays", R"([{"title": "G", "items": []}, {"title": "H"}])", u"G[] H[]"_s);
    row("isRoot means nothing inside", R"([{"title": "G", "isRoot": true, "items": ["a"]}])", u"G[A]"_s);
    row("groups inside of groups", R"([{"title": "G", "items": [{"title": "G", "items": ["a"]}, "b"]}])",
        u"G[G[A] B]"_s);
    row("groups of one title are one", R"([{"title": "G", "items": ["a"]}, "c", {"title": "G", "items": ["b", "a"]}])",
        u"G[A B A] C"_s);
    row("groups without a title are one", R"([{"items": ["a"]}, {"items": ["b"]}])", u"untitled[A B]"_s);
    row("titles of another case are others", R"([{"title": "G", "items": ["a"]}, {"title": "g", "items": ["b"]}])",
        u"G[A] g[B]"_s);
    row("one title on two levels", R"([{"title": "G", "items": [{"title": "H", "items": ["a"]}]},
        {"title": "H", "items": ["b"]}])",
        u"G[H[A]] H[B]"_s);
    row("groups inside of merged groups merge", R"([
        {"title": "G", "items": [{"title": "H", "items": ["a"]}, "c"]},
        {"title": "G", "items": ["b", {"title": "H", "items": ["b"]}]}])",
        u"G[H[A B] C B]"_s);
    row("a group of a command's title is dropped", R"(["a", {"title": "A", "items": ["b"]}, "c"])", u"A C"_s);
    row("a command of a group's title is not", R"([{"title": "A", "items": ["b"]}, "a"])", u"A[B] A"_s);
    row("a group that has no title but a separator has none either is dropped",
        R"(["-", {"title": "", "items": ["a"]}])", u"-"_s);
}

void tst_PluginsMenu::descriptions()
{
    QFETCH(QByteArray, description);

    plugin(u"p"_s, {});
    const auto manager = loadedManager();
    Menu menu;
    manager->addCommands(manager->plugins().value(u"p"_s)->commands(), menu, jsonMap(description), nullptr);
    QTEST(textOf(menu), "expected");
}

void tst_PluginsMenu::registryInTheMenu_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *what, const QByteArray &first, const QByteArray &second, const QString &expected) {
        QTest::newRow(what) << first << second << expected;
    };
    const QByteArray nothing = R"("menu": {"items": []})";
    row("titles of their own", R"("menu": {"title": "Zebra", "items": ["b"]})",
        R"("menu": {"title": "apple", "items": ["a"]})", u"apple[A] Zebra[B]"_s);
    row("named after the plug-in", R"("name": "Tidy", "menu": {"items": ["b", "a"]})", nothing, u"Tidy[B A]"_s);
    row("a title that is no text", R"("name": "Tidy", "menu": {"title": true, "items": ["a"]})", nothing, u"Tidy[A]"_s);
    row("no description of its own", R"("name": "Tidy")", nothing, u"Tidy[A B]"_s);
    row("a description that is no object", R"("name": "Tidy", "menu": ["a"])", nothing, u"Tidy[A B]"_s);
    row("nothing to show gives no entry", nothing, R"("menu": {})", QString());
    row("only unknown commands give no entry", R"("menu": {"items": ["x", "y"]})", nothing, QString());
    row("a separator alone is an entry", R"("name": "Tidy", "menu": {"items": ["-"]})", nothing, u"Tidy[-]"_s);
    row("plug-ins of one title stay apart", R"("menu": {"title": "T", "items": ["a"]})",
        R"("menu": {"title": "T", "items": ["b"]})", u"T[A] T[B]"_s);
    row("the order inside is the description's", R"("menu": {"title": "T", "items": ["b", "-", "a"]})", nothing,
        u"T[B - A]"_s);

    const QByteArray root = R"("menu": {"isRoot": true, "items": )";
    row("a root plug-in's items lie in the menu", root + R"(["b", "a"]})", nothing, u"A B"_s);
    row("a root plug-in's title means nothing", R"("menu": {"isRoot": true, "title": "T", "items": ["a"]})", nothing,
        u"A"_s);
    row("a root plug-in's separator goes to the top", root + R"(["b", "-", "a"]})", nothing, u"- A B"_s);
    row("an empty root plug-in", root + "[]}", nothing, QString());
    row("two root plug-ins share a group", root + R"([{"title": "G", "items": ["a"]}]})",
        root + R"([{"title": "G", "items": ["b"]}, "a"]})", u"A G[A B]"_s);
    row("a root plug-in's group joins a plug-in's submenu", R"("menu": {"title": "G", "items": ["a"]})",
        root + R"([{"title": "G", "items": ["b"]}]})", u"G[A B]"_s);
    row("a root plug-in's group of another's command is dropped", root + R"(["a"]})",
        root + R"([{"title": "A", "items": ["b"]}]})", u"A"_s);
    for (const auto *const value : {"1", "\"true\"", "null", "{}", "false"}) {
        QTest::addRow("isRoot is %s", value)
            << R"("name": "Tidy", "menu": {"items": ["a"], "isRoot": )" + QByteArray(value) + "}" << nothing
            << u"Tidy[A]"_s;
    }
}

void tst_PluginsMenu::registryInTheMenu()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);

    plugin(u"1"_s, first);
    plugin(u"2"_s, second);
    QTEST(filled(), "expected");
}

void tst_PluginsMenu::disabledPluginsContributeNothing()
{
    plugin(u"1"_s, R"("name": "One", "menu": {"items": ["a"]})");
    plugin(u"2"_s, R"("menu": {"isRoot": true, "items": ["b"]})");
    const auto manager = loadedManager();
    const auto text = [&manager] {
        Menu menu;
        manager->addPluginsToMenu(menu, nullptr);
        return textOf(menu);
    };
    QCOMPARE(text(), u"B One[A]"_s);
    manager->plugins().value(u"1"_s)->setEnabled(false);
    QCOMPARE(text(), u"B"_s);
    manager->plugins().value(u"2"_s)->setEnabled(false);
    QCOMPARE(text(), QString());

    manager->setDisableAllPlugins(true);
    manager->reloadPlugins();
    QCOMPARE(text(), QString());
}

void tst_PluginsMenu::itemsCarrySpecifierActionAndShortcut()
{
    plugin(u"com.example.p"_s, R"("menu": {"title": "T", "items": [{"title": "G", "items": ["b"]}]})");
    const auto manager = loadedManager();
    QStringList chosen;
    Menu menu;
    manager->addPluginsToMenu(menu, [&](const MenuItem &item) {
        const auto specifier = item.representedObject.value<KRPluginCommandSpecifier>();
        chosen.append(manager->commandWithSpecifier(specifier)->name().value_or(QString()));
    });
    const auto *const entry = menu.itemWithTitle(u"T"_s);
    QVERIFY(!entry->action && !entry->representedObject.isValid());
    const auto *const group = entry->submenu->itemWithTitle(u"G"_s);
    QVERIFY(!group->action && !group->representedObject.isValid());
    const auto &item = group->submenu->items().front();
    QCOMPARE(item.keyEquivalent, u"k"_s);
    QCOMPARE(item.keyEquivalentModifierMask, 0x140000U);
    QVERIFY(!item.submenu);
    QCOMPARE(
        item.representedObject.value<KRPluginCommandSpecifier>(), KRPluginCommandSpecifier(u"com.example.p"_s, u"b"_s));
    item.action(item);
    QCOMPARE(chosen, QStringList{u"B"_s});
}

void tst_PluginsMenu::menusHaveTitles()
{
    plugin(u"1"_s, R"("name": "Tidy", "menu": {"title": "T", "items": [{"title": "G"}]})");
    Menu menu(u"Plugins"_s);
    loadedManager()->addPluginsToMenu(menu, nullptr);
    QCOMPARE(menu.title(), u"Plugins"_s);
    const auto submenu = menu.items().front().submenu;
    QCOMPARE(submenu->title(), u"Tidy"_s); // the plug-in's name, whatever the title of the item that opens it
    QCOMPARE(submenu->items().front().submenu->title(), u"G"_s);
}

void tst_PluginsMenu::hostsItemsAreSortedAlong()
{
    plugin(u"1"_s, R"("menu": {"title": "Middle", "items": ["b", "a"]})");
    Menu menu;
    QStringList chosen;
    const auto note = [&chosen](const MenuItem &item) { chosen.append(item.title); };
    const auto hostsOwn = std::make_shared<Menu>();
    hostsOwn->addItemWithTitle(u"2"_s, note, nullptr);
    hostsOwn->addItemWithTitle(u"1"_s, note, nullptr);
    menu.addItemWithTitle(u"Upper"_s, note, nullptr);
    menu.addItem(MenuItem::separatorItem());
    menu.addItemWithTitle(u"lower"_s, note, hostsOwn);
    loadedManager()->addPluginsToMenu(menu, nullptr);
    QCOMPARE(textOf(menu), u"- lower[2 1] Middle[B A] Upper"_s);
    menu.items().back().action(menu.items().back());
    QCOMPARE(chosen, QStringList{u"Upper"_s});
}

void tst_PluginsMenu::hostsSubmenuTakesGroupsOfItsTitle()
{
    plugin(u"1"_s,
        R"("menu": {"isRoot": true, "items": [{"title": "Export", "items": ["a"]}, {"title": "Run", "items": ["b"]}]})");
    Menu menu;
    const auto exports = std::make_shared<Menu>();
    exports->addItemWithTitle(u"PNG"_s, nullptr, nullptr);
    menu.addItemWithTitle(u"Run"_s, nullptr, nullptr);
    menu.addItemWithTitle(u"Export"_s, nullptr, exports);
    loadedManager()->addPluginsToMenu(menu, nullptr);
    QCOMPARE(textOf(menu), u"Export[PNG A] Run"_s);
}

void tst_PluginsMenu::groupsUntitledInTheUsersLanguage()
{
    plugin(u"1"_s, R"("menu": {"isRoot": true, "items": [{"items": ["a"]}]})");
    Translation translation;
    QCoreApplication::installTranslator(&translation);
    QCOMPARE(filled(), u"ohne Titel[A]"_s);
    QCoreApplication::removeTranslator(&translation);
    QCOMPARE(filled(), u"untitled[A]"_s);
}

void tst_PluginsMenu::fillingAgainAppends()
{
    plugin(u"1"_s, R"("menu": {"title": "T", "items": ["a"]})");
    plugin(u"2"_s, R"("menu": {"isRoot": true, "items": [{"title": "T", "items": ["b"]}]})");
    const auto manager = loadedManager();
    Menu menu;
    manager->addPluginsToMenu(menu, nullptr);
    manager->addPluginsToMenu(menu, nullptr);
    QCOMPARE(textOf(menu), u"T[A B B] T[A]"_s);
}

void tst_PluginsMenu::commandsOfAnotherPluginAreUnknown()
{
    plugin(u"1"_s, R"("name": "One")");
    BundleBuilder(m_environment->path(u"Plugins"_s), u"2"_s)
        .manifest(R"({"identifier": "2", "menu": {"items": ["a", "1/a"]}})");
    QCOMPARE(filled(), u"One[A B]"_s);
}

void tst_PluginsMenu::sortingThroughTheManager()
{
    const auto manager = loadedManager();
    const auto menuToSort = [] {
        Menu menu;
        const auto submenu = std::make_shared<Menu>();
        submenu->addItemWithTitle(u"y"_s, nullptr, nullptr);
        submenu->addItemWithTitle(u"X"_s, nullptr, nullptr);
        menu.addItemWithTitle(u"b"_s, nullptr, submenu);
        menu.addItemWithTitle(u"A"_s, nullptr, nullptr);
        return menu;
    };
    auto menu = menuToSort();
    manager->sortMenu(menu, false);
    QCOMPARE(textOf(menu), u"A b[y X]"_s);
    menu = menuToSort();
    manager->sortMenu(menu, true);
    QCOMPARE(textOf(menu), u"A b[X y]"_s);
}

void tst_PluginsMenu::deepDescriptions()
{
    plugin(u"1"_s, {});
    const auto manager = loadedManager();
    QVariantMap description{{u"items"_s, QVariantList{u"a"_s}}};
    constexpr int depth = 5'000; // ten times as deep as a manifest can nest
    for (int level = 0; level < depth; ++level)
        description = {{u"title"_s, u"G"_s}, {u"items"_s, QVariantList{description}}};
    Menu menu;
    manager->addCommands(manager->plugins().value(u"1"_s)->commands(), menu, description, nullptr);
    const auto *innermost = &menu;
    for (int level = 0; level < depth; ++level)
        innermost = innermost->items().front().submenu.get();
    QCOMPARE(textOf(*innermost), u"A"_s);
}

void tst_PluginsMenu::manyGroupsOfOneLevel()
{
    plugin(u"1"_s, {});
    const auto manager = loadedManager();
    constexpr int count = 100'000; // comparing each title with all before it would take minutes
    QVariantList groups;
    for (int i = 0; i < count; ++i)
        groups.append(QVariantMap{{u"title"_s, QString::number(i)}, {u"items"_s, QVariantList{u"a"_s}}});
    Menu menu;
    manager->addCommands(manager->plugins().value(u"1"_s)->commands(), menu, {{u"items"_s, groups}}, nullptr);
    QCOMPARE(menu.items().size(), std::size_t(count));
    QCOMPARE(textOf(*menu.items().back().submenu), u"A"_s);
}

QTEST_GUILESS_MAIN(tst_PluginsMenu)
#include "tst_pluginsmenu.moc"
