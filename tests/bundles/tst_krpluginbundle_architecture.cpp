// The executables in a plug-in, and whether they run here.

#include "bundles/KRPluginBundle.h"
#include "platform/FileURL.h"
#include "support/MachOBuilder.h"
#include "support/PathFiles.h"
#include "support/TestEnvironment.h"

#include <QtTest>

#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

using Executables = QMap<QUrl, QStringList>;

class tst_KRPluginBundle_Architecture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void noExecutables();
    void scriptsAndOthersAreNone_data();
    void scriptsAndOthersAreNone();
    void universalExecutable();
    void anywhereInTheBundle_data();
    void anywhereInTheBundle();
    void permissionCounts();
    void linksAreNotFollowed();
    void linkedBundle();
    void whatCannotBeReadIsPassedOver();
    void pathsBeyondTheSystemsLimit();
    void computedAfreshOnEachRequest();
    void unsupported_data();
    void unsupported();
    void unknownProcessor();

private:
    QByteArray path(const QByteArray &relativePath) const { return m_path + '/' + relativePath; }
    QUrl url(const QByteArray &relativePath) const { return fileURLFromPath(path(relativePath), FileKind::File); }
    void addExecutable(const QByteArray &relativePath, const QByteArray &content) const;
    Executables executables() const { return m_bundle->executableFileURLsAndArchitectures(); }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<TemporaryFolder> m_folder;
    QByteArray m_path;
    std::shared_ptr<KRPluginBundle> m_bundle;
};

namespace {

constexpr auto x86_64 = MachOBuilder::x86_64;
constexpr auto arm64 = MachOBuilder::arm64;

const QStringList x86Names{u"x86_64"_s};
const QStringList armNames{u"arm64"_s, u"arm64e"_s};

} // namespace

void tst_KRPluginBundle_Architecture::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_folder = std::make_unique<TemporaryFolder>();
    m_path = m_folder->path("Tools.korvanplugin");
    writeFileAt(path("Contents/Korvan/manifest.json"), "{}");
    m_bundle = KRPluginBundle::pluginBundleWithURL(fileURLFromPath(m_path, FileKind::Folder));
    QVERIFY(m_bundle);
}

void tst_KRPluginBundle_Architecture::cleanup()
{
    m_bundle.reset();
    m_folder.reset();
    m_environment.reset();
}

void tst_KRPluginBundle_Architecture::addExecutable(const QByteArray &relativePath, const QByteArray &content) const
{
    writeFileAt(path(relativePath), content);
    QCOMPARE(::chmod(path(relativePath).constData(), 0755), 0);
}

void tst_KRPluginBundle_Architecture::noExecutables()
{
    QCOMPARE(executables(), Executables());
    for (const auto processor : {x86_64, arm64}) {
        m_environment->architecture = processor;
        QVERIFY(!m_bundle->hasUnsupportedBinaries());
    }
}

void tst_KRPluginBundle_Architecture::scriptsAndOthersAreNone_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("shell script") << "#!/bin/sh\nexit 0\n"_ba;
    QTest::newRow("program of another system") << QByteArray("\x7F"
                                                             "ELF\x02\x01\x01")
                                                      .leftJustified(64, '\0');
    QTest::newRow("program of 32 bits") << MachOBuilder::plain32(MachOBuilder::x86);
    QTest::newRow("empty file") << QByteArray();
}

void tst_KRPluginBundle_Architecture::scriptsAndOthersAreNone()
{
    QFETCH(QByteArray, content);
    addExecutable("Contents/Resources/tool", content);
    QCOMPARE(executables(), Executables());
    QVERIFY(!m_bundle->hasUnsupportedBinaries());
}

void tst_KRPluginBundle_Architecture::universalExecutable()
{
    addExecutable("Contents/Resources/tool", MachOBuilder::universal({x86_64, arm64}));
    QCOMPARE(executables(), (Executables{{url("Contents/Resources/tool"), x86Names + armNames}}));
}

void tst_KRPluginBundle_Architecture::anywhereInTheBundle_data()
{
    QTest::addColumn<QByteArray>("path");

    QTest::newRow("at the top") << "tool"_ba;
    QTest::newRow("far down") << "a/b/c/d/e/f/g/h/tool"_ba;
    QTest::newRow("hidden file") << "Contents/.tool"_ba;
    QTest::newRow("in a hidden folder") << "Contents/.tools/tool"_ba;
    QTest::newRow("in a package") << "Contents/Helper.app/Contents/MacOS/Helper"_ba;
    QTest::newRow("in a plug-in within") << "Contents/Inner.korvanplugin/tool"_ba;
    QTest::newRow("with a number sign, a percent sign and spaces") << "Contents/a #1 100%/to ol"_ba;
    QTest::newRow("with bytes that are no UTF-8") << "Contents/\xFF/\xFEtool"_ba;
}

void tst_KRPluginBundle_Architecture::anywhereInTheBundle()
{
    QFETCH(QByteArray, path);
    addExecutable(path, MachOBuilder::plain64(x86_64));
    QCOMPARE(executables(), (Executables{{url(path), x86Names}}));
}

void tst_KRPluginBundle_Architecture::permissionCounts()
{
    writeFileAt(path("library"), MachOBuilder::plain64(arm64));
    QCOMPARE(executables(), Executables());
    QVERIFY(!m_bundle->hasUnsupportedBinaries());
}

void tst_KRPluginBundle_Architecture::linksAreNotFollowed()
{
    const auto outside = m_folder->path("outside");
    writeFileAt(outside + "/tool", MachOBuilder::plain64(arm64));
    QCOMPARE(::chmod((outside + "/tool").constData(), 0755), 0);
    makeLinkAt(path("link to a file"), outside + "/tool");
    makeLinkAt(path("link to a folder"), outside);
    makeLinkAt(path("Contents/circle"), "..");
    makeLinkAt(path("dangling"), "missing");
    addExecutable("tool", MachOBuilder::plain64(x86_64));
    QCOMPARE(executables(), (Executables{{url("tool"), x86Names}}));
}

void tst_KRPluginBundle_Architecture::linkedBundle()
{
    addExecutable("tool", MachOBuilder::plain64(x86_64));
    const auto link = m_folder->path("Linked.korvanplugin");
    makeLinkAt(link, m_path);
    const auto bundle = KRPluginBundle::pluginBundleWithURL(fileURLFromPath(link, FileKind::Folder));
    QVERIFY(bundle);
    QCOMPARE(bundle->executableFileURLsAndArchitectures(),
        (Executables{{fileURLFromPath(link + "/tool", FileKind::File), x86Names}}));
}

void tst_KRPluginBundle_Architecture::whatCannotBeReadIsPassedOver()
{
    // Root may read everything; the pipes and the socket stand in the way of anybody.
    addExecutable("closed/tool", MachOBuilder::plain64(x86_64));
    QCOMPARE(::chmod(path("closed").constData(), 0), 0);
    addExecutable("secret", MachOBuilder::plain64(x86_64));
    QCOMPARE(::chmod(path("secret").constData(), 0111), 0);
    makePipeAt(path("pipe"));
    QCOMPARE(::chmod(path("pipe").constData(), 0777), 0);
    makeSocketAt(path("socket"));
    addExecutable("tool", MachOBuilder::plain64(x86_64));
    const auto found = executables();
    QCOMPARE(::chmod(path("closed").constData(), 0755), 0);
    QCOMPARE(found.value(url("tool")), x86Names);
    QVERIFY(!found.contains(url("pipe")));
    QVERIFY(!found.contains(url("socket")));
    const bool isRoot = ::geteuid() == 0;
    QCOMPARE(found.contains(url("closed/tool")), isRoot);
    QCOMPARE(found.contains(url("secret")), isRoot);
}

void tst_KRPluginBundle_Architecture::pathsBeyondTheSystemsLimit()
{
    addExecutable("tool", MachOBuilder::plain64(x86_64));
    auto inner = path("Contents/deep");
    const QByteArray longName(200, 'd');
    while (inner.size() < 3700)
        inner += '/' + longName;
    makeFolderAt(inner);
    // Made near the top, then moved down, to where no path leads any more.
    const auto tool = m_folder->path("far/") + longName + '/' + longName + "/tool";
    writeFileAt(tool, MachOBuilder::plain64(arm64));
    QCOMPARE(::chmod(tool.constData(), 0755), 0);
    renameAt(m_folder->path("far"), inner + "/far");
    QCOMPARE(executables(), (Executables{{url("tool"), x86Names}}));
}

void tst_KRPluginBundle_Architecture::computedAfreshOnEachRequest()
{
    QCOMPARE(executables().size(), 0);
    addExecutable("tool", MachOBuilder::plain64(x86_64));
    QCOMPARE(executables().size(), 1);
    addExecutable("other", MachOBuilder::plain64(arm64));
    QCOMPARE(executables().size(), 2);
    removeAt(m_path);
    QCOMPARE(executables().size(), 0);
}

void tst_KRPluginBundle_Architecture::unsupported_data()
{
    QTest::addColumn<quint32>("processor");
    QTest::addColumn<QByteArrayList>("tools");
    QTest::addColumn<bool>("expected");

    const auto onX86 = MachOBuilder::plain64(x86_64);
    const auto onArm = MachOBuilder::plain64(arm64);
    constexpr quint32 subtypeE = 2;
    const auto onArmE = MachOBuilder::plain64(arm64, MachOBuilder::ByteOrder::Little, subtypeE);
    const auto universal = MachOBuilder::universal({x86_64, arm64});
    QTest::newRow("x86 on x86") << x86_64 << QByteArrayList{onX86} << false;
    QTest::newRow("Arm on x86") << x86_64 << QByteArrayList{onArm} << true;
    QTest::newRow("x86 on Arm, translated or not") << arm64 << QByteArrayList{onX86} << true;
    QTest::newRow("Arm on Arm") << arm64 << QByteArrayList{onArm} << false;
    QTest::newRow("only arm64e on Arm") << arm64 << QByteArrayList{onArmE} << false;
    QTest::newRow("universal on x86") << x86_64 << QByteArrayList{universal} << false;
    QTest::newRow("universal on Arm") << arm64 << QByteArrayList{universal} << false;
    QTest::newRow("one of several on x86") << x86_64 << QByteArrayList{onX86, universal, onArm} << true;
    QTest::newRow("one of several on Arm") << arm64 << QByteArrayList{onArm, onX86, universal} << true;
    QTest::newRow("a script beside it") << arm64 << QByteArrayList{"#!/bin/sh\n", onArm} << false;
}

void tst_KRPluginBundle_Architecture::unsupported()
{
    QFETCH(quint32, processor);
    QFETCH(QByteArrayList, tools);
    QFETCH(bool, expected);
    m_environment->architecture = processor;
    for (qsizetype i = 0; i < tools.size(); ++i)
        addExecutable("Contents/Resources/tool " + QByteArray::number(i), tools[i]);
    QCOMPARE(m_bundle->hasUnsupportedBinaries(), expected);
}

void tst_KRPluginBundle_Architecture::unknownProcessor()
{
    for (const auto processor : {0U, 7U, 12U, 0x01000012U, 0x0200000CU}) {
        m_environment->architecture = processor;
        QVERIFY(m_bundle->hasUnsupportedBinaries());
    }
}

QTEST_GUILESS_MAIN(tst_KRPluginBundle_Architecture)
#include "tst_krpluginbundle_architecture.moc"
