#include "platform/script/ScriptChecker.h"

#include "platform/script/ScriptContext.h"
#include "platform/script/ScriptErrors.h"
#include "platform/script/ScriptPreprocessor.h"

#include <algorithm>

/// A context in which nothing but the session's own globals is ever evaluated.
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
        addColumnToSyntaxError(context, source, sourceURL, exception);
        const auto place = [&](const char *name) {
            const auto value = context.property(const_cast<JSObjectRef>(exception), name, nullptr);
            return value && JSValueIsNumber(context.ref(), value)
                ? std::max(1, int(JSValueToNumber(context.ref(), value, nullptr)))
                : 1;
        };
        return ScriptSyntaxError{context.textOf(exception), place("line"), place("column")};
    }

    ScriptContext context{*this};
    const ScriptString sourceURL{"korvan-script"};
};

ScriptChecker::ScriptChecker()
    : m_engine(std::make_unique<Engine>())
{ }

ScriptChecker::~ScriptChecker() = default;

ScriptCheck ScriptChecker::check(const QString &source, MessageSends messageSends)
{
    auto error = m_engine->syntaxError(source);
    if (!error)
        return {std::nullopt, ScriptOutline(source)};
    const auto rewritten = messageSends == MessageSends::Rewritten ? withMessageSendsRewritten(source) : source;
    if (rewritten == source)
        return {error, std::nullopt};
    error = m_engine->syntaxError(rewritten);
    return {error, error ? std::nullopt : std::optional<ScriptOutline>(ScriptOutline(rewritten))};
}

bool ScriptChecker::isBuiltIn(const QString &name) const
{
    auto &context = m_engine->context;
    return JSObjectHasProperty(context.ref(), context.global(), ScriptString(name).get());
}
