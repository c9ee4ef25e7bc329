// How a session's scripts are entered (calls, timers, the reactions of promises), and what becomes of their errors.

#include "platform/script/ScriptSession.h"

#include "platform/LTAppEnvironment.h"
#include "platform/script/CODebugController.h"
#include "platform/script/ScriptErrors.h"

#include <algorithm>

namespace {

std::weak_ptr<COFlowDelegate> &flowDelegate()
{
    static std::weak_ptr<COFlowDelegate> delegate;
    return delegate;
}

JSObjectRef objectOf(JSValueRef value)
{
    return const_cast<JSObjectRef>(value);
}

bool isIdentifier(const QString &name)
{
    const auto isPart = [](QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'$' || c.isSurrogate(); };
    return !name.isEmpty() && !name.front().isDigit() && std::all_of(name.begin(), name.end(), isPart);
}

} // namespace

void ScriptSession::setFlowDelegate(const std::weak_ptr<COFlowDelegate> &delegate)
{
    flowDelegate() = delegate;
}

// Entering

void ScriptSession::enter(const std::function<void(Live &live)> &work)
{
    if (!m_live)
        return;
    const auto self = shared_from_this();
    const auto live = m_live;
    auto &engine = ScriptEngine::instance();
    const ScriptEntry entry(this);
    const bool isOutermost = !engine.isNested();
    if (isOutermost)
        m_hasTakenStop = false;
    engine.run(live->context.ref(), [&] { work(*live); });
    if (!engine.stop())
        return;
    m_promises.clear(); // what was to settle them may have been stopped: waiting could last for ever
    if (isOutermost && !m_hasTakenStop)
        report(*engine.stop());
}

void ScriptSession::runScript(const std::function<void()> &work)
{
    if (ScriptEngine::instance().isEntered())
        work(); // also for a script that goes on after its session's end
    else
        enter([&work](Live &) { work(); });
}

// Calling

JSObjectRef ScriptSession::findFunction(Live &live, const QString &name)
{
    auto &context = live.context;
    const auto isFunction = [&](JSValueRef value) {
        return value && JSValueIsObject(context.ref(), value) && JSObjectIsFunction(context.ref(), objectOf(value));
    };
    const ScriptString scriptName{QStringView(name)};
    const auto property = JSObjectGetProperty(context.ref(), context.global(), scriptName.get(), nullptr);
    if (isFunction(property))
        return objectOf(property);
    // What "let", "const" and "class" declare is no property of the global object; only a script can see it.
    const bool isMentioned = std::any_of(m_evaluatedTexts.cbegin(), m_evaluatedTexts.cend(),
        [&name](const QString &text) { return text.contains(name); });
    if (!isMentioned || !isIdentifier(name))
        return nullptr;
    static const ScriptString sourceURL("korvan-prelude:lookup");
    const auto binding = context.evaluate(scriptName, sourceURL, nullptr);
    return isFunction(binding) ? objectOf(binding) : nullptr;
}

bool ScriptSession::hasFunction(const QString &name)
{
    bool isFound = false;
    enter([&](Live &live) { isFound = findFunction(live, name); });
    return isFound;
}

QVariant ScriptSession::callWatching(
    Live &live, JSObjectRef function, const QVariantList &arguments, JSValueRef *exception)
{
    std::vector<ProtectedValue> keptAlive;
    std::vector<JSValueRef> values;
    for (const auto &argument : arguments) {
        const auto value = live.converter.toScript(argument, exception);
        if (!value)
            return {};
        keptAlive.emplace_back(live.context.ref(), value);
        values.push_back(value);
    }
    const auto result = live.context.call(function, values, exception);
    const bool isEnded = !m_live;
    if (*exception || !result || isEnded)
        return {};
    auto value = live.converter.toVariant(result, exception);
    if (!*exception && live.converter.isPromise(result))
        watchPromise(live, result, value.value<ScriptValue>(), exception);
    return value;
}

QVariant ScriptSession::callFunctionNamed(const QString &name, const QVariantList &arguments)
{
    QVariant value;
    std::optional<ScriptException> error;
    enter([&](Live &live) {
        auto *const function = findFunction(live, name);
        if (!function)
            return;
        JSValueRef exception = nullptr;
        value = callWatching(live, function, arguments, &exception);
        error = takeError(live, exception);
        if (error)
            signal(*error);
    });
    if (error)
        throw ScriptException(*error);
    return value;
}

QVariant ScriptSession::callFunction(JSObjectRef function, const QVariantList &arguments)
{
    const bool isEvent = !ScriptEngine::instance().isEntered();
    QVariant value;
    std::optional<ScriptException> error;
    enter([&](Live &live) {
        JSValueRef exception = nullptr;
        value = callWatching(live, function, arguments, &exception);
        error = takeError(live, exception);
        if (error && isEvent)
            report(*error);
    });
    if (error && !isEvent)
        throw ScriptException(*error);
    if (isEvent)
        tellFlowDelegate();
    return value;
}

void ScriptSession::fireTimer(int id)
{
    const auto self = shared_from_this();
    enter([&](Live &live) {
        JSValueRef exception = nullptr;
        live.context.callLibrary(libraryfunction::fireTimer, JSValueMakeNumber(live.context.ref(), id), &exception);
        if (const auto error = takeError(live, exception))
            report(*error);
    });
    tellFlowDelegate();
}

void ScriptSession::tellFlowDelegate()
{
    ScriptEngine::instance().whenLeft([self = shared_from_this()] {
        const auto delegate = flowDelegate().lock();
        if (delegate && self->m_facade)
            delegate->didClearEventStack(self->m_facade);
    });
}

// Promises

void ScriptSession::watchPromise(Live &live, JSValueRef promise, const ScriptValue &value, JSValueRef *exception)
{
    const int id = ++m_latestPromiseID;
    m_promises.emplace(id, value);
    const JSValueRef arguments[] = {promise, JSValueMakeNumber(live.context.ref(), id)};
    live.context.callLibrary(libraryfunction::watchPromise, arguments, exception);
    if (*exception)
        m_promises.erase(id);
}

void ScriptSession::promiseSettled(int id, bool isFulfilled, JSValueRef value)
{
    const auto found = m_promises.find(id);
    if (found == m_promises.end())
        return;
    const auto promise = found->second;
    m_promises.erase(found);
    auto &live = *m_live;
    JSValueRef exception = nullptr;
    live.converter.settle(promise, isFulfilled ? live.converter.toVariant(value, &exception) : QVariant());
    if (!isFulfilled)
        report(read(live, value));
    tellFlowDelegate();
}

void ScriptSession::promiseRejected(JSValueRef reason)
{
    if (m_live)
        report(read(*m_live, reason));
}

// Errors

std::optional<ScriptException> ScriptSession::errorAfterTimeLimit(JSContextRef context, double seconds)
{
    const bool isEnded = !m_live;
    const bool mayGoOn = !isEnded
        && LTAppEnvironment::current().scriptExceededTimeLimit(m_name, seconds) == ScriptTimeLimitDecision::GoOn;
    if (mayGoOn)
        return std::nullopt;
    const auto frames = locations().frames(ScriptContext::currentStack(context));
    const auto place =
        frames.isEmpty() ? ScriptLocations::Frame{{}, locations().fileName(m_scriptURL), 0, 0} : frames.first();
    const auto message = QStringLiteral("The script of the command \"%1\" was stopped: it ran for more than %2.");
    const auto time = seconds == 1 ? QStringLiteral("1 second") : QStringLiteral("%1 seconds").arg(seconds);
    return ScriptException(
        message.arg(m_name, time), place.file, place.line, place.column, ScriptLocations::text(frames));
}

std::optional<ScriptException> ScriptSession::takeError(Live &live, JSValueRef exception)
{
    // A script that is stopped ends with an exception of the engine's, or with none at all.
    if (const auto &stop = ScriptEngine::instance().stop()) {
        m_hasTakenStop = true;
        return stop;
    }
    return exception ? std::optional(read(live, exception)) : std::nullopt;
}

ScriptException ScriptSession::read(Live &live, JSValueRef thrown)
{
    return readScriptException(live.context, live.converter, locations(), thrown, m_scriptURL);
}

void ScriptSession::signal(const ScriptException &error)
{
    if (const auto controller = m_printController.lock())
        controller->scriptEncounteredException(error);
}

void ScriptSession::report(const ScriptException &error)
{
    print(QVariantMap{
        {QStringLiteral("level"), QStringLiteral("error")},
        {QStringLiteral("stringValue"), error.text()},
        {QStringLiteral("payload"), QVariantList{error.toVariantMap()}},
    });
    signal(error);
}

void ScriptSession::print(const QVariant &value)
{
    if (const auto controller = m_printController.lock())
        controller->print(value);
    else
        CODebugController::output(QStringLiteral("%@"), {value});
}
