// Folders are made below a folder and nowhere else, whichever way they are looked for.

#include "platform/ContainedFolder.h"
#include "support/PathFiles.h"

#include <QDir>
#include <QtTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(ContainedFolder::Lookup)

class tst_ContainedFolder : public QObject
{
    Q_OBJECT

private slots:
    void subfolders_data();
    void subfolders();
    void latestFolderIsFoundAgain();
    void forgottenPathsAreLookedUpAgain();
    void openFolderStaysWhenItsPathLeadsElsewhere();
    void inside_data();
    void inside();
    void createdFiles_data();
    void createdFiles();
    void linksReplaceAllButFolders_data();
    void linksReplaceAllButFolders();
    void namesAreSingle_data();
    void namesAreSingle();
    void noFolderAtAll();
};

namespace {

/// A folder with links of all kinds in it, and one beside it that is not to be touched.
class Sandbox
{
public:
    Sandbox()
    {
        makeFolderAt(m_folder.path("in/sub/deep"));
        makeFolderAt(m_folder.path("out/there"));
        makeLinkAt(m_folder.path("in/toSub"), "sub");
        makeLinkAt(m_folder.path("in/toSubAbsolutely"), m_folder.path("in/sub"));
        makeLinkAt(m_folder.path("in/toSubAround"), "../in/sub");
        makeLinkAt(m_folder.path("in/toItself"), ".");
        makeLinkAt(m_folder.path("in/toLink"), "toSub");
        makeLinkAt(m_folder.path("in/out"), "../out");
        makeLinkAt(m_folder.path("in/outAbsolutely"), m_folder.path("out"));
        makeLinkAt(m_folder.path("in/outByLink"), "out");
        makeLinkAt(m_folder.path("in/sub/outFromBelow"), "../../out/there");
        makeLinkAt(m_folder.path("in/parent"), "..");
        makeLinkAt(m_folder.path("in/root"), "/");
        makeLinkAt(m_folder.path("in/dead"), "nowhere");
        makeLinkAt(m_folder.path("in/deadOutside"), "../out/nowhere");
        makeLinkAt(m_folder.path("in/round"), "round");
        writeFileAt(m_folder.path("in/file"), "a file");
        makePipeAt(m_folder.path("in/pipe"));
    }

    QByteArray path(const QByteArray &name = "in") const { return m_folder.path(name); }
    ContainedFolder open(ContainedFolder::Lookup lookup = ContainedFolder::Lookup::System) const
    {
        return {FolderHandle::open(path()).value(), path(), lookup};
    }
    QStringList outside() const
    {
        return QDir(QString::fromUtf8(path("out")))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

private:
    TemporaryFolder m_folder;
};

using Handle = std::shared_ptr<const FolderHandle>;

QString resultOf(const ContainedFolder::Subfolder &subfolder)
{
    if (const auto *failure = std::get_if<ContainedFolder::Failure>(&subfolder))
        return *failure == ContainedFolder::Failure::LeadsOutside ? u"outside"_s : u"cannot create"_s;
    return u"found"_s;
}

void writeMark(const FolderHandle &folder)
{
    QVERIFY(folder.createFile("mark").isOk());
}

} // namespace

void tst_ContainedFolder::subfolders_data()
{
    QTest::addColumn<ContainedFolder::Lookup>("lookup");
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QString>("result");
    QTest::addColumn<QByteArray>("place"); // where a file then lands

    const auto row = [](const char *tag, const QByteArray &path, const QString &result, const QByteArray &place = {}) {
        QTest::addRow("asking the system: %s", tag) << ContainedFolder::Lookup::System << path << result << place;
        QTest::addRow("by components: %s", tag) << ContainedFolder::Lookup::Components << path << result << place;
    };
    const auto found = u"found"_s;
    const auto outside = u"outside"_s;
    const auto cannotCreate = u"cannot create"_s;
    row("the folder itself", "", found, "in/mark");
    row("a folder that exists", "sub/deep", found, "in/sub/deep/mark");
    row("folders that are missing", "new/newer/newest", found, "in/new/newer/newest/mark");
    row("missing below an existing one", "sub/new", found, "in/sub/new/mark");
    row("leading slashes mean nothing", "//sub", found, "in/sub/mark");
    row("double slashes mean nothing", "sub//deep", found, "in/sub/deep/mark");
    row("single dots mean nothing", "./sub/./deep/.", found, "in/sub/deep/mark");
    row("a link that stays inside", "toSub/deep", found, "in/sub/deep/mark");
    row("new below a link that stays inside", "toSub/new", found, "in/sub/new/mark");
    row("an absolute link that stays inside", "toSubAbsolutely", found, "in/sub/mark");
    row("new below an absolute link inside", "toSubAbsolutely/new", found, "in/sub/new/mark");
    row("a link that comes back inside", "toSubAround/deep", found, "in/sub/deep/mark");
    row("a link to the folder itself", "toItself/toItself/sub", found, "in/sub/mark");
    row("a link to a link inside", "toLink/deep", found, "in/sub/deep/mark");
    row("a link that leads out", "out", outside);
    row("new below a link that leads out", "out/new", outside);
    row("existing below a link that leads out", "out/there", outside);
    row("an absolute link that leads out", "outAbsolutely/new", outside);
    row("a link to a link that leads out", "outByLink/new", outside);
    row("out from below", "sub/outFromBelow/new", outside);
    row("out through a link inside", "toSub/outFromBelow/new", outside);
    row("a link to the parent", "parent", outside);
    row("out by a link and back by name", "parent/in/sub", outside);
    row("a link to the root", "root/tmp", outside);
    row("two dots", "..", outside);
    row("two dots that come back", "sub/..", outside);
    row("two dots at the end of a missing path", "new/..", outside);
    row("a link that leads nowhere", "dead", cannotCreate);
    row("new below a link that leads nowhere", "dead/new", cannotCreate);
    row("a link that leads nowhere outside", "deadOutside/new", cannotCreate);
    row("a link to itself", "round/new", cannotCreate);
    row("a file in the way", "file/new", cannotCreate);
    row("a file at the end", "file", cannotCreate);
    row("a pipe in the way", "pipe/new", cannotCreate);
    row("a zero in the path", QByteArray("su\0b", 4), cannotCreate);
    row("a name that is too long", QByteArray(256, 'n') + "/x", cannotCreate);
    row("a path that is too long", QByteArray("ab/").repeated(1400), cannotCreate);
    row("backslashes are part of a name", "a\\..\\b", found, "in/a\\..\\b/mark");
}

void tst_ContainedFolder::subfolders()
{
    QFETCH(ContainedFolder::Lookup, lookup);
    QFETCH(QByteArray, path);
    QFETCH(QByteArray, place);
    const Sandbox sandbox;
    auto folder = sandbox.open(lookup);
    const auto subfolder = folder.makeSubfolder(path);
    QTEST(resultOf(subfolder), "result");
    QCOMPARE(sandbox.outside(), QStringList{u"there"_s});
    if (place.isEmpty())
        return;
    writeMark(*std::get<Handle>(subfolder));
    QVERIFY2(QFile::exists(QString::fromUtf8(sandbox.path(place))), place);
}

void tst_ContainedFolder::latestFolderIsFoundAgain()
{
    const Sandbox sandbox;
    auto folder = sandbox.open();
    const auto first = std::get<Handle>(folder.makeSubfolder("sub"));
    QCOMPARE(std::get<Handle>(folder.makeSubfolder("sub")), first);
    QVERIFY(std::get<Handle>(folder.makeSubfolder("sub/deep")) != first);
}

void tst_ContainedFolder::forgottenPathsAreLookedUpAgain()
{
    const Sandbox sandbox;
    auto folder = sandbox.open();
    QCOMPARE(resultOf(folder.makeSubfolder("toSub")), u"found"_s);
    removeAt(sandbox.path("in/toSub"));
    makeLinkAt(sandbox.path("in/toSub"), "../out");
    folder.forgetPaths();
    QCOMPARE(resultOf(folder.makeSubfolder("toSub")), u"outside"_s);
}

void tst_ContainedFolder::openFolderStaysWhenItsPathLeadsElsewhere()
{
    const Sandbox sandbox;
    auto folder = sandbox.open();
    const auto sub = std::get<Handle>(folder.makeSubfolder("sub"));
    renameAt(sandbox.path("in/sub"), sandbox.path("in/moved"));
    makeLinkAt(sandbox.path("in/sub"), "../out");
    writeMark(*sub);
    QVERIFY(QFile::exists(QString::fromUtf8(sandbox.path("in/moved/mark"))));
    QCOMPARE(sandbox.outside(), QStringList{u"there"_s});
}

void tst_ContainedFolder::inside_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<bool>("isInside");

    QTest::newRow("the folder itself") << QByteArray("in") << true;
    QTest::newRow("below") << QByteArray("in/sub") << true;
    QTest::newRow("far below") << QByteArray("in/sub/deep") << true;
    QTest::newRow("by a link from outside") << QByteArray("in/toSubAround/deep") << true;
    QTest::newRow("beside") << QByteArray("out") << false;
    QTest::newRow("by a link out") << QByteArray("in/out/there") << false;
    QTest::newRow("above") << QByteArray("in/..") << false;
    QTest::newRow("the root") << QByteArray("in/root") << false;
}

void tst_ContainedFolder::inside()
{
    QFETCH(QByteArray, path);
    const Sandbox sandbox;
    const auto folder = FolderHandle::open(sandbox.path());
    QTEST(FolderHandle::open(sandbox.path(path)).value().isInside(folder.value()), "isInside");
}

void tst_ContainedFolder::createdFiles_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("error");

    QTest::newRow("nothing is there") << QByteArray("new") << 0;
    QTest::newRow("a file is replaced") << QByteArray("file") << 0;
    QTest::newRow("a pipe is replaced, not waited for") << QByteArray("pipe") << 0;
    QTest::newRow("a link to a folder is replaced") << QByteArray("toSub") << 0;
    QTest::newRow("a link out is replaced") << QByteArray("out") << 0;
    QTest::newRow("a dead link out is replaced, not followed") << QByteArray("deadOutside") << 0;
    QTest::newRow("a folder stays") << QByteArray("sub") << EISDIR;
    QTest::newRow("the folder itself") << QByteArray(".") << EINVAL;
    QTest::newRow("a long name") << QByteArray(255, 'n') << 0;
    QTest::newRow("a name that is too long") << QByteArray(256, 'n') << ENAMETOOLONG;
}

void tst_ContainedFolder::createdFiles()
{
    QFETCH(QByteArray, name);
    const Sandbox sandbox;
    const auto folder = FolderHandle::open(sandbox.path());
    const auto file = folder.value().createFile(name);
    QTEST(file ? 0 : file.error().code, "error");
    QCOMPARE(sandbox.outside(), QStringList{u"there"_s});
    const QFileInfo created(QString::fromUtf8(sandbox.path("in/" + name)));
    if (file)
        QVERIFY(created.isFile() && !created.isSymLink() && created.size() == 0);
}

void tst_ContainedFolder::linksReplaceAllButFolders_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("isMade");

    QTest::newRow("nothing is there") << QByteArray("new") << true;
    QTest::newRow("a file") << QByteArray("file") << true;
    QTest::newRow("another link") << QByteArray("out") << true;
    QTest::newRow("a folder stays") << QByteArray("sub") << false;
}

void tst_ContainedFolder::linksReplaceAllButFolders()
{
    QFETCH(QByteArray, name);
    const Sandbox sandbox;
    const auto folder = FolderHandle::open(sandbox.path());
    QTEST(!folder.value().makeLink(name, "target").has_value(), "isMade");
    QTEST(QFileInfo(QString::fromUtf8(sandbox.path("in/" + name))).symLinkTarget().endsWith(u"/target"), "isMade");
    QCOMPARE(sandbox.outside(), QStringList{u"there"_s});
}

void tst_ContainedFolder::namesAreSingle_data()
{
    QTest::addColumn<QByteArray>("name");

    QTest::newRow("none") << QByteArray();
    QTest::newRow("the parent") << QByteArray("..");
    QTest::newRow("a path") << QByteArray("sub/new");
    QTest::newRow("an absolute path") << QByteArray("/tmp");
    QTest::newRow("a zero") << QByteArray("a\0b", 3);
}

void tst_ContainedFolder::namesAreSingle()
{
    QFETCH(QByteArray, name);
    const Sandbox sandbox;
    const auto folder = FolderHandle::open(sandbox.path());
    QCOMPARE(folder.value().createFile(name).error().code, EINVAL);
    QCOMPARE(folder.value().makeLink(name, "target").value_or(KRError()).code, EINVAL);
    QCOMPARE(folder.value().makeFolder(name).value_or(KRError()).code, EINVAL);
    QCOMPARE(folder.value().removeEntry(name).value_or(KRError()).code, EINVAL);
    QCOMPARE(folder.value().openFolder(name, FolderHandle::Links::Follow).error().code, EINVAL);
}

void tst_ContainedFolder::noFolderAtAll()
{
    const FolderHandle none;
    QCOMPARE(none.createFile("name").error().code, EBADF);
    QVERIFY(none.makeLink("name", "target").has_value());
    QVERIFY(!none.isInside(none));
    QCOMPARE(FolderHandle::open("/nowhere/at/all").error().code, ENOENT);
    QCOMPARE(FolderHandle::open(QByteArray("/tmp\0x", 6)).error().code, EINVAL);
}

QTEST_GUILESS_MAIN(tst_ContainedFolder)
#include "tst_containedfolder.moc"
