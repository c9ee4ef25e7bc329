// What a reload finds in folders of every kind, and what becomes of the registry.

#include "manager/KRPluginManager.h"
#include "platform/FileURL.h"
#include "support/BundleBuilder.h"
#include "support/NilableText.h"
#include "support/PathFiles.h"
#include "support/TestEnvironment.h"

#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_KRPluginManager_Discovery : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void emptyBeforeTheFirstReload();
    void bundlesAtAnyDepth();
    void whatIsNoPlugin();
    void hiddenEntriesAreNeverFound();
    void bundlesAreNotSearched();
    void ignoredFolders_data();
    void ignoredFolders();
    void ignoredByTheUser();
    void linksAreFollowed();
    void linksInCirclesEnd();
    void folderReachedTwiceIsWalkedOnce();
    void foldersThatYieldNothing_data();
    void foldersThatYieldNothing();
    void namesOfAnyBytes();
    void deepTrees();

    void twinsSideBySide();
    void twinsInASubfolder();
    void twinsInTwoFolders();
    void bundlesThatFailAreSkipped();

    void manyBundlesAtOnce();
    void copiesOutliveAReload();
    void registrySetToNilIsReadAgain();
    void notificationAfterAReload();
    void storeDecidesAndForgets();
    void allDisabled();
    void walkFunctions();

private:
    void plugin(const QString &relativePath, const QByteArray &identifier, const QByteArray &more = {}) const;
    QByteArray path(const QByteArray &relativePath) const { return m_folder->path(relativePath); }
    QUrl url(const QByteArray &relativePath) const { return fileURLFromPath(path(relativePath), FileKind::Folder); }
    /// The identifiers found in "Plugins".
    QStringList found() const;

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<TemporaryFolder> m_folder;
};

void tst_KRPluginManager_Discovery::init()
{
    m_environment = std::make_unique<TestEnvironment>();
    m_folder = std::make_unique<TemporaryFolder>();
    makeFolderAt(path("Plugins"));
}

void tst_KRPluginManager_Discovery::cleanup()
{
    m_folder.reset();
    m_environment.reset();
}

void tst_KRPluginManager_Discovery::plugin(
    const QString &relativePath, const QByteArray &identifier, const QByteArray &more) const
{
    writeFileAt(path(relativePath.toUtf8() + ".korvanplugin/Contents/Korvan/manifest.json"),
        "{\"identifier\": \"" + identifier + "\"" + more + "}");
}

QStringList tst_KRPluginManager_Discovery::found() const
{
    KRPluginManager manager({url("Plugins")}, nullptr, nullptr);
    manager.reloadPlugins();
    return manager.plugins().keys();
}

void tst_KRPluginManager_Discovery::emptyBeforeTheFirstReload()
{
    plugin(u"Plugins/A"_s, "a");
    KRPluginManager manager({url("Plugins")}, nullptr, nullptr);
    QVERIFY(manager.plugins().isEmpty());
    manager.reloadPlugins();
    QCOMPARE(manager.plugins().keys(), QStringList{u"a"_s});
    KRPluginManager none;
    none.reloadPlugins();
    QVERIFY(none.plugins().isEmpty());
    QVERIFY(none.firstPluginsFolderURL().isEmpty());
    QCOMPARE(manager.firstPluginsFolderURL(), url("Plugins"));
}

void tst_KRPluginManager_Discovery::bundlesAtAnyDepth()
{
    plugin(u"Plugins/A"_s, "a");
    plugin(u"Plugins/one/B"_s, "b");
    plugin(u"Plugins/one/two/three.d/C"_s, "c");
    QCOMPARE(found(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

void tst_KRPluginManager_Discovery::whatIsNoPlugin()
{
    writeFileAt(path("Plugins/file.korvanplugin"), "{}");
    writeFileAt(path("Plugins/folder.plugin/Contents/Korvan/manifest.json"), "{\"identifier\": \"a\"}");
    writeFileAt(path("Plugins/manifest.json"), "{\"identifier\": \"b\"}");
    makePipeAt(path("Plugins/pipe.korvanplugin"));
    makeSocketAt(path("Plugins/socket.korvanplugin"));
    makeLinkAt(path("Plugins/dangling.korvanplugin"), "nowhere");
    QCOMPARE(found(), QStringList());
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginManager_Discovery::hiddenEntriesAreNeverFound()
{
    plugin(u"Plugins/.A"_s, "a");
    plugin(u"Plugins/.hidden/B"_s, "b");
    QCOMPARE(found(), QStringList());
}

void tst_KRPluginManager_Discovery::bundlesAreNotSearched()
{
    plugin(u"Plugins/A"_s, "a");
    plugin(u"Plugins/A.korvanplugin/Contents/B"_s, "b");
    QCOMPARE(found(), QStringList{u"a"_s});
}

void tst_KRPluginManager_Discovery::ignoredFolders_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isIgnored");
    QTest::newRow("packages") << u"node_modules"_s << true;
    QTest::newRow("vendor") << u"vendor"_s << true;
    QTest::newRow("vendor with an extension") << u"vendor.old"_s << true;
    QTest::newRow("virtualenv") << u"virtualenv"_s << true;
    QTest::newRow("longer name") << u"vendors"_s << false;
    QTest::newRow("other case") << u"Vendor"_s << false;
}

void tst_KRPluginManager_Discovery::ignoredFolders()
{
    QFETCH(QString, name);
    QFETCH(bool, isIgnored);
    plugin(u"Plugins/%1/deep/A"_s.arg(name), "a");
    QCOMPARE(found().isEmpty(), isIgnored);
    const QStringList line{
        u"Ignoring the contents of folder %1."_s.arg(QString::fromLatin1(url("Plugins/" + name.toUtf8()).toEncoded()))};
    QCOMPARE(m_environment->systemLogLines, isIgnored ? line : QStringList());
}

void tst_KRPluginManager_Discovery::ignoredByTheUser()
{
    KRPluginManager manager;
    const QStringList usual{u"node_modules"_s, u"vendor"_s, u"virtualenv"_s, u".git"_s};
    QCOMPARE(manager.folderNamesToIgnore(), usual);
    m_environment->userDefaults().setValue(u"IgnoredPlugins"_s, u"no array"_s);
    QCOMPARE(manager.folderNamesToIgnore().mid(0, 4), usual);
    m_environment->userDefaults().setValue(u"IgnoredPlugins"_s, QStringList{u"Archive"_s, u"Old"_s});
    QCOMPARE(manager.folderNamesToIgnore(), usual + (QStringList{u"Archive"_s, u"Old"_s}));
    plugin(u"Plugins/Archive/A"_s, "a");
    QCOMPARE(found(), QStringList());
}

void tst_KRPluginManager_Discovery::linksAreFollowed()
{
    plugin(u"elsewhere/folder/A"_s, "a");
    plugin(u"elsewhere/B"_s, "b");
    plugin(u"elsewhere/C"_s, "c");
    QVERIFY(QDir().rename(QString::fromUtf8(path("elsewhere/C.korvanplugin")), QString::fromUtf8(path("elsewhere/C"))));
    makeLinkAt(path("Plugins/folder"), path("elsewhere/folder"));
    makeLinkAt(path("Plugins/B.korvanplugin"), "../elsewhere/B.korvanplugin");
    makeLinkAt(path("Plugins/renamed"), "../elsewhere/B.korvanplugin"); // what counts is where it leads
    makeLinkAt(path("Plugins/C.korvanplugin"), "../elsewhere/C");
    makeLinkAt(path("Plugins/again"), "folder");
    QCOMPARE(found(), (QStringList{u"a"_s, u"b"_s}));
}

void tst_KRPluginManager_Discovery::linksInCirclesEnd()
{
    plugin(u"Plugins/one/A"_s, "a");
    makeLinkAt(path("Plugins/one/up"), "..");
    makeLinkAt(path("Plugins/one/self"), "self");
    makeLinkAt(path("Plugins/one/there"), "back");
    makeLinkAt(path("Plugins/one/back"), "there");
    makeLinkAt(path("Plugins/one/root"), path("Plugins"));
    QCOMPARE(found(), QStringList{u"a"_s});
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginManager_Discovery::folderReachedTwiceIsWalkedOnce()
{
    plugin(u"Plugins/A"_s, "a");
    makeLinkAt(path("link"), "Plugins");
    KRPluginManager manager(
        {url("Plugins"), url("Plugins"), url("link"), QUrl(url("Plugins").toString().chopped(1))}, nullptr, nullptr);
    manager.reloadPlugins();
    QCOMPARE(manager.plugins().size(), 1);
    QCOMPARE(m_environment->systemLogLines, QStringList()); // no twin of itself
}

void tst_KRPluginManager_Discovery::foldersThatYieldNothing_data()
{
    QTest::addColumn<QByteArray>("folder");
    QTest::newRow("missing") << "missing"_ba;
    QTest::newRow("file") << "file"_ba;
    QTest::newRow("link to nowhere") << "dangling"_ba;
    QTest::newRow("not readable") << "closed"_ba;
    QTest::newRow("NUL") << "a\0b"_ba;
}

void tst_KRPluginManager_Discovery::foldersThatYieldNothing()
{
    QFETCH(QByteArray, folder);
    plugin(u"Plugins/A"_s, "a");
    writeFileAt(path("file"), "");
    makeLinkAt(path("dangling"), "nowhere");
    makeFolderAt(path("closed"));
    ::chmod(path("closed").constData(), 0);
    KRPluginManager manager({url(folder), url("Plugins")}, nullptr, nullptr);
    manager.reloadPlugins();
    QCOMPARE(manager.plugins().keys(), QStringList{u"a"_s});
    ::chmod(path("closed").constData(), 0700);
}

void tst_KRPluginManager_Discovery::namesOfAnyBytes()
{
    const QByteArray names[] = {"caf\xE9", "a\nb", "%41", "\xF0\x9F\x98\x80", "a?b#c", " "};
    for (const auto &name : names)
        writeFileAt(path("Plugins/" + name + "/" + name + ".korvanplugin/Contents/Korvan/manifest.json"), "{}");
    KRPluginManager manager({url("Plugins")}, nullptr, nullptr);
    manager.reloadPlugins();
    const auto plugins = manager.plugins();
    QCOMPARE(plugins.size(), int(std::size(names)));
    for (const auto &bundle : plugins)
        QCOMPARE(::access(pathFromFileURL(bundle->url()).constData(), R_OK), 0);
    QVERIFY(plugins.contains(QString::fromLatin1(url("Plugins/caf\xE9/caf\xE9.korvanplugin").toEncoded())));
}

void tst_KRPluginManager_Discovery::deepTrees()
{
    QString deep(u"Plugins"_s);
    for (int i = 0; i < 500; ++i)
        deep += u"/d"_s;
    plugin(deep + u"/A"_s, "a");
    QCOMPARE(found(), QStringList{u"a"_s});
}

void tst_KRPluginManager_Discovery::twinsSideBySide()
{
    plugin(u"Plugins/A"_s, "twin");
    plugin(u"Plugins/B"_s, "twin");
    KRPluginManager manager({url("Plugins")}, nullptr, nullptr);
    manager.reloadPlugins();
    QCOMPARE(manager.plugins().size(), 1);
    const auto kept = manager.plugins().first()->url();
    const auto dropped =
        kept == url("Plugins/A.korvanplugin") ? url("Plugins/B.korvanplugin") : url("Plugins/A.korvanplugin");
    QCOMPARE(m_environment->systemLogLines,
        QStringList{
            u"Plugin at URL %1 and plugin at URL %2 have the same bundle identifier (twin). The second plugin will be ignored."_s
                .arg(kept.toString(), dropped.toString())});
}

void tst_KRPluginManager_Discovery::twinsInASubfolder()
{
    // Which one comes first is the file system's choice; that nobody complains is not, when the subfolder comes later.
    plugin(u"Plugins/one/A"_s, "twin");
    plugin(u"Plugins/two/B"_s, "twin");
    QCOMPARE(found(), QStringList{u"twin"_s});
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginManager_Discovery::twinsInTwoFolders()
{
    plugin(u"Plugins/A"_s, "twin");
    plugin(u"More/B"_s, "twin");
    for (const auto &folders : {QList{url("Plugins"), url("More")}, QList{url("More"), url("Plugins")}}) {
        KRPluginManager manager(folders, nullptr, nullptr);
        manager.reloadPlugins();
        const auto kept = manager.plugins().value(u"twin"_s)->url().toString();
        QVERIFY(kept.startsWith(folders.last().toString()));
    }
    QCOMPARE(m_environment->systemLogLines, QStringList());
}

void tst_KRPluginManager_Discovery::bundlesThatFailAreSkipped()
{
    plugin(u"Plugins/A"_s, "a");
    writeFileAt(path("Plugins/Bad.korvanplugin/Contents/Korvan/manifest.json"), "{");
    makeFolderAt(path("Plugins/Empty.korvanplugin"));
    QCOMPARE(found(), QStringList{u"a"_s});
    QCOMPARE(m_environment->systemLogLines.size(), 2); // what their manifests lack
}

void tst_KRPluginManager_Discovery::manyBundlesAtOnce()
{
    // Enough for several threads, in loading as in freeing.
    for (int i = 0; i < 300; ++i) {
        plugin(u"Plugins/%1/P%2"_s.arg(i % 7).arg(i), "p" + QByteArray::number(i));
        if (i % 10 == 0)
            writeFileAt(
                path("Plugins/Bad" + QByteArray::number(i) + ".korvanplugin/Contents/Korvan/manifest.json"), "{");
    }
    KRPluginManager manager({url("Plugins")}, nullptr, nullptr);
    manager.reloadPlugins();
    QCOMPARE(manager.plugins().size(), 300);
    const auto lines = std::exchange(m_environment->systemLogLines, {});
    QCOMPARE(lines.size(), 30);

    auto held = manager.plugins();
    manager.reloadPlugins();
    QCOMPARE(m_environment->systemLogLines, lines); // in the order of the walk, whichever thread was first
    QCOMPARE(held.size(), 300);
    for (const auto &bundle : held)
        QVERIFY(bundle->menuDescription().contains(u"items"_s));
    held.clear();
    manager.reloadPlugins();
    QCOMPARE(manager.plugins().size(), 300);
}

void tst_KRPluginManager_Discovery::copiesOutliveAReload()
{
    plugin(u"Plugins/A"_s, "a", ", \"name\": \"First\"");
    KRPluginManager manager({url("Plugins")}, nullptr, nullptr);
    manager.reloadPlugins();
    const auto before = manager.plugins();
    plugin(u"Plugins/A"_s, "a", ", \"name\": \"Second\"");
    plugin(u"Plugins/B"_s, "b");
    manager.reloadPlugins();
    QCOMPARE(before.keys(), QStringList{u"a"_s});
    QCOMPARE(before.value(u"a"_s)->name(), Text(u"First"_s));
    QCOMPARE(manager.plugins().keys(), (QStringList{u"a"_s, u"b"_s}));
    QCOMPARE(manager.plugins().value(u"a"_s)->name(), Text(u"Second"_s));
}

void tst_KRPluginManager_Discovery::registrySetToNilIsReadAgain()
{
    plugin(u"Plugins/A"_s, "a");
    KRPluginManager manager({url("Plugins")}, nullptr, nullptr);
    manager.setPlugins(std::nullopt);
    QCOMPARE(manager.plugins().keys(), QStringList{u"a"_s});
    manager.setPlugins(PluginTable());
    QVERIFY(manager.plugins().isEmpty());
}

void tst_KRPluginManager_Discovery::notificationAfterAReload()
{
    plugin(u"Plugins/A"_s, "a");
    KRPluginManager manager({url("Plugins")}, nullptr, nullptr);
    QStringList seen;
    const auto observer =
        m_environment->notificationCenter().addObserver(u"KRPluginManagerDidReloadPluginsNotification"_s, &manager,
            [&](const Notification &) { seen += manager.plugins().keys(); });
    manager.reloadPlugins();
    QCOMPARE(seen, QStringList{u"a"_s}); // the registry is new already
}

void tst_KRPluginManager_Discovery::storeDecidesAndForgets()
{
    plugin(u"Plugins/A"_s, "a", ", \"version\": \"2\"");
    plugin(u"Plugins/B"_s, "b");
    const auto store =
        std::make_shared<KRPluginManagingState>(QUrl::fromLocalFile(m_environment->path(u"metadata.plist"_s)));
    store->setIncompatiblePluginVersions(IncompatibleVersions{{u"a"_s, u"1.9"_s}, {u"b"_s, u"0.0.1"_s}});
    QVERIFY(store->setMetadataValue(true, u"disabled"_s, u"gone"_s));
    KRPluginManager manager({url("Plugins")}, nullptr, store);
    QVERIFY(manager.monitorForChanges());

    manager.reloadPlugins();

    QVERIFY(manager.plugins().value(u"a"_s)->isEnabled()); // it has version 2
    QVERIFY(!manager.plugins().value(u"b"_s)->isEnabled()); // it has none, which is 0.0.1
    QCOMPARE(store->metadata(), std::optional(QVariantMap()));
    store->setIncompatiblePluginVersions(std::nullopt);
    manager.reloadPlugins();
    QVERIFY(manager.plugins().value(u"b"_s)->isEnabled());
}

void tst_KRPluginManager_Discovery::allDisabled()
{
    plugin(u"Plugins/A"_s, "a");
    KRPluginManager manager({url("Plugins")}, nullptr, nullptr);
    QVERIFY(!manager.monitorForChanges());
    manager.setDisableAllPlugins(true);
    manager.reloadPlugins();
    QVERIFY(!manager.plugins().value(u"a"_s)->isEnabled());
    manager.setDisableAllPlugins(false);
    manager.reloadPlugins();
    QVERIFY(manager.plugins().value(u"a"_s)->isEnabled());
}

void tst_KRPluginManager_Discovery::walkFunctions()
{
    plugin(u"Plugins/one/A"_s, "a");
    makeLinkAt(path("link"), "Plugins");
    KRPluginManager manager;
    QSet<QUrl> visited;
    QCOMPARE(manager.pluginsByResolvingFolderAtURL(url("link"), visited, {}, {}).keys(), QStringList{u"a"_s});
    QCOMPARE(visited, (QSet<QUrl>{url("link"), url("Plugins"), url("Plugins/one")}));
    QVERIFY(manager.pluginsByResolvingFolderAtURL(url("link"), visited, {}, {}).isEmpty());
    QVERIFY(manager.pluginsFromResolvedFolderAtURL(url("Plugins"), visited, {}, {}).isEmpty());
    visited.clear();
    QVERIFY(manager.pluginsFromResolvedFolderAtURL(url("Plugins"), visited, {}, {u"one"_s}).isEmpty());
    QCOMPARE(visited, (QSet<QUrl>{url("Plugins"), url("Plugins/one")})); // still watched
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Discovery)
#include "tst_krpluginmanager_discovery.moc"
