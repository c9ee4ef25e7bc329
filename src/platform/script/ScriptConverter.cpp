#include "platform/script/ScriptConverter.h"

#include "platform/FileURL.h"
#include "platform/OrderedDictionary.h"
#include "platform/script/ValueText.h"

#include <QDateTime>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

constexpr double largestExactInteger = 9007199254740991.0;
/// Deeper data stays inside the script: copying it would need a C++ stack frame a level.
constexpr std::size_t deepestCopy = 500;
/// Longer arrays that are mostly holes stay inside the script.
constexpr unsigned longestSparseArray = 100'000;

JSObjectRef objectOf(JSValueRef value)
{
    return const_cast<JSObjectRef>(value);
}

template<class Element>
QVariantList elementsAs(const void *bytes, std::size_t count)
{
    QVariantList list;
    const auto *const elements = static_cast<const Element *>(bytes);
    for (std::size_t i = 0; i < count; ++i) {
        if constexpr (std::is_floating_point_v<Element>)
            list.append(double(elements[i]));
        else if constexpr (std::is_unsigned_v<Element>)
            list.append(qulonglong(elements[i]));
        else
            list.append(qlonglong(elements[i]));
    }
    return list;
}

QVariant elementsOf(JSTypedArrayType type, const void *bytes, std::size_t count)
{
    switch (type) {
    case kJSTypedArrayTypeInt8Array:
        return elementsAs<qint8>(bytes, count);
    case kJSTypedArrayTypeInt16Array:
        return elementsAs<qint16>(bytes, count);
    case kJSTypedArrayTypeUint16Array:
        return elementsAs<quint16>(bytes, count);
    case kJSTypedArrayTypeInt32Array:
        return elementsAs<qint32>(bytes, count);
    case kJSTypedArrayTypeUint32Array:
        return elementsAs<quint32>(bytes, count);
    case kJSTypedArrayTypeFloat32Array:
        return elementsAs<float>(bytes, count);
    case kJSTypedArrayTypeFloat64Array:
        return elementsAs<double>(bytes, count);
    case kJSTypedArrayTypeBigInt64Array:
        return elementsAs<qint64>(bytes, count);
    case kJSTypedArrayTypeBigUint64Array:
        return elementsAs<quint64>(bytes, count);
    default: // Uint8Array and Uint8ClampedArray
        return QByteArray(static_cast<const char *>(bytes), qsizetype(count));
    }
}

/// A C++ function inside a script value that can be called.
struct FunctionBox
{
    NativeFunction function;
    std::weak_ptr<ScriptConverter *> converter;
};

} // namespace

ScriptFunctionCaller::~ScriptFunctionCaller() = default;

/// One value of the session that C++ holds on to. The converter lets go of it at the session's end.
class ScriptConverter::Storage final : public ScriptValueStorage
{
public:
    Storage(ScriptConverter &converter, JSValueRef value)
        : m_converter(&converter)
        , m_value(converter.m_context.ref(), value)
    {
        converter.m_storages.insert(this);
    }
    ~Storage() override
    {
        if (m_converter)
            m_converter->m_storages.erase(this);
    }

    void end()
    {
        m_converter = nullptr;
        m_value.reset();
    }
    JSValueRef valueIn(const ScriptConverter *converter) const
    {
        return m_converter == converter ? m_value.get() : nullptr;
    }
    void settle(const QVariant &value)
    {
        m_isSettled = true;
        m_settledValue = value;
    }

    bool isAlive() const override { return m_converter; }
    QString description() const override
    {
        if (!m_converter)
            return {};
        auto &context = m_converter->m_context;
        const auto text = context.callLibrary(libraryfunction::describe, m_value.get(), nullptr);
        return text ? context.textOf(text) : QString();
    }
    QVariant toVariant() const override
    {
        JSValueRef exception = nullptr;
        return m_converter ? m_converter->toVariant(m_value.get(), &exception) : QVariant();
    }
    QVariant call(const QVariantList &arguments) const override
    {
        return m_converter ? m_converter->m_caller.callFunction(m_value.object(), arguments) : QVariant();
    }
    bool isSettled() const override { return m_isSettled; }
    QVariant settledValue() const override { return m_settledValue; }

private:
    ScriptConverter *m_converter;
    ProtectedValue m_value;
    bool m_isSettled = false;
    QVariant m_settledValue;
};

/// What one copy has met so far: a part that comes again is not copied again, one inside itself not at all.
struct ScriptConverter::Traversal
{
    JSValueRef *exception;
    std::vector<JSValueRef> ancestors;
    std::unordered_map<JSValueRef, QVariant> copies;
};

ScriptConverter::ScriptConverter(ScriptContext &context, ScriptWrappers &wrappers, ScriptFunctionCaller &caller)
    : m_context(context)
    , m_wrappers(wrappers)
    , m_caller(caller)
    , m_views(context.ref(), *this)
    , m_self(std::make_shared<ScriptConverter *>(this))
{
}

ScriptConverter::~ScriptConverter()
{
    for (auto *storage : m_storages)
        storage->end();
}

// To scripts

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
        return numberToScript(value);
    case QMetaType::QString:
        return m_context.makeString(*static_cast<const QString *>(value.constData()));
    case QMetaType::QUrl:
        return value.toUrl().isEmpty() ? JSValueMakeNull(context) : m_context.makeString(absoluteString(value.toUrl()));
    case QMetaType::QByteArray:
        return bytesToScript(value.toByteArray(), exception);
    case QMetaType::QDateTime: {
        const auto time = value.toDateTime();
        const auto milliseconds
            = JSValueMakeNumber(context, time.isValid() ? double(time.toMSecsSinceEpoch()) : std::nan(""));
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
        const auto storage = std::dynamic_pointer_cast<Storage>(value.value<ScriptValue>().storage());
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

JSValueRef ScriptConverter::numberToScript(const QVariant &value) const
{
    const auto context = m_context.ref();
    if (value.typeId() == QMetaType::ULongLong && value.toULongLong() > quint64(largestExactInteger))
        return JSBigIntCreateWithUInt64(context, value.toULongLong(), nullptr);
    if (value.typeId() == QMetaType::LongLong && std::abs(value.toDouble()) > largestExactInteger)
        return JSBigIntCreateWithInt64(context, value.toLongLong(), nullptr);
    return JSValueMakeNumber(context, value.toDouble());
}

JSValueRef ScriptConverter::bytesToScript(const QByteArray &bytes, JSValueRef *exception) const
{
    auto *const array = JSObjectMakeTypedArray(
        m_context.ref(), kJSTypedArrayTypeUint8Array, std::size_t(bytes.size()), exception);
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

template<class Dictionary>
JSValueRef ScriptConverter::dictionaryToScript(const Dictionary &dictionary, JSValueRef *exception)
{
    auto *const object = JSObjectMake(m_context.ref(), nullptr, nullptr);
    for (auto entry = dictionary.begin(); entry != dictionary.end(); ++entry) {
        const auto value = toScript(entry.value(), exception);
        if (!value)
            return nullptr;
        JSObjectSetProperty(m_context.ref(), object, ScriptString(QStringView(entry.key())).get(), value,
            kJSPropertyAttributeNone, exception);
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
    return JSObjectMake(m_context.ref(), functionClass, new FunctionBox {function, m_self});
}

JSValueRef ScriptConverter::callNative(
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

// To C++

QVariant ScriptConverter::toVariant(JSValueRef value, JSValueRef *exception)
{
    Traversal traversal {exception, {}, {}};
    auto result = convert(value, traversal);
    return *exception ? QVariant() : result;
}

QVariant ScriptConverter::toLiveVariant(JSValueRef value, JSValueRef *exception)
{
    if (!JSValueIsObject(m_context.ref(), value))
        return toVariant(value, exception);
    const auto prototype = JSObjectGetPrototype(m_context.ref(), objectOf(value));
    const auto identity = identityValue(objectOf(value), prototype);
    return identity.isValid() ? identity : QVariant::fromValue(makeValue(ScriptValue::Kind::Data, value));
}

QVariant ScriptConverter::convert(JSValueRef value, Traversal &traversal)
{
    const auto context = m_context.ref();
    switch (JSValueGetType(context, value)) {
    case kJSTypeUndefined:
        return {};
    case kJSTypeNull:
        return QVariant::fromValue(nullptr);
    case kJSTypeBoolean:
        return JSValueToBoolean(context, value);
    case kJSTypeNumber: {
        const double number = JSValueToNumber(context, value, nullptr);
        const bool isWhole = std::trunc(number) == number && std::abs(number) <= largestExactInteger;
        const bool isNegativeZero = number == 0 && std::signbit(number);
        return isWhole && !isNegativeZero ? QVariant(qlonglong(number)) : QVariant(number);
    }
    case kJSTypeString:
        return m_context.textOf(value);
    case kJSTypeObject:
        return convertObject(objectOf(value), traversal);
    case kJSTypeBigInt:
        return convertBigInt(value);
    default:
        return QVariant::fromValue(makeValue(ScriptValue::Kind::Other, value));
    }
}

QVariant ScriptConverter::convertBigInt(JSValueRef value)
{
    const auto digits = m_context.textOf(value);
    bool fits = false;
    if (const auto number = digits.toLongLong(&fits); fits)
        return number;
    if (const auto number = digits.toULongLong(&fits); fits)
        return number;
    return QVariant::fromValue(makeValue(ScriptValue::Kind::Other, value));
}

QVariant ScriptConverter::convertObject(JSObjectRef object, Traversal &traversal)
{
    if (const auto known = traversal.copies.find(object); known != traversal.copies.end())
        return known->second;
    const auto context = m_context.ref();
    const auto prototype = JSObjectGetPrototype(context, object);
    if (const auto identity = identityValue(object, prototype); identity.isValid())
        return identity;
    if (JSValueIsDate(context, object)) {
        const double milliseconds = JSValueToNumber(context, object, traversal.exception);
        return std::isfinite(milliseconds) ? QDateTime::fromMSecsSinceEpoch(qint64(milliseconds), Qt::UTC)
                                           : QDateTime();
    }
    const auto type = JSValueGetTypedArrayType(context, object, nullptr);
    if (type != kJSTypedArrayTypeNone)
        return convertTypedArray(object, type, traversal);
    const bool isArray = JSValueIsArray(context, object);
    if (!isArray && !isPlainPrototype(prototype))
        return QVariant::fromValue(makeValue(ScriptValue::Kind::Other, object));

    const bool isInsideItself = std::find(traversal.ancestors.begin(), traversal.ancestors.end(), object)
        != traversal.ancestors.end();
    if (isInsideItself || traversal.ancestors.size() >= deepestCopy)
        return QVariant::fromValue(makeValue(ScriptValue::Kind::Cycle, object));
    traversal.ancestors.push_back(object);
    auto copy = isArray ? convertArray(object, traversal) : convertPlainObject(object, traversal);
    traversal.ancestors.pop_back();
    traversal.copies.emplace(object, copy);
    return copy;
}

QVariant ScriptConverter::identityValue(JSObjectRef object, JSValueRef prototype)
{
    if (m_wrappers.isWrapper(prototype)) {
        if (const auto wrapped = m_wrappers.unwrap(object, prototype))
            return QVariant::fromValue(wrapped);
        return QVariant::fromValue(makeValue(ScriptValue::Kind::Other, object)); // its C++ object is gone
    }
    if (m_views.isView(object))
        return QVariant::fromValue(m_views.dictionary(object));
    if (JSObjectIsFunction(m_context.ref(), object))
        return QVariant::fromValue(makeValue(ScriptValue::Kind::Function, object));
    if (isPromise(object))
        return QVariant::fromValue(makeValue(ScriptValue::Kind::Promise, object));
    return {};
}

std::optional<unsigned> ScriptConverter::arrayLength(JSObjectRef array, JSValueRef *exception)
{
    const auto context = m_context.ref();
    const auto length = m_context.property(array, "length", exception);
    const double claimed = length ? JSValueToNumber(context, length, nullptr) : 0;
    const auto count = claimed > 0 ? unsigned(std::min(claimed, double(std::numeric_limits<unsigned>::max()))) : 0;
    if (count <= longestSparseArray)
        return count;
    // The length is the script's own claim: believe it only when most elements are there.
    const auto keys = m_context.callLibrary(libraryfunction::keys, array, exception);
    const bool hasKeys = keys && JSValueIsObject(context, keys);
    const auto keyCount = hasKeys ? m_context.property(objectOf(keys), "length", exception) : nullptr;
    const bool isSparse = !keyCount || !JSValueIsNumber(context, keyCount) || JSValueToNumber(context, keyCount, nullptr) < count / 2;
    return isSparse ? std::nullopt : std::optional(count);
}

QVariant ScriptConverter::convertArray(JSObjectRef array, Traversal &traversal)
{
    const auto length = arrayLength(array, traversal.exception);
    if (!length)
        return QVariant::fromValue(makeValue(ScriptValue::Kind::Other, array));
    QVariantList list;
    for (unsigned i = 0; i < *length && !*traversal.exception; ++i) {
        const auto element = JSObjectGetPropertyAtIndex(m_context.ref(), array, i, traversal.exception);
        if (*traversal.exception)
            break;
        list.append(convert(element, traversal));
    }
    return list;
}

QVariant ScriptConverter::convertPlainObject(JSObjectRef object, Traversal &traversal)
{
    const auto context = m_context.ref();
    QVariantMap map;
    const auto keys = m_context.callLibrary(libraryfunction::keys, object, traversal.exception);
    const bool hasKeys = keys && JSValueIsArray(context, keys);
    const auto count = hasKeys ? arrayLength(objectOf(keys), traversal.exception).value_or(0) : 0;
    for (unsigned i = 0; i < count && !*traversal.exception; ++i) {
        const auto key = JSObjectGetPropertyAtIndex(context, objectOf(keys), i, traversal.exception);
        const auto value = JSObjectGetPropertyForKey(context, object, key, traversal.exception);
        if (*traversal.exception)
            break;
        map.insert(m_context.textOf(key), convert(value, traversal));
    }
    return map;
}

QVariant ScriptConverter::convertTypedArray(JSObjectRef array, JSTypedArrayType type, Traversal &traversal)
{
    const auto context = m_context.ref();
    if (type == kJSTypedArrayTypeArrayBuffer) {
        const auto *const bytes = static_cast<const char *>(
            JSObjectGetArrayBufferBytesPtr(context, array, traversal.exception));
        const auto size = JSObjectGetArrayBufferByteLength(context, array, traversal.exception);
        return bytes ? QByteArray(bytes, qsizetype(size)) : QByteArray("");
    }
    const void *const bytes = JSObjectGetTypedArrayBytesPtr(context, array, traversal.exception);
    const auto count = JSObjectGetTypedArrayLength(context, array, traversal.exception);
    return elementsOf(type, bytes, bytes ? count : 0);
}

bool ScriptConverter::isPlainPrototype(JSValueRef prototype)
{
    if (!m_objectPrototype.get()) {
        const auto context = m_context.ref();
        m_objectPrototype
            = ProtectedValue(context, JSObjectGetPrototype(context, JSObjectMake(context, nullptr, nullptr)));
    }
    return prototype == m_objectPrototype.get() || JSValueIsNull(m_context.ref(), prototype);
}

bool ScriptConverter::isPromise(JSValueRef value)
{
    const auto context = m_context.ref();
    if (!JSValueIsObject(context, value))
        return false;
    if (!m_promisePrototype.get()) {
        // What async functions return, even when a script has replaced the global Promise.
        auto *const promise = JSObjectMakeDeferredPromise(context, nullptr, nullptr, nullptr);
        m_promisePrototype = ProtectedValue(context, promise ? JSObjectGetPrototype(context, promise) : nullptr);
    }
    return JSObjectGetPrototype(context, objectOf(value)) == m_promisePrototype.get();
}

ScriptValue ScriptConverter::makeValue(ScriptValue::Kind kind, JSValueRef value)
{
    return ScriptValue(kind, std::make_shared<Storage>(*this, value));
}

void ScriptConverter::settle(const ScriptValue &promise, const QVariant &value)
{
    if (const auto storage = std::dynamic_pointer_cast<Storage>(promise.storage()))
        storage->settle(value);
}

std::optional<QString> ScriptConverter::toOptionalString(JSValueRef value, JSValueRef *exception)
{
    const auto context = m_context.ref();
    if (JSValueIsUndefined(context, value) || JSValueIsNull(context, value))
        return std::nullopt;
    return ScriptString::adopt(JSValueToStringCopy(context, value, exception)).toQString();
}

QString ScriptConverter::description(JSValueRef value)
{
    JSValueRef exception = nullptr;
    return descriptionOfValue(toVariant(value, &exception));
}
