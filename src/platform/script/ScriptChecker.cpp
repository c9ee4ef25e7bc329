#include "platform/script/ScriptChecker.h"

#include "platform/script/ScriptContext.h"
#include "platform/script/ScriptErrors.h"
#include "platform/script/ScriptPreprocessor.h"

#include <algorithm>
#include <mutex>
#include <vector>

/// A context in which nothing but the session's own globals is ever evaluated. One thread at a time, but for `context`
/// itself, which the engine locks.
struct ScriptChecker::Engine final : ScriptContextClient
{
    JSValueRef callHost(HostFunction, std::span<const JSValueRef>, JSValueRef *) override
    {
        return context.undefined();
    }
    void promiseRejected(JSValueRef) override { }
    double timeLimit() const override { return 0; }
    std::optional<ScriptException> errorAfterTimeLimit(JSContextRef, double) override { return std::nullopt; }

    /// Nil for a text that is a script.
    std::optional<ScriptSyntaxError> syntaxError(const QString &source)
    {
        JSValueRef exception = nullptr;
        if (context.checkSyntax(ScriptString(source), sourceURL, &exception))
            return std::nullopt;
        if (!exception || !JSValueIsObject(context.ref(), exception))
            return ScriptSyntaxError{QStringLiteral("SyntaxError"), 1, 1};
        addColumnToSyntaxError(context, source, sourceURL, exception, 0);
        const auto place = [&](const char *name) {
            const auto value = context.property(const_cast<JSObjectRef>(exception), name, nullptr);
            return value && JSValueIsNumber(context.ref(), value)
                ? std::max(1, int(JSValueToNumber(context.ref(), value, nullptr)))
                : 1;
        };
        return ScriptSyntaxError{context.textOf(exception), place("line"), place("column")};
    }

    std::mutex mutex;
    ScriptContext context{*this};
    const ScriptString sourceURL{"korvan-script"};
};

/// One parser for each thread that checks at the same time. The engine lets only one thread at a time into a group of
/// contexts, so each is in a group of its own but for the first, which spares a single thread the making of one.
class ScriptChecker::Parsers
{
public:
    explicit Parsers(Engine &engine)
        : m_sourceURL(engine.sourceURL)
        , m_idle{JSGlobalContextRetain(engine.context.ref())}
    { }
    ~Parsers() { std::for_each(m_idle.begin(), m_idle.end(), JSGlobalContextRelease); }
    Parsers(const Parsers &) = delete;
    Parsers &operator=(const Parsers &) = delete;

    bool accept(const QString &source)
    {
        const auto parser = take();
        const bool isScript = JSCheckScriptSyntax(parser, ScriptString(source).get(), m_sourceURL.get(), 1, nullptr);
        const std::lock_guard guard(m_mutex);
        m_idle.push_back(parser);
        return isScript;
    }

private:
    JSGlobalContextRef take()
    {
        {
            const std::lock_guard guard(m_mutex);
            if (!m_idle.empty()) {
                const auto parser = m_idle.back();
                m_idle.pop_back();
                return parser;
            }
        }
        const auto parser = JSGlobalContextCreate(nullptr); // in a new group
        ScriptContext::leaveOutNativeCallStacks(parser);
        return parser;
    }

    const ScriptString &m_sourceURL;
    std::mutex m_mutex;
    std::vector<JSGlobalContextRef> m_idle;
};

ScriptChecker::ScriptChecker()
    : m_engine(std::make_unique<Engine>())
    , m_parsers(std::make_unique<Parsers>(*m_engine))
{ }

ScriptChecker::~ScriptChecker() = default;

ScriptCheck ScriptChecker::check(const QString &source, MessageSends messageSends)
{
    if (m_parsers->accept(source))
        return {std::nullopt, ScriptOutline(source)};
    const auto rewritten = messageSends == MessageSends::Rewritten ? withMessageSendsRewritten(source) : source;
    if (rewritten != source && m_parsers->accept(rewritten))
        return {std::nullopt, ScriptOutline(rewritten)};
    const std::lock_guard guard(m_engine->mutex);
    auto error = m_engine->syntaxError(rewritten);
    return {error, error ? std::nullopt : std::optional<ScriptOutline>(ScriptOutline(rewritten))};
}

bool ScriptChecker::isBuiltIn(const QString &name) const
{
    const std::lock_guard guard(m_engine->mutex);
    auto &context = m_engine->context;
    return JSObjectHasProperty(context.ref(), context.global(), ScriptString(name).get());
}
