#include "platform/JSONValidity.h"

#include "platform/OrderedDictionary.h"

#include <QVariantList>
#include <QVariantMap>

#include <algorithm>
#include <cmath>

namespace {

constexpr int deepestNesting = 512;

bool isValid(const QVariant &value, int depth)
{
    const auto isValidInside = [depth](const QVariant &inner) { return isValid(inner, depth + 1); };
    if (depth > deepestNesting)
        return false;
    switch (value.typeId()) {
    case QMetaType::Nullptr:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::QString:
    case QMetaType::QStringList:
        return true;
    case QMetaType::Double:
        return std::isfinite(value.toDouble());
    case QMetaType::QVariantList: {
        const auto list = value.toList();
        return std::all_of(list.begin(), list.end(), isValidInside);
    }
    case QMetaType::QVariantMap: {
        const auto map = value.toMap();
        return std::all_of(map.begin(), map.end(), isValidInside);
    }
    default:
        break;
    }
    if (value.metaType() == QMetaType::fromType<OrderedStringDictionary>())
        return true;
    if (value.metaType() != QMetaType::fromType<OrderedVariantDictionary>())
        return false;
    const auto dictionary = value.value<OrderedVariantDictionary>();
    return std::all_of(dictionary.begin(), dictionary.end(),
        [&isValidInside](const auto &entry) { return isValidInside(entry.second); });
}

} // namespace

bool isValidJSONValue(const QVariant &value)
{
    return isValid(value, 0);
}
