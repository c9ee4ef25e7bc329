#include "support/HostileArchives.h"
#include "support/archives/ZipBuilder.h"

using namespace Qt::StringLiterals;
using Result = HostileArchive::Result;

namespace {

const QStringList before{u"before"_s};

template <class Change>
QByteArray withPart(Change change)
{
    ZipPart part("evil", "evil evil evil");
    change(part);
    return ZipBuilder({{"before", "b"}, part, {"later", "l"}}).bytes();
}

ZipBuilder usual()
{
    return ZipBuilder({{"before", "b"}, {"evil", "e"}, {"later", "l"}});
}

/// The second entry is in the directory twice, under two names.
QByteArray withSharedData()
{
    ZipBuilder builder;
    builder.add({"before", "b"});
    const auto offset = builder.position();
    builder.add({"evil", "e"});
    ZipPart again("evil", "e");
    again.isOnlyInDirectory = true;
    again.headerOffset = offset;
    return builder.add(again).bytes();
}

/// The data of the second entry is a whole entry, which the directory names as well.
QByteArray withNestedData()
{
    constexpr quint64 headerSize = 34; // with the name
    const auto nested = ZipBuilder().add({"more", "m"}).bytes();
    ZipBuilder builder;
    builder.add({"before", "b"});
    const auto offset = builder.position();
    builder.add({"evil", nested});
    ZipPart more("more", "m");
    more.isOnlyInDirectory = true;
    more.headerOffset = offset + headerSize;
    return builder.add(more).bytes();
}

/// Every entry claims all data up to the directory.
QByteArray withLongData()
{
    ZipBuilder builder;
    ZipPart first("evil", "e");
    first.packedSize = 40;
    first.size = 40;
    return builder.add(first).add({"later", QByteArray(100, 'l')}).bytes();
}

QByteArray replaced(QByteArray bytes, qsizetype fromEnd, const QByteArray &with)
{
    return bytes.replace(bytes.size() - fromEnd, with.size(), with);
}

} // namespace

std::vector<HostileArchive> hostileStructures()
{
    const auto part = [](auto change) { return withPart(change); };
    const auto damaged = Result::CannotDecompress;
    const auto unreadable = Result::Unreadable;
    const auto whole = usual().bytes();
    return {
        {"another name in its header", part([](ZipPart &p) { p.localName = "life"; }), damaged, before},
        {"a longer name in its header", part([](ZipPart &p) { p.localName = "../outside/evil"; }), damaged, before},
        {"another checksum in its header", part([](ZipPart &p) { p.localChecksum = 1; }), damaged, before},
        {"another size in its header", part([](ZipPart &p) { p.localSize = 1; }), damaged, before},
        {"another packed size in its header", part([](ZipPart &p) { p.localPackedSize = 1; }), damaged, before},
        {"another method in its header", part([](ZipPart &p) { p.localMethod = 8; }), damaged, before},
        {"encrypted only in its header", part([](ZipPart &p) { p.localFlags = 1; }), damaged, before},
        {"no header", part([](ZipPart &p) { p.localSignature = 0; }), damaged, before},
        {"a descriptor that is not there", part([](ZipPart &p) {
             p.flags = 8;
             p.localChecksum = 0;
             p.localSize = 0;
             p.localPackedSize = 0;
         }),
            damaged, before},
        {"a header behind the end", part([](ZipPart &p) { p.headerOffset = 1'000'000; }), damaged, before},
        {"a header in the directory", part([](ZipPart &p) { p.headerOffset = 130; }), damaged, before},
        {"a header in nowhere", part([](ZipPart &p) {
             p.large();
             p.headerOffset = ~Q_UINT64_C(0);
         }),
            unreadable, {}},
        {"a large size that is not there", part([](ZipPart &p) { p.packedSize = 0xffffffff; }), unreadable, {}},
        {"a packed size that wraps around", part([](ZipPart &p) {
             p.large();
             p.packedSize = ~Q_UINT64_C(0) - 20;
             p.size = p.packedSize;
         }),
            damaged, before},
        {"two entries of the same data", withSharedData(), damaged, before},
        {"an entry inside another", withNestedData(), damaged, before},
        {"data that reaches into the next entry", withLongData(), damaged, {}},
        {"data that reaches into the directory",
            ZipBuilder()
                .add({"before", "b"})
                .add([] {
                    ZipPart last("evil", "e");
                    last.packedSize = 30;
                    last.size = 30;
                    return last;
                }())
                .bytes(),
            damaged, before},
        {"paths marked as UTF-8 that are not", part([](ZipPart &p) {
             p.name = "caf\x82";
             p.flags = 1 << 11;
         }),
            unreadable, {}},
        {"paths marked as UTF-8 that are overlong", part([](ZipPart &p) {
             p.name = "\xc0\xae\xc0\xae";
             p.flags = 1 << 11;
         }),
            unreadable, {}},
        {"bytes between directory and end", QByteArray(whole).insert(whole.size() - 22, "x"), unreadable, {}},
        {"bytes in front of everything", ZipBuilder().addBytes("#!/bin/sh\n").add({"evil", "e"}).bytes(),
            Result::Unpacked, {u"evil"_s}},
        {"bytes between entries", ZipBuilder().add({"before", "b"}).addBytes("PK\3\4").add({"evil", "e"}).bytes(),
            Result::Unpacked, {u"before"_s, u"evil"_s}},
        {"another archive in front", ZipBuilder().addBytes(whole).bytes(), unreadable, {}},
        {"bytes behind the end", whole + "x", unreadable, {}},
        {"two archives, one after the other", whole + whole, unreadable, {}},
        {"an empty archive in the comment", usual().comment(ZipBuilder().bytes()).bytes(), unreadable, {}},
        {"more entries than it has", usual().claimEntries(4).bytes(), unreadable, {}},
        {"fewer entries than it has", usual().claimEntries(2).bytes(), unreadable, {}},
        {"no entries, though it has some", usual().claimEntries(0).bytes(), unreadable, {}},
        {"a directory behind the end", usual().claimDirectoryOffset(1'000'000).bytes(), unreadable, {}},
        {"a directory in the data", usual().claimDirectoryOffset(3).bytes(), unreadable, {}},
        {"a directory that is too long", usual().claimDirectorySize(1'000'000).bytes(), unreadable, {}},
        {"a directory that is too short", usual().claimDirectorySize(20).bytes(), unreadable, {}},
        {"several disks", replaced(whole, 18, QByteArray("\1\0", 2)), unreadable, {}},
        {"a large end that contradicts", usual().withLargeEnd().claimEntries(2).bytes(), unreadable, {}},
        {"a large end that is elsewhere", replaced(usual().withLargeEnd().bytes(), 34, QByteArray(8, '\x7f')),
            unreadable, {}},
        {"cut off in the end", whole.chopped(1), unreadable, {}},
        {"cut off in the directory", whole.chopped(60), unreadable, {}},
        {"cut off in the data", whole.first(20), unreadable, {}},
        {"an empty file", QByteArray(), unreadable, {}},
        {"no archive", "<html>not found</html>", unreadable, {}},
        {"no entries", ZipBuilder().bytes(), unreadable, {}},
    };
}
