#pragma once

#include <JavaScriptCore/JavaScript.h>

#include <functional>
#include <vector>

/// Whoever has scripts running is asked what to do when they exceed the limit.
class ScriptLimitClient
{
public:
    virtual ~ScriptLimitClient();

    /// The limit in seconds of processor time for one entry; 0 for none.
    virtual double timeLimit() const = 0;
    /// Called inside the engine while the script of that context stands still. True: stop it.
    virtual bool shouldStopAfterTimeLimit(JSContextRef context) = 0;
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

    /// Whether a script is on the stack.
    bool isEntered() const { return !m_clients.empty(); }

    /// Runs `work` as soon as no script is on the stack any more; at once when none is. A script runs to its end
    /// before anything else of its kind begins, also when it waits in a nested event loop.
    void whenLeft(std::function<void()> work);

    /// Collects what nobody refers to.
    void collectGarbage(JSContextRef context);

private:
    friend class ScriptEntry;

    ScriptEngine();
    ~ScriptEngine() = delete; // lives as long as the process: scripts' finalizers may run at its very end

    void enter(ScriptLimitClient *client);
    void leave();
    void applyTimeLimit(double seconds);
    static bool timeLimitReached(JSContextRef context, void *data);

    JSContextGroupRef m_group;
    std::vector<ScriptLimitClient *> m_clients;
    std::vector<std::function<void()>> m_workForLater;
    double m_appliedTimeLimit = 0;
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
