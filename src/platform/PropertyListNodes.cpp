#include "platform/PropertyListNodes.h"

#include "platform/PropertyListBounds.h"

#include <QDateTime>
#include <QStringList>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <optional>

namespace {

/// Seconds from 1970 to the first moment of 2001, from which property lists count.
constexpr qint64 referenceDate = 978307200;

QString takeText(char *text)
{
    const PropertyListMemory owned(text);
    return QString::fromUtf8(text);
}

QByteArray bytesOf(plist_t node)
{
    char *bytes = nullptr;
    uint64_t length = 0;
    ::plist_get_data_val(node, &bytes, &length);
    const PropertyListMemory owned(bytes);
    return QByteArray(bytes, qsizetype(length));
}

QDateTime dateOf(plist_t node)
{
    int32_t seconds = 0;
    int32_t microseconds = 0;
    ::plist_get_date_val(node, &seconds, &microseconds);
    return QDateTime::fromMSecsSinceEpoch((referenceDate + seconds) * 1000 + microseconds / 1000, Qt::UTC);
}

QVariantMap mapOf(plist_t node)
{
    QVariantMap map;
    plist_dict_iter iterator = nullptr;
    ::plist_dict_new_iter(node, &iterator);
    const std::unique_ptr<void, PropertyListMemoryReleaser> owned(iterator);
    for (;;) {
        char *key = nullptr;
        plist_t value = nullptr;
        ::plist_dict_next_item(node, iterator, &key, &value);
        if (!value)
            return map;
        const auto name = takeText(key);
        if (const auto content = variantFromNode(value); content.isValid())
            map.insert(name, content);
    }
}

QVariantList listOf(plist_t node)
{
    QVariantList list;
    plist_array_iter iterator = nullptr;
    ::plist_array_new_iter(node, &iterator);
    const std::unique_ptr<void, PropertyListMemoryReleaser> owned(iterator);
    for (;;) {
        plist_t element = nullptr;
        ::plist_array_next_item(node, iterator, &element);
        if (!element)
            return list;
        if (const auto content = variantFromNode(element); content.isValid())
            list.append(content);
    }
}

bool isForbiddenInXML(QChar character)
{
    const auto code = character.unicode();
    const bool isWhiteSpace = code == u'\t' || code == u'\n' || code == u'\r';
    return (code < 0x20 && !isWhiteSpace) || code >= 0xFFFE;
}

PropertyListNode dictionaryNode(const QVariantMap &map)
{
    PropertyListNode dictionary(::plist_new_dict());
    for (auto entry = map.begin(); entry != map.end(); ++entry) {
        const auto key = textForPropertyList(entry.key());
        auto value = nodeFromVariant(entry.value());
        if (!key || !value)
            return nullptr;
        ::plist_dict_set_item(dictionary.get(), key->constData(), value.release());
    }
    return dictionary;
}

PropertyListNode arrayNode(const QVariantList &list)
{
    PropertyListNode array(::plist_new_array());
    for (const auto &element : list) {
        auto value = nodeFromVariant(element);
        if (!value)
            return nullptr;
        ::plist_array_append_item(array.get(), value.release());
    }
    return array;
}

PropertyListNode dateNode(const QDateTime &date)
{
    const auto milliseconds = date.toMSecsSinceEpoch() - referenceDate * 1000;
    const auto seconds = milliseconds >= 0 ? milliseconds / 1000 : (milliseconds - 999) / 1000;
    constexpr qint64 latest = std::numeric_limits<int32_t>::max();
    if (!date.isValid() || seconds > latest || seconds < -latest)
        return nullptr;
    return PropertyListNode(::plist_new_date(int32_t(seconds), int32_t((milliseconds - seconds * 1000) * 1000)));
}

} // namespace

void PropertyListNodeReleaser::operator()(void *node) const
{
    ::plist_free(node);
}

void PropertyListMemoryReleaser::operator()(void *memory) const
{
    std::free(memory);
}

QVariant variantFromNode(plist_t node)
{
    switch (::plist_get_node_type(node)) {
    case PLIST_DICT:
        return mapOf(node);
    case PLIST_ARRAY:
        return listOf(node);
    case PLIST_STRING: {
        uint64_t length = 0;
        const char *const text = ::plist_get_string_ptr(node, &length);
        return QString::fromUtf8(text, text ? qsizetype(length) : 0);
    }
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        ::plist_get_bool_val(node, &value);
        return value != 0;
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        ::plist_get_uint_val(node, &value);
        return qlonglong(value); // a negative number is kept as its two's complement
    }
    case PLIST_UID: {
        uint64_t value = 0;
        ::plist_get_uid_val(node, &value);
        return qlonglong(value);
    }
    case PLIST_REAL: {
        double value = 0;
        ::plist_get_real_val(node, &value);
        return value;
    }
    case PLIST_DATA:
        return bytesOf(node);
    case PLIST_DATE:
        return dateOf(node);
    default:
        return {}; // of no type; it is left out
    }
}

std::optional<QByteArray> textForPropertyList(const QString &text)
{
    const bool isKeepable = text.isValidUtf16() && std::none_of(text.begin(), text.end(), isForbiddenInXML);
    return isKeepable ? std::optional(text.toUtf8()) : std::nullopt;
}

PropertyListNode nodeFromVariant(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QVariantMap:
        return dictionaryNode(value.toMap());
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return arrayNode(value.toList());
    case QMetaType::QString: {
        const auto text = textForPropertyList(value.toString());
        return PropertyListNode(text ? ::plist_new_string(text->constData()) : nullptr);
    }
    case QMetaType::Bool:
        return PropertyListNode(::plist_new_bool(value.toBool() ? 1 : 0));
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return PropertyListNode(::plist_new_uint(uint64_t(value.toLongLong())));
    case QMetaType::Double:
        return PropertyListNode(::plist_new_real(value.toDouble()));
    case QMetaType::QByteArray: {
        const auto bytes = value.toByteArray();
        return PropertyListNode(::plist_new_data(bytes.constData(), uint64_t(bytes.size())));
    }
    case QMetaType::QDateTime:
        return dateNode(value.toDateTime());
    default:
        return nullptr;
    }
}

PropertyListNode nodeFromBytes(const QByteArray &bytes)
{
    const bool isParsable = bytes.size() <= qsizetype(std::numeric_limits<uint32_t>::max());
    if (bytes.isEmpty() || !isParsable || !isPropertyListWithinBounds(bytes))
        return nullptr;
    plist_t root = nullptr;
    ::plist_from_memory(bytes.constData(), uint32_t(bytes.size()), &root);
    return PropertyListNode(root);
}

QByteArray xmlFromNode(plist_t node)
{
    char *text = nullptr;
    uint32_t length = 0;
    ::plist_to_xml(node, &text, &length);
    const PropertyListMemory owned(text);
    return QByteArray(text, qsizetype(length));
}
