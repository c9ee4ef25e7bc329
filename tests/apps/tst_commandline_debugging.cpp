// How authors look into what their scripts do: profiles, traces, source maps.

#include "CommandLineFixture.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {

const QByteArray manifest =
    R"({"name": "Burn", "identifier": "com.example.burn", "version": "1", "commands": [{"identifier": "run", "script": "script.js", "handler": "onRun"}]})";

const QByteArray burning = R"(function burnTime(count) {
    let sum = 0;
    for (let index = 0; index < count; ++index)
        sum += Math.sqrt(index * sum + 1);
    return sum;
}
function onRun() { return burnTime(2e7) > 0; }
)";

} // namespace

class tst_CommandLine_Debugging : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void profile();
    void profileOfAGeneratedScript();
    void profileThatCannotBeWritten();
    void traceForPeople();
    void traceAsJSON();
    void noTrace();
    void sourceMap();

private:
    Finished runCommand(const QStringList &more) const
    {
        return run(QStringList{u"--folder"_s, u"plugins"_s, u"run"_s, u"com.example.burn/run"_s} + more);
    }
    QJsonObject readProfile() const
    {
        return QJsonDocument::fromJson(fileContent(m_folder->filePath(u"a.cpuprofile"_s))).object();
    }
    static QJsonObject callFrame(const QJsonObject &profile, const QString &function)
    {
        const auto nodes = profile[u"nodes"_s].toArray();
        for (const auto &node : nodes) {
            const auto frame = node.toObject()[u"callFrame"_s].toObject();
            if (frame[u"functionName"_s] == function)
                return frame;
        }
        return {};
    }
};

void tst_CommandLine_Debugging::profile()
{
    plugin(u"Burn"_s, manifest, burning);
    const auto finished = runCommand({u"--profile"_s, u"a.cpuprofile"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json()[u"returnValue"_s], QJsonValue(true));
    const auto profile = readProfile();
    const auto samples = profile[u"samples"_s].toArray();
    const auto deltas = profile[u"timeDeltas"_s].toArray();
    const auto nodes = profile[u"nodes"_s].toArray();
    QVERIFY(!samples.isEmpty());
    QCOMPARE(samples.size(), deltas.size());
    qint64 sum = 0;
    for (const auto &delta : deltas) {
        QVERIFY(delta.toInteger() >= 0);
        sum += delta.toInteger();
    }
    QCOMPARE(profile[u"startTime"_s].toInteger() + sum + 1000, profile[u"endTime"_s].toInteger());
    int hits = 0;
    for (qsizetype index = 0; index < nodes.size(); ++index) {
        const auto node = nodes[index].toObject();
        QCOMPARE(node[u"id"_s].toInt(), index + 1);
        hits += node[u"hitCount"_s].toInt();
        const auto children = node[u"children"_s].toArray();
        for (const auto &child : children)
            QVERIFY(child.toInt() > index + 1 && child.toInt() <= nodes.size());
    }
    QCOMPARE(hits, samples.size());
    for (const auto &sample : samples)
        QVERIFY(sample.toInt() >= 1 && sample.toInt() <= nodes.size());
    const auto burnTime = callFrame(profile, u"burnTime"_s);
    QVERIFY(burnTime[u"url"_s].toString().endsWith(u"/Burn.korvanplugin/Contents/Korvan/script.js"_s));
    QVERIFY(burnTime[u"lineNumber"_s].toInt() >= 0 && burnTime[u"lineNumber"_s].toInt() < 6);
    QVERIFY(!callFrame(profile, u"onRun"_s).isEmpty());
}

void tst_CommandLine_Debugging::profileOfAGeneratedScript()
{
    // Each line of the script, at its beginning and at its call, is the same line of "burn.ts"; "b" was "burnTime".
    plugin(u"Burn"_s, manifest,
        "function b(n) { let s = 0; for (let i = 0; i < n; ++i) s += Math.sqrt(i * s + 1); return s; }\n"
        "function onRun() { return b(2e7) > 0; }\n//# sourceMappingURL=script.js.map\n");
    writeFile(m_folder->filePath(u"plugins/Burn.korvanplugin/Contents/Korvan/script.js.map"_s),
        R"({"version": 3, "sources": ["burn.ts"], "names": ["burnTime"], "mappings": "AAAA;AACA,0BAACA"})");
    QCOMPARE(runCommand({u"--profile"_s, u"a.cpuprofile"_s}).exitCode, 0);
    const auto burnTime = callFrame(readProfile(), u"burnTime"_s);
    QVERIFY(burnTime[u"url"_s].toString().endsWith(u"/Burn.korvanplugin/Contents/Korvan/burn.ts"_s));
    QCOMPARE(burnTime[u"lineNumber"_s], QJsonValue(0));
}

void tst_CommandLine_Debugging::profileThatCannotBeWritten()
{
    plugin(u"Burn"_s, manifest);
    const auto finished = runCommand({u"--profile"_s, u"missing/a.cpuprofile"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    QVERIFY(finished.json()[u"error"_s].toObject()[u"message"_s].toString().startsWith(
        u"Cannot write the profile \"missing/a.cpuprofile\": "_s));
}

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
