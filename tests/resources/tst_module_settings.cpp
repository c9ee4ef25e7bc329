#include "commands/PluginSettings.h"
#include "resources/ModuleFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray sample =
    R"({"name": "Sample", "layers": [{"id": "a", "name": "A", "type": "oval"}], "selection": ["a"]})";

const QByteArray prologue = R"(
    const settings = require('korvan/settings');
    const show = (value) => print(JSON.stringify(value) ?? 'undefined');
    const attempt = (work) => { try { work(); print('no error'); } catch (error) { print(`${error.name}: ${error.message}`); } };
)";

} // namespace

class tst_Module_Settings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void calls_data();
    void calls();
    void valuesSurviveTheSession();
    void valuesOnLayersAreTheCommands();
    void valuesOnLayersAreUndone();
    void otherPluginsSeeNothing();
    void aFolderThatCannotBeWrittenIsAnError();

private:
    std::unique_ptr<ModuleFixture> m_fixture;
};

void tst_Module_Settings::init()
{
    m_fixture = std::make_unique<ModuleFixture>();
    m_fixture->setDocument(sample);
}

void tst_Module_Settings::cleanup()
{
    m_fixture.reset();
}

void tst_Module_Settings::calls_data()
{
    QTest::addColumn<QByteArray>("statements");
    QTest::addColumn<QString>("expected");

    const auto row = [](const char *tag, const char *statements, const QString &expected) {
        QTest::newRow(tag) << QByteArray(statements) << expected;
    };
    const auto kinds = u"Settings are texts, numbers, booleans, null, and arrays and plain objects of them."_s;
    const auto notUpdated = u"TypeError: update() takes a plain object with the new values, but was given %1.\n"_s;
    const auto updating =
        notUpdated.arg(u"an instance of a class"_s).repeated(2) + notUpdated.arg(u"an array"_s) + u"[]"_s;
    row("nothing",
        "show(settings.get('a')); show(settings.get('a', 7)); show(settings.has('a')); show(settings.keys())",
        u"undefined\n7\nfalse\n[]"_s);
    row("a value",
        "settings.set('a', { b: [1, null, 'x', true, 1.5] }); show(settings.get('a')); show(settings.has('a'))",
        uR"({"b":[1,null,"x",true,1.5]})"
        u"\ntrue"_s);
    row("null is a value", "settings.set('a', null); show(settings.get('a', 7)); show(settings.has('a'))",
        u"null\ntrue"_s);
    row("copies", "const v = [1]; settings.set('a', v); v.push(2); settings.get('a').push(3); show(settings.get('a'))",
        u"[1]"_s);
    row("deleting",
        "settings.set('a', 1); show(settings.delete('a')); show(settings.delete('a')); show(settings.all())",
        u"true\nfalse\n{}"_s);
    row("several at once",
        "settings.update({ a: 1, b: 2 }); show(settings.all()); settings.clear(); show(settings.keys())",
        u"{\"a\":1,\"b\":2}\n[]"_s);
    row("keys that objects have",
        "settings.set('toString', 1); show(settings.has('valueOf')); show(settings.get('toString'))", u"false\n1"_s);
    row("undefined", "attempt(() => settings.set('a'))",
        u"TypeError: The setting \"a\" cannot be undefined. Use delete('a') to remove it."_s);
    row("a date inside", "attempt(() => settings.set('a', { when: [new Date(0)] })); show(settings.keys())",
        u"TypeError: The setting \"a\" cannot be kept: a.when[0] is a Date (keep its toISOString()). Settings are "
        u"texts, "
        "numbers, booleans, null, and arrays and plain objects of them.\n[]"_s);
    row("no number", "attempt(() => settings.set('a', 1 / 0))",
        u"TypeError: The setting \"a\" cannot be kept: a is Infinity. Settings are texts, numbers, booleans, null, and "
        "arrays and plain objects of them."_s);
    row("a circle", "const v = {}; v.self = v; attempt(() => settings.set('a', v))",
        u"TypeError: The setting \"a\" cannot be kept: a.self is inside itself. Settings are texts, numbers, booleans, "
        "null, and arrays and plain objects of them."_s);
    row("an instance", "attempt(() => settings.set('a', new Map()))",
        u"TypeError: The setting \"a\" cannot be kept: a is an instance of a class. Settings are texts, numbers, "
        "booleans, null, and arrays and plain objects of them."_s);
    row("a promise", "attempt(() => settings.set('a', Promise.resolve(1)))",
        u"TypeError: The setting \"a\" cannot be kept: a is a promise (await it first). Settings are texts, numbers, "
        "booleans, null, and arrays and plain objects of them."_s);
    row("no key", "attempt(() => settings.get()); attempt(() => settings.set('', 1))",
        u"TypeError: The key of a setting has to be a text, but is nothing (undefined).\n"
        "TypeError: The key of a setting cannot be empty."_s);
    row("too much", "attempt(() => settings.set('a', 'x'.repeat(1100000)))",
        u"Error: The settings of a plug-in hold at most 1048576 bytes as JSON, which these would exceed. Keep less of "
        "them: take out what is not needed any more, or what can be made anew."_s);
    row("on a layer",
        "const on = settings.of(context.selection[0]); on.set('a', 1); show(on.get('a')); show(on.all()); "
        "show(settings.all()); show(settings.of(require('korvan/dom').from(context.selection[0])).get('a'))",
        u"1\n{\"a\":1}\n{}\n1"_s);
    row("on a document",
        "const on = settings.of(context.document); on.update({ a: 1, b: 2 }); on.delete('a'); show(on.all()); "
        "on.clear(); show(context.document.userInfo())",
        u"{\"b\":2}\nnull"_s);
    row("what JSON would change, on a layer too",
        "const keep = (v) => { for (const s of [settings, settings.of(context.selection[0])]) { "
        "try { s.set('a', v); show('kept'); } catch (e) { show(e.message.startsWith('The setting \"a\"')); } "
        "show(s.keys()); } }; keep('\\ud800'); keep([1, , 2])",
        u"true\n[]\ntrue\n[]\ntrue\n[]\ntrue\n[]"_s);
    row("says what JSON would change",
        "for (const v of ['\\ud800', [1, , 2], { '\\ud800': 1 }]) attempt(() => settings.set('a', v)); "
        "attempt(() => settings.set('\\ud800', 1))",
        u"TypeError: The setting \"a\" cannot be kept: a has half of a character in it. "_s + kinds
            + u"\nTypeError: The setting \"a\" cannot be kept: a[1] is a gap in the array. "_s + kinds
            + u"\nTypeError: The setting \"a\" cannot be kept: a key in a has half of a character in it. "_s + kinds
            + u"\nTypeError: The key of a setting has half of a character in it."_s);
    row("as deep as JSON goes, and deeper",
        "const nested = (n) => { let v = 1; while (n-- > 0) v = [v]; return v; }; settings.set('a', nested(499)); "
        "attempt(() => settings.set('b', nested(100000))); show(settings.keys())",
        u"TypeError: The setting \"b\" cannot be kept: it is nested more than 499 levels deep. "_s + kinds
            + u"\n[\"a\"]"_s);
    row("functions taken out of the module",
        "const { get, set, has, all } = settings; set('a', 1); show([get('a'), has('a'), all()])",
        u"[1,true,{\"a\":1}]"_s);
    row("what is no plain object, on a layer too",
        "for (const s of [settings, settings.of(context.selection[0])]) { attempt(() => s.update(new Map([['a', "
        "1]]))); "
        "attempt(() => s.update(new (class A { b = 1; }))); attempt(() => s.update([1])); show(s.keys()); }",
        QStringList{updating, updating}.join(u'\n'));
    row("on nothing", "attempt(() => settings.of('a')); attempt(() => settings.of(null))",
        u"TypeError: of() takes a layer or a document, but was given the text \"a\".\n"
        "TypeError: of() takes a layer or a document, but was given null."_s);
}

void tst_Module_Settings::calls()
{
    QFETCH(QByteArray, statements);
    QFETCH(QString, expected);
    QCOMPARE(m_fixture->run(prologue + statements).join(u'\n'), expected);
}

void tst_Module_Settings::valuesSurviveTheSession()
{
    QCOMPARE(m_fixture->run(prologue + "settings.set('a', 1)"), QStringList());
    QCOMPARE(m_fixture->run(prologue + "show(settings.get('a'))"), QStringList{u"1"_s});
}

void tst_Module_Settings::valuesOnLayersAreTheCommands()
{
    const auto lines = m_fixture->run(prologue
        + "settings.of(context.selection[0]).set('a', [1]); "
          "show(context.command.valueForKey_onLayer('a', context.selection[0]))");
    QCOMPARE(lines, QStringList{u"[1]"_s});
    QCOMPARE(m_fixture->document->layerWithID(u"a"_s)->userInfo(),
        std::optional(QVariantMap{{u"com.example.tidy"_s, QVariantMap{{u"a"_s, QVariantList{1LL}}}}}));
}

void tst_Module_Settings::valuesOnLayersAreUndone()
{
    m_fixture->run(
        prologue + "settings.of(context.selection[0]).set('a', 1); settings.of(context.document).set('b', 2)");
    QVERIFY(m_fixture->document->userInfo());
    m_fixture->document->history().undo();
    QCOMPARE(jsonFromDocument(*m_fixture->document), jsonFromDocument(*documentFromJSON(sample).value()));
}

void tst_Module_Settings::otherPluginsSeeNothing()
{
    QCOMPARE(PluginSettings(u"com.example.other"_s).setValues({{u"a"_s, 1LL}}), std::nullopt);
    QCOMPARE(m_fixture->run(prologue + "show(settings.all())"), QStringList{u"{}"_s});
}

void tst_Module_Settings::aFolderThatCannotBeWrittenIsAnError()
{
    QFile blocking(m_fixture->environment.path(u"support"_s));
    QVERIFY(blocking.open(QIODevice::WriteOnly));
    const auto lines = m_fixture->run(prologue + "attempt(() => settings.set('a', 1)); show(settings.all())");
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines.first().startsWith(u"Error: "_s), qPrintable(lines.first()));
    QCOMPARE(lines.last(), u"{}"_s);
}

QTEST_GUILESS_MAIN(tst_Module_Settings)
#include "tst_module_settings.moc"
