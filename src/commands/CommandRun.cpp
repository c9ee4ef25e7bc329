#include "commands/CommandRun.h"

#include "platform/FileURL.h"
#include "platform/ObjectText.h"

CommandRun::CommandRun(std::shared_ptr<KRPluginCommand> started, std::optional<QString> function, QString key,
    KRPluginCommandManager *manager)
    : m_started(std::move(started))
    , m_function(std::move(function))
    , m_key(std::move(key))
    , m_manager(manager)
{ }

std::optional<QString> CommandRun::perform(const QVariantMap &context, const KRPluginCommand::Completion &onComplete)
{
    begin();
    try {
        const auto fullContext = prepare(context);
        m_running->setContext(fullContext);
        callHandler(fullContext);
    } catch (const ScriptException &exception) {
        reportException(exception.text());
    } catch (const std::exception &exception) {
        reportException(QString::fromUtf8(exception.what()));
    }
    finish(onComplete);
    return m_running ? std::optional(m_running->logString()) : std::nullopt;
}

void CommandRun::begin()
{
    m_started->setManager(m_manager);
    m_started->clearLog();
    m_scriptURL = scriptURLOf(*m_started);
}

QUrl CommandRun::scriptURLOf(const KRPluginCommand &command) const
{
    const auto &script = command.script();
    const auto url = script ? script->URL() : QUrl();
    return url.isEmpty() && m_manager ? m_manager->urlForUnsavedPlugin() : url;
}

ScriptDictionaryPointer CommandRun::prepare(const QVariantMap &context)
{
    if (m_manager)
        m_running = m_manager->stopTrackingLongRunningCommandWithSpecifier(m_started->commandSpecifier());
    if (m_running) {
        if (const auto session = m_running->session())
            session->beginActivity(m_running->name().value_or(QString()));
        return m_running->fullContextFromContext(context, m_scriptURL);
    }

    m_started->newSessionForURL(m_scriptURL, m_started->shouldReloadWithActionID(m_key));
    auto fullContext = m_started->fullContextFromContext(context, m_scriptURL);
    m_started->setUpSessionWithContext(fullContext);
    m_running = m_started; // only now: what fails before has no running command to report to
    return fullContext;
}

void CommandRun::callHandler(const ScriptDictionaryPointer &context)
{
    const auto session = m_running->session();
    if (m_function && session && session->hasFunctionNamed(*m_function))
        m_started->setReturnValue(session->callFunctionNamed(*m_function, {QVariant::fromValue(context)}));
    else if (!m_started->errorInScript())
        reportMissingHandler();
}

void CommandRun::reportMissingHandler()
{
    const auto name = textOrNull(m_running->name());
    const auto path = displayPath(scriptURLOf(*m_running));
    if (m_function) {
        m_running->error(QStringLiteral("Error in command %1 Script at path %2 does not contain a handler function "
                                        "named: %3.")
                             .arg(name, path, *m_function));
    } else {
        m_running->error(
            QStringLiteral("Error in command %1 Script at path %2 does not declare a run handler.").arg(name, path));
    }
}

void CommandRun::reportException(const QString &exception)
{
    m_started->setReturnValue({});
    // An exception before there is a running command is deliberately not reported.
    if (m_running)
        m_running->error(QStringLiteral("Uncaught script exception: %1").arg(exception));
}

void CommandRun::finish(const KRPluginCommand::Completion &onComplete)
{
    if (m_running && !m_running->tearDownIfFinished()) {
        if (m_manager)
            m_manager->trackLongRunningCommand(m_running, onComplete);
        return;
    }
    if (onComplete)
        onComplete((m_running ? m_running : m_started)->logString());
}
