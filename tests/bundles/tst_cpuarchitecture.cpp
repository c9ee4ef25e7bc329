#include "bundles/CPUArchitecture.h"
#include "platform/FileURL.h"
#include "support/MachOBuilder.h"
#include "support/PathFiles.h"

#include <QFile>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

using ByteOrder = MachOBuilder::ByteOrder;

class tst_CPUArchitecture : public QObject
{
    Q_OBJECT

private slots:
    void architecturesOfFiles_data();
    void architecturesOfFiles();
    void hugeFile();
    void whereThereIsNoFile_data();
    void whereThereIsNoFile();
    void pipesAreNotWaitedFor();
    void links();
    void executable_data();
    void executable();
    void regularFile_data();
    void regularFile();
    void anyBytesAsAName();
};

namespace {

constexpr auto x86_64 = MachOBuilder::x86_64;
constexpr auto arm64 = MachOBuilder::arm64;

const QStringList none;

QUrl urlOf(const QByteArray &path)
{
    return fileURLFromPath(path, FileKind::File);
}

/// A folder with one of each kind of entry.
void fill(const TemporaryFolder &folder)
{
    writeFileAt(folder.path("program"), "x");
    QVERIFY(::chmod(folder.path("program").constData(), 0755) == 0);
    writeFileAt(folder.path("text"), "x");
    makeFolderAt(folder.path("folder"));
    makeLinkAt(folder.path("link to program"), "program");
    makeLinkAt(folder.path("link to text"), "text");
    makeLinkAt(folder.path("link to folder"), "folder");
    makeLinkAt(folder.path("dangling link"), "missing");
    makePipeAt(folder.path("pipe"));
}

} // namespace

void tst_CPUArchitecture::architecturesOfFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("expected");

    const QStringList arm{u"arm64"_s, u"arm64e"_s};
    QTest::newRow("64-bit x86") << MachOBuilder::plain64(x86_64) << QStringList{u"x86_64"_s};
    QTest::newRow("64-bit Arm has both names") << MachOBuilder::plain64(arm64) << arm;
    QTest::newRow("so has its subtype") << MachOBuilder::plain64(arm64, ByteOrder::Little, 2) << arm;
    QTest::newRow("universal, in the order of its slices")
        << MachOBuilder::universal({x86_64, arm64}) << QStringList{u"x86_64"_s, u"arm64"_s, u"arm64e"_s};
    QTest::newRow("universal, the other way round")
        << MachOBuilder::universal({arm64, x86_64}) << QStringList{u"arm64"_s, u"arm64e"_s, u"x86_64"_s};
    QTest::newRow("universal with 64-bit offsets")
        << MachOBuilder::universal64({x86_64, arm64}) << QStringList{u"x86_64"_s, u"arm64"_s, u"arm64e"_s};
    QTest::newRow("slices of other processors give nothing")
        << MachOBuilder::universal({MachOBuilder::x86, MachOBuilder::arm, MachOBuilder::arm64With32Bits, x86_64})
        << QStringList{u"x86_64"_s};
    QTest::newRow("32-bit x86") << MachOBuilder::plain32(MachOBuilder::x86) << none;
    QTest::newRow("32-bit Arm") << MachOBuilder::plain32(MachOBuilder::arm) << none;
    QTest::newRow("PowerPC, big-endian") << MachOBuilder::plain32(MachOBuilder::powerPC, ByteOrder::Big) << none;
    QTest::newRow("cut short") << MachOBuilder::plain64(x86_64).left(31) << none;
    QTest::newRow("script") << "#!/bin/sh\n"_ba << none;
    QTest::newRow("empty") << QByteArray() << none;
}

void tst_CPUArchitecture::architecturesOfFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, expected);
    const TemporaryFolder folder;
    writeFileAt(folder.path("file"), bytes);
    QCOMPARE(architectures(urlOf(folder.path("file"))), expected);
}

void tst_CPUArchitecture::hugeFile()
{
    const TemporaryFolder folder;
    const auto path = folder.path("huge");
    writeFileAt(path, MachOBuilder::plain64(x86_64));
    constexpr off_t terabyte = off_t(1) << 40; // more than any memory holds
    QCOMPARE(::truncate(path.constData(), terabyte), 0);
    QCOMPARE(architectures(urlOf(path)), QStringList{u"x86_64"_s});
}

void tst_CPUArchitecture::whereThereIsNoFile_data()
{
    QTest::addColumn<QUrl>("url");

    QTest::newRow("no URL") << QUrl();
    QTest::newRow("missing") << QUrl(u"file:///missing/file"_s);
    QTest::newRow("not on this computer") << QUrl(u"file://elsewhere/bin/sh"_s);
    QTest::newRow("not a file's URL") << QUrl(u"https://plugins.example/bin/sh"_s);
    QTest::newRow("name with a zero") << QUrl(u"file:///bin/sh%00"_s);
}

void tst_CPUArchitecture::whereThereIsNoFile()
{
    QFETCH(QUrl, url);
    QVERIFY(!isExecutable(url));
    QVERIFY(!isRegularFile(url));
    QCOMPARE(architectures(url), none);
}

void tst_CPUArchitecture::pipesAreNotWaitedFor()
{
    const TemporaryFolder folder;
    fill(folder);
    QCOMPARE(architectures(urlOf(folder.path("pipe"))), none);
    QCOMPARE(architectures(urlOf(folder.path("folder"))), none);
    QCOMPARE(architectures(QUrl(u"file:///dev/zero"_s)), none);
}

void tst_CPUArchitecture::links()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("file"), MachOBuilder::plain64(x86_64));
    makeLinkAt(folder.path("link"), "file");
    QCOMPARE(architectures(urlOf(folder.path("link"))), QStringList{u"x86_64"_s});
}

void tst_CPUArchitecture::executable_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("expected");

    QTest::newRow("program") << "program"_ba << true;
    QTest::newRow("file without the permission") << "text"_ba << false;
    QTest::newRow("folder") << "folder"_ba << true;
    QTest::newRow("link to a program") << "link to program"_ba << true;
    QTest::newRow("link to a file without the permission") << "link to text"_ba << false;
    QTest::newRow("dangling link") << "dangling link"_ba << false;
    QTest::newRow("missing") << "missing"_ba << false;
}

void tst_CPUArchitecture::executable()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, expected);
    const TemporaryFolder folder;
    fill(folder);
    QCOMPARE(isExecutable(urlOf(folder.path(name))), expected);
}

void tst_CPUArchitecture::regularFile_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("expected");

    QTest::newRow("program") << "program"_ba << true;
    QTest::newRow("file without the permission") << "text"_ba << true;
    QTest::newRow("folder") << "folder"_ba << false;
    QTest::newRow("pipe") << "pipe"_ba << false;
    QTest::newRow("link to a program") << "link to program"_ba << false;
    QTest::newRow("link to a folder") << "link to folder"_ba << false;
    QTest::newRow("missing") << "missing"_ba << false;
}

void tst_CPUArchitecture::regularFile()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, expected);
    const TemporaryFolder folder;
    fill(folder);
    QCOMPARE(isRegularFile(urlOf(folder.path(name))), expected);
}

void tst_CPUArchitecture::anyBytesAsAName()
{
    const TemporaryFolder folder;
    const auto path = folder.path("\xFF% \xC3\xBC");
    writeFileAt(path, MachOBuilder::plain64(x86_64));
    QVERIFY(isRegularFile(urlOf(path)));
    QVERIFY(!isExecutable(urlOf(path)));
    QCOMPARE(architectures(urlOf(path)), QStringList{u"x86_64"_s});
}

QTEST_APPLESS_MAIN(tst_CPUArchitecture)
#include "tst_cpuarchitecture.moc"
