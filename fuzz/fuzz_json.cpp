// Any bytes: either an error, or a value that survives being written and read again.

#include "platform/JSONText.h"

#include <QtGlobal>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray text(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto value = variantFromJSON(text);
    if (!value)
        return 0;
    const auto written = jsonFromVariant(value.value(), JSONStyle::Compact);
    const auto again = variantFromJSON(written);
    if (!again || jsonFromVariant(again.value(), JSONStyle::Compact) != written)
        qFatal("not the same when read again: %s", written.constData());
    return 0;
}
