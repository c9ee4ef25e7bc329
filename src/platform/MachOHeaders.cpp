#include "platform/MachOHeaders.h"

#include <QtEndian>

#include <array>

namespace {

/// Compiled classes of Java begin as universal files do, with a number where those have the count of their slices that
/// is never below 45. There are fewer processors than that.
constexpr quint32 mostSlices = 44;

enum class Slices { One, Table };

struct Form
{
    quint32 magic;
    Slices slices;
    qsizetype headerSize;
    /// Of an entry of the table.
    qsizetype entrySize;
};

constexpr std::array forms{
    Form{0xFEEDFACE, Slices::One, 28, 0}, // 32 bits
    Form{0xFEEDFACF, Slices::One, 32, 0}, // 64 bits
    Form{0xCAFEBABE, Slices::Table, 8, 20}, // with 32-bit offsets
    Form{0xCAFEBABF, Slices::Table, 8, 32}, // with 64-bit offsets
};
static_assert(machOHeadersSize == 8 + mostSlices * 32);

enum class ByteOrder { Big, Little };

/// `offset` is in range.
quint32 numberAt(QByteArrayView bytes, qsizetype offset, ByteOrder order)
{
    const auto *const data = bytes.data() + offset;
    return order == ByteOrder::Big ? qFromBigEndian<quint32>(data) : qFromLittleEndian<quint32>(data);
}

std::vector<quint32> typesInTable(QByteArrayView bytes, const Form &form, ByteOrder order)
{
    const auto count = numberAt(bytes, 4, order);
    if (count > mostSlices || bytes.size() < form.headerSize + qsizetype(count) * form.entrySize)
        return {};
    std::vector<quint32> types;
    types.reserve(count);
    for (quint32 slice = 0; slice < count; ++slice)
        types.push_back(numberAt(bytes, form.headerSize + qsizetype(slice) * form.entrySize, order));
    return types;
}

std::vector<quint32> typesInForm(QByteArrayView bytes, const Form &form, ByteOrder order)
{
    if (bytes.size() < form.headerSize)
        return {};
    if (form.slices == Slices::Table)
        return typesInTable(bytes, form, order);
    return {numberAt(bytes, 4, order)};
}

} // namespace

std::vector<quint32> machOCPUTypes(QByteArrayView beginning)
{
    if (beginning.size() < qsizetype(sizeof(quint32)))
        return {};
    for (const auto order : {ByteOrder::Big, ByteOrder::Little}) {
        const auto magic = numberAt(beginning, 0, order);
        for (const auto &form : forms) {
            if (form.magic == magic)
                return typesInForm(beginning, form, order);
        }
    }
    return {};
}
