// A plug-in as its manifest describes it.

#include "bundles/KRPluginBundle.h"
#include "commands/KRPluginCommand.h"
#include "support/BundleBuilder.h"
#include "support/NilableText.h"
#include "support/PathFiles.h"
#include "support/TestEnvironment.h"

#include <QBuffer>
#include <QtTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

class tst_KRPluginBundle : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyKey();
    void emptyManifest();
    void wrongTypesCountAsAbsent_data();
    void wrongTypesCountAsAbsent();
    void versions_data();
    void versions();
    void manifestsThatFail_data();
    void manifestsThatFail();
    void manifestsThatCannotBeRead_data();
    void manifestsThatCannotBeRead();
    void hugeManifest();
    void oddButGoodManifests_data();
    void oddButGoodManifests();
    void foldersThatAreNone_data();
    void foldersThatAreNone();
    void nilURL();
    void messagesGoToTheLogTarget();

    void icon();
    void iconThatCannotBeRead();
    void resources();
    void compatibility_data();
    void compatibility();
    void versionedIdentifier();
    void debugDescription();
    void whatMayBeChanged();

private:
    BundleBuilder builder() const { return BundleBuilder(m_environment->path(u"Plugins"_s), u"Tidy Layers"_s); }
    std::shared_ptr<KRPluginBundle> bundleWith(const QByteArray &manifest) const
    {
        return KRPluginBundle::pluginBundleWithURL(builder().manifest(manifest).url());
    }
    QString manifestURL() const
    {
        return builder().url().toString(QUrl::FullyEncoded) + u"Contents/Korvan/manifest.json"_s;
    }

    std::unique_ptr<TestEnvironment> m_environment;
};

void tst_KRPluginBundle::init()
{
    m_environment = std::make_unique<TestEnvironment>();
}

void tst_KRPluginBundle::cleanup()
{
    m_environment.reset();
}

void tst_KRPluginBundle::everyKey()
{
    writeFile(builder().path() + u"/Contents/Korvan/a.js"_s, "");
    const auto bundle = bundleWith(R"({
        "author": "A. Author", "authorEmail": "a@example.com", "name": "Tidy", "identifier": "com.example.tidy",
        "description": "Tidies.", "suppliesData": true, "version": "1.2.0", "compatibleVersion": "97",
        "maxCompatibleVersion": "99", "homepage": "https://example.com/tidy", "appcast": "https://example.com/feed.xml",
        "commands": [{"identifier": "a", "name": "A", "script": "a.js", "handler": "onRun"}],
        "menu": {"title": "Tidy It", "items": ["a"]}, "disableCocoaScriptPreprocessor": true})");
    QVERIFY(bundle);
    QCOMPARE(bundle->author(), Text(u"A. Author"_s));
    QCOMPARE(bundle->authorEmail(), Text(u"a@example.com"_s));
    QCOMPARE(bundle->name(), Text(u"Tidy"_s));
    QCOMPARE(bundle->identifier(), Text(u"com.example.tidy"_s));
    QCOMPARE(bundle->pluginDescription(), Text(u"Tidies."_s));
    QVERIFY(bundle->suppliesData());
    QCOMPARE(bundle->version(), Text(u"1.2.0"_s));
    QCOMPARE(bundle->compatibleVersion(), Text(u"97"_s));
    QCOMPARE(bundle->maximumCompatibleVersion(), Text(u"99"_s));
    QCOMPARE(bundle->homepageURL(), QUrl(u"https://example.com/tidy"_s));
    QCOMPARE(bundle->updatingInfoURL(), QUrl(u"https://example.com/feed.xml"_s));
    QCOMPARE(bundle->commands().size(), std::size_t(1));
    QCOMPARE(bundle->menuDescription(), (QVariantMap{{u"title"_s, u"Tidy It"_s}, {u"items"_s, QVariantList{u"a"_s}}}));
    QVERIFY(bundle->disableCocoaScriptPreprocessor());
    QVERIFY(!bundle->isEnabled());
    QVERIFY(!bundle->iconInfo());
    QCOMPARE(bundle->url(), builder().url());
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginBundle::emptyManifest()
{
    const auto bundle = bundleWith("{}");
    QVERIFY(bundle);
    QCOMPARE(bundle->name(), Text(u"Tidy Layers"_s));
    QCOMPARE(bundle->identifier(), Text(QString::fromLatin1(builder().url().toEncoded())));
    QVERIFY(bundle->identifier()->startsWith(u"file:///"_s)
        && bundle->identifier()->endsWith(u"Tidy%20Layers.korvanplugin/"_s));
    QCOMPARE(bundle->version(), Text(u"0.0.1"_s));
    QVERIFY(bundle->commands().empty());
    QVERIFY(!bundle->isCompatible());
    QCOMPARE(bundle->author(), nil);
    QCOMPARE(bundle->authorEmail(), nil);
    QCOMPARE(bundle->pluginDescription(), nil);
    QCOMPARE(bundle->compatibleVersion(), nil);
    QCOMPARE(bundle->maximumCompatibleVersion(), nil);
    QVERIFY(!bundle->suppliesData());
    QVERIFY(!bundle->disableCocoaScriptPreprocessor());
    QVERIFY(bundle->homepageURL().isEmpty());
    QVERIFY(bundle->updatingInfoURL().isEmpty());
}

void tst_KRPluginBundle::wrongTypesCountAsAbsent_data()
{
    QTest::addColumn<QByteArray>("wrong");
    for (const auto *wrong : {"5", "true", "null", "[]", "{}", "[\"x\"]"})
        QTest::newRow(wrong) << QByteArray(wrong);
}

void tst_KRPluginBundle::wrongTypesCountAsAbsent()
{
    QFETCH(QByteArray, wrong);
    QByteArray manifest("{");
    for (const auto *key : {"author", "authorEmail", "name", "identifier", "description", "compatibleVersion",
             "maxCompatibleVersion", "homepage", "appcast", "icon"})
        manifest += '"' + QByteArray(key) + "\": " + wrong + ", ";
    const auto bundle = bundleWith(
        manifest + R"("suppliesData": "true", "commands": "x", "menu": "x", "disableCocoaScriptPreprocessor": 1})");
    QVERIFY(bundle);
    QCOMPARE(bundle->name(), Text(u"Tidy Layers"_s));
    QVERIFY(bundle->identifier()->startsWith(u"file:"_s));
    QCOMPARE(bundle->author(), nil);
    QCOMPARE(bundle->pluginDescription(), nil);
    QCOMPARE(bundle->compatibleVersion(), nil);
    QVERIFY(bundle->homepageURL().isEmpty());
    QVERIFY(!bundle->iconInfo());
    QVERIFY(!bundle->suppliesData());
    QVERIFY(!bundle->disableCocoaScriptPreprocessor());
    QVERIFY(bundle->commands().empty());
    QCOMPARE(bundle->menuDescription().value(u"title"_s), QVariant(u"Tidy Layers"_s));
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginBundle::versions_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("version");
    QTest::newRow("text") << "\"2\""_ba << u"2"_s;
    QTest::newRow("empty text") << "\"\""_ba << u""_s;
    QTest::newRow("integer") << "2"_ba << u"2"_s;
    QTest::newRow("date") << "20240101"_ba << u"20240101"_s;
    QTest::newRow("fraction") << "1.5"_ba << u"1.5"_s;
    QTest::newRow("whole fraction") << "1.0"_ba << u"1"_s;
    QTest::newRow("negative") << "-1"_ba << u"-1"_s;
    QTest::newRow("boolean is no number") << "true"_ba << u"0.0.1"_s;
    QTest::newRow("null") << "null"_ba << u"0.0.1"_s;
    QTest::newRow("array") << "[1]"_ba << u"0.0.1"_s;
    QTest::newRow("object") << "{}"_ba << u"0.0.1"_s;
}

void tst_KRPluginBundle::versions()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, version);
    QCOMPARE(bundleWith("{\"version\": " + json + "}")->version(), Text(version));
}

void tst_KRPluginBundle::manifestsThatFail_data()
{
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<bool>("isValidJSON");
    QTest::newRow("empty") << ""_ba << false;
    QTest::newRow("not finished") << "{\"name\": \"a"_ba << false;
    QTest::newRow("array") << "[]"_ba << true;
    QTest::newRow("array of an object") << "[{\"name\": \"a\"}]"_ba << true;
    QTest::newRow("text alone") << "\"a\""_ba << true;
    QTest::newRow("null alone") << "null"_ba << true;
    QTest::newRow("comma at the end") << "{\"name\": \"a\",}"_ba << false;
    QTest::newRow("comment") << "{} // done"_ba << false;
    QTest::newRow("two objects") << "{} {}"_ba << false;
    QTest::newRow("invalid UTF-8") << "{\"name\": \"\xC3\x28\"}"_ba << false;
    QTest::newRow("UTF-16") << QByteArray("{\0}\0", 4) << false;
    QTest::newRow("nested 100,000 deep") << "{\"menu\": " + QByteArray(100000, '[') + QByteArray(100000, ']') + "}"
                                         << false;
    QTest::newRow("only a byte-order mark") << "\xEF\xBB\xBF"_ba << false;
}

void tst_KRPluginBundle::manifestsThatFail()
{
    QFETCH(QByteArray, manifest);
    QFETCH(bool, isValidJSON);
    QVERIFY(!bundleWith(manifest));
    const auto start = u"Unable to parse manifest.json at URL: "_s + manifestURL() + u" error: "_s;
    QCOMPARE(m_environment->systemLogLines.size(), 1);
    const auto line = m_environment->systemLogLines[0];
    QVERIFY2(line.startsWith(start), qPrintable(line));
    const auto error = line.mid(start.size());
    QVERIFY(!error.isEmpty());
    if (isValidJSON && manifest.startsWith('['))
        QCOMPARE(error, u"(null)"_s);
}

void tst_KRPluginBundle::manifestsThatCannotBeRead_data()
{
    QTest::addColumn<QString>("what");
    for (const auto *what : {"missing", "folder", "pipe", "link to nowhere", "not readable"})
        QTest::newRow(what) << QString::fromLatin1(what);
}

void tst_KRPluginBundle::manifestsThatCannotBeRead()
{
    QFETCH(QString, what);
    const auto file = (builder().path() + u"/Contents/Korvan/manifest.json"_s).toUtf8();
    if (what == u"folder")
        makeFolderAt(file);
    else if (what == u"pipe")
        makePipeAt(file);
    else if (what == u"link to nowhere")
        makeLinkAt(file, "nowhere");
    else if (what == u"not readable") {
        writeFileAt(file, "{}");
        QCOMPARE(::chmod(file.constData(), 0), 0);
        if (QFile(QString::fromUtf8(file)).open(QIODevice::ReadOnly))
            return; // the superuser reads everything
    }
    QVERIFY(!KRPluginBundle::pluginBundleWithURL(builder().url()));
    QCOMPARE(m_environment->systemLogLines, QStringList{u"Missing plugin manifest.json at URL: "_s + manifestURL()});
}

void tst_KRPluginBundle::hugeManifest()
{
    const auto manifestOf = [](qsizetype size) {
        const QByteArray head("{\"name\": \"");
        return head + QByteArray(size - head.size() - 2, 'x') + "\"}";
    };
    constexpr qsizetype largest = 16 * 1024 * 1024;
    QVERIFY(bundleWith(manifestOf(largest)));
    QCOMPARE(m_environment->systemLogLines, QStringList());
    QVERIFY(!bundleWith(manifestOf(largest + 1)));
    QVERIFY(m_environment->systemLogLines.value(0).startsWith(u"Unable to parse manifest.json at URL: "_s));
}

void tst_KRPluginBundle::oddButGoodManifests_data()
{
    QTest::addColumn<QByteArray>("manifest");
    QTest::addColumn<QString>("name");
    QTest::newRow("byte-order mark") << "\xEF\xBB\xBF{\"name\": \"a\"}"_ba << u"a"_s;
    QTest::newRow("blanks around") << "\n\t {\"name\": \"a\"}\r\n "_ba << u"a"_s;
    QTest::newRow("any Unicode") << "{\"name\": \"\\ud83d\\ude00 ü\"}"_ba << u"\U0001F600 ü"_s;
    QTest::newRow("unknown keys") << "{\"x\": {\"y\": [1]}, \"name\": \"a\", \"\": 1}"_ba << u"a"_s;
    QTest::newRow("empty name is a name") << "{\"name\": \"\"}"_ba << u""_s;
    QTest::newRow("nested 500 deep") << "{\"name\": \"a\", \"menu\": {\"items\": " + QByteArray(500, '[')
            + QByteArray(500, ']')
            + "}}" << u"a"_s;
}

void tst_KRPluginBundle::oddButGoodManifests()
{
    QFETCH(QByteArray, manifest);
    const auto bundle = bundleWith(manifest);
    QVERIFY(bundle);
    QFETCH(QString, name);
    QCOMPARE(bundle->name(), Text(name));
}

void tst_KRPluginBundle::foldersThatAreNone_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain file") << u"file.korvanplugin"_s;
    QTest::newRow("other extension") << u"folder.plugin"_s;
    QTest::newRow("no extension") << u"folder"_s;
    QTest::newRow("missing") << u"missing.korvanplugin"_s;
}

void tst_KRPluginBundle::foldersThatAreNone()
{
    writeFile(m_environment->path(u"file.korvanplugin"_s), "{}");
    writeFile(m_environment->path(u"folder.plugin/Contents/Korvan/manifest.json"_s), "{}");
    writeFile(m_environment->path(u"folder/Contents/Korvan/manifest.json"_s), "{}");
    QFETCH(QString, name);
    QVERIFY(!KRPluginBundle::pluginBundleWithURL(QUrl::fromLocalFile(m_environment->path(name))));
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginBundle::nilURL()
{
    QVERIFY(!KRPluginBundle::pluginBundleWithURL({}));
    QCOMPARE(m_environment->systemLogLines, QStringList());
    QVERIFY(!KRPluginBundle::initPluginBundleWithURL({}));
    QCOMPARE(m_environment->systemLogLines, QStringList{u"Unable to locate manifest.json for bundle at URL: (null)"_s});
}

void tst_KRPluginBundle::messagesGoToTheLogTarget()
{
    RecordingLogTarget target;
    m_environment->target = &target;
    KRPluginBundle::logErrorString(u"Something"_s);
    QCOMPARE(m_environment->systemLogLines, QStringList());
    QCOMPARE(target.entries.size(), 1);
    QCOMPARE(target.entries[0].first, u"__plugin-loader"_s);
    QCOMPARE(target.entries[0].second,
        (QVariantMap{{u"payload"_s, QVariantList{u"Something"_s}}, {u"stringValue"_s, u"Something"_s},
            {u"level"_s, u"error"_s}}));
}

void tst_KRPluginBundle::icon()
{
    QImage image(2, 3, QImage::Format_ARGB32);
    image.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    QVERIFY(image.save(&buffer, "PNG"));
    const auto bundle = KRPluginBundle::pluginBundleWithURL(
        builder().manifest(R"({"icon": "images/icon.png"})").resource(u"images/icon.png"_s, png).url());
    QCOMPARE(bundle->iconInfo()->path(), u"images/icon.png"_s);
    QCOMPARE(bundle->iconInfo()->image().size(), QSize(2, 3));
}

void tst_KRPluginBundle::iconThatCannotBeRead()
{
    const auto bundle = bundleWith(R"({"icon": "icon.png"})");
    QVERIFY(bundle);
    QCOMPARE(bundle->iconInfo()->path(), u"icon.png"_s);
    QVERIFY(!bundle->iconInfo()->imageWrapper());
    QVERIFY(bundle->iconInfo()->image().isNull());
    QCOMPARE(m_environment->systemLogLines,
        QStringList{u"Could not read image data at "_s + builder().path() + u"/Contents/Resources/icon.png"_s});
}

void tst_KRPluginBundle::resources()
{
    const auto bundle =
        KRPluginBundle::pluginBundleWithURL(builder().manifest("{}").resource(u"a b/c.txt"_s, "x").url());
    QVERIFY(bundle->urlForResourceNamed(u"a b/c.txt"_s)
                .toString(QUrl::FullyEncoded)
                .endsWith(u"Contents/Resources/a%20b/c.txt"_s));
    QVERIFY(!bundle->urlForResourceNamed(u"a b"_s).isEmpty());
    QVERIFY(bundle->urlForResourceNamed(u"missing"_s).isEmpty());
}

void tst_KRPluginBundle::compatibility_data()
{
    QTest::addColumn<QByteArray>("bounds");
    QTest::addColumn<bool>("isCompatible");
    const auto row = [](const char *tag, const QByteArray &bounds, bool isCompatible) {
        QTest::newRow(tag) << bounds << isCompatible;
    };
    // The application is 98.3: what counts is 98.
    row("both around", R"("compatibleVersion": "97", "maxCompatibleVersion": "99")", true);
    row("both equal", R"("compatibleVersion": "98", "maxCompatibleVersion": "98")", true);
    row("maximum of the same major", R"("compatibleVersion": "97", "maxCompatibleVersion": "98")", true);
    row("no bounds", "\"name\": \"a\"", false);
    row("only the lower", R"("compatibleVersion": "97")", false);
    row("only the upper", R"("maxCompatibleVersion": "99")", false);
    row("too new", R"("compatibleVersion": "99", "maxCompatibleVersion": "100")", false);
    row("too old", R"("compatibleVersion": "90", "maxCompatibleVersion": "97")", false);
    row("minor lower bound above", R"("compatibleVersion": "98.5", "maxCompatibleVersion": "99")", false);
    row("upper bound just below", R"("compatibleVersion": "90", "maxCompatibleVersion": "97.9")", false);
    row("compared as numbers", R"("compatibleVersion": "9", "maxCompatibleVersion": "100")", true);
}

void tst_KRPluginBundle::compatibility()
{
    QFETCH(QByteArray, bounds);
    QTEST(bundleWith("{" + bounds + "}")->isCompatible(), "isCompatible");
}

void tst_KRPluginBundle::versionedIdentifier()
{
    QCOMPARE(bundleWith(R"({"identifier": "com.example.tidy", "version": "1.2.0"})")->versionedIdentifier(),
        u"com.example.tidy(1.2.0)"_s);
    QCOMPARE(bundleWith(R"({"identifier": "", "version": ""})")->versionedIdentifier(), u"()"_s);
}

void tst_KRPluginBundle::debugDescription()
{
    const auto bundle = bundleWith(R"({"name": "Tidy"})");
    QVERIFY(bundle->debugDescription().contains(u" name: Tidy enabled: NO commands: "_s));
    bundle->setEnabled(true);
    QVERIFY(bundle->debugDescription().contains(u" name: Tidy enabled: YES commands: "_s));
}

void tst_KRPluginBundle::whatMayBeChanged()
{
    const auto bundle = bundleWith(R"({"name": "Tidy", "appcast": "https://example.com/a"})");
    bundle->setUpdatingInfoURL(QUrl(u"https://example.com/b"_s));
    QCOMPARE(bundle->updatingInfoURL(), QUrl(u"https://example.com/b"_s));
    bundle->setDisableCocoaScriptPreprocessor(true);
    QVERIFY(bundle->disableCocoaScriptPreprocessor());
    bundle->setIconInfo(std::make_shared<KRPluginBundleIconInfo>(u"a.png"_s, std::nullopt));
    QCOMPARE(bundle->iconInfo()->path(), u"a.png"_s);
    const QVariantMap menu{{u"title"_s, u"Mine"_s}};
    bundle->setMenuDescription(menu);
    QCOMPARE(bundle->menuDescription(), menu);
    bundle->setMenuDescription(std::nullopt);
    QCOMPARE(bundle->menuDescription(), (QVariantMap{{u"title"_s, u"Tidy"_s}, {u"items"_s, QVariantList()}}));
}

QTEST_GUILESS_MAIN(tst_KRPluginBundle)
#include "tst_krpluginbundle.moc"
