// The commands about updates, against a web server with TLS.

#include "CommandLineFixture.h"
#include "support/archives/TestArchives.h"
#include "support/servers/LoopbackServer.h"
#include "support/servers/NginxServer.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

class tst_CommandLine_Updates : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init() { makeFolder(); }

    void check();
    void checkForPeople();
    void checkWithoutFeeds();
    void appcastWithAJSONSibling();
    void slowAndStalledServers();
    void manyFeeds();
    void downloadNamed_data();
    void downloadNamed();
    void downloadAll_data();
    void downloadAll();
    void batchWithGoodAndBadArchives();
    void archiveWithoutAPlugin();
    void connectionLostInTheMiddleOfAnArchive();
    void install_data();
    void install();
    void installWithoutANetwork();
    void installOfTheLatestWithoutANetwork();
    void archiveOfSomethingElse_data();
    void archiveOfSomethingElse();
    void sameVersionTwice();
    void nothingNewerToInstall();
    void whatNamesNothing_data();
    void whatNamesNothing();
    void clear();
    void wrongUsage_data();
    void wrongUsage();

private:
    QString url(const QString &path) const { return m_server->baseUrl().toString() + path; }
    void serve(const QString &path, const QByteArray &content) const
    {
        ::writeFile(m_server->documentRoot() + u'/' + path, content);
    }
    QByteArray feed(const QString &version, const QString &archive) const
    {
        return u"{\"version\": \"%1\", \"downloadURL\": \"%2\"}"_s.arg(version, archive).toUtf8();
    }
    /// A plug-in at 1.0, its feed "<identifier>.json" that offers 2.0, and that archive.
    void pluginWithUpdate(const QString &identifier) const
    {
        pluginWithFeed(identifier, url(identifier + u".json"_s));
        serve(identifier + u".json"_s, feed(u"2.0"_s, identifier + u".zip"_s));
        serve(identifier + u".zip"_s, pluginArchive(identifier, u"2.0"_s));
    }
    void pluginWithFeed(const QString &identifier, const QString &feedURL) const
    {
        const auto manifest = u"{\"identifier\": \"%1\", \"version\": \"1.0\", \"appcast\": \"%2\"}"_s;
        plugin(identifier, manifest.arg(identifier, feedURL).toUtf8());
    }
    Finished updates(const QStringList &arguments) const
    {
        return run(
            QStringList{u"--support-dir"_s, u"support"_s, u"--folder"_s, u"plugins"_s, u"updates"_s} + arguments);
    }
    Finished updatesJSON(const QStringList &arguments) const { return updates(arguments + QStringList{u"--json"_s}); }
    QString installedVersion(const QString &identifier) const
    {
        const auto info =
            run({u"--support-dir"_s, u"support"_s, u"--folder"_s, u"plugins"_s, u"--json"_s, u"info"_s, identifier});
        return info.json()[u"version"_s].toString();
    }
    QString path(const QString &relative) const { return m_folder->filePath(relative); }
    static QStringList textsOf(const QJsonValue &array, const QString &key)
    {
        QStringList texts;
        for (const auto &element : array.toArray())
            texts.append(element.toObject()[key].toString());
        return texts;
    }

    std::unique_ptr<NginxServer> m_server;
};

void tst_CommandLine_Updates::initTestCase()
{
    m_server = std::make_unique<NginxServer>();
    qputenv("SSL_CERT_FILE", QFile::encodeName(m_server->certificateAuthorityFile()));
}

void tst_CommandLine_Updates::cleanupTestCase()
{
    m_server.reset();
}

void tst_CommandLine_Updates::check()
{
    pluginWithUpdate(u"com.x.a"_s);
    pluginWithFeed(u"com.x.current"_s, url(u"current.json"_s));
    serve(u"current.json"_s, feed(u"1.0"_s, u"c.zip"_s));
    pluginWithFeed(u"com.x.gone"_s, url(u"gone.rss"_s)); // the server's page says 404
    pluginWithFeed(u"com.x.garbage"_s, url(u"garbage.json"_s));
    serve(u"garbage.json"_s, "garbage");
    plugin(u"com.x.without"_s, R"({"identifier": "com.x.without"})");
    const auto finished = updatesJSON({u"check"_s});
    QCOMPARE(finished.exitCode, 0);
    const auto json = finished.json();
    const auto feeds = json[u"feeds"_s].toArray();
    QCOMPARE(textsOf(feeds, u"identifier"_s),
        (QStringList{u"com.x.a"_s, u"com.x.current"_s, u"com.x.garbage"_s, u"com.x.gone"_s}));
    QCOMPARE(feeds[0].toObject(),
        (QJsonObject{{u"identifier"_s, u"com.x.a"_s}, {u"installed"_s, u"1.0"_s}, {u"latest"_s, u"2.0"_s},
            {u"error"_s, QJsonValue::Null}}));
    QCOMPARE(feeds[2].toObject()[u"error"_s].toObject()[u"domain"_s].toString(), u"KRUpdatingInfoErrorDomain"_s);
    QVERIFY(feeds[2].toObject()[u"latest"_s].isNull());
    QVERIFY(feeds[3].toObject()[u"error"_s].isNull());
    QVERIFY(feeds[3].toObject()[u"latest"_s].isNull());
    QCOMPARE(json[u"withUpdates"_s].toInt(), 1);
    QCOMPARE(json[u"compatible"_s].toArray(), QJsonArray{u"com.x.a"_s});
    const QJsonObject update{{u"2.0"_s, url(u"com.x.a.zip"_s)}};
    QCOMPARE(json[u"latestNotDownloaded"_s].toObject(), (QJsonObject{{u"com.x.a"_s, update}}));
    QCOMPARE(json[u"compatibleNotDownloaded"_s].toObject().keys(), (QStringList{u"com.x.a"_s, u"com.x.current"_s}));
    QCOMPARE(json[u"incompatibleWithUpdates"_s].toObject(), QJsonObject());
    QCOMPARE(json[u"incompatibleWithCompatibleUpdates"_s].toObject(), QJsonObject());
}

void tst_CommandLine_Updates::checkForPeople()
{
    pluginWithUpdate(u"com.x.a"_s);
    const auto finished = updates({u"check"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.output, "PLUG-IN  INSTALLED  LATEST  STATE\ncom.x.a  1.0        2.0     update\n"_ba);
    QCOMPARE(finished.errors, QStringList());
}

void tst_CommandLine_Updates::checkWithoutFeeds()
{
    const auto finished = updatesJSON({u"check"_s});
    QCOMPARE(finished.exitCode, 0);
    QVERIFY(finished.json()[u"feeds"_s].isArray());
    QCOMPARE(finished.json()[u"feeds"_s].toArray().size(), 0);
    QVERIFY(finished.json()[u"latestNotDownloaded"_s].isObject());
    QCOMPARE(updates({u"check"_s}).output, "No plug-in has an update feed.\n"_ba);
}

void tst_CommandLine_Updates::appcastWithAJSONSibling()
{
    pluginWithFeed(u"com.x.both"_s, url(u"both.rss"_s));
    serve(u"both.rss"_s, "<rss/>");
    serve(u"both.json"_s, feed(u"3.0"_s, u"both.zip"_s));
    pluginWithFeed(u"com.x.rss"_s, url(u"only.rss"_s));
    serve(u"only.rss"_s, R"(<rss xmlns:s="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel><item>
        <enclosure url="a.zip" s:version="2.5"/></item></channel></rss>)");
    const QJsonValue feeds = updatesJSON({u"check"_s}).json()[u"feeds"_s];
    QCOMPARE(textsOf(feeds, u"latest"_s), (QStringList{u"3.0"_s, u"2.5"_s}));
}

void tst_CommandLine_Updates::slowAndStalledServers()
{
    LoopbackServer server;
    server.setAnswer("/stalled.json", Answer::bytes("HTTP/1.1 200 OK\r\n\r\n{").thenStall());
    server.setAnswer("/silent.json", Answer::silence());
    pluginWithFeed(u"com.x.stalled"_s, server.url(u"/stalled.json"_s).toString());
    pluginWithFeed(u"com.x.silent"_s, server.url(u"/silent.json"_s).toString());
    pluginWithUpdate(u"com.x.a"_s);
    const auto finished = updatesJSON({u"check"_s});
    QCOMPARE(finished.exitCode, 0);
    const auto feeds = finished.json()[u"feeds"_s].toArray();
    QCOMPARE(feeds[0].toObject()[u"latest"_s].toString(), u"2.0"_s);
    for (const int slow : {1, 2})
        QCOMPARE(feeds[slow].toObject()[u"error"_s].toObject()[u"code"_s].toInt(), -1001);
}

void tst_CommandLine_Updates::manyFeeds()
{
    for (int i = 0; i < 300; ++i) {
        const auto name = u"com.x.%1"_s.arg(i, 3, 10, QChar(u'0'));
        pluginWithFeed(name, url(u"many/%1.json"_s.arg(i)));
        serve(u"many/%1.json"_s.arg(i), feed(u"2.%1"_s.arg(i), u"a.zip"_s));
    }
    const auto json = updatesJSON({u"check"_s}).json();
    QCOMPARE(json[u"withUpdates"_s].toInt(), 300);
    QCOMPARE(json[u"feeds"_s].toArray()[299].toObject()[u"latest"_s].toString(), u"2.299"_s);
}

void tst_CommandLine_Updates::downloadNamed_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("downloaded");
    QTest::addColumn<QString>("error");
    const auto unknown = u"Could not obtain url to download plugin update."_s;
    QTest::newRow("latest") << QStringList{u"com.x.a"_s} << QStringList{u"com.x.a"_s} << QString();
    QTest::newRow("version") << QStringList{u"com.x.a@2.0"_s} << QStringList{u"com.x.a"_s} << QString();
    QTest::newRow("two") << QStringList{u"com.x.a"_s, u"com.x.b@2.0"_s} << QStringList{u"com.x.a"_s, u"com.x.b"_s}
                         << QString();
    QTest::newRow("version that nobody offers")
        << QStringList{u"com.x.a@9"_s, u"com.x.b"_s} << QStringList{u"com.x.b"_s} << unknown;
    QTest::newRow("identifier with an at sign")
        << QStringList{u"me@x.com"_s} << QStringList{u"me@x.com"_s} << QString();
}

void tst_CommandLine_Updates::downloadNamed()
{
    QFETCH(QStringList, names);
    QFETCH(QString, error);
    for (const auto &identifier : {u"com.x.a"_s, u"com.x.b"_s, u"me@x.com"_s})
        pluginWithUpdate(identifier);
    const auto finished = updatesJSON(QStringList{u"download"_s} + names);
    const auto json = finished.json();
    QTEST(textsOf(json[u"downloaded"_s], u"identifier"_s), "downloaded");
    const auto first = json[u"downloaded"_s].toArray()[0].toObject();
    QCOMPARE(first[u"path"_s].toString(),
        path(u"support/PluginsWarehouse/%1/2.0/update/%1.korvanplugin"_s.arg(first[u"identifier"_s].toString())));
    QCOMPARE(textsOf(json[u"errors"_s], u"message"_s).join(u' '), error);
    QCOMPARE(finished.exitCode, error.isEmpty() ? 0 : 1);
    const auto again = updatesJSON(QStringList{u"download"_s} + names);
    QCOMPARE(again.exitCode, 1);
    QVERIFY(textsOf(again.json()[u"errors"_s], u"message"_s).contains(u"Plugin update already downloaded."_s));
}

void tst_CommandLine_Updates::downloadAll_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("downloaded");
    const QStringList newer{u"com.x.a"_s};
    QTest::newRow("without a word: the latest") << QStringList() << newer;
    QTest::newRow("latest") << QStringList{u"--all"_s, u"latest"_s} << newer;
    QTest::newRow("compatible, the installed one too")
        << QStringList{u"--all"_s, u"compatible"_s} << QStringList{u"com.x.a"_s, u"com.x.current"_s};
}

void tst_CommandLine_Updates::downloadAll()
{
    QFETCH(QStringList, arguments);
    pluginWithUpdate(u"com.x.a"_s);
    pluginWithUpdate(u"com.x.current"_s);
    serve(u"com.x.current.json"_s, feed(u"1.0"_s, u"com.x.current.zip"_s));
    const auto finished = updatesJSON(QStringList{u"download"_s} + arguments);
    QCOMPARE(finished.exitCode, 0);
    QTEST(textsOf(finished.json()[u"downloaded"_s], u"identifier"_s), "downloaded");
    QCOMPARE(finished.json()[u"errors"_s].toArray(), QJsonArray());
    const auto again = updatesJSON(QStringList{u"download"_s} + arguments);
    QCOMPARE(again.exitCode, 0);
    QCOMPARE(again.json()[u"downloaded"_s].toArray(), QJsonArray());
}

void tst_CommandLine_Updates::batchWithGoodAndBadArchives()
{
    for (const auto &identifier : {u"com.x.good"_s, u"com.x.climbs"_s, u"com.x.gone"_s})
        pluginWithUpdate(identifier);
    serve(u"com.x.climbs.zip"_s, ZipBuilder().add({"../x", "x"}).bytes());
    serve(u"com.x.gone.json"_s, feed(u"2.0"_s, u"http://127.0.0.1:1/a.zip"_s));
    const auto finished = updatesJSON({u"download"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(textsOf(finished.json()[u"downloaded"_s], u"identifier"_s), QStringList{u"com.x.good"_s});
    auto domains = textsOf(finished.json()[u"errors"_s], u"domain"_s);
    domains.sort();
    QCOMPARE(domains, (QStringList{u"NSURLErrorDomain"_s, u"com.veldmark.pluginmanager.updating"_s}));
    QVERIFY(!QFile::exists(path(u"support/PluginsWarehouse/com.x.climbs/x"_s)));
}

void tst_CommandLine_Updates::archiveWithoutAPlugin()
{
    pluginWithUpdate(u"com.x.a"_s);
    serve(u"com.x.a.zip"_s, ZipBuilder().add({"read me", "text"}).bytes());
    for (const auto &arguments : {QStringList{u"download"_s}, QStringList{u"download"_s, u"com.x.a"_s}}) {
        const auto finished = updatesJSON(arguments);
        QCOMPARE(finished.exitCode, 1);
        QCOMPARE(finished.json(), (QJsonObject{{u"downloaded"_s, QJsonArray()}, {u"errors"_s, QJsonArray()}}));
    }
    QCOMPARE(updates({u"download"_s}).errors, QStringList{u"korvan-plugins: An archive holds no plug-in."_s});
    QCOMPARE(updatesJSON({u"install"_s, u"com.x.a"_s}).exitCode, 1);
    QCOMPARE(installedVersion(u"com.x.a"_s), u"1.0"_s);
}

void tst_CommandLine_Updates::connectionLostInTheMiddleOfAnArchive()
{
    LoopbackServer server;
    const auto archive = pluginArchive(u"com.x.a"_s, u"2.0"_s);
    const auto head = "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(archive.size()) + "\r\n\r\n";
    server.setAnswer("/a.json", Answer::response(200, feed(u"2.0"_s, u"a.zip"_s)));
    server.setAnswer("/a.zip", Answer::bytes(head + archive.first(archive.size() / 2)));
    pluginWithFeed(u"com.x.a"_s, server.url(u"/a.json"_s).toString());
    const auto finished = updatesJSON({u"install"_s, u"com.x.a"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(finished.json()[u"error"_s].toObject()[u"code"_s].toInt(), -1005);
    QCOMPARE(installedVersion(u"com.x.a"_s), u"1.0"_s);
    server.setAnswer("/a.zip", Answer::bytes(head + archive));
    QCOMPARE(updatesJSON({u"install"_s, u"com.x.a"_s}).exitCode, 0);
    QCOMPARE(installedVersion(u"com.x.a"_s), u"2.0"_s);
}

void tst_CommandLine_Updates::install_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isDownloaded");
    QTest::newRow("latest, downloaded now") << u"com.x.a"_s << false;
    QTest::newRow("version, downloaded now") << u"com.x.a@2.0"_s << false;
    QTest::newRow("latest, downloaded before") << u"com.x.a"_s << true;
    QTest::newRow("version, downloaded before") << u"com.x.a@2.0"_s << true;
}

void tst_CommandLine_Updates::install()
{
    QFETCH(QString, name);
    QFETCH(bool, isDownloaded);
    pluginWithUpdate(u"com.x.a"_s);
    if (isDownloaded)
        QCOMPARE(updatesJSON({u"download"_s}).exitCode, 0);
    const auto finished = updatesJSON({u"install"_s, name});
    QCOMPARE(finished.exitCode, 0);
    const QJsonObject expected{{u"identifier"_s, u"com.x.a"_s}, {u"version"_s, u"2.0"_s},
        {u"path"_s, path(u"plugins/com.x.a.korvanplugin"_s)}, {u"error"_s, QJsonValue::Null}};
    QCOMPARE(finished.json(), expected);
    QCOMPARE(installedVersion(u"com.x.a"_s), u"2.0"_s);
    QVERIFY(QFile::exists(path(u"support/PluginsWarehouse/com.x.a/1.0/com.x.a.korvanplugin"_s)));
}

/// What lies in the warehouse needs no server, also that of a plug-in which is not installed.
void tst_CommandLine_Updates::installWithoutANetwork()
{
    const auto bundle = path(u"support/PluginsWarehouse/com.x.new/1.0/New.korvanplugin/Contents/Korvan/"_s);
    ::writeFile(bundle + u"manifest.json"_s, R"({"identifier": "com.x.new", "version": "1.0"})");
    const auto finished = run({u"--support-dir"_s, u"support"_s, u"updates"_s, u"install"_s, u"com.x.new@1.0"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.output,
        u"com.x.new 1.0 is installed: %1\n"_s.arg(path(u"support/Plugins/New.korvanplugin"_s)).toUtf8());
}

void tst_CommandLine_Updates::installOfTheLatestWithoutANetwork()
{
    pluginWithUpdate(u"com.x.a"_s);
    QCOMPARE(updates({u"download"_s}).exitCode, 0);
    pluginWithFeed(u"com.x.a"_s, u"http://127.0.0.1:1/feed.json"_s);
    QCOMPARE(updates({u"install"_s, u"com.x.a"_s}).exitCode, 0);
    QCOMPARE(installedVersion(u"com.x.a"_s), u"2.0"_s);
}

void tst_CommandLine_Updates::archiveOfSomethingElse_data()
{
    QTest::addColumn<QByteArray>("archive");
    QTest::addColumn<QString>("message");
    const QByteArray manifest = "x.korvanplugin/Contents/Korvan/manifest.json";
    const auto none = u"The archive holds no plug-in."_s;
    QTest::newRow("another plug-in") << ZipBuilder().add({manifest, R"({"identifier": "com.x.b"})"}).bytes()
                                     << u"The archive holds another plug-in, \"com.x.b\"."_s;
    QTest::newRow("file") << ZipBuilder().add({"x.korvanplugin", "text"}).bytes() << none;
    QTest::newRow("link") << ZipBuilder().add({"x.korvanplugin", "/etc", ZipPart::link}).bytes() << none;
    QTest::newRow("folder without a manifest") << ZipBuilder().add({"x.korvanplugin/a", "text"}).bytes() << none;
}

void tst_CommandLine_Updates::archiveOfSomethingElse()
{
    QFETCH(QByteArray, archive);
    QFETCH(QString, message);
    pluginWithUpdate(u"com.x.a"_s);
    serve(u"com.x.a.zip"_s, archive);
    const auto finished = updatesJSON({u"install"_s, u"com.x.a"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(finished.json()[u"error"_s].toObject()[u"message"_s].toString(), message);
    QCOMPARE(installedVersion(u"com.x.a"_s), u"1.0"_s);
}

void tst_CommandLine_Updates::sameVersionTwice()
{
    pluginWithUpdate(u"com.x.a"_s);
    const auto finished = updatesJSON({u"download"_s, u"com.x.a"_s, u"com.x.a@2.0"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json()[u"downloaded"_s].toArray().size(), 1);
}

void tst_CommandLine_Updates::nothingNewerToInstall()
{
    pluginWithUpdate(u"com.x.a"_s);
    serve(u"com.x.a.json"_s, feed(u"1.0"_s, u"com.x.a.zip"_s));
    const auto finished = updatesJSON({u"install"_s, u"com.x.a"_s});
    QCOMPARE(finished.exitCode, 1);
    QCOMPARE(finished.json()[u"error"_s].toObject()[u"message"_s].toString(),
        u"There is no newer version of \"com.x.a\"."_s);
}

void tst_CommandLine_Updates::whatNamesNothing_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("download") << QStringList{u"download"_s, u"no.such"_s};
    QTest::newRow("download of a version") << QStringList{u"download"_s, u"no.such@2.0"_s};
    QTest::newRow("download of one among others") << QStringList{u"download"_s, u"com.x.a"_s, u"no.such"_s};
    QTest::newRow("install") << QStringList{u"install"_s, u"no.such"_s};
    QTest::newRow("install of a version") << QStringList{u"install"_s, u"no.such@2.0"_s};
    QTest::newRow("install from above") << QStringList{u"install"_s, u"../..@../plugins"_s};
}

void tst_CommandLine_Updates::whatNamesNothing()
{
    QFETCH(QStringList, arguments);
    pluginWithUpdate(u"com.x.a"_s);
    const auto finished = updatesJSON(arguments);
    QCOMPARE(finished.exitCode, 1);
    QVERIFY(finished.json()[u"error"_s].toObject()[u"message"_s].toString().startsWith(u"There is no plug-in"));
    QVERIFY(!QFile::exists(path(u"support/PluginsWarehouse/com.x.a"_s)));
}

void tst_CommandLine_Updates::clear()
{
    pluginWithUpdate(u"com.x.a"_s);
    QCOMPARE(updates({u"download"_s}).exitCode, 0);
    const auto finished = updatesJSON({u"clear"_s});
    QCOMPARE(finished.exitCode, 0);
    QCOMPARE(finished.json(), (QJsonObject{{u"cleared"_s, true}}));
    QVERIFY(!QFile::exists(path(u"support/PluginsWarehouse"_s)));
}

void tst_CommandLine_Updates::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("no command") << QStringList();
    QTest::newRow("unknown command") << QStringList{u"remove"_s};
    QTest::newRow("install without a name") << QStringList{u"install"_s};
    QTest::newRow("all of another kind") << QStringList{u"download"_s, u"--all"_s, u"newest"_s};
    QTest::newRow("all and some") << QStringList{u"download"_s, u"com.x.a"_s, u"--all"_s, u"latest"_s};
}

void tst_CommandLine_Updates::wrongUsage()
{
    QFETCH(QStringList, arguments);
    const auto finished = updates(arguments);
    QCOMPARE(finished.exitCode, 2);
    QVERIFY(finished.output.isEmpty());
    QVERIFY(!finished.errors.isEmpty());
}

QTEST_GUILESS_MAIN(tst_CommandLine_Updates)
#include "tst_commandline_updates.moc"
