// Values on their way into a script.

#include "platform/script/ScriptConverter.h"

#include "platform/FileURL.h"
#include "platform/OrderedDictionary.h"
#include "platform/script/ObservedCall.h"

#include <QDateTime>
#include <QUrl>

#include <cmath>
#include <cstring>

namespace {

/// A C++ function inside a script value that can be called.
struct FunctionBox
{
    NativeFunction function;
    std::weak_ptr<ScriptConverter *> converter;
};

} // namespace

JSValueRef ScriptConverter::toScript(const QVariant &value, JSValueRef *exception)
{
    const auto context = m_context.ref();
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return JSValueMakeUndefined(context);
    case QMetaType::Nullptr:
        return JSValueMakeNull(context);
    case QMetaType::Bool:
        return JSValueMakeBoolean(context, value.toBool());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return JSValueMakeNumber(context, value.toDouble());
    case QMetaType::QString:
        return m_context.makeString(*static_cast<const QString *>(value.constData()));
    case QMetaType::QUrl:
        return value.toUrl().isEmpty() ? JSValueMakeNull(context) : m_context.makeString(absoluteString(value.toUrl()));
    case QMetaType::QByteArray:
        return bytesToScript(value.toByteArray(), exception);
    case QMetaType::QDateTime: {
        const auto time = value.toDateTime();
        const auto milliseconds =
            JSValueMakeNumber(context, time.isValid() ? double(time.toMSecsSinceEpoch()) : std::nan(""));
        return JSObjectMakeDate(context, 1, &milliseconds, exception);
    }
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return listToScript(value.toList(), exception);
    case QMetaType::QVariantMap:
        return dictionaryToScript(*static_cast<const QVariantMap *>(value.constData()), exception);
    default:
        return customToScript(value, exception);
    }
}

JSValueRef ScriptConverter::customToScript(const QVariant &value, JSValueRef *exception)
{
    const auto type = value.metaType();
    if (type == QMetaType::fromType<ScriptObjectPointer>())
        return objectToScript(value.value<ScriptObjectPointer>(), exception);
    if (type == QMetaType::fromType<WeakScriptObjectPointer>())
        return objectToScript(value.value<WeakScriptObjectPointer>().lock(), exception);
    if (type == QMetaType::fromType<ScriptDictionaryPointer>()) {
        const auto dictionary = value.value<ScriptDictionaryPointer>();
        return dictionary ? m_views.view(dictionary) : JSValueMakeNull(m_context.ref());
    }
    if (type == QMetaType::fromType<ScriptValue>()) {
        const auto storage = std::dynamic_pointer_cast<ScriptLiveValue>(value.value<ScriptValue>().storage());
        const auto held = storage ? storage->valueIn(this) : nullptr;
        return held ? held : JSValueMakeUndefined(m_context.ref()); // another session's, or one that has ended
    }
    if (type == QMetaType::fromType<OrderedVariantDictionary>())
        return dictionaryToScript(*static_cast<const OrderedVariantDictionary *>(value.constData()), exception);
    if (type == QMetaType::fromType<OrderedStringDictionary>())
        return dictionaryToScript(*static_cast<const OrderedStringDictionary *>(value.constData()), exception);
    if (type == QMetaType::fromType<NativeFunction>())
        return functionToScript(value.value<NativeFunction>());
    return unsupported(value, exception);
}

JSValueRef ScriptConverter::unsupported(const QVariant &value, JSValueRef *exception) const
{
    *exception = m_context.makeError(
        QStringLiteral("A value of the type %1 cannot be handed to a script.").arg(QLatin1String(value.typeName())));
    return nullptr;
}

JSValueRef ScriptConverter::objectToScript(const ScriptObjectPointer &object, JSValueRef *exception)
{
    return object ? m_wrappers.wrap(object, exception) : JSValueMakeNull(m_context.ref());
}

JSValueRef ScriptConverter::bytesToScript(const QByteArray &bytes, JSValueRef *exception) const
{
    auto *const array =
        JSObjectMakeTypedArray(m_context.ref(), kJSTypedArrayTypeUint8Array, std::size_t(bytes.size()), exception);
    if (!array)
        return nullptr;
    void *const destination = JSObjectGetTypedArrayBytesPtr(m_context.ref(), array, exception);
    if (destination && !bytes.isEmpty())
        std::memcpy(destination, bytes.constData(), std::size_t(bytes.size()));
    return array;
}

JSValueRef ScriptConverter::listToScript(const QVariantList &list, JSValueRef *exception)
{
    // Element by element: values that wait in C++ memory are invisible to the collector.
    auto *const array = JSObjectMakeArray(m_context.ref(), 0, nullptr, exception);
    if (!array)
        return nullptr;
    for (qsizetype i = 0; i < list.size(); ++i) {
        const auto element = toScript(list[i], exception);
        if (!element)
            return nullptr;
        JSObjectSetPropertyAtIndex(m_context.ref(), array, unsigned(i), element, exception);
        if (*exception)
            return nullptr;
    }
    return array;
}

void ScriptConverter::setMember(JSObjectRef object, const QString &key, JSValueRef value, JSValueRef *exception)
{
    if (key == u"__proto__") { // which would set the prototype, not a property
        const JSValueRef arguments[] = {object, value};
        m_context.callLibrary(libraryfunction::defineProtoProperty, arguments, exception);
        return;
    }
    JSObjectSetProperty(
        m_context.ref(), object, ScriptString(QStringView(key)).get(), value, kJSPropertyAttributeNone, exception);
}

template <class Dictionary>
JSValueRef ScriptConverter::dictionaryToScript(const Dictionary &dictionary, JSValueRef *exception)
{
    auto *const object = JSObjectMake(m_context.ref(), nullptr, nullptr);
    for (auto entry = dictionary.begin(); entry != dictionary.end(); ++entry) {
        const auto value = toScript(entry.value(), exception);
        if (!value)
            return nullptr;
        setMember(object, entry.key(), value, exception);
        if (*exception)
            return nullptr;
    }
    return object;
}

JSValueRef ScriptConverter::functionToScript(const NativeFunction &function)
{
    static const JSClassRef functionClass = [] {
        auto definition = kJSClassDefinitionEmpty;
        definition.className = "NativeFunction";
        definition.finalize = [](JSObjectRef object) { delete static_cast<FunctionBox *>(JSObjectGetPrivate(object)); };
        definition.callAsFunction = [](JSContextRef context, JSObjectRef callee, JSObjectRef, std::size_t count,
                                        const JSValueRef arguments[], JSValueRef *exception) -> JSValueRef {
            const auto *const box = static_cast<FunctionBox *>(JSObjectGetPrivate(callee));
            const auto converter = box->converter.lock();
            if (converter)
                return (*converter)->callNative(box->function, {arguments, count}, exception);
            *exception = ScriptContext::endedError(context);
            return JSValueMakeUndefined(context);
        };
        return JSClassCreate(&definition);
    }();
    return JSObjectMake(m_context.ref(), functionClass, new FunctionBox{function, m_self});
}

JSValueRef ScriptConverter::callNative(
    const NativeFunction &function, std::span<const JSValueRef> arguments, JSValueRef *exception)
{
    const auto context = m_context.ref();
    const auto describe = [&]() -> ScriptCallRecord {
        return {ScriptCallRecord::Kind::Call, QStringLiteral("NativeFunction"), traceTexts(context, arguments), {},
            false, 0, {}};
    };
    return observedCall(context, exception, describe, [&] { return carryOutNative(function, arguments, exception); });
}

JSValueRef ScriptConverter::carryOutNative(
    const NativeFunction &function, std::span<const JSValueRef> arguments, JSValueRef *exception)
{
    try {
        QVariantList values;
        for (const auto argument : arguments) {
            values.append(toVariant(argument, exception));
            if (*exception)
                return m_context.undefined();
        }
        const auto result = toScript(function.function(values), exception);
        return result ? result : m_context.undefined();
    } catch (const std::exception &error) {
        *exception = m_context.makeError(QString::fromUtf8(error.what()));
        return m_context.undefined();
    }
}
