#include "platform/PropertyListBounds.h"

#include <QtEndian>

#include <optional>
#include <vector>

namespace {

constexpr int deepestNesting = 64;
/// Of all values of a binary list, counted as often as they are used; a long text counts as several.
constexpr quint64 mostValues = 4'000'000;

bool startsWithAt(QByteArrayView bytes, qsizetype position, QByteArrayView text)
{
    return bytes.sliced(position).startsWith(text);
}

/// Where a comment, character data or an instruction ends, whose inside looks like markup but is none; the position
/// itself for anything else.
qsizetype endOfOpaquePart(QByteArrayView bytes, qsizetype position)
{
    struct Part
    {
        QByteArrayView begin;
        QByteArrayView end;
    };
    static constexpr Part parts[] = {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    for (const auto &part : parts) {
        if (!startsWithAt(bytes, position, part.begin))
            continue;
        const auto end = bytes.indexOf(part.end, position + part.begin.size());
        return end < 0 ? bytes.size() : end + part.end.size();
    }
    return position + 1;
}

bool opensContainer(QByteArrayView bytes, qsizetype position)
{
    if (!startsWithAt(bytes, position, "<dict") && !startsWithAt(bytes, position, "<array"))
        return false;
    const auto end = bytes.indexOf('>', position);
    return end < 0 || bytes[end - 1] != '/';
}

bool closesContainer(QByteArrayView bytes, qsizetype position)
{
    return startsWithAt(bytes, position, "</dict") || startsWithAt(bytes, position, "</array");
}

/// Parsers know further forms of property lists, which are not measured here and are nobody's.
bool isMarkup(QByteArrayView bytes)
{
    constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");
    if (bytes.startsWith(byteOrderMark))
        bytes = bytes.sliced(byteOrderMark.size());
    return bytes.trimmed().startsWith('<');
}

bool isXMLWithinBounds(QByteArrayView bytes)
{
    if (bytes.contains('\0'))
        return false;
    int depth = 0;
    for (qsizetype position = 0; (position = bytes.indexOf('<', position)) >= 0 && position + 1 < bytes.size();) {
        switch (bytes[position + 1]) {
        case '!':
        case '?':
            position = endOfOpaquePart(bytes, position);
            continue;
        case 'd':
        case 'a':
            depth += opensContainer(bytes, position) ? 1 : 0;
            break;
        case '/':
            depth -= depth > 0 && closesContainer(bytes, position) ? 1 : 0;
            break;
        default:
            break;
        }
        if (depth > deepestNesting)
            return false;
        ++position;
    }
    return true;
}

/// The objects of a binary property list, as far as they refer to each other.
class BinaryObjects
{
public:
    /// Nil when the frame of the file makes no sense.
    static std::optional<BinaryObjects> read(QByteArrayView bytes)
    {
        constexpr qsizetype headerSize = 8;
        constexpr qsizetype trailerSize = 32;
        if (bytes.size() < headerSize + trailerSize)
            return std::nullopt;
        const auto trailer = bytes.last(trailerSize);
        BinaryObjects objects(bytes);
        objects.m_offsetSize = quint8(trailer[6]);
        objects.m_referenceSize = quint8(trailer[7]);
        objects.m_count = qFromBigEndian<quint64>(trailer.data() + 8);
        objects.m_root = qFromBigEndian<quint64>(trailer.data() + 16);
        objects.m_table = qFromBigEndian<quint64>(trailer.data() + 24);
        const auto size = quint64(bytes.size());
        const bool hasSizes = objects.m_offsetSize >= 1 && objects.m_offsetSize <= 8 && objects.m_referenceSize >= 1
            && objects.m_referenceSize <= 8;
        const bool fits = hasSizes && objects.m_count <= size && objects.m_table <= size
            && objects.m_count <= (size - objects.m_table) / objects.m_offsetSize && objects.m_root < objects.m_count;
        return fits ? std::optional(objects) : std::nullopt;
    }

    quint64 count() const { return m_count; }
    quint64 root() const { return m_root; }

    /// What a dictionary or array refers to; nothing for other objects and those that reach over the file's end.
    std::vector<quint64> references(quint64 object) const
    {
        const auto header = headerOf(object);
        const bool isDictionary = header.kind == 0xD;
        if (header.kind != 0xA && header.kind != 0xC && !isDictionary)
            return {};
        const auto references = isDictionary ? header.length * 2 : header.length;
        if (references > (quint64(m_bytes.size()) - header.position) / m_referenceSize)
            return {};
        std::vector<quint64> indexes;
        indexes.reserve(references);
        for (quint64 i = 0; i < references; ++i)
            indexes.push_back(number(header.position + i * m_referenceSize, m_referenceSize));
        return indexes;
    }

    /// How many bytes a text or a piece of data has; 0 for other objects.
    quint64 contentSize(quint64 object) const { return quint64(contentOf(headerOf(object)).size()); }

    /// Whether it is a text with a zero character, which the parser does not survive.
    bool hasZeroCharacter(quint64 object) const
    {
        const auto header = headerOf(object);
        const auto content = contentOf(header);
        if (header.kind == 0x5)
            return content.contains('\0');
        for (qsizetype i = 0; header.kind == 0x6 && i + 1 < content.size(); i += 2) {
            if (content[i] == 0 && content[i + 1] == 0)
                return true;
        }
        return false;
    }

private:
    explicit BinaryObjects(QByteArrayView bytes)
        : m_bytes(bytes)
    { }

    struct Header
    {
        int kind = 0;
        /// Of what follows the header; never beyond the file's end.
        quint64 position = 0;
        quint64 length = 0;
    };

    Header headerOf(quint64 object) const
    {
        const auto size = quint64(m_bytes.size());
        const auto offset = number(m_table + object * m_offsetSize, m_offsetSize);
        if (offset >= size)
            return {};
        const auto marker = quint8(m_bytes[qsizetype(offset)]);
        Header header{marker >> 4, offset + 1, quint64(marker & 0xF)};
        if (header.length == 0xF) { // the length follows, as a whole number of its own
            const auto width =
                header.position < size ? quint64(1) << (quint8(m_bytes[qsizetype(header.position)]) & 3) : 1;
            header.length = number(header.position + 1, width);
            header.position += 1 + width;
        }
        return header.length > size || header.position > size ? Header() : header;
    }

    QByteArrayView contentOf(const Header &header) const
    {
        const bool isText = header.kind == 0x5 || header.kind == 0x6;
        if (!isText && header.kind != 0x4)
            return {};
        const auto size = header.kind == 0x6 ? header.length * 2 : header.length;
        const bool fits = size <= quint64(m_bytes.size()) - header.position;
        return fits ? m_bytes.sliced(qsizetype(header.position), qsizetype(size)) : QByteArrayView();
    }

    quint64 number(quint64 position, quint64 width) const
    {
        const auto size = quint64(m_bytes.size());
        if (position >= size || width > size - position)
            return 0;
        quint64 value = 0;
        for (quint64 i = 0; i < width; ++i)
            value = value << 8 | quint8(m_bytes[qsizetype(position + i)]);
        return value;
    }

    QByteArrayView m_bytes;
    quint64 m_offsetSize = 0;
    quint64 m_referenceSize = 0;
    quint64 m_count = 0;
    quint64 m_root = 0;
    quint64 m_table = 0;
};

/// Goes through the values of a binary property list, each object once, however often it is used.
class BinaryMeasure
{
public:
    explicit BinaryMeasure(const BinaryObjects &objects)
        : m_objects(objects)
        , m_values(objects.count(), unknown)
    { }

    bool isWithinBounds()
    {
        if (!enter(m_objects.root()))
            return false;
        while (!m_path.empty()) {
            auto &level = m_path.back();
            if (m_path.size() > deepestNesting || level.values > mostValues)
                return false;
            if (level.next == level.references.size())
                leave();
            else if (!follow(level.references[level.next++]))
                return false;
        }
        return true;
    }

private:
    struct Level
    {
        quint64 object;
        std::vector<quint64> references;
        std::size_t next = 0;
        quint64 values = 1;
    };

    /// False for an object that the parser does not survive, or that is larger than all may be.
    bool enter(quint64 object)
    {
        constexpr quint64 bytesWorthAValue = 8;
        const auto values = 1 + m_objects.contentSize(object) / bytesWorthAValue;
        if (values > mostValues || m_objects.hasZeroCharacter(object))
            return false;
        m_values[object] = inProgress;
        m_path.push_back({object, m_objects.references(object), 0, values});
        return true;
    }

    /// False for an object that holds itself, and for one that cannot be entered.
    bool follow(quint64 object)
    {
        const bool isKnown = object >= m_objects.count() || m_values[object] != unknown;
        if (!isKnown)
            return enter(object);
        const auto values = object < m_objects.count() ? m_values[object] : 1; // none: the parser rejects it
        m_path.back().values += values == inProgress ? 0 : values;
        return values != inProgress;
    }

    void leave()
    {
        const auto done = std::move(m_path.back());
        m_path.pop_back();
        m_values[done.object] = done.values;
        if (!m_path.empty())
            m_path.back().values += done.values;
    }

    static constexpr quint64 unknown = 0;
    static constexpr quint64 inProgress = ~quint64(0);

    const BinaryObjects &m_objects;
    std::vector<quint64> m_values;
    std::vector<Level> m_path;
};

} // namespace

bool isPropertyListWithinBounds(QByteArrayView bytes)
{
    if (!bytes.startsWith("bplist"))
        return isMarkup(bytes) && isXMLWithinBounds(bytes);
    const auto objects = BinaryObjects::read(bytes);
    return !objects || BinaryMeasure(*objects).isWithinBounds();
}
