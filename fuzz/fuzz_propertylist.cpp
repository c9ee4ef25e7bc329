// Any bytes: either an error, or a value that survives being written and read again.

#include "platform/PropertyList.h"

#include <QtGlobal>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto value = variantFromPropertyList(bytes);
    if (!value)
        return 0;
    const auto written = propertyListFromVariant(value.value());
    if (!written)
        return 0; // a date or a text that only the other form can hold
    const auto again = variantFromPropertyList(written.value());
    if (!again)
        qFatal("cannot be read again: %s", written.value().constData());
    const auto rewritten = propertyListFromVariant(again.value());
    if (!rewritten || rewritten.value() != written.value())
        qFatal("not the same when read again: %s", written.value().constData());
    return 0;
}
