// The commands that a manifest lists, the menu made of them, and what scripts see of their plug-in.

#include "bundles/KRPluginBundle.h"
#include "commands/KRPluginCommand.h"
#include "support/BundleBuilder.h"
#include "support/FakeCommandManager.h"
#include "support/NilableText.h"
#include "support/TestEnvironment.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_KRPluginBundle_Commands : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void comeInTheManifestsOrder();
    void laterOneOfAnIdentifierCounts();
    void elementsThatAreNoCommands_data();
    void elementsThatAreNoCommands();
    void shareTheirScriptFile();
    void knowTheirBundleWeakly();
    void readTheirBundlesIdentifierLate();
    void fromArray();

    void menuOfTheManifestIsKeptAsItIs();
    void generatedMenu();
    void generatedMenuOfNoCommands();
    void storedMenuTakesItsPlace();
    void scriptDefaultTitle();

    void whatScriptsSee_data();
    void whatScriptsSee();

private:
    std::shared_ptr<KRPluginBundle> bundleWith(const QByteArray &members, const QByteArray &source = {}) const;
    QStringList identifiers(const CommandTable &commands) const;

    std::unique_ptr<TestEnvironment> m_environment;
};

void tst_KRPluginBundle_Commands::init()
{
    m_environment = std::make_unique<TestEnvironment>();
}

void tst_KRPluginBundle_Commands::cleanup()
{
    m_environment.reset();
}

std::shared_ptr<KRPluginBundle> tst_KRPluginBundle_Commands::bundleWith(
    const QByteArray &members, const QByteArray &source) const
{
    return KRPluginBundle::pluginBundleWithURL(BundleBuilder(m_environment->path(u"Plugins"_s), u"Tidy"_s)
                                                   .manifest("{" + members + "}")
                                                   .script(u"a.js"_s, source)
                                                   .url());
}

QStringList tst_KRPluginBundle_Commands::identifiers(const CommandTable &commands) const
{
    QStringList result;
    for (const auto &[identifier, command] : commands)
        result.append(identifier);
    return result;
}

void tst_KRPluginBundle_Commands::comeInTheManifestsOrder()
{
    QByteArray list;
    QStringList expected;
    for (const auto *name : {"z", "a", "ü", "M", "10", "9", "b"}) {
        list += (list.isEmpty() ? "" : ", ") + QByteArray("{\"script\": \"a.js\", \"identifier\": \"") + name + "\"}";
        expected.append(QString::fromUtf8(name));
    }
    QCOMPARE(identifiers(bundleWith("\"commands\": [" + list + "]")->commands()), expected);
}

void tst_KRPluginBundle_Commands::laterOneOfAnIdentifierCounts()
{
    const auto bundle = bundleWith(R"("commands": [
        {"script": "a.js", "identifier": "a", "name": "First"}, {"script": "a.js", "identifier": "b"},
        {"script": "a.js", "identifier": "a", "name": "Second"}])");
    QCOMPARE(bundle->commands().size(), std::size_t(2));
    QCOMPARE(bundle->commands().at(u"a"_s)->name(), Text(u"Second"_s));
}

void tst_KRPluginBundle_Commands::elementsThatAreNoCommands_data()
{
    QTest::addColumn<QByteArray>("element");
    for (const auto *element : {"null", "5", "\"a\"", "[]", "true"})
        QTest::newRow(element) << QByteArray(element);
}

void tst_KRPluginBundle_Commands::elementsThatAreNoCommands()
{
    QFETCH(QByteArray, element);
    const auto bundle = bundleWith("\"commands\": [" + element + R"(, {"script": "a.js", "identifier": "a"}])");
    QCOMPARE(identifiers(bundle->commands()), QStringList{u"a"_s});
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginBundle_Commands::shareTheirScriptFile()
{
    const auto bundle = bundleWith(R"("commands": [{"script": "a.js", "identifier": "a"},
        {"script": "a.js", "identifier": "b"}])");
    QVERIFY(bundle->commands().at(u"a"_s)->script());
    QCOMPARE(bundle->commands().at(u"a"_s)->script(), bundle->commands().at(u"b"_s)->script());
}

void tst_KRPluginBundle_Commands::knowTheirBundleWeakly()
{
    auto bundle = bundleWith(R"("commands": [{"script": "a.js", "identifier": "a"}])");
    const auto command = bundle->commands().at(u"a"_s);
    QCOMPARE(command->pluginBundle().get(), bundle.get());
    bundle.reset();
    QVERIFY(!command->pluginBundle());
}

void tst_KRPluginBundle_Commands::readTheirBundlesIdentifierLate()
{
    const auto bundle = bundleWith(R"("commands": [{"script": "a.js", "identifier": "a"}])");
    const auto specifier = bundle->commands().at(u"a"_s)->commandSpecifier();
    QCOMPARE(specifier.pluginBundleIdentifier(), bundle->identifier());
    QCOMPARE(specifier.commandIdentifier(), Text(u"a"_s));
}

void tst_KRPluginBundle_Commands::fromArray()
{
    const auto bundle = bundleWith("");
    QVERIFY(KRPluginBundle::commandsFromArray(std::nullopt, {}, bundle).empty());
    const QVariantMap element{{u"script"_s, u"a.js"_s}, {u"identifier"_s, u"x"_s}};
    const auto commands = KRPluginBundle::commandsFromArray(QVariantList{5, element},
        QUrl::fromLocalFile(m_environment->path(u"Plugins/Tidy.korvanplugin/Contents/Korvan/"_s)), bundle);
    QCOMPARE(identifiers(commands), QStringList{u"x"_s});
    QCOMPARE(commands.at(u"x"_s)->pluginBundle().get(), bundle.get());
}

void tst_KRPluginBundle_Commands::menuOfTheManifestIsKeptAsItIs()
{
    const auto bundle =
        bundleWith(R"("menu": {"isRoot": true, "odd": 5, "items": ["-", 5, null, {"items": ["x"]}], "title": 7})");
    QCOMPARE(bundle->menuDescription(),
        (QVariantMap{{u"isRoot"_s, true}, {u"odd"_s, 5}, {u"title"_s, 7},
            {u"items"_s,
                QVariantList{
                    u"-"_s, 5, QVariant::fromValue(nullptr), QVariantMap{{u"items"_s, QVariantList{u"x"_s}}}}}}));
}

void tst_KRPluginBundle_Commands::generatedMenu()
{
    const auto bundle = bundleWith(R"("name": "Tidy It", "commands": [
        {"script": "a.js", "identifier": "z", "handler": "onRun"},
        {"script": "a.js", "identifier": "none", "handlers": {"actions": {"Save": "onSave"}}},
        {"script": "a.js", "identifier": "a", "handlers": {"run": "onRun"}}])");
    QCOMPARE(bundle->menuDescription(),
        (QVariantMap{{u"title"_s, u"Tidy It"_s}, {u"items"_s, QVariantList{u"z"_s, u"a"_s}}}));
}

void tst_KRPluginBundle_Commands::generatedMenuOfNoCommands()
{
    QCOMPARE(bundleWith("\"name\": \"T\"")->menuDescription(),
        (QVariantMap{{u"title"_s, u"T"_s}, {u"items"_s, QVariantList()}}));
}

void tst_KRPluginBundle_Commands::storedMenuTakesItsPlace()
{
    const auto bundle = bundleWith(R"("commands": [{"script": "a.js", "identifier": "a", "handler": "onRun"}])");
    auto edited = bundle->menuDescription();
    edited.insert(u"title"_s, u"Mine"_s);
    bundle->setMenuDescription(edited);
    QCOMPARE(bundle->menuDescription(), edited);
    bundle->setMenuDescription(std::nullopt);
    QCOMPARE(bundle->menuDescription(), (QVariantMap{{u"title"_s, u"Tidy"_s}, {u"items"_s, QVariantList{u"a"_s}}}));
}

void tst_KRPluginBundle_Commands::scriptDefaultTitle()
{
    QCOMPARE(KRPluginBundle::scriptDefaultTitle(), u"untitled script"_s);
}

void tst_KRPluginBundle_Commands::whatScriptsSee_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char *expression, const QVariant &value) {
        QTest::newRow(expression) << QString::fromLatin1(expression) << value;
    };
    row("context.plugin.name()", u"Tidy It"_s);
    row("context.plugin.identifier()", u"com.example.tidy"_s);
    row("context.plugin.version()", u"2"_s);
    row("context.plugin.isEnabled()", false);
    row("context.plugin.versionedIdentifier()", u"com.example.tidy(2)"_s);
    row("context.plugin.author()", QVariant::fromValue(nullptr));
    row("String(context.plugin.urlForResourceNamed('missing'))", u"null"_s);
    row("context.plugin === context.command.pluginBundle()", true);
    row("Object.keys(context.plugin.commands()).join()", u"a"_s);
    row("context.plugin.commands().a === context.command", true);
}

void tst_KRPluginBundle_Commands::whatScriptsSee()
{
    QFETCH(QString, expression);
    const auto bundle = bundleWith(R"("name": "Tidy It", "identifier": "com.example.tidy", "version": "2",
        "commands": [{"script": "a.js", "identifier": "a", "handler": "onRun"}])",
        "function onRun(context) { return " + expression.toUtf8() + " }");
    FakeCommandManager manager;
    const auto command = bundle->commands().at(u"a"_s);
    const auto log = command->run({}, &manager);
    QCOMPARE(log, Text(u""_s));
    QTEST(command->returnValue(), "value");
}

QTEST_GUILESS_MAIN(tst_KRPluginBundle_Commands)
#include "tst_krpluginbundle_commands.moc"
