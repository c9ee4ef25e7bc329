#include "plugins/LoadingMarker.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_LoadingMarker : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void nothingIsLeftAfterAFinish();
    void nothingIsLeftAfterTheEndOfTheObject();
    void aKilledProgramLeavesIt();
    void aRunningProgramDoesNot();
    void aFolderThatCannotBeMadeIsNoHarm();

private:
    QString path() const { return m_folder->filePath(u"new/folder/Loading"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_LoadingMarker::nothingIsLeftAfterAFinish()
{
    LoadingMarker marker(path());
    QVERIFY(!marker.wasLeftBehind());
    marker.begin();
    marker.begin();
    QVERIFY(QFile::exists(path()));
    QVERIFY(!marker.wasLeftBehind());
    marker.finish();
    marker.finish();
    QVERIFY(!QFile::exists(path()));
    QVERIFY(!LoadingMarker(path()).wasLeftBehind());
}

void tst_LoadingMarker::nothingIsLeftAfterTheEndOfTheObject()
{
    {
        LoadingMarker marker(path());
        marker.begin();
    }
    QVERIFY(!LoadingMarker(path()).wasLeftBehind());
}

void tst_LoadingMarker::aKilledProgramLeavesIt()
{
    const auto file = path();
    const auto child = fork();
    if (child == 0) {
        LoadingMarker marker(file);
        marker.begin();
        kill(getpid(), SIGKILL);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    LoadingMarker marker(file);
    QVERIFY(marker.wasLeftBehind());
    marker.begin();
    QVERIFY(!marker.wasLeftBehind());
    marker.finish();
    QVERIFY(!LoadingMarker(file).wasLeftBehind());
}

void tst_LoadingMarker::aRunningProgramDoesNot()
{
    LoadingMarker first(path());
    first.begin();
    LoadingMarker second(path());
    QVERIFY(!second.wasLeftBehind());
    second.begin();
    second.finish();
    QVERIFY(QFile::exists(path())); // the first one's, which is still loading
}

void tst_LoadingMarker::aFolderThatCannotBeMadeIsNoHarm()
{
    LoadingMarker marker(u"/dev/null/folder/Loading"_s);
    marker.begin();
    QVERIFY(!marker.wasLeftBehind());
    marker.finish();
}

QTEST_GUILESS_MAIN(tst_LoadingMarker)
#include "tst_loadingmarker.moc"
