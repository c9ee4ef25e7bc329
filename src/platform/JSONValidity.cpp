#include "platform/JSONValidity.h"

#include "platform/OrderedDictionary.h"

#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <algorithm>
#include <cmath>

namespace {

constexpr int deepestNesting = 512;

bool isValid(const QVariant &value, int depth);

template <class Dictionary>
bool areMembersValid(const QVariant &value, int depth)
{
    const auto &dictionary = *static_cast<const Dictionary *>(value.constData());
    for (auto member = dictionary.begin(); member != dictionary.end(); ++member) {
        if (!isValidJSONText(member.key()) || !isValid(member.value(), depth + 1))
            return false;
    }
    return true;
}

bool isValidCustom(const QVariant &value, int depth)
{
    if (value.metaType() == QMetaType::fromType<OrderedStringDictionary>())
        return areMembersValid<OrderedStringDictionary>(value, depth);
    return value.metaType() == QMetaType::fromType<OrderedVariantDictionary>()
        && areMembersValid<OrderedVariantDictionary>(value, depth);
}

bool isValid(const QVariant &value, int depth)
{
    if (depth > deepestNesting)
        return false;
    switch (value.typeId()) {
    case QMetaType::Nullptr:
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return true;
    case QMetaType::QString:
        return isValidJSONText(*static_cast<const QString *>(value.constData()));
    case QMetaType::Double:
        return std::isfinite(value.toDouble());
    case QMetaType::QStringList: {
        const auto texts = value.toStringList();
        return std::all_of(texts.begin(), texts.end(), isValidJSONText);
    }
    case QMetaType::QVariantList: {
        const auto list = value.toList();
        return std::all_of(
            list.begin(), list.end(), [depth](const QVariant &element) { return isValid(element, depth + 1); });
    }
    case QMetaType::QVariantMap:
        return areMembersValid<QVariantMap>(value, depth);
    default:
        return isValidCustom(value, depth);
    }
}

} // namespace

bool isValidJSONText(QStringView text)
{
    return text.isValidUtf16();
}

bool isValidJSONValue(const QVariant &value)
{
    return isValid(value, 0);
}
