#include "PluginsWindowFixture.h"
#include "UrlRecorder.h"
#include "localization/KorvanPluginManagerTranslator.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTreeWidget>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_PluginsWindow : public QObject, private PluginsWindowFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void listAndDetails();
    void nothingInstalled();
    void hostileTexts();
    void homepage_data();
    void homepage();
    void searching();
    void removing();
    void removingDeclined();
    void removingByKeyboard();
    void editing();
    void showInFolder();
    void incompatibleOnesAreCounted();
    void incompatibleOnesOfAHiddenWindow();
    void disablingAll();
    void everythingIsReachedByKeyboard();
    void keysAreUnique_data();
    void keysAreUnique();
    void managerGoesFirst();
};

void tst_PluginsWindow::init()
{
    setUpWindow();
}

void tst_PluginsWindow::cleanup()
{
    tearDownWindow();
}

void tst_PluginsWindow::listAndDetails()
{
    install({u"a"_s, u"Tidy"_s, u"1.2"_s, {}, "",
        R"("author": "Ada", "description": "Sorts layers.", "compatibleVersion": "90", "maxCompatibleVersion": "99", )"});
    install({u"b"_s, u"Zoom"_s});
    show();
    QCOMPARE(list()->model()->rowCount(), 2);
    m_window->selectPlugin(u"a"_s);
    QCOMPARE(label(u"PluginName"_s), u"Tidy"_s);
    QCOMPARE(label(u"PluginOrigin"_s), u"Version 1.2  ·  Ada"_s);
    QCOMPARE(label(u"PluginDescription"_s), u"Sorts layers."_s);
    QCOMPARE(label(u"PluginVersions"_s), u"For versions 90 to 99 of this application"_s);
    const auto *const commands = find<QTreeWidget>(u"Commands"_s);
    QCOMPARE(commands->topLevelItemCount(), 1);
    QCOMPARE(commands->topLevelItem(0)->text(0), u"Run It"_s);
    QVERIFY(!commands->topLevelItem(0)->text(1).isEmpty());
    QTest::keyClick(list(), Qt::Key_Down);
    QCOMPARE(label(u"PluginName"_s), u"Zoom"_s);
    QVERIFY(!find<QLabel>(u"PluginDescription"_s)->isVisible());
    QCOMPARE(label(u"PluginStatus"_s), u"Plug-ins: 2  ·  Updates: 0"_s);
}

void tst_PluginsWindow::nothingInstalled()
{
    show();
    QVERIFY(find<QLabel>(u"Hint"_s)->isVisible());
    QVERIFY(!find<QLabel>(u"PluginName"_s)->isVisible());
    QTest::keyClick(list(), Qt::Key_Delete);
    QVERIFY(!question());
}

void tst_PluginsWindow::hostileTexts()
{
    install({u"a"_s, u"<img src='http://example.com/x.png'>"_s + QString(2000, u'x'), u"<b>1</b>"_s, {}, "",
        R"("author": "<a href='file:///'>x</a>", "description": "<script>\u202e", )"});
    m_window->selectPlugin(u"a"_s);
    show();
    for (const auto &name : {u"PluginName"_s, u"PluginOrigin"_s, u"PluginDescription"_s, u"PluginVersions"_s})
        QCOMPARE(find<QLabel>(name)->textFormat(), Qt::PlainText);
    QCOMPARE(label(u"PluginDescription"_s), u"<script>"_s);
    QVERIFY(m_window->width() < 2000);
    QVERIFY(find<QLabel>(u"PluginName"_s)->width() < 2000);
}

void tst_PluginsWindow::homepage_data()
{
    QTest::addColumn<QByteArray>("url");
    QTest::addColumn<QString>("opened");

    QTest::newRow("https") << QByteArray("https://example.com/a") << u"https://example.com/a"_s;
    QTest::newRow("http") << QByteArray("http://example.com/") << u"http://example.com/"_s;
    QTest::newRow("a file") << QByteArray("file:///etc/passwd") << QString();
    QTest::newRow("a script") << QByteArray("javascript:alert(1)") << QString();
    QTest::newRow("another program") << QByteArray("mailto:a@example.com") << QString();
    QTest::newRow("no host") << QByteArray("https:///a") << QString();
    QTest::newRow("none") << QByteArray() << QString();
}

void tst_PluginsWindow::homepage()
{
    QFETCH(QByteArray, url);
    QFETCH(QString, opened);
    const UrlRecorder recorder({u"https"_s, u"http"_s, u"file"_s, u"javascript"_s, u"mailto"_s});
    install({u"a"_s, u"a"_s, u"1.0"_s, {}, "", R"("homepage": ")" + url + "\", "});
    m_window->selectPlugin(u"a"_s);
    show();
    QCOMPARE(find<QPushButton>(u"HomepageButton"_s)->isVisible(), !opened.isEmpty());
    find<QPushButton>(u"HomepageButton"_s)->click();
    QCOMPARE(recorder.urls, opened.isEmpty() ? QList<QUrl>() : QList<QUrl>{QUrl(opened)});
}

void tst_PluginsWindow::searching()
{
    install({u"a"_s, u"Tidy"_s});
    install({u"b"_s, u"Zoom"_s});
    show();
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), u"zOO"_s);
    QCOMPARE(list()->model()->rowCount(), 1);
    QCOMPARE(list()->model()->index(0, 0).data().toString(), u"Zoom"_s);
    m_window->selectPlugin(u"a"_s);
    QCOMPARE(find<QLineEdit>(u"PluginSearch"_s)->text(), QString());
    QCOMPARE(label(u"PluginName"_s), u"Tidy"_s);
}

void tst_PluginsWindow::removing()
{
    install({u"a"_s, u"<b>Tidy"_s});
    install({u"b"_s, u"Zoom"_s});
    m_window->selectPlugin(u"a"_s);
    show();
    click(u"RemoveButton"_s);
    QCOMPARE(question()->text(), u"Remove “<b>Tidy”?"_s);
    QVERIFY(m_manager->plugins().contains(u"a"_s));
    answer(QMessageBox::AcceptRole);
    QCOMPARE(m_manager->plugins().keys(), QStringList{u"b"_s});
    QCOMPARE(list()->model()->rowCount(), 1);
    QVERIFY(QFile::exists(m_environment->path(u"data/Trash/files/a.korvanplugin"_s)));
    QCOMPARE(label(u"PluginName"_s), u"Zoom"_s);
}

void tst_PluginsWindow::removingDeclined()
{
    install({u"a"_s, u"Tidy"_s});
    m_window->selectPlugin(u"a"_s);
    show();
    click(u"RemoveButton"_s);
    QTest::keyClick(question(), Qt::Key_Return); // the careful answer is the usual one
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(m_manager->plugins().contains(u"a"_s));
    QVERIFY(QFile::exists(pluginsFolder() + u"/a.korvanplugin"_s));
}

void tst_PluginsWindow::removingByKeyboard()
{
    install({u"a"_s, u"Tidy"_s});
    m_window->selectPlugin(u"a"_s);
    show();
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Delete);
    answer(QMessageBox::AcceptRole);
    QVERIFY(m_manager->plugins().isEmpty());
}

void tst_PluginsWindow::editing()
{
    const UrlRecorder recorder({u"file"_s});
    install({u"a"_s, u"Tidy"_s});
    m_window->selectPlugin(u"a"_s);
    show();
    click(u"EditButton"_s); // there is no editor
    QCOMPARE(recorder.urls, QList<QUrl>{m_manager->plugins().value(u"a"_s)->url()});
    QVERIFY(!notice().isEmpty());
    m_environment->userDefaults().setValue(u"Plugin Editor"_s, u"/bin/true"_s);
    click(u"EditButton"_s);
    QCOMPARE(recorder.urls.size(), 1);
}

void tst_PluginsWindow::showInFolder()
{
    const UrlRecorder recorder({u"file"_s});
    install({u"a"_s, u"Tidy"_s});
    m_window->selectPlugin(u"a"_s);
    show();
    click(u"FolderButton"_s);
    QCOMPARE(recorder.urls, QList<QUrl>{QUrl::fromLocalFile(pluginsFolder())});
}

void tst_PluginsWindow::incompatibleOnesAreCounted()
{
    m_manager->setNumberOfIncompatiblePluginsDisabled(0);
    install({u"a"_s, u"Tidy"_s});
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}});
    m_manager->registerIncompatiblePlugins();
    QCOMPARE(m_manager->numberOfIncompatiblePluginsDisabled(), 1);
    auto *const banner = find<QWidget>(u"IncompatibleBanner"_s);
    QVERIFY(!banner->isVisible());
    show();
    QVERIFY(banner->isVisible());
    QCOMPARE(banner->findChild<QLabel *>(u"BannerText"_s)->text(),
        u"Plug-ins that were disabled because they do not work with this application: 1"_s);
    QCOMPARE(m_manager->numberOfIncompatiblePluginsDisabled(), 0);
    QTest::mouseClick(banner->findChild<QWidget *>(u"BannerClose"_s), Qt::LeftButton);
    QVERIFY(!banner->isVisible());
}

void tst_PluginsWindow::incompatibleOnesOfAHiddenWindow()
{
    install({u"a"_s, u"Tidy"_s});
    m_state->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.0"_s}});
    m_manager->registerIncompatiblePlugins();
    m_manager->reloadPlugins();
    QCOMPARE(m_manager->numberOfIncompatiblePluginsDisabled(), 1); // nobody has seen it
}

void tst_PluginsWindow::disablingAll()
{
    install({u"a"_s, u"Tidy"_s});
    install({u"b"_s, u"Zoom"_s});
    show();
    auto *const all = find<QCheckBox>(u"DisableAll"_s);
    auto *const banner = find<QWidget>(u"AllDisabledBanner"_s);
    QVERIFY(!banner->isVisible());
    all->setFocus();
    QTest::keyClick(all, Qt::Key_Space);
    QVERIFY(m_manager->disableAllPlugins());
    QVERIFY(m_manager->enabledPlugins().isEmpty());
    QVERIFY(banner->isVisible());
    QTest::mouseClick(banner->findChild<QPushButton *>(u"BannerAction"_s), Qt::LeftButton);
    QCOMPARE(m_manager->enabledPlugins().size(), 2);
    QVERIFY(!banner->isVisible());
    QVERIFY(!all->isChecked());
}

void tst_PluginsWindow::everythingIsReachedByKeyboard()
{
    install({u"a"_s, u"Tidy"_s, u"1.0"_s, {}, "", R"("homepage": "https://example.com/", )"});
    m_window->selectPlugin(u"a"_s);
    show();
    QSet<QString> reached;
    find<QLineEdit>(u"PluginSearch"_s)->setFocus();
    for (int i = 0; i < 30; ++i) {
        auto *const widget = QApplication::focusWidget();
        reached.insert(widget->objectName());
        const auto *const button = qobject_cast<QAbstractButton *>(widget);
        QVERIFY2(!widget->accessibleName().isEmpty() || (button && !button->text().isEmpty()),
            qPrintable(widget->objectName()));
        QTest::keyClick(widget, Qt::Key_Tab);
    }
    for (const auto &name : {u"PluginSearch"_s, u"InstallButton"_s, u"CheckButton"_s, u"PluginList"_s, u"Commands"_s,
             u"EditButton"_s, u"FolderButton"_s, u"HomepageButton"_s, u"RemoveButton"_s, u"DisableAll"_s})
        QVERIFY2(reached.contains(name), qPrintable(name));
}

void tst_PluginsWindow::keysAreUnique_data()
{
    QTest::addColumn<QLocale>("locale");

    for (const auto &name : {"en_GB", "de_DE", "fr_FR", "ja_JP", "zh_CN"})
        QTest::newRow(name) << QLocale(QLatin1StringView(name));
}

/// Alt and a letter press one button, whatever the language.
void tst_PluginsWindow::keysAreUnique()
{
    QFETCH(QLocale, locale);
    const auto texts = KorvanPluginManagerTranslator(locale);
    QVERIFY(texts);
    QCoreApplication::installTranslator(texts.get());
    const PluginsWindow window(*m_manager);
    QStringList keys;
    for (auto *const button : window.findChildren<QAbstractButton *>()) {
        if (const auto key = QKeySequence::mnemonic(button->text()); !key.isEmpty())
            keys.append(key.toString());
    }
    QVERIFY2(keys.size() >= 11, qPrintable(keys.join(u' ')));
    keys.sort();
    auto unique = keys;
    unique.removeDuplicates();
    QCOMPARE(keys, unique);
}

void tst_PluginsWindow::managerGoesFirst()
{
    install({u"a"_s, u"Tidy"_s});
    m_window->selectPlugin(u"a"_s);
    show();
    m_manager.reset();
    QTest::mouseClick(find<QCheckBox>(u"DisableAll"_s), Qt::LeftButton);
    click(u"CheckButton"_s);
    click(u"EditButton"_s);
    click(u"RemoveButton"_s);
    answer(QMessageBox::AcceptRole);
    QVERIFY(QFile::exists(pluginsFolder() + u"/a.korvanplugin"_s));
}

QTEST_MAIN(tst_PluginsWindow)
#include "moc_UrlRecorder.cpp"
#include "tst_pluginswindow.moc"
