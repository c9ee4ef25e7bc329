#include "support/HostileArchives.h"

#include "support/archives/ZipBuilder.h"

#include <QtEndian>

using namespace Qt::StringLiterals;
using Result = HostileArchive::Result;

namespace {

QByteArray zip(const std::vector<ZipPart> &parts)
{
    return ZipBuilder(parts).bytes();
}

/// An archive whose second of three entries is a file of that path.
QByteArray withPath(const QByteArray &path)
{
    return zip({{"before", "b"}, {path, "evil"}, {"later", "l"}});
}

ZipPart linkTo(const QByteArray &path, const QByteArray &target)
{
    return {path, target, ZipPart::link};
}

template <class Change>
QByteArray withPart(Change change)
{
    ZipPart part("evil", QByteArray("evil ").repeated(100));
    part.deflated();
    change(part);
    return zip({{"before", "b"}, part, {"later", "l"}});
}

const QStringList before{u"before"_s};
const QStringList all{u"before"_s, u"evil"_s, u"later"_s};

} // namespace

std::vector<HostileArchive> hostilePaths(const QByteArray &outside)
{
    const auto between = [](const QString &path) {
        QStringList paths{u"before"_s, u"later"_s, path};
        paths.sort();
        return paths;
    };
    const auto inside = QString::fromUtf8(outside).mid(1) + u"/evil"_s;
    const QByteArray deep = QByteArray("a/").repeated(2100) + "evil";
    const QByteArray almostDeep = QByteArray("a/").repeated(1900) + QByteArray(250, 'n') + "/" + QByteArray(250, 'n');
    return {
        {"a path that climbs", withPath("../outside/evil"), Result::InvalidPath, before},
        {"a path that climbs from below", withPath("a/../../outside/evil"), Result::InvalidPath, before},
        {"a path that climbs and comes back", withPath("a/../evil"), Result::InvalidPath, before},
        {"two dots inside a folder's name", withPath("a..b/evil"), Result::InvalidPath, before},
        {"two dots inside a file's name", withPath("ev..il"), Result::InvalidPath, before},
        {"two dots at the end", withPath("evil/.."), Result::InvalidPath, before},
        {"nothing but dots", withPath("..."), Result::InvalidPath, before},
        {"backslashes that climb", withPath("..\\outside\\evil"), Result::InvalidPath, before},
        {"a folder's entry that climbs", withPath("../outside/evil/"), Result::InvalidPath, before},
        {"a resource fork that climbs", withPath("__MACOSX/../../outside/evil"), Result::InvalidPath, before},
        {"dots behind a zero", withPath(QByteArray("a\0/../../outside/evil", 21)), Result::InvalidPath, before},
        {"an absolute path", withPath(outside + "/evil"), Result::Unpacked, between(inside)},
        {"an absolute path with two slashes", withPath("//" + outside.mid(1) + "/evil"), Result::Unpacked,
            between(inside)},
        {"a path from home", withPath("~/evil"), Result::Unpacked, between(u"~/evil"_s)},
        {"a drive", withPath("C:\\evil"), Result::Unpacked, between(u"C:\\evil"_s)},
        {"a server", withPath("\\\\server\\share\\evil"), Result::Unpacked, between(u"\\\\server\\share\\evil"_s)},
        {"a URL", withPath("file:///evil"), Result::Unpacked, between(u"file:/evil"_s)},
        {"percent signs for dots", withPath("%2e%2e/evil"), Result::Unpacked, between(u"%2e%2e/evil"_s)},
        {"overlong bytes for dots", withPath("\xc0\xae\xc0\xae/evil"), Result::Unpacked, between(u"└«└«/evil"_s)},
        {"overlong bytes for a slash",
            withPath("..\xc0\xaf"
                     "evil"),
            Result::InvalidPath, before},
        {"wide dots", withPath("．．/evil"), Result::Unpacked, between(u"．．/evil"_s)},
        {"a line feed in the name", withPath("e\nvil"), Result::Unpacked, between(u"e\nvil"_s)},
        {"a path of the code page", withPath("caf\x82"), Result::Unpacked, between(u"café"_s)},
        {"a zero in the name", withPath(QByteArray("evil\0.txt", 9)), Result::CannotCreateFile, before},
        {"a zero in a folder's name", withPath(QByteArray("a\0b/evil", 8)), Result::CannotCreateFolders, before},
        {"no name", withPath(""), Result::LeadsOutside, before},
        {"a dot", withPath("."), Result::CannotCreateFile, before},
        {"a dot in a folder", withPath("a/."), Result::CannotCreateFile, before},
        {"a dot as a folder", withPath("./evil"), Result::Unpacked, all},
        {"a slash alone", withPath("/"), Result::Unpacked, {u"before"_s, u"later"_s}},
        {"a name that is too long", withPath(QByteArray(256, 'n')), Result::CannotCreateFile, before},
        {"a folder's name that is too long", withPath(QByteArray(256, 'n') + "/evil"), Result::CannotCreateFolders,
            before},
        {"a path that is too deep", withPath(deep), Result::CannotCreateFolders, before},
        {"a path of the greatest length", withPath(QByteArray("b/").repeated(32767)), Result::Unpacked,
            {u"before"_s, u"later"_s}},
        {"a file that is just too deep", withPath(almostDeep), Result::CannotCreateFolders, before},
    };
}

std::vector<HostileArchive> hostileLinks(const QByteArray &outside)
{
    const ZipPart evil("link/evil", "evil");
    const QStringList onlyLink{u"link"_s};
    const QStringList twoLinks{u"link"_s, u"other"_s};
    ZipPart damaged = linkTo("link", "sub");
    damaged.checksum = 1;
    return {
        {"through a link that leads out", zip({linkTo("link", "../outside"), evil}), Result::LeadsOutside, onlyLink},
        {"through an absolute link", zip({linkTo("link", outside), evil}), Result::LeadsOutside, onlyLink},
        {"through a link to the parent", zip({linkTo("link", ".."), {"link/outside/evil", "evil"}}),
            Result::LeadsOutside, onlyLink},
        {"through a link to the root", zip({linkTo("link", "/"), {"link" + outside + "/evil", "evil"}}),
            Result::LeadsOutside, onlyLink},
        {"out and back in", zip({linkTo("link", ".."), {"link/destination/evil", "evil"}}), Result::LeadsOutside,
            onlyLink},
        {"a new folder through a link", zip({linkTo("link", "../outside"), {"link/new/newer/evil", "evil"}}),
            Result::LeadsOutside, onlyLink},
        {"over a file through a link", zip({linkTo("link", "../outside"), {"link/kept", "evil"}}), Result::LeadsOutside,
            onlyLink},
        {"a link through a link", zip({linkTo("link", "../outside"), linkTo("link/evil", "kept")}),
            Result::LeadsOutside, onlyLink},
        {"through a chain", zip({linkTo("link", "other"), linkTo("other", "../outside"), evil}), Result::LeadsOutside,
            twoLinks},
        {"through a chain made backwards", zip({linkTo("other", "../outside"), linkTo("link", "other"), evil}),
            Result::LeadsOutside, twoLinks},
        {"through links one below the other",
            zip({linkTo("link", "."), linkTo("link/other", "../outside"), {"link/other/evil", "evil"}}),
            Result::LeadsOutside, twoLinks},
        {"through a link in a folder", zip({linkTo("sub/link", "../../outside"), {"sub/link/evil", "evil"}}),
            Result::LeadsOutside, {u"sub/link"_s}},
        {"through a link that was another one",
            zip({{"sub/file", "f"}, linkTo("link", "sub"), {"link/a", "a"}, linkTo("link", "../outside"),
                {"link/b", "b"}}),
            Result::LeadsOutside, {u"link"_s, u"sub/a"_s, u"sub/file"_s}},
        {"through a link that was a file", zip({{"link", "file"}, linkTo("link", "../outside"), evil}),
            Result::LeadsOutside, onlyLink},
        {"through the process's own folder", zip({linkTo("link", "/proc/self/cwd"), evil}), Result::LeadsOutside,
            onlyLink},
        {"through an open folder of the process", zip({linkTo("link", "/proc/self/root"), evil}), Result::LeadsOutside,
            onlyLink},
        {"a zero in a link's target", zip({linkTo("link", QByteArray("../outside\0/x", 13)), evil}),
            Result::LeadsOutside, onlyLink},
        {"a link to a file is replaced", zip({linkTo("evil", "../outside/kept"), {"evil", "evil"}}), Result::Unpacked,
            {u"evil"_s}},
        {"an absolute link to a file is replaced", zip({linkTo("evil", outside + "/kept"), {"evil", "evil"}}),
            Result::Unpacked, {u"evil"_s}},
        {"a link to nothing is replaced", zip({linkTo("evil", "../outside/evil"), {"evil", "evil"}}), Result::Unpacked,
            {u"evil"_s}},
        {"a link to a folder is replaced", zip({linkTo("evil", "../outside"), {"evil", "evil"}}), Result::Unpacked,
            {u"evil"_s}},
        {"a folder below a link to nothing", zip({linkTo("link", "../outside/new"), evil}), Result::CannotCreateFolders,
            onlyLink},
        {"below a link to a file", zip({linkTo("link", "../outside/kept"), evil}), Result::CannotCreateFolders,
            onlyLink},
        {"below a link to a device", zip({linkTo("link", "/dev/null"), evil}), Result::CannotCreateFolders, onlyLink},
        {"below a link to itself", zip({linkTo("link", "link"), evil}), Result::CannotCreateFolders, onlyLink},
        {"below two links to each other", zip({linkTo("link", "other"), linkTo("other", "link"), evil}),
            Result::CannotCreateFolders, twoLinks},
        {"a link in a folder's place", zip({{"link/file", "f"}, linkTo("link", "../outside"), evil}), Result::Unpacked,
            {u"link/evil"_s, u"link/file"_s}},
        {"a link to nowhere at all", zip({linkTo("link", ""), evil}), Result::Unpacked, {u"link/evil"_s}},
        {"a target that is too long", zip({linkTo("link", QByteArray(5000, 'x')), evil}), Result::Unpacked,
            {u"link/evil"_s}},
        {"a link that is a folder's entry", zip({linkTo("link/", "../outside"), evil}), Result::Unpacked,
            {u"link/evil"_s}},
        {"a link in the resource forks", zip({linkTo("__MACOSX", "../outside"), {"__MACOSX/evil", "evil"}}),
            Result::Unpacked, {}},
        {"a link that stays inside", zip({{"sub/file", "f"}, linkTo("link", "sub"), evil}), Result::Unpacked,
            {u"link"_s, u"sub/evil"_s, u"sub/file"_s}},
        {"a link that is damaged", zip({damaged, evil}), Result::CannotDecompress, {}},
    };
}

std::vector<HostileArchive> hostileContents()
{
    const auto part = [](auto change) { return withPart(change); };
    const QByteArray zeros(100 * 1024 * 1024, '\0');
    const quint64 pretended = 600 * 1024 * 1024;
    ZipBuilder tooMany;
    ZipBuilder tooManyFolders;
    for (int number = 0; number < 50'001; ++number) {
        tooMany.add({QByteArray::number(number)});
        tooManyFolders.add({QByteArray::number(number) + '/'});
    }
    const auto damaged = Result::CannotDecompress;
    return {
        {"a device", zip({{"evil", "e", 0020666}}), Result::Unpacked, {u"evil"_s}},
        {"a disk", zip({{"evil", "e", 0060666}}), Result::Unpacked, {u"evil"_s}},
        {"a pipe", zip({{"evil", "e", 0010666}}), Result::Unpacked, {u"evil"_s}},
        {"a socket", zip({{"evil", "e", 0140777}}), Result::Unpacked, {u"evil"_s}},
        {"a folder by its mode", zip({{"evil", "e", 0040755}}), Result::Unpacked, {u"evil"_s}},
        {"an owner's rights", zip({{"evil", "e", 0106777}}), Result::Unpacked, {u"evil"_s}},
        {"the same path twice", zip({{"evil", "first"}, {"evil", "second"}}), Result::Unpacked, {u"evil"_s}},
        {"paths that differ in case", zip({{"Evil", "first"}, {"evil", "second"}}), Result::Unpacked,
            {u"Evil"_s, u"evil"_s}},
        {"a folder where a file is", zip({{"evil", "e"}, {"evil/more", "e"}}), Result::CannotCreateFolders,
            {u"evil"_s}},
        {"a file where a folder is", zip({{"evil/more", "e"}, {"evil", "e"}}), Result::CannotCreateFile,
            {u"evil/more"_s}},
        {"encrypted", part([](ZipPart &p) { p.flags = 1; }), damaged, before},
        {"strongly encrypted", part([](ZipPart &p) { p.flags = 1 << 6 | 1; }), damaged, before},
        {"encrypted headers", part([](ZipPart &p) { p.flags = 1 << 13; }), damaged, before},
        {"encrypted by another method", part([](ZipPart &p) {
             p.method = 99;
             p.flags = 1;
             p.extra = QByteArray("\x01\x99\x07\x00\x02\x00"
                                  "AE"
                                  "\x03\x08\x00",
                 11);
         }),
            damaged, before},
        {"another method, which it does not tell", part([](ZipPart &p) { p.method = 99; }), Result::Unreadable, {}},
        {"a method with a large dictionary", part([](ZipPart &p) { p.method = 14; }), damaged, before},
        {"an unknown method", part([](ZipPart &p) { p.method = 0xfffe; }), damaged, before},
        {"a wrong checksum", part([](ZipPart &p) { p.checksum = 1; }), damaged, before},
        {"a wrong checksum, stored", part([](ZipPart &p) {
             p.method = 0;
             p.checksum = 1;
         }),
            damaged, before},
        {"more than it says", part([](ZipPart &p) { p.size = 10; }), damaged, before},
        {"less than it says", part([](ZipPart &p) { p.size = 1000; }), damaged, before},
        {"stored in another size", part([](ZipPart &p) {
             p.method = 0;
             p.size = 10;
         }),
            damaged, before},
        {"nothing, but it says something", part([](ZipPart &p) {
             p.packed = "";
             p.size = 100;
         }),
            damaged, before},
        {"cut off", part([](ZipPart &p) { p.packed = zipDeflated(p.data).chopped(3); }), damaged, before},
        {"rubbish", part([](ZipPart &p) { p.packed = QByteArray(100, '\xff'); }), damaged, before},
        {"a bomb", zip({{"before", "b"}, ZipPart("evil", zeros).deflated()}), damaged, before},
        {"a bomb that understates itself", part([&](ZipPart &p) {
             p.packed = zipDeflated(zeros);
             p.size = 1000;
         }),
            damaged, before},
        {"larger than memory", part([&](ZipPart &p) { p.size = pretended; }), damaged, before},
        {"larger than a disk", part([](ZipPart &p) {
             p.large();
             p.size = Q_UINT64_C(1) << 62;
         }),
            damaged, before},
        {"too many entries", tooMany.bytes(), damaged, {}},
        {"too many folders", tooManyFolders.bytes(), damaged, {}},
    };
}
