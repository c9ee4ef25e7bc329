// "korvan" and "korvan/async".

#include "resources/ModuleFixture.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_Module_Korvan : public QObject
{
    Q_OBJECT

private slots:
    void exportsTheOthersAndTheVersion();
    void pluginsHaveNoServices();
    void holdsKeepTheCommandRunning();
    void everyHoldCounts();
    void workKeepsTheCommandRunning();
    void holdsEndWithTheSession();
};

void tst_Module_Korvan::exportsTheOthersAndTheVersion()
{
    ModuleFixture fixture;
    const auto lines = fixture.run(R"(
        const korvan = require('korvan');
        print(Object.keys(korvan).join(' '));
        print(korvan.version);
        for (const name of ['async', 'data-supplier', 'dom', 'settings', 'ui'])
            print(require(`korvan/${name}`) === korvan[name === 'data-supplier' ? 'dataSupplier' : name]);
        const { dom, settings } = korvan;
        print(typeof dom.documents + typeof settings.get);
    )");
    QCOMPARE(lines,
        QStringList({u"async dataSupplier dom settings ui version"_s, u"98.3"_s, u"true"_s, u"true"_s, u"true"_s,
            u"true"_s, u"true"_s, u"functionfunction"_s}));
}

void tst_Module_Korvan::pluginsHaveNoServices()
{
    ModuleFixture fixture;
    const auto lines = fixture.run("try { require('host:settings'); print('there') } catch (e) { print(e.code) }");
    QCOMPARE(lines, QStringList{u"MODULE_NOT_FOUND"_s});
}

void tst_Module_Korvan::holdsKeepTheCommandRunning()
{
    ModuleFixture fixture;
    fixture.runScript("var hold; function onRun() { hold = require('korvan/async').hold(); print(hold.isEnded) }"
                      "function end() { hold.end(); hold.end(); print(hold.isEnded) }");
    QVERIFY(fixture.isRunning());
    fixture.command->session()->callFunctionNamed(u"end"_s, {});
    QCOMPARE(fixture.settle(), QStringList{u"true"_s});
    QVERIFY(!fixture.isRunning());
}

void tst_Module_Korvan::everyHoldCounts()
{
    ModuleFixture fixture;
    fixture.runScript(
        "var holds; function onRun() { const { hold } = require('korvan/async'); holds = [hold(), hold()] }"
        "function end() { holds.pop().end() }");
    fixture.command->session()->callFunctionNamed(u"end"_s, {});
    fixture.settle();
    QVERIFY(fixture.isRunning());
    fixture.command->session()->callFunctionNamed(u"end"_s, {});
    fixture.settle();
    QVERIFY(!fixture.isRunning());
}

void tst_Module_Korvan::workKeepsTheCommandRunning()
{
    ModuleFixture fixture;
    fixture.runScript(
        "let finish; function onRun() { require('korvan/async').whileRunning(() => new Promise((resolve) => "
        "{ finish = resolve; })).then(print) } function end() { finish('done') }");
    QVERIFY(fixture.isRunning());
    fixture.command->session()->callFunctionNamed(u"end"_s, {});
    QCOMPARE(fixture.settle(), QStringList{u"done"_s});
    QVERIFY(!fixture.isRunning());

    QCOMPARE(fixture.run("try { await require('korvan/async').whileRunning(5) } catch (e) { print(e.message) }"),
        QStringList{u"What whileRunning() runs has to be a function, but is the number 5."_s});
    fixture.runScript("function onRun() { require('korvan/async').whileRunning(() => { throw new Error('failed') })"
                      ".catch((e) => print(e.message)) }");
    QVERIFY(!fixture.isRunning());
}

void tst_Module_Korvan::holdsEndWithTheSession()
{
    ModuleFixture fixture;
    fixture.run("require('korvan/async').hold()");
    QVERIFY(fixture.isRunning());
    fixture.command->abandonSession();
    QVERIFY(!fixture.isRunning());
}

QTEST_GUILESS_MAIN(tst_Module_Korvan)
#include "tst_module_korvan.moc"
