#include "platform/script/TypedArrayElements.h"

#include <QByteArray>
#include <QVariantList>

#include <type_traits>

namespace {

template <class Element>
QVariantList elementsAs(const void *bytes, std::size_t count)
{
    QVariantList list;
    const auto *const elements = static_cast<const Element *>(bytes);
    for (std::size_t i = 0; i < count; ++i) {
        if constexpr (std::is_floating_point_v<Element>)
            list.append(double(elements[i]));
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
    default: // Uint8Array and Uint8ClampedArray
        return QByteArray(static_cast<const char *>(bytes), qsizetype(count));
    }
}

QByteArray bytesOfBuffer(JSContextRef context, JSObjectRef buffer, JSValueRef *exception)
{
    const auto *const bytes = static_cast<const char *>(JSObjectGetArrayBufferBytesPtr(context, buffer, exception));
    const auto size = JSObjectGetArrayBufferByteLength(context, buffer, exception);
    return bytes ? QByteArray(bytes, qsizetype(size)) : QByteArray("");
}

} // namespace

QVariant elementsOfTypedArray(JSContextRef context, JSObjectRef array, JSTypedArrayType type, JSValueRef *exception)
{
    if (type == kJSTypedArrayTypeArrayBuffer)
        return bytesOfBuffer(context, array, exception);
    const auto *const buffer = static_cast<const char *>(JSObjectGetTypedArrayBytesPtr(context, array, exception));
    if (!buffer)
        return elementsOf(type, nullptr, 0);
    const auto offset = JSObjectGetTypedArrayByteOffset(context, array, exception);
    return elementsOf(type, buffer + offset, JSObjectGetTypedArrayLength(context, array, exception));
}
