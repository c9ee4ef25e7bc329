// The examples of docs/plugin-api.md, as they stand there.

#include "commands/DataSuppliers.h"
#include "platform/JSONText.h"
#include "resources/ModuleFixture.h"

#include <QRegularExpression>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const char *path)
{
    QFile file(QStringLiteral(KORVAN_SOURCE_DIR "/") + QLatin1String(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What the comments of an example say that it prints.
QStringList expectedLines(const QString &example)
{
    static const QRegularExpression arrow(u"// → (.*)"_s);
    QStringList lines;
    for (auto match = arrow.globalMatch(example); match.hasNext();)
        lines.append(match.next().captured(1));
    return lines;
}

} // namespace

class tst_PluginAPI : public QObject
{
    Q_OBJECT

private slots:
    void examplesPrintWhatTheySay_data();
    void examplesPrintWhatTheySay();
    void everyModuleHasAnExample();
};

void tst_PluginAPI::examplesPrintWhatTheySay_data()
{
    QTest::addColumn<QString>("example");
    QTest::addColumn<QString>("answers");

    static const QRegularExpression example(
        u"(?:<!-- answers: ([^\n]*) -->\n)?```js\n(.*?)\n```"_s, QRegularExpression::DotMatchesEverythingOption);
    const auto text = QString::fromUtf8(contentOf("docs/plugin-api.md"));
    int number = 0;
    for (auto match = example.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        QTest::addRow("example %d", ++number) << found.captured(2) << found.captured(1);
    }
    QCOMPARE(number, text.count(u"```js\n"_s));
}

void tst_PluginAPI::examplesPrintWhatTheySay()
{
    QFETCH(QString, example);
    QFETCH(QString, answers);
    DataSuppliers suppliers;
    ModuleFixture fixture("\"suppliesData\": true,");
    fixture.manager.suppliers = &suppliers;
    fixture.setDocument(contentOf("examples/documents/poster.json"));
    const auto values = variantFromJSON((u"["_s + answers + u"]"_s).toUtf8());
    QVERIFY(values);
    fixture.user.answers = values.value().toList();

    const bool isStartup = example.contains(u"function onStartup"_s);
    const auto lines = isStartup ? fixture.runScript(example.toUtf8() + "\nfunction onRun() { onStartup() }")
                                 : fixture.run(example.toUtf8());
    QCOMPARE(lines, expectedLines(example));
    QCOMPARE(fixture.user.answers, QVariantList());
    QCOMPARE(suppliers.suppliers().size(), isStartup ? 1 : 0);
}

void tst_PluginAPI::everyModuleHasAnExample()
{
    const auto text = contentOf("docs/plugin-api.md");
    for (const auto *const module :
        {"korvan", "korvan/dom", "korvan/settings", "korvan/ui", "korvan/async", "korvan/data-supplier"})
        QVERIFY2(text.contains(QByteArray("require('") + module + "')"), module);
}

QTEST_GUILESS_MAIN(tst_PluginAPI)
#include "tst_pluginapi.moc"
