#include "platform/FileURL.h"

#include <QDir>
#include <QRandomGenerator>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_FileURL : public QObject
{
    Q_OBJECT

private slots:
    void pathBecomesURLAndComesBack_data();
    void pathBecomesURLAndComesBack();
    void folderURLEndsInSlash_data();
    void folderURLEndsInSlash();
    void everyByteSurvives();
    void textPath();
    void emptyPathHasNoURL();
    void relativePathIsTakenFromCurrentFolder();
    void pathOfURL_data();
    void pathOfURL();
    void urlFromOthersGivesSamePath_data();
    void urlFromOthersGivesSamePath();
    void displayPathShowsReplacementCharacters();
    void absoluteStringIsEncoded_data();
    void absoluteStringIsEncoded();
};

void tst_FileURL::pathBecomesURLAndComesBack_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("encoded");

    const auto row = [](const char *tag, const char *path, const char *encoded) {
        QTest::newRow(tag) << QByteArray(path) << QByteArray(encoded);
    };
    row("plain", "/a/b.txt", "file:///a/b.txt");
    row("root", "/", "file:///");
    row("space", "/a b", "file:///a%20b");
    row("percent sign", "/100%", "file:///100%25");
    row("what looks encoded already", "/a%20b", "file:///a%2520b");
    row("number sign", "/#1", "file:///%231");
    row("question mark", "/what?", "file:///what%3F");
    row("semicolon", "/a;b", "file:///a%3Bb");
    row("colon", "/a:b", "file:///a:b");
    row("at sign and comma", "/a@b,c", "file:///a@b,c");
    row("brackets and bar", "/[a]{b}|", "file:///%5Ba%5D%7Bb%7D%7C");
    row("quotation mark and backslash", "/\"\\", "file:///%22%5C");
    row("apostrophe", "/it's", "file:///it's");
    row("line feed", "/a\nb", "file:///a%0Ab");
    row("UTF-8", "/\xC3\xA4/\xF0\x9F\x98\x80", "file:///%C3%A4/%F0%9F%98%80");
    row("decomposed letters stay decomposed", "/a\xCC\x88", "file:///a%CC%88");
    row("no UTF-8", "/\xFF\xFE", "file:///%FF%FE");
    row("cut-off UTF-8", "/\xC3", "file:///%C3");
    row("a surrogate's bytes", "/\xED\xA0\x80", "file:///%ED%A0%80");
    row("an overlong slash is no slash", "/\xC0\xAF", "file:///%C0%AF");
    row("dots are kept", "/a/../b/.", "file:///a/../b/.");
    row("hidden name", "/.git", "file:///.git");
    row("doubled slash inside", "/a//b", "file:///a//b");
    row("doubled slash in front names no computer", "//host/a", "file:////host/a");
}

void tst_FileURL::pathBecomesURLAndComesBack()
{
    QFETCH(QByteArray, path);
    const auto url = fileURLFromPath(path, FileKind::File);

    QVERIFY2(url.isValid(), qPrintable(url.errorString()));
    QTEST(url.toEncoded(), "encoded");
    QCOMPARE(url.host(), QString());
    QVERIFY(!url.hasQuery());
    QVERIFY(!url.hasFragment());
    QCOMPARE(pathFromFileURL(url), path);
    QCOMPARE(pathFromFileURL(QUrl::fromEncoded(url.toEncoded())), path);
    QCOMPARE(pathFromFileURL(QUrl(absoluteString(url))), path);
}

void tst_FileURL::folderURLEndsInSlash_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("encoded");

    QTest::newRow("plain") << QByteArray("/a/b") << QByteArray("file:///a/b/");
    QTest::newRow("root has one slash only") << QByteArray("/") << QByteArray("file:///");
    QTest::newRow("slash is not doubled") << QByteArray("/a/") << QByteArray("file:///a/");
    QTest::newRow("no UTF-8") << QByteArray("/\xFF") << QByteArray("file:///%FF/");
    QTest::newRow("bundle") << QByteArray("/My Plugin.korvanplugin") << QByteArray("file:///My%20Plugin.korvanplugin/");
}

void tst_FileURL::folderURLEndsInSlash()
{
    QFETCH(QByteArray, path);
    const auto url = fileURLFromPath(path, FileKind::Folder);

    QTEST(url.toEncoded(), "encoded");
    if (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    QCOMPARE(pathFromFileURL(url), path);
}

void tst_FileURL::everyByteSurvives()
{
    QByteArray path("/");
    for (int byte = 1; byte < 256; ++byte)
        path += char(byte);
    path += 'x'; // no slash at the end
    QCOMPARE(pathFromFileURL(fileURLFromPath(path, FileKind::File)), path);

    QRandomGenerator random(20240101);
    for (int i = 0; i < 500; ++i) {
        QByteArray name("/");
        for (auto length = 1 + random.bounded(12); length > 0; --length)
            name += char(1 + random.bounded(255));
        while (name.size() > 1 && name.endsWith('/'))
            name.chop(1);
        QCOMPARE(pathFromFileURL(fileURLFromPath(name, FileKind::File)), name);
        QCOMPARE(pathFromFileURL(fileURLFromPath(name, FileKind::Folder)), name);
    }
}

void tst_FileURL::textPath()
{
    const auto url = fileURLFromPath(u"/\u00E4 \U0001F600"_s, FileKind::File);
    QCOMPARE(url.toEncoded(), "file:///%C3%A4%20%F0%9F%98%80"_ba);
}

void tst_FileURL::emptyPathHasNoURL()
{
    QVERIFY(fileURLFromPath(QByteArray(), FileKind::File).isEmpty());
    QVERIFY(fileURLFromPath(QByteArray(""), FileKind::Folder).isEmpty());
    QVERIFY(fileURLFromPath(QString(), FileKind::Folder).isEmpty());
}

void tst_FileURL::relativePathIsTakenFromCurrentFolder()
{
    const auto current = QDir::currentPath().toUtf8();
    QCOMPARE(pathFromFileURL(fileURLFromPath("plugins/more"_ba, FileKind::Folder)), current + "/plugins/more");
    QCOMPARE(pathFromFileURL(fileURLFromPath("a b"_ba, FileKind::File)), current + "/a b");
}

void tst_FileURL::pathOfURL_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QByteArray>("path");

    const auto row = [](const char *tag, const char *url, const char *path) {
        QTest::newRow(tag) << QUrl::fromEncoded(url) << QByteArray(path);
    };
    row("trailing slash goes", "file:///a/b/", "/a/b");
    row("all trailing slashes go", "file:///a///", "/a");
    row("root stays", "file:///", "/");
    row("only slashes are the root", "file:////", "/");
    row("encoded letters", "file:///%61%62", "/ab");
    row("lower-case digits", "file:///%c3%a4", "/\xC3\xA4");
    row("an encoded slash is a slash", "file:///a%2Fb", "/a/b");
    row("query and fragment are no path", "file:///a?b#c", "/a");
    row("this computer by name", "file://localhost/a", "/a");
    row("another computer's file", "file://server/a", "");
    row("scheme in capitals", "FILE:///a", "/a");
    row("web address", "https://example.com/a", "");
    row("no scheme", "/a", "");
    row("only a scheme", "file:", "");
    QTest::newRow("empty") << QUrl() << QByteArray();
    QTest::newRow("an encoded NUL stays in the path") << QUrl::fromEncoded("file:///a%00b") << QByteArray("/a\0b", 4);
}

void tst_FileURL::pathOfURL()
{
    QFETCH(QUrl, url);
    QTEST(pathFromFileURL(url), "path");
}

void tst_FileURL::urlFromOthersGivesSamePath_data()
{
    QTest::addColumn<QString>("path");

    QTest::newRow("plain") << u"/a/b"_s;
    QTest::newRow("space") << u"/a b"_s;
    QTest::newRow("percent sign") << u"/100%"_s;
    QTest::newRow("percent sign and digits") << u"/a%20b"_s;
    QTest::newRow("number sign and question mark") << u"/#?;"_s;
    QTest::newRow("letters") << u"/\u00E4\U0001F600"_s;
}

/// Hosts make their URLs with QUrl.
void tst_FileURL::urlFromOthersGivesSamePath()
{
    QFETCH(QString, path);
    QCOMPARE(pathFromFileURL(QUrl::fromLocalFile(path)), path.toUtf8());
    QCOMPARE(pathFromFileURL(QUrl::fromLocalFile(path + u'/')), path.toUtf8());
    QCOMPARE(fileURLFromPath(path, FileKind::File).toLocalFile(), path);
}

void tst_FileURL::displayPathShowsReplacementCharacters()
{
    QCOMPARE(displayPath("/a\xFF z"_ba), u"/a\uFFFD z"_s);
    QCOMPARE(displayPath("/\xC3\xA4"_ba), u"/\u00E4"_s);
    QCOMPARE(displayPath(QUrl::fromEncoded("file:///a%FF%20z/")), u"/a\uFFFD z"_s);
    QCOMPARE(displayPath(QUrl()), QString());
}

void tst_FileURL::absoluteStringIsEncoded_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QString>("text");

    QTest::newRow("folder") << fileURLFromPath("/a b/\xFF"_ba, FileKind::Folder) << u"file:///a%20b/%FF/"_s;
    QTest::newRow("letters in a web address")
        << QUrl(u"https://example.com/\u00E4?q=\u00FC b#%"_s) << u"https://example.com/%C3%A4?q=%C3%BC%20b#%25"_s;
    QTest::newRow("empty") << QUrl() << QString();
}

void tst_FileURL::absoluteStringIsEncoded()
{
    QFETCH(QUrl, url);
    QTEST(absoluteString(url), "text");
}

QTEST_GUILESS_MAIN(tst_FileURL)
#include "tst_fileurl.moc"
