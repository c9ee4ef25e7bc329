// What plug-ins supply for layers, chosen with the mouse.

#include "PluginWindowsFixture.h"

using namespace Qt::StringLiterals;

namespace {

const QByteArray supplyingManifest = R"({"name": "Words & More", "identifier": "com.example.words", "version": "1.0",
    "suppliesData": true, "commands": [{"identifier": "offer", "script": "script.js",
        "handlers": {"actions": {"Startup": "offer"}}}]})";

} // namespace

class tst_DataMenu : public QObject, private PluginWindowsFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { removeFolder(); }

    void fillsTheSelectedLayers();
    void offersOnlyWhatFits();
    void saysWhenThereIsNothing();
    void followsThePlugins();
    void failuresAreSaid();

private:
    /// Supplies a text and a picture.
    void installSupplier(const QByteArray &supplyText) const;
    QMenu &dataMenu() const { return *menuAction(window(), u"Fill with Data"_s)->menu(); }
    /// Opens it, as on the way to its items.
    QList<QAction *> items() const
    {
        emit dataMenu().aboutToShow();
        return dataMenu().actions();
    }
};

void tst_DataMenu::init()
{
    makeFolder();
    writeFile(path(u"sample.json"_s), R"({"layers": [
        {"id": "one", "name": "One", "type": "text", "text": "1", "frame": {"x": 0, "y": 0, "width": 90, "height": 20}},
        {"id": "two", "name": "Two", "type": "text", "text": "2", "frame": {"x": 0, "y": 50, "width": 90, "height": 20}},
        {"id": "box", "name": "Box", "type": "rectangle", "frame": {"x": 0, "y": 90, "width": 90, "height": 20}}]})");
}

void tst_DataMenu::installSupplier(const QByteArray &supplyText) const
{
    const auto folder = path(u"plugins/words.korvanplugin/Contents/Korvan/"_s);
    writeFile(folder + u"manifest.json"_s, supplyingManifest);
    writeFile(folder + u"script.js"_s,
        R"(
const { register } = require('korvan/data-supplier');
function offer() {
    register({ name: 'Words', kind: 'text', supply: ({ layers }) => )"
            + supplyText + R"( });
    register({ name: 'Pictures', kind: 'image', supply: ({ layers }) => layers.map(() => '/picture.png') });
})");
}

void tst_DataMenu::fillsTheSelectedLayers()
{
    installSupplier("layers.map((layer) => layer.name + '!')");
    auto &window = startActive();
    window.document()->setSelection({layer(u"box"_s), layer(u"two"_s), layer(u"one"_s)});
    QTRY_VERIFY(items().first()->menu());
    choose({u"Insert"_s, u"Fill with Data"_s, u"Words  More"_s, u"Words"_s});
    QTRY_COMPARE(layer(u"one"_s)->text().value_or(QString()), u"One!"_s);
    QCOMPARE(layer(u"two"_s)->text().value_or(QString()), u"Two!"_s);
    QCOMPARE(window.session().undo().count(), 1);
    QCOMPARE(window.session().undo().undoText(), u"Words"_s);
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(layer(u"one"_s)->text().value_or(QString()), u"1"_s);
    QCOMPARE(layer(u"two"_s)->text().value_or(QString()), u"2"_s);
}

void tst_DataMenu::offersOnlyWhatFits()
{
    installSupplier("[]");
    auto &window = startActive();
    QTRY_VERIFY(items().first()->menu());
    const auto enabled = [this] {
        QStringList titles;
        const auto actions = items().first()->menu()->actions();
        for (const auto *const action : actions) {
            if (action->isEnabled())
                titles.append(action->text());
        }
        return titles;
    };
    QCOMPARE(enabled(), QStringList());
    window.document()->setSelection({layer(u"box"_s)});
    QCOMPARE(enabled(), QStringList());
    window.document()->setSelection({layer(u"box"_s), layer(u"one"_s)});
    QCOMPARE(enabled(), QStringList{u"Words"_s});
}

void tst_DataMenu::saysWhenThereIsNothing()
{
    startActive();
    const auto actions = items();
    QCOMPARE(actions.size(), 1);
    QCOMPARE(actions.first()->text(), u"No Plug-in Supplies Data"_s);
    QVERIFY(!actions.first()->isEnabled());
}

void tst_DataMenu::followsThePlugins()
{
    installSupplier("[]");
    startActive();
    QTRY_VERIFY(items().first()->menu());
    auto &manager = m_host->plugins().manager();
    manager.disablePlugin(manager.plugins().value(u"com.example.words"_s));
    QTRY_VERIFY(!items().first()->menu());
}

void tst_DataMenu::failuresAreSaid()
{
    installSupplier("{ throw new Error('No words today'); }");
    auto &window = startActive();
    window.document()->setSelection({layer(u"one"_s)});
    QTRY_VERIFY(items().first()->menu());
    choose({u"Insert"_s, u"Fill with Data"_s, u"Words  More"_s, u"Words"_s});
    QTRY_VERIFY(!m_log.isEmpty());
    QVERIFY2(m_log.first().contains(u"No words today"_s), qPrintable(m_log.first()));
    QCOMPARE(layer(u"one"_s)->text().value_or(QString()), u"1"_s);
    QCOMPARE(window.session().undo().count(), 0);
}

QTEST_MAIN(tst_DataMenu)
#include "tst_datamenu.moc"
