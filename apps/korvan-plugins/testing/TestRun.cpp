#include "TestRun.h"

#include "commands/KRPluginCommandKeys.h"
#include "document/DocumentContext.h"
#include "document/DocumentFile.h"
#include "testing/TestLog.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

/// The script of a test's session. It is where the test's file is, so that modules are found from there, but only hands
/// over to the module for tests.
class TestScript final : public KRPluginScript
{
public:
    explicit TestScript(const QString &path)
        : KRPluginScript(QFile::encodeName(path))
    { }

    std::optional<QString> script() const override
    {
        return QStringLiteral(
            "function onTest(context) { return require('korvan/testing').perform(context, require); }");
    }
    QByteArray scriptBytes() const override { return script()->toUtf8(); }
};

std::shared_ptr<KRPluginBundle> readBundle(const TestFile &file)
{
    return file.bundle.isEmpty() ? nullptr
                                 : KRPluginBundle::pluginBundleWithURL(QUrl::fromLocalFile(file.bundle + u'/'));
}

PluginTable tableOf(const std::shared_ptr<KRPluginBundle> &bundle)
{
    return bundle ? PluginTable{{bundle->identifier().value_or(QString()), bundle}} : PluginTable();
}

} // namespace

TestRun::TestRun(const TestSettings &settings, const TestFile &file, std::optional<int> test)
    : m_settings(settings)
    , m_file(file)
    , m_host(settings.global, settings.limitSeconds, [this](const QString &complaint) { m_complaint = complaint; })
    , m_collector(std::make_shared<LogCollector>(
          [this](const QVariantMap &entry, const QString &sender) { take(entry, sender); }))
    , m_bundle(readBundle(file))
    , m_commands(m_host, m_manager, m_bundle)
    , m_service(std::make_shared<TestingService>(m_file, test.value_or(-1), m_host, m_commands))
    , m_command(makeCommand())
{
    m_manager.setLogAction(m_collector);
    m_manager.setPlugins(tableOf(m_bundle));
    m_service->setCommand(m_command);
    m_host.setTestingService(m_service);
}

TestRun::~TestRun()
{
    m_command->abandonSession();
    m_manager.setPlugins(PluginTable());
}

std::shared_ptr<KRPluginCommand> TestRun::makeCommand() const
{
    const auto name = m_file.name();
    auto command = std::make_shared<KRPluginCommand>(std::make_shared<TestScript>(m_file.path), name, name,
        QStringLiteral("onTest"), KRPluginCommand::Scope::Document);
    command->setPluginBundle(m_bundle);
    auto modules = command->coreModuleMap();
    const auto resource = QStringLiteral("core-modules/@krpm/testing/index");
    modules.insert(QStringLiteral("korvan/testing"), m_host.urlForResource(resource, QStringLiteral("js")));
    command->setCoreModuleMap(modules);
    return command;
}

std::optional<KRError> TestRun::openDocument()
{
    const auto beside = QFileInfo(m_file.path).path() + QStringLiteral("/document.json");
    if (!m_settings.documentFile && !QFile::exists(beside))
        return std::nullopt;
    auto document = readDocument(m_settings.documentFile.value_or(beside));
    if (!document)
        return document.error();
    m_host.setDocument(std::move(document).value());
    return std::nullopt;
}

std::optional<TestFailure> TestRun::perform()
{
    if (!m_file.bundle.isEmpty() && !m_bundle)
        return TestFailure{QStringLiteral("The plug-in \"%1\" cannot be read.").arg(m_file.bundle), {}, 0, 0, {}, {}};
    if (const auto error = openDocument())
        return TestFailure{error->localizedDescription, {}, 0, 0, {}, {}};
    const QDeadlineTimer deadline(qint64(m_settings.limitSeconds * 1000));
    m_command->run(contextWithDocument({}, m_host.document()), &m_manager);
    while (!isOver()) {
        if (!m_complaint.isEmpty())
            end(std::exchange(m_complaint, {}));
        else if (m_commands.finish())
            continue;
        else if (deadline.hasExpired())
            end(QStringLiteral("The test took longer than %1 %2.")
                    .arg(m_settings.limitSeconds)
                    .arg(m_settings.limitSeconds == 1 ? QStringLiteral("second") : QStringLiteral("seconds")));
        else
            goOn();
    }
    if (!m_failure && !m_complaint.isEmpty())
        m_failure = TestFailure{m_complaint, m_file.name(), 0, 0, {}, {}};
    return m_failure;
}

/// Lets the next thing happen, as soon as it takes the clock to. When the test is done, no time passes any more.
void TestRun::goOn()
{
    constexpr std::chrono::hours longest(1);
    auto &clock = m_host.clock();
    if (m_service->isFinishing()) {
        if (!clock.runNext(clock.now()))
            m_service->finish();
        return;
    }
    if (clock.runNext(longest))
        return;
    end(QStringLiteral("The test waits for something that does not come, not within an hour of its clock."));
}

void TestRun::end(const QString &reason)
{
    if (!m_service->end(reason))
        m_failure = TestFailure{reason, m_file.name(), 0, 0, {}, {}};
}

void TestRun::take(const QVariantMap &entry, const QString &sender)
{
    if (isOver())
        return;
    const bool isOfTest = m_command->identifier() == sender;
    if (isOfTest && isUncaughtError(entry)) {
        m_failure = failureFrom(entry);
        return;
    }
    m_log.append({entry, isOfTest ? TestLogEntry::Origin::Test : TestLogEntry::Origin::Command});
    if (isOfTest)
        return;
    m_service->addLog(entry);
    if (!m_commands.take(entry, sender))
        m_complaint = QStringLiteral("The command \"%1\" has failed: %2").arg(sender, textOfUncaughtError(entry));
}

TestFailure TestRun::failureFrom(const QVariantMap &entry) const
{
    const auto error = uncaughtError(entry);
    TestFailure failure{error.message, error.file, error.line, error.column, {}, m_service->difference()};
    constexpr qsizetype deepestStack = 10;
    for (const auto &call : error.calls) {
        if (isOfPlugin(call) && failure.stack.size() < deepestStack)
            failure.stack.append(call);
    }
    const auto place = placeOfCall(failure.stack.value(0));
    if (place.line > 0) {
        failure.file = place.file;
        failure.line = place.line;
        failure.column = place.column;
    }
    if (failure.file.isEmpty())
        failure.file = m_file.name();
    return failure;
}

/// Not those of assertions, which are of the application's modules and named without a folder, and of what has called
/// the test. What a source map leads to need not exist.
bool TestRun::isOfPlugin(const QString &call) const
{
    const auto folder = m_file.bundle.isEmpty() ? QFileInfo(m_file.path).path() : m_file.bundle;
    const auto file = placeOfCall(call).file;
    const bool isKnown = file.contains(u'/') || QFile::exists(QDir(folder).filePath(file));
    return !file.isEmpty() && !call.startsWith(u"onTest (") && isKnown;
}
