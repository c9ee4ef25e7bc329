#include "platform/JSONWriter.h"

#include "platform/FileURL.h"
#include "platform/OrderedDictionary.h"

#include <QLocale>
#include <QStringList>
#include <QUrl>

#include <cmath>

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
    static constexpr char hexDigits[] = "0123456789abcdef";
    const auto writeEscape = [this](char16_t unit) {
        m_output += "\\u";
        for (int shift = 12; shift >= 0; shift -= 4)
            m_output += hexDigits[(unit >> shift) & 0xF];
    };

    m_output += '"';
    qsizetype plainStart = 0;
    const auto writePlainUpTo = [&](qsizetype end) {
        m_output += text.mid(plainStart, end - plainStart).toUtf8();
        plainStart = end + 1;
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const auto unit = text[i].unicode();
        const bool isPair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (isPair) {
            ++i;
        } else if (unit == u'"' || unit == u'\\') {
            writePlainUpTo(i);
            m_output += '\\';
            m_output += char(unit);
        } else if (unit == u'\n') {
            writePlainUpTo(i);
            m_output += "\\n";
        } else if (unit == u'\t') {
            writePlainUpTo(i);
            m_output += "\\t";
        } else if (text[i].isSurrogate()) { // half of a pair, which most readers refuse even as an escape
            writePlainUpTo(i);
            m_output += "\xEF\xBF\xBD";
        } else if (unit < 0x20 || unit == 0x7F) {
            writePlainUpTo(i);
            writeEscape(unit);
        }
    }
    writePlainUpTo(text.size());
    m_output += '"';
}

void JSONWriter::startLine()
{
    m_output += '\n';
    m_output += QByteArray(m_depth * 2, ' ');
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
    m_output += m_format.style == JSONStyle::Indented ? QByteArray(": ") : ':' + m_format.separator;
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
