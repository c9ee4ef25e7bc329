#pragma once

#include "platform/script/ScriptEngine.h"
#include "platform/script/ScriptString.h"

#include <JavaScriptCore/JavaScript.h>
#include <QString>

#include <span>
#include <utility>

/// What the globals of a session ask of C++. The numbers stand in prelude.js and library.js too.
enum class HostFunction {
    Print,
    PrintError,
    Describe,
    Now,
    Stack,
    StartTimer,
    StopTimer,
    ResolveModule,
    CompileModule,
    ReadModule,
    Settled,
    Library,
    PushedObject,
    MakeOperation,
    HostService,
    GlobalValue
};

/// What C++ calls in library.js, by property name.
namespace libraryfunction {
inline constexpr char fireTimer[] = "fireTimer";
inline constexpr char describe[] = "describe";
inline constexpr char keys[] = "keys";
inline constexpr char defineProtoProperty[] = "defineProtoProperty";
inline constexpr char watchPromise[] = "watchPromise";
inline constexpr char requireFile[] = "requireFile";
} // namespace libraryfunction

/// Keeps an engine value alive for as long as it stands on the C++ heap, where the collector does not look.
class ProtectedValue
{
public:
    ProtectedValue() = default;
    ProtectedValue(JSContextRef context, JSValueRef value)
        : m_context(context)
        , m_value(value)
    {
        if (m_value)
            JSValueProtect(m_context, m_value);
    }
    ~ProtectedValue() { reset(); }
    ProtectedValue(ProtectedValue &&other) noexcept
        : m_context(other.m_context)
        , m_value(std::exchange(other.m_value, nullptr))
    { }
    ProtectedValue &operator=(ProtectedValue &&other) noexcept
    {
        std::swap(m_context, other.m_context);
        std::swap(m_value, other.m_value);
        return *this;
    }

    JSValueRef get() const { return m_value; }
    JSObjectRef object() const { return const_cast<JSObjectRef>(m_value); }
    /// Has to come before the context's end.
    void reset()
    {
        if (m_value)
            JSValueUnprotect(m_context, std::exchange(m_value, nullptr));
    }

private:
    JSContextRef m_context = nullptr;
    JSValueRef m_value = nullptr;
};

/// Whoever owns a context answers what its scripts ask for. A function reports an error by setting `exception`; it
/// lets no C++ exception out.
class ScriptContextClient : public ScriptLimitClient
{
public:
    virtual JSValueRef callHost(
        HostFunction function, std::span<const JSValueRef> arguments, JSValueRef *exception) = 0;
    /// A promise of that context was rejected with nobody listening.
    virtual void promiseRejected(JSValueRef reason) = 0;
};

/// One global context of the engine, with the session's globals in it. Main thread only.
///
/// After the context was destroyed a script of it that is still on the stack gets an error for whatever it asks for.
class ScriptContext
{
public:
    explicit ScriptContext(ScriptContextClient &client);
    ~ScriptContext();
    ScriptContext(const ScriptContext &) = delete;
    ScriptContext &operator=(const ScriptContext &) = delete;

    JSGlobalContextRef ref() const { return m_context; }
    JSObjectRef global() const { return JSContextGetGlobalObject(m_context); }

    /// Runs a source text. Null with `exception` set when it raises one, or does not even parse.
    JSValueRef evaluate(const ScriptString &source, const ScriptString &sourceURL, JSValueRef *exception);
    /// Whether the text is a script at all; `exception` says why not.
    bool checkSyntax(const ScriptString &source, const ScriptString &sourceURL, JSValueRef *exception);
    JSValueRef call(JSObjectRef function, std::span<const JSValueRef> arguments, JSValueRef *exception);
    /// Makes a global that callHost(PushedObject) answers when a script first asks for it.
    void pushObject(const QString &name);
    /// Makes a global that callHost(GlobalValue) answers when a script first asks for it.
    void addGlobal(QStringView name);
    /// Calls a function of the library, which is loaded if need be. Null when there is no answer.
    JSValueRef callLibrary(const char *function, std::span<const JSValueRef> arguments, JSValueRef *exception);
    JSValueRef callLibrary(const char *function, JSValueRef argument, JSValueRef *exception)
    {
        return callLibrary(function, std::span(&argument, 1), exception);
    }
    /// The library as an object of functions. Null when it cannot be loaded just now.
    JSObjectRef library(JSValueRef *exception);

    JSValueRef property(JSObjectRef object, const char *name, JSValueRef *exception);
    void setProperty(JSObjectRef object, const char *name, JSValueRef value);

    /// Values that are made for scripts.
    JSValueRef undefined() const { return JSValueMakeUndefined(m_context); }
    JSValueRef makeString(QStringView text) const { return JSValueMakeString(m_context, ScriptString(text).get()); }
    JSValueRef makeError(const QString &message) const;
    /// The text of a value as its own toString() tells it; nil when that raises an exception.
    QString textOf(JSValueRef value) const;

    /// The function through which the session's globals call callHost().
    JSObjectRef hostFunction() const { return m_hostFunction; }

    /// The context that a callback of the engine belongs to; null once it was destroyed.
    static ScriptContext *find(JSContextRef context);
    /// The calls that the scripts on the stack have come through, in the engine's notation.
    static QString currentStack(JSContextRef context);
    /// The error for a script that goes on after its session's end.
    static JSValueRef endedError(JSContextRef context);

private:
    static JSValueRef hostCallback(JSContextRef, JSObjectRef, JSObjectRef, size_t, const JSValueRef[], JSValueRef *);
    static JSValueRef rejectionCallback(
        JSContextRef, JSObjectRef, JSObjectRef, size_t, const JSValueRef[], JSValueRef *);
    static JSObjectRef sharedRejectionFunction();

    void installPrelude();
    void watchRejections();
    void defineLater(QStringView name, HostFunction value, bool isEnumerable);
    /// Evaluates a source of ours that is a function of `host`, and answers what it returns.
    JSObjectRef load(const ScriptString &source, const ScriptString &sourceURL, JSValueRef *exception);

    ScriptContextClient &m_client;
    JSGlobalContextRef m_context;
    JSObjectRef m_hostFunction = nullptr;
    /// pushObject and addGlobal of the prelude.
    ProtectedValue m_defineLater;
    ProtectedValue m_library;
};
