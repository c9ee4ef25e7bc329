#pragma once

#include "platform/script/ScriptActivity.h"
#include "platform/script/ScriptException.h"

#include <JavaScriptCore/JavaScript.h>

#include <exception>
#include <functional>
#include <optional>
#include <vector>

/// Whoever has scripts running is asked what to do when they exceed the limit.
class ScriptLimitClient
{
public:
    virtual ~ScriptLimitClient();

    /// The limit in seconds of processor time for one entry; 0 for none.
    virtual double timeLimit() const = 0;
    /// Called inside the engine while the script of that context stands still, for having computed so many seconds.
    /// Nil lets it go on; an error stops it, and is the one to be reported.
    virtual std::optional<ScriptException> errorAfterTimeLimit(JSContextRef context, double seconds) = 0;
    /// Why its scripts run; null when for nothing that anybody would take back.
    virtual ScriptActivityPointer activity() const { return nullptr; }
};

/// The process's one engine: the context group that all sessions share (so that a script compiles once for all of
/// them), the stack of entries into it, and the time limit. Main thread only.
class ScriptEngine
{
public:
    static ScriptEngine &instance();
    ScriptEngine(const ScriptEngine &) = delete;
    ScriptEngine &operator=(const ScriptEngine &) = delete;

    JSContextGroupRef group() const { return m_group; }
    /// A context of no session, which lives as long as the process.
    JSGlobalContextRef context();

    /// Whether a script is on the stack.
    bool isEntered() const { return !m_clients.empty(); }
    /// Whether a script has called what is running now.
    bool isNested() const { return m_clients.size() > 1; }

    /// Runs `work`, and then the reactions of promises, as one entry: together they have the client's time limit. To
    /// be called inside a ScriptEntry. Nested calls only run the work; time and reactions are the outermost one's.
    void run(JSContextRef context, const std::function<void()> &work);

    /// Why the scripts on the stack are being stopped; nil when they are not. Forgotten when the last one has left.
    const std::optional<ScriptException> &stop() const { return m_stop; }

    /// Runs `work` as soon as no script is on the stack any more; at once when none is. A script runs to its end
    /// before anything else of its kind begins, also when it waits in a nested event loop.
    void whenLeft(std::function<void()> work);

    /// Collects what nobody refers to.
    void collectGarbage();

private:
    friend class ScriptEntry;

    ScriptEngine();
    ~ScriptEngine() = delete; // lives as long as the process: scripts' finalizers may run at its very end

    void enter(ScriptLimitClient *client);
    void leave();
    JSObjectRef workFunction();
    void runWork(JSContextRef context);
    void runPromiseReactions(JSContextRef context);
    void applyTimeLimit(double seconds);
    void startTimeLimit();
    static bool timeLimitReached(JSContextRef context, void *data);

    JSContextGroupRef m_group;
    JSGlobalContextRef m_context = nullptr;
    JSObjectRef m_workFunction = nullptr;
    std::vector<ScriptLimitClient *> m_clients;
    std::vector<std::function<void()>> m_workForLater;
    /// What workFunction() has to run, and what that has thrown.
    const std::function<void()> *m_work = nullptr;
    std::exception_ptr m_thrown;
    double m_appliedTimeLimit = 0;
    std::optional<ScriptException> m_stop;
};

/// Stands on the C++ stack around every call into the engine that may run a script.
class ScriptEntry
{
public:
    explicit ScriptEntry(ScriptLimitClient *client) { ScriptEngine::instance().enter(client); }
    ~ScriptEntry() { ScriptEngine::instance().leave(); }
    ScriptEntry(const ScriptEntry &) = delete;
    ScriptEntry &operator=(const ScriptEntry &) = delete;
};
