#include "Commands.h"

#include "CallTracer.h"
#include "CommandRunner.h"
#include "OutputFiles.h"
#include "PluginSession.h"
#include "commands/KRPluginStandaloneScript.h"
#include "document/DocumentContext.h"
#include "document/DocumentFile.h"
#include "platform/AtomicFile.h"
#include "platform/script/ScriptProfiler.h"
#include "platform/script/ValueText.h"
#include "validation/Suggestion.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

/// Values as JSON holds them: dates as scripts write them, null for what JSON cannot hold.
QVariant jsonValue(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDateTime:
        return value.toDateTime().isValid() ? QVariant(value.toDateTime().toUTC().toString(Qt::ISODateWithMs))
                                            : QVariant();
    case QMetaType::QVariantList: {
        QVariantList list;
        const auto elements = value.toList();
        for (const auto &element : elements)
            list.append(jsonValue(element));
        return list;
    }
    case QMetaType::QVariantMap: {
        QVariantMap map;
        const auto entries = value.toMap();
        for (auto entry = entries.begin(); entry != entries.end(); ++entry)
            map.insert(entry.key(), jsonValue(entry.value()));
        return map;
    }
    default:
        return value;
    }
}

OrderedVariantDictionary describeResult(const CommandResult &result)
{
    QVariantList log;
    for (const auto &entry : result.log) {
        log.append(QVariant::fromValue(OrderedVariantDictionary{
            {QStringLiteral("level"), entry.value(QStringLiteral("level"))},
            {QStringLiteral("stringValue"), entry.value(QStringLiteral("stringValue"))},
        }));
    }
    return {
        {QStringLiteral("log"), log},
        {QStringLiteral("returnValue"), jsonValue(result.returnValue)},
        {QStringLiteral("logString"), result.logString},
        {QStringLiteral("finished"), result.isFinished},
    };
}

/// One run of this program: the command, the document it works on, and what comes of it.
class Run
{
public:
    Run(const GlobalOptions &global, const RunOptions &options, Output &output)
        : m_global(global)
        , m_options(options)
        , m_output(output)
        , m_session(global)
        , m_log(std::make_shared<LogCollector>([this](const QVariantMap &entry, const QString &) { showEntry(entry); }))
    {
        m_session.manager().setLogAction(m_log);
    }

    ExitCode perform()
    {
        if (!findCommand() || !loadDocument() || !checkOutputs())
            return ExitCode::Failed;
        const auto profiler = startProfiler();
        const auto results = runHandlers();
        const bool isSaved = saveDocument() && saveProfile(profiler.get());
        if (isSaved)
            show(results);
        const bool hasErrors =
            std::any_of(results.begin(), results.end(), [](const auto &result) { return result.hasErrors(); });
        return isSaved && !hasErrors ? ExitCode::Done : ExitCode::Failed;
    }

private:
    bool findCommand()
    {
        if (m_options.standaloneFile)
            return loadStandaloneScript();
        const auto specifier = m_session.findCommand(*m_options.specifier);
        if (specifier)
            m_command = m_session.manager().commandWithSpecifier(*specifier);
        else
            m_output.error(QStringLiteral("There is no command \"%1\".").arg(*m_options.specifier) + knownCommands());
        return m_command != nullptr;
    }

    /// What the user may have meant.
    QString knownCommands()
    {
        for (const auto &folder : m_global.folders.value_or(QStringList())) {
            if (!QFileInfo(folder).isDir())
                return QStringLiteral(" The folder \"%1\" does not exist.").arg(folder);
        }
        QStringList commands;
        const auto plugins = m_session.manager().plugins();
        for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin) {
            for (const auto &[identifier, command] : plugin.value()->commands())
                commands.append(plugin.key() + u'/' + identifier);
        }
        if (const auto nearest = nearestName(*m_options.specifier, commands); !nearest.isEmpty())
            return QStringLiteral(" Did you mean \"%1\"?").arg(nearest);
        if (commands.isEmpty())
            return QStringLiteral(" No plug-in here has any.");
        constexpr qsizetype most = 10;
        const auto shown = commands.mid(0, most).join(QStringLiteral(", "));
        return QStringLiteral(" There are: %1%2.")
            .arg(shown, commands.size() > most ? QStringLiteral(", …") : QString());
    }

    bool loadStandaloneScript()
    {
        const QFileInfo file(*m_options.standaloneFile);
        KRError error;
        const auto script = KRPluginStandaloneScript::initWithURL(QUrl::fromLocalFile(file.absoluteFilePath()), &error);
        if (!script) {
            m_output.error(QStringLiteral("Cannot read the script \"%1\": %2")
                               .arg(*m_options.standaloneFile, error.localizedDescription));
            return false;
        }
        const auto name = file.completeBaseName();
        m_command =
            std::make_shared<KRPluginCommand>(script, name, name, script->handler(), KRPluginCommand::Scope::Document);
        return true;
    }

    bool loadDocument()
    {
        if (!m_options.documentFile)
            return true;
        auto document = readDocument(*m_options.documentFile);
        if (document)
            m_document = std::move(document).value();
        else
            m_output.error(document.error());
        return m_document != nullptr;
    }

    /// Before anything runs: its result would be lost, or something else.
    bool checkOutputs()
    {
        const auto error = errorOfOutputs();
        if (error)
            m_output.error(*error);
        return !error;
    }

    std::optional<KRError> errorOfOutputs() const
    {
        QList<NamedFile> files;
        if (m_options.standaloneFile)
            files.append({QStringLiteral("--standalone"), *m_options.standaloneFile});
        if (m_options.dumpDocumentFile && m_document) {
            const NamedFile dump{QStringLiteral("--dump-document"), *m_options.dumpDocumentFile};
            if (auto error = clashOfOutput(dump, files))
                return error;
            if (auto error = refusalToWrite(QStringLiteral("document"), dump.path))
                return error;
            files.append(dump); // which may be the document that is read
        }
        if (m_options.documentFile)
            files.append({QStringLiteral("--document"), *m_options.documentFile});
        if (!m_options.profileFile)
            return std::nullopt;
        const NamedFile profile{QStringLiteral("--profile"), *m_options.profileFile};
        if (auto error = clashOfOutput(profile, files))
            return error;
        return refusalToWrite(QStringLiteral("profile"), profile.path);
    }

    QVariantMap context() const
    {
        return m_document ? contextWithDocument(m_options.context, m_document) : m_options.context;
    }

    /// Null when no profile is wanted, or there cannot be one.
    std::unique_ptr<ScriptProfiler> startProfiler() const
    {
        if (!m_options.profileFile)
            return nullptr;
        auto profiler = ScriptProfiler::start();
        if (!profiler)
            printToStandardError(
                QStringLiteral("korvan-plugins: The script engine of this computer has no profiler, so "
                               "that no profile is written."));
        return profiler;
    }

    bool saveProfile(ScriptProfiler *profiler)
    {
        if (!profiler)
            return true;
        const auto &path = *m_options.profileFile;
        const auto error = replaceFileAtomically(QFile::encodeName(path), profiler->profile());
        if (error)
            m_output.error(
                QStringLiteral("Cannot write the profile \"%1\": %2").arg(path, error->localizedDescription));
        return !error;
    }

    QList<CommandResult> runHandlers()
    {
        const auto tracer = m_options.trace ? std::make_unique<CallTracer>(m_output, *m_log) : nullptr;
        CommandRunner runner(m_session.manager(), *m_log, m_command);
        for (const auto &key : m_options.handlers)
            runner.run(key, context());
        runner.wait(std::chrono::milliseconds(qint64(m_options.waitSeconds * 1000)));
        return runner.takeResults();
    }

    bool saveDocument()
    {
        if (!m_options.dumpDocumentFile || !m_document)
            return true;
        const auto error = writeDocument(*m_document, *m_options.dumpDocumentFile);
        if (error)
            m_output.error(*error);
        return !error;
    }

    void showEntry(const QVariantMap &entry)
    {
        const bool isError = entry.value(QStringLiteral("level")).toString() == u"error";
        m_output.line(entry.value(QStringLiteral("stringValue")).toString(),
            isError ? Output::Colour::Red : Output::Colour::Plain);
    }

    void show(const QList<CommandResult> &results)
    {
        if (m_output.isJSON())
            return showAsJSON(results);
        for (const auto &result : results) {
            if (result.returnValue.isValid())
                m_output.line(QStringLiteral("→ ") + descriptionOfValue(result.returnValue), Output::Colour::Green);
            if (!result.isFinished)
                m_output.line(QStringLiteral("The command is still running."), Output::Colour::Yellow);
        }
    }

    void showAsJSON(const QList<CommandResult> &results)
    {
        if (results.size() == 1)
            return m_output.document(describeResult(results.first()));
        QVariantList runs;
        for (const auto &result : results)
            runs.append(QVariant::fromValue(describeResult(result)));
        m_output.document({{QStringLiteral("runs"), runs}});
    }

    const GlobalOptions &m_global;
    const RunOptions &m_options;
    Output &m_output;
    PluginSession m_session;
    std::shared_ptr<LogCollector> m_log;
    std::shared_ptr<KRPluginCommand> m_command;
    std::shared_ptr<Document> m_document;
};

} // namespace

ExitCode runCommand(const GlobalOptions &options, const RunOptions &run, Output &output)
{
    return Run(options, run, output).perform();
}
