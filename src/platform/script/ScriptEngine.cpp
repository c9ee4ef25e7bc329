#include "platform/script/ScriptEngine.h"

#include "platform/script/JavaScriptCorePrivate.h"

#include <QtGlobal>

#include <utility>

namespace {

constexpr char regularExpressionCompiler[] = "JSC_useRegExpJIT";

/// Creates the group with the compiler for regular expressions switched off: its code never looks at the time limit,
/// so that one expression that backtracks without end would freeze the host for ever. The interpreter gives up.
/// The engine reads the setting when it starts; a host that has started it before keeps its own choice.
JSContextGroupRef createGroup()
{
    const bool isChosenByHost = qEnvironmentVariableIsSet(regularExpressionCompiler);
    if (!isChosenByHost)
        qputenv(regularExpressionCompiler, "0");
    const auto group = JSContextGroupCreate();
    if (!isChosenByHost)
        qunsetenv(regularExpressionCompiler);
    return group;
}

} // namespace

ScriptLimitClient::~ScriptLimitClient() = default;

ScriptEngine &ScriptEngine::instance()
{
    static auto *const engine = new ScriptEngine;
    return *engine;
}

ScriptEngine::ScriptEngine()
    : m_group(createGroup())
{ }

void ScriptEngine::whenLeft(std::function<void()> work)
{
    if (isEntered())
        m_workForLater.push_back(std::move(work));
    else
        work();
}

void ScriptEngine::collectGarbage(JSContextRef context)
{
    if (const auto collectNow = JavaScriptCorePrivate::entryPoints().collectNow)
        collectNow(context);
    else
        JSGarbageCollect(context);
}

void ScriptEngine::enter(ScriptLimitClient *client)
{
    m_clients.push_back(client);
    if (m_clients.size() == 1)
        applyTimeLimit(client->timeLimit());
}

void ScriptEngine::leave()
{
    m_clients.pop_back();
    while (m_clients.empty() && !m_workForLater.empty()) {
        const auto work = std::exchange(m_workForLater, {});
        for (const auto &function : work)
            whenLeft(function);
    }
}

void ScriptEngine::applyTimeLimit(double seconds)
{
    if (seconds == m_appliedTimeLimit)
        return;
    const auto &engine = JavaScriptCorePrivate::entryPoints();
    if (!engine.setExecutionTimeLimit || !engine.clearExecutionTimeLimit)
        return; // without these entry points scripts run for as long as they like
    if (seconds > 0)
        engine.setExecutionTimeLimit(m_group, seconds, &ScriptEngine::timeLimitReached, nullptr);
    else
        engine.clearExecutionTimeLimit(m_group);
    m_appliedTimeLimit = seconds;
}

bool ScriptEngine::timeLimitReached(JSContextRef context, void *)
{
    auto &engine = instance();
    if (!engine.isEntered())
        return false;
    if (engine.m_clients.back()->shouldStopAfterTimeLimit(context))
        return true;
    // The engine forgets the limit once it has been reached; without this the script would never be asked about again.
    JavaScriptCorePrivate::entryPoints().setExecutionTimeLimit(
        engine.m_group, engine.m_appliedTimeLimit, &ScriptEngine::timeLimitReached, nullptr);
    return false;
}
