#include "platform/script/ScriptSession.h"

#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"
#include "platform/script/CODebugController.h"
#include "platform/script/ScriptConsole.h"
#include "platform/script/ScriptErrors.h"
#include "platform/script/ScriptPreprocessor.h"

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

ScriptSession::Live::Live(ScriptSession &session)
    : context(session)
    , operations(context)
    , wrappers(context, operations)
    , converter(context, wrappers, session)
    , timers(LTAppEnvironment::current().mainQueue(), [&session](int id) { session.fireTimer(id); })
{
    operations.setConverter(&converter);
    installConsole(context);
}

ScriptSession::ScriptSession(const ScriptCoreModules &coreModules, const QString &name)
    : m_name(name)
    , m_modules(coreModules)
    , m_live(std::make_unique<Live>(*this))
{ }

ScriptSession::~ScriptSession() = default;

void ScriptSession::setFlowDelegate(const std::weak_ptr<COFlowDelegate> &delegate)
{
    flowDelegate() = delegate;
}

// Ending

void ScriptSession::end()
{
    if (!m_live)
        return;
    m_live->timers.stopAll();
    m_live->operations.setConverter(nullptr);
    m_promises.clear();
    m_pushedObjects.clear();
    // The script that asks for this may still be on the stack, with its callers' references to what it runs in.
    ScriptEngine::instance().whenLeft(
        [session = shared_from_this(), live = std::shared_ptr<Live>(std::move(m_live))]() mutable { live.reset(); });
}

// Globals

void ScriptSession::pushObject(const QVariant &object, const QString &name)
{
    if (!m_live)
        return;
    // Weakly: the object may be the session's own owner.
    const bool isObject = object.metaType() == QMetaType::fromType<ScriptObjectPointer>();
    m_pushedObjects.insert(
        name, isObject ? QVariant::fromValue(WeakScriptObjectPointer(object.value<ScriptObjectPointer>())) : object);
    const ScriptEntry entry(this);
    m_live->context.pushObject(name);
}

void ScriptSession::deleteObject(const QString &name)
{
    if (!m_live)
        return;
    m_pushedObjects.remove(name);
    const ScriptEntry entry(this);
    auto &context = m_live->context;
    JSObjectDeleteProperty(context.ref(), context.global(), ScriptString(QStringView(name)).get(), nullptr);
}

// Evaluating

void ScriptSession::useScriptFile()
{
    const auto url = m_environment.value(QStringLiteral("scriptURL")).toUrl();
    if (url == m_scriptFile)
        return;
    m_scriptFile = url;
    m_scriptURL = absoluteString(url);
    m_locations.setOffset(m_scriptURL, m_sourceOffset);
}

QByteArray ScriptSession::folderOfModules() const
{
    return m_moduleFolder.isEmpty() ? pathWithoutLastComponent(pathFromFileURL(m_scriptFile))
                                    : pathFromFileURL(m_moduleFolder);
}

const ScriptLocations &ScriptSession::locations()
{
    m_locations.addFolder(folderOfModules());
    return m_locations;
}

QVariant ScriptSession::execute(const QString &source)
{
    if (!m_live)
        return {};
    const auto self = shared_from_this();
    const ScriptEntry entry(this);
    auto &live = *m_live;
    useScriptFile();
    m_evaluatedTexts.append(source);
    JSValueRef exception = nullptr;
    const auto result = evaluate({source, m_scriptURL, {}, {}}, &exception);
    auto value = exception ? QVariant() : live.converter.toVariant(result, &exception);
    const auto error = takeError(exception);
    if (!error)
        return value;
    report(*error);
    return {};
}

JSValueRef ScriptSession::evaluate(const Source &source, JSValueRef *exception)
{
    const ScriptString sourceURL{QStringView(source.url)};
    auto text = source.head + source.text + source.tail;
    auto result = evaluateText(text, sourceURL, exception);
    const auto isScript = [&] {
        return m_live->context.checkSyntax(ScriptString(QStringView(text)), sourceURL, nullptr);
    };
    if (!*exception || m_wasStopped || isScript())
        return result;

    // Nothing of it has run yet: a text that is no script at all may still be one with message sends.
    const auto rewritten = m_shouldPreprocess ? withMessageSendsRewritten(source.text) : source.text;
    if (rewritten != source.text) {
        text = source.head + rewritten + source.tail;
        *exception = nullptr;
        result = evaluateText(text, sourceURL, exception);
        if (!*exception || m_wasStopped || isScript())
            return result;
    }
    if (JSValueIsObject(m_live->context.ref(), *exception))
        addColumnToSyntaxError(m_live->context, text, sourceURL, *exception);
    return result;
}

JSValueRef ScriptSession::evaluateText(const QString &text, const ScriptString &sourceURL, JSValueRef *exception)
{
    return m_live->context.evaluate(ScriptString(QStringView(text)), sourceURL, exception);
}

// Calling

JSObjectRef ScriptSession::findFunction(const QString &name)
{
    auto &context = m_live->context;
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
    if (!m_live)
        return false;
    const ScriptEntry entry(this);
    return findFunction(name);
}

QVariant ScriptSession::callWatching(JSObjectRef function, const QVariantList &arguments, JSValueRef *exception)
{
    auto &live = *m_live;
    std::vector<ProtectedValue> keptAlive;
    std::vector<JSValueRef> values;
    for (const auto &argument : arguments) {
        const auto value = live.converter.toScript(argument, exception);
        if (!value)
            return {};
        keptAlive.emplace_back(live.context.ref(), value);
        values.push_back(value);
    }

    std::vector<Rejection> rejections;
    auto *const outer = std::exchange(m_waitingRejections, &rejections);
    const auto result = live.context.call(function, values, exception);
    m_waitingRejections = outer;
    QVariant value;
    if (!*exception && result && m_live) {
        value = live.converter.isPromise(result) ? QVariant::fromValue(watchPromise(result, rejections, exception))
                                                 : live.converter.toVariant(result, exception);
    }
    for (const auto &rejection : rejections)
        promiseRejected(rejection.promise.get(), rejection.reason.get());
    return value;
}

QVariant ScriptSession::callFunctionNamed(const QString &name, const QVariantList &arguments)
{
    if (!m_live)
        return {};
    const auto self = shared_from_this();
    const ScriptEntry entry(this);
    auto *const function = findFunction(name);
    if (!function)
        return {};
    JSValueRef exception = nullptr;
    auto value = callWatching(function, arguments, &exception);
    if (const auto error = takeError(exception)) {
        signal(*error);
        throw *error;
    }
    return value;
}

QVariant ScriptSession::callFunction(JSObjectRef function, const QVariantList &arguments)
{
    if (!m_live)
        return {};
    const auto self = shared_from_this();
    const bool isEvent = !ScriptEngine::instance().isEntered();
    QVariant value;
    {
        const ScriptEntry entry(this);
        JSValueRef exception = nullptr;
        value = callWatching(function, arguments, &exception);
        const auto error = takeError(exception);
        if (error && !isEvent)
            throw *error;
        if (error)
            report(*error);
    }
    if (isEvent)
        tellFlowDelegate();
    return value;
}

void ScriptSession::fireTimer(int id)
{
    const auto self = shared_from_this();
    {
        const ScriptEntry entry(this);
        auto &context = m_live->context;
        JSValueRef exception = nullptr;
        context.callLibrary(libraryfunction::fireTimer, JSValueMakeNumber(context.ref(), id), &exception);
        if (const auto error = takeError(exception))
            report(*error);
    }
    tellFlowDelegate();
}

void ScriptSession::tellFlowDelegate()
{
    ScriptEngine::instance().whenLeft([self = shared_from_this()] {
        if (const auto delegate = flowDelegate().lock())
            delegate->didClearEventStack(self->m_facade);
    });
}

// Promises

ScriptValue ScriptSession::watchPromise(
    JSValueRef promise, const std::vector<Rejection> &rejections, JSValueRef *exception)
{
    auto &live = *m_live;
    const auto value = live.converter.toVariant(promise, exception).value<ScriptValue>();
    const bool isRejected = std::any_of(rejections.begin(), rejections.end(),
        [promise](const Rejection &rejection) { return rejection.promise.get() == promise; });
    if (isRejected) {
        live.converter.settle(value, {}); // its error is reported with the other rejections
        return value;
    }
    const int id = ++m_latestPromiseID;
    m_promises.emplace(id, value);
    const JSValueRef arguments[] = {promise, JSValueMakeNumber(live.context.ref(), id)};
    live.context.callLibrary(libraryfunction::watchPromise, arguments, exception);
    return value;
}

void ScriptSession::promiseSettled(int id, bool isFulfilled, JSValueRef value)
{
    const auto found = m_promises.find(id);
    if (found == m_promises.end())
        return;
    const auto promise = found->second;
    m_promises.erase(found);
    JSValueRef exception = nullptr;
    m_live->converter.settle(promise, isFulfilled ? m_live->converter.toVariant(value, &exception) : QVariant());
    if (!isFulfilled)
        report(read(value));
    tellFlowDelegate();
}

void ScriptSession::promiseRejected(JSValueRef promise, JSValueRef reason)
{
    if (!m_live)
        return;
    const auto context = m_live->context.ref();
    if (m_waitingRejections)
        m_waitingRejections->push_back({ProtectedValue(context, promise), ProtectedValue(context, reason)});
    else
        report(read(reason));
}

// Errors

bool ScriptSession::shouldStopAfterTimeLimit(JSContextRef context)
{
    const auto decision = m_live ? LTAppEnvironment::current().scriptExceededTimeLimit(m_name, m_timeLimit)
                                 : ScriptTimeLimitDecision::Stop;
    m_wasStopped = decision == ScriptTimeLimitDecision::Stop;
    if (m_wasStopped && m_live) {
        auto *const error = JSObjectMakeError(context, 0, nullptr, nullptr);
        m_stopStack = error ? m_live->context.textOf(m_live->context.property(error, "stack", nullptr)) : QString();
    }
    return m_wasStopped;
}

ScriptException ScriptSession::takeStop()
{
    m_wasStopped = false;
    // A promise's reaction that was stopped leaves the stop behind for whatever runs next. Let that be nothing.
    static const ScriptString nothing("0");
    JSValueRef leftOver = nullptr;
    if (m_live)
        m_live->context.evaluate(nothing, nothing, &leftOver);

    const auto frames = locations().frames(std::exchange(m_stopStack, {}));
    const auto place =
        frames.isEmpty() ? ScriptLocations::Frame{{}, locations().fileName(m_scriptURL), 0, 0} : frames.first();
    const auto message =
        QStringLiteral("The script of the command \"%1\" was stopped: it ran for more than %2 seconds.");
    return ScriptException(message.arg(m_name, QString::number(m_timeLimit)), place.file, place.line, place.column,
        ScriptLocations::text(frames));
}

std::optional<ScriptException> ScriptSession::takeError(JSValueRef exception)
{
    // A stopped script leaves an exception of the engine's, or none when it was a promise's reaction.
    if (m_wasStopped)
        return takeStop();
    if (!exception || !m_live)
        return std::nullopt;
    return read(exception);
}

ScriptException ScriptSession::read(JSValueRef thrown)
{
    return readScriptException(m_live->context, m_live->converter, locations(), thrown, m_scriptURL);
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
