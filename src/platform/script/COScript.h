#pragma once

#include "platform/Export.h"
#include "platform/script/COFlowDelegate.h"
#include "platform/script/COPrintController.h"
#include "platform/script/ScriptCoreModules.h"
#include "platform/script/SourceOffset.h"

#include <QString>
#include <QUrl>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

#include <memory>
#include <optional>

class ScriptHosting;
class ScriptSession;

/// One script session: a global scope of its own, in which sources are evaluated and their functions called. Held by
/// a shared pointer. Main thread only; needs the environment's main queue.
///
/// Scripts find print, log, console, require, timers (setTimeout, setInterval, setImmediate, their clear functions)
/// and queueMicrotask as globals, and those of ScriptGlobalNames.h that a core module implements.
class KORVAN_EXPORT COScript
{
public:
    using CoreModules = ScriptCoreModules;

    /// Starts the engine, so that the first session does not wait for it. May be called more than once.
    static void listen();
    /// Held weakly; null for none.
    static void setFlowDelegate(const std::weak_ptr<COFlowDelegate> &delegate);
    /// Collects what no script refers to any more, before it returns.
    static void collectGarbage();

    /// `initWithCoreModules:andName:`. `require` finds the modules under their names at these files; a time limit's
    /// message names the session.
    COScript(const CoreModules &coreModules, const QString &andName);
    /// Ends the session.
    ~COScript();
    COScript(const COScript &) = delete;
    COScript &operator=(const COScript &) = delete;

    /// Held weakly. Without one, output goes to the debug controller.
    void setPrintController(const std::weak_ptr<COPrintController> &controller);

    /// The session's environment: "scriptURL" is the file that sources are evaluated as, and that `require` starts
    /// from.
    QVariantMap &env();
    /// The folder whose files `require` may read, and from which errors name their files. Without it, the folder of
    /// the script.
    void setModuleFolder(const QUrl &folder);

    /// Held weakly: native services for core modules, and the globals that core modules implement. Without it there are
    /// neither.
    void setHosting(const std::weak_ptr<ScriptHosting> &hosting);

    /// Where in the sources that are evaluated next the author's text begins.
    void setSourceOffset(const SourceOffset &offset);

    /// Whether a source that is not valid JavaScript is searched for bracketed message sends. True at first.
    void setShouldPreprocess(bool shouldPreprocess);
    /// In seconds of processor time for each call into the script; 0 for none, as at first.
    void setTimeLimit(double seconds);

    /// What the session's scripts do from now on is another activity (ScriptActivity.h), named in the user's words. The
    /// first one has the session's own name.
    void beginActivity(const QString &name);

    /// Makes the value a global of that name.
    void pushObject(const QVariant &object, const QString &withName);
    void deleteObjectWithName(const QString &name);

    /// Evaluates the source and answers its last value. Nil for a nil source. An exception is printed as a ready-made
    /// entry and signalled; the answer is nil then.
    QVariant executeString(const std::optional<QString> &source);

    /// Whether the scripts have a function of that name at their top level, however it was declared.
    bool hasFunctionNamed(const QString &name) const;
    /// Calls that function. A promise that it returns keeps the session running until it settles; if it is rejected,
    /// that is reported like an exception in a callback. Throws a ScriptException, already signalled, when the function
    /// throws; answers nil when there is no such function.
    QVariant callFunctionNamed(const QString &name, const QVariantList &withArguments);

    /// Whether something is pending: a timer, a promise that a called function has returned, or the wish to be kept.
    bool shouldKeepRunning() const;
    bool shouldKeepAround() const;
    void setShouldKeepAround(bool keepAround);

    /// Ends the session: stops its timers, forgets its promises, and lets go of everything it holds. What its scripts
    /// still ask for is an error. May be called while one of them is on the stack, and more than once.
    void cleanup();

private:
    std::shared_ptr<ScriptSession> m_session;
};
