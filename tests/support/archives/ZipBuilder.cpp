#include "support/archives/ZipBuilder.h"

#include <QtEndian>

#include <array>

namespace {

constexpr quint32 noNumber = 0xffffffff;

template <class Number>
void append(QByteArray &bytes, Number number)
{
    char text[sizeof(Number)];
    qToLittleEndian(number, text);
    bytes.append(text, sizeof text);
}

/// What both headers of an entry say.
struct Numbers
{
    quint16 flags;
    quint32 checksum;
    quint64 packedSize;
    quint64 size;
};

Numbers numbersOf(const ZipPart &part, const QByteArray &packed)
{
    constexpr quint16 descriptorFlag = 1 << 3;
    const bool hasDescriptor = part.descriptor != ZipPart::Descriptor::None;
    return {quint16(part.flags | (hasDescriptor ? descriptorFlag : 0)), part.checksum.value_or(zipChecksum(part.data)),
        part.packedSize.value_or(quint64(packed.size())), part.size.value_or(quint64(part.data.size()))};
}

QByteArray largeField(const std::vector<quint64> &numbers)
{
    constexpr quint16 kind = 1;
    QByteArray field;
    append(field, kind);
    append(field, quint16(numbers.size() * sizeof(quint64)));
    for (const auto number : numbers)
        append(field, number);
    return field;
}

QByteArray localHeader(const ZipPart &part, const Numbers &numbers)
{
    const bool isLarge = part.numbers == ZipPart::Numbers::Large;
    const bool isLater = part.descriptor != ZipPart::Descriptor::None;
    const auto name = part.localName.value_or(part.name);
    const auto extra = isLarge ? largeField({numbers.size, numbers.packedSize}) : QByteArray();
    const auto shortNumber = [&](quint64 number) { return isLater ? 0 : isLarge ? noNumber : quint32(number); };
    QByteArray header;
    append(header, part.localSignature.value_or(0x04034b50));
    append(header, quint16(45));
    append(header, part.localFlags.value_or(numbers.flags));
    append(header, part.localMethod.value_or(part.method));
    append(header, quint32(0x58210000)); // time and date
    append(header, part.localChecksum.value_or(isLater ? 0 : numbers.checksum));
    append(header, part.localPackedSize.value_or(shortNumber(numbers.packedSize)));
    append(header, part.localSize.value_or(shortNumber(numbers.size)));
    append(header, quint16(name.size()));
    append(header, quint16(extra.size()));
    return header + name + extra;
}

QByteArray descriptorOf(const ZipPart &part, const Numbers &numbers)
{
    QByteArray descriptor;
    if (part.descriptor == ZipPart::Descriptor::None)
        return descriptor;
    if (part.descriptor == ZipPart::Descriptor::WithSignature)
        append(descriptor, quint32(0x08074b50));
    append(descriptor, numbers.checksum);
    for (const auto size : {numbers.packedSize, numbers.size}) {
        if (part.numbers == ZipPart::Numbers::Large)
            append(descriptor, size);
        else
            append(descriptor, quint32(size));
    }
    return descriptor;
}

QByteArray directoryEntry(const ZipPart &part, const Numbers &numbers, quint64 offset)
{
    const bool isLarge = part.numbers == ZipPart::Numbers::Large;
    const auto extra = (isLarge ? largeField({numbers.size, numbers.packedSize, offset}) : QByteArray()) + part.extra;
    const auto shortNumber = [&](quint64 number) { return isLarge ? noNumber : quint32(number); };
    QByteArray entry;
    append(entry, quint32(0x02014b50));
    append(entry, quint16(part.madeBy | 45));
    append(entry, quint16(45));
    append(entry, numbers.flags);
    append(entry, part.method);
    append(entry, quint32(0x58210000)); // time and date
    append(entry, numbers.checksum);
    append(entry, shortNumber(numbers.packedSize));
    append(entry, shortNumber(numbers.size));
    append(entry, quint16(part.name.size()));
    append(entry, quint16(extra.size()));
    append(entry, quint16(0)); // comment
    append(entry, quint32(0)); // disk, internal attributes
    append(entry, quint32(part.mode << 16));
    append(entry, shortNumber(offset));
    return entry + part.name + extra;
}

std::array<quint32, 256> checksumTable()
{
    std::array<quint32, 256> table{};
    for (quint32 byte = 0; byte < table.size(); ++byte) {
        table[byte] = byte;
        for (int bit = 0; bit < 8; ++bit)
            table[byte] = (table[byte] & 1) != 0 ? (table[byte] >> 1) ^ 0xedb88320 : table[byte] >> 1;
    }
    return table;
}

} // namespace

ZipBuilder &ZipBuilder::add(const ZipPart &part)
{
    const auto packed = part.packed.value_or(part.method == 8 ? zipDeflated(part.data) : part.data);
    const auto numbers = numbersOf(part, packed);
    const auto offset = part.headerOffset.value_or(position());
    if (!part.isOnlyInDirectory)
        m_data += localHeader(part, numbers) + packed + descriptorOf(part, numbers);
    m_directory += directoryEntry(part, numbers, offset);
    ++m_count;
    return *this;
}

ZipBuilder &ZipBuilder::addBytes(const QByteArray &bytes)
{
    m_data += bytes;
    return *this;
}

ZipBuilder &ZipBuilder::comment(const QByteArray &text)
{
    m_comment = text;
    return *this;
}

ZipBuilder &ZipBuilder::withLargeEnd()
{
    m_hasLargeEnd = true;
    return *this;
}

ZipBuilder &ZipBuilder::claimEntries(quint16 count)
{
    m_claimedEntries = count;
    return *this;
}

ZipBuilder &ZipBuilder::claimDirectoryOffset(quint32 offset)
{
    m_claimedOffset = offset;
    return *this;
}

ZipBuilder &ZipBuilder::claimDirectorySize(quint32 size)
{
    m_claimedSize = size;
    return *this;
}

QByteArray ZipBuilder::largeEnd() const
{
    QByteArray end;
    append(end, quint32(0x06064b50));
    append(end, quint64(44));
    append(end, quint32(45 << 16 | 45));
    append(end, quint64(0)); // disks
    append(end, m_count);
    append(end, m_count);
    append(end, quint64(m_directory.size()));
    append(end, quint64(m_data.size()));
    append(end, quint32(0x07064b50));
    append(end, quint32(0));
    append(end, quint64(m_data.size() + m_directory.size()));
    append(end, quint32(1));
    return end;
}

QByteArray ZipBuilder::bytes() const
{
    QByteArray end = m_hasLargeEnd ? largeEnd() : QByteArray();
    const auto count = m_claimedEntries.value_or(m_hasLargeEnd ? 0xffff : quint16(m_count));
    append(end, quint32(0x06054b50));
    append(end, quint32(0)); // disks
    append(end, count);
    append(end, count);
    append(end, m_claimedSize.value_or(m_hasLargeEnd ? noNumber : quint32(m_directory.size())));
    append(end, m_claimedOffset.value_or(m_hasLargeEnd ? noNumber : quint32(m_data.size())));
    append(end, quint16(m_comment.size()));
    return m_data + m_directory + end + m_comment;
}

quint32 zipChecksum(const QByteArray &data)
{
    static const auto table = checksumTable();
    quint32 checksum = noNumber;
    for (const char byte : data)
        checksum = table[(checksum ^ quint8(byte)) & 0xff] ^ (checksum >> 8);
    return ~checksum;
}

QByteArray zipDeflated(const QByteArray &data)
{
    constexpr int headerSize = 6; // Qt's length and the stream's own header
    constexpr int trailerSize = 4;
    const auto stream = qCompress(data, 9);
    return stream.mid(headerSize, stream.size() - headerSize - trailerSize);
}
