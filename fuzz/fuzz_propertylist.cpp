// Any bytes: either an error, or a value that survives being written and read again.

#include "platform/PropertyList.h"
#include "platform/PropertyListDictionary.h"

#include <QSet>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>

namespace {

/// One entry of a dictionary is changed, and the others stay.
void changeOneEntry(const QByteArray &bytes)
{
    auto dictionary = PropertyListDictionary::fromBytes(bytes);
    if (!dictionary)
        return;
    const auto keys = dictionary->keys();
    if (!dictionary->setValue(QStringLiteral("changed"), true))
        qFatal("cannot be changed");
    const auto again = PropertyListDictionary::fromBytes(dictionary->toXML());
    if (!again || again->value(QStringLiteral("changed")) != QVariant(true))
        qFatal("cannot be read again: %s", dictionary->toXML().constData());
    if (again->keys().size() < QSet<QString>(keys.begin(), keys.end()).size())
        qFatal("entries were lost: %s", dictionary->toXML().constData());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    changeOneEntry(bytes);
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
