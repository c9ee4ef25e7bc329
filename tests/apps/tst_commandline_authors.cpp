// What authors of plug-ins do from the command line: make a plug-in, pack it, publish it.

#include "CommandLineFixture.h"
#include "support/servers/LoopbackServer.h"

#include <QCryptographicHash>
#include <QJsonArray>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class tst_CommandLine_Authors : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init() { makeFolder(); }
    void templates_data();
    void templates();
    void suppliersOfTheTemplate();
    void names_data();
    void names();
    void namesWithoutLettersForAnIdentifier_data();
    void namesWithoutLettersForAnIdentifier();
    void nothingIsOverwritten();
    void hintForTheShell();
    void usualFolder();
    void sameFilesSameBytes();
    void linksAndPermissions();
    void notPacked_data();
    void notPacked();
    void feeds_data();
    void feeds();
    void wrongUsage_data();
    void wrongUsage();
    void fromTheTemplateToTheUser();

private:
    QString path(const QString &relative) const { return m_folder->filePath(relative); }
    Finished runHere(const QStringList &arguments) const
    {
        return run(QStringList{u"--support-dir"_s, u"support"_s, u"--folder"_s, u"plugins"_s, u"--json"_s} + arguments);
    }
    QStringList installed() const
    {
        return QDir(path(u"plugins"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    void changeManifest(const QString &bundle, const QByteArray &before, const QByteArray &after) const
    {
        const auto file = path(bundle + u"/Contents/Korvan/manifest.json"_s);
        const auto text = contentOf(file);
        QVERIFY(text.contains(before));
        writeFile(file, QByteArray(text).replace(before, after));
    }
};

void tst_CommandLine_Authors::templates_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("log");
    QTest::newRow("a command") << u"command"_s << QStringList{u"3 layers"_s};
    QTest::newRow("stays running") << u"long-running"_s
                                   << QStringList{u"3 to go"_s, u"2 to go"_s, u"1 to go"_s, u"Done"_s};
    QTest::newRow("supplies data") << u"data-supplier"_s << QStringList{u"1 texts filled"_s};
}

void tst_CommandLine_Authors::templates()
{
    QFETCH(QString, name);
    const auto created = runHere({u"create"_s, u"My Plug-in"_s, u"--template"_s, name});
    QCOMPARE(created.exitCode, 0);
    const auto bundle = QFileInfo(path(u"plugins/My Plug-in.korvanplugin"_s)).canonicalFilePath();
    QCOMPARE(created.json(), (QJsonObject{{u"path"_s, bundle}}));
    QCOMPARE(installed(), QStringList{u"My Plug-in.korvanplugin"_s});

    const auto validated = runHere({u"validate"_s, bundle});
    QCOMPARE(validated.exitCode, 0);
    QCOMPARE(validated.json()[u"bundles"_s].toArray()[0].toObject()[u"problems"_s].toArray(), QJsonArray());

    const auto plugin = runHere({u"info"_s, u"com.example.my-plug-in"_s}).json();
    QVERIFY(plugin[u"compatible"_s].toBool());
    QCOMPARE(plugin[u"suppliesData"_s].toBool(), name == u"data-supplier"_s);

    writeFile(path(u"document.json"_s), R"({"name": "d", "layers": [
        {"id": "a", "name": "a", "type": "oval"}, {"id": "b", "name": "b", "type": "text", "text": "x"},
        {"id": "c", "name": "c", "type": "rectangle"}], "selection": []})");
    const auto finished = runHere({u"run"_s, u"com.example.my-plug-in/run"_s, u"--document"_s, u"document.json"_s});
    QCOMPARE(finished.exitCode, 0);
    QStringList log;
    for (const auto &entry : finished.json()[u"log"_s].toArray())
        log.append(entry.toObject()[u"stringValue"_s].toString());
    QTEST(log, "log");
    QVERIFY(finished.json()[u"finished"_s].toBool());
}

void tst_CommandLine_Authors::suppliersOfTheTemplate()
{
    QCOMPARE(runHere({u"create"_s, u"Names"_s, u"--template"_s, u"data-supplier"_s}).exitCode, 0);
    writeFile(path(u"document.json"_s), R"({"name": "d", "layers": [
        {"id": "a", "name": "a", "type": "text", "text": "x"}, {"id": "b", "name": "b", "type": "text", "text": "x"}],
        "selection": ["a", "b"]})");
    const auto supplied = runHere({u"supply"_s, u"com.example.names"_s, u"--document"_s, u"document.json"_s,
        u"--dump-document"_s, u"after.json"_s});
    QVERIFY2(supplied.exitCode == 0, supplied.output.constData());
    const auto layers = QJsonDocument::fromJson(contentOf(path(u"after.json"_s))).object()[u"layers"_s].toArray();
    QCOMPARE(layers[0].toObject()[u"text"_s].toString(), u"Ada"_s);
    QCOMPARE(layers[1].toObject()[u"text"_s].toString(), u"Alan"_s);
}

void tst_CommandLine_Authors::names_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("identifier");
    QTest::newRow("slashes and dots") << u"../../a/b.c"_s << u"-.-a-b.c"_s << u"com.example.a-b-c"_s;
    QTest::newRow("hidden") << u".hidden"_s << u"hidden"_s << u"com.example.hidden"_s;
    QTest::newRow("with the extension") << u"Tidy.korvanplugin"_s << u"Tidy"_s << u"com.example.tidy"_s;
    QTest::newRow("quotation marks and braces")
        << u"a \"b\" {{identifier}}"_s << u"a \"b\" {{identifier}}"_s << u"com.example.a-b-identifier"_s;
    QTest::newRow("accents") << u"Ünï Café"_s << u"Ünï Café"_s << u"com.example.uni-cafe"_s;
    QTest::newRow("a line end") << u"a\nb"_s << u"a-b"_s << u"com.example.a-b"_s;
    QTest::newRow("too long for a file") << QString(500, u'x') << QString(200, u'x')
                                         << u"com.example."_s + QString(500, u'x');
    QTest::newRow("only dots") << u".."_s << QString() << QString();
    QTest::newRow("empty") << u""_s << QString() << QString();
}

void tst_CommandLine_Authors::names()
{
    QFETCH(QString, name);
    QFETCH(QString, folder);
    const auto created = runHere({u"create"_s, name});
    QCOMPARE(created.exitCode, folder.isEmpty() ? 1 : 0);
    if (folder.isEmpty()) {
        QVERIFY(created.json()[u"error"_s].toObject()[u"message"_s].toString().contains(u"cannot be the name"));
        QCOMPARE(installed(), QStringList());
        return;
    }
    QCOMPARE(installed(), QStringList{folder + u".korvanplugin"_s});
    const auto plugin = runHere({u"list"_s}).json()[u"plugins"_s].toArray()[0].toObject();
    QTEST(plugin[u"identifier"_s].toString(), "identifier");
    QCOMPARE(plugin[u"name"_s].toString(), name == u"Tidy.korvanplugin"_s ? u"Tidy"_s : name);
}

void tst_CommandLine_Authors::namesWithoutLettersForAnIdentifier_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("another script") << u"整理"_s;
    QTest::newRow("signs only") << u"*!"_s;
}

void tst_CommandLine_Authors::namesWithoutLettersForAnIdentifier()
{
    QFETCH(QString, name);
    const auto created = runHere({u"create"_s, name});
    QCOMPARE(created.exitCode, 1);
    QCOMPARE(created.json()[u"error"_s].toObject()[u"message"_s].toString(),
        u"The name \"%1\" has no letters for an identifier. Give one with --identifier, for example "
        "com.example.my-plugin."_s.arg(name));
    QCOMPARE(installed(), QStringList());
    QCOMPARE(runHere({u"create"_s, name, u"--identifier"_s, u"com.x.a"_s}).exitCode, 0);
    QCOMPARE(installed(), QStringList{name + u".korvanplugin"_s});
}

void tst_CommandLine_Authors::nothingIsOverwritten()
{
    QCOMPARE(runHere({u"create"_s, u"a"_s, u"--identifier"_s, u"com.x.mine"_s}).exitCode, 0);
    const auto manifest = path(u"plugins/a.korvanplugin/Contents/Korvan/manifest.json"_s);
    const auto before = contentOf(manifest);
    QVERIFY(before.contains("\"com.x.mine\""));
    const auto again = runHere({u"create"_s, u"a"_s});
    QCOMPARE(again.exitCode, 1);
    QVERIFY(again.json()[u"error"_s].toObject()[u"message"_s].toString().startsWith(u"There is already something at"));
    QCOMPARE(contentOf(manifest), before);
    QCOMPARE(installed(), QStringList{u"a.korvanplugin"_s});

    QVERIFY(QFile::link(path(u"nowhere"_s), path(u"plugins/b.korvanplugin"_s)));
    QCOMPARE(runHere({u"create"_s, u"b"_s}).exitCode, 1);
    QVERIFY(!QFile::exists(path(u"nowhere"_s)));
}

void tst_CommandLine_Authors::hintForTheShell()
{
    const auto created = run({u"--folder"_s, u"$(a)"_s, u"create"_s, u"b"_s, u"--identifier"_s, u"`c`\"\\"_s});
    const auto folder = QFileInfo(path(u"$(a)"_s)).canonicalFilePath().replace(u"$"_s, u"\\$"_s);
    QVERIFY2(created.output.endsWith(
                 uR"(Run it with: korvan-plugins --folder "%1" run "\`c\`\"\\/run")"_s.arg(folder).toUtf8() + '\n'),
        created.output.constData());
}

void tst_CommandLine_Authors::usualFolder()
{
    const auto created = run({u"--support-dir"_s, u"support"_s, u"create"_s, u"a"_s, u"--json"_s});
    QCOMPARE(
        created.json()[u"path"_s].toString(), QFileInfo(path(u"support/Plugins/a.korvanplugin"_s)).canonicalFilePath());
    QCOMPARE(run({u"--support-dir"_s, u"support"_s, u"run"_s, u"com.example.a/run"_s}).exitCode, 0);
}

void tst_CommandLine_Authors::sameFilesSameBytes()
{
    QCOMPARE(runHere({u"create"_s, u"a"_s}).exitCode, 0);
    const auto bundle = path(u"plugins/a.korvanplugin"_s);
    for (const auto &name : {u"z"_s, u"A"_s, u".hidden"_s})
        writeFile(bundle + u"/Contents/Resources/"_s + name, name.toUtf8().repeated(1000));
    QDir(m_folder->path()).mkpath(u"out"_s);
    const auto packed = runHere({u"pack"_s, bundle, u"--output"_s, u"out/a.zip"_s});
    QCOMPARE(packed.exitCode, 0);
    const auto archive = contentOf(path(u"out/a.zip"_s));
    QCOMPARE(packed.json()[u"archive"_s].toString(), path(u"out/a.zip"_s));
    QVERIFY(packed.json()[u"feed"_s].isNull());
    QCOMPARE(packed.json()[u"sha256"_s].toString().toLatin1(),
        QCryptographicHash::hash(archive, QCryptographicHash::Sha256).toHex());

    // The same files, made in another order, at another time, with other permissions.
    const auto copy = path(u"copy/a.korvanplugin"_s);
    for (const auto &name : {u"Resources/.hidden"_s, u"Korvan/manifest.json"_s, u"Resources/A"_s, u"Resources/z"_s,
             u"Korvan/command.js"_s}) {
        const auto file = copy + u"/Contents/"_s + name;
        writeFile(file, contentOf(bundle + u"/Contents/"_s + name));
        QFile changed(file);
        QVERIFY(changed.setPermissions(QFile::ReadOwner));
        QVERIFY(changed.open(QIODevice::ReadOnly));
        QVERIFY(changed.setFileTime(QDateTime(QDate(2001, 2, 3), QTime(4, 5)), QFileDevice::FileModificationTime));
    }
    writeFile(path(u"out/b.zip"_s), "was here");
    QCOMPARE(runHere({u"pack"_s, copy + u"/"_s, u"--output"_s, u"out/b.zip"_s}).exitCode, 0);
    QCOMPARE(contentOf(path(u"out/b.zip"_s)), archive);
    QCOMPARE(QDir(path(u"out"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        (QStringList{u"a.zip"_s, u"b.zip"_s}));
}

void tst_CommandLine_Authors::linksAndPermissions()
{
    plugin(u"a"_s, R"({"version": "1.0"})");
    const auto bundle = path(u"plugins/a.korvanplugin/"_s);
    writeFile(bundle + u"Contents/Resources/tool"_s, "#!");
    QVERIFY(QFile::setPermissions(bundle + u"Contents/Resources/tool"_s, QFile::ReadOwner | QFile::ExeOwner));
    QVERIFY(QDir().mkpath(bundle + u"Contents/Resources/empty"_s));
    QCOMPARE(::symlink("../Korvan/script.js", QFile::encodeName(bundle + u"Contents/Resources/link"_s)), 0);
    QCOMPARE(runHere({u"pack"_s, u"plugins/a.korvanplugin"_s}).exitCode, 0);
    QCOMPARE(runHere({u"unpack"_s, u"a-1.0.zip"_s, u"out"_s}).exitCode, 0);
    const QDir unpacked(path(u"out/a.korvanplugin/Contents"_s));
    QCOMPARE(contentOf(unpacked.filePath(u"Resources/link"_s)), contentOf(unpacked.filePath(u"Korvan/script.js"_s)));
    QVERIFY(QFileInfo(unpacked.filePath(u"Resources/link"_s)).isSymLink());
    QVERIFY(!QFileInfo::exists(unpacked.filePath(u"Resources/empty"_s)));
    QCOMPARE(runHere({u"validate"_s, u"out/a.korvanplugin"_s}).exitCode, 0);
}

void tst_CommandLine_Authors::notPacked_data()
{
    QTest::addColumn<QByteArray>("link"); // none: a pipe
    QTest::addColumn<QString>("message");
    const auto outside = u"\"Contents/link\" cannot be packed: it is a link that leads out of the plug-in."_s;
    QTest::newRow("a link that leads out") << "../../b"_ba << outside;
    QTest::newRow("an absolute link") << "/etc/passwd"_ba << outside;
    QTest::newRow("a pipe") << ""_ba << u"\"Contents/link\" cannot be packed: it is neither a file nor a folder."_s;
}

void tst_CommandLine_Authors::notPacked()
{
    QFETCH(QByteArray, link);
    plugin(u"a"_s, R"({"version": "1.0"})");
    const auto place = QFile::encodeName(path(u"plugins/a.korvanplugin/Contents/link"_s));
    QCOMPARE(link.isEmpty() ? ::mkfifo(place.constData(), 0644) : ::symlink(link.constData(), place.constData()), 0);
    writeFile(path(u"a.zip"_s), "before");
    const auto packed = runHere({u"pack"_s, u"plugins/a.korvanplugin"_s, u"--output"_s, u"a.zip"_s});
    QCOMPARE(packed.exitCode, 1);
    QTEST(packed.json()[u"error"_s].toObject()[u"message"_s].toString(), "message");
    QCOMPARE(contentOf(path(u"a.zip"_s)), "before"_ba);
}

void tst_CommandLine_Authors::feeds_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("url");
    QTest::addColumn<QByteArray>("feed");
    QTest::newRow("JSON") << u"feed.json"_s << u"https://example.com/x.zip"_s << R"({
  "version": "1.0 & more",
  "downloadURL": "https://example.com/x.zip"
}
)"_ba;
    const auto appcast = R"(<?xml version="1.0" encoding="UTF-8"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">
  <channel>
    <title>a</title>
    <item>
      <title>a 1.0 &amp; more</title>
      <sparkle:version>1.0 &amp; more</sparkle:version>
      <enclosure url="https://example.com/a%20b.zip" length="SIZE" type="application/zip"/>
    </item>
  </channel>
</rss>
)"_ba;
    QTest::newRow("appcast, and a folder on the server") << u"feed.xml"_s << u"https://example.com/"_s << appcast;
    QTest::newRow("the other name of appcasts") << u"feed.RSS"_s << u"https://example.com/a%20b.zip"_s << appcast;
}

void tst_CommandLine_Authors::feeds()
{
    QFETCH(QString, file);
    QFETCH(QString, url);
    QFETCH(QByteArray, feed);
    plugin(u"a"_s, R"({"version": "1.0 & more"})");
    writeFile(path(file), "before");
    const auto packed = runHere(
        {u"pack"_s, u"plugins/a.korvanplugin"_s, u"--output"_s, u"a b.zip"_s, u"--feed"_s, file, u"--url"_s, url});
    QCOMPARE(packed.exitCode, 0);
    QCOMPARE(packed.json()[u"feed"_s].toString(), path(file));
    const auto size = QByteArray::number(QFileInfo(path(u"a b.zip"_s)).size());
    QCOMPARE(contentOf(path(file)), feed.replace("SIZE", size));
}

void tst_CommandLine_Authors::wrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    const auto bundle = u"plugins/a.korvanplugin"_s;
    QTest::newRow("create without a name") << QStringList{u"create"_s} << 2;
    QTest::newRow("an unknown template") << QStringList{u"create"_s, u"b"_s, u"--template"_s, u"x"_s} << 2;
    QTest::newRow("an empty identifier") << QStringList{u"create"_s, u"b"_s, u"--identifier"_s, u""_s} << 1;
    QTest::newRow("pack without a path") << QStringList{u"pack"_s} << 2;
    QTest::newRow("a feed without a URL") << QStringList{u"pack"_s, bundle, u"--feed"_s, u"a.json"_s} << 2;
    QTest::newRow("a feed of another format")
        << QStringList{u"pack"_s, bundle, u"--feed"_s, u"a.txt"_s, u"--url"_s, u"x"_s} << 2;
    QTest::newRow("no plug-in") << QStringList{u"pack"_s, u"plugins"_s} << 1;
    QTest::newRow("nothing there") << QStringList{u"pack"_s, u"gone"_s} << 1;
    QTest::newRow("a name that hosts do not unpack") << QStringList{u"pack"_s, u"a..b.korvanplugin"_s} << 1;
    QTest::newRow("into itself") << QStringList{u"pack"_s, bundle, u"--output"_s, bundle + u"/a.zip"_s} << 1;
    QTest::newRow("no such folder") << QStringList{u"pack"_s, bundle, u"--output"_s, u"no/a.zip"_s} << 1;
}

void tst_CommandLine_Authors::wrongUsage()
{
    QFETCH(QStringList, arguments);
    plugin(u"a"_s, "{}");
    writeFile(path(u"a..b.korvanplugin/Contents/Korvan/manifest.json"_s), "{}");
    const auto finished = runHere(arguments);
    QTEST(finished.exitCode, "exitCode");
    QCOMPARE(finished.json().contains(u"error"_s), finished.exitCode == 1);
    QCOMPARE(finished.errors.isEmpty(), finished.exitCode == 1);
    QCOMPARE(installed(), QStringList{u"a.korvanplugin"_s});
    QCOMPARE(QDir(path(u"plugins/a.korvanplugin"_s)).entryList(QDir::NoDotAndDotDot | QDir::AllEntries),
        QStringList{u"Contents"_s});
}

void tst_CommandLine_Authors::fromTheTemplateToTheUser()
{
    LoopbackServer server;
    const auto bundle = u"plugins/Word Count.korvanplugin"_s;
    const auto identifier = u"com.example.word-count"_s;
    QCOMPARE(runHere({u"create"_s, u"Word Count"_s}).exitCode, 0);
    const auto feedURL = server.url(u"/feed.json"_s).toString().toUtf8();
    changeManifest(bundle, "\"version\": \"1.0\"", "\"version\": \"1.0\", \"appcast\": \"" + feedURL + '"');
    QCOMPARE(runHere({u"validate"_s, bundle}).exitCode, 0);
    QCOMPARE(runHere({u"run"_s, identifier + u"/run"_s}).exitCode, 0);

    // The user has 1.0, the author goes on.
    QVERIFY(QDir().mkpath(path(u"work"_s)));
    QVERIFY(QDir().rename(path(bundle), path(u"work/Word Count.korvanplugin"_s)));
    const auto work = u"work/Word Count.korvanplugin"_s;
    QCOMPARE(runHere({u"pack"_s, work, u"--output"_s, u"1.0.zip"_s}).exitCode, 0);
    QCOMPARE(runHere({u"unpack"_s, u"1.0.zip"_s, u"plugins"_s}).exitCode, 0);
    changeManifest(work, "\"version\": \"1.0\"", "\"version\": \"1.1\"");
    QCOMPARE(runHere({u"validate"_s, work}).exitCode, 0);
    const auto packed = runHere({u"pack"_s, work, u"--output"_s, u"1.1.zip"_s, u"--feed"_s, u"feed.json"_s, u"--url"_s,
        server.url(u"/archives/"_s).toString()});
    QCOMPARE(packed.exitCode, 0);
    server.setAnswer("/feed.json", Answer::response(200, contentOf(path(u"feed.json"_s))));
    server.setAnswer("/archives/1.1.zip", Answer::response(200, contentOf(path(u"1.1.zip"_s))));

    const auto updated = runHere({u"updates"_s, u"install"_s, identifier});
    QCOMPARE(updated.exitCode, 0);
    QCOMPARE(updated.json()[u"version"_s].toString(), u"1.1"_s);
    QCOMPARE(runHere({u"info"_s, identifier}).json()[u"version"_s].toString(), u"1.1"_s);
    QCOMPARE(runHere({u"run"_s, identifier + u"/run"_s}).exitCode, 0);
    QCOMPARE(server.requestedPaths(), (QList<QByteArray>{"/feed.json", "/archives/1.1.zip"}));
}

QTEST_GUILESS_MAIN(tst_CommandLine_Authors)
#include "tst_commandline_authors.moc"
