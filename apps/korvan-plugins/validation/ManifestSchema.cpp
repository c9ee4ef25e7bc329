#include "validation/ManifestSchema.h"

#include "platform/JSONText.h"
#include "validation/ManifestSchemaText.h"
#include "validation/Schema.h"
#include "validation/Suggestion.h"

#include <QSet>

#include <algorithm>

namespace {

const Schema &manifestSchema()
{
    static const SchemaDocument document(variantFromJSON(manifestSchemaText).value().toMap());
    return document.root();
}

QString nameOf(JSONNode::Type type)
{
    switch (type) {
    case JSONNode::Type::Null:
        return QStringLiteral("null");
    case JSONNode::Type::Boolean:
        return QStringLiteral("a boolean");
    case JSONNode::Type::Number:
        return QStringLiteral("a number");
    case JSONNode::Type::String:
        return QStringLiteral("a string");
    case JSONNode::Type::Array:
        return QStringLiteral("an array");
    case JSONNode::Type::Object:
        break;
    }
    return QStringLiteral("an object");
}

class SchemaWalk
{
public:
    explicit SchemaWalk(Manifest &manifest)
        : m_manifest(manifest)
    { }

    void check(const QString &key, const JSONNode &node, const Schema &schema)
    {
        if (!schema.types.isEmpty() && !schema.types.contains(node.type))
            return reportType(key, node, schema);
        if (node.isObject())
            checkMembers(key, node, schema);
        else if (node.isArray())
            checkElements(key, node, schema);
        else if (node.isString())
            checkText(key, node, schema);
        else if (node.type == JSONNode::Type::Number && schema.minimum && node.text.toDouble() < *schema.minimum)
            m_manifest.error(
                key, node.offset, QStringLiteral("%1 is less than %2.").arg(node.text).arg(*schema.minimum));
    }

private:
    void reportType(const QString &key, const JSONNode &node, const Schema &schema)
    {
        QStringList names;
        for (const auto type : schema.types)
            names.append(nameOf(type));
        m_manifest.error(
            key, node.offset, QStringLiteral("Expected %1, but found %2.").arg(names.join(u" or "), nameOf(node.type)));
    }

    void checkMembers(const QString &key, const JSONNode &node, const Schema &schema)
    {
        QSet<QString> keys;
        for (const auto &member : node.members) {
            const auto memberKey = Manifest::keyOfMember(key, member.key);
            if (keys.contains(member.key)) {
                m_manifest.error(memberKey, member.offset,
                    QStringLiteral("“%1” is here for the second time; only the last one counts.").arg(member.key));
            }
            keys.insert(member.key);
            if (const auto *const known = schema.properties.value(member.key, schema.additional)) {
                check(memberKey, member.value, *known);
            } else {
                m_manifest.warning(memberKey, member.offset,
                    QStringLiteral("“%1” means nothing here.%2").arg(member.key, guess(member.key, schema)));
            }
        }
        for (const auto &required : schema.required) {
            if (!keys.contains(required)) {
                m_manifest.error(Manifest::keyOfMember(key, required), node.offset,
                    QStringLiteral("“%1” is missing.").arg(required));
            }
        }
    }

    QString guess(const QString &key, const Schema &schema) const
    {
        if (m_manifest.isFullOfMistakes())
            return {};
        auto known = schema.properties.keys();
        known.sort();
        return suggestion(key, known);
    }

    void checkElements(const QString &key, const JSONNode &node, const Schema &schema)
    {
        if (!schema.items)
            return;
        qsizetype index = 0;
        for (const auto &element : node.elements)
            check(Manifest::keyOfElement(key, index++), element, *schema.items);
    }

    void checkText(const QString &key, const JSONNode &node, const Schema &schema)
    {
        const auto &text = node.text;
        if (text.size() < schema.shortest) {
            m_manifest.error(key, node.offset, QStringLiteral("The text is empty."));
        } else if (schema.longest && text.size() > *schema.longest) {
            m_manifest.error(
                key, node.offset, QStringLiteral("The text is longer than %1 characters.").arg(*schema.longest));
        } else if (schema.pattern && !schema.pattern->match(text).hasMatch()) {
            m_manifest.error(key, node.offset, QStringLiteral("“%1” %2.").arg(text, schema.patternMessage));
        } else if (!schema.values.isEmpty() && !schema.values.contains(text)) {
            m_manifest.error(
                key, node.offset, QStringLiteral("“%1” is none of: %2.").arg(text, schema.values.join(u", ")));
        }
    }

    Manifest &m_manifest;
};

} // namespace

void checkSchema(Manifest &manifest)
{
    SchemaWalk(manifest).check({}, manifest.root(), manifestSchema());
}
