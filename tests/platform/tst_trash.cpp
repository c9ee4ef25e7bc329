// What is thrown away, and comes back.

#include "platform/FileReading.h"
#include "platform/FolderListing.h"
#include "platform/Trash.h"
#include "support/ForkedProcess.h"
#include "support/PathFiles.h"

#include <QDateTime>
#include <QDir>
#include <QtTest>

#include <cerrno>
#include <memory>

using namespace Qt::StringLiterals;

class tst_Trash : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<TemporaryFolder>();
        qputenv("XDG_DATA_HOME", m_folder->path("data").constData());
    }
    void cleanup()
    {
        qunsetenv("XDG_DATA_HOME");
        m_folder.reset();
    }

    void thrownAway_data();
    void thrownAway();
    void saysWhereItWas();
    void everyItemHasANameOfItsOwn();
    void comesBack();
    void doesNotComeBackOverAnything();
    void fromAnotherFileSystem();
    void cannotBeThrownAway_data();
    void cannotBeThrownAway();

private:
    QByteArray path(const QByteArray &name) const { return m_folder->path(name); }
    QByteArray info(const QByteArray &name) const
    {
        const auto text = readFile(path("data/Trash/info/" + name + ".trashinfo"), 10'000);
        return text ? text.value() : "nothing"_ba;
    }

    std::unique_ptr<TemporaryFolder> m_folder;
};

void tst_Trash::thrownAway_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("folder") << "folder"_ba;
    QTest::newRow("file") << "file"_ba;
    QTest::newRow("link to nothing") << "dangling"_ba;
    QTest::newRow("a name that is no text") << "\xff.korvanplugin"_ba;
}

void tst_Trash::thrownAway()
{
    QFETCH(QByteArray, name);
    writeFileAt(path("folder/file"), "text");
    writeFileAt(path("file"), "text");
    writeFileAt(path("\xff.korvanplugin"), "text");
    makeLinkAt(path("dangling"), "nowhere");
    const auto trashed = moveToTrash(path(name));
    QVERIFY(trashed);
    QCOMPARE(trashed->from, path(name));
    QCOMPARE(trashed->inTrash, path("data/Trash/files/" + name));
    QVERIFY(hasEntry(trashed->inTrash));
    QVERIFY(!hasEntry(path(name)));
}

void tst_Trash::saysWhereItWas()
{
    writeFileAt(path("50% off\n/tidy.korvanplugin/file"), "text");
    QVERIFY(moveToTrash(path("50% off\n/tidy.korvanplugin")));
    const auto lines = info("tidy.korvanplugin").split('\n');
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines[0], "[Trash Info]"_ba);
    QCOMPARE(lines[1], "Path=" + path("50%25%20off%0A/tidy.korvanplugin"));
    QVERIFY(lines[2].startsWith("DeletionDate="));
    QVERIFY(QDateTime::fromString(QString::fromLatin1(lines[2].mid(13)), u"yyyy-MM-ddTHH:mm:ss"_s).isValid());
}

void tst_Trash::everyItemHasANameOfItsOwn()
{
    writeFileAt(path("data/Trash/files/file-2"), "an item of which nothing is said");
    for (const char *const text : {"first", "second", "third"}) {
        writeFileAt(path("file"), text);
        QVERIFY(moveToTrash(path("file")));
    }
    QCOMPARE(readFile(path("data/Trash/files/file"), 100).value(), "first"_ba);
    QCOMPARE(readFile(path("data/Trash/files/file-3"), 100).value(), "second"_ba);
    QCOMPARE(readFile(path("data/Trash/files/file-4"), 100).value(), "third"_ba);
}

void tst_Trash::comesBack()
{
    writeFileAt(path("folder/file"), "text");
    const auto trashed = moveToTrash(path("folder"));
    QVERIFY(trashed && !takeOutOfTrash(*trashed));
    QCOMPARE(readFile(path("folder/file"), 100).value(), "text"_ba);
    QCOMPARE(info("folder"), "nothing"_ba);
    QVERIFY(visibleEntries(path("data/Trash/files")).empty());
}

void tst_Trash::doesNotComeBackOverAnything()
{
    writeFileAt(path("file"), "old");
    const auto trashed = moveToTrash(path("file"));
    writeFileAt(path("file"), "new");
    QVERIFY(trashed);
    QCOMPARE(takeOutOfTrash(*trashed).value_or(KRError()).code, EEXIST);
    QCOMPARE(readFile(path("file"), 100).value(), "new"_ba);
    QVERIFY(hasEntry(trashed->inTrash));
    QVERIFY(info("file") != "nothing");
}

void tst_Trash::fromAnotherFileSystem()
{
    makeFolderAt(path("disk"));
    const auto result = resultOnSmallDisk(QFile::decodeName(path("disk")), 65536, [this] {
        writeFileAt(path("disk/folder/file"), "text");
        const auto trashed = moveToTrash(path("disk/folder"));
        if (!trashed || hasEntry(path("disk/folder")))
            return "not thrown away"_ba;
        const auto text = readFile(trashed->inTrash + "/file", 100).value();
        return !takeOutOfTrash(*trashed) && hasEntry(path("disk/folder/file")) ? text : "did not come back"_ba;
    });
    QCOMPARE(result, "text"_ba);
}

void tst_Trash::cannotBeThrownAway_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("inTheWay");
    QTest::addColumn<int>("code");

    QTest::newRow("is not there") << "missing"_ba
                                  << ""_ba << ENOENT;
    QTest::newRow("no place for a trash") << "file"_ba
                                          << "data"_ba << ENOTDIR;
    QTest::newRow("no place for the items") << "file"_ba
                                            << "data/Trash/files"_ba << ENOTDIR;
    QTest::newRow("no place for what is said") << "file"_ba
                                               << "data/Trash/info"_ba << ENOTDIR;
}

void tst_Trash::cannotBeThrownAway()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, inTheWay);
    QFETCH(int, code);
    writeFileAt(path("file"), "text");
    if (!inTheWay.isEmpty())
        writeFileAt(path(inTheWay), "in the way");
    KRError error;
    QVERIFY(!moveToTrash(path(name), &error));
    QCOMPARE(error.code, code);
    QCOMPARE(readFile(path("file"), 100).value(), "text"_ba);
    QCOMPARE(info(name), "nothing"_ba);
}

QTEST_GUILESS_MAIN(tst_Trash)
#include "tst_trash.moc"
