#pragma once

#include "validation/JSONNode.h"

#include <QHash>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <deque>
#include <optional>

/// One schema of JSON Schema's language, as far as this project's own schema uses it. Those that it leads to belong to
/// the document; they may lead back.
struct Schema
{
    /// None: any type.
    QList<JSONNode::Type> types;
    QHash<QString, const Schema *> properties;
    /// Of keys that are not in `properties`; null: they are not known.
    const Schema *additional = nullptr;
    /// Of an array's elements; null: anything.
    const Schema *items = nullptr;
    QStringList required;
    QStringList values;
    std::optional<QRegularExpression> pattern;
    /// What is said of a text that does not have the pattern.
    QString patternMessage;
    qsizetype shortest = 0;
    std::optional<qsizetype> longest;
    std::optional<double> minimum;
};

/// A whole document of the language.
class SchemaDocument
{
public:
    /// A keyword beyond those that are known ends the program, so that nothing goes unchecked.
    explicit SchemaDocument(const QVariantMap &document);
    SchemaDocument(const SchemaDocument &) = delete;
    SchemaDocument &operator=(const SchemaDocument &) = delete;

    const Schema &root() const { return *m_root; }

private:
    const Schema *read(const QVariantMap &keywords);
    void apply(const QVariantMap &keywords, Schema &schema);
    void apply(const QString &keyword, const QVariant &demand, Schema &schema);
    const Schema *definition(const QString &reference);

    QVariantMap m_definitions;
    QHash<QString, const Schema *> m_readDefinitions;
    std::deque<Schema> m_schemas;
    const Schema *m_root;
};
