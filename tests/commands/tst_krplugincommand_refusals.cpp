// What plug-ins cannot keep on layers and documents.

#include "commands/KRPluginCommand.h"
#include "platform/OrderedDictionary.h"
#include "support/FakeCommandManager.h"
#include "support/TestCommand.h"
#include "support/TestEnvironment.h"
#include "support/TestLayer.h"
#include "support/TestPlugin.h"

#include <QDateTime>
#include <QtTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

const auto invalidMessage = u"values passed to setValue:forKey:onObject:forPluginIdentifier:: must be composed of "
                            u"arrays, dictionaries, numbers "
                            "and strings"_s;

QVariantMap withPlugin(const QVariant &values)
{
    return {{u"com.example.tidy"_s, values}};
}

} // namespace

class tst_KRPluginCommand_Refusals : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void valuesFromScripts_data();
    void valuesFromScripts();
    void keysThatCannotBeReadBack_data();
    void keysThatCannotBeReadBack();
    void removingUnderAKeyThatCannotBeReadBack();
    void valuesFromTheHost_data();
    void valuesFromTheHost();

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

void tst_KRPluginCommand_Refusals::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_manager = std::make_unique<FakeCommandManager>();
    m_layer = std::make_shared<TestLayer>();
}

void tst_KRPluginCommand_Refusals::cleanup()
{
    m_command.reset();
    m_plugin.reset();
    m_layer.reset();
    m_manager.reset();
    m_environment.reset();
}

QString tst_KRPluginCommand_Refusals::run(const QByteArray &statements)
{
    m_plugin = std::make_unique<TestPlugin>(*m_environment,
        "function onRun(context) { const command = context.command, layer = context.layer; try {" + statements
            + "} catch (error) { return String(error) } return '' }");
    m_command = m_plugin->command();
    m_command->run({{u"layer"_s, QVariant::fromValue(ScriptObjectPointer(m_layer))}}, m_manager.get());
    return m_command->returnValue().toString();
}

QStringList tst_KRPluginCommand_Refusals::errors() const
{
    QStringList texts;
    const auto entries = m_command->logsWhenRunViaTests();
    for (const auto &entry : entries)
        texts.append(
            entry.toMap().value(u"level"_s).toString() + u": "_s + entry.toMap().value(u"stringValue"_s).toString());
    return texts;
}

void tst_KRPluginCommand_Refusals::valuesFromScripts_data()
{
    QTest::addColumn<QByteArray>("source");

    const std::pair<const char *, const char *> values[] = {
        {"undefined", "undefined"},
        {"date", "new Date(0)"},
        {"date that is none", "new Date(NaN)"},
        {"function", "() => 1"},
        {"not a number", "NaN"},
        {"infinity", "Infinity"},
        {"negative infinity", "-Infinity"},
        {"symbol", "Symbol('a')"},
        {"regular expression", "/a/"},
        {"map", "new Map([[1, 2]])"},
        {"bytes", "new Uint8Array([1, 2])"},
        {"instance of a class", "new (class Point { constructor() { this.x = 1 } })()"},
        {"promise", "Promise.resolve(1)"},
        {"host object", "layer"},
        {"command", "command"},
        {"the context", "context"},
        {"big integer", "10n"},
        {"big integer of 64 bits", "(2n ** 63n + 1n)"},
        {"big integer beyond every number", "(2n ** 80n)"},
        {"big integers in a typed array", "new BigInt64Array([1n])"},
        {"unsigned big integers in a typed array", "new BigUint64Array([1n])"},
        {"half of a surrogate pair", "'a\\ud800b'"},
        {"other half of a surrogate pair", "'\\udc00'"},
        {"halves of a surrogate pair the wrong way round", "'\\udc00\\ud800'"},
        {"key that is half of a surrogate pair", "({'k\\udc00': 1})"},
    };
    for (const auto &[tag, source] : values) {
        QTest::newRow(tag) << QByteArray(source);
        QTest::addRow("%s in an array", tag) << QByteArray("[1, ") + source + "]";
        QTest::addRow("%s in a dictionary", tag) << QByteArray("({a: {b: ") + source + "}})";
    }
    QTest::newRow("cycle") << QByteArray("(() => { const a = []; a.push(a); return a })()");
    QTest::newRow("cycle of dictionaries") << QByteArray("(() => { const a = {}; a.b = {a}; return a })()");
    QTest::newRow("hole in an array") << QByteArray("[1, , 2]");
    QTest::newRow("nested beyond all use")
        << QByteArray("(() => { let a = []; for (let i = 0; i < 100000; ++i) a = [a]; return a })()");
}

void tst_KRPluginCommand_Refusals::valuesFromScripts()
{
    QFETCH(QByteArray, source);
    m_layer->info = withPlugin(QVariantMap{{u"key"_s, 1}});
    const auto thrown = run("command.setValue_forKey_onLayer(" + source + ", 'key', layer)");
    QCOMPARE(thrown, QString());
    QCOMPARE(errors(), QStringList{u"error: "_s + invalidMessage});
    QCOMPARE(m_layer->info, std::optional(withPlugin(QVariantMap{{u"key"_s, 1}})));
    QCOMPARE(m_layer->changes, 0);
}

void tst_KRPluginCommand_Refusals::keysThatCannotBeReadBack_data()
{
    QTest::addColumn<QByteArray>("arguments");

    QTest::newRow("key") << QByteArray("1, 'k\\udc00', layer, 'p'");
    QTest::newRow("plug-in's identifier") << QByteArray("1, 'key', layer, 'p\\ud800'");
}

void tst_KRPluginCommand_Refusals::keysThatCannotBeReadBack()
{
    QFETCH(QByteArray, arguments);
    const auto thrown = run("command.setValue_forKey_onObject_forPluginIdentifier(" + arguments + ")");
    QCOMPARE(thrown, QString());
    QCOMPARE(errors(), QStringList{u"error: "_s + invalidMessage});
    QCOMPARE(m_layer->changes, 0);
}

void tst_KRPluginCommand_Refusals::removingUnderAKeyThatCannotBeReadBack()
{
    m_layer->info = withPlugin(QVariantMap{{u"k"_s + QChar(0xDC00), 1}});
    run("command.setValue_forKey_onLayer(null, 'k\\udc00', layer)");
    QCOMPARE(errors(), QStringList());
    QCOMPARE(m_layer->info, std::nullopt);
}

void tst_KRPluginCommand_Refusals::valuesFromTheHost_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isKept");

    QVariant deep = 1;
    for (int level = 0; level < 10'000; ++level)
        deep = QVariantList{deep};
    QTest::newRow("text") << QVariant(u"a"_s) << true;
    QTest::newRow("texts") << QVariant(QStringList{u"a"_s}) << true;
    QTest::newRow("JSON null") << QVariant::fromValue(nullptr) << true;
    QTest::newRow("ordered dictionary") << QVariant::fromValue(OrderedVariantDictionary{{u"a"_s, 1}}) << true;
    QTest::newRow("date in an ordered dictionary")
        << QVariant::fromValue(OrderedVariantDictionary{{u"a"_s, QDateTime::currentDateTime()}}) << false;
    QTest::newRow("ordered texts") << QVariant::fromValue(OrderedStringDictionary{{u"a"_s, u"b"_s}}) << true;
    const QString half(QChar(0xD800));
    QTest::newRow("half of a surrogate pair among texts") << QVariant(QStringList{u"a"_s, half}) << false;
    QTest::newRow("half of a surrogate pair among ordered texts")
        << QVariant::fromValue(OrderedStringDictionary{{u"a"_s, half}}) << false;
    QTest::newRow("key of ordered texts that is half of a surrogate pair")
        << QVariant::fromValue(OrderedStringDictionary{{half, u"a"_s}}) << false;
    QTest::newRow("key of an ordered dictionary that is half of a surrogate pair")
        << QVariant::fromValue(OrderedVariantDictionary{{half, 1}}) << false;
    QTest::newRow("nil in a list") << QVariant(QVariantList{QVariant()}) << false;
    QTest::newRow("infinity") << QVariant(std::numeric_limits<double>::infinity()) << false;
    QTest::newRow("bytes") << QVariant(QByteArray("a")) << false;
    QTest::newRow("nested beyond all use") << deep << false;
}

void tst_KRPluginCommand_Refusals::valuesFromTheHost()
{
    QFETCH(QVariant, value);
    QFETCH(bool, isKept);
    m_command = commandWithSource(u""_s);
    m_command->setValueForKeyOnDocument(value, u"key"_s, m_layer, u"p"_s);
    QCOMPARE(m_layer->changes, isKept ? 1 : 0);
    QCOMPARE(errors(), isKept ? QStringList() : QStringList{u"error: "_s + invalidMessage});
    QCOMPARE(m_command->valueForKeyOnLayer(u"key"_s, m_layer, u"p"_s), isKept ? value : QVariant());
}

QTEST_GUILESS_MAIN(tst_KRPluginCommand_Refusals)
#include "tst_krplugincommand_refusals.moc"
