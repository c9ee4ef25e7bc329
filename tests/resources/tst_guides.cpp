// The guides for authors: their examples as they stand there, and whether they tell of everything.

#include "bundles/KRPluginBundle.h"
#include "commands/CommandContext.h"
#include "commands/CoreModules.h"
#include "commands/DataSuppliers.h"
#include "platform/JSONText.h"
#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptGlobalNames.h"
#include "resources/ModuleFixture.h"
#include "support/Guides.h"

#include <QRegularExpression>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

/// What the comments of an example say that it prints.
QStringList expectedLines(const QString &example)
{
    static const QRegularExpression arrow(u"// → (.*)"_s);
    QStringList lines;
    for (auto match = arrow.globalMatch(example); match.hasNext();)
        lines.append(match.next().captured(1));
    return lines;
}

/// Leaves of the lines those that an example says, in its order.
QStringList linesAmong(const QStringList &lines, const QStringList &expected)
{
    QStringList found;
    for (const auto &line : lines) {
        if (line == expected.value(found.size()))
            found.append(line);
    }
    return found;
}

QStringList missingIn(const QString &text, const QStringList &names, const QString &form = u"`%1`"_s)
{
    QStringList missing;
    for (const auto &name : names) {
        if (!text.contains(form.arg(name)))
            missing.append(name);
    }
    return missing;
}

/// The names of a document's headings in links.
QStringList placesIn(const QString &text)
{
    static const QRegularExpression heading(u"^#+ (.*)$"_s, QRegularExpression::MultilineOption);
    static const QRegularExpression sign(u"[^\\w -]"_s);
    QStringList places;
    for (auto match = heading.globalMatch(text); match.hasNext();)
        places.append(match.next().captured(1).toLower().remove(sign).replace(u' ', u'-'));
    return places;
}

QStringList operationsOf(const ScriptClass &scriptClass)
{
    QStringList names;
    for (const auto &operation : scriptClass.operations)
        names.append(QString::fromLatin1(operation.name));
    return names;
}

/// The keys of "properties", at any depth of a schema.
void addKeys(QStringList &keys, const QVariant &schema)
{
    const auto members = schema.toMap();
    for (auto member = members.begin(); member != members.end(); ++member) {
        if (member.key() == u"properties")
            keys += member->toMap().keys();
        addKeys(keys, *member);
    }
    for (const auto &element : schema.toList())
        addKeys(keys, element);
}

} // namespace

class tst_Guides : public QObject
{
    Q_OBJECT

private slots:
    void examplesPrintWhatTheySay_data();
    void examplesPrintWhatTheySay();
    void everyKeyOfManifestsIsExplained();
    void everythingInTheContextIsExplained_data();
    void everythingInTheContextIsExplained();
    void everyModuleHasAnExample();
    void everyFunctionOfTheModulesIsExplained_data();
    void everyFunctionOfTheModulesIsExplained();
    void everyGlobalIsExplained();
    void linksLeadSomewhere_data();
    void linksLeadSomewhere();
};

void tst_Guides::examplesPrintWhatTheySay_data()
{
    QTest::addColumn<GuideBlock>("block");
    for (const auto &name : {u"scripts.md"_s, u"plugin-api.md"_s, u"node-modules.md"_s, u"plugin-authors.md"_s}) {
        QVERIFY2(!guide(name).isEmpty(), qPrintable(name));
        int number = 0;
        for (const auto &block : blocksOfGuide(name)) {
            const bool isTest = block.text.contains(u"require('korvan/testing')"); // only `test` runs those
            if (block.language == u"js" && !isTest)
                QTest::addRow("%s, example %d", qPrintable(name), ++number) << block;
        }
    }
}

void tst_Guides::examplesPrintWhatTheySay()
{
    QFETCH(GuideBlock, block);
    const auto &example = block.text;
    DataSuppliers suppliers;
    ModuleFixture fixture("\"suppliesData\": true,");
    fixture.manager.suppliers = &suppliers;
    QFile poster(QStringLiteral(KORVAN_SOURCE_DIR "/examples/documents/poster.json"));
    QVERIFY(poster.open(QIODevice::ReadOnly));
    fixture.setDocument(poster.readAll());
    const auto answers = variantFromJSON((u"["_s + block.remark(u"answers"_s).value_or(u""_s) + u"]"_s).toUtf8());
    QVERIFY(answers);
    fixture.user.answers = answers.value().toList();

    QString before;
    if (const auto answer = block.remark(u"server answers"_s))
        before = u"fetch = async () => new Response('%1');\n"_s.arg(*answer);
    const auto handler = block.remark(u"runs"_s);
    const bool isHandler = handler == u"onRun(context)"_s;
    auto lines = !handler
        ? fixture.runScript((before + u"async function onRun(context) {\n"_s + example + u"\n}"_s).toUtf8())
        : isHandler ? fixture.runScript((before + example).toUtf8())
                    : fixture.runScript(
                        (before + example + u"\nfunction onRun(context) { return "_s + *handler + u" }"_s).toUtf8());
    fixture.environment.queue.advance(std::chrono::seconds(10));
    lines += fixture.settle();
    const auto expected = expectedLines(example);
    QCOMPARE(block.remark(u"prints more"_s) ? linesAmong(lines, expected) : lines, expected);
    QCOMPARE(fixture.user.answers, QVariantList());
    QCOMPARE(suppliers.suppliers().size(), handler == u"onStartup()"_s ? 1 : 0);
}

void tst_Guides::everyKeyOfManifestsIsExplained()
{
    QFile file(QStringLiteral(KORVAN_SOURCE_DIR "/docs/schemas/manifest.schema.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto schema = variantFromJSON(file.readAll());
    QVERIFY(schema);
    QStringList keys{KRPluginCommandDocumentChangedHandlerKey, u"onRun"_s, u"onSetUp"_s, u"onTearDown"_s};
    keys += KRPluginCommand::actionIDsNotToReload();
    addKeys(keys, schema.value());
    QVERIFY(keys.size() > 30);
    QCOMPARE(missingIn(guide(u"manifest.md"_s), keys), QStringList());
}

void tst_Guides::everythingInTheContextIsExplained_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("form");
    QStringList keys{u"document"_s, u"selection"_s};
    for (const auto &key : commandContextKeys())
        keys.append(QString::fromLatin1(key.name));
    QTest::newRow("keys") << keys << u"| `%1` |"_s;

    const KRPluginCommand command(nullptr, std::nullopt, std::nullopt, u"onRun"_s, KRPluginCommand::Scope::Document);
    const auto plugin = KRPluginBundle::initWithName(std::nullopt, std::nullopt, {}, QImage());
    QTest::newRow("the command") << operationsOf(command.scriptClass()) << u"`%1("_s;
    QTest::newRow("the plug-in") << operationsOf(plugin->scriptClass()) << u"`%1("_s;
    QTest::newRow("documents") << operationsOf(Document().scriptClass()) << u"`%1("_s;
    QTest::newRow("layers") << operationsOf(Layer(QVariantMap()).scriptClass()) << u"`%1("_s;
}

void tst_Guides::everythingInTheContextIsExplained()
{
    QFETCH(QStringList, names);
    QFETCH(QString, form);
    QCOMPARE(missingIn(guide(u"scripts.md"_s), names, form), QStringList());
}

void tst_Guides::everyModuleHasAnExample()
{
    const auto text = guide(u"plugin-api.md"_s) + guide(u"node-modules.md"_s).replace(u"'node:"_s, u"'"_s);
    QCOMPARE(missingIn(text, namesOfCoreModules(), u"require('%1')"_s), QStringList());
}

void tst_Guides::everyFunctionOfTheModulesIsExplained_data()
{
    QTest::addColumn<QString>("module");
    for (const auto *const module :
        {"korvan", "korvan/dom", "korvan/settings", "korvan/ui", "korvan/async", "korvan/data-supplier"})
        QTest::newRow(module) << QString::fromLatin1(module);
}

void tst_Guides::everyFunctionOfTheModulesIsExplained()
{
    QFETCH(QString, module);
    ModuleFixture fixture;
    fixture.setDocument("{}");
    const auto lines = fixture.run(
        "print(Object.keys(require('" + module.toUtf8() + "')).filter((name) => !/^[A-Z]/.test(name)).join(' '))");
    QStringList missing;
    for (const auto &name : lines.value(0).split(u' ')) {
        // "`name`", "`name(…)`", or "module.name".
        const QRegularExpression use(u"(?:[`, .{]|^)%1[`(, }:]"_s.arg(name));
        if (!guide(u"plugin-api.md"_s).contains(use))
            missing.append(name);
    }
    QCOMPARE(missing, QStringList());
}

void tst_Guides::everyGlobalIsExplained()
{
    QStringList names{u"print"_s, u"log"_s, u"require"_s, u"console"_s, u"setTimeout"_s, u"setInterval"_s,
        u"setImmediate"_s, u"clearTimeout"_s, u"clearInterval"_s, u"clearImmediate"_s, u"queueMicrotask"_s,
        u"__command"_s};
    for (const auto name : scriptGlobalNames())
        names.append(name.toString());
    QCOMPARE(missingIn(guide(u"node-modules.md"_s), names), QStringList());
}

void tst_Guides::linksLeadSomewhere_data()
{
    QTest::addColumn<QString>("name");
    for (const auto &name : QDir(QStringLiteral(KORVAN_SOURCE_DIR "/docs")).entryList({u"*.md"_s}))
        QTest::newRow(qPrintable(name)) << name;
}

void tst_Guides::linksLeadSomewhere()
{
    QFETCH(QString, name);
    static const QRegularExpression link(u"\\]\\((?!https?:)([^)#]*)#?([^)]*)\\)"_s);
    const QDir docs(QStringLiteral(KORVAN_SOURCE_DIR "/docs"));
    static const QRegularExpression code(u"\n```.*?\n```\n"_s, QRegularExpression::DotMatchesEverythingOption);
    const auto text = guide(name).remove(code);
    for (auto match = link.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        const auto file = found.captured(1).isEmpty() ? name : found.captured(1);
        const auto place = found.captured(2);
        QVERIFY2(QFileInfo::exists(docs.filePath(file)), qPrintable(found.captured()));
        QVERIFY2(place.isEmpty() || placesIn(guide(file)).contains(place), qPrintable(found.captured()));
    }
}

QTEST_GUILESS_MAIN(tst_Guides)
#include "tst_guides.moc"
