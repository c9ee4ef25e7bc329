#include "platform/script/ScriptEngine.h"

#include "platform/script/JavaScriptCorePrivate.h"
#include "platform/script/ScriptEvents.h"

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

/// Kept beside the engine, which a question about activities must not start.
const ScriptLimitClient *outermostClient = nullptr;

} // namespace

ScriptActivityPointer currentScriptActivity()
{
    return outermostClient ? outermostClient->activity() : nullptr;
}

void runAsScriptEvent(std::function<void()> work)
{
    ScriptEngine::instance().whenLeft(std::move(work));
}

ScriptLimitClient::~ScriptLimitClient() = default;

ScriptEngine &ScriptEngine::instance()
{
    static auto *const engine = new ScriptEngine;
    return *engine;
}

ScriptEngine::ScriptEngine()
    : m_group(createGroup())
{ }

JSGlobalContextRef ScriptEngine::context()
{
    if (!m_context)
        m_context = JSGlobalContextCreateInGroup(m_group, nullptr);
    return m_context;
}

void ScriptEngine::whenLeft(std::function<void()> work)
{
    if (isEntered())
        m_workForLater.push_back(std::move(work));
    else
        work();
}

void ScriptEngine::collectGarbage()
{
    if (const auto collectNow = JavaScriptCorePrivate::entryPoints().collectNow)
        collectNow(context());
    else
        JSGarbageCollect(context());
}

void ScriptEngine::run(JSContextRef context, const std::function<void()> &work)
{
    if (isNested()) {
        work();
        return;
    }
    m_work = &work;
    // The engine counts the time of an entry, and every call into it from outside would be one, each reaction of a
    // promise another. Inside of this call they all belong to one.
    JSObjectCallAsFunction(context, workFunction(), nullptr, 0, nullptr, nullptr);
    if (m_work)
        runWork(context); // the engine refuses even this call: the work's own calls will tell why
    if (m_thrown)
        std::rethrow_exception(std::exchange(m_thrown, nullptr));
}

/// A function of no session's context, so that none has to make it.
JSObjectRef ScriptEngine::workFunction()
{
    if (!m_workFunction) {
        m_workFunction = JSObjectMakeFunctionWithCallback(context(), nullptr,
            [](JSContextRef caller, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[], JSValueRef *) {
                instance().runWork(caller);
                return JSValueMakeUndefined(caller);
            });
        JSValueProtect(context(), m_workFunction);
    }
    return m_workFunction;
}

void ScriptEngine::runWork(JSContextRef context)
{
    try {
        (*std::exchange(m_work, nullptr))();
    } catch (...) {
        m_thrown = std::current_exception(); // must not cross the engine's frames
    }
    runPromiseReactions(context);
}

void ScriptEngine::runPromiseReactions(JSContextRef context)
{
    const auto &engine = JavaScriptCorePrivate::entryPoints();
    if (!engine.lock || !engine.unlock || !engine.runPromiseReactions)
        return; // without these entry points the engine runs them behind the entry, each with a time limit of its own
    engine.lock(context);
    engine.runPromiseReactions(m_group);
    engine.unlock(context);
}

void ScriptEngine::enter(ScriptLimitClient *client)
{
    m_clients.push_back(client);
    if (m_clients.size() > 1)
        return;
    outermostClient = client;
    applyTimeLimit(client->timeLimit());
}

void ScriptEngine::leave()
{
    m_clients.pop_back();
    if (m_clients.empty()) {
        outermostClient = nullptr;
        m_stop.reset();
    }
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
    m_appliedTimeLimit = seconds;
    if (seconds > 0)
        startTimeLimit();
    else
        engine.clearExecutionTimeLimit(m_group);
}

void ScriptEngine::startTimeLimit()
{
    JavaScriptCorePrivate::entryPoints().setExecutionTimeLimit(
        m_group, m_appliedTimeLimit, &ScriptEngine::timeLimitReached, nullptr);
}

bool ScriptEngine::timeLimitReached(JSContextRef context, void *)
{
    auto &engine = instance();
    if (!engine.isEntered())
        return false;
    if (!engine.m_stop)
        engine.m_stop = engine.m_clients.back()->errorAfterTimeLimit(context, engine.m_appliedTimeLimit);
    // The engine forgets the limit once it has been reached; without this neither a script that may go on would ever be
    // asked about again, nor one that goes on although it was stopped.
    engine.startTimeLimit();
    return engine.m_stop.has_value();
}
