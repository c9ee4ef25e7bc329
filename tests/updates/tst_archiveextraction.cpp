// Unpacking: the order of the checks, their texts, and what lies in the destination afterwards.

#include "support/PathFiles.h"
#include "support/archives/ZipBuilder.h"
#include "updates/ArchiveExtraction.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_ArchiveExtraction : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void unpacks_data();
    void unpacks();
    void climbingPathFailsBeforeAnythingLater();
    void failureLeavesWhatWasUnpacked();
    void failedEntryLeavesNothing();
    void archiveWithoutEntriesIsAFailureWithoutError_data();
    void archiveWithoutEntriesIsAFailureWithoutError();
    void destinationIsMadeFirst();
    void destinationThatCannotBeMadeKeepsItsOwnError_data();
    void destinationThatCannotBeMadeKeepsItsOwnError();
    void destinationMayBeALink();
    void nobodyHasToTakeTheError();
    void newEntriesHaveTheUsualAttributes();
    void whatStandsInTheWay_data();
    void whatStandsInTheWay();
    void fileWithAnotherNameElsewhereKeepsItsContent();
    void repeatedDownloadIsSimplyRepeated();
    void linksOfTheDestinationAreChecked_data();
    void linksOfTheDestinationAreChecked();
    void lastOfEqualPathsStays();

private:
    QByteArray path(const QByteArray &name) const { return m_folder->path(name); }
    QUrl url(const QByteArray &name) const { return QUrl::fromLocalFile(QString::fromUtf8(path(name))); }
    QByteArray content(const QByteArray &name) const;
    void archive(const std::vector<ZipPart> &parts) const { writeFileAt(path("zip"), ZipBuilder(parts).bytes()); }
    bool unpack(KRError *error = nullptr) const { return decompressPluginZip(url("zip"), url("in/"), error); }

    std::unique_ptr<TemporaryFolder> m_folder;
};

namespace {

KRError failure(const QString &text)
{
    return {u"com.veldmark.pluginmanager.updating"_s, 0, text};
}

const KRError untouched{u"untouched"_s, 7, u"untouched"_s};

} // namespace

QByteArray tst_ArchiveExtraction::content(const QByteArray &name) const
{
    QFile file(QString::fromUtf8(path(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

void tst_ArchiveExtraction::init()
{
    m_folder = std::make_unique<TemporaryFolder>();
}

void tst_ArchiveExtraction::unpacks_data()
{
    QTest::addColumn<QByteArray>("archive");

    const auto text = QByteArray("content ").repeated(1000);
    const auto row = [&](const char *tag, auto change) {
        ZipPart part("a/b/c/file", text);
        change(part);
        QTest::newRow(tag) << ZipBuilder().add(part).bytes();
    };
    using Descriptor = ZipPart::Descriptor;
    row("stored, three folders deep", [](ZipPart &) {});
    row("deflated", [](ZipPart &part) { part.deflated(); });
    row("sizes behind the data", [](ZipPart &part) { part.deflated().withDescriptor(Descriptor::WithSignature); });
    row("sizes behind the data without a signature",
        [](ZipPart &part) { part.deflated().withDescriptor(Descriptor::WithoutSignature); });
    row("stored with sizes behind the data", [](ZipPart &part) { part.withDescriptor(Descriptor::WithSignature); });
    row("large numbers", [](ZipPart &part) { part.deflated().large(); });
    row("large numbers behind the data",
        [](ZipPart &part) { part.deflated().large().withDescriptor(Descriptor::WithSignature); });
    row("large numbers behind the data without a signature",
        [](ZipPart &part) { part.large().withDescriptor(Descriptor::WithoutSignature); });
    row("from a system without permissions", [](ZipPart &part) {
        part.madeBy = 0;
        part.mode = ZipPart::link;
    });
    const ZipBuilder file({ZipPart("a/b/c/file", text).deflated(), {"other"}});
    QTest::newRow("a large end") << ZipBuilder(file).withLargeEnd().bytes();
    QTest::newRow("a comment") << ZipBuilder(file).comment("a comment").bytes();
    QTest::newRow("folders' entries and resource forks are passed over") << ZipBuilder(
        {{"a/"}, {"__MACOSX/a/._file", "fork"}, {"__MACOSX", "fork"}, {"__MACOSXfile", "fork"},
            {"a/b/c/file", text}}).bytes();
}

void tst_ArchiveExtraction::unpacks()
{
    QFETCH(QByteArray, archive);
    writeFileAt(path("zip"), archive);
    KRError error = untouched;
    QVERIFY(unpack(&error));
    QCOMPARE(error, untouched);
    QCOMPARE(content("in/a/b/c/file"), QByteArray("content ").repeated(1000));
    QVERIFY(QDir(QString::fromUtf8(path("in"))).entryList({u"__*"_s}).isEmpty());
}

void tst_ArchiveExtraction::climbingPathFailsBeforeAnythingLater()
{
    archive({{"before", "b"}, {"../evil", "e"}, {"later", "l"}});
    KRError error;
    QVERIFY(!unpack(&error));
    QCOMPARE(error, failure(u"Invalid file path within zip archive."_s));
    QCOMPARE(content("in/before"), QByteArray("b"));
    QCOMPARE(content("in/later"), QByteArray("(no file)"));
    QCOMPARE(content("evil"), QByteArray("(no file)"));
}

void tst_ArchiveExtraction::failureLeavesWhatWasUnpacked()
{
    archive({{"a/before", "b"}, {"link", "a", ZipPart::link}, {"two..dots/file", "e"}, {"later", "l"}});
    QVERIFY(!unpack());
    QCOMPARE(content("in/link/before"), QByteArray("b"));
    QCOMPARE(content("in/later"), QByteArray("(no file)"));
}

void tst_ArchiveExtraction::failedEntryLeavesNothing()
{
    ZipPart damaged("file", "content");
    damaged.checksum = 1;
    archive({damaged});
    writeFileAt(path("in/file"), "from an earlier version");
    KRError error;
    QVERIFY(!unpack(&error));
    QCOMPARE(error, failure(u"Decompressing zip file failed."_s));
    QCOMPARE(content("in/file"), QByteArray("(no file)"));
}

void tst_ArchiveExtraction::archiveWithoutEntriesIsAFailureWithoutError_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("no entries") << ZipBuilder().bytes();
    QTest::newRow("no archive") << QByteArray("<html></html>");
    QTest::newRow("no file") << QByteArray();
}

void tst_ArchiveExtraction::archiveWithoutEntriesIsAFailureWithoutError()
{
    QFETCH(QByteArray, bytes);
    if (!bytes.isEmpty())
        writeFileAt(path("zip"), bytes);
    KRError error = untouched;
    QVERIFY(!unpack(&error));
    QCOMPARE(error, untouched);
    QVERIFY(QFileInfo(QString::fromUtf8(path("in"))).isDir());
}

void tst_ArchiveExtraction::destinationIsMadeFirst()
{
    archive({{"file", "f"}});
    QVERIFY(decompressPluginZip(url("zip"), url("new/newer/newest/")));
    QCOMPARE(content("new/newer/newest/file"), QByteArray("f"));
}

void tst_ArchiveExtraction::destinationThatCannotBeMadeKeepsItsOwnError_data()
{
    QTest::addColumn<QUrl>("destination");
    QTest::addColumn<int>("code");

    m_folder = std::make_unique<TemporaryFolder>();
    QTest::newRow("a file is there") << QUrl(u"file:///dev/null/"_s) << ENOTDIR;
    QTest::newRow("a file is on the way") << QUrl(u"file:///dev/null/below/"_s) << ENOTDIR;
    QTest::newRow("none") << QUrl() << ENOENT;
    QTest::newRow("not a file's") << QUrl(u"https://example.com/in/"_s) << ENOENT;
}

void tst_ArchiveExtraction::destinationThatCannotBeMadeKeepsItsOwnError()
{
    QFETCH(QUrl, destination);
    archive({{"file", "f"}});
    KRError error;
    QVERIFY(!decompressPluginZip(url("zip"), destination, &error));
    QCOMPARE(error.domain, u"posix"_s);
    QTEST(error.code, "code");
    QVERIFY(!decompressPluginZip(url("zip"), destination));
}

void tst_ArchiveExtraction::destinationMayBeALink()
{
    archive({{"a/file", "f"}});
    makeFolderAt(path("real"));
    makeLinkAt(path("in"), "real");
    QVERIFY(unpack());
    QCOMPARE(content("real/a/file"), QByteArray("f"));
}

void tst_ArchiveExtraction::nobodyHasToTakeTheError()
{
    archive({{"../file", "f"}});
    QVERIFY(!unpack());
}

void tst_ArchiveExtraction::newEntriesHaveTheUsualAttributes()
{
    const auto before = ::umask(027);
    archive({{"folder/", {}, 0040777}, {"folder/file", "f", 0106777}, {"script", "#!", 0100755}});
    const bool isDone = unpack();
    ::umask(before);
    QVERIFY(isDone);
    struct stat status
    { };
    QCOMPARE(::stat(path("in/folder").constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777, mode_t(0750));
    for (const auto *const name : {"in/folder/file", "in/script"}) {
        QCOMPARE(::stat(path(name).constData(), &status), 0);
        QCOMPARE(status.st_mode & 07777, mode_t(0640));
    }
}

void tst_ArchiveExtraction::whatStandsInTheWay_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<QString>("error");

    const auto none = QString();
    QTest::newRow("a file is replaced") << QByteArray("file") << none;
    QTest::newRow("a file that cannot be written is replaced") << QByteArray("sealed") << none;
    QTest::newRow("a link to a file outside is replaced") << QByteArray("linkToFile") << none;
    QTest::newRow("a link to a folder outside is replaced") << QByteArray("linkToFolder") << none;
    QTest::newRow("a link to nowhere is replaced") << QByteArray("deadLink") << none;
    QTest::newRow("a pipe is replaced") << QByteArray("pipe") << none;
    QTest::newRow("a folder is not") << QByteArray("folder") << u"Could not create file to decompress to."_s;
}

void tst_ArchiveExtraction::whatStandsInTheWay()
{
    QFETCH(QByteArray, what);
    QFETCH(QString, error);
    writeFileAt(path("out/kept"), "kept");
    writeFileAt(path("in/file"), "longer than what comes");
    writeFileAt(path("in/sealed"), "sealed");
    ::chmod(path("in/sealed").constData(), 0400);
    makeLinkAt(path("in/linkToFile"), "../out/kept");
    makeLinkAt(path("in/linkToFolder"), "../out");
    makeLinkAt(path("in/deadLink"), "../out/new");
    makePipeAt(path("in/pipe"));
    writeFileAt(path("in/folder/kept"), "kept");
    archive({{what, "new"}});

    KRError result;
    QCOMPARE(unpack(&result), error.isEmpty());
    QCOMPARE(result.localizedDescription, error);
    if (error.isEmpty())
        QCOMPARE(content("in/" + what), QByteArray("new"));
    QVERIFY(!QFileInfo(QString::fromUtf8(path("in/" + what))).isSymLink());
    QCOMPARE(content("in/folder/kept"), QByteArray("kept"));
    QCOMPARE(content("out/kept"), QByteArray("kept"));
    QCOMPARE(QDir(QString::fromUtf8(path("out"))).entryList(QDir::Files), QStringList{u"kept"_s});
}

void tst_ArchiveExtraction::fileWithAnotherNameElsewhereKeepsItsContent()
{
    writeFileAt(path("out/kept"), "kept");
    makeFolderAt(path("in"));
    QCOMPARE(::link(path("out/kept").constData(), path("in/file").constData()), 0);
    archive({{"file", "new"}});
    QVERIFY(unpack());
    QCOMPARE(content("in/file"), QByteArray("new"));
    QCOMPARE(content("out/kept"), QByteArray("kept"));
}

void tst_ArchiveExtraction::repeatedDownloadIsSimplyRepeated()
{
    archive({{"a/file", "f"}, {"link", "a", ZipPart::link}, {"link/through", "t"}});
    for (int round = 0; round < 3; ++round) {
        QVERIFY(unpack());
        QCOMPARE(content("in/link/file"), QByteArray("f"));
        QCOMPARE(content("in/a/through"), QByteArray("t"));
    }
}

void tst_ArchiveExtraction::linksOfTheDestinationAreChecked_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<bool>("isDone");

    QTest::newRow("inside") << QByteArray("real") << true;
    QTest::newRow("around and back inside") << QByteArray("../in/real") << true;
    QTest::newRow("outside") << QByteArray("../out") << false;
}

void tst_ArchiveExtraction::linksOfTheDestinationAreChecked()
{
    QFETCH(QByteArray, target);
    QFETCH(bool, isDone);
    makeFolderAt(path("out"));
    makeFolderAt(path("in/real"));
    makeLinkAt(path("in/link"), target);
    archive({{"link/new/file", "f"}});
    KRError error;
    QCOMPARE(unpack(&error), isDone);
    const auto text =
        u"Can not confirm that the created intermediate folders are sub folders of the destination folder."_s;
    QCOMPARE(error, isDone ? KRError() : failure(text));
    QCOMPARE(QFileInfo::exists(QString::fromUtf8(path("in/real/new/file"))), isDone);
    QVERIFY(QDir(QString::fromUtf8(path("out"))).isEmpty());
}

void tst_ArchiveExtraction::lastOfEqualPathsStays()
{
    archive({{"file", "first"}, {"other", "o"}, {"file", "second"}, {"link", "other", ZipPart::link}, {"link", "l"}});
    QVERIFY(unpack());
    QCOMPARE(content("in/file"), QByteArray("second"));
    QCOMPARE(content("in/link"), QByteArray("l"));
    QCOMPARE(content("in/other"), QByteArray("o"));
}

QTEST_GUILESS_MAIN(tst_ArchiveExtraction)
#include "tst_archiveextraction.moc"
