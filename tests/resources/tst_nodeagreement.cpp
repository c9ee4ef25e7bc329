// The core modules and globals of script sessions against node itself: each expression in calls/ is evaluated in both.
//
// A file of calls has one expression in each line; a line "[a b]" before them names the modules that they use, which
// are variables of that name. After "~ ", errors are compared by their name only: engines have texts of their own.

#include "commands/KRPluginCommand.h"
#include "platform/script/ScriptValue.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"
#include "support/servers/ChildProcess.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

struct Call
{
    QString file;
    QStringList modules;
    QString expression;
    bool comparesMessages;

    QJsonObject json() const
    {
        return {{u"modules"_s, QJsonArray::fromStringList(modules)}, {u"expression"_s, expression}};
    }
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const auto sources = QStringLiteral(KORVAN_SOURCE_DIR "/tests/resources/");

QList<Call> readCalls()
{
    QList<Call> calls;
    const QDir folder(sources + u"calls"_s);
    for (const auto &name : folder.entryList({u"*.txt"_s}, QDir::Files, QDir::Name)) {
        QStringList modules;
        for (const auto &line : QString::fromUtf8(contentOf(folder.filePath(name))).split(u'\n', Qt::SkipEmptyParts)) {
            if (line.startsWith(u'[') && line.endsWith(u']') && !line.contains(u',') && !line.contains(u'(')) {
                modules = line.sliced(1).chopped(1).split(u' ', Qt::SkipEmptyParts);
                continue;
            }
            const bool isLoose = line.startsWith(u"~ ");
            calls.append({name, modules, isLoose ? line.sliced(2) : line, !isLoose});
        }
    }
    return calls;
}

QByteArray jsonOf(const QList<Call> &calls)
{
    QJsonArray array;
    for (const auto &call : calls)
        array.append(call.json());
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

/// The result as text; of an error only its name when messages are not compared.
QString textOf(QJsonObject result, bool comparesMessages)
{
    if (!comparesMessages && result.contains(u"thrown"_s)) {
        const auto error = result.value(u"thrown"_s).toObject().value(u"error"_s);
        result = {{u"thrown"_s, error}};
    }
    return QString::fromUtf8(QJsonDocument(result).toJson(QJsonDocument::Compact));
}

} // namespace

class tst_NodeAgreement : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void calls_data();
    void calls();

private:
    QJsonArray evaluateInNode() const;
    QJsonArray evaluateInSession();

    TestEnvironment m_environment;
    QList<Call> m_calls;
    QJsonArray m_ofNode;
    QJsonArray m_ofSession;
};

void tst_NodeAgreement::initTestCase()
{
    QVERIFY(QFile::link(QStringLiteral(KORVAN_RESOURCES_FOLDER), m_environment.path(u"resources"_s)));
    m_calls = readCalls();
    QVERIFY(m_calls.size() >= 300);
    m_ofNode = evaluateInNode();
    m_ofSession = evaluateInSession();
    QCOMPARE(m_ofNode.size(), m_calls.size());
    QCOMPARE(m_ofSession.size(), m_calls.size());
}

QJsonArray tst_NodeAgreement::evaluateInNode() const
{
    const auto script = m_environment.path(u"evaluate.cjs"_s);
    const auto callsFile = m_environment.path(u"calls.json"_s);
    const auto output = m_environment.path(u"node.json"_s);
    writeFile(callsFile, jsonOf(m_calls));
    writeFile(script,
        contentOf(sources + u"evaluate.js"_s)
            + "\nprocess.on('unhandledRejection', () => {});"
              "\nevaluateCalls(JSON.parse(require('fs').readFileSync(process.argv[2], 'utf8')), require)"
              "\n    .then((results) => console.log(JSON.stringify(results)));\n");
    ChildProcess node({QStringLiteral(KORVAN_NODE), {u"--no-warnings"_s, script, callsFile}, m_environment.path({}),
        output, {"NODE_OPTIONS="}, m_environment.path(u"node-errors"_s)});
    node.closeInput();
    if (node.waitForEnd() != 0)
        qWarning() << contentOf(m_environment.path(u"node-errors"_s));
    return QJsonDocument::fromJson(contentOf(output)).array();
}

QJsonArray tst_NodeAgreement::evaluateInSession()
{
    const auto source = QString::fromUtf8(contentOf(sources + u"evaluate.js"_s))
        + u"\nasync function onRun(context) { return JSON.stringify(await evaluateCalls(JSON.parse(context.calls), require)); }"_s;
    const auto command = std::make_shared<KRPluginCommand>(std::make_shared<KRPluginScript>(source, u"evaluate.js"_s),
        u"agree"_s, u"Agree"_s, u"onRun"_s, KRPluginCommand::Scope::Document);
    command->run({{u"calls"_s, QString::fromUtf8(jsonOf(m_calls))}}, nullptr);
    const auto promise = command->returnValue().value<ScriptValue>();
    for (int turn = 0; turn < 10000 && !promise.isSettled(); ++turn)
        m_environment.queue.advance(std::chrono::milliseconds(1));
    for (const auto &entry : command->logsWhenRunViaTests())
        qInfo() << entry.toMap().value(u"stringValue"_s).toString();
    return QJsonDocument::fromJson(promise.settledValue().toString().toUtf8()).array();
}

void tst_NodeAgreement::calls_data()
{
    QTest::addColumn<int>("index");
    for (qsizetype i = 0; i < m_calls.size(); ++i) {
        QTest::addRow("%s: %s", qPrintable(m_calls[i].file.chopped(4)), qPrintable(m_calls[i].expression.left(200)))
            << int(i);
    }
}

void tst_NodeAgreement::calls()
{
    QFETCH(int, index);
    const bool comparesMessages = m_calls[index].comparesMessages;
    QCOMPARE(
        textOf(m_ofSession[index].toObject(), comparesMessages), textOf(m_ofNode[index].toObject(), comparesMessages));
}

QTEST_GUILESS_MAIN(tst_NodeAgreement)
#include "tst_nodeagreement.moc"
