// Where plug-ins are looked for.

#include "manager/KRPluginManager.h"
#include "manager/PluginFolders.h"
#include "support/BundleBuilder.h"
#include "support/TestEnvironment.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_PluginFolders : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_environment = std::make_unique<TestEnvironment>(); }
    void cleanup() { m_environment.reset(); }

    void applicationsFolderIsMade();
    void additionalFolders();
    void additionalFoldersOfAnotherType();
    void relativePaths_data();
    void relativePaths();
    void countIsKeptInTheDefaults();

private:
    std::unique_ptr<TestEnvironment> m_environment;
};

void tst_PluginFolders::applicationsFolderIsMade()
{
    const auto folder = KRPluginManager::mainPluginsFolderURL();
    QVERIFY(folder.toString().endsWith(u"/Plugins/"_s));
    QVERIFY(QFileInfo(folder.toLocalFile()).isDir());
    QCOMPARE(KRPluginManager::defaultPluginURL().toString(), folder.toString() + u"Untitled.korvanplugin/"_s);
    QVERIFY(!QFileInfo::exists(KRPluginManager::defaultPluginURL().toLocalFile()));
    QCOMPARE(KRPluginManager::pluginsURLs(), QList{folder});
}

void tst_PluginFolders::additionalFolders()
{
    const auto main = KRPluginManager::mainPluginsFolderURL();
    writeFile(m_environment->path(u"file"_s), "");
    QDir().mkpath(m_environment->path(u"b"_s));
    QDir().mkpath(m_environment->path(u"a"_s));
    m_environment->userDefaults().setValue(u"AdditionalPluginFolders"_s,
        QStringList{m_environment->path(u"b"_s), m_environment->path(u"missing"_s), m_environment->path(u"file"_s),
            main.toLocalFile(), m_environment->path(u"a"_s)});
    QStringList paths;
    for (const auto &url : KRPluginManager::pluginsURLs())
        paths.append(QDir::cleanPath(url.toLocalFile()));
    const auto mainPath = QDir::cleanPath(main.toLocalFile());
    QCOMPARE(paths,
        (QStringList{mainPath, m_environment->path(u"b"_s), m_environment->path(u"file"_s), mainPath,
            m_environment->path(u"a"_s)}));
}

void tst_PluginFolders::additionalFoldersOfAnotherType()
{
    m_environment->userDefaults().setValue(u"AdditionalPluginFolders"_s, 5);
    QCOMPARE(KRPluginManager::pluginsURLs(), QList{KRPluginManager::mainPluginsFolderURL()});
}

void tst_PluginFolders::relativePaths_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("relative");
    QTest::newRow("below") << u"/a/b"_s << u"/a/b/c/d"_s << u"c/d"_s;
    QTest::newRow("the same") << u"/a/b"_s << u"/a/b"_s << u""_s;
    QTest::newRow("above") << u"/a/b/c"_s << u"/a"_s << u""_s;
    QTest::newRow("beside") << u"/a/b/c"_s << u"/a/x/y"_s << u"x/y"_s;
    QTest::newRow("nothing in common") << u"/a"_s << u"/b/c"_s << u"b/c"_s;
    QTest::newRow("part of a name is no component") << u"/a/bc"_s << u"/a/b"_s << u"b"_s;
}

void tst_PluginFolders::relativePaths()
{
    QFETCH(QString, from);
    QFETCH(QString, path);
    const KRPluginManager manager;
    QTEST(manager.relativePathByDeletingCommonPathComponentsWithFileURL(
              QUrl::fromLocalFile(from), QUrl::fromLocalFile(path)),
        "relative");
}

void tst_PluginFolders::countIsKeptInTheDefaults()
{
    QCOMPARE(KRPluginManager().numberOfIncompatiblePluginsDisabled(), 0);
    KRPluginManager().setNumberOfIncompatiblePluginsDisabled(3);
    QCOMPARE(m_environment->userDefaults().integerForKey(u"KRPluginManagerNumberOfIncompatiblePluginsDisabled"_s), 3);
    QCOMPARE(KRPluginManager().numberOfIncompatiblePluginsDisabled(), 3);
}

QTEST_GUILESS_MAIN(tst_PluginFolders)
#include "tst_pluginfolders.moc"
