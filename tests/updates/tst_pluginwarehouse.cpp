// Where updates lie until they are installed: folders named by strangers, and the plug-ins found in them.

#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "support/ForkedProcess.h"
#include "support/PathFiles.h"
#include "support/TestEnvironment.h"
#include "updates/PluginWarehouse.h"

#include <QDir>
#include <QtTest>

#include <algorithm>

using namespace Qt::StringLiterals;

class tst_PluginWarehouse : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_environment = std::make_unique<TestEnvironment>(); }
    void cleanup() { m_environment.reset(); }

    void askingForTheWarehouseCreatesIt();
    void folderOfAVersion_data();
    void folderOfAVersion();
    void twoSpellingsOfOneFolder();
    void refused_data();
    void refused();
    void refusedThroughLinks_data();
    void refusedThroughLinks();
    void warehouseThatCannotBeMade();
    void noPlaceForAWarehouse();
    void firstBundle_data();
    void firstBundle();
    void whatIsNoFolder();
    void kindIsNotAsked();
    void listingOrderDecides();
    void links_data();
    void links();
    void linksInCirclesComeToAnEnd();
    void searchedThroughALink();
    void namesOfAnyBytes();
    void downloadedPlugin();
    void removal();
    void removalLeavesWhatLinksLeadTo();
    void removalOfNothing();
    void removalThatFails();

private:
    QByteArray warehouse() const
    {
        return pathFromFileURL(m_environment->applicationSupportFolder()) + "/PluginsWarehouse";
    }
    QByteArray inWarehouse(const QByteArray &path) const { return warehouse() + '/' + path; }

    std::unique_ptr<TestEnvironment> m_environment;
};

namespace {

/// Application data in a place that cannot be.
class PlacelessEnvironment final : public LTAppEnvironment
{
public:
    explicit PlacelessEnvironment(const QUrl &folder)
        : m_folder(folder)
        , m_installation(*this)
    { }
    QUrl applicationSupportFolder() const override { return m_folder; }
    void systemLog(const QString &line) override { lines.append(line); }

    QStringList lines;

private:
    QUrl m_folder;
    Installation m_installation;
};

QByteArray found(const QByteArray &folder)
{
    return pathFromFileURL(firstPluginBundleFoundInFolder(fileURLFromPath(folder, FileKind::Folder)));
}

} // namespace

void tst_PluginWarehouse::askingForTheWarehouseCreatesIt()
{
    QVERIFY(!QDir(QFile::decodeName(warehouse())).exists());
    QCOMPARE(pluginsWarehouseURL(), fileURLFromPath(warehouse(), FileKind::Folder));
    QVERIFY(QDir(QFile::decodeName(warehouse())).exists());
}

void tst_PluginWarehouse::folderOfAVersion_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("version");
    QTest::addColumn<QByteArray>("path");

    QTest::newRow("identifier, then version") << u"com.example.tidy"_s << u"1.2"_s << "com.example.tidy/1.2"_ba;
    QTest::newRow("slashes are kept") << u"com/example"_s << u"1/2"_s << "com/example/1/2"_ba;
    QTest::newRow("an absolute identifier is below") << u"/etc"_s << u"1"_s << "/etc/1"_ba;
    QTest::newRow("an absolute version is below") << u"a"_s << u"/etc/passwd"_s << "a//etc/passwd"_ba;
    QTest::newRow("dots inside a name") << u"a..b"_s << u"..1.."_s << "a..b/..1.."_ba;
    QTest::newRow("three dots") << u"..."_s << u"...."_s << ".../...."_ba;
    QTest::newRow("white space") << u" a "_s << u" "_s << " a / "_ba;
    QTest::newRow("two dots and a space") << u".. "_s << u" .."_s << ".. / .."_ba;
    QTest::newRow("backslashes are no slashes") << u"..\\.."_s << u"1"_s << "..\\../1"_ba;
    QTest::newRow("percent signs are no encoding") << u"%2e%2e"_s << u"%2F"_s << "%2e%2e/%2F"_ba;
    QTest::newRow("a question mark and a hash") << u"a?b"_s << u"1#2"_s << "a?b/1#2"_ba;
    QTest::newRow("line ends") << u"a\nb"_s << u"1\r"_s << "a\nb/1\r"_ba;
    QTest::newRow("a tilde") << u"~"_s << u"~root"_s << "~/~root"_ba;
    QTest::newRow("not ASCII") << u"日本語"_s << u"é"_s << "日本語/é"_ba;
    QTest::newRow("one dot on the way") << u"a/./b"_s << u"1"_s << "a/./b/1"_ba;
    QTest::newRow("an extension of a plug-in") << u"a"_s << u"1.korvanplugin"_s << "a/1.korvanplugin"_ba;
}

void tst_PluginWarehouse::folderOfAVersion()
{
    QFETCH(QString, identifier);
    QFETCH(QString, version);
    QFETCH(QByteArray, path);
    KRError error;
    const auto url = warehousePluginFolder(identifier, version, &error);
    QCOMPARE(pathFromFileURL(url), inWarehouse(path));
    QVERIFY(absoluteString(url).endsWith(u'/'));
    QCOMPARE(error, KRError());
    QVERIFY(QDir(QFile::decodeName(warehouse())).isEmpty());
}

void tst_PluginWarehouse::twoSpellingsOfOneFolder()
{
    QCOMPARE(warehousePluginFolder(u"a"_s, u"b/c"_s), warehousePluginFolder(u"a/b"_s, u"c"_s));
}

void tst_PluginWarehouse::refused_data()
{
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("version");

    const QString zero(1, QChar(u'\0'));
    const QStringList hostile{QString(), u""_s, u"."_s, u"./"_s, u"/"_s, u"//"_s, u"/./."_s, u".."_s, u"../"_s,
        u"/.."_s, u"../a"_s, u"a/.."_s, u"a/../b"_s, u"a/../.."_s, u"./.."_s, u"a//.."_s,
        u"../../../../../../etc/passwd"_s, zero, u"a"_s + zero, zero + u"a"_s, u"a"_s + zero + u"/../b"_s,
        u".."_s + zero};
    for (const auto &text : hostile) {
        QTest::addRow("identifier %s", qPrintable(QString(text).replace(zero, u"<zero>"_s))) << text << u"1.0"_s;
        QTest::addRow("version %s", qPrintable(QString(text).replace(zero, u"<zero>"_s))) << u"com.example"_s << text;
    }
}

void tst_PluginWarehouse::refused()
{
    QFETCH(QString, identifier);
    QFETCH(QString, version);
    const KRError expected{u"KRPluginMangerErrorDomain"_s, 0,
        u"The plugin's identifier and version do not name a folder inside the plugins warehouse."_s};
    KRError error;
    QVERIFY(warehousePluginFolder(identifier, version, &error).isEmpty());
    QCOMPARE(error.localizedDescription, expected.localizedDescription);
    QCOMPARE(error, expected);
    QVERIFY(warehousePluginFolder(identifier, version).isEmpty());
    QVERIFY(downloadedPluginURL(identifier, version).isEmpty());
    QVERIFY2(!QDir(QFile::decodeName(warehouse())).exists(), "something was created");
}

void tst_PluginWarehouse::refusedThroughLinks_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<bool>("isRefused");

    QTest::newRow("to a folder outside") << "../outside"_ba << true;
    QTest::newRow("to an absolute path") << "/usr"_ba << true;
    QTest::newRow("to the folder above") << ".."_ba << true;
    QTest::newRow("to a name that merely begins alike") << "../PluginsWarehouse2"_ba << true;
    QTest::newRow("to nothing") << "missing"_ba << true;
    QTest::newRow("to itself") << "link"_ba << true;
    QTest::newRow("to the root") << "/"_ba << true;
    QTest::newRow("to a folder inside") << "inside"_ba << false;
}

void tst_PluginWarehouse::refusedThroughLinks()
{
    QFETCH(QByteArray, target);
    QFETCH(bool, isRefused);
    makeFolderAt(inWarehouse("../outside"));
    makeFolderAt(inWarehouse("../PluginsWarehouse2"));
    makeFolderAt(inWarehouse("inside"));
    makeLinkAt(inWarehouse("link"), target);
    for (const auto &version : {u"1"_s, u"1/2"_s, u"1/"_s}) {
        KRError error;
        QCOMPARE(warehousePluginFolder(u"link"_s, version, &error).isEmpty(), isRefused);
        QCOMPARE(error == KRError(), !isRefused);
    }
    makeLinkAt(inWarehouse("inside/1"), "../link");
    QCOMPARE(warehousePluginFolder(u"inside"_s, u"1"_s).isEmpty(), isRefused);
    QCOMPARE(warehousePluginFolder(u"inside"_s, u"1/"_s).isEmpty(), isRefused);
    QVERIFY(!warehousePluginFolder(u"inside"_s, u"2"_s).isEmpty());
}

void tst_PluginWarehouse::warehouseThatCannotBeMade()
{
    // Whoever creates a folder there gets the system's own reason.
    const PlacelessEnvironment environment(QUrl(u"file:///proc/nothing/"_s));
    QCOMPARE(pathFromFileURL(warehousePluginFolder(u"a"_s, u"1"_s)), "/proc/nothing/PluginsWarehouse/a/1"_ba);
}

void tst_PluginWarehouse::noPlaceForAWarehouse()
{
    PlacelessEnvironment environment{QUrl()};
    KRError error;
    QVERIFY(pluginsWarehouseURL().isEmpty());
    QVERIFY(warehousePluginFolder(u"a"_s, u"1"_s, &error).isEmpty());
    QCOMPARE(error.domain, u"KRPluginMangerErrorDomain"_s);
    QCOMPARE(removePluginsWarehouse(), WarehouseRemoval::Failed);
    QCOMPARE(environment.lines, QStringList{u"Failure to remove the plugins warehouse with error unknown error."_s});
}

void tst_PluginWarehouse::firstBundle_data()
{
    QTest::addColumn<QByteArrayList>("folders");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("nothing") << QByteArrayList{} << ""_ba;
    QTest::newRow("folders without one") << QByteArrayList{"a/b/c", "d"} << ""_ba;
    QTest::newRow("at the top") << QByteArrayList{"tidy.korvanplugin"} << "tidy.korvanplugin"_ba;
    QTest::newRow("far below") << QByteArrayList{"a/b/c/tidy.korvanplugin", "d/e"} << "a/b/c/tidy.korvanplugin"_ba;
    QTest::newRow("top before subfolder, first in the alphabet")
        << QByteArrayList{"a/inner.korvanplugin", "z.korvanplugin"} << "z.korvanplugin"_ba;
    QTest::newRow("top before subfolder, last in the alphabet")
        << QByteArrayList{"a.korvanplugin", "z/inner.korvanplugin"} << "a.korvanplugin"_ba;
    QTest::newRow("not inside of a bundle")
        << QByteArrayList{"a.korvanplugin/inner.korvanplugin"} << "a.korvanplugin"_ba;
    QTest::newRow("hidden bundle") << QByteArrayList{".tidy.korvanplugin"} << ""_ba;
    QTest::newRow("hidden folder") << QByteArrayList{".a/tidy.korvanplugin"} << ""_ba;
    QTest::newRow("only the extension") << QByteArrayList{".korvanplugin", "korvanplugin"} << ""_ba;
    QTest::newRow("an extension that ends alike") << QByteArrayList{"tidy.xkorvanplugin", "b.korvanplugins"} << ""_ba;
    QTest::newRow("capitals") << QByteArrayList{"Tidy.KorvanPlugin"} << "Tidy.KorvanPlugin"_ba;
}

void tst_PluginWarehouse::firstBundle()
{
    QFETCH(QByteArrayList, folders);
    QFETCH(QByteArray, expected);
    const TemporaryFolder folder;
    for (const auto &name : folders)
        makeFolderAt(folder.path(name));
    QCOMPARE(found(folder.path()), expected.isEmpty() ? expected : folder.path(expected));
}

void tst_PluginWarehouse::whatIsNoFolder()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("file"), "text");
    QVERIFY(found(folder.path("missing")).isEmpty());
    QVERIFY(found(folder.path("file")).isEmpty());
    QVERIFY(firstPluginBundleFoundInFolder(QUrl()).isEmpty());
    QVERIFY(firstPluginBundleFoundInFolder(QUrl(u"https://example.com/"_s)).isEmpty());
}

void tst_PluginWarehouse::kindIsNotAsked()
{
    // The name alone decides; what it is comes out when somebody opens it.
    const TemporaryFolder folder;
    writeFileAt(folder.path("file.korvanplugin"), "text");
    makeFolderAt(folder.path("a/tidy.korvanplugin"));
    QCOMPARE(firstPluginBundleFoundInFolder(fileURLFromPath(folder.path(), FileKind::Folder)),
        fileURLFromPath(folder.path("file.korvanplugin"), FileKind::File));
    removeAt(folder.path("file.korvanplugin"));
    QCOMPARE(firstPluginBundleFoundInFolder(fileURLFromPath(folder.path(), FileKind::Folder)),
        fileURLFromPath(folder.path("a/tidy.korvanplugin"), FileKind::Folder));
}

void tst_PluginWarehouse::listingOrderDecides()
{
    // A subfolder is searched to its end before its next sibling is, however deep its plug-in lies.
    const TemporaryFolder folder;
    const QByteArrayList bundles{"b/deep/down/x.korvanplugin", "a/x.korvanplugin", "c/deep/x.korvanplugin"};
    for (const auto &bundle : bundles)
        makeFolderAt(folder.path(bundle));
    const auto firstName = visibleEntries(folder.path()).front().name;
    const auto isFirst = [&](const QByteArray &bundle) { return bundle.startsWith(firstName); };
    QCOMPARE(found(folder.path()), folder.path(*std::find_if(bundles.begin(), bundles.end(), isFirst)));
}

void tst_PluginWarehouse::links_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("to a folder inside") << ".store/bundles"_ba
                                        << "link/tidy.korvanplugin"_ba;
    QTest::newRow("to a folder outside") << "../outside"_ba
                                         << ""_ba;
    QTest::newRow("to the folder above") << ".."_ba
                                         << ""_ba;
    QTest::newRow("to the root") << "/"_ba
                                 << ""_ba;
    QTest::newRow("to the folder itself") << "."_ba
                                          << ""_ba;
    QTest::newRow("to itself") << "link"_ba
                               << ""_ba;
    QTest::newRow("to nothing") << "missing"_ba
                                << ""_ba;
    QTest::newRow("to a file") << "file"_ba
                               << ""_ba;
}

void tst_PluginWarehouse::links()
{
    QFETCH(QByteArray, target);
    QFETCH(QByteArray, expected);
    const TemporaryFolder folder;
    makeFolderAt(folder.path("searched/.store/bundles/tidy.korvanplugin"));
    makeFolderAt(folder.path("outside/others.korvanplugin"));
    writeFileAt(folder.path("searched/file"), "text");
    makeLinkAt(folder.path("searched/link"), target);
    QCOMPARE(found(folder.path("searched")), expected.isEmpty() ? expected : folder.path("searched/" + expected));
}

void tst_PluginWarehouse::linksInCirclesComeToAnEnd()
{
    // Followed up to the system's limit of forty links, these would be a search of four to the power of forty folders.
    const TemporaryFolder folder;
    makeFolderAt(folder.path("a/b"));
    for (const char *const name : {"a/up", "a/b/up", "a/again", "a/b/again"})
        makeLinkAt(folder.path(name), folder.path());
    QVERIFY(found(folder.path()).isEmpty());
    makeFolderAt(folder.path("a/b/c/tidy.korvanplugin"));
    QVERIFY(found(folder.path()).endsWith("/a/b/c/tidy.korvanplugin"));
}

void tst_PluginWarehouse::searchedThroughALink()
{
    const TemporaryFolder folder;
    makeFolderAt(folder.path("real/a/tidy.korvanplugin"));
    makeLinkAt(folder.path("link"), "real");
    QCOMPARE(found(folder.path("link")), folder.path("link/a/tidy.korvanplugin"));
}

void tst_PluginWarehouse::namesOfAnyBytes()
{
    const TemporaryFolder folder;
    makeFolderAt(folder.path("a\xff/\xfe.korvanplugin"));
    QCOMPARE(found(folder.path()), folder.path("a\xff/\xfe.korvanplugin"));
}

void tst_PluginWarehouse::downloadedPlugin()
{
    makeFolderAt(inWarehouse("com.example.tidy/1.2/tidy-master/tidy.korvanplugin"));
    QCOMPARE(pathFromFileURL(downloadedPluginURL(u"com.example.tidy"_s, u"1.2"_s)),
        inWarehouse("com.example.tidy/1.2/tidy-master/tidy.korvanplugin"));
    QVERIFY(downloadedPluginURL(u"com.example.tidy"_s, u"1.3"_s).isEmpty());
    QVERIFY(downloadedPluginURL(u"com.example"_s, u"1.2"_s).isEmpty());
}

void tst_PluginWarehouse::removal()
{
    makeFolderAt(inWarehouse("a/1/tidy.korvanplugin"));
    writeFileAt(inWarehouse(".hidden"), "text");
    writeFileAt(inWarehouse("../kept"), "text");
    QCOMPARE(removePluginsWarehouse(), WarehouseRemoval::Removed);
    QVERIFY(!itemExists(warehouse()));
    QVERIFY(itemExists(pathWithoutLastComponent(warehouse()) + "/kept"));
    QVERIFY(m_environment->systemLogLines.isEmpty());
}

void tst_PluginWarehouse::removalLeavesWhatLinksLeadTo()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("precious/file"), "text");
    makeFolderAt(inWarehouse("a"));
    makeLinkAt(inWarehouse("a/1"), folder.path("precious"));
    QCOMPARE(removePluginsWarehouse(), WarehouseRemoval::Removed);
    QVERIFY(!itemExists(warehouse()));
    QVERIFY(itemExists(folder.path("precious/file")));
}

void tst_PluginWarehouse::removalOfNothing()
{
    QCOMPARE(removePluginsWarehouse(), WarehouseRemoval::Removed);
    QCOMPARE(removePluginsWarehouse(), WarehouseRemoval::Removed);
    QVERIFY(m_environment->systemLogLines.isEmpty());
}

void tst_PluginWarehouse::removalThatFails()
{
    const auto result = resultOnSmallDisk(m_environment->path(u"."_s), 65536, [this] {
        makeFolderAt(inWarehouse("a/1"));
        makeSmallDiskReadOnly(m_environment->path(u"."_s));
        if (removePluginsWarehouse() == WarehouseRemoval::Removed)
            return "it was removed"_ba;
        return m_environment->systemLogLines.join(u'|').toUtf8();
    });
    QCOMPARE(result, "Failure to remove the plugins warehouse with error Read-only file system."_ba);
}

QTEST_GUILESS_MAIN(tst_PluginWarehouse)
#include "tst_pluginwarehouse.moc"
