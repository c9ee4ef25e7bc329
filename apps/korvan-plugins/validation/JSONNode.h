#pragma once

#include <QString>

#include <optional>
#include <variant>
#include <vector>

struct JSONMember;

/// A value of a JSON text, with the offset at which it begins there.
struct JSONNode
{
    enum class Type { Null, Boolean, Number, String, Array, Object };

    Type type = Type::Null;
    qsizetype offset = 0;
    bool boolean = false;
    /// A string's characters, or a number as it is written.
    QString text;
    std::vector<JSONNode> elements;
    /// In the order of the text; a key may come more than once.
    std::vector<JSONMember> members;

    bool isObject() const { return type == Type::Object; }
    bool isArray() const { return type == Type::Array; }
    bool isString() const { return type == Type::String; }

    /// The last member of that key, which is the one that counts; null when there is none.
    const JSONMember *member(QStringView key) const;
    /// The value of that member if it is of that type, else null.
    const JSONNode *value(QStringView key, Type type) const;
    /// The text of that member if it is a string.
    std::optional<QString> string(QStringView key) const;
};

struct JSONMember
{
    QString key;
    /// Of the key's quotation mark.
    qsizetype offset = 0;
    JSONNode value;
};

struct JSONSyntaxError
{
    QString message;
    qsizetype offset = 0;
};

/// Reads a whole JSON text as strictly as hosts do: no comments, no trailing commas, numbers that a double can hold,
/// nested at most 1,024 deep.
std::variant<JSONNode, JSONSyntaxError> readJSON(QStringView text);
