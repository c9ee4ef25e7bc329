// Unpacking one entry, what the process runs out of, and how failures are told.

#include "support/PathFiles.h"
#include "support/archives/ZipBuilder.h"
#include "updates/ArchiveExtraction.h"

#include <QDir>
#include <QFile>
#include <QTranslator>
#include <QtTest>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_ArchiveExtraction_Entries : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void oneFile_data();
    void oneFile();
    void oneLinkThatCannotBeMadeIsNoError();
    void noHandleToBeHad();
    void fullDiskIsAnError();
    void madeErrors();
    void textsAreLocalized();

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

/// A limit of the process, for as long as this lives.
class Limit
{
public:
    Limit(__rlimit_resource resource, rlim_t value)
        : m_resource(resource)
    {
        ::getrlimit(m_resource, &m_before);
        const rlimit limit{value, m_before.rlim_max};
        ::setrlimit(m_resource, &limit);
    }
    ~Limit() { ::setrlimit(m_resource, &m_before); }
    Limit(const Limit &) = delete;
    Limit &operator=(const Limit &) = delete;

private:
    __rlimit_resource m_resource;
    rlimit m_before{};
};

} // namespace

QByteArray tst_ArchiveExtraction_Entries::content(const QByteArray &name) const
{
    QFile file(QString::fromUtf8(path(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

void tst_ArchiveExtraction_Entries::init()
{
    m_folder = std::make_unique<TemporaryFolder>();
}

void tst_ArchiveExtraction_Entries::oneFile_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<QString>("error");

    QTest::newRow("a file") << u"a/file"_s << QByteArray("new") << QString();
    QTest::newRow("over a file") << u"a/file"_s << QByteArray("old") << QString();
    QTest::newRow("over a folder") << u"a/file"_s << QByteArray("folder")
                                   << u"Could not create file to decompress to."_s;
    QTest::newRow("in a folder that is missing")
        << u"a/file"_s << QByteArray("missing/new") << u"Could not create file to decompress to."_s;
    QTest::newRow("an entry that is damaged")
        << u"damaged"_s << QByteArray("old") << u"Decompressing zip file failed."_s;
    QTest::newRow("an entry that is missing") << u"file"_s << QByteArray("old") << u"Decompressing zip file failed."_s;
    QTest::newRow("a link that is damaged")
        << u"damagedLink"_s << QByteArray("old") << u"Decompressing zip file failed."_s;
}

void tst_ArchiveExtraction_Entries::oneFile()
{
    QFETCH(QString, entry);
    QFETCH(QByteArray, target);
    QFETCH(QString, error);
    ZipPart damaged("damaged", "d");
    damaged.checksum = 1;
    ZipPart damagedLink("damagedLink", "d", ZipPart::link);
    damagedLink.checksum = 1;
    archive({{"a/file", "content"}, damaged, damagedLink});
    writeFileAt(path("old"), "old");
    makeFolderAt(path("folder"));

    const auto reader = LTZipReader::readerWithURL(url("zip"));
    KRError result;
    QCOMPARE(decompressFile(entry, *reader, url(target), &result), error.isEmpty());
    QCOMPARE(result, error.isEmpty() ? KRError() : failure(error));
    QCOMPARE(content(target), error.isEmpty() ? QByteArray("content") : QByteArray("(no file)"));
    QVERIFY(QFileInfo(QString::fromUtf8(path("folder"))).isDir());
}

void tst_ArchiveExtraction_Entries::oneLinkThatCannotBeMadeIsNoError()
{
    archive({{"link", "../some\xc3\xa9where", ZipPart::link}});
    const auto reader = LTZipReader::readerWithURL(url("zip"));
    QVERIFY(decompressFile(u"link"_s, *reader, url("link")));
    QCOMPARE(QFile::symLinkTarget(QString::fromUtf8(path("link"))),
        QDir::cleanPath(QString::fromUtf8(path("../some\xc3\xa9where"))));
    KRError error = untouched;
    makeFolderAt(path("folder"));
    for (const auto *const place : {"folder", "missing/link"})
        QVERIFY(decompressFile(u"link"_s, *reader, url(place), &error));
    QCOMPARE(error, untouched);
    QVERIFY(!QFileInfo(QString::fromUtf8(path("folder"))).isSymLink());
}

void tst_ArchiveExtraction_Entries::noHandleToBeHad()
{
    archive({{"file", "content"}});
    writeFileAt(path("target"), "old");
    const auto reader = LTZipReader::readerWithURL(url("zip"));
    const int next = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::close(next);
    KRError error;
    bool isDone = true;
    {
        const Limit limit(RLIMIT_NOFILE, rlim_t(next + 1)); // enough for the target's folder
        isDone = decompressFile(u"file"_s, *reader, url("target"), &error);
    }
    QVERIFY(!isDone);
    QCOMPARE(error, failure(u"Could not create file handle for writing decompressed data to."_s));
    QCOMPARE(content("target"), QByteArray("(no file)"));
}

void tst_ArchiveExtraction_Entries::fullDiskIsAnError()
{
    constexpr rlim_t room = 5000;
    archive({{"before", "b"}, {"file", QByteArray(10000, 'x')}, {"later", "l"}});
    KRError error;
    bool isDone = true;
    const auto usualHandler = std::signal(SIGXFSZ, SIG_IGN);
    {
        const Limit limit(RLIMIT_FSIZE, room);
        isDone = unpack(&error);
    }
    std::signal(SIGXFSZ, usualHandler);
    QVERIFY(!isDone);
    QCOMPARE(error, failure(u"Decompressing zip file failed."_s));
    QCOMPARE(content("in/before"), QByteArray("b"));
    QCOMPARE(content("in/file"), QByteArray("(no file)"));
    QCOMPARE(content("in/later"), QByteArray("(no file)"));
}

void tst_ArchiveExtraction_Entries::madeErrors()
{
    KRError error;
    QVERIFY(makeDecompressError(&error, u"a text"_s));
    QCOMPARE(error, failure(u"a text"_s));
    QVERIFY(makeDecompressError(nullptr, u"a text"_s));
}

void tst_ArchiveExtraction_Entries::textsAreLocalized()
{
    class Translator final : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *text, const char *, int) const override
        {
            return QByteArrayView(context) == "Localizable" ? u"«%1»"_s.arg(QString::fromUtf8(text)) : QString();
        }
    };
    archive({{"..", "x"}});
    Translator translator;
    QCoreApplication::installTranslator(&translator);
    KRError error;
    const bool isDone = unpack(&error);
    QCoreApplication::removeTranslator(&translator);
    QVERIFY(!isDone);
    QCOMPARE(error, failure(u"«Invalid file path within zip archive.»"_s));
}

QTEST_GUILESS_MAIN(tst_ArchiveExtraction_Entries)
#include "tst_archiveextraction_entries.moc"
