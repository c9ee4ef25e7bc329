#pragma once

#include "platform/script/COFlowDelegate.h"
#include "platform/script/COPrintController.h"
#include "platform/script/ScriptContext.h"
#include "platform/script/ScriptConverter.h"
#include "platform/script/ScriptCoreModules.h"
#include "platform/script/ScriptGlobalNames.h"
#include "platform/script/ScriptHost.h"
#include "platform/script/ScriptLocations.h"
#include "platform/script/ScriptModules.h"
#include "platform/script/ScriptOperations.h"
#include "platform/script/ScriptServices.h"
#include "platform/script/ScriptTimers.h"
#include "platform/script/ScriptWrappers.h"
#include "platform/script/SourceOffset.h"

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>

/// What stands behind a COScript: the engine's context with everything that serves it, and the rules for entering it.
///
/// Whatever runs a script is here in one of two forms: a call from the run of a command, whose error is thrown to the
/// caller, or an event (a timer, a promise, a callback), whose error is printed and after which the flow delegate is
/// told. Held by shared pointers, so that a script may end its own session.
class ScriptSession final : public ScriptContextClient,
                            public ScriptFunctionCaller,
                            public ScriptHost,
                            public std::enable_shared_from_this<ScriptSession>
{
public:
    ScriptSession(const ScriptCoreModules &coreModules, const QString &name);
    ~ScriptSession() override;

    static void setFlowDelegate(const std::weak_ptr<COFlowDelegate> &delegate);

    void setFacade(COScript *facade) { m_facade = facade; }
    void setPrintController(const std::weak_ptr<COPrintController> &controller) { m_printController = controller; }
    QVariantMap &mutableEnvironment() { return m_environment; }
    void setHosting(const std::weak_ptr<ScriptHosting> &hosting) { m_services.setHosting(hosting); }
    void setModuleFolder(const QUrl &folder) { m_moduleFolder = folder; }
    void setSourceOffset(const SourceOffset &offset) { m_sourceOffset = offset; }
    void setShouldPreprocess(bool shouldPreprocess) { m_shouldPreprocess = shouldPreprocess; }
    void setTimeLimit(double seconds) { m_timeLimit = seconds; }
    void beginActivity(const QString &name);

    bool shouldKeepAround() const { return m_shouldKeepAround; }
    void setShouldKeepAround(bool keepAround) { m_shouldKeepAround = keepAround; }

    void pushObject(const QVariant &object, const QString &name);
    void deleteObject(const QString &name);
    QVariant execute(const QString &source);
    bool hasFunction(const QString &name);
    QVariant callFunctionNamed(const QString &name, const QVariantList &arguments);

    bool hasPendingWork() const
    {
        return m_live && (!m_live->timers.isEmpty() || !m_promises.empty() || m_services.isWaitedFor());
    }
    void end();

    // ScriptHost
    QString name() const override { return m_name; }
    QVariantMap environment() const override { return m_environment; }
    void print(const QVariant &value) override;
    std::shared_ptr<void> keepRunning() override { return m_services.keepRunning(); }
    bool isEnded() const override { return !m_live; }

    // ScriptContextClient
    JSValueRef callHost(HostFunction function, std::span<const JSValueRef> arguments, JSValueRef *exception) override;
    void promiseRejected(JSValueRef reason) override;
    double timeLimit() const override { return m_timeLimit; }
    ScriptActivityPointer activity() const override { return m_activity; }
    std::optional<ScriptException> errorAfterTimeLimit(JSContextRef context, double seconds) override;

    // ScriptFunctionCaller
    QVariant callFunction(JSObjectRef function, const QVariantList &arguments) override;
    void runScript(const std::function<void()> &work) override;

private:
    /// What exists until the session ends.
    struct Live
    {
        explicit Live(ScriptSession &session);

        ScriptContext context;
        ScriptOperations operations;
        ScriptWrappers wrappers;
        ScriptConverter converter;
        ScriptTimers timers;
    };

    /// A source as the engine gets it: a module's stands in a function.
    struct Source
    {
        QString text;
        QString url;
        QString head;
        QString tail;
        /// Characters behind the author's own text.
        qsizetype trailing = 0;
    };

    /// Runs work that may run scripts; nothing when the session has ended. What it is handed stays valid while it runs,
    /// even when a script ends the session.
    void enter(const std::function<void(Live &live)> &work);

    JSValueRef evaluate(Live &live, const Source &source, JSValueRef *exception);
    JSObjectRef findFunction(Live &live, const QString &name);
    /// Calls a function. A promise that it returns keeps the session running until it settles.
    QVariant callWatching(Live &live, JSObjectRef function, const QVariantList &arguments, JSValueRef *exception);
    void watchPromise(Live &live, JSValueRef promise, const ScriptValue &value, JSValueRef *exception);
    void fireTimer(int id);

    /// The error that a call into the engine has ended with, if any: an exception, or the time limit.
    std::optional<ScriptException> takeError(Live &live, JSValueRef exception);
    ScriptException read(Live &live, JSValueRef thrown);
    void signal(const ScriptException &error);
    void report(const ScriptException &error);
    void tellFlowDelegate();

    void useScriptFile();
    QByteArray folderOfModules() const;
    const ScriptLocations &locations();
    void noteSource(const QString &url, const ScriptSource &source);
    JSValueRef printValue(JSValueRef value, JSValueRef *exception);
    JSValueRef printError(JSValueRef value, JSValueRef *exception);
    JSValueRef stackText(JSValueRef stack);
    JSValueRef resolveModule(JSValueRef name, JSValueRef requirer, JSValueRef *exception);
    JSValueRef compileModule(const QString &file, JSValueRef *exception);
    JSValueRef readModule(const QString &file);
    JSValueRef moduleNotFound(const QString &message);
    JSValueRef hostService(JSValueRef name, JSValueRef requirer, JSValueRef *exception);
    /// Makes the globals that the text mentions and that core modules implement.
    void addGlobals(Live &live, const QString &text);
    JSValueRef globalValue(const QString &name, JSValueRef *exception);
    void promiseSettled(int id, bool isFulfilled, JSValueRef value);

    QString m_name;
    COScript *m_facade = nullptr;
    std::weak_ptr<COPrintController> m_printController;
    QVariantMap m_environment;
    QUrl m_moduleFolder;
    SourceOffset m_sourceOffset;
    bool m_shouldPreprocess = true;
    bool m_shouldKeepAround = false;
    double m_timeLimit = 0;
    ScriptActivityPointer m_activity;
    /// Whether the scripts on the stack know already that they are being stopped.
    bool m_hasTakenStop = false;

    ScriptModules m_modules;
    ScriptServices m_services;
    /// Whose making has been considered.
    ScriptGlobals m_knownGlobals;
    ScriptLocations m_locations;
    QUrl m_scriptFile;
    QString m_scriptURL;
    QStringList m_evaluatedTexts;
    QVariantMap m_pushedObjects;
    std::unordered_map<int, ScriptValue> m_promises;
    int m_latestPromiseID = 0;
    /// Null once the session has ended. Scripts that are still on the stack then hold it until they have left.
    std::shared_ptr<Live> m_live;
};
