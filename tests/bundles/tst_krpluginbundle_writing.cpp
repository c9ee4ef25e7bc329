// What is written of a plug-in.

#include "bundles/KRPluginBundle.h"
#include "commands/KRPluginStandaloneScript.h"
#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/JSONText.h"
#include "support/BundleBuilder.h"
#include "support/NilableText.h"
#include "support/TestEnvironment.h"

#include <QDir>
#include <QDirIterator>
#include <QtTest>

#include <limits>

using namespace Qt::StringLiterals;

class tst_KRPluginBundle_Writing : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void writesWhatWasMade();
    void writesTheIcon();
    void sharedScriptIsOneFile();
    void firstScriptOfANameIsWritten();
    void noScriptTakesTheManifestsPlace();
    void commandWithoutScript();
    void standaloneScriptIsWrittenWrapped();
    void iconInSubfolders_data();
    void iconInSubfolders();
    void iconWithoutBytes();
    void losesSwitches();
    void onlyWhatIsDeclaredIsWritten();

    void manifestThatIsNoJSON_data();
    void manifestThatIsNoJSON();
    void placesThatFail_data();
    void placesThatFail();
    void namesThatLeadElsewhere_data();
    void namesThatLeadElsewhere();
    void neverOverItself();

private:
    using Commands = std::vector<std::shared_ptr<KRPluginCommand>>;

    static std::shared_ptr<KRPluginCommand> command(
        const QString &identifier, const QString &file = u"a.js"_s, const QString &source = u"var a;"_s)
    {
        return std::make_shared<KRPluginCommand>(std::make_shared<KRPluginScript>(source, file), identifier,
            identifier.toUpper(), u"onRun"_s, KRPluginCommand::Scope::Document);
    }
    static std::shared_ptr<KRPluginBundle> made(const Commands &commands, const QImage &icon = {})
    {
        return KRPluginBundle::initWithName(u"Tidy"_s, u"com.example.tidy"_s, commands, icon);
    }
    BundleBuilder builder() const { return BundleBuilder(m_environment->path(u"Plugins"_s), u"Read"_s); }
    QUrl target() const { return QUrl::fromLocalFile(m_environment->path(u"Written.korvanplugin/"_s)); }
    QByteArray written(const QString &relativePath) const;
    QVariantMap manifest() const { return variantFromJSON(written(u"Korvan/manifest.json"_s)).value().toMap(); }
    QStringList files() const;

    std::unique_ptr<TestEnvironment> m_environment;
};

namespace {

QImage picture()
{
    QImage image(3, 2, QImage::Format_ARGB32);
    image.fill(QColor(1, 2, 3, 128));
    return image;
}

} // namespace

void tst_KRPluginBundle_Writing::init()
{
    m_environment = std::make_unique<TestEnvironment>();
}

void tst_KRPluginBundle_Writing::cleanup()
{
    m_environment.reset();
}

/// A file below the written "Contents"; null when there is none.
QByteArray tst_KRPluginBundle_Writing::written(const QString &relativePath) const
{
    const auto bytes = readFile(pathFromFileURL(target()) + "/Contents/" + relativePath.toUtf8(), 1'000'000);
    return bytes ? bytes.value() : QByteArray();
}

/// Everything in the written plug-in.
QStringList tst_KRPluginBundle_Writing::files() const
{
    QStringList files;
    const auto path = target().toLocalFile();
    QDirIterator entries(path, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext())
        files.append(entries.next().mid(path.size()));
    files.sort();
    return files;
}

void tst_KRPluginBundle_Writing::writesWhatWasMade()
{
    const auto silent = std::make_shared<KRPluginCommand>(std::make_shared<KRPluginScript>(u"b"_s, u"b.js"_s), u"b"_s,
        nil, OrderedVariantDictionary{{u"setUp"_s, u"f"_s}}, nil, KRPluginCommand::Scope::Application);
    QVERIFY(made({command(u"a"_s), silent})->writeToURL(target()));
    QCOMPARE(files(),
        (QStringList{u"Contents"_s, u"Contents/Korvan"_s, u"Contents/Korvan/a.js"_s, u"Contents/Korvan/b.js"_s,
            u"Contents/Korvan/manifest.json"_s, u"Contents/Resources"_s}));
    QCOMPARE(written(u"Korvan/manifest.json"_s), R"({
  "author": "",
  "authorEmail": "",
  "name": "Tidy",
  "identifier": "com.example.tidy",
  "description": "",
  "menu": {
    "items": [
      "a"
    ],
    "title": "Tidy"
  },
  "version": "1.0",
  "commands": [
    {
      "identifier": "a",
      "name": "A",
      "handlers": {
        "run": "onRun"
      },
      "script": "a.js"
    },
    {
      "identifier": "b",
      "handlers": {
        "setUp": "f"
      },
      "script": "b.js",
      "scope": "application"
    }
  ]
}
)"_ba);
    QCOMPARE(written(u"Korvan/a.js"_s), "var a;"_ba);
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginBundle_Writing::writesTheIcon()
{
    QVERIFY(made({}, picture())->writeToURL(target()));
    QCOMPARE(manifest().value(u"icon"_s).toString(), u"icon.png"_s);
    QCOMPARE(QDir(target().toLocalFile() + u"Contents/Resources"_s).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
        QStringList{u"icon.png"_s});
    QCOMPARE(
        QImage::fromData(written(u"Resources/icon.png"_s), "PNG").convertToFormat(QImage::Format_ARGB32), picture());
}

void tst_KRPluginBundle_Writing::sharedScriptIsOneFile()
{
    const auto bundle = KRPluginBundle::pluginBundleWithURL(
        builder()
            .manifest(R"({"commands": [{"script": "s.js", "name": "a"}, {"script": "s.js", "name": "b"}]})")
            .script(u"s.js"_s, "one")
            .url());
    QVERIFY(bundle->writeToURL(target()));
    QCOMPARE(files(),
        (QStringList{u"Contents"_s, u"Contents/Korvan"_s, u"Contents/Korvan/manifest.json"_s, u"Contents/Korvan/s.js"_s,
            u"Contents/Resources"_s}));
    QCOMPARE(written(u"Korvan/s.js"_s), "one"_ba);
}

void tst_KRPluginBundle_Writing::firstScriptOfANameIsWritten()
{
    QVERIFY(
        made({command(u"a"_s, u"s.js"_s, u"first"_s), command(u"b"_s, u"s.js"_s, u"second"_s)})->writeToURL(target()));
    QCOMPARE(written(u"Korvan/s.js"_s), "first"_ba);
}

void tst_KRPluginBundle_Writing::noScriptTakesTheManifestsPlace()
{
    QVERIFY(made({command(u"a"_s, u"manifest.json"_s, u"{}"_s)})->writeToURL(target()));
    QCOMPARE(manifest().value(u"name"_s).toString(), u"Tidy"_s);
}

void tst_KRPluginBundle_Writing::commandWithoutScript()
{
    const auto none =
        std::make_shared<KRPluginCommand>(nullptr, u"a"_s, u"A"_s, u"onRun"_s, KRPluginCommand::Scope::Document);
    QVERIFY(made({none, command(u"nil"_s, u"nil.js"_s, {})})->writeToURL(target()));
    QCOMPARE(manifest().value(u"commands"_s).toList().first().toMap().keys(),
        (QStringList{u"handlers"_s, u"identifier"_s, u"name"_s}));
    QVERIFY(files().contains(u"Contents/Korvan/nil.js"_s));
    QVERIFY(written(u"Korvan/nil.js"_s).isEmpty());
}

void tst_KRPluginBundle_Writing::standaloneScriptIsWrittenWrapped()
{
    const auto script = std::make_shared<KRPluginStandaloneScript>(u"log(doc)"_s, u"s.js"_s);
    const auto standalone =
        std::make_shared<KRPluginCommand>(script, u"a"_s, u"A"_s, script->handler(), KRPluginCommand::Scope::Document);
    QVERIFY(made({standalone})->writeToURL(target()));
    QCOMPARE(QString::fromUtf8(written(u"Korvan/s.js"_s)), *script->script());
    QVERIFY(written(u"Korvan/s.js"_s).contains("var onRun = function(context) {"));
}

void tst_KRPluginBundle_Writing::iconInSubfolders_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("file");
    QTest::newRow("subfolders") << u"art/icons/logo.png"_s << u"art/icons/logo.png"_s;
    QTest::newRow("slashes that mean nothing") << u"/art//icons/logo.png"_s << u"art/icons/logo.png"_s;
    QTest::newRow("the folder itself") << u"./art/./logo.png"_s << u"art/logo.png"_s;
}

void tst_KRPluginBundle_Writing::iconInSubfolders()
{
    QFETCH(QString, path);
    QFETCH(QString, file);
    const auto bundle = KRPluginBundle::pluginBundleWithURL(
        builder().manifest("{\"icon\": \"" + path.toUtf8() + "\"}").resource(file, "any\0bytes"_ba).url());
    QVERIFY(bundle->writeToURL(target()));
    QCOMPARE(manifest().value(u"icon"_s).toString(), path);
    QCOMPARE(written(u"Resources/"_s + file), "any\0bytes"_ba);
    QCOMPARE(KRPluginBundle::pluginBundleWithURL(target())->iconInfo()->imageWrapper()->data(), "any\0bytes"_ba);
}

void tst_KRPluginBundle_Writing::iconWithoutBytes()
{
    const auto bundle = KRPluginBundle::pluginBundleWithURL(builder().manifest(R"({"icon": "none.png"})").url());
    m_environment->systemLogLines.clear();
    QVERIFY(bundle->iconInfo() && !bundle->iconInfo()->fileWrapper());
    QVERIFY(bundle->writeToURL(target()));
    QCOMPARE(manifest().value(u"icon"_s).toString(), u"none.png"_s);
    QVERIFY(QDir(target().toLocalFile() + u"Contents/Resources"_s).isEmpty());
    QCOMPARE(m_environment->systemLogLines, QStringList());

    bundle->iconInfo()->setImageWrapper(KRImageData(QByteArray()));
    QVERIFY(!bundle->iconInfo()->fileWrapper());
    bundle->iconInfo()->setImageWrapper(KRImageData(QByteArray("bytes")));
    bundle->iconInfo()->setPath({});
    QVERIFY(!bundle->iconInfo()->fileWrapper());
}

void tst_KRPluginBundle_Writing::losesSwitches()
{
    const auto bundle = KRPluginBundle::pluginBundleWithURL(
        builder().manifest(R"({"suppliesData": true, "disableCocoaScriptPreprocessor": true})").url());
    QVERIFY(bundle->writeToURL(target()));
    QVERIFY(!manifest().contains(u"suppliesData"_s));
    QVERIFY(!manifest().contains(u"disableCocoaScriptPreprocessor"_s));
    QVERIFY(!KRPluginBundle::pluginBundleWithURL(target())->suppliesData());
}

void tst_KRPluginBundle_Writing::onlyWhatIsDeclaredIsWritten()
{
    const auto bundle = KRPluginBundle::pluginBundleWithURL(
        builder()
            .manifest(R"({"unknown": 1, "commands": [{"script": "Scripts/a.js", "handlers":
                {"run": "f", "actions": {"Save.finish": "g"}}, "unknown": 2}]})")
            .script(u"Scripts/a.js"_s, "require('./b')")
            .script(u"Scripts/b.js"_s, "")
            .resource(u"page.html"_s, "")
            .url());
    QVERIFY(bundle->writeToURL(target()));
    QCOMPARE(files(),
        (QStringList{u"Contents"_s, u"Contents/Korvan"_s, u"Contents/Korvan/a.js"_s, u"Contents/Korvan/manifest.json"_s,
            u"Contents/Resources"_s}));
    QVERIFY(!manifest().contains(u"unknown"_s));
    QCOMPARE(manifest().value(u"commands"_s).toList().first().toMap(),
        (QVariantMap{{u"identifier"_s, u"a"_s}, {u"name"_s, u"a"_s}, {u"script"_s, u"a.js"_s},
            {u"handlers"_s,
                QVariantMap{{u"run"_s, u"f"_s}, {u"setUp"_s, u"onSetUp"_s}, {u"tearDown"_s, u"onTearDown"_s},
                    {u"Save.finish"_s, u"g"_s}}}}));
}

void tst_KRPluginBundle_Writing::manifestThatIsNoJSON_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("a number that is none") << QVariant(std::numeric_limits<double>::quiet_NaN());
    QTest::newRow("a date") << QVariant(QDate(2024, 1, 2));
    QTest::newRow("nil") << QVariant();
    QTest::newRow("half a surrogate pair") << QVariant(QString(QChar(0xD800)));
}

void tst_KRPluginBundle_Writing::manifestThatIsNoJSON()
{
    QFETCH(QVariant, value);
    const auto bundle = made({});
    bundle->setMenuDescription(QVariantMap{{u"odd"_s, value}});
    RecordingLogTarget log;
    m_environment->target = &log;
    QVERIFY(!bundle->writeToURL(target()));
    QCOMPARE(log.entries.size(), 1);
    QCOMPARE(log.entries.first().first, u"__plugin-loader"_s);
    const auto text = log.texts().first();
    QVERIFY2(text.startsWith(u"Unable to create JSON object from metadata: {\"author\": \"\", "), qPrintable(text));
    QVERIFY2(text.contains(u"}, error: ") && !text.endsWith(u"error: "), qPrintable(text));
    QVERIFY(!QFileInfo::exists(target().toLocalFile()));
}

void tst_KRPluginBundle_Writing::placesThatFail_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("error");
    QTest::newRow("something is there") << u"there.korvanplugin"_s << u"File exists"_s;
    QTest::newRow("no folder for it") << u"none/new.korvanplugin"_s << u"No such file or directory"_s;
    QTest::newRow("a file in the way") << u"file/new.korvanplugin"_s << u"Not a directory"_s;
}

void tst_KRPluginBundle_Writing::placesThatFail()
{
    QFETCH(QString, place);
    QFETCH(QString, error);
    writeFile(m_environment->path(u"there.korvanplugin/Contents/mine"_s), "mine");
    writeFile(m_environment->path(u"file"_s), "mine");
    const auto url = QUrl::fromLocalFile(m_environment->path(place) + u'/');
    QVERIFY(!made({})->writeToURL(url));
    QCOMPARE(m_environment->systemLogLines,
        QStringList{u"Failed to write plugin bundle to URL: %1, error: %2"_s.arg(absoluteString(url), error)});
    QVERIFY(!QFileInfo::exists(m_environment->path(u"there.korvanplugin/Contents/Korvan"_s)));
    QCOMPARE(readFile(m_environment->path(u"there.korvanplugin/Contents/mine"_s).toUtf8(), 10).value(), "mine"_ba);
    QCOMPARE(readFile(m_environment->path(u"file"_s).toUtf8(), 10).value(), "mine"_ba);

    m_environment->systemLogLines.clear();
    QVERIFY(!made({})->writeToURL({}));
    QCOMPARE(m_environment->systemLogLines,
        QStringList{u"Failed to write plugin bundle to URL: (null), error: Invalid argument"_s});
}

void tst_KRPluginBundle_Writing::namesThatLeadElsewhere_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("icon");
    QTest::newRow("script outside") << u"../../../outside.js"_s << u"icon.png"_s;
    QTest::newRow("script in a folder") << u"Scripts/a.js"_s << u"icon.png"_s;
    QTest::newRow("script without a name") << u""_s << u"icon.png"_s;
    QTest::newRow("script is a folder") << u".."_s << u"icon.png"_s;
    QTest::newRow("icon outside") << u"a.js"_s << u"../../../outside.png"_s;
    QTest::newRow("icon by a detour") << u"a.js"_s << u"art/../outside.png"_s;
}

void tst_KRPluginBundle_Writing::namesThatLeadElsewhere()
{
    QFETCH(QString, script);
    QFETCH(QString, icon);
    const auto before = QDir(m_environment->path(u""_s)).entryList(QDir::AllEntries | QDir::Hidden);
    const auto bundle = made({command(u"a"_s, script)}, picture());
    bundle->iconInfo()->setPath(icon);
    QVERIFY(!bundle->writeToURL(target()));
    QCOMPARE(m_environment->systemLogLines.size(), 1);
    QVERIFY(m_environment->systemLogLines.first().endsWith(u": Invalid argument"));
    QCOMPARE(QDir(m_environment->path(u""_s)).entryList(QDir::AllEntries | QDir::Hidden), before);
}

void tst_KRPluginBundle_Writing::neverOverItself()
{
    auto plugin = builder().manifest(R"({"commands": [{"script": "s.js"}]})").script(u"s.js"_s, "mine");
    const auto bundle = KRPluginBundle::pluginBundleWithURL(plugin.url());
    QVERIFY(!bundle->writeToURL(bundle->url()));
    QCOMPARE(readFile(plugin.path().toUtf8() + "/Contents/Korvan/s.js", 10).value(), "mine"_ba);
}

QTEST_GUILESS_MAIN(tst_KRPluginBundle_Writing)
#include "tst_krpluginbundle_writing.moc"
