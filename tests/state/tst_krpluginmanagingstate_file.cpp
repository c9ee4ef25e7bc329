// The file behind the state of plug-ins: unreadable, interrupted, full, shared.

#include "platform/PropertyList.h"
#include "state/KRPluginManagingState.h"
#include "support/BundleBuilder.h"
#include "support/ForkedProcess.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>
#include <plist/plist.h>

#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_KRPluginManagingState_File : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void creationTouchesNothing();
    void missingFileIsAskedForAgain();
    void contentIsKeptUntilAChange();
    void binaryFileIsReadAndWrittenAsXML();
    void malformedEntryCostsNoOther();
    void identifiersOfAnyKind_data();
    void identifiersOfAnyKind();
    void identifierThatCannotBeKept();
    void garbageIsKeptBeside_data();
    void garbageIsKeptBeside();
    void garbageSurvivesACleanUp();
    void fileThatCannotBeReplaced();
    void fullDiskLosesTheChangeOnly();
    void readOnlyFolderLosesTheChangeOnly();
    void killedAtAnyMoment();
    void twoProcessesAtOnce();

private:
    QString path() const { return m_folder->filePath(u"PluginMetadata.plist"_s); }
    QUrl url() const { return QUrl::fromLocalFile(path()); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("nothing");
}

/// The state after so many changes, by whose parts it is known to be whole.
QString textOfGeneration(qlonglong generation)
{
    return QString::number(generation).repeated(1 + int(generation * 37 % 2000));
}

void writeGeneration(KRPluginManagingState &state, qlonglong generation)
{
    state.setPluginMetadaDictionary(
        QVariantMap{{u"generation"_s, generation}, {u"text"_s, textOfGeneration(generation)}}, u"plugin"_s);
}

/// -1 for a file that is broken.
qlonglong readGeneration(const QUrl &url)
{
    if (!QFile::exists(url.toLocalFile()))
        return 0;
    const KRPluginManagingState state(url);
    if (!state.metadata())
        return -1;
    const auto generation = state.metadataValueForKey(u"generation"_s, u"plugin"_s).toLongLong();
    const auto text = state.metadataValueForKey(u"text"_s, u"plugin"_s).toString();
    return text == textOfGeneration(generation) ? generation : -1;
}

/// Changes the file over and over, and says so each time in a byte.
void writeForEver(const QUrl &url, qlonglong firstGeneration, int report)
{
    KRPluginManagingState state(url);
    for (auto generation = firstGeneration;; ++generation) {
        writeGeneration(state, generation);
        if (::write(report, "x", 1) != 1)
            return;
    }
}

} // namespace

void tst_KRPluginManagingState_File::creationTouchesNothing()
{
    const KRPluginManagingState state(url());
    QCOMPARE(state.metadataURL(), url());
    QVERIFY(QDir(m_folder->path()).isEmpty());
}

void tst_KRPluginManagingState_File::missingFileIsAskedForAgain()
{
    const KRPluginManagingState state(url());
    QVERIFY(!state.metadata());
    writeFile(path(), "<plist version=\"1.0\"><dict><key>a</key><dict/></dict></plist>");
    QCOMPARE(state.metadata(), std::optional(QVariantMap{{u"a"_s, QVariantMap()}}));
}

void tst_KRPluginManagingState_File::contentIsKeptUntilAChange()
{
    KRPluginManagingState state(url());
    QVERIFY(state.setMetadataValue(true, u"disabled"_s, u"a"_s));
    QVERIFY(state.metadata());
    writeFile(path(), "<plist version=\"1.0\"><dict><key>b</key><dict/></dict></plist>");
    QVERIFY(state.metadata()->contains(u"a"_s));
    state.setMetadata(std::nullopt);
    QVERIFY(state.metadata()->contains(u"b"_s));
    state.setMetadata(QVariantMap{{u"c"_s, QVariantMap()}});
    QVERIFY(state.metadata()->contains(u"c"_s));
}

void tst_KRPluginManagingState_File::binaryFileIsReadAndWrittenAsXML()
{
    plist_t list = nullptr;
    const QByteArray xml =
        "<plist version=\"1.0\"><dict><key>a</key><dict><key>disabled</key><true/></dict></dict></plist>";
    ::plist_from_xml(xml.constData(), uint32_t(xml.size()), &list);
    char *bytes = nullptr;
    uint32_t length = 0;
    ::plist_to_bin(list, &bytes, &length);
    writeFile(path(), QByteArray(bytes, qsizetype(length)));
    ::plist_to_bin_free(bytes);
    ::plist_free(list);
    QVERIFY(contentOf(path()).startsWith("bplist"));

    KRPluginManagingState state(url());
    QVERIFY(!state.shouldEnablePluginIdentifier(u"a"_s, u"1.0"_s));
    state.setEnabled(false, u"b"_s, u"1.0"_s);
    QVERIFY(contentOf(path()).startsWith("<?xml"));
    QVERIFY(!state.shouldEnablePluginIdentifier(u"a"_s, u"1.0"_s));
}

void tst_KRPluginManagingState_File::malformedEntryCostsNoOther()
{
    writeFile(path(),
        "<plist "
        "version=\"1.0\"><dict><key>a</key><string>off</string><key>b</key><dict><key>disabled</key><true/></dict>"
        "<key>c</key><array/><key>d</key><dict><key>disabled</key><string>yes</string></dict></dict></plist>");
    KRPluginManagingState state(url());
    QVERIFY(state.shouldEnablePluginIdentifier(u"a"_s, u"1.0"_s));
    QVERIFY(!state.shouldEnablePluginIdentifier(u"b"_s, u"1.0"_s));
    QVERIFY(state.shouldEnablePluginIdentifier(u"c"_s, u"1.0"_s));
    QVERIFY(state.shouldEnablePluginIdentifier(u"d"_s, u"1.0"_s));
    state.setEnabled(false, u"e"_s, u"1.0"_s);
    QCOMPARE(state.metadata()->keys(), QStringList({u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s}));
    QCOMPARE(state.metadata()->value(u"a"_s), QVariant(u"off"_s));
}

void tst_KRPluginManagingState_File::identifiersOfAnyKind_data()
{
    QTest::addColumn<QString>("identifier");

    QTest::newRow("empty") << u""_s;
    QTest::newRow("markup") << u"</key><true/>"_s;
    QTest::newRow("white space") << u"a\t\n\r"_s;
    QTest::newRow("beyond ASCII") << u"Plüg-in \U0001F600"_s;
    QTest::newRow("long") << u"x"_s.repeated(100'000);
}

void tst_KRPluginManagingState_File::identifiersOfAnyKind()
{
    QFETCH(QString, identifier);
    KRPluginManagingState state(url());
    state.setEnabled(false, identifier, u"1.0"_s);
    QVERIFY(!KRPluginManagingState(url()).shouldEnablePluginIdentifier(identifier, u"1.0"_s));
}

void tst_KRPluginManagingState_File::identifierThatCannotBeKept()
{
    KRPluginManagingState state(url());
    state.setEnabled(false, u"a"_s, u"1.0"_s);
    QVERIFY(!state.setMetadataValue(u"x"_s, u"key"_s, u"a\0b"_s));
    QCOMPARE(state.metadata()->keys(), QStringList{u"a"_s});
    QVERIFY(!state.metadata()->value(u"a"_s).toMap().contains(u"key"_s));
}

void tst_KRPluginManagingState_File::garbageIsKeptBeside_data()
{
    QTest::addColumn<QByteArray>("garbage");

    QTest::newRow("garbage") << QByteArray("garbage");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("an array") << QByteArray("<plist version=\"1.0\"><array/></plist>");
    QTest::newRow("cut off") << QByteArray(
        "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>a</key><dict><key>dis");
}

void tst_KRPluginManagingState_File::garbageIsKeptBeside()
{
    QFETCH(QByteArray, garbage);
    writeFile(path(), garbage);
    KRPluginManagingState state(url());
    QVERIFY(!state.metadata());
    QVERIFY(state.shouldEnablePluginIdentifier(u"a"_s, u"1.0"_s));
    QCOMPARE(contentOf(path()), garbage);

    QVERIFY(state.setMetadataValue(true, u"disabled"_s, u"b"_s));

    QCOMPARE(contentOf(path() + u".unreadable"_s), garbage);
    QVERIFY(!state.shouldEnablePluginIdentifier(u"b"_s, u"1.0"_s));
}

void tst_KRPluginManagingState_File::garbageSurvivesACleanUp()
{
    writeFile(path(), "garbage");
    KRPluginManagingState state(url());
    state.updateMetadataWithPluginIndentifiers({});
    QCOMPARE(contentOf(path()), "garbage");
    state.resetIncompatiblePluginMetadata();
    QCOMPARE(contentOf(path() + u".unreadable"_s), "garbage");
    QCOMPARE(state.metadata(), std::optional(QVariantMap()));
}

void tst_KRPluginManagingState_File::fileThatCannotBeReplaced()
{
    QVERIFY(QDir().mkpath(path())); // a folder in the file's place
    KRPluginManagingState state(url());
    QVERIFY(!state.setMetadataValue(true, u"disabled"_s, u"a"_s));
    state.setEnabled(false, u"a"_s, u"1.0"_s);
    state.resetIncompatiblePluginMetadata();
    QVERIFY(state.shouldEnablePluginIdentifier(u"a"_s, u"1.0"_s));
    QVERIFY(QFileInfo(path()).isDir());
}

void tst_KRPluginManagingState_File::fullDiskLosesTheChangeOnly()
{
    const auto result = resultOnSmallDisk(m_folder->path(), 65536, [&]() -> QByteArray {
        KRPluginManagingState state(url());
        if (!state.setMetadataValue(u"x"_s.repeated(20'000), u"text"_s, u"a"_s))
            return "cannot write at all";
        if (state.setMetadataValue(u"y"_s.repeated(60'000), u"text"_s, u"b"_s))
            return "the disk is not full";
        return KRPluginManagingState(url()).metadata()->keys().join(u' ').toUtf8();
    });
    QCOMPARE(result, "a");
}

void tst_KRPluginManagingState_File::readOnlyFolderLosesTheChangeOnly()
{
    const auto result = resultOnSmallDisk(m_folder->path(), 65536, [&]() -> QByteArray {
        KRPluginManagingState state(url());
        state.setEnabled(false, u"a"_s, u"1.0"_s);
        makeSmallDiskReadOnly(m_folder->path());
        if (state.setMetadataValue(true, u"disabled"_s, u"b"_s))
            return "it was written";
        state.setEnabled(true, u"a"_s, u"1.0"_s);
        return state.metadata()->keys().join(u' ').toUtf8();
    });
    QCOMPARE(result, "a");
}

void tst_KRPluginManagingState_File::killedAtAnyMoment()
{
    constexpr int writes = 10'000;
    constexpr int mostPerProcess = 200;
    QRandomGenerator random(20261121);
    qlonglong generation = 0;
    for (int written = 0; written < writes;) {
        int ends[2];
        QCOMPARE(::pipe(ends), 0);
        ForkedProcess writer([&] { writeForEver(url(), generation + 1, ends[1]); });
        ::close(ends[1]);
        const int count = 1 + int(random.bounded(mostPerProcess));
        int reported = 0;
        char byte = 0;
        while (reported < count && ::read(ends[0], &byte, 1) == 1)
            ++reported;
        for (volatile unsigned work = random.bounded(200'000U); work > 0;) // somewhere inside of the next write
            work = work - 1;
        writer.kill();
        writer.wait();
        ::close(ends[0]);
        QCOMPARE(reported, count);

        const auto found = readGeneration(url());
        QVERIFY2(found >= generation + reported, qPrintable(u"%1 after %2"_s.arg(found).arg(generation + reported)));
        written += int(found - generation);
        generation = found;
    }
    QCOMPARE(QDir(m_folder->path()).entryList({u"*.unreadable*"_s}), QStringList());
}

void tst_KRPluginManagingState_File::twoProcessesAtOnce()
{
    const auto writeMany = [this] {
        KRPluginManagingState state(url());
        for (int generation = 1; generation <= 500; ++generation)
            writeGeneration(state, generation);
    };
    ForkedProcess first(writeMany);
    ForkedProcess second(writeMany);
    for (int reads = 0; reads < 1000; ++reads)
        QVERIFY(readGeneration(url()) >= 0);
    QCOMPARE(first.wait(), 0);
    QCOMPARE(second.wait(), 0);
    QCOMPARE(readGeneration(url()), 500);
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{u"PluginMetadata.plist"_s});
}

QTEST_APPLESS_MAIN(tst_KRPluginManagingState_File)
#include "tst_krpluginmanagingstate_file.moc"
