#include "platform/archive/ZipSoundness.h"

#include "platform/archive/ZipBytes.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

namespace {

constexpr quint32 headerSignature = 0x04034b50;
constexpr quint32 descriptorSignature = 0x08074b50;
constexpr quint64 headerSize = 30;
constexpr quint64 usualHeaderSize = 512;
constexpr quint32 noNumber32 = 0xffffffff;
constexpr quint16 largeSizesField = 1;
constexpr quint16 flagsThatHaveToAgree =
    ZipFlag::encrypted | ZipFlag::hasDescriptor | ZipFlag::stronglyEncrypted | ZipFlag::headersEncrypted;

/// Where an entry's header and data lie in the archive.
struct Extent
{
    quint64 begin;
    quint64 end;
    ZipEntry *entry;
};

void refuse(ZipEntry &entry)
{
    entry.state = ZipEntry::State::Refused;
}

bool isReadable(const ZipEntry &entry)
{
    const bool isEncrypted = entry.hasFlag(ZipFlag::encrypted) || entry.hasFlag(ZipFlag::stronglyEncrypted)
        || entry.hasFlag(ZipFlag::headersEncrypted);
    const bool isStored = entry.method == ZipMethod::stored && entry.packedSize == entry.size;
    return !isEncrypted && (isStored || entry.method == ZipMethod::deflated);
}

bool isWithinBudget(const ZipEntry &entry, const ZipBudget &budget)
{
    if (entry.size > budget.entrySize)
        return false;
    return entry.size <= budget.sizeOfAnyRatio || entry.size / budget.ratio <= entry.packedSize;
}

/// What an entry's own header says, in front of its data.
struct Header
{
    bool isHeader = false;
    quint16 flags = 0;
    quint16 method = 0;
    quint32 checksum = 0;
    quint64 packedSize = 0;
    quint64 size = 0;
    QByteArray name;
    quint64 length = 0;
};

void readLargeSizes(QByteArrayView extra, Header &header)
{
    ZipNumbers fields(extra);
    while (!fields.isAtEnd() && fields.isOk()) {
        const auto kind = fields.next<quint16>();
        ZipNumbers numbers(fields.take(fields.next<quint16>()));
        if (kind != largeSizesField)
            continue;
        for (auto *number : {&header.size, &header.packedSize}) {
            if (*number == noNumber32)
                *number = numbers.next<quint64>();
        }
        return;
    }
}

Header readHeader(int file, quint64 offset)
{
    auto bytes = readZipBytes(file, offset, usualHeaderSize);
    ZipNumbers numbers(bytes);
    Header header;
    header.isHeader = numbers.next<quint32>() == headerSignature;
    numbers.skip(sizeof(quint16)); // the version that is needed
    header.flags = numbers.next<quint16>();
    header.method = numbers.next<quint16>();
    numbers.skip(2 * sizeof(quint16)); // time and date
    header.checksum = numbers.next<quint32>();
    header.packedSize = numbers.next<quint32>();
    header.size = numbers.next<quint32>();
    const auto nameSize = numbers.next<quint16>();
    const auto extraSize = numbers.next<quint16>();
    header.length = headerSize + nameSize + extraSize;
    header.isHeader = header.isHeader && numbers.isOk();
    if (!header.isHeader)
        return header;
    if (header.length > usualHeaderSize)
        bytes = readZipBytes(file, offset, header.length);
    ZipNumbers names(QByteArrayView(bytes).sliced(headerSize));
    header.name = names.take(nameSize).toByteArray();
    const auto extra = names.take(extraSize);
    header.isHeader = names.isOk();
    readLargeSizes(extra, header);
    return header;
}

bool agree(const Header &header, const ZipEntry &entry)
{
    const bool isSame = header.name == entry.name && header.method == entry.method
        && ((header.flags ^ entry.flags) & flagsThatHaveToAgree) == 0;
    if (!isSame || !header.isHeader)
        return false;
    const bool hasNumbers =
        header.checksum == entry.checksum && header.packedSize == entry.packedSize && header.size == entry.size;
    const bool leavesThemOut = entry.hasFlag(ZipFlag::hasDescriptor) && header.checksum == 0
        && (header.packedSize == 0 || header.packedSize == noNumber32)
        && (header.size == 0 || header.size == noNumber32);
    return hasNumbers || leavesThemOut;
}

template <class Number>
bool isDescriptor(ZipNumbers numbers, const ZipEntry &entry)
{
    return numbers.next<quint32>() == entry.checksum && numbers.next<Number>() == Number(entry.packedSize)
        && numbers.next<Number>() == Number(entry.size) && numbers.isOk();
}

/// The length of what says sizes and checksum behind the data, with or without a signature, with short numbers or long
/// ones. 0 when nothing there agrees with the directory.
quint64 descriptorLength(int file, quint64 offset, const ZipEntry &entry)
{
    constexpr quint64 signatureSize = 4;
    constexpr quint64 shortSize = 12;
    constexpr quint64 longSize = 20;
    const auto bytes = readZipBytes(file, offset, signatureSize + longSize);
    const ZipNumbers unsigned_(bytes);
    ZipNumbers signed_(bytes);
    if (signed_.next<quint32>() == descriptorSignature) {
        if (isDescriptor<quint64>(signed_, entry))
            return signatureSize + longSize;
        if (isDescriptor<quint32>(signed_, entry))
            return signatureSize + shortSize;
    }
    if (isDescriptor<quint64>(unsigned_, entry))
        return longSize;
    return isDescriptor<quint32>(unsigned_, entry) ? shortSize : 0;
}

Extent checkHeader(ZipEntry &entry, int file, quint64 directoryOffset)
{
    constexpr quint64 farthest = std::numeric_limits<qint64>::max() / 4;
    if (entry.headerOffset > directoryOffset || entry.packedSize > farthest) {
        refuse(entry);
        return {directoryOffset, directoryOffset, &entry};
    }
    const auto header = readHeader(file, entry.headerOffset);
    quint64 end = entry.headerOffset + std::max(header.length, headerSize) + entry.packedSize;
    if (!agree(header, entry))
        refuse(entry);
    if (entry.hasFlag(ZipFlag::hasDescriptor) && end <= directoryOffset) {
        const auto length = descriptorLength(file, end, entry);
        if (length == 0)
            refuse(entry);
        end += length;
    }
    if (end > directoryOffset)
        refuse(entry);
    return {entry.headerOffset, end, &entry};
}

void refuseOverlapping(std::vector<Extent> &extents)
{
    std::sort(extents.begin(), extents.end(),
        [](const Extent &first, const Extent &second) { return first.begin < second.begin; });
    const Extent *farthest = nullptr;
    for (const auto &extent : extents) {
        if (farthest && extent.begin < farthest->end) {
            refuse(*farthest->entry);
            refuse(*extent.entry);
        }
        if (!farthest || extent.end > farthest->end)
            farthest = &extent;
    }
}

void refuseBeyondTotal(ZipDirectory &directory, const ZipBudget &budget)
{
    quint64 rest = budget.totalSize;
    for (auto &entry : directory.entries) {
        if (entry.size > rest)
            refuse(entry);
        rest -= std::min(rest, entry.size);
    }
}

/// By hashes of their paths, which cost the same however long those are. Two that are alike count as one.
void refuseBeyondFolders(ZipDirectory &directory, const ZipBudget &budget)
{
    std::unordered_set<std::size_t> folders;
    for (auto &entry : directory.entries) {
        qsizetype depth = 0;
        std::size_t path = 0;
        QByteArrayView rest(entry.name);
        for (auto slash = rest.indexOf('/'); slash >= 0 && depth <= budget.deepestEntry; slash = rest.indexOf('/')) {
            path = qHash(rest.first(slash), path);
            rest = rest.sliced(slash + 1);
            if (folders.size() <= budget.folders)
                folders.insert(path);
            ++depth;
        }
        if (depth > budget.deepestEntry || folders.size() > budget.folders)
            refuse(entry);
    }
}

} // namespace

void refuseUnsoundEntries(ZipDirectory &directory, int file, const ZipBudget &budget)
{
    std::vector<Extent> extents;
    extents.reserve(directory.entries.size());
    for (auto &entry : directory.entries) {
        if (!isReadable(entry) || !isWithinBudget(entry, budget) || !directory.isWithinBudget)
            refuse(entry);
        if (directory.isWithinBudget)
            extents.push_back(checkHeader(entry, file, directory.offset));
    }
    refuseOverlapping(extents);
    refuseBeyondTotal(directory, budget);
    refuseBeyondFolders(directory, budget);
}
