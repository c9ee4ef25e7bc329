// A registry that follows links.

#include "manager/KRPluginManager.h"
#include "platform/FileURL.h"
#include "support/FolderEventsReading.h"
#include "support/PathFiles.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

QString versionOf(KRPluginManager &manager, const QString &identifier)
{
    const auto bundle = manager.plugins().value(identifier);
    return bundle ? bundle->version().value_or(u"nil"_s) : u"none"_s;
}

} // namespace

class tst_KRPluginManager_Following_Links : public QObject
{
    Q_OBJECT

private slots:
    void newVersionBehindALink_data();
    void newVersionBehindALink();
};

void tst_KRPluginManager_Following_Links::newVersionBehindALink_data()
{
    QTest::addColumn<QByteArray>("link"); // a link to there
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<QByteArray>("folder"); // the plug-in folder
    QTest::newRow("linked plug-in") << "Plugins/x.korvanplugin"_ba
                                    << "../ext/cur/One.korvanplugin"_ba
                                    << "Plugins"_ba;
    QTest::newRow("linked folder of plug-ins") << "Plugins/x"_ba
                                               << "../ext/cur"_ba
                                               << "Plugins"_ba;
    QTest::newRow("linked plug-in folder") << "L"_ba
                                           << "ext/cur"_ba
                                           << "L"_ba;
    QTest::newRow("plug-in folder behind a link") << "ext/other"_ba
                                                  << "nowhere"_ba
                                                  << "ext/cur"_ba;
}

void tst_KRPluginManager_Following_Links::newVersionBehindALink()
{
    QFETCH(QByteArray, link);
    QFETCH(QByteArray, target);
    QFETCH(QByteArray, folder);
    TestEnvironment environment;
    const TemporaryFolder files;
    for (const QByteArray version : {"1", "2"}) {
        writeFileAt(files.path("ext/v" + version + "/One.korvanplugin/Contents/Korvan/manifest.json"),
            R"({"identifier": "one", "version": ")" + version + R"(", "commands": []})");
    }
    makeLinkAt(files.path("ext/cur"), "v1");
    makeFolderAt(files.path("Plugins"));
    makeLinkAt(files.path(link), target);

    const auto state = std::make_shared<KRPluginManagingState>(
        fileURLFromPath(files.path("state/PluginMetadata.plist"), FileKind::File));
    KRPluginManager manager({fileURLFromPath(files.path(folder), FileKind::Folder)}, nullptr, state);
    manager.reloadPlugins();
    QCOMPARE(versionOf(manager, u"one"_s), u"1"_s);

    makeLinkAt(files.path("ext/cur.new"), "v2");
    renameAt(files.path("ext/cur.new"), files.path("ext/cur"));
    letFoldersSettle(environment);
    QCOMPARE(versionOf(manager, u"one"_s), u"2"_s);
}

QTEST_GUILESS_MAIN(tst_KRPluginManager_Following_Links)
#include "tst_krpluginmanager_following_links.moc"
