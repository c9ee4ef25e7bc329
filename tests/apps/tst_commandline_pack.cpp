// Packing plug-ins whose files hosts could not unpack, or that would be missing in silence.

#include "CommandLineFixture.h"

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_CommandLine_Pack : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init();
    void names_data();
    void names();
    void tooDeep();
    void whatPacksTooWellIsStored();
    void tooLarge();
    void neverOverWhatIsNoFile();
    void permissionsOfTheArchive();

private:
    QString path(const QString &relative) const { return m_folder->filePath(relative); }
    QString resource(const QString &name) const { return path(u"plugins/a.korvanplugin/Contents/Resources/"_s + name); }
    Finished pack() const { return run({u"pack"_s, u"plugins/a.korvanplugin"_s, u"--output"_s, u"a.zip"_s}); }
    void compareRefusal(const Finished &packed, const QString &message) const
    {
        QCOMPARE(packed.errors, QStringList{u"korvan-plugins: "_s + message});
        QCOMPARE(packed.exitCode, 1);
        QCOMPARE(fileContent(path(u"a.zip"_s)), "before"_ba);
        QCOMPARE(
            QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).filter(u"pack"_s),
            QStringList());
    }
};

void tst_CommandLine_Pack::init()
{
    makeFolder();
    plugin(u"a"_s, R"({"version": "1.0"})");
    writeFile(path(u"a.zip"_s), "before");
    writeFile(resource(u"file"_s), "text");
}

void tst_CommandLine_Pack::names_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("message");
    const auto refused = [](const QString &name, const QString &reason) {
        return u"\"Contents/Resources/%1\" cannot be packed: it %2."_s.arg(name, reason);
    };
    QTest::newRow("no UTF-8") << "a\xff"_ba << refused(u"a\uFFFD"_s, u"has a name that is not UTF-8"_s);
    QTest::newRow("no UTF-8, in a folder") << "a\xff/b"_ba << refused(u"a\uFFFD"_s, u"has a name that is not UTF-8"_s);
    QTest::newRow("an escape") << "a\x1b[2J"_ba << refused(u"a\\u001b[2J"_s, u"has control characters in its name"_s);
    QTest::newRow("a tab") << "a\tb"_ba << refused(u"a\tb"_s, u"has control characters in its name"_s);
    QTest::newRow("two dots") << "a..b"_ba
                              << refused(u"a..b"_s, u"has two dots in a row in its name, which hosts do not unpack"_s);
}

void tst_CommandLine_Pack::names()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, message);
    const auto file = QFile::encodeName(resource({})) + name;
    const auto slash = file.lastIndexOf('/');
    ::mkdir(file.left(slash).constData(), 0755);
    QCOMPARE(::symlink("file", file.constData()), 0);
    compareRefusal(pack(), message);
}

void tst_CommandLine_Pack::tooDeep()
{
    const auto folders = u"d/"_s.repeated(126); // 129 folders in all
    writeFile(resource(folders + u"file"_s), "text");
    compareRefusal(pack(),
        u"\"Contents/Resources/%1file\" cannot be packed: it is too large, or too deep in folders, to be unpacked."_s
            .arg(folders));
}

void tst_CommandLine_Pack::whatPacksTooWellIsStored()
{
    const QByteArray zeros(3'000'000, '\0');
    writeFile(resource(u"zeros"_s), zeros);
    QCOMPARE(pack().exitCode, 0);
    const auto archive = fileContent(path(u"a.zip"_s));
    QVERIFY(archive.size() > zeros.size());
    QCOMPARE(run({u"unpack"_s, u"a.zip"_s, u"out"_s}).exitCode, 0);
    QCOMPARE(fileContent(path(u"out/a.korvanplugin/Contents/Resources/zeros"_s)), zeros);
    QCOMPARE(pack().exitCode, 0);
    QCOMPARE(fileContent(path(u"a.zip"_s)), archive);
}

void tst_CommandLine_Pack::tooLarge()
{
    writeFile(resource(u"large"_s), "x");
    const auto file = QFile::encodeName(resource(u"large"_s)); // takes no space on the disk
    QCOMPARE(::truncate(file.constData(), 513LL * 1024 * 1024), 0);
    compareRefusal(pack(), u"\"Contents/Resources/large\" cannot be packed: it is larger than hosts unpack."_s);
}

void tst_CommandLine_Pack::neverOverWhatIsNoFile()
{
    QVERIFY(QFile::remove(path(u"a.zip"_s)));
    QVERIFY(QDir(m_folder->path()).mkdir(u"a.zip"_s));
    const auto packed = pack();
    QCOMPARE(packed.exitCode, 1);
    QCOMPARE(packed.errors,
        QStringList{u"korvan-plugins: The archive cannot be written: something else than a file is at \"%1\"."_s.arg(
            path(u"a.zip"_s))});
    QVERIFY(QFileInfo(path(u"a.zip"_s)).isDir());
}

void tst_CommandLine_Pack::permissionsOfTheArchive()
{
    QVERIFY(QFile::remove(path(u"a.zip"_s)));
    QCOMPARE(pack().exitCode, 0);
    writeFile(path(u"usual"_s), "");
    QCOMPARE(QFileInfo(path(u"a.zip"_s)).permissions(), QFileInfo(path(u"usual"_s)).permissions());
}

QTEST_GUILESS_MAIN(tst_CommandLine_Pack)
#include "tst_commandline_pack.moc"
