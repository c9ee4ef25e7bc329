#include "platform/JSON.h"
#include "platform/JSONText.h"
#include "platform/SpareRoom.h"

#include <QLocale>

#include <algorithm>

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

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

bool fitsIn64Bits(std::string_view digits, bool isNegative)
{
    const std::string_view limit = isNegative ? "9223372036854775808" : "18446744073709551615";
    return digits.size() < limit.size() || (digits.size() == limit.size() && digits <= limit);
}

bool isTooLongInteger(std::string_view token)
{
    const bool isNegative = !token.empty() && token.front() == '-';
    const auto digits = token.substr(isNegative ? 1 : 0);
    return digits.find_first_not_of("0123456789") == std::string_view::npos && !fitsIn64Bits(digits, isNegative);
}

/// Where the string ends that starts with the quotation mark at `start`.
std::size_t endOfString(std::string_view text, std::size_t start)
{
    for (auto i = start + 1; i < text.size(); ++i) {
        if (text[i] == '\\')
            ++i;
        else if (text[i] == '"')
            return i + 1;
    }
    return text.size();
}

/// Where the token ends that starts at `start`: a string, a number, or whatever is neither.
std::size_t endOfToken(std::string_view text, std::size_t start)
{
    const std::string_view numberStarts = "-0123456789";
    if (text[start] == '"')
        return endOfString(text, start);
    const auto end = numberStarts.find(text[start]) != std::string_view::npos
        ? text.find_first_not_of("+-.0123456789Ee", start)
        : text.find_first_of("\"-0123456789", start);
    return std::min(end, text.size());
}

/// Makes every integer that is too long for 64 bits a floating-point number by writing ".0" behind it.
QByteArray withLongIntegersAsFloats(std::string_view text)
{
    QByteArray result;
    result.reserve(qsizetype(text.size()));
    for (std::size_t start = 0; start < text.size();) {
        const auto end = endOfToken(text, start);
        const auto token = text.substr(start, end - start);
        result += QByteArrayView(token);
        if (isTooLongInteger(token))
            result += ".0";
        start = end;
    }
    return result;
}

} // namespace

QString textFromUTF8(std::string_view utf8)
{
    auto text = QString::fromUtf8(utf8.data(), qsizetype(utf8.size()));
    if (utf8.starts_with(byteOrderMark))
        text.prepend(QChar(QChar::ByteOrderMark)); // taken for a mark above, but inside of a document it is a character
    return text;
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
    if (content.starts_with(byteOrderMark))
        content.remove_prefix(byteOrderMark.size());
    const bool isPadded = spareRoomBehind(text) >= padding;

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
