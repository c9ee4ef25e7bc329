#include "platform/script/ScriptContext.h"

#include "platform/script/JavaScriptCorePrivate.h"
#include "platform/script/Prelude.h"
#include "platform/script/ScriptException.h"

#include <unordered_map>

namespace {

std::unordered_map<JSGlobalContextRef, ScriptContext *> &liveContexts()
{
    static std::unordered_map<JSGlobalContextRef, ScriptContext *> contexts;
    return contexts;
}

JSObjectRef objectOf(JSValueRef value)
{
    return const_cast<JSObjectRef>(value);
}

JSValueRef errorWithMessage(JSContextRef context, const QString &message)
{
    const JSValueRef text = JSValueMakeString(context, ScriptString(message).get());
    return JSObjectMakeError(context, 1, &text, nullptr);
}

} // namespace

ScriptContext::ScriptContext(ScriptContextClient &client)
    : m_client(client)
    , m_context(JSGlobalContextCreateInGroup(ScriptEngine::instance().group(), nullptr))
{
    liveContexts().emplace(m_context, this);
    watchRejections();
    installPrelude();
}

ScriptContext::~ScriptContext()
{
    liveContexts().erase(m_context);
    m_defineLater.reset();
    m_library.reset();
    JSGlobalContextRelease(m_context);
}

void ScriptContext::installPrelude()
{
    static const ScriptString source(preludeSource);
    static const ScriptString sourceURL("korvan-prelude:");
    const ScriptEntry entry(&m_client);
    m_hostFunction = JSObjectMakeFunctionWithCallback(m_context, nullptr, &ScriptContext::hostCallback);
    m_defineLater = ProtectedValue(m_context, load(source, sourceURL, nullptr));
}

JSObjectRef ScriptContext::load(const ScriptString &source, const ScriptString &sourceURL, JSValueRef *exception)
{
    const auto function = evaluate(source, sourceURL, exception);
    const JSValueRef host = m_hostFunction;
    // There is no answer when a script that has reached its time limit has caused this.
    return objectOf(function ? call(objectOf(function), {&host, 1}, exception) : nullptr);
}

JSObjectRef ScriptContext::library(JSValueRef *exception)
{
    static const ScriptString source(librarySource);
    static const ScriptString sourceURL("korvan-prelude:library");
    if (!m_library.get())
        m_library = ProtectedValue(m_context, load(source, sourceURL, exception));
    return m_library.object();
}

/// The engine holds this function strongly for each context, so it must not be the context's own: neither would ever be
/// collected.
JSObjectRef ScriptContext::sharedRejectionFunction()
{
    static const JSObjectRef function = [] {
        const auto context = ScriptEngine::instance().context();
        auto *const made = JSObjectMakeFunctionWithCallback(context, nullptr, &ScriptContext::rejectionCallback);
        JSValueProtect(context, made);
        return made;
    }();
    return function;
}

void ScriptContext::watchRejections()
{
    const auto &engine = JavaScriptCorePrivate::entryPoints();
    if (engine.setUnhandledRejectionCallback && engine.globalContextOf)
        engine.setUnhandledRejectionCallback(m_context, sharedRejectionFunction(), nullptr);
    // Without these entry points a rejection that nobody handles passes unseen.
}

void ScriptContext::pushObject(const QString &name)
{
    defineLater(name, HostFunction::PushedObject, true);
}

void ScriptContext::addGlobal(QStringView name)
{
    defineLater(name, HostFunction::GlobalValue, false);
}

void ScriptContext::defineLater(QStringView name, HostFunction value, bool isEnumerable)
{
    const JSValueRef arguments[] = {
        makeString(name), JSValueMakeNumber(m_context, double(value)), JSValueMakeBoolean(m_context, isEnumerable)};
    if (m_defineLater.get())
        call(m_defineLater.object(), arguments, nullptr);
}

JSValueRef ScriptContext::evaluate(const ScriptString &source, const ScriptString &sourceURL, JSValueRef *exception)
{
    return JSEvaluateScript(m_context, source.get(), nullptr, sourceURL.get(), 1, exception);
}

bool ScriptContext::checkSyntax(const ScriptString &source, const ScriptString &sourceURL, JSValueRef *exception)
{
    return JSCheckScriptSyntax(m_context, source.get(), sourceURL.get(), 1, exception);
}

JSValueRef ScriptContext::call(JSObjectRef function, std::span<const JSValueRef> arguments, JSValueRef *exception)
{
    return JSObjectCallAsFunction(m_context, function, nullptr, arguments.size(), arguments.data(), exception);
}

JSValueRef ScriptContext::callLibrary(
    const char *function, std::span<const JSValueRef> arguments, JSValueRef *exception)
{
    auto *const functions = library(exception);
    const auto target = functions ? property(functions, function, exception) : nullptr;
    return target ? call(objectOf(target), arguments, exception) : nullptr;
}

JSValueRef ScriptContext::property(JSObjectRef object, const char *name, JSValueRef *exception)
{
    return JSObjectGetProperty(m_context, object, ScriptString(name).get(), exception);
}

void ScriptContext::setProperty(JSObjectRef object, const char *name, JSValueRef value)
{
    JSObjectSetProperty(m_context, object, ScriptString(name).get(), value, kJSPropertyAttributeNone, nullptr);
}

JSValueRef ScriptContext::makeError(const QString &message) const
{
    return errorWithMessage(m_context, message);
}

QString ScriptContext::textOf(JSValueRef value) const
{
    return ScriptString::adopt(JSValueToStringCopy(m_context, value, nullptr)).toQString();
}

ScriptContext *ScriptContext::find(JSContextRef context)
{
    const auto found = liveContexts().find(JSContextGetGlobalContext(context));
    return found == liveContexts().end() ? nullptr : found->second;
}

QString ScriptContext::currentStack(JSContextRef context)
{
    static const ScriptString stackName("stack");
    auto *const error = JSObjectMakeError(context, 0, nullptr, nullptr);
    const auto stack = error ? JSObjectGetProperty(context, error, stackName.get(), nullptr) : nullptr;
    return stack ? ScriptString::adopt(JSValueToStringCopy(context, stack, nullptr)).toQString() : QString();
}

JSValueRef ScriptContext::endedError(JSContextRef context)
{
    return errorWithMessage(context, QStringLiteral("The script's session has ended."));
}

JSValueRef ScriptContext::hostCallback(
    JSContextRef context, JSObjectRef, JSObjectRef, size_t count, const JSValueRef arguments[], JSValueRef *exception)
{
    auto *const self = find(context);
    if (!self) {
        *exception = endedError(context);
        return JSValueMakeUndefined(context);
    }
    const auto function = HostFunction(int(JSValueToNumber(context, arguments[0], nullptr)));
    try {
        if (const auto result = self->m_client.callHost(function, {arguments + 1, count - 1}, exception))
            return result;
    } catch (const std::exception &error) {
        *exception = errorWithMessage(context, QString::fromUtf8(error.what()));
    }
    return JSValueMakeUndefined(context);
}

JSValueRef ScriptContext::rejectionCallback(
    JSContextRef context, JSObjectRef, JSObjectRef, size_t count, const JSValueRef arguments[], JSValueRef *)
{
    // The callback's own context is the shared function's; the promise knows the session's.
    const auto globalContextOf = JavaScriptCorePrivate::entryPoints().globalContextOf;
    if (count >= 2) {
        if (auto *const self = find(globalContextOf(objectOf(arguments[0]))))
            self->m_client.promiseRejected(arguments[1]);
    }
    return JSValueMakeUndefined(context);
}
