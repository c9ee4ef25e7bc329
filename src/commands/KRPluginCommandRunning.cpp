// The runs of a command: the entry points, and the steps that a run is made of.

#include "commands/KRPluginCommand.h"

#include "commands/CommandContext.h"
#include "commands/CommandRun.h"
#include "commands/WeakPlugins.h"
#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"
#include "platform/UserDefaults.h"

#include <algorithm>
#include <cmath>

namespace {

const auto commandGlobal = QStringLiteral("__command");
const auto processGlobal = QStringLiteral("process");

std::optional<QString> functionForKey(const KRPluginCommand &command, const QString &key)
{
    const auto found = command.handlers().find(key);
    return found == command.handlers().end() ? std::nullopt : std::optional(found->second);
}

double scriptTimeLimit()
{
    constexpr double usualLimit = 10;
    const auto seconds = LTAppEnvironment::current().userDefaults().numberForKey(KRPluginCommandScriptTimeLimitKey);
    return seconds && std::isfinite(*seconds) ? std::max(*seconds, 0.0) : usualLimit;
}

} // namespace

std::optional<QString> KRPluginCommand::run(const QVariantMap &context, KRPluginCommandManager *manager)
{
    return run(context, manager, nullptr);
}

std::optional<QString> KRPluginCommand::run(
    const QVariantMap &context, KRPluginCommandManager *manager, const Completion &onComplete)
{
    return runHandlerWithKey(KRPluginCommandRunHandlerKey, context, manager, onComplete);
}

std::optional<QString> KRPluginCommand::runHandlerWithKey(
    const QString &key, const QVariantMap &context, KRPluginCommandManager *manager)
{
    return runHandlerWithKey(key, context, manager, nullptr);
}

std::optional<QString> KRPluginCommand::runHandlerWithKey(
    const QString &key, const QVariantMap &context, KRPluginCommandManager *manager, const Completion &onComplete)
{
    return runHandler(functionForKey(*this, key), key, context, manager, onComplete);
}

std::optional<QString> KRPluginCommand::runHandler(
    const QString &function, const QVariantMap &context, KRPluginCommandManager *manager)
{
    return runHandler(function, context, manager, nullptr);
}

std::optional<QString> KRPluginCommand::runHandler(
    const QString &function, const QVariantMap &context, KRPluginCommandManager *manager, const Completion &onComplete)
{
    return runHandler(function, function, context, manager, onComplete);
}

std::optional<QString> KRPluginCommand::runHandler(const std::optional<QString> &function,
    const QString &withOptionalKey, const QVariantMap &context, KRPluginCommandManager *manager,
    const Completion &onComplete)
{
    if (!m_script)
        return logString();
    const auto self = std::static_pointer_cast<KRPluginCommand>(shared_from_this());
    return CommandRun(self, function, withOptionalKey, manager).perform(context, onComplete);
}

void KRPluginCommand::newSessionForURL(const QUrl &url, bool shouldReload)
{
    const auto session =
        std::make_shared<COScript>(m_coreModuleMap, commandSpecifier().stringValue().value_or(QString()));
    const auto self = std::static_pointer_cast<KRPluginCommand>(shared_from_this());
    session->setPrintController(self);
    session->setHosting(self);
    setSession(session);
    setErrorInScript(false);
    session->env().insert(QStringLiteral("scriptURL"), url);
    session->setTimeLimit(scriptTimeLimit());
    session->beginActivity(m_name.value_or(QString()));

    const auto bundle = pluginBundle();
    if (bundle)
        session->setModuleFolder(bundle->url());
    session->setShouldPreprocess(!(bundle && bundle->disableCocoaScriptPreprocessor()));
    if (m_disableCocoaScriptPreprocessor)
        session->setShouldPreprocess(false);

    loadJSGlobals();
    if (shouldReload)
        m_script->reload();
    session->setSourceOffset(m_script->sourceOffset());
    executeScript(m_script->script());
}

void KRPluginCommand::setUpSessionWithContext(const ScriptDictionaryPointer &context)
{
    const auto current = session();
    const auto function = functionForKey(*this, KRPluginCommandSetUpHandlerKey);
    if (function && current && current->hasFunctionNamed(*function))
        current->callFunctionNamed(*function, {QVariant::fromValue(context)});
}

void KRPluginCommand::tearDownSession()
{
    const auto current = session();
    const auto function = functionForKey(*this, KRPluginCommandTearDownHandlerKey);
    if (current && function && current->hasFunctionNamed(*function)) {
        try {
            current->callFunctionNamed(*function, {});
        } catch (const ScriptException &exception) {
            // Whatever the handler does, what it tears down ends here.
            error(QStringLiteral("Uncaught script exception: %1").arg(exception.text()));
        }
    }
    if (current) {
        current->deleteObjectWithName(commandGlobal);
        current->deleteObjectWithName(processGlobal);
    }
    abandonSession();
}

void KRPluginCommand::abandonSession()
{
    if (const auto dictionary = context())
        dictionary->clear();
    setContext(nullptr);
    setSession(nullptr);
}

bool KRPluginCommand::tearDownIfFinished()
{
    if (stayRunning())
        return false;
    tearDownSession();
    return true;
}

ScriptDictionaryPointer KRPluginCommand::fullContextFromContext(const QVariantMap &context, const QUrl &url)
{
    auto full = std::make_shared<ScriptDictionary>(context);
    for (const auto &key : commandContextKeys()) {
        if (const auto value = key.value(*this, url); value.isValid())
            full->setValue(QString::fromLatin1(key.name), value);
    }
    return full;
}

void KRPluginCommand::setContext(const ScriptDictionaryPointer &context)
{
    runState().context = context;
    runState().bundleOfContext = context ? pluginBundle() : nullptr;
}

void KRPluginCommand::setReturnValue(const QVariant &value)
{
    runState().returnValue = withWeakPlugins(value);
}

void KRPluginCommand::loadJSGlobals()
{
    if (const auto current = session())
        current->pushObject(QVariant::fromValue(shared_from_this()), commandGlobal);
}

QVariant KRPluginCommand::executeScript(const std::optional<QString> &source)
{
    setExecutingScript(source);
    const auto current = session();
    return current ? current->executeString(source) : QVariant();
}

bool KRPluginCommand::shouldReloadWithActionID(const QString &actionID) const
{
    if (actionIDsNotToReload().contains(actionID))
        return false;
    return LTAppEnvironment::current().userDefaults().boolForKey(KRPluginCommandAlwaysReloadKey);
}

void KRPluginCommand::setSession(const std::shared_ptr<COScript> &session)
{
    if (const auto current = this->session())
        current->cleanup();
    runState().session = session;
}

bool KRPluginCommand::stayRunning() const
{
    const auto current = session();
    return current && current->shouldKeepRunning();
}

void KRPluginCommand::setStayRunning(bool stayRunning)
{
    if (const auto current = session())
        current->setShouldKeepAround(stayRunning);
}

KRPluginCommand::RunState &KRPluginCommand::runState()
{
    if (!m_run)
        m_run = std::make_unique<RunState>();
    return *m_run;
}
