// How authors look into what their scripts do: traces, source maps.

#include "CommandLineFixture.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {

const QByteArray manifest =
    R"({"name": "Burn", "identifier": "com.example.burn", "version": "1", "commands": [{"identifier": "run", "script": "script.js", "handler": "onRun"}]})";

} // namespace

class tst_CommandLine_Debugging : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void traceForPeople();
    void traceAsJSON();
    void noTrace();
    void sourceMap();

private:
    Finished runCommand(const QStringList &more) const
    {
        return run(QStringList{u"--folder"_s, u"plugins"_s, u"run"_s, u"com.example.burn/run"_s} + more);
    }
};

void tst_CommandLine_Debugging::traceForPeople()
{
    plugin(u"Burn"_s, manifest, "function onRun(context) { context.document.setName('Sun'); return 1; }");
    const auto finished = runCommand({u"--trace"_s, u"--document"_s, examples + u"/documents/poster.json"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(QString::fromUtf8(finished.output), u"→ 1\n"_s);
    static const QRegularExpression time(u"^ *\\d+\\.\\d{3} ms  "_s);
    QStringList calls;
    for (const auto &line : finished.errors) {
        QVERIFY2(time.match(line).hasMatch(), qPrintable(line));
        calls.append(QString(line).remove(time));
    }
    QCOMPARE(calls, QStringList({u"Dictionary.document → {…}"_s, u"Document.setName(\"Sun\")"_s}));
}

void tst_CommandLine_Debugging::traceAsJSON()
{
    plugin(u"Burn"_s, manifest,
        "async function onRun(context) { console.log('before'); const ui = require('korvan/ui'); "
        "ui.message('Hello'); console.log('after'); }");
    const auto finished = runCommand({u"--trace"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    QStringList log;
    const auto entries = finished.json()[u"log"_s].toArray();
    for (const auto &entry : entries) {
        const auto text = entry.toObject()[u"stringValue"_s].toString();
        log.append(entry.toObject()[u"level"_s].toString() + u' ' + text.section(u"  "_s, -1));
    }
    QCOMPARE(
        log, QStringList({u"log before"_s, u"trace UserInterfaceService.showMessage(\"Hello\")"_s, u"log after"_s}));
    QCOMPARE(finished.json()[u"logString"_s], QJsonValue(u"before\nafter"_s));
}

void tst_CommandLine_Debugging::noTrace()
{
    plugin(u"Burn"_s, manifest, "function onRun(context) { return context.document.name(); }");
    const auto finished = runCommand({u"--document"_s, examples + u"/documents/poster.json"_s});
    QCOMPARE(finished.errors, QStringList());
}

void tst_CommandLine_Debugging::sourceMap()
{
    plugin(u"Burn"_s, manifest, "function onRun() { null.x; }\n//# sourceMappingURL=script.js.map");
    writeFile(m_folder->filePath(u"plugins/Burn.korvanplugin/Contents/Korvan/script.js.map"_s),
        R"({"version": 3, "sources": ["../../src/burn.ts"], "names": [], "mappings": "AAKI"})");
    const auto finished = runCommand({});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(QString::fromUtf8(finished.output),
        u"Uncaught script exception: TypeError: null is not an object (evaluating 'null.x')\n"
        "    at onRun (src/burn.ts:6:5)\n"_s);
}

QTEST_GUILESS_MAIN(tst_CommandLine_Debugging)
#include "tst_commandline_debugging.moc"
