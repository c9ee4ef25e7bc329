#include "commands/KRPluginScript.h"
#include "platform/FileURL.h"
#include "support/BundleBuilder.h"
#include "support/NilableText.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

class tst_KRPluginScript : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void fileIsReadAtOnce();
    void sourceIsKeptAsItIs_data();
    void sourceIsKeptAsItIs();
    void filenameIsLastPathComponent_data();
    void filenameIsLastPathComponent();
    void urlIsThatOfTheFile();
    void unreadableFileGivesNil_data();
    void unreadableFileGivesNil();
    void errorIsOptional();
    void errorIsLeftAloneOnSuccess();
    void textNeedsNoFile();
    void nilTextStaysNil();
    void reloadReadsAgain();
    void failedReloadLeavesNil_data();
    void failedReloadLeavesNil();
    void reloadRecovers();
    void reloadLeavesTextAlone();
    void loadReportsError();
    void sourceHasNoOffset();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    QUrl url(const QString &name) const { return fileURLFromPath(path(name), FileKind::File); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_KRPluginScript::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_KRPluginScript::fileIsReadAtOnce()
{
    writeFile(path(u"Export.js"_s), "var onRun;");
    const auto script = KRPluginScript::initWithURL(url(u"Export.js"_s));
    writeFile(path(u"Export.js"_s), "changed");
    QCOMPARE(script->script(), Text(u"var onRun;"_s));
}

void tst_KRPluginScript::sourceIsKeptAsItIs_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<Text>("source");

    QTest::newRow("empty file is an empty text, not nil") << QByteArray() << Text(u""_s);
    QTest::newRow("UTF-8") << QByteArray("'\xC3\xA9 \xF0\x9F\x8E\xA8'") << Text(u"'é 🎨'"_s);
    QTest::newRow("line ends") << QByteArray("a\r\nb\rc\n") << Text(u"a\r\nb\rc\n"_s);
    QTest::newRow("NUL inside") << QByteArray("a\0b", 3) << Text(QString::fromLatin1("a\0b", 3));
    QTest::newRow("byte-order mark is no part of the text") << QByteArray("\xEF\xBB\xBFvar a;") << Text(u"var a;"_s);
}

void tst_KRPluginScript::sourceIsKeptAsItIs()
{
    QFETCH(QByteArray, bytes);
    writeFile(path(u"a.js"_s), bytes);
    const auto script = KRPluginScript::initWithURL(url(u"a.js"_s));
    QVERIFY(script);
    QTEST(script->script(), "source");
    // Asking once does not change the second answer.
    QTEST(script->script(), "source");
}

void tst_KRPluginScript::filenameIsLastPathComponent_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("filename");

    QTest::newRow("with its extension") << u"Export.js"_s << u"Export.js"_s;
    QTest::newRow("below folders") << u"Tools/Layers/Export.js"_s << u"Export.js"_s;
    QTest::newRow("several dots") << u"a.b.js"_s << u"a.b.js"_s;
    QTest::newRow("without extension") << u"Export"_s << u"Export"_s;
    QTest::newRow("blanks and percent signs") << u"a %20 b?#.js"_s << u"a %20 b?#.js"_s;
}

void tst_KRPluginScript::filenameIsLastPathComponent()
{
    QFETCH(QString, file);
    writeFile(path(file), "0");
    QTEST(KRPluginScript::initWithURL(url(file))->filename(), "filename");
}

void tst_KRPluginScript::urlIsThatOfTheFile()
{
    writeFile(path(u"a b.js"_s), "0");
    const auto script = KRPluginScript::initWithURL(url(u"a b.js"_s));
    QCOMPARE(script->URL(), url(u"a b.js"_s));
    QVERIFY(script->URL().toEncoded().endsWith("/a%20b.js"));
}

void tst_KRPluginScript::unreadableFileGivesNil_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("code");

    QTest::newRow("missing") << u"missing.js"_s << ENOENT;
    QTest::newRow("folder") << u"folder"_s << EISDIR;
    QTest::newRow("not UTF-8") << u"latin1.js"_s << EILSEQ;
    QTest::newRow("half a character at the end") << u"cut.js"_s << EILSEQ;
    QTest::newRow("surrogate as UTF-8") << u"surrogate.js"_s << EILSEQ;
    QTest::newRow("pipe") << u"pipe.js"_s << EINVAL;
    QTest::newRow("NUL in the name") << QString::fromLatin1("a.js\0x", 6) << EINVAL;
    QTest::newRow("no URL") << QString() << ENOENT;
}

void tst_KRPluginScript::unreadableFileGivesNil()
{
    QFETCH(QString, name);
    QFETCH(int, code);
    writeFile(path(u"a.js"_s), "0"); // what stands before the NUL exists
    writeFile(path(u"folder/inside.js"_s), "0");
    writeFile(path(u"latin1.js"_s), "'\xE9'");
    writeFile(path(u"cut.js"_s), "'\xC3");
    writeFile(path(u"surrogate.js"_s), "'\xED\xA0\x80'");
    QCOMPARE(::mkfifo(QFile::encodeName(path(u"pipe.js"_s)), 0600), 0);

    KRError error;
    const auto fileURL = name.isEmpty() ? QUrl() : url(name);
    QVERIFY(!KRPluginScript::initWithURL(fileURL, &error));
    QCOMPARE(error.domain, u"posix"_s);
    QCOMPARE(error.code, code);
    QVERIFY(!error.localizedDescription.isEmpty());
}

void tst_KRPluginScript::errorIsOptional()
{
    QVERIFY(!KRPluginScript::initWithURL(url(u"missing.js"_s)));
}

void tst_KRPluginScript::errorIsLeftAloneOnSuccess()
{
    writeFile(path(u"a.js"_s), "0");
    const KRError untouched{u"mine"_s, 7, u"as before"_s};
    auto error = untouched;
    const auto script = KRPluginScript::initWithURL(url(u"a.js"_s), &error);
    QVERIFY(script->loadWithError(&error));
    QCOMPARE(error, untouched);
}

void tst_KRPluginScript::textNeedsNoFile()
{
    const KRPluginScript script(u"var onRun;"_s, u"Untitled"_s);
    QCOMPARE(script.URL(), QUrl());
    QCOMPARE(script.filename(), u"Untitled"_s);
    QCOMPARE(script.script(), Text(u"var onRun;"_s));
}

void tst_KRPluginScript::nilTextStaysNil()
{
    QCOMPARE(KRPluginScript(nil, u"Untitled"_s).script(), nil);
    QCOMPARE(KRPluginScript(u""_s, u"Untitled"_s).script(), Text(u""_s));
}

void tst_KRPluginScript::reloadReadsAgain()
{
    writeFile(path(u"a.js"_s), "old");
    const auto script = KRPluginScript::initWithURL(url(u"a.js"_s));
    QCOMPARE(script->script(), Text(u"old"_s));
    writeFile(path(u"a.js"_s), "new");
    script->reload();
    QCOMPARE(script->script(), Text(u"new"_s));
}

void tst_KRPluginScript::failedReloadLeavesNil_data()
{
    QTest::addColumn<bool>("fileExists");
    QTest::newRow("file is gone") << false;
    QTest::newRow("file is not UTF-8 any more") << true;
}

void tst_KRPluginScript::failedReloadLeavesNil()
{
    QFETCH(bool, fileExists);
    writeFile(path(u"a.js"_s), "old");
    const auto script = KRPluginScript::initWithURL(url(u"a.js"_s));
    if (fileExists)
        writeFile(path(u"a.js"_s), "\xFF");
    else
        QVERIFY(QFile::remove(path(u"a.js"_s)));
    script->reload();
    QCOMPARE(script->script(), nil);
    QCOMPARE(script->filename(), u"a.js"_s);
    QCOMPARE(script->URL(), url(u"a.js"_s));
}

void tst_KRPluginScript::reloadRecovers()
{
    writeFile(path(u"a.js"_s), "old");
    const auto script = KRPluginScript::initWithURL(url(u"a.js"_s));
    QVERIFY(QFile::remove(path(u"a.js"_s)));
    script->reload();
    writeFile(path(u"a.js"_s), "back");
    script->reload();
    QCOMPARE(script->script(), Text(u"back"_s));
}

void tst_KRPluginScript::reloadLeavesTextAlone()
{
    // Even where a file of that name stands in the current folder.
    KRPluginScript script(u"text"_s, path(u"a.js"_s));
    writeFile(path(u"a.js"_s), "file");
    script.reload();
    QCOMPARE(script.script(), Text(u"text"_s));
    QCOMPARE(script.URL(), QUrl());
}

void tst_KRPluginScript::loadReportsError()
{
    writeFile(path(u"a.js"_s), "old");
    const auto script = KRPluginScript::initWithURL(url(u"a.js"_s));
    QVERIFY(QFile::remove(path(u"a.js"_s)));
    KRError error;
    QVERIFY(!script->loadWithError(&error));
    QCOMPARE(error.code, ENOENT);
    QCOMPARE(script->script(), nil);
    QVERIFY(!script->loadWithError());
}

void tst_KRPluginScript::sourceHasNoOffset()
{
    const KRPluginScript script(u"0"_s, u"a.js"_s);
    QCOMPARE(script.sourceOffset().lines, 0);
    QCOMPARE(script.sourceOffset().columns, 0);
}

QTEST_GUILESS_MAIN(tst_KRPluginScript)
#include "tst_krpluginscript.moc"
