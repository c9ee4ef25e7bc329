// Values on their way out of a script.

#include "platform/script/ScriptConverter.h"

#include "platform/script/TypedArrayElements.h"
#include "platform/script/ValueText.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

/// Deeper data stays inside the script: copying it would need a C++ stack frame a level.
constexpr std::size_t deepestCopy = 500;
/// Longer arrays that are mostly holes stay inside the script.
constexpr unsigned longestSparseArray = 100'000;

JSObjectRef objectOf(JSValueRef value)
{
    return const_cast<JSObjectRef>(value);
}

} // namespace

ScriptFunctionCaller::~ScriptFunctionCaller() = default;

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
{ }

ScriptConverter::~ScriptConverter()
{
    end();
}

void ScriptConverter::end()
{
    m_self.reset();
    for (auto *value : std::exchange(m_liveValues, {}))
        value->end();
}

QString ScriptConverter::describe(JSValueRef value)
{
    QString description;
    m_caller.runScript([&] {
        const auto text = m_context.callLibrary(libraryfunction::describe, value, nullptr);
        description = text ? m_context.textOf(text) : QString();
    });
    return description;
}

QVariant ScriptConverter::copy(JSValueRef value)
{
    QVariant result;
    m_caller.runScript([&] {
        JSValueRef exception = nullptr;
        result = toVariant(value, &exception);
    });
    return result;
}

QVariant ScriptConverter::callFunction(JSObjectRef function, const QVariantList &arguments)
{
    return m_caller.callFunction(function, arguments);
}

QVariant ScriptConverter::toVariant(JSValueRef value, JSValueRef *exception)
{
    Traversal traversal{exception, {}, {}};
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
    default: // a BigInt too: as a number it would come back as something else
        return QVariant::fromValue(makeValue(ScriptValue::Kind::Other, value));
    }
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

    const bool isInsideItself =
        std::find(traversal.ancestors.begin(), traversal.ancestors.end(), object) != traversal.ancestors.end();
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
    const bool isSparse =
        !keyCount || !JSValueIsNumber(context, keyCount) || JSValueToNumber(context, keyCount, nullptr) < count / 2;
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
    if (type == kJSTypedArrayTypeBigInt64Array || type == kJSTypedArrayTypeBigUint64Array)
        return QVariant::fromValue(makeValue(ScriptValue::Kind::Other, array));
    return elementsOfTypedArray(m_context.ref(), array, type, traversal.exception);
}

bool ScriptConverter::isPlainPrototype(JSValueRef prototype)
{
    if (!m_objectPrototype.get()) {
        const auto context = m_context.ref();
        m_objectPrototype =
            ProtectedValue(context, JSObjectGetPrototype(context, JSObjectMake(context, nullptr, nullptr)));
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
    const auto storage = std::make_shared<ScriptLiveValue>(*this, m_context.ref(), value);
    m_liveValues.insert(storage.get());
    return ScriptValue(kind, storage);
}

void ScriptConverter::settle(const ScriptValue &promise, const QVariant &value)
{
    if (const auto storage = std::dynamic_pointer_cast<ScriptLiveValue>(promise.storage()))
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
