#include "platform/FolderListing.h"
#include "support/PathFiles.h"

#include <QDir>
#include <QMap>
#include <QtTest>

#include <unistd.h>

using namespace Qt::StringLiterals;
using Kind = FolderEntry::Kind;

class tst_FolderListing : public QObject
{
    Q_OBJECT

private slots:
    void listsVisibleEntriesWithTheirKinds();
    void listsAllEntriesWithTheirKinds();
    void noEntries_data();
    void noEntries();
    void vanishedFolderHasNoEntries();
    void namesOfAnyBytes();
    void longListIsComplete();
    void nulDoesNotShortenPath();
    void targets_data();
    void targets();
    void entriesAndTheirTargets_data();
    void entriesAndTheirTargets();
    void resolvedPathGoesThroughAllLinks();
};

namespace {

QMap<QByteArray, Kind> byName(const std::vector<FolderEntry> &entries)
{
    QMap<QByteArray, Kind> result;
    for (const auto &entry : entries) {
        if (result.contains(entry.name))
            qFatal("%s is listed twice", entry.name.constData());
        result.insert(entry.name, entry.kind);
    }
    return result;
}

QMap<QByteArray, Kind> listed(const QByteArray &path)
{
    return byName(visibleEntries(path));
}

/// One of each kind.
void fill(const TemporaryFolder &folder)
{
    const auto inside = [&folder](const QByteArray &name) { return folder.path(name); };
    writeFileAt(inside("file"), "x");
    writeFileAt(inside(".hidden file"), "x");
    makeFolderAt(inside("folder"));
    writeFileAt(inside("folder/deeper"), "x");
    makeFolderAt(inside(".hidden folder"));
    makeFolderAt(inside("..two dots"));
    makeFolderAt(inside("empty"));
    makePipeAt(inside("pipe"));
    makeLinkAt(inside("link to file"), "file");
    makeLinkAt(inside("link to folder"), "folder");
    makeLinkAt(inside("link to link"), "link to folder");
    makeLinkAt(inside("link to pipe"), "pipe");
    makeLinkAt(inside("dangling"), "missing");
    makeLinkAt(inside("circle"), "circle");
}

} // namespace

void tst_FolderListing::listsVisibleEntriesWithTheirKinds()
{
    const TemporaryFolder folder;
    fill(folder);

    const QMap<QByteArray, Kind> expected{{"circle", Kind::Link}, {"dangling", Kind::Link}, {"empty", Kind::Folder},
        {"file", Kind::File}, {"folder", Kind::Folder}, {"link to file", Kind::Link}, {"link to folder", Kind::Link},
        {"link to link", Kind::Link}, {"link to pipe", Kind::Link}, {"pipe", Kind::Other}};
    QCOMPARE(listed(folder.path()), expected);
    QCOMPARE(listed(folder.path() + '/'), expected);
}

void tst_FolderListing::listsAllEntriesWithTheirKinds()
{
    const TemporaryFolder folder;
    fill(folder);

    auto expected = listed(folder.path());
    expected.insert({{".hidden file", Kind::File}, {".hidden folder", Kind::Folder}, {"..two dots", Kind::Folder}});
    QCOMPARE(byName(allEntries(folder.path())), expected);
    QCOMPARE(allEntries(folder.path("empty")).size(), 0U);
    QCOMPARE(allEntries(folder.path("missing")).size(), 0U);
    QCOMPARE(allEntries(folder.path() + '\0').size(), 0U);
}

void tst_FolderListing::noEntries_data()
{
    QTest::addColumn<QByteArray>("name");

    QTest::newRow("empty folder") << "empty"_ba;
    QTest::newRow("missing folder") << "missing"_ba;
    QTest::newRow("file") << "file"_ba;
    QTest::newRow("pipe does not block") << "pipe"_ba;
    QTest::newRow("dangling link") << "dangling"_ba;
    QTest::newRow("links in a circle") << "circle"_ba;
}

void tst_FolderListing::noEntries()
{
    const TemporaryFolder folder;
    fill(folder);
    QFETCH(QByteArray, name);
    QCOMPARE(listed(folder.path(name)), (QMap<QByteArray, Kind>()));
    QCOMPARE(listed({}), (QMap<QByteArray, Kind>()));
}

/// The current folder of a process may be deleted; its path then leads nowhere, and "." to a folder that is gone.
void tst_FolderListing::vanishedFolderHasNoEntries()
{
    const auto previous = QDir::currentPath();
    const TemporaryFolder folder;
    const auto gone = folder.path("gone");
    makeFolderAt(gone);
    QVERIFY(QDir::setCurrent(QString::fromUtf8(gone)));
    QCOMPARE(::rmdir(gone.constData()), 0);

    const auto entries = listed(".");
    QVERIFY(QDir::setCurrent(previous));
    QCOMPARE(entries, (QMap<QByteArray, Kind>()));
    QCOMPARE(listed(gone), (QMap<QByteArray, Kind>()));
}

void tst_FolderListing::namesOfAnyBytes()
{
    const TemporaryFolder folder;
    const QMap<QByteArray, Kind> names{{"\xFF\xFE", Kind::File}, {"\xC3", Kind::File}, {"\xC3\xA4", Kind::File},
        {"a\nb", Kind::File}, {" ", Kind::File}, {"#%3F;?", Kind::File}, {QByteArray(255, 'n'), Kind::File}};
    for (auto name = names.begin(); name != names.end(); ++name)
        writeFileAt(folder.path(name.key()), "x");

    QCOMPARE(listed(folder.path()), names);
    for (auto name = names.begin(); name != names.end(); ++name)
        QCOMPARE(kindOfTarget(folder.path(name.key())), Kind::File);
}

void tst_FolderListing::longListIsComplete()
{
    const TemporaryFolder folder;
    constexpr int count = 3000; // more than the system hands over at once
    for (int i = 0; i < count; ++i)
        makeLinkAt(folder.path("entry number " + QByteArray::number(i)), "x");
    QCOMPARE(listed(folder.path()).size(), count);
}

void tst_FolderListing::nulDoesNotShortenPath()
{
    const TemporaryFolder folder;
    fill(folder);
    const auto path = folder.path("folder") + '\0' + "x";

    QVERIFY(visibleEntries(path).empty());
    QCOMPARE(kindOfTarget(path), Kind::Other);
    QVERIFY(!itemExists(path));
    QCOMPARE(resolvedPath(path), QByteArray());
}

void tst_FolderListing::targets_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<bool>("exists");

    QTest::newRow("file") << "file"_ba << Kind::File << true;
    QTest::newRow("folder") << "folder"_ba << Kind::Folder << true;
    QTest::newRow("folder with a slash behind") << "folder/"_ba << Kind::Folder << true;
    QTest::newRow("file with a slash behind") << "file/"_ba << Kind::Other << false;
    QTest::newRow("hidden file") << ".hidden file"_ba << Kind::File << true;
    QTest::newRow("link to a file") << "link to file"_ba << Kind::File << true;
    QTest::newRow("link to a folder") << "link to folder"_ba << Kind::Folder << true;
    QTest::newRow("link to a link") << "link to link"_ba << Kind::Folder << true;
    QTest::newRow("through a link") << "link to link/deeper"_ba << Kind::File << true;
    QTest::newRow("pipe") << "pipe"_ba << Kind::Other << true;
    QTest::newRow("link to a pipe") << "link to pipe"_ba << Kind::Other << true;
    QTest::newRow("dangling link") << "dangling"_ba << Kind::Other << false;
    QTest::newRow("links in a circle") << "circle"_ba << Kind::Other << false;
    QTest::newRow("missing") << "missing"_ba << Kind::Other << false;
    QTest::newRow("below a file") << "file/below"_ba << Kind::Other << false;
}

void tst_FolderListing::targets()
{
    const TemporaryFolder folder;
    fill(folder);
    QFETCH(QByteArray, name);
    QTEST(kindOfTarget(folder.path(name)), "kind");
    QTEST(itemExists(folder.path(name)), "exists");
    QCOMPARE(kindOfTarget({}), Kind::Other);
    QVERIFY(!itemExists({}));
}

void tst_FolderListing::entriesAndTheirTargets_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<Kind>("targetKind");

    QTest::newRow("file") << "file"_ba << Kind::File << "file"_ba << Kind::File;
    QTest::newRow("folder") << "folder"_ba << Kind::Folder << "folder"_ba << Kind::Folder;
    QTest::newRow("pipe") << "pipe"_ba << Kind::Other << "pipe"_ba << Kind::Other;
    QTest::newRow("missing") << "missing"_ba << Kind::Other << "missing"_ba << Kind::Other;
    QTest::newRow("link to a file") << "link to file"_ba << Kind::Link << "file"_ba << Kind::File;
    QTest::newRow("link to a link") << "link to link"_ba << Kind::Link << "folder"_ba << Kind::Folder;
    QTest::newRow("link to a pipe") << "link to pipe"_ba << Kind::Link << "pipe"_ba << Kind::Other;
    QTest::newRow("dangling link") << "dangling"_ba << Kind::Link << "dangling"_ba << Kind::Other;
    QTest::newRow("links in a circle") << "circle"_ba << Kind::Link << "circle"_ba << Kind::Other;
}

void tst_FolderListing::entriesAndTheirTargets()
{
    const TemporaryFolder folder;
    fill(folder);
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, target);
    const FolderEntry entry{name, kindOfEntry(folder.path(name))};
    QTEST(entry.kind, "kind");
    const auto found = targetOf(folder.path(), entry);
    QCOMPARE(found.path, folder.path(target));
    QTEST(found.kind, "targetKind");
}

void tst_FolderListing::resolvedPathGoesThroughAllLinks()
{
    const TemporaryFolder folder;
    fill(folder);
    const auto root = resolvedPath(folder.path());
    QVERIFY(!root.isEmpty());

    QCOMPARE(resolvedPath(folder.path("folder")), root + "/folder");
    QCOMPARE(resolvedPath(folder.path("folder/")), root + "/folder");
    QCOMPARE(resolvedPath(folder.path("link to link")), root + "/folder");
    QCOMPARE(resolvedPath(folder.path("link to link/../file")), root + "/file");
    QCOMPARE(resolvedPath(folder.path("link to folder/deeper")), root + "/folder/deeper");
    QCOMPARE(resolvedPath("/"), "/"_ba);
    for (const QByteArray nowhere : {"missing", "dangling", "circle", "file/below"})
        QCOMPARE(resolvedPath(folder.path(nowhere)), QByteArray());
    QCOMPARE(resolvedPath({}), QByteArray());
}

QTEST_GUILESS_MAIN(tst_FolderListing)
#include "tst_folderlisting.moc"
