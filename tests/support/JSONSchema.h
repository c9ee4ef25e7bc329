#pragma once

#include <QString>
#include <QVariantMap>

/// A JSON Schema, as far as this project's own ones use the language; a keyword beyond that ends the program, so that
/// nothing goes unchecked.
class JSONSchema
{
public:
    explicit JSONSchema(const QVariantMap &schema)
        : m_root(schema)
    { }

    bool accepts(const QVariant &value) const { return accepts(m_root, value); }

private:
    bool accepts(const QVariantMap &schema, const QVariant &value) const;
    bool meets(const QString &keyword, const QVariant &demand, const QVariant &value) const;
    bool hasValidMembers(const QVariantMap &schemas, const QVariant &value) const;
    QVariantMap referenced(const QString &reference) const;

    QVariantMap m_root;
};
