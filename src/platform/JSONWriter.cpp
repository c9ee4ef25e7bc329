#include "platform/JSONWriter.h"

#include "platform/FileURL.h"
#include "platform/OrderedDictionary.h"

#include <QLocale>
#include <QStringList>
#include <QUrl>

#include <cmath>

namespace {

/// The first character behind `start` that a string of JSON cannot hold as it is.
qsizetype endOfPlainText(QStringView text, qsizetype start)
{
    auto end = start;
    for (; end < text.size(); ++end) {
        const auto unit = text[end].unicode();
        if (unit < 0x20 || unit == 0x7F || unit == u'"' || unit == u'\\')
            break;
        if (!text[end].isSurrogate())
            continue;
        if (!text[end].isHighSurrogate() || end + 1 >= text.size() || !text[end + 1].isLowSurrogate())
            break;
        ++end;
    }
    return end;
}

} // namespace

JSONWriter::JSONWriter(Format format)
    : m_format(std::move(format))
{ }

void JSONWriter::write(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QVariantMap:
        return writeMembers(*static_cast<const QVariantMap *>(value.constData()));
    case QMetaType::QVariantList:
        return writeElements(*static_cast<const QVariantList *>(value.constData()));
    case QMetaType::QStringList:
        return writeElements(*static_cast<const QStringList *>(value.constData()));
    case QMetaType::QString:
        return writeString(*static_cast<const QString *>(value.constData()));
    case QMetaType::QUrl:
        return writeString(absoluteString(value.toUrl()));
    default:
        break;
    }
    if (value.metaType() == QMetaType::fromType<OrderedVariantDictionary>())
        return writeMembers(*static_cast<const OrderedVariantDictionary *>(value.constData()));
    if (value.metaType() == QMetaType::fromType<OrderedStringDictionary>())
        return writeMembers(*static_cast<const OrderedStringDictionary *>(value.constData()));
    if (!writeScalar(value))
        m_output += m_format.writeOther(value);
}

bool JSONWriter::writeScalar(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Nullptr:
        m_output += "null";
        return true;
    case QMetaType::Bool:
        m_output += value.toBool() ? "true" : "false";
        return true;
    case QMetaType::Int:
    case QMetaType::LongLong:
        m_output += QByteArray::number(value.toLongLong());
        return true;
    case QMetaType::UInt:
    case QMetaType::ULongLong:
        m_output += QByteArray::number(value.toULongLong());
        return true;
    case QMetaType::Double:
        writeDouble(value.toDouble());
        return true;
    default:
        return false;
    }
}

void JSONWriter::writeDouble(double number)
{
    if (std::isfinite(number))
        m_output += QByteArray::number(number, 'g', QLocale::FloatingPointShortest);
    else
        m_output += m_format.writeOther(number);
}

void JSONWriter::writeString(QStringView text)
{
    m_output += '"';
    for (qsizetype position = 0; position < text.size();) {
        const auto end = endOfPlainText(text, position);
        appendUTF8(text.mid(position, end - position));
        if (end < text.size())
            writeEscape(text[end]);
        position = end + 1;
    }
    m_output += '"';
}

void JSONWriter::writeEscape(QChar character)
{
    static constexpr char hexDigits[] = "0123456789abcdef";
    const auto unit = character.unicode();
    if (unit == u'"' || unit == u'\\') {
        m_output += '\\';
        m_output += char(unit);
    } else if (unit == u'\n') {
        m_output += "\\n";
    } else if (unit == u'\t') {
        m_output += "\\t";
    } else if (character.isSurrogate()) { // half of a pair, which most readers refuse even as an escape
        m_output += "\xEF\xBF\xBD";
    } else {
        m_output += "\\u";
        for (int shift = 12; shift >= 0; shift -= 4)
            m_output += hexDigits[(unit >> shift) & 0xF];
    }
}

/// Most texts are ASCII, which is written where it belongs, without a copy in between.
void JSONWriter::appendUTF8(QStringView text)
{
    const auto start = m_output.size();
    m_output.resize(start + text.size());
    auto *end = m_output.data() + start;
    for (const auto character : text) {
        if (character.unicode() >= 0x80) {
            m_output.resize(start);
            m_output += text.toUtf8();
            return;
        }
        *end++ = char(character.unicode());
    }
}

void JSONWriter::startLine()
{
    m_output += '\n';
    m_output.append(qsizetype(m_depth) * 2, ' ');
}

void JSONWriter::beginItem(bool isFirst)
{
    if (!isFirst)
        m_output += ',';
    if (m_format.style == JSONStyle::Indented)
        startLine();
    else if (!isFirst)
        m_output += m_format.separator;
}

void JSONWriter::close(char bracket, bool isEmpty)
{
    --m_depth;
    if (!isEmpty && m_format.style == JSONStyle::Indented)
        startLine();
    m_output += bracket;
}

void JSONWriter::writeMember(const QString &key, const QVariant &value, bool isFirst)
{
    beginItem(isFirst);
    writeString(key);
    m_output += ':';
    if (m_format.style == JSONStyle::Indented)
        m_output += ' ';
    else
        m_output += m_format.separator;
    write(value);
}

template <class Dictionary>
void JSONWriter::writeMembers(const Dictionary &dictionary)
{
    m_output += '{';
    ++m_depth;
    bool isFirst = true;
    for (auto member = dictionary.begin(); member != dictionary.end() && !isFull(); ++member) {
        writeMember(member.key(), member.value(), isFirst);
        isFirst = false;
    }
    close('}', isFirst);
}

template <class List>
void JSONWriter::writeElements(const List &list)
{
    m_output += '[';
    ++m_depth;
    bool isFirst = true;
    for (const auto &element : list) {
        if (isFull())
            break;
        beginItem(isFirst);
        write(element);
        isFirst = false;
    }
    close(']', isFirst);
}

QByteArray jsonFromVariant(const QVariant &value, JSONStyle style)
{
    JSONWriter::Format format;
    format.style = style;
    format.writeOther = [](const QVariant &) { return QByteArrayLiteral("null"); };
    JSONWriter writer(std::move(format));
    writer.write(value);
    auto text = writer.take();
    if (style == JSONStyle::Indented)
        text += '\n';
    return text;
}
