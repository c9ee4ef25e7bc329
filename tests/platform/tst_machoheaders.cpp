#include "platform/MachOHeaders.h"
#include "support/MachOBuilder.h"

#include <QtTest>

using namespace Qt::StringLiterals;

using Types = QList<quint32>;
using ByteOrder = MachOBuilder::ByteOrder;

Q_DECLARE_METATYPE(ByteOrder)

class tst_MachOHeaders : public QObject
{
    Q_OBJECT

private slots:
    void slices_data();
    void slices();
    void placesOfSlicesAreNotLookedAt_data();
    void placesOfSlicesAreNotLookedAt();
    void whatIsCutShort_data();
    void whatIsCutShort();
    void countOfSlices_data();
    void countOfSlices();
    void otherFiles_data();
    void otherFiles();
    void whatIsBehindTheHeadersDoesNotCount();
};

namespace {

constexpr auto x86 = MachOBuilder::x86;
constexpr auto x86_64 = MachOBuilder::x86_64;
constexpr auto arm = MachOBuilder::arm;
constexpr auto arm64 = MachOBuilder::arm64;

Types typesOf(QByteArrayView bytes)
{
    const auto types = machOCPUTypes(bytes);
    return Types(types.begin(), types.end());
}

/// A table of `count` slices, all for 64-bit Arm.
QByteArray tableOf(quint32 count, quint32 magic)
{
    MachOBuilder table(ByteOrder::Big);
    table.number(magic).number(count);
    const int numbersPerEntry = magic == 0xCAFEBABE ? 5 : 8;
    for (quint32 slice = 0; slice < count; ++slice) {
        table.number(arm64);
        for (int i = 1; i < numbersPerEntry; ++i)
            table.number(0);
    }
    return table.bytes();
}

} // namespace

void tst_MachOHeaders::slices_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Types>("expected");

    QTest::newRow("64-bit x86") << MachOBuilder::plain64(x86_64) << Types{x86_64};
    QTest::newRow("64-bit Arm") << MachOBuilder::plain64(arm64) << Types{arm64};
    QTest::newRow("the subtype does not count") << MachOBuilder::plain64(arm64, ByteOrder::Little, 2) << Types{arm64};
    QTest::newRow("64 bits, big-endian") << MachOBuilder::plain64(arm64, ByteOrder::Big) << Types{arm64};
    QTest::newRow("32-bit x86") << MachOBuilder::plain32(x86) << Types{x86};
    QTest::newRow("32-bit Arm") << MachOBuilder::plain32(arm) << Types{arm};
    QTest::newRow("32 bits, big-endian") << MachOBuilder::plain32(MachOBuilder::powerPC, ByteOrder::Big)
                                         << Types{MachOBuilder::powerPC};
    QTest::newRow("universal, in the table's order")
        << MachOBuilder::universal({x86_64, arm64}) << Types{x86_64, arm64};
    QTest::newRow("universal, the other way round") << MachOBuilder::universal({arm64, x86_64}) << Types{arm64, x86_64};
    QTest::newRow("one slice twice") << MachOBuilder::universal({arm64, arm64}) << Types{arm64, arm64};
    QTest::newRow("universal with 32-bit slices")
        << MachOBuilder::universal({x86, x86_64, arm}) << Types{x86, x86_64, arm};
    QTest::newRow("universal, little-endian")
        << MachOBuilder::universal({x86_64, arm64}, ByteOrder::Little) << Types{x86_64, arm64};
    QTest::newRow("universal with 64-bit offsets")
        << MachOBuilder::universal64({x86_64, arm64}) << Types{x86_64, arm64};
    QTest::newRow("universal with 64-bit offsets, little-endian")
        << MachOBuilder::universal64({x86_64, arm64}, ByteOrder::Little) << Types{x86_64, arm64};
    QTest::newRow("no slices") << MachOBuilder::universal({}) << Types{};
}

void tst_MachOHeaders::slices()
{
    QFETCH(QByteArray, bytes);
    QFETCH(Types, expected);
    QCOMPARE(typesOf(bytes), expected);
}

void tst_MachOHeaders::placesOfSlicesAreNotLookedAt_data()
{
    QTest::addColumn<quint32>("offset");
    QTest::addColumn<quint32>("size");

    QTest::newRow("behind the file's end") << 0x7FFFF000U << 32U;
    QTest::newRow("sum beyond 32 bits") << 0xFFFFFFFFU << 0xFFFFFFFFU;
    QTest::newRow("on the table itself") << 0U << 48U;
    QTest::newRow("empty") << 4096U << 0U;
}

void tst_MachOHeaders::placesOfSlicesAreNotLookedAt()
{
    QFETCH(quint32, offset);
    QFETCH(quint32, size);
    MachOBuilder overlapping(ByteOrder::Big);
    overlapping.number(0xCAFEBABE).number(2);
    for (const auto type : {x86_64, arm64})
        overlapping.number(type).number(0).number(offset).number(size).number(0xFFFFFFFF);
    QCOMPARE(typesOf(overlapping.bytes()), (Types{x86_64, arm64}));

    MachOBuilder wide(ByteOrder::Big);
    wide.number(0xCAFEBABF).number(1).number(arm64).number(0);
    wide.longNumber(~0ULL - offset).longNumber(~0ULL - size).number(0xFFFFFFFF).number(0xFFFFFFFF);
    QCOMPARE(typesOf(wide.bytes()), Types{arm64});
}

void tst_MachOHeaders::whatIsCutShort_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("64 bits") << MachOBuilder::plain64(arm64);
    QTest::newRow("32 bits") << MachOBuilder::plain32(x86);
    QTest::newRow("table") << tableOf(3, 0xCAFEBABE);
    QTest::newRow("table with 64-bit offsets") << tableOf(3, 0xCAFEBABF);
}

void tst_MachOHeaders::whatIsCutShort()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(!typesOf(bytes).isEmpty());
    for (qsizetype size = 0; size < bytes.size(); ++size) {
        // A copy of its own, so that a sanitizer sees reading beyond the end.
        const std::vector<char> cut(bytes.begin(), bytes.begin() + size);
        QCOMPARE(typesOf(QByteArrayView(cut.data(), size)), Types());
    }
}

void tst_MachOHeaders::countOfSlices_data()
{
    QTest::addColumn<quint32>("magic");

    QTest::newRow("32-bit offsets") << 0xCAFEBABEU;
    QTest::newRow("64-bit offsets") << 0xCAFEBABFU;
}

void tst_MachOHeaders::countOfSlices()
{
    QFETCH(quint32, magic);
    const auto most = tableOf(44, magic);
    QVERIFY(most.size() <= machOHeadersSize);
    QCOMPARE(typesOf(most), Types(44, arm64));
    QCOMPARE(typesOf(tableOf(45, magic)), Types());
    for (const auto count : {0x10000000U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) // times an entry's size: too large
        QCOMPARE(typesOf(MachOBuilder(ByteOrder::Big).number(magic).number(count).bytes() + most), Types());
}

void tst_MachOHeaders::otherFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");

    // Its magic number, the minor and the major version, and constants that would be a slice's type in a table.
    const auto javaClass = [](quint32 version) {
        return MachOBuilder(ByteOrder::Big).number(0xCAFEBABE).number(version).bytes() + tableOf(60, 0xCAFEBABE).mid(8);
    };
    QTest::newRow("class of the first Java") << javaClass(0x0003002D);
    QTest::newRow("the lowest version of a class") << javaClass(45);
    QTest::newRow("class of a later Java") << javaClass(52);
    QTest::newRow("class of a Java in preview") << javaClass(0xFFFF0041);
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("script") << QByteArray("#!/bin/sh\n").leftJustified(64, ' ');
    QTest::newRow("ELF") << QByteArray("\x7F"
                                       "ELF\x02\x01\x01")
                                .leftJustified(64, '\0');
    QTest::newRow("archive of objects") << QByteArray("!<arch>\n").leftJustified(64, ' ');
    QTest::newRow("magic number in mixed order") << QByteArray("\xFA\xCF\xFE\xED").leftJustified(64, '\0');
    QTest::newRow("not at the very beginning") << ' ' + MachOBuilder::plain64(arm64);
}

void tst_MachOHeaders::otherFiles()
{
    QFETCH(QByteArray, bytes);
    QCOMPARE(typesOf(bytes), Types());
}

void tst_MachOHeaders::whatIsBehindTheHeadersDoesNotCount()
{
    const auto file = MachOBuilder::universal({x86_64, arm64}) + QByteArray(100000, '\xFF');
    QCOMPARE(typesOf(QByteArrayView(file).first(machOHeadersSize)), typesOf(file));
}

QTEST_APPLESS_MAIN(tst_MachOHeaders)
#include "tst_machoheaders.moc"
