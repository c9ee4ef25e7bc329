#include "platform/network/LTDownloadManager.h"
#include "support/DownloadRecorder.h"
#include "support/servers/LoopbackServer.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class tst_LTDownloadManager : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void filesArrive_data();
    void filesArrive();
    void fileGoesAfterItsCompletion();
    void movedFileStays();
    void progressIsTold();
    void batchWithoutTasks_data();
    void batchWithoutTasks();
    void tasksWaitToBeResumed();
    void identifiersAreInTheOrderOfAdding();
    void noTasksAfterInvalidation_data();
    void noTasksAfterInvalidation();
    void callbacksMayBeEmpty();
    void batchOutlivesItsManager();
    void managerThatGoesCancelsWhatNeverBegan();
    void completionMayDestroyTheManager();

private:
    std::unique_ptr<LTDownloadManager> manager()
    {
        return std::make_unique<LTDownloadManager>(SessionConfiguration(), nullptr, m_recorder->batch());
    }
    QString add(LTDownloadManager &manager, const QUrl &url, const QString &name)
    {
        return manager.addDownloadTaskWithDownloadRequest({url, {}}, m_recorder->task(name));
    }

    std::unique_ptr<DownloadRecorder> m_recorder;
};

void tst_LTDownloadManager::init()
{
    m_recorder = std::make_unique<DownloadRecorder>();
}

void tst_LTDownloadManager::filesArrive_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("content");
    const QByteArray ok = "HTTP/1.1 200 OK\r\n";
    const QByteArray chunked = ok + "Transfer-Encoding: chunked\r\n";
    const QByteArray binary = QByteArray("\0\r\n\r\n\xFF\x1A", 7).repeated(100'000);
    QTest::newRow("of known length") << ok + "Content-Length: 4\r\n\r\nbody" << 200 << "body"_ba;
    QTest::newRow("of unknown length") << ok + "\r\nbody" << 200 << "body"_ba;
    QTest::newRow("empty") << ok + "Content-Length: 0\r\n\r\n" << 200 << ""_ba;
    QTest::newRow("no content") << "HTTP/1.1 204 None\r\n\r\n"_ba << 204 << ""_ba;
    QTest::newRow("in chunks") << chunked + "\r\n2\r\nbo\r\n2\r\ndy\r\n0\r\n\r\n" << 200 << "body"_ba;
    QTest::newRow("in chunks with trailers") << chunked + "Trailer: Sum\r\n\r\n4\r\nbody\r\n0\r\nSum: 1\r\n\r\n"
                                             << 200 << "body"_ba;
    QTest::newRow("after a provisional answer")
        << "HTTP/1.1 103 Soon\r\nLink: <x>\r\n\r\n" + ok + "Content-Length: 4\r\n\r\nbody" << 200 << "body"_ba;
    QTest::newRow("large and binary") << ok + "Content-Length: " + QByteArray::number(binary.size()) + "\r\n\r\n"
            + binary << 200 << binary;
    QTest::newRow("compressed") << ok + "Content-Encoding: gzip\r\n\r\n"
            + QByteArray::fromBase64("H4sIAAAAAAACA0vKT6kEALILqNsEAAAA")
                                << 200 << "body"_ba;
    QTest::newRow("not found") << "HTTP/1.1 404 No\r\nContent-Length: 4\r\n\r\ngone"_ba << 404 << "gone"_ba;
    QTest::newRow("broken server") << "HTTP/1.1 500 No\r\nContent-Length: 4\r\n\r\nsick"_ba << 500 << "sick"_ba;
    QTest::newRow("not found, without body") << "HTTP/1.1 404 No\r\nContent-Length: 0\r\n\r\n"_ba << 404 << ""_ba;
}

void tst_LTDownloadManager::filesArrive()
{
    QFETCH(QByteArray, bytes);
    LoopbackServer server;
    server.setAnswer("/a%20file?q", Answer::bytes(bytes));
    const DownloadOutcome outcome = download(server.url(u"/a file?q#fragment"_s));
    QCOMPARE(outcome.errorText(), QString());
    QTEST(outcome.content, "content");
    QVERIFY(!outcome.content.isNull()); // there was a file
    QTEST(outcome.response.statusCode, "status");
    QCOMPARE(outcome.response.url, server.url(u"/a file?q#fragment"_s));
    QVERIFY(!outcome.onTestThread);
    QCOMPARE(server.requestedPaths(), (QList<QByteArray>{"/a%20file?q"}));
}

void tst_LTDownloadManager::fileGoesAfterItsCompletion()
{
    LoopbackServer server;
    server.setAnswer("/file", Answer::response(200, "body"));
    const DownloadOutcome outcome = download(server.url(u"/file"_s));
    QVERIFY(outcome.file.isLocalFile());
    QCOMPARE(outcome.content, "body"_ba);
    QVERIFY(!QFile::exists(outcome.file.toLocalFile()));
}

void tst_LTDownloadManager::movedFileStays()
{
    LoopbackServer server;
    server.setAnswer("/file", Answer::response(200, "body"));
    const QTemporaryDir folder;
    const QString place = folder.filePath(u"kept"_s);
    const auto batch = manager();
    batch->resumeDownloadTaskWithIdentifier(batch->addDownloadTaskWithDownloadRequest(
        {server.url(u"/file"_s), {}}, [&place](const QUrl &file, const URLResponse &, const std::optional<KRError> &) {
            QFile::rename(file.toLocalFile(), place);
        }));
    batch->finishTasksAndInvalidate();
    m_recorder->waitForEnd();
    QFile kept(place);
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), "body"_ba);
}

namespace {

class RecordingDelegate final : public LTDownloadManagerDelegate
{
public:
    explicit RecordingDelegate(LoopbackServer &server)
        : m_server(server)
    { }

    void downloadTaskDidWriteData(const QString &identifier, qint64 written, qint64 expected) override
    {
        lines.append(u"%1: %2 of %3"_s.arg(identifier).arg(written).arg(expected));
        if (written == 3)
            m_server.release(); // the rest
    }
    void downloadTaskDidEnd(const QString &identifier) override { lines.append(u"%1: end"_s.arg(identifier)); }

    QStringList lines;

private:
    LoopbackServer &m_server;
};

} // namespace

void tst_LTDownloadManager::progressIsTold()
{
    LoopbackServer server;
    const auto inPieces = [](const QByteArray &head) {
        return Answer::bytes(head).thenBytes("one").thenWaitForRelease().thenBytes("three");
    };
    server.setAnswer("/known", inPieces("HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\n"));
    server.setAnswer("/unknown", inPieces("HTTP/1.1 200 OK\r\n\r\n"));
    const auto delegate = std::make_shared<RecordingDelegate>(server);
    for (const QString &path : {u"/known"_s, u"/unknown"_s}) {
        DownloadRecorder recorder;
        LTDownloadManager manager({}, delegate, recorder.batch());
        manager.resumeDownloadTaskWithIdentifier(
            manager.addDownloadTaskWithDownloadRequest({server.url(path), {}}, recorder.task(path)));
        manager.finishTasksAndInvalidate();
        recorder.waitForEnd();
        QCOMPARE(recorder.outcome(path).content, "onethree"_ba);
    }
    const QStringList lines{u"1: 3 of 8"_s, u"1: 8 of 8"_s, u"1: end"_s, u"1: 3 of -1"_s, u"1: 8 of -1"_s, u"1: end"_s};
    QCOMPARE(delegate->lines, lines);
}

void tst_LTDownloadManager::batchWithoutTasks_data()
{
    QTest::addColumn<int>("calls");
    QTest::newRow("finished") << 0;
    QTest::newRow("cancelled") << 1;
    QTest::newRow("cancelled and waited for") << 2;
    QTest::newRow("destroyed") << 3;
    QTest::newRow("all of it") << 4;
}

void tst_LTDownloadManager::batchWithoutTasks()
{
    QFETCH(int, calls);
    auto batch = manager();
    if (calls == 0 || calls == 4)
        batch->finishTasksAndInvalidate();
    if (calls == 1 || calls == 4)
        batch->cancelAllTasksAndInvalidate();
    if (calls == 2 || calls == 4)
        batch->cancelAllTasksAndWait();
    if (calls == 3 || calls == 4)
        batch.reset();
    m_recorder->waitForEnd();
    manager()->cancelAllTasksAndWait(); // adds an "end" of its own, after all that was to come
    QCOMPARE(m_recorder->events(), (QStringList{u"end"_s, u"end"_s}));
}

void tst_LTDownloadManager::tasksWaitToBeResumed()
{
    LoopbackServer server;
    const auto batch = manager();
    const QString first = add(*batch, server.url(u"/first"_s), u"first"_s);
    const QString second = add(*batch, server.url(u"/second"_s), u"second"_s);
    batch->finishTasksAndInvalidate();
    batch->resumeDownloadTaskWithIdentifier(second);
    batch->resumeDownloadTaskWithIdentifier(second);
    batch->resumeDownloadTaskWithIdentifier(u"nobody"_s);
    m_recorder->waitForEvents(1);
    batch->resumeDownloadTaskWithIdentifier(second);
    batch->resumeDownloadTaskWithIdentifier(first);
    m_recorder->waitForEnd();
    QCOMPARE(m_recorder->events(), (QStringList{u"second"_s, u"first"_s, u"end"_s}));
    QCOMPARE(server.requestedPaths(), (QList<QByteArray>{"/second", "/first"}));
}

void tst_LTDownloadManager::identifiersAreInTheOrderOfAdding()
{
    LoopbackServer server;
    const auto batch = manager();
    QStringList identifiers;
    for (int number = 0; number < 12; ++number)
        identifiers.append(add(*batch, server.url(u"/"_s), QString::number(number)));
    QCOMPARE(batch->allTasksIdentifiers(), identifiers);
    QCOMPARE(QSet<QString>(identifiers.begin(), identifiers.end()).size(), 12);
    batch->resumeDownloadTaskWithIdentifier(identifiers.at(1));
    m_recorder->waitForEvents(1);
    identifiers.removeAt(1);
    QCOMPARE(batch->allTasksIdentifiers(), identifiers); // of those that have not ended
    batch->cancelAllTasksAndWait();
    QCOMPARE(batch->allTasksIdentifiers(), QStringList());
}

void tst_LTDownloadManager::noTasksAfterInvalidation_data()
{
    QTest::addColumn<int>("call");
    QTest::newRow("finished") << 0;
    QTest::newRow("cancelled") << 1;
    QTest::newRow("cancelled and waited for") << 2;
}

void tst_LTDownloadManager::noTasksAfterInvalidation()
{
    QFETCH(int, call);
    LoopbackServer server;
    const auto batch = manager();
    if (call == 0)
        batch->finishTasksAndInvalidate();
    else if (call == 1)
        batch->cancelAllTasksAndInvalidate();
    else
        batch->cancelAllTasksAndWait();
    const QString identifier = add(*batch, server.url(u"/"_s), u"late"_s);
    QCOMPARE(identifier, QString());
    batch->resumeDownloadTaskWithIdentifier(identifier);
    m_recorder->waitForEnd();
    batch->cancelAllTasksAndWait();
    QCOMPARE(m_recorder->events(), QStringList{u"end"_s});
    QCOMPARE(server.requestedPaths(), QList<QByteArray>());
}

void tst_LTDownloadManager::callbacksMayBeEmpty()
{
    LoopbackServer server;
    server.setAnswer("/file", Answer::response(200, "body").thenWaitForRelease());
    LTDownloadManager batch({}, nullptr, nullptr);
    batch.resumeDownloadTaskWithIdentifier(
        batch.addDownloadTaskWithDownloadRequest({server.url(u"/file"_s), {}}, nullptr));
    batch.finishTasksAndInvalidate();
    server.waitForRequests(1);
    server.release();
    batch.cancelAllTasksAndWait();
    QCOMPARE(batch.allTasksIdentifiers(), QStringList());
}

void tst_LTDownloadManager::batchOutlivesItsManager()
{
    LoopbackServer server;
    server.setAnswer("/file", Answer().thenWaitForRelease().thenBytes("HTTP/1.1 200 OK\r\n\r\nbody"));
    auto batch = manager();
    batch->resumeDownloadTaskWithIdentifier(add(*batch, server.url(u"/file"_s), u"file"_s));
    batch->finishTasksAndInvalidate();
    batch.reset();
    server.waitForRequests(1);
    QCOMPARE(m_recorder->events(), QStringList());
    server.release();
    m_recorder->waitForEnd();
    QCOMPARE(m_recorder->events(), (QStringList{u"file"_s, u"end"_s}));
    QCOMPARE(m_recorder->outcome(u"file"_s).content, "body"_ba);
}

void tst_LTDownloadManager::managerThatGoesCancelsWhatNeverBegan()
{
    LoopbackServer server;
    server.setAnswer("/begun", Answer().thenWaitForRelease().thenBytes("HTTP/1.1 200 OK\r\n\r\nbody"));
    auto batch = manager();
    add(*batch, server.url(u"/never"_s), u"never"_s);
    batch->resumeDownloadTaskWithIdentifier(add(*batch, server.url(u"/begun"_s), u"begun"_s));
    batch.reset();
    m_recorder->waitForEvents(1);
    server.release();
    m_recorder->waitForEnd();
    QCOMPARE(m_recorder->events(), (QStringList{u"never -999"_s, u"begun"_s, u"end"_s}));
    QCOMPARE(server.requestedPaths(), (QList<QByteArray>{"/begun"}));
}

void tst_LTDownloadManager::completionMayDestroyTheManager()
{
    LoopbackServer server;
    auto batch = std::make_shared<std::unique_ptr<LTDownloadManager>>(manager());
    LTDownloadManager &inside = **batch;
    const QString identifier = inside.addDownloadTaskWithDownloadRequest({server.url(u"/"_s), {}},
        [batch](const QUrl &, const URLResponse &, const std::optional<KRError> &) { batch->reset(); });
    inside.resumeDownloadTaskWithIdentifier(identifier);
    m_recorder->waitForEnd();
    QVERIFY(!*batch);
}

QTEST_GUILESS_MAIN(tst_LTDownloadManager)
#include "tst_ltdownloadmanager.moc"
