#include "platform/FolderListing.h"
#include "platform/monitoring/PathRoute.h"
#include "support/PathFiles.h"

#include <QByteArrayList>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_PathRoute : public QObject
{
    Q_OBJECT

private slots:
    void points_data();
    void points();
    void linksInACircle();
    void rootHasNone();
};

void tst_PathRoute::points_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QByteArrayList>("points");
    QTest::newRow("there") << "folder"_ba << QByteArrayList{"folder"};
    QTest::newRow("file") << "folder/file"_ba << QByteArrayList{"folder/file"};
    QTest::newRow("below a file") << "folder/file/a"_ba << QByteArrayList{"folder/file"};
    QTest::newRow("link to what is there") << "link"_ba << QByteArrayList{"link", "folder"};
    QTest::newRow("link to a file") << "to file"_ba << QByteArrayList{"to file", "link", "folder/file"};
    QTest::newRow("link to a link") << "second"_ba << QByteArrayList{"second", "link", "folder"};
    QTest::newRow("missing") << "missing"_ba << QByteArrayList{"missing"};
    QTest::newRow("several missing") << "folder/a/b/c"_ba << QByteArrayList{"folder/a"};
    QTest::newRow("behind a link") << "link/a/b"_ba << QByteArrayList{"link", "folder/a"};
    QTest::newRow("link to nowhere") << "dangling"_ba << QByteArrayList{"dangling", "folder/nowhere"};
    QTest::newRow("below a link to nowhere") << "dangling/a"_ba << QByteArrayList{"dangling", "folder/nowhere"};
    QTest::newRow("link to a link to nowhere") << "chain"_ba << QByteArrayList{"chain", "dangling", "folder/nowhere"};
    QTest::newRow("upwards") << "folder/up"_ba << QByteArrayList{"folder/up", "other"};
    QTest::newRow("the folder around") << "folder/here"_ba << QByteArrayList{"folder/here", "folder"};
    QTest::newRow("superfluous slashes and dots") << "folder//./../link//"_ba << QByteArrayList{"link", "folder"};
}

void tst_PathRoute::points()
{
    const TemporaryFolder folder;
    writeFileAt(folder.path("folder/file"), "");
    makeLinkAt(folder.path("link"), "folder");
    makeLinkAt(folder.path("second"), "link");
    makeLinkAt(folder.path("to file"), "link/file");
    makeLinkAt(folder.path("dangling"), folder.path("folder/nowhere/deep"));
    makeLinkAt(folder.path("chain"), "dangling/x");
    makeLinkAt(folder.path("folder/up"), "../other/x");
    makeLinkAt(folder.path("folder/here"), ".");
    QFETCH(QByteArray, path);
    QFETCH(QByteArrayList, points);
    const auto root = resolvedPath(folder.path());
    std::vector<RoutePoint> expected;
    for (const auto &point : points)
        expected.push_back({(root + '/' + point).chopped(point.size() - point.lastIndexOf('/')),
            point.mid(point.lastIndexOf('/') + 1)});
    QCOMPARE(routeOf(root + '/' + path), expected);
}

void tst_PathRoute::linksInACircle()
{
    const TemporaryFolder folder;
    makeLinkAt(folder.path("circle"), "circle");
    const auto route = routeOf(resolvedPath(folder.path()) + "/circle");
    QVERIFY(!route.empty());
    for (const auto &point : route)
        QCOMPARE(point.name, "circle"_ba);
}

void tst_PathRoute::rootHasNone()
{
    QVERIFY(routeOf("/").empty());
}

QTEST_GUILESS_MAIN(tst_PathRoute)
#include "tst_pathroute.moc"
