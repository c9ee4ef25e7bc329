#include "commands/DataSuppliers.h"
#include "resources/ModuleFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray sample =
    R"({"layers": [{"id": "a", "type": "text"}, {"id": "b", "type": "text"}, {"id": "c", "type": "text"}]})";

/// What was answered, nil as "-"; the error's text with "error: " before it; "" while nothing was.
struct Answer
{
    QString text;
    int calls = 0;

    DataSuppliers::Answer callback()
    {
        return [this](const Result<DataSuppliers::Values> &values) {
            ++calls;
            if (!values) {
                text = u"error: "_s + values.error().localizedDescription;
                return;
            }
            QStringList texts;
            for (const auto &value : values.value())
                texts.append(value.value_or(u"-"_s));
            text = texts.join(u' ');
        };
    }
};

} // namespace

class tst_Module_DataSupplier : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void values_data();
    void values();
    void failuresAreLogged();
    void registeringKeepsTheCommandRunning();
    void theSessionsEndTakesSuppliersBack();
    void requestsFailWithTheSession();
    void wrongRegistrations_data();
    void wrongRegistrations();
    void onlyForPluginsThatSaySo();
    void onlyWhereSomebodyAsks();

private:
    DataSuppliers::Layers layers() const;

    std::unique_ptr<DataSuppliers> m_suppliers;
    std::unique_ptr<ModuleFixture> m_fixture;
};

void tst_Module_DataSupplier::init()
{
    m_suppliers = std::make_unique<DataSuppliers>();
    m_fixture = std::make_unique<ModuleFixture>("\"suppliesData\": true,");
    m_fixture->manager.suppliers = m_suppliers.get();
    m_fixture->setDocument(sample);
}

void tst_Module_DataSupplier::cleanup()
{
    m_fixture.reset();
    m_suppliers.reset();
}

DataSuppliers::Layers tst_Module_DataSupplier::layers() const
{
    const auto all = m_fixture->document->layers();
    return {all.begin(), all.end()};
}

void tst_Module_DataSupplier::values_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("supply");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *tag, const char *kind, const char *supply, const QString &expected) {
        QTest::newRow(tag) << QByteArray(kind) << QByteArray(supply) << expected;
    };
    const auto failed = u"error: The data supplier \"Cities\" has failed: "_s;
    row("an array", "text", "() => ['x', 'y', 'z']", u"x y z"_s);
    row("numbers", "text", "({ layers, count }) => layers.map((layer, i) => i + count)", u"3 4 5"_s);
    row("live layers", "text", "({ layers }) => layers.map((layer) => layer.document.layers.length + layer.id)",
        u"3a 3b 3c"_s);
    row("fewer", "text", "() => ['x']", u"x - -"_s);
    row("gaps", "text", "() => [null, 'y', undefined]", u"- y -"_s);
    row("under ids", "text", "() => ({ b: 'y', none: 'n' })", u"- y -"_s);
    row("a map", "text", "({ layers }) => new Map([['a', 'x'], [layers[2], 'z']])", u"x - z"_s);
    row("a promise", "text", "async () => { await null; return ['x', 'y', 'z']; }", u"x y z"_s);
    row("paths and URLs of images", "image",
        "() => ['/a.png', 'https://example.com/b.png', 'data:image/png;base64,AA==']",
        u"/a.png https://example.com/b.png data:image/png;base64,AA=="_s);
    row("an image that is no path", "image", "() => ['a.png']",
        failed
            + u"TypeError: The value 0 that it has answered is the text \"a.png\", but has to be "
              u"a "
              "whole path or a URL. That of an image in the plug-in's Resources is "
              "context.plugin.urlForResourceNamed('NAME')."_s);
    row("too many", "text", "() => ['x', 'y', 'z', 'more']",
        failed + u"RangeError: It has answered 4 values for 3 layers."_s);
    row("no values", "text", "() => 5",
        failed
            + u"TypeError: It has to answer an array with a value for each layer, or an object "
              u"with "
              "values under the layers' ids, but has answered the number 5."_s);
    row("a value that is no text", "text", "() => ['x', {}]",
        failed
            + u"TypeError: The value 1 that it has answered is an object, but has to be a text or "
              u"a "
              "number."_s);
    row("thrown", "text", "() => { throw new Error('no network'); }", failed + u"Error: no network"_s);
    row("thrown without a text", "text", "() => { throw { toString() { throw new Error('no'); } }; }",
        failed + u"it has thrown something that is no error and has no text."_s);
    row("rejected", "text", "() => Promise.reject('no network')", failed + u"no network"_s);
}

void tst_Module_DataSupplier::values()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, supply);
    QFETCH(QString, expected);
    m_fixture->run("require('korvan/data-supplier').register({ id: 'cities', name: 'Cities', kind: '" + kind
        + "', supply: " + supply + " })");
    const auto suppliers = m_suppliers->suppliers();
    QCOMPARE(suppliers.size(), 1);
    QCOMPARE(suppliers.first().pluginIdentifier, u"com.example.tidy"_s);
    QCOMPARE(suppliers.first().identifier, u"cities"_s);
    QCOMPARE(suppliers.first().name, u"Cities"_s);
    QCOMPARE(suppliers.first().kind, kind == "text" ? DataSupplier::Kind::Text : DataSupplier::Kind::Image);

    Answer answer;
    m_suppliers->supply(suppliers.first(), layers(), answer.callback());
    m_fixture->settle();
    QCOMPARE(answer.text, expected);
    QCOMPARE(answer.calls, 1);
}

void tst_Module_DataSupplier::failuresAreLogged()
{
    m_fixture->run("require('korvan/data-supplier').register({ name: 'Cities', kind: 'text', supply: () => 5 })");
    Answer answer;
    m_suppliers->supply(m_suppliers->suppliers().first(), layers(), answer.callback());
    QCOMPARE(m_fixture->settle(), QStringList{answer.text});
    QVERIFY(m_fixture->isRunning());
}

void tst_Module_DataSupplier::registeringKeepsTheCommandRunning()
{
    m_fixture->runScript(
        "const supplier = require('korvan/data-supplier');"
        "function onRun() { for (const name of ['A', 'B', 'A']) supplier.register({ name, kind: 'text', "
        "supply: () => [name] }) }"
        "function end() { print(supplier.unregister('A'), supplier.unregister('B'), "
        "supplier.unregister('B')) }");
    QVERIFY(m_fixture->isRunning());
    QStringList names;
    const auto suppliers = m_suppliers->suppliers();
    for (const auto &supplier : suppliers)
        names.append(supplier.name);
    QCOMPARE(names, QStringList({u"B"_s, u"A"_s}));
    m_fixture->command->session()->callFunctionNamed(u"end"_s, {});
    m_fixture->settle();
    QVERIFY(!m_fixture->isRunning());
    QCOMPARE(m_suppliers->suppliers().size(), 0);
}

void tst_Module_DataSupplier::theSessionsEndTakesSuppliersBack()
{
    m_fixture->run("require('korvan/data-supplier').register({ name: 'Cities', kind: 'text', supply: () => [] })");
    const auto supplier = m_suppliers->suppliers().first();
    m_fixture->command->abandonSession();
    QCOMPARE(m_suppliers->suppliers().size(), 0);
    Answer answer;
    m_suppliers->supply(supplier, layers(), answer.callback());
    QCOMPARE(answer.text, u"error: The plug-in \"com.example.tidy\" offers no \"Cities\" any more."_s);
}

void tst_Module_DataSupplier::requestsFailWithTheSession()
{
    m_fixture->run("require('korvan/data-supplier').register({ name: 'Cities', kind: 'text', "
                   "supply: () => new Promise(() => {}) })");
    Answer answer;
    m_suppliers->supply(m_suppliers->suppliers().first(), layers(), answer.callback());
    m_fixture->settle();
    QCOMPARE(answer.calls, 0);
    m_fixture->command->abandonSession();
    QCOMPARE(answer.text, u"error: The plug-in ended before it had the values."_s);
    QCOMPARE(answer.calls, 1);
}

void tst_Module_DataSupplier::wrongRegistrations_data()
{
    QTest::addColumn<QByteArray>("options");
    QTest::addColumn<QString>("expected");

    QTest::newRow("no name") << QByteArray("{ kind: 'text', supply() {} }")
                             << u"The name of a supplier has to be a text, but is nothing (undefined)."_s;
    QTest::newRow("no kind")
        << QByteArray("{ name: 'A', supply() {} }")
        << u"The kind of a supplier has to be \"text\" or \"image\", but is nothing (undefined)."_s;
    QTest::newRow("no function") << QByteArray("{ name: 'A', kind: 'text' }")
                                 << u"The supply of a supplier has to be a function, but is nothing (undefined)."_s;
    QTest::newRow("something else")
        << QByteArray("{ name: 'A', kind: 'text', supplies() {} }")
        << u"register() knows no option \"supplies\". Did you mean \"supply\"? It knows: id, "
           "name, kind, supply."_s;
}

void tst_Module_DataSupplier::wrongRegistrations()
{
    QFETCH(QByteArray, options);
    QFETCH(QString, expected);
    const auto lines = m_fixture->run(
        "try { require('korvan/data-supplier').register(" + options + ") } catch (e) { print(e.message) }");
    QCOMPARE(lines, QStringList{expected});
    QCOMPARE(m_suppliers->suppliers().size(), 0);
    QVERIFY(!m_fixture->isRunning());
}

void tst_Module_DataSupplier::onlyForPluginsThatSaySo()
{
    ModuleFixture fixture;
    fixture.manager.suppliers = m_suppliers.get();
    const auto lines =
        fixture.run("try { require('korvan/data-supplier').register({ name: 'A', kind: 'text', supply() {} "
                    "}) } catch (e) { print(e.message) }");
    QCOMPARE(lines,
        QStringList{u"Only plug-ins whose manifest says \"suppliesData\": true can register data suppliers. "
                    "Add that to the manifest."_s});
}

void tst_Module_DataSupplier::onlyWhereSomebodyAsks()
{
    m_fixture->manager.suppliers = nullptr;
    const auto lines =
        m_fixture->run("try { require('korvan/data-supplier').register({ name: 'A', kind: 'text', supply() "
                       "{} }) } catch (e) { print(e.message) }");
    QCOMPARE(lines, QStringList{u"This application asks no plug-ins for data."_s});
}

QTEST_GUILESS_MAIN(tst_Module_DataSupplier)
#include "tst_module_datasupplier.moc"
