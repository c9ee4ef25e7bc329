#include "platform/script/ObservedCall.h"

#include "platform/script/ScriptString.h"

namespace {

constexpr qsizetype longestText = 60;

QString quoted(const QString &text)
{
    return text.size() <= longestText ? u'"' + text + u'"' : u'"' + text.left(longestText) + QStringLiteral("…\"");
}

QString kindOf(JSContextRef context, JSValueRef value)
{
    if (JSObjectIsFunction(context, const_cast<JSObjectRef>(value)))
        return QStringLiteral("function");
    return JSValueIsArray(context, value) ? QStringLiteral("[…]") : QStringLiteral("{…}");
}

} // namespace

QString traceText(JSContextRef context, JSValueRef value)
{
    switch (JSValueGetType(context, value)) {
    case kJSTypeUndefined:
        return {};
    case kJSTypeNull:
        return QStringLiteral("null");
    case kJSTypeString:
        return quoted(ScriptString::adopt(JSValueToStringCopy(context, value, nullptr)).toQString());
    case kJSTypeBoolean:
    case kJSTypeNumber:
        return ScriptString::adopt(JSValueToStringCopy(context, value, nullptr)).toQString();
    case kJSTypeObject:
        return kindOf(context, value);
    default:
        return QStringLiteral("symbol");
    }
}

QStringList traceTexts(JSContextRef context, std::span<const JSValueRef> values)
{
    QStringList texts;
    for (const auto value : values) {
        const auto text = traceText(context, value);
        texts.append(text.isEmpty() ? QStringLiteral("undefined") : text);
    }
    return texts;
}
