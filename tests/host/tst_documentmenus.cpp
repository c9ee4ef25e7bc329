// The menus in the languages of the program.

#include "PluginWindowsFixture.h"

#include "look/Translations.h"

#include <QLocale>

using namespace Qt::StringLiterals;

class tst_DocumentMenus : public QObject, private PluginWindowsFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void cleanup();

    void keysAreUnique_data() { languages(); }
    void keysAreUnique();
    void everythingIsTranslated_data() { languages(); }
    void everythingIsTranslated();
    void shortcutsAreUnique();
    void documentsAreInTheWindowMenu();

private:
    static void languages();
    static void useLanguage(const QByteArray &name);
    static QStringList titlesOf(const QWidget &menu);
};

void tst_DocumentMenus::cleanup()
{
    removeFolder();
    useLanguage("C.UTF-8");
}

void tst_DocumentMenus::languages()
{
    QTest::addColumn<QByteArray>("language");

    for (const auto *const name : {"de_DE", "fr_FR", "ja_JP", "zh_CN"})
        QTest::newRow(name) << QByteArray(name);
}

void tst_DocumentMenus::useLanguage(const QByteArray &name)
{
    qputenv("LC_ALL", name);
    QLocale::setDefault(QLocale(QString::fromLatin1(name)));
}

QStringList tst_DocumentMenus::titlesOf(const QWidget &menu)
{
    QStringList titles;
    const auto actions = menu.actions();
    for (const auto *const action : actions) {
        if (!action->isSeparator())
            titles.append(action->text());
    }
    return titles;
}

/// Alt, or nothing, and a letter chooses one item.
void tst_DocumentMenus::keysAreUnique()
{
    QFETCH(QByteArray, language);
    useLanguage(language);
    const Translations translations;
    auto &window = start();
    QList<QWidget *> menus{window.menuBar()};
    const auto submenus = window.menuBar()->findChildren<QMenu *>();
    for (auto *const menu : submenus)
        menus.append(menu);
    for (const auto *const menu : std::as_const(menus)) {
        QStringList keys;
        const auto titles = titlesOf(*menu);
        for (const auto &title : titles) {
            if (const auto key = QKeySequence::mnemonic(title); !key.isEmpty())
                keys.append(key.toString());
        }
        const QSet<QString> unique(keys.begin(), keys.end());
        QVERIFY2(unique.size() == keys.size(), qPrintable(titles.join(u", "_s)));
    }
}

void tst_DocumentMenus::everythingIsTranslated()
{
    const auto english = titlesOf(*start().menuBar());
    m_host.reset();
    QFETCH(QByteArray, language);
    useLanguage(language);
    const Translations translations;
    const auto translated = titlesOf(*start().menuBar());
    QCOMPARE(translated.size(), english.size());
    for (int i = 0; i < english.size(); ++i) {
        if (english[i] != u"&Plugins"_s)
            QVERIFY2(translated[i] != english[i], qPrintable(english[i]));
    }
}

void tst_DocumentMenus::shortcutsAreUnique()
{
    QStringList shortcuts;
    const auto actions = start().menuBar()->findChildren<QAction *>();
    for (const auto *const action : actions) {
        const auto own = action->shortcuts();
        for (const auto &shortcut : own)
            shortcuts.append(shortcut.toString());
    }
    QVERIFY(shortcuts.size() > 20);
    QCOMPARE(QSet<QString>(shortcuts.begin(), shortcuts.end()).size(), shortcuts.size());
    for (const auto *const usual : {"Ctrl+S", "Ctrl+Shift+S", "Ctrl+Q", "Ctrl+Z", "Ctrl+C", "Ctrl+V"})
        QVERIFY2(shortcuts.contains(QLatin1StringView(usual)), usual);
}

void tst_DocumentMenus::documentsAreInTheWindowMenu()
{
    auto &first = startActive();
    auto &second = *m_host->newDocument();
    QTRY_COMPARE(QApplication::activeWindow(), &second);
    choose({u"Window"_s, u"sample"_s});
    QTRY_COMPARE(QApplication::activeWindow(), &first);
    auto *const menu = menuAction(first, u"Window"_s)->menu();
    emit menu->aboutToShow();
    emit menu->aboutToShow(); // twice is not twice as many
    QCOMPARE(titlesOf(*menu).mid(3), (QStringList{u"sample"_s, u"Untitled"_s}));
    QVERIFY(actionIn(*menu, u"sample"_s)->isChecked());
    QVERIFY(!actionIn(*menu, u"Untitled"_s)->isChecked());
}

QTEST_MAIN(tst_DocumentMenus)
#include "tst_documentmenus.moc"
