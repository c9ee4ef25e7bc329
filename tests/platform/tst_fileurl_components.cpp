#include "platform/FileURL.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_FileURLComponents : public QObject
{
    Q_OBJECT

private slots:
    void pathByAppendingComponent_data();
    void pathByAppendingComponent();
    void appendingLeavesParentAlone();
    void splitPath_data();
    void splitPath();
    void nameWithoutExtension_data();
    void nameWithoutExtension();
    void extension_data();
    void extension();
};

void tst_FileURLComponents::pathByAppendingComponent_data()
{
    QTest::addColumn<QByteArray>("parent");
    QTest::addColumn<QByteArray>("component");
    QTest::addColumn<QByteArray>("path");

    QTest::newRow("name") << "/a"_ba
                          << "b"_ba
                          << "/a/b"_ba;
    QTest::newRow("several names") << "/a"_ba
                                   << "b/c"_ba
                                   << "/a/b/c"_ba;
    QTest::newRow("below the root") << "/"_ba
                                    << "a"_ba
                                    << "/a"_ba;
    QTest::newRow("slash is not doubled") << "/a/"_ba
                                          << "b"_ba
                                          << "/a/b"_ba;
    QTest::newRow("bytes that are no UTF-8") << "/\xFF"_ba
                                             << "\xFE"_ba
                                             << "/\xFF/\xFE"_ba;
    QTest::newRow("dots are not resolved") << "/a"_ba
                                           << "../b"_ba
                                           << "/a/../b"_ba;
    QTest::newRow("NUL is kept") << "/a"_ba << QByteArray("b\0c", 3) << QByteArray("/a/b\0c", 6);
}

void tst_FileURLComponents::pathByAppendingComponent()
{
    QFETCH(QByteArray, parent);
    QFETCH(QByteArray, component);
    QTEST(pathByAppending(parent, component), "path");
}

void tst_FileURLComponents::appendingLeavesParentAlone()
{
    QByteArray parent("/a");
    parent.reserve(100);
    const auto copy = parent;
    QCOMPARE(pathByAppending(parent, "b"), "/a/b"_ba);
    QCOMPARE(parent, "/a"_ba);
    QCOMPARE(copy, "/a"_ba);
}

void tst_FileURLComponents::splitPath_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArray>("parent");
    QTest::addColumn<QByteArray>("last");

    QTest::newRow("several names") << "/a/b/c"_ba
                                   << "/a/b"_ba
                                   << "c"_ba;
    QTest::newRow("below the root") << "/a"_ba
                                    << "/"_ba
                                    << "a"_ba;
    QTest::newRow("root") << "/"_ba
                          << "/"_ba
                          << ""_ba;
    QTest::newRow("hidden") << "/a/.git"_ba
                            << "/a"_ba
                            << ".git"_ba;
    QTest::newRow("dots in folders") << "/a.b/c"_ba
                                     << "/a.b"_ba
                                     << "c"_ba;
    QTest::newRow("bytes that are no UTF-8") << "/\xFF/\xFE"_ba
                                             << "/\xFF"_ba
                                             << "\xFE"_ba;
    QTest::newRow("blanks") << "/a / b "_ba
                            << "/a "_ba
                            << " b "_ba;
}

void tst_FileURLComponents::splitPath()
{
    QFETCH(QByteArray, path);
    QTEST(pathWithoutLastComponent(path), "parent");
    QTEST(lastPathComponent(path), "last");
}

void tst_FileURLComponents::nameWithoutExtension_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("result");

    QTest::newRow("plain") << u"Name.korvanplugin"_s << u"Name"_s;
    QTest::newRow("none") << u"Name"_s << u"Name"_s;
    QTest::newRow("only the last one goes") << u"archive.tar.gz"_s << u"archive.tar"_s;
    QTest::newRow("leading dot begins no extension") << u".git"_s << u".git"_s;
    QTest::newRow("extension of a hidden name") << u".git.old"_s << u".git"_s;
    QTest::newRow("dot at the end") << u"Name."_s << u"Name"_s;
    QTest::newRow("version") << u"vendor.old"_s << u"vendor"_s;
    QTest::newRow("blanks") << u"My Name .x y"_s << u"My Name "_s;
    QTest::newRow("letters") << u"\u00E4.\u00F6"_s << u"\u00E4"_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("only a dot") << u"."_s << u"."_s;
}

void tst_FileURLComponents::nameWithoutExtension()
{
    QFETCH(QString, name);
    QFETCH(QString, result);
    QCOMPARE(withoutExtension(name), result);
    QCOMPARE(withoutExtension(name.toUtf8()), result.toUtf8());
}

void tst_FileURLComponents::extension_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<bool>("isBundle");

    QTest::newRow("plain") << "/a/Name.korvanplugin"_ba << true;
    QTest::newRow("capitals") << "/a/Name.KORVANPLUGIN"_ba << true;
    QTest::newRow("mixed case") << "/a/Name.KorvanPlugin"_ba << true;
    QTest::newRow("name alone") << "Name.korvanplugin"_ba << true;
    QTest::newRow("two dots") << "/a/Name.1.korvanplugin"_ba << true;
    QTest::newRow("dot before the extension") << "/a/Name..korvanplugin"_ba << true;
    QTest::newRow("bytes that are no UTF-8") << "/\xFF.korvanplugin"_ba << true;
    QTest::newRow("hidden name with the extension") << "/a/.x.korvanplugin"_ba << true;
    QTest::newRow("only the extension is a hidden name") << "/a/.korvanplugin"_ba << false;
    QTest::newRow("only the extension, without a folder") << ".korvanplugin"_ba << false;
    QTest::newRow("without the dot") << "/a/korvanplugin"_ba << false;
    QTest::newRow("longer") << "/a/Name.korvanplugins"_ba << false;
    QTest::newRow("shorter") << "/a/Name.korvanplugi"_ba << false;
    QTest::newRow("another") << "/a/Name.js"_ba << false;
    QTest::newRow("further extension") << "/a/Name.korvanplugin.zip"_ba << false;
    QTest::newRow("blank behind") << "/a/Name.korvanplugin "_ba << false;
    QTest::newRow("extension of the folder above") << "/a.korvanplugin/b"_ba << false;
    QTest::newRow("dot at the end") << "/a/Name."_ba << false;
    QTest::newRow("empty") << ""_ba << false;
    QTest::newRow("root") << "/"_ba << false;
    QTest::newRow("NUL behind") << QByteArray("/a.korvanplugin\0", 16) << false;
}

void tst_FileURLComponents::extension()
{
    QFETCH(QByteArray, path);
    QTEST(hasExtension(path, "korvanplugin"), "isBundle");
}

QTEST_GUILESS_MAIN(tst_FileURLComponents)
#include "tst_fileurl_components.moc"
