// Profiles of what scripts do.
//
// Not a part of the tests of looking into scripts, since it cannot run under ThreadSanitizer: the engine's sampler
// stops the thread of the script by a signal, which that tool keeps back for as long as the script computes.

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

class tst_CommandLine_Profile : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void profile();
    void profileOfAGeneratedScript();
    void profileThatCannotBeWritten();
    void outputsAreCheckedBeforeTheRun_data();
    void outputsAreCheckedBeforeTheRun();
    void theDocumentMayBeSavedInPlace();

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

void tst_CommandLine_Profile::profile()
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

void tst_CommandLine_Profile::profileOfAGeneratedScript()
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

void tst_CommandLine_Profile::profileThatCannotBeWritten()
{
    plugin(u"Burn"_s, manifest);
    const auto finished = runCommand({u"--profile"_s, u"missing/a.cpuprofile"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    QVERIFY(finished.json()[u"error"_s].toObject()[u"message"_s].toString().startsWith(
        u"Cannot write the profile \"missing/a.cpuprofile\": "_s));
}

void tst_CommandLine_Profile::outputsAreCheckedBeforeTheRun_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");

    const QStringList document{u"--document"_s, u"doc.json"_s};
    const auto clash = u"%1 and %2 name the same file, \"%3\". Name another one for %1."_s;
    QTest::newRow("a profile in the document's place") << document + QStringList{u"--profile"_s, u"doc.json"_s}
                                                       << clash.arg(u"--profile"_s, u"--document"_s, u"doc.json"_s);
    QTest::newRow("the same, written differently")
        << document + QStringList{u"--profile"_s, u"plugins/../doc.json"_s}
        << clash.arg(u"--profile"_s, u"--document"_s, u"plugins/../doc.json"_s);
    QTest::newRow("a profile in the place of the saved document")
        << document + QStringList{u"--dump-document"_s, u"x"_s, u"--profile"_s, u"x"_s}
        << clash.arg(u"--profile"_s, u"--dump-document"_s, u"x"_s);
    QTest::newRow("a document where there is no folder")
        << document + QStringList{u"--dump-document"_s, u"none/x"_s}
        << u"Cannot write the document \"none/x\": The folder \"%1/none\" does not exist."_s;
    QTest::newRow("a document in a folder's place")
        << document + QStringList{u"--dump-document"_s, u"plugins"_s}
        << u"Cannot write the document \"plugins\": There is a folder of that name."_s;
    QTest::newRow("a profile where there is no folder") << QStringList{u"--profile"_s,
        u"none/x"_s} << u"Cannot write the profile \"none/x\": The folder \"%1/none\" does not exist."_s;
}

void tst_CommandLine_Profile::outputsAreCheckedBeforeTheRun()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    plugin(u"Burn"_s, manifest, "function onRun() { console.log('has run'); }");
    writeFile(m_folder->filePath(u"doc.json"_s), R"({"layers": []})");
    const auto finished = runCommand(arguments + QStringList{u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(finished.json()[u"error"_s].toObject()[u"message"_s].toString(),
        message.contains(u"%1"_s) ? message.arg(QFileInfo(m_folder->path()).canonicalFilePath()) : message);
    QVERIFY(!finished.json().contains(u"log"_s));
    QCOMPARE(fileContent(m_folder->filePath(u"doc.json"_s)), QByteArray(R"({"layers": []})"));
}

void tst_CommandLine_Profile::theDocumentMayBeSavedInPlace()
{
    plugin(u"Burn"_s, manifest, "function onRun(context) { context.document.setName('Sun'); }");
    writeFile(m_folder->filePath(u"doc.json"_s), R"({"layers": []})");
    QCOMPARE(runCommand({u"--document"_s, u"doc.json"_s, u"--dump-document"_s, u"doc.json"_s}).exitCode, 0);
    QVERIFY(fileContent(m_folder->filePath(u"doc.json"_s)).contains("Sun"));
}

QTEST_GUILESS_MAIN(tst_CommandLine_Profile)
#include "tst_commandline_profile.moc"
