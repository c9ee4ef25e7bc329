#include "platform/network/HTTPHeader.h"

#include <algorithm>

namespace {

bool isNameCharacter(char c)
{
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return isLetter || (c >= '0' && c <= '9') || QByteArrayView("!#$%&'*+-.^_`|~").contains(c);
}

bool isValueCharacter(char c)
{
    return c != '\r' && c != '\n' && c != '\0';
}

} // namespace

bool isSendableHeader(const QByteArray &name, const QByteArray &value)
{
    return !name.isEmpty() && std::all_of(name.begin(), name.end(), isNameCharacter)
        && std::all_of(value.begin(), value.end(), isValueCharacter);
}
