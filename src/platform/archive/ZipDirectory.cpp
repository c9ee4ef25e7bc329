#include "platform/archive/ZipDirectory.h"

#include "platform/archive/ZipBytes.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr quint32 entrySignature = 0x02014b50;
constexpr quint32 endSignature = 0x06054b50;
constexpr quint32 locatorSignature = 0x07064b50;
constexpr quint32 largeEndSignature = 0x06064b50;
constexpr quint64 endSize = 22;
constexpr quint64 locatorSize = 20;
constexpr quint64 largeEndSize = 56;
constexpr quint64 longestComment = 0xffff;
constexpr quint16 noNumber16 = 0xffff;
constexpr quint32 noNumber32 = 0xffffffff;
constexpr quint16 largeSizesField = 1;

/// What the record at an archive's end says.
struct End
{
    quint64 position = 0;
    quint64 entries = 0;
    quint64 directorySize = 0;
    quint64 directoryOffset = 0;
};

/// The record whose comment ends with the file: the last one, if the comment should hold another.
std::optional<End> readEnd(int file, quint64 fileSize)
{
    const quint64 tailSize = std::min(fileSize, endSize + longestComment);
    const auto tail = readZipBytes(file, fileSize - tailSize, tailSize);
    if (quint64(tail.size()) != tailSize)
        return {};
    for (auto at = tail.size() - qsizetype(endSize); at >= 0; --at) {
        ZipNumbers numbers(QByteArrayView(tail).sliced(at));
        if (numbers.next<quint32>() != endSignature)
            continue;
        const auto disk = numbers.next<quint16>();
        const auto directoryDisk = numbers.next<quint16>();
        const auto entriesOnDisk = numbers.next<quint16>();
        End end{fileSize - tailSize + quint64(at), numbers.next<quint16>(), 0, 0};
        end.directorySize = numbers.next<quint32>();
        end.directoryOffset = numbers.next<quint32>();
        numbers.skip(numbers.next<quint16>());
        if (!numbers.isOk() || !numbers.isAtEnd())
            continue;
        const bool isOneDisk = (disk == 0 || disk == noNumber16) && disk == directoryDisk;
        return isOneDisk && entriesOnDisk == end.entries ? std::optional(end) : std::nullopt;
    }
    return {};
}

template <class Short>
bool agree(quint64 shortNumber, Short noNumber, quint64 number)
{
    return shortNumber == noNumber || shortNumber == number;
}

/// The numbers of the record for large archives, where there is one. Nil when the two contradict each other.
std::optional<End> readLargeEnd(int file, const End &end)
{
    if (end.position < locatorSize)
        return end;
    const auto locator = readZipBytes(file, end.position - locatorSize, locatorSize);
    ZipNumbers place(locator);
    if (place.next<quint32>() != locatorSignature)
        return end;
    const auto disk = place.next<quint32>();
    const auto position = place.next<quint64>();
    const auto disks = place.next<quint32>();
    if (disk != 0 || disks > 1 || end.position < locatorSize + largeEndSize
        || position > end.position - locatorSize - largeEndSize)
        return {};

    const auto record = readZipBytes(file, position, largeEndSize);
    ZipNumbers numbers(record);
    const bool isRecord = numbers.next<quint32>() == largeEndSignature;
    const auto recordSize = numbers.next<quint64>();
    numbers.skip(2 * sizeof(quint16)); // versions
    const bool isOneDisk = numbers.next<quint32>() == 0 && numbers.next<quint32>() == 0;
    const auto entriesOnDisk = numbers.next<quint64>();
    End large{position, numbers.next<quint64>(), 0, 0};
    large.directorySize = numbers.next<quint64>();
    large.directoryOffset = numbers.next<quint64>();
    constexpr quint64 uncountedSize = 12; // the signature and the size itself
    const bool fillsItsPlace = recordSize == end.position - locatorSize - position - uncountedSize;
    const bool isSame = agree(end.entries, noNumber16, large.entries)
        && agree(end.directorySize, noNumber32, large.directorySize)
        && agree(end.directoryOffset, noNumber32, large.directoryOffset);
    if (!numbers.isOk() || !isRecord || !isOneDisk || entriesOnDisk != large.entries || !fillsItsPlace || !isSame)
        return {};
    return large;
}

/// Replaces the numbers that do not fit their fields. False when one is missing.
bool readLargeNumbers(QByteArrayView extra, ZipEntry &entry)
{
    const bool isComplete =
        entry.size != noNumber32 && entry.packedSize != noNumber32 && entry.headerOffset != noNumber32;
    ZipNumbers fields(extra);
    while (!isComplete && !fields.isAtEnd() && fields.isOk()) {
        const auto kind = fields.next<quint16>();
        ZipNumbers numbers(fields.take(fields.next<quint16>()));
        if (kind != largeSizesField)
            continue;
        for (auto *number : {&entry.size, &entry.packedSize, &entry.headerOffset}) {
            if (*number == noNumber32)
                *number = numbers.next<quint64>();
        }
        return numbers.isOk();
    }
    return isComplete;
}

std::optional<ZipEntry> readEntry(ZipNumbers &numbers)
{
    if (numbers.next<quint32>() != entrySignature)
        return {};
    ZipEntry entry;
    entry.madeBy = numbers.next<quint16>();
    numbers.skip(sizeof(quint16)); // the version that is needed
    entry.flags = numbers.next<quint16>();
    entry.method = numbers.next<quint16>();
    numbers.skip(2 * sizeof(quint16)); // time and date
    entry.checksum = numbers.next<quint32>();
    entry.packedSize = numbers.next<quint32>();
    entry.size = numbers.next<quint32>();
    const auto nameSize = numbers.next<quint16>();
    const auto extraSize = numbers.next<quint16>();
    const auto commentSize = numbers.next<quint16>();
    const auto disk = numbers.next<quint16>();
    numbers.skip(sizeof(quint16)); // internal attributes
    entry.attributes = numbers.next<quint32>();
    entry.headerOffset = numbers.next<quint32>();
    entry.name = numbers.take(nameSize).toByteArray();
    const auto extra = numbers.take(extraSize);
    numbers.skip(commentSize);
    if (!numbers.isOk())
        return {};
    if ((disk != 0 && disk != noNumber16) || !readLargeNumbers(extra, entry))
        entry.state = ZipEntry::State::Refused;
    return entry;
}

} // namespace

bool ZipEntry::isSymbolicLink() const
{
    constexpr int unixHost = 3;
    constexpr int darwinHost = 19;
    const int host = madeBy >> 8;
    return (host == unixHost || host == darwinHost) && ((attributes >> 16) & S_IFMT) == S_IFLNK;
}

QByteArray readZipBytes(int file, quint64 offset, quint64 size)
{
    QByteArray bytes(qsizetype(size), Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < bytes.size()) {
        const auto count = ::pread(file, bytes.data() + filled, size_t(bytes.size() - filled), off_t(offset) + filled);
        if (count <= 0)
            break;
        filled += count;
    }
    bytes.truncate(filled);
    return bytes;
}

std::optional<ZipDirectory> readZipDirectory(int file, const ZipBudget &budget)
{
    struct stat status;
    if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode))
        return {};
    auto end = readEnd(file, quint64(status.st_size));
    if (end)
        end = readLargeEnd(file, *end);
    // Anything between the two could be another directory, which other programs might prefer.
    if (!end || end->directoryOffset > end->position || end->directorySize != end->position - end->directoryOffset)
        return {};

    ZipDirectory directory;
    directory.offset = end->directoryOffset;
    directory.isWithinBudget = end->entries <= budget.entries && end->directorySize <= budget.directoryBytes;
    const auto bytes = readZipBytes(file, end->directoryOffset, std::min(end->directorySize, budget.directoryBytes));
    ZipNumbers numbers(bytes);
    const auto wanted = directory.isWithinBudget ? end->entries : std::min(end->entries, budget.entries);
    for (quint64 count = 0; count < wanted; ++count) {
        auto entry = readEntry(numbers);
        if (!entry && directory.isWithinBudget)
            return {};
        if (!entry)
            break;
        directory.entries.push_back(std::move(*entry));
    }
    const bool isWhole = numbers.isAtEnd() || !directory.isWithinBudget;
    return isWhole ? std::optional(std::move(directory)) : std::nullopt;
}
