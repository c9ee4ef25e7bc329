#include "platform/script/ScriptSession.h"

#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"
#include "platform/script/ScriptConsole.h"
#include "platform/script/ScriptErrors.h"
#include "platform/script/ScriptPreprocessor.h"
#include "platform/script/ScriptProfiler.h"

#include <utility>

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
    , m_activity(std::make_shared<const ScriptActivity>(ScriptActivity{name}))
    , m_modules(coreModules)
    , m_services([this] { tellFlowDelegate(); })
    , m_live(std::make_unique<Live>(*this))
{ }

ScriptSession::~ScriptSession() = default;

// Ending

void ScriptSession::end()
{
    if (!m_live)
        return;
    m_live->timers.stopAll();
    m_live->operations.setConverter(nullptr);
    m_services.end();
    m_live->converter.end();
    m_promises.clear();
    m_pushedObjects.clear();
    // The script that asks for this may still be on the stack, with its callers' references to what it runs in.
    ScriptEngine::instance().whenLeft(
        [session = shared_from_this(), live = std::exchange(m_live, nullptr)]() mutable { live.reset(); });
}

void ScriptSession::beginActivity(const QString &name)
{
    m_activity = std::make_shared<const ScriptActivity>(ScriptActivity{name});
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

void ScriptSession::noteSource(const QString &url, const ScriptSource &source)
{
    m_locations.setSource(url, source);
    if (auto *const profiled = ScriptProfiler::locations())
        profiled->setSource(url, source);
}

QVariant ScriptSession::execute(const QString &source)
{
    QVariant value;
    enter([&](Live &live) {
        useScriptFile();
        noteSource(m_scriptURL, {0, m_sourceOffset, source, folderOfModules(), false});
        m_evaluatedTexts.append(source);
        JSValueRef exception = nullptr;
        const auto result = evaluate(live, {source, m_scriptURL, {}, {}, m_sourceOffset.trailing}, &exception);
        if (!exception)
            value = live.converter.toVariant(result, &exception);
        if (const auto error = takeError(live, exception)) {
            value = {};
            report(*error);
        }
    });
    return value;
}

JSValueRef ScriptSession::evaluate(Live &live, const Source &source, JSValueRef *exception)
{
    addGlobals(live, source.text);
    auto &context = live.context;
    const ScriptString sourceURL{QStringView(source.url)};
    auto text = source.head + source.text + source.tail;
    const auto evaluateText = [&] { return context.evaluate(ScriptString(QStringView(text)), sourceURL, exception); };
    const auto isSyntaxError = [&] {
        return *exception && !ScriptEngine::instance().stop()
            && !context.checkSyntax(ScriptString(QStringView(text)), sourceURL, nullptr);
    };
    auto result = evaluateText();
    if (!isSyntaxError())
        return result;

    // Nothing of it has run yet: a text that is no script at all may still be one with message sends.
    const auto rewritten = m_shouldPreprocess ? withMessageSendsRewritten(source.text) : source.text;
    if (rewritten != source.text) {
        text = source.head + rewritten + source.tail;
        m_locations.setRewritten(source.url);
        if (auto *const profiled = ScriptProfiler::locations())
            profiled->setRewritten(source.url);
        *exception = nullptr;
        result = evaluateText();
        if (!isSyntaxError())
            return result;
    }
    if (JSValueIsObject(context.ref(), *exception))
        addColumnToSyntaxError(context, text, sourceURL, *exception, source.trailing);
    return result;
}
