// What an archive holds, what of it can be read, and what it may cost.

#include "platform/archive/LTZipReader.h"
#include "support/PathFiles.h"
#include "support/archives/ZipBuilder.h"

#include <QtTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_LTZipReader : public QObject
{
    Q_OBJECT

private slots:
    void contentsComeInTheArchivesOrder();
    void noArchiveHasNoContents_data();
    void noArchiveHasNoContents();
    void paths_data();
    void paths();
    void data_data();
    void data();
    void symbolicLinks_data();
    void symbolicLinks();
    void entriesOfTheSamePath();
    void missingEntries();
    void readAgainInAnyOrder();
    void budgets_data();
    void budgets();
    void folderBudget_data();
    void folderBudget();
    void tooManyEntries_data();
    void tooManyEntries();
    void fileStaysTheSameWhenAnotherTakesItsName();
    void archiveThatShrinksMeanwhile();

private:
    std::unique_ptr<LTZipReader> reader(const QByteArray &archive, const ZipBudget &budget = {}) const
    {
        writeFileAt(m_folder.path("zip"), archive);
        return LTZipReader::readerWithURL(url(), budget);
    }
    QUrl url() const { return QUrl::fromLocalFile(QString::fromUtf8(m_folder.path("zip"))); }

    TemporaryFolder m_folder;
};

void tst_LTZipReader::contentsComeInTheArchivesOrder()
{
    const auto zip = reader(ZipBuilder({{"z/"}, {"z/file"}, {"a"}, {"m/n/o"}}).bytes());
    QCOMPARE(zip->contents(), (QStringList{u"z/"_s, u"z/file"_s, u"a"_s, u"m/n/o"_s}));
}

void tst_LTZipReader::noArchiveHasNoContents_data()
{
    QTest::addColumn<QUrl>("url");

    QTest::newRow("no URL") << QUrl();
    QTest::newRow("no file") << QUrl(u"file:///nowhere/at/all.zip"_s);
    QTest::newRow("a folder") << QUrl(u"file:///tmp/"_s);
    QTest::newRow("a device") << QUrl(u"file:///dev/zero"_s);
    QTest::newRow("not a file's") << QUrl(u"https://example.com/a.zip"_s);
    QTest::newRow("a zero in the path") << QUrl(u"file:///tmp/a%00b"_s);
}

void tst_LTZipReader::noArchiveHasNoContents()
{
    QFETCH(QUrl, url);
    const auto zip = LTZipReader::readerWithURL(url);
    QVERIFY(zip->contents().isEmpty());
    KRError error;
    QVERIFY(!zip->rawDataAtSubpath(u"file"_s, &error));
    QVERIFY(!error.localizedDescription.isEmpty());
    QVERIFY(!zip->isSymbolicLink(u"file"_s));
}

void tst_LTZipReader::paths_data()
{
    constexpr quint16 utf8 = 1 << 11;
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<quint16>("flags");
    QTest::addColumn<QByteArray>("extra");
    QTest::addColumn<QStringList>("contents");

    const QByteArray none;
    QTest::newRow("ASCII") << QByteArray("file") << quint16(0) << none << QStringList{u"file"_s};
    QTest::newRow("UTF-8, marked") << QByteArray("caf\xc3\xa9") << utf8 << none << QStringList{u"café"_s};
    QTest::newRow("UTF-8, not marked") << QByteArray("caf\xc3\xa9") << quint16(0) << none << QStringList{u"café"_s};
    QTest::newRow("the code page") << QByteArray("caf\x82 \xe1") << quint16(0) << none << QStringList{u"café ß"_s};
    QTest::newRow("neither, marked as UTF-8") << QByteArray("caf\x82") << utf8 << none << QStringList();
    QTest::newRow("overlong, marked as UTF-8") << QByteArray("\xc0\xae") << utf8 << none << QStringList();
    QTest::newRow("overlong, not marked") << QByteArray("\xc0\xae") << quint16(0) << none << QStringList{u"└«"_s};
    QTest::newRow("half a character pair") << QByteArray("\xed\xa0\x80") << utf8 << none << QStringList();
    QTest::newRow("a zero") << QByteArray("a\0b", 3) << quint16(0) << none << QStringList{QString::fromUtf8("a\0b", 3)};
    QTest::newRow("a zero in the code page") << QByteArray("a\0\x82", 3) << quint16(0) << none << QStringList();
    QTest::newRow("no name") << QByteArray() << quint16(0) << none << QStringList{QString()};
    QTest::newRow("an unknown field") << QByteArray("file") << quint16(0) << QByteArray("\x99\x99\x02\x00xy", 6)
                                      << QStringList{u"file"_s};
}

void tst_LTZipReader::paths()
{
    QFETCH(QByteArray, name);
    QFETCH(quint16, flags);
    QFETCH(QByteArray, extra);
    QFETCH(QStringList, contents);
    ZipPart part(name, "content");
    part.flags = flags;
    part.extra = extra;
    const auto zip = reader(ZipBuilder().add(part).bytes());
    QCOMPARE(zip->contents(), contents);
    if (!contents.isEmpty())
        QCOMPARE(zip->rawDataAtSubpath(contents.first()), QByteArray("content"));
}

void tst_LTZipReader::data_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("nothing") << QByteArray("");
    QTest::newRow("a byte") << QByteArray("x");
    QTest::newRow("zeros") << QByteArray(1000, '\0');
    QByteArray numbers;
    for (int number = 0; number < 300'000; ++number)
        numbers += QByteArray::number(number);
    QTest::newRow("more than any buffer") << numbers;
}

void tst_LTZipReader::data()
{
    QFETCH(QByteArray, content);
    const auto zip = reader(ZipBuilder({{"stored", content}, ZipPart("deflated", content).deflated()}).bytes());
    for (const auto &name : zip->contents()) {
        KRError error;
        const auto read = zip->rawDataAtSubpath(name, &error);
        QVERIFY2(read.has_value(), qPrintable(error.localizedDescription));
        QCOMPARE(*read, content);
    }
}

void tst_LTZipReader::symbolicLinks_data()
{
    QTest::addColumn<quint16>("host");
    QTest::addColumn<quint32>("mode");
    QTest::addColumn<bool>("isLink");

    QTest::newRow("a link") << quint16(3 << 8) << 0120777u << true;
    QTest::newRow("a link of another system of that family") << quint16(19 << 8) << 0120777u << true;
    QTest::newRow("a file") << quint16(3 << 8) << 0100644u << false;
    QTest::newRow("a socket, whose mode holds a link's bits") << quint16(3 << 8) << 0140777u << false;
    QTest::newRow("nothing") << quint16(3 << 8) << 0u << false;
    QTest::newRow("a system without links") << quint16(0) << 0120777u << false;
}

void tst_LTZipReader::symbolicLinks()
{
    QFETCH(quint16, host);
    QFETCH(quint32, mode);
    ZipPart part("entry", "target", mode);
    part.madeBy = host;
    const auto zip = reader(ZipBuilder().add(part).bytes());
    QTEST(zip->isSymbolicLink(u"entry"_s), "isLink");
    QCOMPARE(zip->rawDataAtSubpath(u"entry"_s), QByteArray("target"));
}

void tst_LTZipReader::entriesOfTheSamePath()
{
    const auto zip = reader(ZipBuilder({{"file", "first"}, {"file", "second", ZipPart::link}}).bytes());
    QCOMPARE(zip->contents(), (QStringList{u"file"_s, u"file"_s}));
    QCOMPARE(zip->rawDataAtIndex(0), QByteArray("first"));
    QCOMPARE(zip->rawDataAtIndex(1), QByteArray("second"));
    QCOMPARE(zip->rawDataAtSubpath(u"file"_s), QByteArray("second"));
    QVERIFY(!zip->isSymbolicLink(0));
    QVERIFY(zip->isSymbolicLink(u"file"_s));
}

void tst_LTZipReader::missingEntries()
{
    const auto zip = reader(ZipBuilder({{"file", "content"}, {"Folder/", ""}}).bytes());
    for (const auto &path : {u"File"_s, u"file/"_s, u"/file"_s, u"./file"_s, u"Folder"_s, QString()}) {
        KRError error;
        QVERIFY2(!zip->rawDataAtSubpath(path, &error), qPrintable(path));
        QCOMPARE(error.localizedDescription, u"The archive has no such entry."_s);
        QVERIFY(!zip->rawDataAtSubpath(path));
    }
    QVERIFY(!zip->rawDataAtIndex(-1));
    QVERIFY(!zip->rawDataAtIndex(2));
}

void tst_LTZipReader::readAgainInAnyOrder()
{
    ZipPart damaged("damaged", "content");
    damaged.checksum = 1;
    const auto zip = reader(ZipBuilder({{"first", "1"}, damaged, ZipPart("second", "2").deflated()}).bytes());
    for (int round = 0; round < 3; ++round) {
        QCOMPARE(zip->rawDataAtSubpath(u"second"_s), QByteArray("2"));
        QVERIFY(!zip->rawDataAtSubpath(u"damaged"_s));
        QCOMPARE(zip->rawDataAtSubpath(u"first"_s), QByteArray("1"));
    }
}

void tst_LTZipReader::budgets_data()
{
    QTest::addColumn<ZipBudget>("budget");
    QTest::addColumn<QStringList>("readable"); // of entries with 100, 200 (of zeros, deflated) and 300 bytes

    const auto a = u"a"_s;
    const auto b = u"b"_s;
    const auto c = u"c"_s;
    QTest::newRow("plenty") << ZipBudget() << QStringList{a, b, c};
    QTest::newRow("just enough for each entry") << ZipBudget{.entrySize = 300} << QStringList{a, b, c};
    QTest::newRow("an entry is too large") << ZipBudget{.entrySize = 299} << QStringList{a, b};
    QTest::newRow("just enough in sum") << ZipBudget{.totalSize = 600} << QStringList{a, b, c};
    QTest::newRow("too much in sum") << ZipBudget{.totalSize = 599} << QStringList{a, b};
    QTest::newRow("all that follow are too much") << ZipBudget{.totalSize = 150} << QStringList{a};
    QTest::newRow("packed too well") << ZipBudget{.ratio = 5, .sizeOfAnyRatio = 199} << QStringList{a, c};
    QTest::newRow("packed well, but small") << ZipBudget{.ratio = 5, .sizeOfAnyRatio = 200} << QStringList{a, b, c};
    QTest::newRow("packed well enough") << ZipBudget{.ratio = 100, .sizeOfAnyRatio = 0} << QStringList{a, b, c};
}

void tst_LTZipReader::budgets()
{
    QFETCH(ZipBudget, budget);
    const auto zip = reader(ZipBuilder({{"a", QByteArray(100, 'a')}, ZipPart("b", QByteArray(200, '\0')).deflated(),
                                           {"c", QByteArray(300, 'c')}})
                                .bytes(),
        budget);
    QCOMPARE(zip->contents().size(), 3);
    QStringList readable;
    for (const auto &name : zip->contents()) {
        if (zip->rawDataAtSubpath(name))
            readable.append(name);
    }
    QTEST(readable, "readable");
}

void tst_LTZipReader::folderBudget_data()
{
    QTest::addColumn<ZipBudget>("budget");
    QTest::addColumn<QStringList>("readable"); // of three entries in the folders a, a/b, a/b/c and d

    const auto shallow = u"a/1"_s;
    const auto deep = u"a/b/c/2"_s;
    const auto last = u"d/3"_s;
    QTest::newRow("plenty") << ZipBudget() << QStringList{shallow, deep, last};
    QTest::newRow("just enough folders") << ZipBudget{.folders = 4} << QStringList{shallow, deep, last};
    QTest::newRow("too many folders") << ZipBudget{.folders = 3} << QStringList{shallow, deep};
    QTest::newRow("too many already before") << ZipBudget{.folders = 2} << QStringList{shallow};
    QTest::newRow("just as deep as allowed") << ZipBudget{.deepestEntry = 3} << QStringList{shallow, deep, last};
    QTest::newRow("too deep") << ZipBudget{.deepestEntry = 2} << QStringList{shallow, last};
}

void tst_LTZipReader::folderBudget()
{
    QFETCH(ZipBudget, budget);
    const auto zip = reader(ZipBuilder({{"a/1", "1"}, {"a/b/c/2", "2"}, {"d/3", "3"}}).bytes(), budget);
    QStringList readable;
    for (const auto &name : zip->contents()) {
        if (zip->rawDataAtSubpath(name))
            readable.append(name);
    }
    QTEST(readable, "readable");
}

void tst_LTZipReader::tooManyEntries_data()
{
    QTest::addColumn<ZipBudget>("budget");
    QTest::addColumn<qsizetype>("count");
    QTest::addColumn<bool>("isReadable");

    QTest::newRow("as many as allowed") << ZipBudget{.entries = 3} << qsizetype(3) << true;
    QTest::newRow("one too many") << ZipBudget{.entries = 2} << qsizetype(2) << false;
    QTest::newRow("a directory that is too long") << ZipBudget{.directoryBytes = 120} << qsizetype(2) << false;
}

void tst_LTZipReader::tooManyEntries()
{
    QFETCH(ZipBudget, budget);
    QFETCH(bool, isReadable);
    const auto zip = reader(ZipBuilder({{"a", "a"}, {"b", "b"}, {"c", "c"}}).bytes(), budget);
    QTEST(zip->contents().size(), "count");
    QCOMPARE(zip->hasTooManyEntries(), !isReadable);
    for (const auto &name : zip->contents())
        QCOMPARE(zip->rawDataAtSubpath(name).has_value(), isReadable);
}

void tst_LTZipReader::fileStaysTheSameWhenAnotherTakesItsName()
{
    const auto zip = reader(ZipBuilder().add({"file", "first"}).bytes());
    writeFileAt(m_folder.path("other"), ZipBuilder().add({"file", "other"}).bytes());
    renameAt(m_folder.path("other"), m_folder.path("zip"));
    QCOMPARE(zip->rawDataAtSubpath(u"file"_s), QByteArray("first"));
}

void tst_LTZipReader::archiveThatShrinksMeanwhile()
{
    const auto zip = reader(ZipBuilder().add({"file", QByteArray(100'000, 'x')}).bytes());
    QCOMPARE(::truncate(m_folder.path("zip").constData(), 50'000), 0);
    QVERIFY(!zip->rawDataAtSubpath(u"file"_s));
}

QTEST_GUILESS_MAIN(tst_LTZipReader)
#include "tst_ltzipreader.moc"
