// Unpacking an archive from the command line.

#include "CommandLineFixture.h"

using namespace Qt::StringLiterals;

class tst_CommandLine_Unpack : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void unpacked();
    void failures_data();
    void failures();
    void missingArchiveMakesNothing();
    void wrongUsage();

private:
    static QString archive(const QString &name) { return QStringLiteral(KORVAN_SOURCE_DIR "/fuzz/corpus/zip/") + name; }
};

void tst_CommandLine_Unpack::unpacked()
{
    const auto finished = run({u"unpack"_s, archive(u"mixed.zip"_s), u"some/folder"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json(), (QJsonObject{{u"ok"_s, true}, {u"error"_s, QJsonValue()}}));
    QFile file(m_folder->filePath(u"some/folder/folder/file"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("content"));

    const auto forPeople = run({u"unpack"_s, archive(u"mixed.zip"_s), u"other"_s});
    QCOMPARE(forPeople.exitCode, 0);
    QVERIFY(forPeople.output.contains("Unpacked to"));
    QVERIFY(QFileInfo(m_folder->filePath(u"other/link"_s)).isSymLink());
}

void tst_CommandLine_Unpack::failures_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QJsonValue>("error");
    QTest::addColumn<QString>("text");

    const auto outside =
        u"Can not confirm that the created intermediate folders are sub folders of the destination folder."_s;
    QTest::newRow("a link that leads out")
        << u"link-out.zip"_s
        << QJsonValue(QJsonObject{
               {u"domain"_s, u"com.veldmark.pluginmanager.updating"_s}, {u"code"_s, 0}, {u"message"_s, outside}})
        << outside;
    QTest::newRow("no entries") << u"empty.zip"_s << QJsonValue() << u"The archive is empty or cannot be read."_s;
}

void tst_CommandLine_Unpack::failures()
{
    QFETCH(QString, name);
    QFETCH(QJsonValue, error);
    QFETCH(QString, text);
    QVERIFY(QDir(m_folder->path()).mkdir(u"outside"_s)); // where the link leads
    const auto finished = run({u"unpack"_s, archive(name), u"folder"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(finished.json(), (QJsonObject{{u"ok"_s, false}, {u"error"_s, error}}));
    QVERIFY(finished.errors.isEmpty());

    const auto forPeople = run({u"unpack"_s, archive(name), u"folder"_s});
    QCOMPARE(forPeople.exitCode, 1);
    QCOMPARE(forPeople.errors, QStringList{u"korvan-plugins: "_s + text});
    QVERIFY(forPeople.output.isEmpty());
    QVERIFY(QDir(m_folder->filePath(u"outside"_s)).isEmpty());
}

void tst_CommandLine_Unpack::missingArchiveMakesNothing()
{
    const auto finished = run({u"unpack"_s, u"missing.zip"_s, u"folder"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    QVERIFY(!finished.json().value(u"ok"_s).toBool(true));
    QVERIFY(finished.json().value(u"error"_s).toObject().value(u"message"_s).toString().contains(u"missing.zip"));
    QVERIFY(!QFileInfo::exists(m_folder->filePath(u"folder"_s)));
}

void tst_CommandLine_Unpack::wrongUsage()
{
    QCOMPARE(run({u"unpack"_s, archive(u"mixed.zip"_s)}).exitCode, 2);
}

QTEST_GUILESS_MAIN(tst_CommandLine_Unpack)
#include "tst_commandline_unpack.moc"
