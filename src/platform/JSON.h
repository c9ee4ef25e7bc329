#pragma once

#include "platform/Result.h"

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <simdjson.h>

#include <optional>
#include <string_view>

/// One value inside a parsed document: a view, valid while its JSONParser lives and parses nothing else.
///
/// The typed lookups answer nil for a value of another type, so that callers treat it as absent.
class JSONView
{
public:
    explicit JSONView(simdjson::dom::element element)
        : m_element(element)
    { }

    bool isObject() const { return m_element.is_object(); }
    bool isArray() const { return m_element.is_array(); }

    std::optional<QString> string() const;
    /// The same as it stands in the parser's memory.
    std::optional<std::string_view> utf8() const;
    /// A boolean; numbers and strings do not count as one.
    std::optional<bool> boolean() const;
    /// A number's decimal form without an exponent (1 gives "1", 1.5 gives "1.5"); a boolean is not a number.
    std::optional<QString> numberText() const;

    /// Calls `visit(std::string_view key, JSONView value)` for each member of an object, in the document's order.
    template <class Visit>
    void forEachMember(Visit visit) const
    {
        simdjson::dom::object object;
        if (m_element.get(object) != simdjson::SUCCESS)
            return;
        for (const auto member : object)
            visit(member.key, JSONView(member.value));
    }

    /// 0 for anything but an array.
    std::size_t elementCount() const;
    /// Calls `visit(JSONView element)` for each element of an array.
    template <class Visit>
    void forEachElement(Visit visit) const
    {
        simdjson::dom::array array;
        if (m_element.get(array) != simdjson::SUCCESS)
            return;
        for (const auto element : array)
            visit(JSONView(element));
    }

    /// The value as Qt's types: QVariantMap, QVariantList, QString, bool, qlonglong, qulonglong, double, nullptr.
    QVariant toVariant() const;

private:
    simdjson::dom::element m_element;
};

/// Reads JSON texts, one after another, and keeps its working memory between them.
class JSONParser
{
public:
    /// Spare bytes that `parse` needs behind the text; with fewer it copies the text.
    static constexpr qsizetype padding = simdjson::SIMDJSON_PADDING;

    /// Checks and reads a whole text: UTF-8, with or without a byte-order mark, nested at most 1,024 deep. Integers
    /// too long for 64 bits are read as floating-point numbers.
    Result<JSONView> parse(const QByteArray &text);

private:
    simdjson::error_code parseText(std::string_view text, bool isPadded, simdjson::dom::element &root);

    simdjson::dom::parser m_parser;
};

QString textFromUTF8(std::string_view utf8);
