#include "validation/Schema.h"

#include <QSet>

namespace {

QList<JSONNode::Type> typesOf(const QVariant &demand)
{
    static const QHash<QString, JSONNode::Type> types{{QStringLiteral("object"), JSONNode::Type::Object},
        {QStringLiteral("array"), JSONNode::Type::Array}, {QStringLiteral("string"), JSONNode::Type::String},
        {QStringLiteral("number"), JSONNode::Type::Number}, {QStringLiteral("boolean"), JSONNode::Type::Boolean},
        {QStringLiteral("null"), JSONNode::Type::Null}};
    QList<JSONNode::Type> result;
    const auto names = demand.typeId() == QMetaType::QString ? QStringList(demand.toString()) : demand.toStringList();
    for (const auto &name : names) {
        if (!types.contains(name))
            qFatal("The schema has an unknown type: %s", qPrintable(name));
        result.append(types.value(name));
    }
    return result;
}

/// In a schema "$" is the end of a text, here it would be in front of a line end there too.
QString withItsEnd(const QString &pattern)
{
    return pattern.endsWith(u'$') ? pattern.chopped(1) + QStringLiteral("\\z") : pattern;
}

} // namespace

SchemaDocument::SchemaDocument(const QVariantMap &document)
    : m_definitions(document.value(QStringLiteral("$defs")).toMap())
    , m_root(read(document))
{ }

const Schema *SchemaDocument::read(const QVariantMap &keywords)
{
    const auto reference = keywords.value(QStringLiteral("$ref")).toString();
    if (!reference.isEmpty() && keywords.size() == 1)
        return definition(reference);
    auto &schema = m_schemas.emplace_back();
    if (!reference.isEmpty())
        schema = *definition(reference);
    apply(keywords, schema);
    return &schema;
}

/// Read once, before what is in it: it may lead back to itself.
const Schema *SchemaDocument::definition(const QString &reference)
{
    const QString prefix = QStringLiteral("#/$defs/");
    const auto keywords = m_definitions.value(reference.mid(prefix.size()));
    if (!reference.startsWith(prefix) || !keywords.isValid())
        qFatal("The schema has a reference that leads nowhere: %s", qPrintable(reference));
    if (const auto *const known = m_readDefinitions.value(reference))
        return known;
    auto &schema = m_schemas.emplace_back();
    m_readDefinitions.insert(reference, &schema);
    apply(keywords.toMap(), schema);
    return &schema;
}

void SchemaDocument::apply(const QVariantMap &keywords, Schema &schema)
{
    for (auto keyword = keywords.begin(); keyword != keywords.end(); ++keyword)
        apply(keyword.key(), *keyword, schema);
}

void SchemaDocument::apply(const QString &keyword, const QVariant &demand, Schema &schema)
{
    static const QSet<QString> remarks{QStringLiteral("$schema"), QStringLiteral("$defs"), QStringLiteral("$ref"),
        QStringLiteral("title"), QStringLiteral("description"), QStringLiteral("format")};
    if (remarks.contains(keyword))
        return;
    if (keyword == u"type") {
        schema.types = typesOf(demand);
    } else if (keyword == u"properties") {
        const auto properties = demand.toMap();
        for (auto property = properties.begin(); property != properties.end(); ++property)
            schema.properties.insert(property.key(), read(property->toMap()));
    } else if (keyword == u"additionalProperties") {
        schema.additional = demand.typeId() == QMetaType::QVariantMap ? read(demand.toMap()) : nullptr;
    } else if (keyword == u"items") {
        schema.items = read(demand.toMap());
    } else if (keyword == u"required") {
        schema.required = demand.toStringList();
    } else if (keyword == u"enum") {
        schema.values = demand.toStringList();
    } else if (keyword == u"pattern") {
        schema.pattern = QRegularExpression(withItsEnd(demand.toString()));
    } else if (keyword == u"patternErrorMessage") {
        schema.patternMessage = demand.toString();
    } else if (keyword == u"minLength") {
        schema.shortest = demand.toLongLong();
    } else if (keyword == u"maxLength") {
        schema.longest = demand.toLongLong();
    } else if (keyword == u"minimum") {
        schema.minimum = demand.toDouble();
    } else {
        qFatal("The schema has an unknown keyword: %s", qPrintable(keyword));
    }
}
