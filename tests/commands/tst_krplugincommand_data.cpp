// The data that plug-ins keep on layers and documents.

#include "commands/KRPluginCommand.h"
#include "platform/JSONText.h"
#include "support/FakeCommandManager.h"
#include "support/NilableText.h"
#include "support/TestCommand.h"
#include "support/TestEnvironment.h"
#include "support/TestLayer.h"
#include "support/TestPlugin.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

const auto nilMessage =
    u"setValue:forKey:onObject:forPluginIdentifier: requires non-nil values for key, layer and pluginIdentifier"_s;
const auto invalidMessage = u"values passed to setValue:forKey:onObject:forPluginIdentifier:: must be composed of "
                            u"arrays, dictionaries, numbers "
                            "and strings"_s;

QVariantMap withPlugin(const QVariant &values)
{
    return {{u"com.example.tidy"_s, values}};
}

} // namespace

class tst_KRPluginCommand_Data : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void valuesFromScripts_data();
    void valuesFromScripts();
    void everySetterReportsTheSame_data();
    void everySetterReportsTheSame();
    void whatIsMissing_data();
    void whatIsMissing();
    void nullRemovesTheValue();
    void noEmptyDictionaryStays();
    void foreignUserInfoSurvives();
    void readingWhatIsMissing_data();
    void readingWhatIsMissing();
    void nullInsideIsKept();
    void pluginsDoNotSeeEachOther();
    void otherPluginByItsIdentifier();
    void commandWithoutPluginUsesItsSpecifier();
    void keptValueIsACopy();
    void handedOutValueIsACopy();
    void numbersStayNumbersWhenTheDocumentIsSaved_data();
    void numbersStayNumbersWhenTheDocumentIsSaved();
    void largeValue();
    void objectOfAnotherKind();

private:
    /// Runs statements as the plug-in's command; "layer" is the layer. What they have thrown, or "".
    QString run(const QByteArray &statements);
    QStringList errors() const;

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<FakeCommandManager> m_manager;
    std::shared_ptr<TestLayer> m_layer;
    std::shared_ptr<KRPluginCommand> m_command;
    std::unique_ptr<TestPlugin> m_plugin;
};

void tst_KRPluginCommand_Data::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_manager = std::make_unique<FakeCommandManager>();
    m_layer = std::make_shared<TestLayer>();
}

void tst_KRPluginCommand_Data::cleanup()
{
    m_command.reset();
    m_plugin.reset();
    m_layer.reset();
    m_manager.reset();
    m_environment.reset();
}

QString tst_KRPluginCommand_Data::run(const QByteArray &statements)
{
    m_plugin = std::make_unique<TestPlugin>(*m_environment,
        "function onRun(context) { const command = context.command, layer = context.layer; try {" + statements
            + "} catch (error) { return String(error) } return '' }");
    m_command = m_plugin->command();
    m_command->run({{u"layer"_s, QVariant::fromValue(ScriptObjectPointer(m_layer))}}, m_manager.get());
    return m_command->returnValue().toString();
}

QStringList tst_KRPluginCommand_Data::errors() const
{
    QStringList texts;
    const auto entries = m_command->logsWhenRunViaTests();
    for (const auto &entry : entries)
        texts.append(
            entry.toMap().value(u"level"_s).toString() + u": "_s + entry.toMap().value(u"stringValue"_s).toString());
    return texts;
}

void tst_KRPluginCommand_Data::valuesFromScripts_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QByteArray>("kept");

    const auto row = [](const char *tag, const QByteArray &source, const QByteArray &kept) {
        QTest::newRow(tag) << source << kept;
    };
    row("text", "'a'", "\"a\"");
    row("empty text", "''", "\"\"");
    row("whole number", "3", "3");
    row("fraction", "0.5", "0.5");
    row("zero", "0", "0");
    row("boolean", "false", "false");
    row("empty array", "[]", "[]");
    row("empty dictionary", "({})", "{}");
    row("nested", "({a: [1, {b: null}], c: 'd'})", R"({"a":[1,{"b":null}],"c":"d"})");
    row("the same part twice", "(() => { const p = [1]; return {a: p, b: p} })()", R"({"a":[1],"b":[1]})");
    row("object without a prototype", "Object.assign(Object.create(null), {a: 1})", R"({"a":1})");
    row("key named like the prototype", R"(JSON.parse('{"__proto__": {"a": 1}, "b": 2}'))",
        R"({"__proto__":{"a":1},"b":2})");
    row("objects that stand for values", "[new Number(1).valueOf(), String(2)]", "[1,\"2\"]");
}

void tst_KRPluginCommand_Data::valuesFromScripts()
{
    QFETCH(QByteArray, source);
    QFETCH(QByteArray, kept);
    const auto thrown = run("command.setValue_forKey_onLayer(" + source
        + ", 'key', layer);"
          "return JSON.stringify(command.valueForKey_onLayer('key', layer))");
    QCOMPARE(errors(), QStringList());
    QVERIFY(m_layer->info);
    const auto value = m_layer->info->value(u"com.example.tidy"_s).toMap().value(u"key"_s);
    QCOMPARE(jsonFromVariant(value, JSONStyle::Compact), kept);
    QCOMPARE(thrown.toUtf8(), kept); // what the script reads back
}

void tst_KRPluginCommand_Data::everySetterReportsTheSame_data()
{
    QTest::addColumn<QByteArray>("call");

    QTest::newRow("layer") << QByteArray("setValue_forKey_onLayer(VALUE, KEY, layer)");
    QTest::newRow("document") << QByteArray("setValue_forKey_onDocument(VALUE, KEY, layer)");
    QTest::newRow("layer of a plug-in") << QByteArray(
        "setValue_forKey_onLayer_forPluginIdentifier(VALUE, KEY, layer, 'p')");
    QTest::newRow("document of a plug-in")
        << QByteArray("setValue_forKey_onDocument_forPluginIdentifier(VALUE, KEY, layer, 'p')");
    QTest::newRow("object of a plug-in") << QByteArray(
        "setValue_forKey_onObject_forPluginIdentifier(VALUE, KEY, layer, 'p')");
}

void tst_KRPluginCommand_Data::everySetterReportsTheSame()
{
    QFETCH(QByteArray, call);
    auto invalid = call;
    run("command." + invalid.replace("VALUE", "NaN").replace("KEY", "'key'"));
    QCOMPARE(errors(), QStringList{u"error: "_s + invalidMessage});
    auto incomplete = call;
    run("command." + incomplete.replace("VALUE", "1").replace("KEY", "null"));
    QCOMPARE(errors(), QStringList{u"error: "_s + nilMessage});
    QCOMPARE(m_layer->changes, 0);
    run("command." + call.replace("VALUE", "1").replace("KEY", "'key'"));
    QCOMPARE(errors(), QStringList());
    QCOMPARE(m_layer->changes, 1);
}

void tst_KRPluginCommand_Data::whatIsMissing_data()
{
    QTest::addColumn<QByteArray>("arguments");

    QTest::newRow("no key") << QByteArray("1, null, layer, 'p'");
    QTest::newRow("key that is undefined") << QByteArray("1, undefined, layer, 'p'");
    QTest::newRow("no layer") << QByteArray("1, 'key', null, 'p'");
    QTest::newRow("no plug-in") << QByteArray("1, 'key', layer, null");
    QTest::newRow("nothing but a value") << QByteArray("1");
    QTest::newRow("nothing at all") << QByteArray("");
    QTest::newRow("before the value is looked at") << QByteArray("NaN, null, layer, 'p'");
}

void tst_KRPluginCommand_Data::whatIsMissing()
{
    QFETCH(QByteArray, arguments);
    const auto thrown = run("command.setValue_forKey_onObject_forPluginIdentifier(" + arguments + ")");
    QCOMPARE(thrown, QString());
    QCOMPARE(errors(), QStringList{u"error: "_s + nilMessage});
    QCOMPARE(m_layer->changes, 0);
}

void tst_KRPluginCommand_Data::nullRemovesTheValue()
{
    m_layer->info = withPlugin(QVariantMap{{u"key"_s, 1}, {u"other"_s, 2}});
    run("command.setValue_forKey_onLayer(null, 'key', layer)");
    QCOMPARE(m_layer->info, std::optional(withPlugin(QVariantMap{{u"other"_s, 2}})));
    run("command.setValue_forKey_onLayer(null, 'missing', layer)");
    QCOMPARE(m_layer->info, std::optional(withPlugin(QVariantMap{{u"other"_s, 2}})));
}

void tst_KRPluginCommand_Data::noEmptyDictionaryStays()
{
    m_layer->info =
        QVariantMap{{u"com.example.tidy"_s, QVariantMap{{u"key"_s, 1}}}, {u"other"_s, QVariantMap{{u"a"_s, 1}}}};
    run("command.setValue_forKey_onLayer(null, 'key', layer)");
    QCOMPARE(m_layer->info, std::optional(QVariantMap{{u"other"_s, QVariantMap{{u"a"_s, 1}}}}));

    m_layer->info = withPlugin(QVariantMap{{u"key"_s, 1}});
    run("command.setValue_forKey_onLayer(null, 'key', layer)");
    QCOMPARE(m_layer->info, std::nullopt);
    run("command.setValue_forKey_onLayer(null, 'key', layer)");
    QCOMPARE(m_layer->info, std::nullopt);
}

void tst_KRPluginCommand_Data::foreignUserInfoSurvives()
{
    m_layer->info = QVariantMap{{u"hosts own"_s, u"text"_s}, {u"com.example.tidy"_s, u"malformed"_s}};
    run("command.setValue_forKey_onLayer(1, 'key', layer)");
    QCOMPARE(m_layer->info->value(u"hosts own"_s), QVariant(u"text"_s));
    QCOMPARE(m_layer->info->value(u"com.example.tidy"_s), QVariant(QVariantMap{{u"key"_s, 1LL}}));
}

void tst_KRPluginCommand_Data::readingWhatIsMissing_data()
{
    QTest::addColumn<QByteArray>("call");

    QTest::newRow("other key") << QByteArray("valueForKey_onLayer('missing', layer)");
    QTest::newRow("no key") << QByteArray("valueForKey_onLayer(null, layer)");
    QTest::newRow("no layer") << QByteArray("valueForKey_onLayer('key', null)");
    QTest::newRow("other plug-in") << QByteArray("valueForKey_onLayer_forPluginIdentifier('key', layer, 'p')");
    QTest::newRow("no plug-in") << QByteArray("valueForKey_onDocument_forPluginIdentifier('key', layer, null)");
    QTest::newRow("a plug-in's values that are none")
        << QByteArray("valueForKey_onLayer_forPluginIdentifier('key', layer, 'bad')");
}

void tst_KRPluginCommand_Data::readingWhatIsMissing()
{
    QFETCH(QByteArray, call);
    m_layer->info = QVariantMap{{u"com.example.tidy"_s, QVariantMap{{u"key"_s, 1}}}, {u"bad"_s, u"text"_s}};
    QCOMPARE(run("return String(command." + call + ")"), u"undefined"_s);
    QCOMPARE(errors(), QStringList());
}

void tst_KRPluginCommand_Data::nullInsideIsKept()
{
    m_layer->info = withPlugin(QVariantMap{{u"key"_s, QVariant::fromValue(nullptr)}});
    QCOMPARE(run("return String(command.valueForKey_onLayer('key', layer))"), u"null"_s);
}

void tst_KRPluginCommand_Data::pluginsDoNotSeeEachOther()
{
    m_layer->info = QVariantMap{{u"com.example.other"_s, QVariantMap{{u"key"_s, 1}}}};
    QCOMPARE(run("return String(command.valueForKey_onLayer('key', layer))"), u"undefined"_s);
    run("command.setValue_forKey_onLayer(2, 'key', layer)");
    QCOMPARE(m_layer->info->value(u"com.example.other"_s), QVariant(QVariantMap{{u"key"_s, 1}}));
}

void tst_KRPluginCommand_Data::otherPluginByItsIdentifier()
{
    run("command.setValue_forKey_onDocument_forPluginIdentifier(5, 'key', layer, 'com.example.other')");
    QCOMPARE(m_layer->info, std::optional(QVariantMap{{u"com.example.other"_s, QVariantMap{{u"key"_s, 5LL}}}}));
    QCOMPARE(run("return String(command.valueForKey_onLayer_forPluginIdentifier('key', layer, 'com.example.other'))"),
        u"5"_s);
    QCOMPARE(run("return command.pluginBundleIdentifierForMetadata()"), u"com.example.tidy"_s);
}

void tst_KRPluginCommand_Data::commandWithoutPluginUsesItsSpecifier()
{
    const auto command =
        commandWithSource(u"function onRun(c) { c.command.setValue_forKey_onLayer(1, 'key', c.layer) }"_s);
    command->run({{u"layer"_s, QVariant::fromValue(ScriptObjectPointer(m_layer))}}, m_manager.get());
    const auto specifier = command->commandSpecifier().stringValue();
    QCOMPARE(Text(command->pluginBundleIdentifierForMetadata()), Text(specifier));
    QCOMPARE(m_layer->info->keys(), QStringList{specifier.value_or(QString())});
    QCOMPARE(command->valueForKeyOnLayer(u"key"_s, m_layer), QVariant(1LL));
    QCOMPARE(command->valueForKeyOnDocument(u"key"_s, m_layer), QVariant(1LL));
}

void tst_KRPluginCommand_Data::keptValueIsACopy()
{
    run("const list = [1]; command.setValue_forKey_onLayer(list, 'key', layer); list.push(2)");
    QCOMPARE(m_layer->info, std::optional(withPlugin(QVariantMap{{u"key"_s, QVariantList{1LL}}})));
}

void tst_KRPluginCommand_Data::handedOutValueIsACopy()
{
    m_layer->info = withPlugin(QVariantMap{{u"key"_s, QVariantList{1LL}}});
    run("command.valueForKey_onLayer('key', layer).push(2)");
    QCOMPARE(m_layer->info, std::optional(withPlugin(QVariantMap{{u"key"_s, QVariantList{1LL}}})));
}

void tst_KRPluginCommand_Data::numbersStayNumbersWhenTheDocumentIsSaved_data()
{
    QTest::addColumn<QByteArray>("number");
    for (const auto *number : {"Number.MAX_SAFE_INTEGER", "2 ** 53", "-(2 ** 53)", "2 ** 62 + 2 ** 12", "2 ** 63",
             "-(2 ** 63)", "2 ** 64", "1e300"})
        QTest::newRow(number) << QByteArray(number);
}

void tst_KRPluginCommand_Data::numbersStayNumbersWhenTheDocumentIsSaved()
{
    QFETCH(QByteArray, number);
    run("command.setValue_forKey_onLayer(" + number + ", 'key', layer)");
    QCOMPARE(errors(), QStringList());
    const auto loaded = variantFromJSON(jsonFromVariant(m_layer->info.value_or(QVariantMap()), JSONStyle::Indented));
    QVERIFY(loaded.isOk());
    m_layer->info = loaded.value().toMap();
    QCOMPARE(run("return String(command.valueForKey_onLayer('key', layer) === " + number + ")"), u"true"_s);
}

void tst_KRPluginCommand_Data::largeValue()
{
    const auto thrown =
        run("command.setValue_forKey_onLayer('x'.repeat(10e6), 'text', layer);"
            "command.setValue_forKey_onLayer(Array.from({length: 500000}, (_, i) => ({i})), 'list', layer);"
            "return [command.valueForKey_onLayer('text', layer).length, command.valueForKey_onLayer('list', "
            "layer)[499999].i].join()");
    QCOMPARE(thrown, u"10000000,499999"_s);
    QCOMPARE(errors(), QStringList());
}

void tst_KRPluginCommand_Data::objectOfAnotherKind()
{
    QVERIFY(run("command.setValue_forKey_onLayer(1, 'key', {})").contains(u"setValue_forKey_onLayer"_s));
    QVERIFY(run("command.setValue_forKey_onLayer(1, 'key', command)").contains(u"setValue_forKey_onLayer"_s));
}

QTEST_GUILESS_MAIN(tst_KRPluginCommand_Data)
#include "tst_krplugincommand_data.moc"
