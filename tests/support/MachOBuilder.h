#pragma once

#include <QByteArray>
#include <QtEndian>

#include <initializer_list>

/// Writes the beginnings of compiled programs and libraries, byte by byte.
class MachOBuilder
{
public:
    enum class ByteOrder { Big, Little };

    static constexpr quint32 x86 = 7;
    static constexpr quint32 x86_64 = 0x01000007;
    static constexpr quint32 arm = 12;
    static constexpr quint32 arm64 = 0x0100000C;
    static constexpr quint32 arm64With32Bits = 0x0200000C;
    static constexpr quint32 powerPC = 18;

    explicit MachOBuilder(ByteOrder order)
        : m_order(order)
    { }

    MachOBuilder &number(quint32 value)
    {
        char bytes[sizeof value];
        if (m_order == ByteOrder::Big)
            qToBigEndian(value, bytes);
        else
            qToLittleEndian(value, bytes);
        m_bytes.append(bytes, sizeof bytes);
        return *this;
    }

    MachOBuilder &longNumber(quint64 value)
    {
        const auto high = quint32(value >> 32);
        const auto low = quint32(value);
        return m_order == ByteOrder::Big ? number(high).number(low) : number(low).number(high);
    }

    QByteArray bytes() const { return m_bytes; }

    /// An executable with no load commands.
    static QByteArray plain64(quint32 cpuType, ByteOrder order = ByteOrder::Little, quint32 subtype = 0)
    {
        return MachOBuilder(order).number(0xFEEDFACF).header(cpuType, subtype).number(0).bytes();
    }
    static QByteArray plain32(quint32 cpuType, ByteOrder order = ByteOrder::Little)
    {
        return MachOBuilder(order).number(0xFEEDFACE).header(cpuType, 0).bytes();
    }

    /// A universal file, each slice a header at its place.
    static QByteArray universal(std::initializer_list<quint32> cpuTypes, ByteOrder order = ByteOrder::Big)
    {
        MachOBuilder table(order);
        table.number(0xCAFEBABE).number(quint32(cpuTypes.size()));
        quint32 offset = pageSize;
        for (const auto type : cpuTypes) {
            table.number(type).number(0).number(offset).number(sliceSize).number(alignment);
            offset += pageSize;
        }
        return withSlices(table.bytes(), cpuTypes);
    }
    static QByteArray universal64(std::initializer_list<quint32> cpuTypes, ByteOrder order = ByteOrder::Big)
    {
        MachOBuilder table(order);
        table.number(0xCAFEBABF).number(quint32(cpuTypes.size()));
        quint64 offset = pageSize;
        for (const auto type : cpuTypes) {
            table.number(type).number(0).longNumber(offset).longNumber(sliceSize).number(alignment).number(0);
            offset += pageSize;
        }
        return withSlices(table.bytes(), cpuTypes);
    }

private:
    static constexpr quint32 alignment = 12; // as a power of two
    static constexpr quint32 pageSize = 1U << alignment;
    static constexpr quint32 sliceSize = 32;

    MachOBuilder &header(quint32 cpuType, quint32 subtype)
    {
        constexpr quint32 executable = 2;
        return number(cpuType).number(subtype).number(executable).number(0).number(0).number(0);
    }

    static QByteArray withSlices(QByteArray bytes, std::initializer_list<quint32> cpuTypes)
    {
        qsizetype offset = pageSize;
        for (const auto type : cpuTypes) {
            bytes.resize(offset, '\0');
            bytes.append(plain64(type));
            offset += pageSize;
        }
        return bytes;
    }

    ByteOrder m_order;
    QByteArray m_bytes;
};
