#include "support/JSONSchema.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

bool hasType(const QVariant &value, const QString &type)
{
    if (type == u"object"_s)
        return value.typeId() == QMetaType::QVariantMap;
    if (type == u"array"_s)
        return value.typeId() == QMetaType::QVariantList;
    if (type == u"string"_s)
        return value.typeId() == QMetaType::QString;
    qFatal("unknown type %s", qPrintable(type));
}

/// What a text demands has no say over values of other types.
bool isTextWithin(const QVariant &value, qsizetype shortest, qsizetype longest)
{
    const auto size = value.toString().size();
    return value.typeId() != QMetaType::QString || (size >= shortest && size <= longest);
}

bool hasMembers(const QVariant &value, const QStringList &names)
{
    const auto members = value.toMap();
    return value.typeId() != QMetaType::QVariantMap
        || std::all_of(names.begin(), names.end(), [&](const QString &name) { return members.contains(name); });
}

bool matches(const QVariant &value, const QString &pattern)
{
    const QRegularExpression expression(pattern);
    if (!expression.isValid())
        qFatal("no pattern: %s", qPrintable(pattern));
    return value.typeId() != QMetaType::QString || expression.match(value.toString()).hasMatch();
}

} // namespace

bool JSONSchema::accepts(const QVariantMap &schema, const QVariant &value) const
{
    for (auto demand = schema.begin(); demand != schema.end(); ++demand) {
        if (!meets(demand.key(), *demand, value))
            return false;
    }
    return true;
}

bool JSONSchema::meets(const QString &keyword, const QVariant &demand, const QVariant &value) const
{
    static const QSet<QString> remarks{
        u"$schema"_s, u"$defs"_s, u"title"_s, u"description"_s, u"format"_s}; // a format is a remark by default
    const auto isAccepted = [&](const QVariant &schemaOrElement, const QVariant &element) {
        return accepts(schemaOrElement.toMap(), element);
    };
    const auto list = value.toList();
    const bool isList = value.typeId() == QMetaType::QVariantList;
    if (remarks.contains(keyword))
        return true;
    if (keyword == u"$ref"_s)
        return accepts(referenced(demand.toString()), value);
    if (keyword == u"type"_s)
        return hasType(value, demand.toString());
    if (keyword == u"required"_s)
        return hasMembers(value, demand.toStringList());
    if (keyword == u"pattern"_s)
        return matches(value, demand.toString());
    if (keyword == u"minLength"_s)
        return isTextWithin(value, demand.toLongLong(), std::numeric_limits<qsizetype>::max());
    if (keyword == u"maxLength"_s)
        return isTextWithin(value, 0, demand.toLongLong());
    if (keyword == u"minItems"_s)
        return !isList || list.size() >= demand.toLongLong();
    if (keyword == u"items"_s)
        return std::all_of(list.begin(), list.end(), [&](const QVariant &item) { return isAccepted(demand, item); });
    if (keyword == u"properties"_s)
        return hasValidMembers(demand.toMap(), value);
    if (keyword == u"anyOf"_s) {
        const auto schemas = demand.toList();
        return std::any_of(
            schemas.begin(), schemas.end(), [&](const QVariant &schema) { return isAccepted(schema, value); });
    }
    qFatal("unknown keyword %s", qPrintable(keyword));
}

bool JSONSchema::hasValidMembers(const QVariantMap &schemas, const QVariant &value) const
{
    const auto members = value.toMap();
    return std::all_of(schemas.keyBegin(), schemas.keyEnd(), [&](const QString &name) {
        return !members.contains(name) || accepts(schemas.value(name).toMap(), members.value(name));
    });
}

QVariantMap JSONSchema::referenced(const QString &reference) const
{
    const auto definitions = u"#/$defs/"_s;
    const auto definition = m_root.value(u"$defs"_s).toMap().value(reference.sliced(definitions.size()));
    if (!reference.startsWith(definitions) || !definition.isValid())
        qFatal("leads nowhere: %s", qPrintable(reference));
    return definition.toMap();
}
