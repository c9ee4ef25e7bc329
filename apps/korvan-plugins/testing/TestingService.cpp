#include "TestingService.h"

#include "document/DocumentContext.h"
#include "document/DocumentFile.h"
#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptException.h"
#include "testing/TestLog.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <utility>

TestingService::TestingService(const TestFile &file, int wanted, TestHost &host, CommandRuns &commands)
    : m_file(file)
    , m_wanted(wanted)
    , m_host(host)
    , m_commands(commands)
{ }

TestingService::~TestingService() = default;

// Running

QString TestingService::file() const
{
    return QStringLiteral("./") + QFileInfo(m_file.path).fileName();
}

void TestingService::list(const QVariantList &tests)
{
    for (const auto &element : tests) {
        const auto test = element.toMap();
        const auto mode = test.value(QStringLiteral("mode")).toString();
        m_tests.append(
            {test.value(QStringLiteral("suite")).toStringList(), test.value(QStringLiteral("title")).toString(),
                mode == u"skip"       ? TestDescription::Mode::Skip
                    : mode == u"only" ? TestDescription::Mode::Only
                                      : TestDescription::Mode::Run});
    }
    m_isOver = true;
}

void TestingService::failed(const QVariant &difference)
{
    m_difference = difference.toString();
}

void TestingService::onStuck(const QVariant &callback)
{
    m_stuck = callback.value<ScriptValue>();
}

void TestingService::afterwards(const QVariant &callback)
{
    m_afterwards = callback.value<ScriptValue>();
}

void TestingService::finish()
{
    if (const auto callback = std::exchange(m_afterwards, std::nullopt))
        callback->call({});
}

bool TestingService::end(const QString &reason)
{
    const auto callback = std::exchange(m_stuck, std::nullopt);
    if (callback)
        callback->call({reason});
    return callback.has_value();
}

// The plug-in

void TestingService::runCommand(
    const QString &identifier, const QString &handler, const QVariantMap &context, const QVariant &done)
{
    m_commands.run(identifier, handler, context, done.value<ScriptValue>());
}

QStringList TestingService::startupCommands() const
{
    return m_commands.identifiersWithHandler(QStringLiteral("Startup"));
}

QStringList TestingService::suppliers() const
{
    QStringList names;
    const auto suppliers = m_commands.suppliers();
    for (const auto &supplier : suppliers)
        names.append(supplier.identifier);
    return names;
}

void TestingService::supplyData(const QString &supplier, const QVariantList &layers, const QVariant &done)
{
    m_commands.supply(supplier, layers, done.value<ScriptValue>());
}

void TestingService::addLog(const QVariantMap &entry)
{
    m_log.append(QVariantMap{
        {QStringLiteral("level"), entry.value(QStringLiteral("level"))}, {QStringLiteral("text"), textOfEntry(entry)}});
}

// The document

void TestingService::openDocumentFile(const QString &file)
{
    useDocument(readDocument(QDir(QFileInfo(m_file.path).path()).absoluteFilePath(file)));
}

void TestingService::openDocument(const QString &json)
{
    useDocument(documentFromJSON(json.toUtf8()));
}

void TestingService::useDocument(Result<std::shared_ptr<Document>> document)
{
    if (!document)
        throw ScriptException(document.error().localizedDescription);
    m_host.setDocument(std::move(document).value());
    const auto command = m_command.lock();
    const auto context = command ? command->context() : nullptr;
    if (!context)
        return;
    const auto entries = contextWithDocument({}, m_host.document());
    for (auto entry = entries.begin(); entry != entries.end(); ++entry)
        context->setValue(entry.key(), entry.value());
}

QString TestingService::snapshot() const
{
    return QString::fromUtf8(jsonFromDocument(*m_host.document()));
}

void TestingService::undo()
{
    m_host.document()->history().undo();
}

void TestingService::redo()
{
    m_host.document()->history().redo();
}

QString TestingService::undoText() const
{
    return m_host.document()->history().undoText();
}

// Everybody else

double TestingService::now() const
{
    return double(m_host.clock().now().count());
}

void TestingService::advance(double milliseconds, const QVariant &done)
{
    const int id = ++m_latestAdvance;
    const auto finish = [this, id, function = done.value<ScriptValue>()] {
        m_advances.erase(id);
        function.call({});
    };
    // After everything else that is due at that moment.
    const auto reached = [this, id, finish] {
        m_advances[id] = m_host.clock().callAfter(std::chrono::milliseconds(0), finish);
    };
    constexpr double longest = 1e12;
    const auto duration = std::chrono::milliseconds(qint64(std::min(milliseconds, longest)));
    m_advances[id] = m_host.clock().callAfter(duration, reached);
}

void TestingService::answer(const QVariantList &answers)
{
    m_host.user().addAnswers(answers);
}

bool TestingService::cancelProgress()
{
    return m_host.user().cancelProgress();
}

QVariantList TestingService::shown() const
{
    return m_host.user().shown();
}

void TestingService::answerRequest(const QString &url, const QVariantMap &answer)
{
    m_host.network().setAnswer(url, answer);
}

QVariantList TestingService::requests() const
{
    return m_host.network().requests();
}

const ScriptClass &TestingService::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&TestingService::file>("file"),
        scriptOperation<&TestingService::wanted>("wanted"),
        scriptOperation<&TestingService::list>("list", "(tests: object[])"),
        scriptOperation<&TestingService::passed>("passed"),
        scriptOperation<&TestingService::failed>("failed", "(difference: string | null)"),
        scriptOperation<&TestingService::onStuck>("onStuck", "(callback: Function)"),
        scriptOperation<&TestingService::afterwards>("afterwards", "(callback: Function)"),
        scriptOperation<&TestingService::runCommand>(
            "runCommand", "(identifier, handler, context: object, done: Function)"),
        scriptOperation<&TestingService::startupCommands>("startupCommands"),
        scriptOperation<&TestingService::suppliers>("suppliers"),
        scriptOperation<&TestingService::supplyData>("supplyData", "(supplier, layers: object[], done: Function)"),
        scriptOperation<&TestingService::log>("log", "(): object[]"),
        scriptOperation<&TestingService::clearLog>("clearLog"),
        scriptOperation<&TestingService::openDocumentFile>("openDocumentFile", "(file)"),
        scriptOperation<&TestingService::openDocument>("openDocument", "(json)"),
        scriptOperation<&TestingService::snapshot>("snapshot"),
        scriptOperation<&TestingService::undo>("undo"),
        scriptOperation<&TestingService::redo>("redo"),
        scriptOperation<&TestingService::undoText>("undoText"),
        scriptOperation<&TestingService::now>("now"),
        scriptOperation<&TestingService::advance>("advance", "(milliseconds, done: Function)"),
        scriptOperation<&TestingService::answer>("answer", "(answers: unknown[])"),
        scriptOperation<&TestingService::cancelProgress>("cancelProgress"),
        scriptOperation<&TestingService::shown>("shown", "(): object[]"),
        scriptOperation<&TestingService::answerRequest>("answerRequest", "(url, answer: object)"),
        scriptOperation<&TestingService::requests>("requests", "(): object[]"),
    };
    static constexpr ScriptClass description{"TestingService", operations};
    return description;
}
