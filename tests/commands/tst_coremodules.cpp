#include "commands/CoreModules.h"
#include "commands/KRPluginCommand.h"
#include "platform/FileURL.h"
#include "platform/UserDefaults.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QFile>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// All modules, and their files below the folder that holds them.
const QMap<QString, QString> files{
    {u"korvan"_s, u"KorvanAPI.js"_s},
    {u"korvan/async"_s, u"KorvanAPI_async.js"_s},
    {u"korvan/data-supplier"_s, u"KorvanAPI_data-supplier.js"_s},
    {u"korvan/dom"_s, u"KorvanAPI_dom.js"_s},
    {u"korvan/settings"_s, u"KorvanAPI_settings.js"_s},
    {u"korvan/ui"_s, u"KorvanAPI_ui.js"_s},
    {u"buffer"_s, u"core-modules/@krpm/buffer/index.js"_s},
    {u"console"_s, u"core-modules/@krpm/console/index.js"_s},
    {u"events"_s, u"core-modules/@krpm/events/index.js"_s},
    {u"os"_s, u"core-modules/@krpm/os/index.js"_s},
    {u"path"_s, u"core-modules/@krpm/path/index.js"_s},
    {u"process"_s, u"core-modules/@krpm/process/index.js"_s},
    {u"querystring"_s, u"core-modules/@krpm/querystring/index.js"_s},
    {u"stream"_s, u"core-modules/@krpm/stream/index.js"_s},
    {u"string_decoder"_s, u"core-modules/@krpm/string_decoder/index.js"_s},
    {u"timers"_s, u"core-modules/@krpm/timers/index.js"_s},
    {u"util"_s, u"core-modules/@krpm/util/index.js"_s},
};

COScript::CoreModules modulesBelow(const QString &folder)
{
    COScript::CoreModules modules;
    for (auto file = files.begin(); file != files.end(); ++file)
        modules.insert(file.key(), fileURLFromPath(folder + u'/' + file.value(), FileKind::File));
    return modules;
}

} // namespace

class tst_CoreModules : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void resourcesWithoutALocation();
    void missingResourcesAreLeftOut();
    void folderHoldsAllModules_data();
    void folderHoldsAllModules();
    void anythingElseIsTheKorvanModule_data();
    void anythingElseIsTheKorvanModule();
    void emptyLocationIsNone();
    void commandKeepsTheMapItWasMadeWith();
    void commandHandsModulesToItsScript();
    void servicesOfTheApplicationComeFirst();
    void globals_data();
    void globals();
    void globalsWithoutResources();

private:
    void makeResources() const;
    void setLocation(const QVariant &location)
    {
        m_environment->userDefaults().setValue(u"KorvanAPILocation"_s, location);
    }

    std::unique_ptr<TestEnvironment> m_environment;
};

void tst_CoreModules::init()
{
    m_environment = std::make_unique<TestEnvironment>();
}

void tst_CoreModules::cleanup()
{
    m_environment.reset();
}

void tst_CoreModules::makeResources() const
{
    for (const auto &file : files)
        writeFile(m_environment->path(u"resources/"_s + file), "module.exports = 'resource';");
}

void tst_CoreModules::resourcesWithoutALocation()
{
    makeResources();
    QCOMPARE(files.size(), 17);
    QCOMPARE(coreModulesOfApplication(), modulesBelow(m_environment->path(u"resources"_s)));
}

void tst_CoreModules::missingResourcesAreLeftOut()
{
    makeResources();
    QVERIFY(QFile::remove(m_environment->path(u"resources/KorvanAPI_dom.js"_s)));
    auto expected = modulesBelow(m_environment->path(u"resources"_s));
    expected.remove(u"korvan/dom"_s);
    QCOMPARE(coreModulesOfApplication(), expected);
}

void tst_CoreModules::folderHoldsAllModules_data()
{
    QTest::addColumn<bool>("isLink");
    QTest::newRow("folder") << false;
    QTest::newRow("link to a folder") << true;
}

void tst_CoreModules::folderHoldsAllModules()
{
    QFETCH(bool, isLink);
    makeResources();
    writeFile(m_environment->path(u"api/unrelated.txt"_s), "");
    QVERIFY(QFile::link(m_environment->path(u"api"_s), m_environment->path(u"link"_s)));
    const auto location = m_environment->path(isLink ? u"link"_s : u"api"_s);
    setLocation(location);
    // Whether their files exist is not looked at.
    QCOMPARE(coreModulesOfApplication(), modulesBelow(location));
}

void tst_CoreModules::anythingElseIsTheKorvanModule_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("file") << u"api.js"_s;
    QTest::newRow("missing path") << u"missing/api.js"_s;
}

void tst_CoreModules::anythingElseIsTheKorvanModule()
{
    QFETCH(QString, name);
    makeResources();
    writeFile(m_environment->path(u"api.js"_s), "");
    setLocation(m_environment->path(name));
    auto expected = modulesBelow(m_environment->path(u"resources"_s));
    expected.insert(u"korvan"_s, fileURLFromPath(m_environment->path(name), FileKind::File));
    QCOMPARE(coreModulesOfApplication(), expected);
}

void tst_CoreModules::emptyLocationIsNone()
{
    makeResources();
    setLocation(u""_s);
    QCOMPARE(coreModulesOfApplication(), modulesBelow(m_environment->path(u"resources"_s)));
}

void tst_CoreModules::commandKeepsTheMapItWasMadeWith()
{
    makeResources();
    const KRPluginCommand earlier(nullptr, u"a"_s, u"A"_s, u"onRun"_s, KRPluginCommand::Scope::Document);
    writeFile(m_environment->path(u"api/KorvanAPI.js"_s), "");
    setLocation(m_environment->path(u"api"_s));
    const KRPluginCommand later(nullptr, u"a"_s, u"A"_s, u"onRun"_s, KRPluginCommand::Scope::Document);
    QCOMPARE(earlier.coreModuleMap(), modulesBelow(m_environment->path(u"resources"_s)));
    QCOMPARE(later.coreModuleMap(), modulesBelow(m_environment->path(u"api"_s)));
}

void tst_CoreModules::commandHandsModulesToItsScript()
{
    makeResources();
    const auto script =
        std::make_shared<KRPluginScript>(u"function onRun() { return require('korvan/dom'); }"_s, u"a.js"_s);
    const auto command =
        std::make_shared<KRPluginCommand>(script, u"a"_s, u"A"_s, u"onRun"_s, KRPluginCommand::Scope::Document);
    QCOMPARE(command->run({}, nullptr), std::optional(u""_s));
    QCOMPARE(command->returnValue(), u"resource"_s);
}

namespace {

std::shared_ptr<KRPluginCommand> commandReturning(const QString &expression)
{
    const auto script =
        std::make_shared<KRPluginScript>(u"function onRun() { return %1; }"_s.arg(expression), u"a.js"_s);
    return std::make_shared<KRPluginCommand>(script, u"a"_s, u"A"_s, u"onRun"_s, KRPluginCommand::Scope::Document);
}

} // namespace

void tst_CoreModules::servicesOfTheApplicationComeFirst()
{
    makeResources();
    writeFile(m_environment->path(u"resources/KorvanAPI.js"_s), "module.exports = require('host:application').version");
    const auto command = commandReturning(u"require('korvan')"_s);
    command->run({}, nullptr);
    QCOMPARE(command->returnValue(), u"98.3"_s);
    m_environment->services.insert(u"application"_s, QVariantMap{{u"version"_s, u"own"_s}});
    command->run({}, nullptr);
    QCOMPARE(command->returnValue(), u"own"_s);
    QCOMPARE(m_environment->serviceOwner, command);
}

void tst_CoreModules::globals_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("global");
    const auto row = [](const char *package, std::initializer_list<const char *> globals) {
        for (const char *const global : globals) {
            QTest::newRow(global) << u"core-modules/@krpm/%1/index.js"_s.arg(QLatin1StringView(package))
                                  << QString::fromLatin1(global);
        }
    };
    row("buffer", {"Buffer"});
    row("event-target", {"AbortController", "AbortSignal", "DOMException", "Event", "EventTarget"});
    row("fetch", {"Blob", "Headers", "Request", "Response", "fetch"});
    row("text-encoding", {"TextDecoder", "TextEncoder"});
    row("url", {"URL", "URLSearchParams"});
    row("base64", {"atob", "btoa"});
    row("performance", {"performance"});
    row("structured-clone", {"structuredClone"});
}

void tst_CoreModules::globals()
{
    QFETCH(QString, file);
    QFETCH(QString, global);
    writeFile(m_environment->path(u"resources/"_s + file), u"exports.%1 = 'found'"_s.arg(global).toUtf8());
    const auto command = commandReturning(global);
    command->run({}, nullptr);
    QCOMPARE(command->returnValue(), u"found"_s);
}

void tst_CoreModules::globalsWithoutResources()
{
    const auto command = commandReturning(u"typeof fetch + typeof Buffer + typeof process"_s);
    command->run({}, nullptr);
    QCOMPARE(command->returnValue(), u"undefinedundefinedundefined"_s);
}

QTEST_GUILESS_MAIN(tst_CoreModules)
#include "tst_coremodules.moc"
