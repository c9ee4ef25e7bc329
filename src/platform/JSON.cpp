#include "platform/JSON.h"
#include "platform/JSONText.h"

#include <QLocale>

namespace {

QString decimalText(double number)
{
    return QString::number(number, 'f', QLocale::FloatingPointShortest);
}

QVariant numberOf(simdjson::dom::element element)
{
    switch (element.type()) {
    case simdjson::dom::element_type::INT64:
        return qlonglong(int64_t(element));
    case simdjson::dom::element_type::UINT64:
        return qulonglong(uint64_t(element));
    default:
        return double(element);
    }
}

/// Makes every integer of more than 18 digits a floating-point number by writing ".0" behind it.
QByteArray withLongIntegersAsFloats(std::string_view text)
{
    constexpr std::size_t safeDigits = 18;
    const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
    QByteArray result;
    bool inString = false;
    for (std::size_t i = 0; i < text.size();) {
        if (inString && text[i] == '\\') {
            result += QByteArrayView(text.substr(i, 2));
            i += 2;
            continue;
        }
        if (text[i] == '"')
            inString = !inString;
        if (inString || !isDigit(text[i])) {
            result += text[i++];
            continue;
        }
        auto end = i;
        while (end < text.size() && isDigit(text[end]))
            ++end;
        const bool isFraction = i > 0 && text[i - 1] == '.';
        const bool isExponent = i > 0 && std::string_view("eE+").find(text[i - 1]) != std::string_view::npos;
        const bool isWhole = end == text.size() || std::string_view(".eE").find(text[end]) == std::string_view::npos;
        result += QByteArrayView(text.substr(i, end - i));
        if (end - i > safeDigits && isWhole && !isFraction && !isExponent)
            result += ".0";
        i = end;
    }
    return result;
}

} // namespace

QString textFromUTF8(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
}

std::optional<std::string_view> JSONView::utf8() const
{
    std::string_view text;
    if (m_element.get(text) != simdjson::SUCCESS)
        return std::nullopt;
    return text;
}

std::optional<QString> JSONView::string() const
{
    const auto text = utf8();
    return text ? std::optional(textFromUTF8(*text)) : std::nullopt;
}

std::optional<bool> JSONView::boolean() const
{
    bool value = false;
    if (m_element.get(value) != simdjson::SUCCESS)
        return std::nullopt;
    return value;
}

std::optional<QString> JSONView::numberText() const
{
    switch (m_element.type()) {
    case simdjson::dom::element_type::INT64:
        return QString::number(int64_t(m_element));
    case simdjson::dom::element_type::UINT64:
        return QString::number(uint64_t(m_element));
    case simdjson::dom::element_type::DOUBLE:
        return decimalText(double(m_element));
    default:
        return std::nullopt;
    }
}

QVariant JSONView::toVariant() const
{
    switch (m_element.type()) {
    case simdjson::dom::element_type::OBJECT: {
        QVariantMap map;
        forEachMember([&](std::string_view key, JSONView value) { map.insert(textFromUTF8(key), value.toVariant()); });
        return map;
    }
    case simdjson::dom::element_type::ARRAY: {
        QVariantList list;
        forEachElement([&](JSONView value) { list.append(value.toVariant()); });
        return list;
    }
    case simdjson::dom::element_type::STRING:
        return *string();
    case simdjson::dom::element_type::BOOL:
        return *boolean();
    case simdjson::dom::element_type::NULL_VALUE:
        return QVariant::fromValue(nullptr);
    default:
        return numberOf(m_element);
    }
}

std::size_t JSONView::elementCount() const
{
    simdjson::dom::array array;
    return m_element.get(array) == simdjson::SUCCESS ? array.size() : 0;
}

simdjson::error_code JSONParser::parseText(std::string_view text, bool isPadded, simdjson::dom::element &root)
{
    return m_parser.parse(text.data(), text.size(), !isPadded).get(root);
}

Result<JSONView> JSONParser::parse(const QByteArray &text)
{
    std::string_view content(text.constData(), std::size_t(text.size()));
    if (content.substr(0, 3) == "\xEF\xBB\xBF")
        content.remove_prefix(3);
    const bool isPadded = text.capacity() - text.size() >= padding;

    simdjson::dom::element root;
    auto error = parseText(content, isPadded, root);
    if (error == simdjson::NUMBER_ERROR)
        error = parseText(std::string_view(withLongIntegersAsFloats(content)), false, root);
    if (error != simdjson::SUCCESS)
        return KRError{QStringLiteral("json"), int(error), QString::fromLatin1(simdjson::error_message(error))};
    return JSONView(root);
}

Result<QVariant> variantFromJSON(const QByteArray &text)
{
    JSONParser parser;
    const auto root = parser.parse(text);
    if (!root)
        return root.error();
    return root.value().toVariant();
}
