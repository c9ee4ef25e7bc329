#include "platform/network/LTDownloadManager.h"
#include "support/DownloadRecorder.h"
#include "support/servers/ChildProcess.h"
#include "support/servers/LoopbackServer.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <cstdio>
#include <thread>

using namespace Qt::StringLiterals;

/// Downloads that do not come to their end.
class tst_LTDownloadManager_cancel : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void everyTaskHearsOfIt();
    void endedTasksHearNothing();
    void filesAreRemoved();
    void finishedBatch();
    void twice();
    void insideOfACompletion_data();
    void insideOfACompletion();
    void waitingEndsWithTheLastCompletion();
    void nothingComesAfterWaiting();
    void fromManyThreads();
    void programEndsMeanwhile();

private:
    QString add(LTDownloadManager &manager, const QUrl &url, const QString &name)
    {
        return manager.addDownloadTaskWithDownloadRequest({url, {}}, m_recorder->task(name));
    }

    std::unique_ptr<DownloadRecorder> m_recorder;
};

void tst_LTDownloadManager_cancel::init()
{
    m_recorder = std::make_unique<DownloadRecorder>();
}

void tst_LTDownloadManager_cancel::everyTaskHearsOfIt()
{
    LoopbackServer server;
    server.setAnswer("/", Answer::silence());
    LTDownloadManager manager({}, nullptr, m_recorder->batch());
    QStringList expected;
    for (int number = 0; number < 10;
         ++number) { // 6 of them are under way, 2 wait for a connection, 2 were not resumed
        const QString identifier = add(manager, server.url(u"/"_s), QString::number(number));
        if (number < 8)
            manager.resumeDownloadTaskWithIdentifier(identifier);
        expected.append(u"%1 -999"_s.arg(number));
    }
    server.waitForRequests(6);
    manager.cancelAllTasksAndInvalidate();
    m_recorder->waitForEnd();
    QCOMPARE(m_recorder->events(), expected + QStringList{u"end"_s});
    const DownloadOutcome outcome = m_recorder->outcome(u"0"_s);
    QCOMPARE(outcome.error->domain, u"NSURLErrorDomain"_s);
    QCOMPARE(outcome.errorText(), u"The transfer from \"127.0.0.1\" was cancelled."_s);
    QVERIFY(outcome.file.isEmpty());
    QVERIFY(!outcome.onTestThread);
    server.waitForHangUps(6);
    QCOMPARE(server.requestedPaths().size(), 6);
}

void tst_LTDownloadManager_cancel::endedTasksHearNothing()
{
    LoopbackServer server;
    server.setAnswer("/silent", Answer::silence());
    LTDownloadManager manager({}, nullptr, m_recorder->batch());
    manager.resumeDownloadTaskWithIdentifier(add(manager, server.url(u"/file"_s), u"file"_s));
    m_recorder->waitForEvents(1);
    manager.resumeDownloadTaskWithIdentifier(add(manager, server.url(u"/silent"_s), u"silent"_s));
    manager.cancelAllTasksAndInvalidate();
    m_recorder->waitForEnd();
    QCOMPARE(m_recorder->events(), (QStringList{u"file"_s, u"silent -999"_s, u"end"_s}));
}

void tst_LTDownloadManager_cancel::filesAreRemoved()
{
    const QTemporaryDir folder;
    LoopbackServer server;
    server.setAnswer("/", Answer::bytes("HTTP/1.1 200 OK\r\n\r\nhalf").thenStall());
    SessionConfiguration configuration;
    configuration.temporaryFolder = folder.path();
    LTDownloadManager manager(configuration, nullptr, m_recorder->batch());
    manager.resumeDownloadTaskWithIdentifier(add(manager, server.url(u"/"_s), u"file"_s));
    server.waitForRequests(1);
    manager.cancelAllTasksAndWait();
    QCOMPARE(m_recorder->events(), (QStringList{u"file -999"_s, u"end"_s}));
    QVERIFY(QDir(folder.path()).isEmpty());
}

void tst_LTDownloadManager_cancel::finishedBatch()
{
    LoopbackServer server;
    server.setAnswer("/", Answer::silence());
    LTDownloadManager manager({}, nullptr, m_recorder->batch());
    manager.resumeDownloadTaskWithIdentifier(add(manager, server.url(u"/"_s), u"file"_s));
    manager.finishTasksAndInvalidate();
    manager.cancelAllTasksAndInvalidate();
    m_recorder->waitForEnd();
    QCOMPARE(m_recorder->events(), (QStringList{u"file -999"_s, u"end"_s}));
}

void tst_LTDownloadManager_cancel::twice()
{
    LoopbackServer server;
    server.setAnswer("/", Answer::silence());
    LTDownloadManager manager({}, nullptr, m_recorder->batch());
    manager.resumeDownloadTaskWithIdentifier(add(manager, server.url(u"/"_s), u"file"_s));
    manager.cancelAllTasksAndInvalidate();
    manager.cancelAllTasksAndWait();
    manager.cancelAllTasksAndWait();
    manager.finishTasksAndInvalidate();
    manager.cancelAllTasksAndWait();
    QCOMPARE(m_recorder->events(), (QStringList{u"file -999"_s, u"end"_s}));
}

void tst_LTDownloadManager_cancel::insideOfACompletion_data()
{
    QTest::addColumn<bool>("wait");
    QTest::newRow("without waiting") << false;
    QTest::newRow("waiting, which would be for itself") << true;
}

void tst_LTDownloadManager_cancel::insideOfACompletion()
{
    QFETCH(bool, wait);
    LoopbackServer server;
    server.setAnswer("/silent", Answer::silence());
    LTDownloadManager manager({}, nullptr, m_recorder->batch());
    const auto cancel = [this, wait, &manager](const QUrl &, const URLResponse &, const std::optional<KRError> &error) {
        if (wait)
            manager.cancelAllTasksAndWait();
        else
            manager.cancelAllTasksAndInvalidate();
        m_recorder->task(u"first"_s)({}, {}, error); // before anything that the cancelling leads to
    };
    const QString first = manager.addDownloadTaskWithDownloadRequest({server.url(u"/file"_s), {}}, cancel);
    manager.resumeDownloadTaskWithIdentifier(add(manager, server.url(u"/silent"_s), u"silent"_s));
    manager.resumeDownloadTaskWithIdentifier(first);
    m_recorder->waitForEnd();
    QCOMPARE(m_recorder->events(), (QStringList{u"first"_s, u"silent -999"_s, u"end"_s}));
}

/// A completion that is running when the wait begins.
void tst_LTDownloadManager_cancel::waitingEndsWithTheLastCompletion()
{
    LoopbackServer server;
    std::atomic<bool> hasReturned = false;
    LTDownloadManager manager({}, nullptr, nullptr);
    const QString identifier = manager.addDownloadTaskWithDownloadRequest(
        {server.url(u"/"_s), {}}, [&](const QUrl &, const URLResponse &, const std::optional<KRError> &) {
            m_recorder->task(u"begun"_s)({}, {}, {});
            for (int turn = 0; turn < 1000; ++turn)
                std::this_thread::yield(); // time for the other thread to be wrong
            hasReturned = true;
        });
    manager.resumeDownloadTaskWithIdentifier(identifier);
    m_recorder->waitForEvents(1);
    manager.cancelAllTasksAndWait();
    QVERIFY(hasReturned);
}

void tst_LTDownloadManager_cancel::nothingComesAfterWaiting()
{
    LoopbackServer server;
    for (int round = 0; round < 200; ++round) {
        auto recorder = std::make_unique<DownloadRecorder>();
        {
            LTDownloadManager manager({}, nullptr, recorder->batch());
            for (int number = 0; number < 3; ++number)
                manager.resumeDownloadTaskWithIdentifier(manager.addDownloadTaskWithDownloadRequest(
                    {server.url(u"/"_s), {}}, recorder->task(QString::number(number))));
            if (round % 2 == 0)
                manager.finishTasksAndInvalidate();
            if (round % 3 == 0)
                server.waitForRequests(1);
            manager.cancelAllTasksAndWait();
        }
        QCOMPARE(recorder->events().size(), 4);
        QCOMPARE(recorder->events().last(), u"end"_s);
        recorder.reset(); // whoever comes too late is caught by the sanitizers
    }
}

void tst_LTDownloadManager_cancel::fromManyThreads()
{
    LoopbackServer server;
    LTDownloadManager manager({}, nullptr, m_recorder->batch());
    std::atomic<int> accepted = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([&, number] {
            for (int turn = 0; turn < 50; ++turn) {
                const QString identifier = add(manager, server.url(u"/"_s), u"%1.%2"_s.arg(number).arg(turn));
                accepted += identifier.isEmpty() ? 0 : 1;
                manager.resumeDownloadTaskWithIdentifier(identifier);
                manager.allTasksIdentifiers();
                if (number == 3 && turn == 25)
                    manager.cancelAllTasksAndWait();
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    m_recorder->waitForEnd();
    QCOMPARE(m_recorder->events().size(), accepted + 1);
    QCOMPARE(m_recorder->events().last(), u"end"_s);
}

/// Runs this program again, see main().
void tst_LTDownloadManager_cancel::programEndsMeanwhile()
{
    LoopbackServer server;
    server.setAnswer("/", Answer::bytes("HTTP/1.1 200 OK\r\n\r\nhalf").thenStall());
    const QTemporaryDir folder;
    const QString output = folder.filePath(u"output"_s);
    ChildProcess program({QCoreApplication::applicationFilePath(),
        {u"--leave-pending"_s, server.url(u"/"_s).toString()}, folder.path(), output, {}});
    server.waitForRequests(6);
    program.closeInput();
    QCOMPARE(program.waitForEnd(), 0);
    QFile written(output);
    QVERIFY(written.open(QIODevice::ReadOnly));
    QCOMPARE(written.readAll(), QByteArray());
}

namespace {

/// Ends in the midst of a download, with another one that waits; says what it should not hear.
int leavePending(const QUrl &url)
{
    static LTDownloadManager manager({}, nullptr, [] { std::puts("end of the batch"); });
    for (int number = 0; number < 10; ++number)
        manager.resumeDownloadTaskWithIdentifier(manager.addDownloadTaskWithDownloadRequest(
            {url, {}}, [](const QUrl &, const URLResponse &, const std::optional<KRError> &) { std::puts("end"); }));
    std::getchar();
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 3 && qstrcmp(argv[1], "--leave-pending") == 0)
        return leavePending(QUrl(QString::fromLocal8Bit(argv[2])));
    QCoreApplication application(argc, argv);
    tst_LTDownloadManager_cancel test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_ltdownloadmanager_cancel.moc"
