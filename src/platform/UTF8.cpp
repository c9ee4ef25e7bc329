#include "platform/UTF8.h"

#include <simdjson.h>

bool isValidUTF8(const QByteArray &bytes)
{
    return simdjson::validate_utf8(bytes.constData(), std::size_t(bytes.size()));
}
