#pragma once

#include "platform/script/COFlowDelegate.h"
#include "platform/script/COPrintController.h"
#include "platform/script/ScriptContext.h"
#include "platform/script/ScriptConverter.h"
#include "platform/script/ScriptCoreModules.h"
#include "platform/script/ScriptLocations.h"
#include "platform/script/ScriptModules.h"
#include "platform/script/ScriptOperations.h"
#include "platform/script/ScriptTimers.h"
#include "platform/script/ScriptWrappers.h"
#include "platform/script/SourceOffset.h"

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
                            public std::enable_shared_from_this<ScriptSession>
{
public:
    ScriptSession(const ScriptCoreModules &coreModules, const QString &name);
    ~ScriptSession() override;

    static void setFlowDelegate(const std::weak_ptr<COFlowDelegate> &delegate);

    void setFacade(COScript *facade) { m_facade = facade; }
    void setPrintController(const std::weak_ptr<COPrintController> &controller) { m_printController = controller; }
    QVariantMap &environment() { return m_environment; }
    void setModuleFolder(const QUrl &folder) { m_moduleFolder = folder; }
    void setSourceOffset(const SourceOffset &offset) { m_sourceOffset = offset; }
    void setShouldPreprocess(bool shouldPreprocess) { m_shouldPreprocess = shouldPreprocess; }
    void setTimeLimit(double seconds) { m_timeLimit = seconds; }

    bool shouldKeepAround() const { return m_shouldKeepAround; }
    void setShouldKeepAround(bool keepAround) { m_shouldKeepAround = keepAround; }

    void pushObject(const QVariant &object, const QString &name);
    void deleteObject(const QString &name);
    QVariant execute(const QString &source);
    bool hasFunction(const QString &name);
    QVariant callFunctionNamed(const QString &name, const QVariantList &arguments);

    bool hasPendingWork() const { return m_live && (!m_live->timers.isEmpty() || !m_promises.empty()); }
    bool isEnded() const { return !m_live; }
    void end();

    // ScriptContextClient
    JSValueRef callHost(HostFunction function, std::span<const JSValueRef> arguments, JSValueRef *exception) override;
    void promiseRejected(JSValueRef promise, JSValueRef reason) override;
    double timeLimit() const override { return m_timeLimit; }
    bool shouldStopAfterTimeLimit(JSContextRef context) override;

    // ScriptFunctionCaller
    QVariant callFunction(JSObjectRef function, const QVariantList &arguments) override;

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
    };

    JSValueRef evaluate(const Source &source, JSValueRef *exception);
    JSValueRef evaluateText(const QString &text, const ScriptString &sourceURL, JSValueRef *exception);
    JSObjectRef findFunction(const QString &name);
    /// A promise that was rejected with nobody listening.
    struct Rejection
    {
        ProtectedValue promise;
        ProtectedValue reason;
    };

    /// Calls a function. A promise that it returns keeps the session running until it settles.
    QVariant callWatching(JSObjectRef function, const QVariantList &arguments, JSValueRef *exception);
    ScriptValue watchPromise(JSValueRef promise, const std::vector<Rejection> &rejections, JSValueRef *exception);
    void fireTimer(int id);
    ScriptException takeStop();

    /// The error that a call into the engine has ended with, if any: an exception, or the time limit.
    std::optional<ScriptException> takeError(JSValueRef exception);
    ScriptException read(JSValueRef thrown);
    void signal(const ScriptException &error);
    void report(const ScriptException &error);
    void print(const QVariant &value);
    void tellFlowDelegate();

    void useScriptFile();
    QByteArray folderOfModules() const;
    const ScriptLocations &locations();
    JSValueRef printValue(JSValueRef value, JSValueRef *exception);
    JSValueRef printError(JSValueRef value, JSValueRef *exception);
    JSValueRef stackText(JSValueRef stack);
    JSValueRef resolveModule(JSValueRef name, JSValueRef requirer, JSValueRef *exception);
    JSValueRef compileModule(const QString &file, JSValueRef *exception);
    JSValueRef readModule(const QString &file);
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
    bool m_wasStopped = false;
    /// Where the script stood when it was stopped.
    QString m_stopStack;

    ScriptModules m_modules;
    ScriptLocations m_locations;
    QUrl m_scriptFile;
    QString m_scriptURL;
    QStringList m_evaluatedTexts;
    QVariantMap m_pushedObjects;
    std::unordered_map<int, ScriptValue> m_promises;
    int m_latestPromiseID = 0;
    /// Where rejections wait while a function is being called that may return their promise.
    std::vector<Rejection> *m_waitingRejections = nullptr;
    std::unique_ptr<Live> m_live;
};
