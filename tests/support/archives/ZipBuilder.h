#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

/// One entry as it is written into an archive: true by default, and anything but true where a member says so.
struct ZipPart
{
    enum class Descriptor { None, WithSignature, WithoutSignature };
    enum class Numbers { Short, Large };

    static constexpr quint32 file = 0100644;
    static constexpr quint32 link = 0120777;
    static constexpr quint16 unixHost = 3 << 8;

    ZipPart(QByteArray partName, QByteArray content = {}, quint32 fileMode = file)
        : name(std::move(partName))
        , data(std::move(content))
        , mode(fileMode)
    { }

    ZipPart &deflated()
    {
        method = 8;
        return *this;
    }
    ZipPart &withDescriptor(Descriptor kind)
    {
        descriptor = kind;
        return *this;
    }
    ZipPart &large()
    {
        numbers = Numbers::Large;
        return *this;
    }

    QByteArray name;
    QByteArray data;
    quint32 mode;
    quint16 method = 0;
    quint16 flags = 0;
    quint16 madeBy = unixHost;
    Descriptor descriptor = Descriptor::None;
    Numbers numbers = Numbers::Short;
    /// More fields of the directory.
    QByteArray extra;
    /// What is written as the packed data.
    std::optional<QByteArray> packed;
    // What both headers say.
    std::optional<quint32> checksum;
    std::optional<quint64> size;
    std::optional<quint64> packedSize;
    // What only the entry's own header says.
    std::optional<QByteArray> localName;
    std::optional<quint32> localChecksum;
    std::optional<quint32> localSize;
    std::optional<quint32> localPackedSize;
    std::optional<quint16> localMethod;
    std::optional<quint16> localFlags;
    std::optional<quint32> localSignature;
    /// Where the directory says that the entry is.
    std::optional<quint64> headerOffset;
    /// Only the directory names it: there is no header and no data.
    bool isOnlyInDirectory = false;
};

/// Writes archives byte by byte, hostile ones as well.
class ZipBuilder
{
public:
    ZipBuilder() = default;
    ZipBuilder(std::vector<ZipPart> parts)
    {
        for (const auto &part : parts)
            add(part);
    }

    ZipBuilder &add(const ZipPart &part);
    /// Bytes between the entries.
    ZipBuilder &addBytes(const QByteArray &bytes);
    ZipBuilder &comment(const QByteArray &text);
    /// A record for large archives at the end, also where the numbers are small.
    ZipBuilder &withLargeEnd();
    /// What the end says instead of the true numbers.
    ZipBuilder &claimEntries(quint16 count);
    ZipBuilder &claimDirectoryOffset(quint32 offset);
    ZipBuilder &claimDirectorySize(quint32 size);

    /// Where the next entry's header will be.
    quint64 position() const { return quint64(m_data.size()); }
    QByteArray bytes() const;

private:
    QByteArray largeEnd() const;

    QByteArray m_data;
    QByteArray m_directory;
    QByteArray m_comment;
    quint64 m_count = 0;
    bool m_hasLargeEnd = false;
    std::optional<quint16> m_claimedEntries;
    std::optional<quint32> m_claimedOffset;
    std::optional<quint32> m_claimedSize;
};

quint32 zipChecksum(const QByteArray &data);
/// As the format packs it.
QByteArray zipDeflated(const QByteArray &data);
