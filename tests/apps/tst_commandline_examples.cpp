// The example plug-ins: that between them they show every module, and that they do what they promise.

#include "CommandLineFixture.h"
#include "support/servers/LoopbackServer.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

const QByteArray screen = R"({"name": "Screen", "layers": [
    {"id": "p", "name": "Photo", "type": "image", "frame": {"x": 0, "y": 0, "width": 320, "height": 200}},
    {"id": "g", "name": "Form", "type": "group", "frame": {"x": 0, "y": 0, "width": 320, "height": 80}, "layers": [
        {"id": "b", "name": "Button?fill=%233A6FF7&cornerRadius=8", "type": "rectangle",
            "frame": {"x": 8, "y": 8, "width": 100, "height": 40}, "style": {"fill": "#000000"}},
        {"id": "t", "name": "Title?colour=red", "type": "text", "text": "schÃ¶n €"},
        {"id": "u", "name": "Subtitle", "type": "text", "text": "schÃ¶n"}]},
    {"id": "v", "name": "Map", "type": "image", "frame": {"x": 0, "y": 0, "width": 10, "height": 20}}]})";

/// A text with a letter that a reader of small pieces cuts in two, quotation marks and empty fields.
const QByteArray list = "\"name\",type,x,width,text,fill\r\n"
                        "\"A \"\"b\"\", c\",text,5,70,\"h\xC3\xA9\nllo\",#FF0000\r\n"
                        "Dot,oval,,,,\n"
                        "Last,rectangle,1.5,2,,#00FF00";

QByteArray textOf(const QJsonValue &value)
{
    return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact);
}

/// The modules that a plug-in's scripts require, and "fetch" when they call it.
QSet<QString> namesIn(const QString &bundle)
{
    static const QRegularExpression use(uR"(\brequire\('([a-z_/-]+)'\)|\b(fetch)\()"_s);
    QSet<QString> names;
    for (QDirIterator files(bundle, {u"*.js"_s}, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(file.fileName()));
        const auto script = QString::fromUtf8(file.readAll());
        for (auto matches = use.globalMatch(script); matches.hasNext();) {
            const auto match = matches.next();
            names.insert(match.captured(match.lastCapturedIndex()));
        }
    }
    return names;
}

} // namespace

class tst_CommandLine_Examples : public QObject, private CommandLineFixture
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_server.reset(); }

    void everyModuleIsUsedTwice_data();
    void everyModuleIsUsedTwice();
    void commands_data();
    void commands();
    void documents_data();
    void documents();
    void whatIsExportedCanBeImported();
    void aPictureIsAskedForAgain();
    void report();

private:
    /// With SERVER in the context standing for the server's URL.
    Finished runExample(const QString &command, const QString &context = u"{}"_s) const
    {
        return run({u"--folder"_s, examples + u"/plugins"_s, u"run"_s, u"com.example."_s + command, u"--document"_s,
            m_folder->filePath(u"document.json"_s), u"--dump-document"_s, m_folder->filePath(u"out.json"_s),
            u"--context"_s, QString(context).replace(u"SERVER"_s, m_server->url(u""_s).toString()), u"--json"_s});
    }
    QJsonValue dumped(const QString &path) const
    {
        QJsonValue value = QJsonDocument::fromJson(fileContent(m_folder->filePath(u"out.json"_s))).object();
        for (const auto &key : path.split(u'/'))
            value = value.isArray() ? value.toArray().at(key.toInt()) : value.toObject().value(key);
        return value;
    }

    std::unique_ptr<LoopbackServer> m_server;
};

void tst_CommandLine_Examples::init()
{
    makeFolder();
    writeFile(m_folder->filePath(u"document.json"_s), screen);
    m_server = std::make_unique<LoopbackServer>();
    m_server->setAnswer("/list.csv", Answer::response(200, list));
    m_server->setAnswer("/p.png?width=320&height=200&subject=Photo",
        Answer::response(200, "\xFF\0a"_ba, {{"Content-Type", "image/png"}}));
    m_server->setAnswer("/p.jpeg?width=320&height=200&subject=Photo", Answer::response(200, "b"));
}

void tst_CommandLine_Examples::everyModuleIsUsedTwice_data()
{
    QTest::addColumn<QString>("module");
    for (const auto *const name : {"buffer", "console", "events", "os", "path", "process", "querystring", "stream",
             "string_decoder", "timers", "util", "korvan", "korvan/async", "korvan/data-supplier", "korvan/dom",
             "korvan/settings", "korvan/ui", "fetch"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_CommandLine_Examples::everyModuleIsUsedTwice()
{
    QFETCH(QString, module);
    const QDir folder(examples + u"/plugins"_s);
    QStringList users;
    for (const auto &name : folder.entryList({u"*.korvanplugin"_s}, QDir::Dirs)) {
        if (namesIn(folder.filePath(name)).contains(module))
            users.append(name);
    }
    QVERIFY2(users.size() >= 2, qPrintable(users.join(u", ")));
}

void tst_CommandLine_Examples::commands_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("context");
    QTest::addColumn<QJsonValue>("value");
    QTest::addColumn<QStringList>("log");
    const auto none = u"{}"_s;
    QTest::newRow("colours") << u"colour-palette/report"_s << none << QJsonValue(QJsonObject{{u"#000000"_s, 1}})
                             << QStringList{u"┌─────────┬─────────┬──────┬───────────┐"_s};
    QTest::newRow("outline") << u"export-layer-list/outline"_s << none
                             << QJsonValue(u"- Photo (image)\n- Form (group)\n"
                                           "  - Button?fill=%233A6FF7&cornerRadius=8 (rectangle)\n"
                                           "  - Title?colour=red (text)\n  - Subtitle (text)\n- Map (image)"_s)
                             << QStringList{u"- Photo (image)"_s};
    QTest::newRow("watching") << u"layer-watcher/watch"_s << u"{\"pause\": 0}"_s << QJsonValue()
                              << QStringList{u"Watching 6 layers"_s, u"Watching no more"_s};
    QTest::newRow("texts in the wrong encoding")
        << u"mend-texts/mend"_s << none << QJsonValue(1) << QStringList{u"schÃ¶n → schön"_s};
    QTest::newRow("a style that a layer cannot have")
        << u"query-styles/read"_s << none << QJsonValue(1)
        << QStringList{u"Title: The style of a text layer has no key \"colour\". It has: opacity, fill, border, "
                       "borderWidth, fontFamily, fontSize, fontWeight, textAlign."_s};
    QTest::newRow("styles in names") << u"query-styles/write"_s << none << QJsonValue(1) << QStringList{};
    QTest::newRow("import") << u"import-layer-list/import"_s << u"{\"url\": \"SERVER/list.csv\"}"_s << QJsonValue(3)
                            << QStringList{};
    QTest::newRow("import of what is not there")
        << u"import-layer-list/import"_s << u"{\"url\": \"SERVER/none\"}"_s << QJsonValue()
        << QStringList{u"Error: SERVER/none cannot be read. The server has answered 404."_s};
    QTest::newRow("import from nowhere: nobody to ask")
        << u"import-layer-list/import"_s << none << QJsonValue(0) << QStringList{};
    QTest::newRow("pictures") << u"web-pictures/load"_s << u"{\"server\": \"SERVER/p.png\"}"_s << QJsonValue(1)
                              << QStringList{u"Map: The server has answered 404."_s};
}

void tst_CommandLine_Examples::commands()
{
    QFETCH(QString, command);
    QFETCH(QString, context);
    QFETCH(QStringList, log);
    const auto finished = runExample(command, context);
    QStringList logged;
    for (const auto &entry : finished.json()[u"log"_s].toArray())
        logged.append(entry.toObject()[u"stringValue"_s].toString().section(u'\n', 0, 0));
    QCOMPARE(logged, log.replaceInStrings(u"SERVER"_s, m_server->url(u""_s).toString()));
    QFETCH(QJsonValue, value);
    QCOMPARE(textOf(finished.json()[u"returnValue"_s]), textOf(value));
    QVERIFY(finished.json()[u"finished"_s].toBool());
}

void tst_CommandLine_Examples::documents_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("context");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QJsonValue>("value");
    const auto row = [](const char *tag, const QString &command, const QString &context, const QString &path,
                         const QJsonValue &value) { QTest::newRow(tag) << command << context << path << value; };
    const auto import = u"import-layer-list/import"_s;
    const auto url = u"{\"url\": \"SERVER/list.csv\"}"_s;
    row("imported name", import, url, u"layers/3/name"_s, u"A \"b\", c"_s);
    row("imported text", import, url, u"layers/3/text"_s, u"hé\nllo"_s);
    row("imported frame", import, url, u"layers/3/frame"_s,
        QJsonObject{{u"x"_s, 5}, {u"y"_s, 0}, {u"width"_s, 70}, {u"height"_s, 100}});
    row("imported style", import, url, u"layers/3/style"_s, QJsonObject{{u"fill"_s, u"#FF0000"_s}});
    row("imported without values", import, url, u"layers/4/style"_s, QJsonObject());
    row("imported from a line without an end", import, url, u"layers/5/frame/x"_s, 1.5);
    row("selected what was imported", import, url, u"selection"_s,
        QJsonArray{u"layer-7"_s, u"layer-8"_s, u"layer-9"_s});
    row("mended", u"mend-texts/mend"_s, u"{}"_s, u"layers/1/layers/2/text"_s, u"schön"_s);
    row("text of no other encoding", u"mend-texts/mend"_s, u"{}"_s, u"layers/1/layers/1/text"_s, u"schÃ¶n €"_s);
    row("styled by the name", u"query-styles/read"_s, u"{}"_s, u"layers/1/layers/0/style"_s,
        QJsonObject{{u"fill"_s, u"#3A6FF7"_s}, {u"cornerRadius"_s, 8}});
    row("a name without its style", u"query-styles/read"_s, u"{}"_s, u"layers/1/layers/0/name"_s, u"Button"_s);
    row("a name that is kept", u"query-styles/read"_s, u"{}"_s, u"layers/1/layers/1/name"_s, u"Title?colour=red"_s);
    row("a name with the style", u"query-styles/write"_s, u"{}"_s, u"layers/1/layers/0/name"_s,
        u"Button?fill=%23000000"_s);
    row("picture of a type", u"web-pictures/load"_s, u"{\"server\": \"SERVER/p.png\"}"_s, u"layers/0/image"_s,
        u"data:image/png;base64,/wBh"_s);
    row("picture of a name", u"web-pictures/load"_s, u"{\"server\": \"SERVER/p.jpeg\"}"_s, u"layers/0/image"_s,
        u"data:image/jpeg;base64,Yg=="_s);
}

void tst_CommandLine_Examples::documents()
{
    QFETCH(QString, command);
    QFETCH(QString, context);
    QFETCH(QString, path);
    QFETCH(QJsonValue, value);
    runExample(command, context);
    QCOMPARE(textOf(dumped(path)), textOf(value));
}

void tst_CommandLine_Examples::whatIsExportedCanBeImported()
{
    const auto csv = runExample(u"export-layer-list/csv"_s).json()[u"returnValue"_s].toString();
    QVERIFY(csv.startsWith(u"name,type,depth,x,y,width,height\n\"Photo\",image,0,0,0,320,200\n"_s));
    m_server->setAnswer("/exported.csv", Answer::response(200, csv.toUtf8()));
    writeFile(m_folder->filePath(u"document.json"_s), R"({"layers": []})");
    const auto imported = runExample(u"import-layer-list/import"_s, u"{\"url\": \"SERVER/exported.csv\"}"_s);
    QCOMPARE(imported.json()[u"returnValue"_s].toInt(), 6);
    QCOMPARE(dumped(u"layers/1/layers/0/name"_s).toString(), u"Button?fill=%233A6FF7&cornerRadius=8"_s);
}

void tst_CommandLine_Examples::aPictureIsAskedForAgain()
{
    m_server->setAnswers("/p.png?width=320&height=200&subject=Photo",
        {Answer::response(503), Answer::response(200, "c", {{"Content-Type", "image/png"}})});
    QCOMPARE(
        runExample(u"web-pictures/load"_s, u"{\"server\": \"SERVER/p.png\"}"_s).json()[u"returnValue"_s].toInt(), 1);
    QCOMPARE(dumped(u"layers/0/image"_s).toString(), u"data:image/png;base64,Yw=="_s);
}

void tst_CommandLine_Examples::report()
{
    const auto finished = runExample(u"document-report/report"_s).json();
    auto report = finished[u"returnValue"_s].toObject();
    const auto log = finished[u"log"_s].toArray();
    QCOMPARE(log.size(), 3);
    QVERIFY(log[1].toObject()[u"stringValue"_s].toString().startsWith(u"  ┌"));
    QVERIFY(log[2].toObject()[u"stringValue"_s].toString().contains(u"  document: 'Screen',"));
    static const QRegularExpression memory(u"^[1-9][0-9]* MB of [1-9][0-9]* MB$"_s);
    QVERIFY(memory.match(report.take(u"memory"_s).toString()).hasMatch());
    QVERIFY(report.take(u"system"_s).toString().startsWith(u"Linux "));
    QVERIFY(report.take(u"application"_s).toString().startsWith(u"v"));
    QCOMPARE(textOf(report),
        textOf(QJsonObject{{u"document"_s, u"Screen"_s},
            {u"layers"_s, QJsonObject{{u"group"_s, 1}, {u"image"_s, 2}, {u"rectangle"_s, 1}, {u"text"_s, 2}}},
            {u"deepest"_s, u"/Form/Button?fill=%233A6FF7&cornerRadius=8"_s}}));
}

QTEST_GUILESS_MAIN(tst_CommandLine_Examples)
#include "tst_commandline_examples.moc"
