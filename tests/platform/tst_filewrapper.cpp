// Files and folders before they are on a disk, and how they get there.

#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FileWrapper.h"
#include "platform/FolderListing.h"
#include "support/PathFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QtTest>

#include <csignal>
#include <filesystem>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

class tst_FileWrapper : public QObject
{
    Q_OBJECT

private slots:
    void entriesByName();
    void writesATree();
    void writesAFile();
    void preferredNameOfTheTopDoesNotMatter();
    void whatIsThereStays_data();
    void whatIsThereStays();
    void placesThatAreNone_data();
    void placesThatAreNone();
    void namesThatLeadElsewhere_data();
    void namesThatLeadElsewhere();
    void takenBackWhenItFails();
    void takenBackWhenTheDiskIsFull();
};

namespace {

QUrl urlOf(const QByteArray &path)
{
    return fileURLFromPath(path, FileKind::Folder);
}

/// Everything below a folder: "path" of a folder, "path=content" of a file, "path>target" of a link.
QStringList contentsOf(const QByteArray &path)
{
    QStringList contents;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(path.toStdString())) {
        auto text = QString::fromStdString(entry.path().native().substr(std::size_t(path.size()) + 1));
        if (entry.is_symlink())
            text += u'>' + QString::fromStdString(std::filesystem::read_symlink(entry.path()).native());
        else if (entry.is_regular_file())
            text += u'=' + QString::fromUtf8(readFile(QByteArray(entry.path().c_str()), 1000).value());
        contents.append(text);
    }
    contents.sort();
    return contents;
}

/// top/{a/{file}, b}.
FileWrapper tree(const QString &fileName = u"file"_s, const QByteArray &content = "text")
{
    auto inner = FileWrapper::folder(u"a"_s);
    inner.addFileWrapper(FileWrapper::regularFile(u"good"_s, "good"));
    inner.addFileWrapper(FileWrapper::regularFile(fileName, content));
    auto top = FileWrapper::folder(u"top"_s);
    top.addFileWrapper(FileWrapper::regularFile(u"first"_s, ""));
    top.addFileWrapper(inner);
    top.addFileWrapper(FileWrapper::folder(u"b"_s));
    return top;
}

} // namespace

void tst_FileWrapper::entriesByName()
{
    auto folder = FileWrapper::folder(u"top"_s);
    QVERIFY(folder.addFileWrapper(FileWrapper::regularFile(u"b"_s, "1")));
    QVERIFY(folder.addFileWrapper(FileWrapper::folder(u"a"_s)));
    QVERIFY(!folder.addFileWrapper(FileWrapper::regularFile(u"b"_s, "2")));
    QCOMPARE(folder.fileWrappers().size(), std::size_t(2));
    QCOMPARE(folder.fileWrappers()[0].preferredFilename(), u"b"_s);
    QCOMPARE(folder.fileWrapperNamed(u"b"_s)->regularFileContents(), "1"_ba);
    QCOMPARE(folder.fileWrapperNamed(u"a"_s)->kind(), FileWrapper::Kind::Folder);
    QVERIFY(!folder.fileWrapperNamed(u"c"_s));

    auto file = FileWrapper::regularFile(u"file"_s, "");
    QVERIFY(!file.addFileWrapper(FileWrapper::folder(u"a"_s)));
    QVERIFY(file.fileWrappers().empty());
}

void tst_FileWrapper::writesATree()
{
    const TemporaryFolder folder;
    const auto error = tree(u"ü name"_s, "a\0b\r\n\xFF"_ba).writeToURL(urlOf(folder.path("new")));
    QVERIFY(!error);
    QCOMPARE(contentsOf(folder.path()),
        (QStringList{u"new"_s, u"new/a"_s, u"new/a/good=good"_s, u"new/a/ü name=a\0b\r\n\xFFFD"_s, u"new/b"_s,
            u"new/first="_s}));
    QCOMPARE(readFile(folder.path("new/a/ü name"), 100).value(), "a\0b\r\n\xFF"_ba);
}

void tst_FileWrapper::writesAFile()
{
    const TemporaryFolder folder;
    QVERIFY(!FileWrapper::regularFile(u"x"_s, "text").writeToURL(fileURLFromPath(folder.path("y"), FileKind::File)));
    QCOMPARE(contentsOf(folder.path()), QStringList{u"y=text"_s});
}

void tst_FileWrapper::preferredNameOfTheTopDoesNotMatter()
{
    const TemporaryFolder folder;
    QVERIFY(!FileWrapper::folder(u"../a/b"_s).writeToURL(urlOf(folder.path("c"))));
    QCOMPARE(contentsOf(folder.path()), QStringList{u"c"_s});
}

void tst_FileWrapper::whatIsThereStays_data()
{
    QTest::addColumn<QByteArray>("linkTarget");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("contents");

    QTest::newRow("file") << ""_ba
                          << "place"_ba << QStringList{u"place=old"_s};
    QTest::newRow("folder") << ""_ba
                            << "place/x"_ba << QStringList{u"place"_s, u"place/x=old"_s};
    QTest::newRow("link to a folder") << "folder"_ba
                                      << "folder/x"_ba
                                      << QStringList{u"folder"_s, u"folder/x=old"_s, u"place>folder"_s};
    QTest::newRow("link that leads nowhere") << "none"_ba
                                             << "x"_ba << QStringList{u"place>none"_s, u"x=old"_s};
}

void tst_FileWrapper::whatIsThereStays()
{
    QFETCH(QByteArray, linkTarget);
    QFETCH(QByteArray, file);
    const TemporaryFolder folder;
    writeFileAt(folder.path(file), "old");
    if (!linkTarget.isEmpty())
        makeLinkAt(folder.path("place"), linkTarget);

    const auto error = tree().writeToURL(urlOf(folder.path("place")));
    QVERIFY(error);
    QCOMPARE(*error, systemError(EEXIST));
    QCOMPARE(FileWrapper::regularFile(u"x"_s, "new").writeToURL(urlOf(folder.path("place"))), systemError(EEXIST));
    QTEST(contentsOf(folder.path()), "contents");
}

void tst_FileWrapper::placesThatAreNone_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<int>("code");
    QTest::newRow("no URL") << QUrl() << EINVAL;
    QTest::newRow("of the network") << QUrl(u"https://example.com/a"_s) << EINVAL;
    QTest::newRow("of another computer") << QUrl(u"file://example.com/tmp/a"_s) << EINVAL;
    QTest::newRow("with a zero") << QUrl(u"file:///tmp/a%00b"_s) << EINVAL;
    QTest::newRow("in a folder that is not there") << QUrl(u"file:///none/of/these"_s) << ENOENT;
    QTest::newRow("the root") << QUrl(u"file:///"_s) << EEXIST;
}

void tst_FileWrapper::placesThatAreNone()
{
    QFETCH(QUrl, url);
    QFETCH(int, code);
    QCOMPARE(tree().writeToURL(url), systemError(code));
}

void tst_FileWrapper::namesThatLeadElsewhere_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("the folder itself") << u"."_s;
    QTest::newRow("the folder around it") << u".."_s;
    QTest::newRow("through the folder around it") << u"../../outside"_s;
    QTest::newRow("in another folder") << u"b/c"_s;
    QTest::newRow("with a slash behind it") << u"c/"_s;
    QTest::newRow("absolute") << u"/tmp/korvan-outside"_s;
    QTest::newRow("with a zero") << u"c\0d"_s;
}

void tst_FileWrapper::namesThatLeadElsewhere()
{
    QFETCH(QString, name);
    const TemporaryFolder folder;
    const auto error = tree(name).writeToURL(urlOf(folder.path("new")));
    QVERIFY(error);
    QCOMPARE(error->code, EINVAL);
    QCOMPARE(error->localizedDescription, u"a/\"%1\": Invalid argument"_s.arg(name));
    QCOMPARE(contentsOf(folder.path()), QStringList());
}

void tst_FileWrapper::takenBackWhenItFails()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("beside"), "old");
    const auto tooLong = QString(300, u'x');
    const auto error = tree(tooLong).writeToURL(urlOf(folder.path("new")));
    QVERIFY(error);
    QCOMPARE(error->code, ENAMETOOLONG);
    QCOMPARE(error->localizedDescription, u"a/%1: File name too long"_s.arg(tooLong));
    QCOMPARE(contentsOf(folder.path()), QStringList{u"beside=old"_s});
}

void tst_FileWrapper::takenBackWhenTheDiskIsFull()
{
    const TemporaryFolder folder;
    struct rlimit usual;
    QVERIFY(::getrlimit(RLIMIT_FSIZE, &usual) == 0);
    auto limit = usual;
    limit.rlim_cur = 10'000;
    auto *const usualHandler = std::signal(SIGXFSZ, SIG_IGN);
    QVERIFY(::setrlimit(RLIMIT_FSIZE, &limit) == 0);
    const auto error = tree(u"large"_s, QByteArray(20'000, 'x')).writeToURL(urlOf(folder.path("new")));
    ::setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, usualHandler);
    QVERIFY(error);
    QCOMPARE(error->code, EFBIG);
    QCOMPARE(error->localizedDescription, u"a/large: File too large"_s);
    QCOMPARE(contentsOf(folder.path()), QStringList());
}

QTEST_GUILESS_MAIN(tst_FileWrapper)
#include "tst_filewrapper.moc"
