#include "platform/script/ScriptOperations.h"

#include "platform/script/ObservedCall.h"
#include "platform/script/ScriptException.h"

#include <cmath>

namespace {

/// Says inside C++ that a script's own code, called for an argument, has thrown; the value stays in the slot.
struct ThrownByArgument
{ };

class Call final : public ScriptCall
{
public:
    Call(const char *operation, ScriptContext &context, ScriptConverter &converter,
        std::span<const JSValueRef> arguments, JSValueRef *exception)
        : ScriptCall(operation)
        , m_context(context)
        , m_converter(converter)
        , m_arguments(arguments)
        , m_exception(exception)
    { }

    bool boolArgument(std::size_t index) const override
    {
        return index < m_arguments.size() && JSValueToBoolean(m_context.ref(), m_arguments[index]);
    }

    double numberArgument(std::size_t index) const override
    {
        if (index >= m_arguments.size())
            return std::nan("");
        const double number = JSValueToNumber(m_context.ref(), m_arguments[index], m_exception);
        throwIfRaised();
        return number;
    }

    std::optional<QString> stringArgument(std::size_t index) const override
    {
        if (index >= m_arguments.size())
            return std::nullopt;
        auto text = m_converter.toOptionalString(m_arguments[index], m_exception);
        throwIfRaised();
        return text;
    }

    QVariant variantArgument(std::size_t index) const override
    {
        if (index >= m_arguments.size())
            return {};
        auto value = m_converter.toVariant(m_arguments[index], m_exception);
        throwIfRaised();
        return value;
    }

    void setResult(bool value) override { m_result = JSValueMakeBoolean(m_context.ref(), value); }
    void setResult(double value) override { m_result = JSValueMakeNumber(m_context.ref(), value); }
    void setResult(const QString &value) override { m_result = m_context.makeString(value); }
    void setResult(const QVariant &value) override { m_result = m_converter.toScript(value, m_exception); }

    JSValueRef result() const { return m_result; }

private:
    void throwIfRaised() const
    {
        if (*m_exception)
            throw ThrownByArgument();
    }

    ScriptContext &m_context;
    ScriptConverter &m_converter;
    std::span<const JSValueRef> m_arguments;
    JSValueRef *m_exception;
    JSValueRef m_result = nullptr;
};

} // namespace

JSValueRef ScriptOperations::invoke(ScriptObject &receiver, const ScriptOperation &operation,
    std::span<const JSValueRef> arguments, JSValueRef *exception)
{
    const auto context = m_context.ref(); // which the call may end
    const auto describe = [&]() -> ScriptCallRecord {
        return {ScriptCallRecord::Kind::Call,
            QString::fromLatin1(receiver.scriptClass().name) + u'.' + QString::fromLatin1(operation.name),
            traceTexts(context, arguments), {}, false, 0, {}};
    };
    return observedCall(
        context, exception, describe, [&] { return carryOut(receiver, operation, arguments, exception); });
}

JSValueRef ScriptOperations::carryOut(ScriptObject &receiver, const ScriptOperation &operation,
    std::span<const JSValueRef> arguments, JSValueRef *exception)
{
    if (!m_converter) {
        *exception = ScriptContext::endedError(m_context.ref());
        return nullptr;
    }
    Call call(operation.name, m_context, *m_converter, arguments, exception);
    try {
        operation.invoke(receiver, call);
        return call.result();
    } catch (const ThrownByArgument &) {
        return nullptr;
    } catch (const std::exception &error) {
        *exception = m_context.makeError(QString::fromUtf8(error.what()));
        return nullptr;
    }
}
