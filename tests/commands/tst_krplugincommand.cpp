#include "bundles/KRPluginBundle.h"
#include "commands/KRPluginCommand.h"
#include "commands/KRPluginCommandKeys.h"
#include "support/BundleBuilder.h"
#include "support/NilableText.h"
#include "support/TestCommand.h"
#include "support/TestEnvironment.h"

#include <QtTest>

using namespace Qt::StringLiterals;

using Scope = KRPluginCommand::Scope;

namespace {

/// "key: value" in the dictionary's order; handlers as "key=function,…".
QStringList listing(const OrderedVariantDictionary &metadata)
{
    QStringList lines;
    for (const auto &[key, value] : metadata) {
        auto text = value.toString();
        if (value.metaType() == QMetaType::fromType<OrderedStringDictionary>()) {
            QStringList handlers;
            for (const auto &[name, function] : value.value<OrderedStringDictionary>())
                handlers.append(name + u'=' + function);
            text = handlers.join(u',');
        }
        lines.append(key + u": "_s + text);
    }
    return lines;
}

} // namespace

class tst_KRPluginCommand : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_environment = std::make_unique<TestEnvironment>(); }
    void cleanup() { m_environment.reset(); }

    void keysHaveTheirPublicValues_data();
    void keysHaveTheirPublicValues();
    void actionsThatNeverReload();
    void initializerKeepsEverything();
    void initializerTakesNil();
    void runHandlerInitializerHasNoShortcut();
    void menuItem_data();
    void menuItem();
    void specifierIsMadeOnceAndKept();
    void specifierReadsTheBundleWhenAsked();
    void bundleIsHeldWeakly();
    void metadata_data();
    void metadata();
    void settersChangeWhatTheyName();

private:
    std::unique_ptr<TestEnvironment> m_environment;
};

void tst_KRPluginCommand::keysHaveTheirPublicValues_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");

    QTest::newRow("KRPluginCommandScriptPathKey") << KRPluginCommandScriptPathKey << u"script"_s;
    QTest::newRow("KRPluginCommandNameKey") << KRPluginCommandNameKey << u"name"_s;
    QTest::newRow("KRPluginCommandIdentifierKey") << KRPluginCommandIdentifierKey << u"identifier"_s;
    QTest::newRow("KRPluginCommandHandlersKey") << KRPluginCommandHandlersKey << u"handlers"_s;
    QTest::newRow("KRPluginCommandHandlerKey") << KRPluginCommandHandlerKey << u"handler"_s;
    QTest::newRow("KRPluginCommandShortcutKey") << KRPluginCommandShortcutKey << u"shortcut"_s;
    QTest::newRow("KRPluginCommandScopeKey") << KRPluginCommandScopeKey << u"scope"_s;
    QTest::newRow("KRPluginCommandScopeApplicationValue") << KRPluginCommandScopeApplicationValue << u"application"_s;
    QTest::newRow("KRPluginCommandScopeDocumentValue") << KRPluginCommandScopeDocumentValue << u"document"_s;
    QTest::newRow("KRPluginCommandRunHandlerKey") << KRPluginCommandRunHandlerKey << u"run"_s;
    QTest::newRow("KRPluginCommandSetUpHandlerKey") << KRPluginCommandSetUpHandlerKey << u"setUp"_s;
    QTest::newRow("KRPluginCommandTearDownHandlerKey") << KRPluginCommandTearDownHandlerKey << u"tearDown"_s;
    QTest::newRow("KRPluginCommandActionsKey") << KRPluginCommandActionsKey << u"actions"_s;
    QTest::newRow("KRPluginCommandDocumentChangedHandlerKey")
        << KRPluginCommandDocumentChangedHandlerKey << u"onDocumentChanged"_s;
    QTest::newRow("KRPluginCommandAPILocationKey") << KRPluginCommandAPILocationKey << u"KorvanAPILocation"_s;
    QTest::newRow("KRPluginCommandAlwaysReloadKey") << KRPluginCommandAlwaysReloadKey << u"AlwaysReloadScript"_s;
    QTest::newRow("KRPluginCommandScriptTimeLimitKey")
        << KRPluginCommandScriptTimeLimitKey << u"KRPluginScriptTimeLimit"_s;
}

void tst_KRPluginCommand::keysHaveTheirPublicValues()
{
    QFETCH(QString, key);
    QTEST(key, "value");
}

void tst_KRPluginCommand::actionsThatNeverReload()
{
    QCOMPARE(KRPluginCommand::actionIDsNotToReload(), (QStringList{u"Startup"_s, u"Shutdown"_s}));
}

void tst_KRPluginCommand::initializerKeepsEverything()
{
    const auto script = std::make_shared<KRPluginScript>(u"0"_s, u"a.js"_s);
    const KRPluginCommand command(script, u"id"_s, u"Name"_s, {{u"run"_s, u"go"_s}}, u"cmd k"_s, Scope::Application);
    QCOMPARE(command.script(), script);
    QCOMPARE(command.identifier(), Text(u"id"_s));
    QCOMPARE(command.name(), Text(u"Name"_s));
    QVERIFY(command.handlers() == (HandlerIndex{{u"run"_s, u"go"_s}}));
    QCOMPARE(command.shortcut(), Text(u"cmd k"_s));
    QCOMPARE(command.scope(), Scope::Application);
    QVERIFY(command.canAppearInMenuBar());

    QVERIFY(command.hasNeverRun());
    QVERIFY(!command.errorInScript());
    QVERIFY(!command.stayRunning());
    QCOMPARE(command.session(), nullptr);
    QCOMPARE(command.context(), nullptr);
    QCOMPARE(command.returnValue(), QVariant());
    QCOMPARE(command.executingScript(), nil);
    QCOMPARE(command.manager(), nullptr);
    QCOMPARE(command.logsWhenRunViaTests(), QVariantList());
    QCOMPARE(command.logString(), QString());
}

void tst_KRPluginCommand::initializerTakesNil()
{
    const KRPluginCommand command(nullptr, nil, nil, OrderedVariantDictionary(), nil, Scope::Document);
    QCOMPARE(command.script(), nullptr);
    QCOMPARE(command.identifier(), nil);
    QCOMPARE(command.name(), nil);
    QVERIFY(command.handlers().empty());
    QCOMPARE(command.shortcut(), nil);
    QVERIFY(!command.canAppearInMenuBar());
    QCOMPARE(command.commandSpecifier().stringValue(), nil);
    QCOMPARE(command.menuItemWithAction(nullptr).title, QString());
    QCOMPARE(listing(command.metadata()), QStringList{u"handlers: "_s});
}

void tst_KRPluginCommand::runHandlerInitializerHasNoShortcut()
{
    const KRPluginCommand command(nullptr, u"id"_s, u"Name"_s, u"go"_s, Scope::Document);
    QVERIFY(command.handlers() == (HandlerIndex{{u"run"_s, u"go"_s}}));
    QCOMPARE(command.shortcut(), nil);
}

void tst_KRPluginCommand::menuItem_data()
{
    QTest::addColumn<Text>("shortcut");
    QTest::addColumn<QString>("key");
    QTest::addColumn<unsigned>("modifiers");
    QTest::newRow("with a shortcut") << Text(u"ctrl shift E"_s) << u"e"_s << 0x60000U;
    QTest::newRow("without a shortcut") << nil << u""_s << 0U;
    QTest::newRow("with an empty shortcut") << Text(u""_s) << u""_s << 0U;
}

void tst_KRPluginCommand::menuItem()
{
    QFETCH(Text, shortcut);
    const KRPluginCommand command(
        nullptr, u"id"_s, u"Export…"_s, OrderedVariantDictionary(), shortcut, Scope::Document);
    QStringList chosen;
    const auto item = command.menuItemWithAction([&](const MenuItem &itself) { chosen.append(itself.title); });
    QCOMPARE(item.title, u"Export…"_s);
    QTEST(item.keyEquivalent, "key");
    QTEST(item.keyEquivalentModifierMask, "modifiers");
    QCOMPARE(item.representedObject, QVariant());
    item.action(item);
    QCOMPARE(chosen, QStringList{u"Export…"_s});
    QVERIFY(command.hasNeverRun());
}

void tst_KRPluginCommand::specifierIsMadeOnceAndKept()
{
    const auto bundle = KRPluginBundle::pluginBundleWithURL(
        BundleBuilder(m_environment->path(u"p"_s), u"A"_s).manifest(R"({"identifier": "com.example.a"})").url());
    const auto command = commandWithSource(u"0"_s);
    QCOMPARE(command->commandSpecifier().pluginBundleIdentifier(), nil);
    command->setPluginBundle(bundle);
    QCOMPARE(command->commandSpecifier().stringValue(), Text(u"tidy"_s));
    QCOMPARE(&command->commandSpecifier(), &command->commandSpecifier());
}

void tst_KRPluginCommand::specifierReadsTheBundleWhenAsked()
{
    // The bundle has no identifier while its commands are made: this one is found last.
    BundleBuilder builder(m_environment->path(u"p"_s), u"A"_s);
    builder.manifest(R"({"commands": [{"script": "a.js"}]})").script(u"a.js"_s, "0");
    const auto bundle = KRPluginBundle::pluginBundleWithURL(builder.url());
    const auto &specifier = bundle->commands().at(u"a"_s)->commandSpecifier();
    QCOMPARE(specifier.pluginBundleIdentifier(), bundle->identifier());
    QCOMPARE(specifier.commandIdentifier(), Text(u"a"_s));
}

void tst_KRPluginCommand::bundleIsHeldWeakly()
{
    auto bundle = KRPluginBundle::pluginBundleWithURL(
        BundleBuilder(m_environment->path(u"p"_s), u"A"_s).manifest(R"({"identifier": "com.example.a"})").url());
    const auto command = commandWithSource(u"0"_s);
    command->setPluginBundle(bundle);
    QCOMPARE(command->pluginBundle(), bundle);
    bundle.reset();
    QCOMPARE(command->pluginBundle(), nullptr);
    QCOMPARE(command->commandSpecifier().stringValue(), Text(u"tidy"_s));
}

void tst_KRPluginCommand::metadata_data()
{
    QTest::addColumn<Text>("shortcut");
    QTest::addColumn<int>("scope");
    QTest::addColumn<QStringList>("lines");

    const QStringList always{u"identifier: id"_s, u"name: Name"_s, u"handlers: z=1,X=onX,X.begin=onX,X.finish=onX"_s};
    const auto script = u"script: Export.js"_s;
    QTest::newRow("document scope has no key") << nil << 0 << always + QStringList{script};
    QTest::newRow("application scope") << nil << 1 << always + QStringList{script, u"scope: application"_s};
    QTest::newRow("shortcut") << Text(u"cmd K"_s) << 0 << always + QStringList{u"shortcut: cmd K"_s, script};
    QTest::newRow("empty shortcut is written") << Text(u""_s) << 0 << always + QStringList{u"shortcut: "_s, script};
}

void tst_KRPluginCommand::metadata()
{
    QFETCH(Text, shortcut);
    QFETCH(int, scope);
    writeFile(m_environment->path(u"Tools/Export.js"_s), "0");
    const auto script = KRPluginScript::initWithURL(QUrl::fromLocalFile(m_environment->path(u"Tools/Export.js"_s)));
    const OrderedVariantDictionary handlers{
        {u"z"_s, u"1"_s}, {u"actions"_s, QVariant::fromValue(OrderedVariantDictionary{{u"X"_s, u"onX"_s}})}};
    const KRPluginCommand command(script, u"id"_s, u"Name"_s, handlers, shortcut, Scope(scope));
    QTEST(listing(command.metadata()), "lines");
}

void tst_KRPluginCommand::settersChangeWhatTheyName()
{
    const auto command = commandWithSource(u"0"_s);
    command->setDisableCocoaScriptPreprocessor(true);
    QVERIFY(command->disableCocoaScriptPreprocessor());
    const COScript::CoreModules modules{{u"korvan"_s, QUrl(u"file:///a.js"_s)}};
    command->setCoreModuleMap(modules);
    QCOMPARE(command->coreModuleMap(), modules);
    QVERIFY(command->hasNeverRun());

    command->setErrorInScript(true);
    QVERIFY(command->errorInScript());
    command->setExecutingScript(u"1"_s);
    QCOMPARE(command->executingScript(), Text(u"1"_s));
    const QVariantList logs{QVariantMap{{u"stringValue"_s, u"a"_s}}};
    command->setLogsWhenRunViaTests(logs);
    QCOMPARE(command->logsWhenRunViaTests(), logs);
    QCOMPARE(command->logString(), u"a"_s);
}

QTEST_GUILESS_MAIN(tst_KRPluginCommand)
#include "tst_krplugincommand.moc"
