// Writing a plug-in as a new bundle from the command line.

#include "CommandLineFixture.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

class tst_CommandLine_Export : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init();
    void writesWhatInfoShows_data();
    void writesWhatInfoShows();
    void forPeople();
    void failures_data();
    void failures();
    void unknownPlugin();
    void wrongUsage_data();
    void wrongUsage();

private:
    QByteArray content(const QString &path) const
    {
        QFile file(m_folder->filePath(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

void tst_CommandLine_Export::init()
{
    makeFolder();
    plugin(u"P"_s, R"({"identifier": "p", "version": 2, "suppliesData": true, "commands": [{"script": "script.js"}]})",
        "\xEF\xBB\xBF// mine\r\n");
}

void tst_CommandLine_Export::writesWhatInfoShows_data()
{
    QTest::addColumn<QString>("plugin");
    QTest::newRow("installed") << u"p"_s;
    QTest::newRow("bundle folder") << u"plugins/P.korvanplugin"_s;
}

void tst_CommandLine_Export::writesWhatInfoShows()
{
    QFETCH(QString, plugin);
    const auto finished =
        run({u"--folder"_s, u"plugins"_s, u"export"_s, plugin, u"./x/../New.korvanplugin/"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json(), (QJsonObject{{u"ok"_s, true}, {u"path"_s, m_folder->filePath(u"New.korvanplugin"_s)}}));
    QVERIFY(finished.errors.isEmpty());
    QCOMPARE(content(u"New.korvanplugin/Contents/Korvan/script.js"_s), "\xEF\xBB\xBF// mine\r\n"_ba);

    const auto manifest =
        QJsonDocument::fromJson(content(u"New.korvanplugin/Contents/Korvan/manifest.json"_s)).object();
    const QJsonObject handlers{{u"run"_s, u"onRun"_s}, {u"setUp"_s, u"onSetUp"_s}, {u"tearDown"_s, u"onTearDown"_s}};
    const QJsonObject command{{u"identifier"_s, u"script"_s}, {u"name"_s, u"script"_s}, {u"handlers"_s, handlers},
        {u"script"_s, u"script.js"_s}};
    const QJsonObject menu{{u"title"_s, u"P"_s}, {u"items"_s, QJsonArray{u"script"_s}}};
    QCOMPARE(manifest,
        (QJsonObject{{u"name"_s, u"P"_s}, {u"identifier"_s, u"p"_s}, {u"version"_s, u"2"_s}, {u"menu"_s, menu},
            {u"commands"_s, QJsonArray{command}}}));
    const auto info = run({u"--folder"_s, u"plugins"_s, u"info"_s, plugin, u"--json"_s}).json();
    QCOMPARE(info.value(u"metadata"_s).toObject(), manifest);
    QCOMPARE(info.value(u"menuDescription"_s).toObject(), menu);
    QCOMPARE(info.value(u"versionedIdentifier"_s).toString(), u"p(2)"_s);
}

void tst_CommandLine_Export::forPeople()
{
    const auto finished = run({u"--folder"_s, u"plugins"_s, u"export"_s, u"p"_s, u"New"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.output, "Written to " + m_folder->filePath(u"New"_s).toUtf8() + '\n');
    QVERIFY(QFileInfo(m_folder->filePath(u"New/Contents/Resources"_s)).isDir());
}

void tst_CommandLine_Export::failures_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("error");
    QTest::newRow("something is there") << u"plugins"_s << u"File exists"_s;
    QTest::newRow("itself") << u"plugins/P.korvanplugin"_s << u"File exists"_s;
    QTest::newRow("no folder around it") << u"none/New.korvanplugin"_s << u"No such file or directory"_s;
}

void tst_CommandLine_Export::failures()
{
    QFETCH(QString, folder);
    QFETCH(QString, error);
    const auto path = m_folder->filePath(folder);
    const auto finished = run({u"--folder"_s, u"plugins"_s, u"export"_s, u"p"_s, folder, u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(finished.json(), (QJsonObject{{u"ok"_s, false}, {u"path"_s, path}}));
    QCOMPARE(finished.errors,
        QStringList{u"Failed to write plugin bundle to URL: file://%1/, error: %2"_s.arg(path, error)});
    QCOMPARE(content(u"plugins/P.korvanplugin/Contents/Korvan/script.js"_s), "\xEF\xBB\xBF// mine\r\n"_ba);
}

void tst_CommandLine_Export::unknownPlugin()
{
    const auto finished = run({u"export"_s, u"none"_s, u"New"_s, u"--json"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(
        finished.json(), (QJsonObject{{u"error"_s, QJsonObject{{u"message"_s, u"There is no plug-in \"none\"."_s}}}}));
    QVERIFY(!QFileInfo::exists(m_folder->filePath(u"New"_s)));
}

void tst_CommandLine_Export::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing to write") << QStringList{u"export"_s};
    QTest::newRow("no folder") << QStringList{u"export"_s, u"p"_s};
    QTest::newRow("too much") << QStringList{u"export"_s, u"p"_s, u"New"_s, u"more"_s};
}

void tst_CommandLine_Export::wrongUsage()
{
    QFETCH(QStringList, arguments);
    QCOMPARE(run(arguments).exitCode, 2);
}

QTEST_GUILESS_MAIN(tst_CommandLine_Export)
#include "tst_commandline_export.moc"
