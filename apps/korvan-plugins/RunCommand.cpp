#include "Commands.h"

#include "CommandRunner.h"
#include "DocumentContext.h"
#include "PluginSession.h"
#include "commands/KRPluginStandaloneScript.h"
#include "document/DocumentFile.h"
#include "platform/script/ValueText.h"

#include <QDateTime>
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
        : m_options(options)
        , m_output(output)
        , m_session(global)
        , m_log(std::make_shared<LogCollector>([this](const QVariantMap &entry, const QString &) { showEntry(entry); }))
    {
        m_session.manager().setLogAction(m_log);
    }

    ExitCode perform()
    {
        if (!findCommand() || !loadDocument())
            return ExitCode::Failed;
        const auto results = runHandlers();
        const bool isSaved = saveDocument();
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
            m_output.error(QStringLiteral("There is no command \"%1\".").arg(*m_options.specifier));
        return m_command != nullptr;
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

    QVariantMap context() const
    {
        return m_document ? contextWithDocument(m_options.context, m_document) : m_options.context;
    }

    QList<CommandResult> runHandlers()
    {
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
