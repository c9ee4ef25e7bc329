#include "platform/network/NetworkThread.h"
#include "platform/network/TransferPool.h"
#include "support/servers/LoopbackServer.h"

#include <QtTest>

#include <latch>

using namespace Qt::StringLiterals;

class tst_NetworkThread : public QObject
{
    Q_OBJECT

private slots:
    void commandsRunInTheirOrder();
    void commandsOfTheThreadItselfComeLater();
    void thereIsOneForTheProcess();
    void stoppingDropsCommands();
    void stoppingEndsWaits();
    void stoppingDropsTransfers();
};

void tst_NetworkThread::commandsRunInTheirOrder()
{
    NetworkThread thread;
    QStringList log;
    for (int number = 0; number < 100; ++number)
        thread.post([&log, number] { log.append(QString::number(number)); });
    bool isThread = false;
    thread.postAndWait([&] { isThread = thread.isCurrentThread(); });
    QVERIFY(isThread);
    QVERIFY(!thread.isCurrentThread());
    QCOMPARE(log.size(), 100);
    QCOMPARE(log.at(0), u"0"_s);
    QCOMPARE(log.at(99), u"99"_s);
}

void tst_NetworkThread::commandsOfTheThreadItselfComeLater()
{
    NetworkThread thread;
    QStringList log;
    std::latch done(1);
    thread.post([&] {
        thread.post([&] {
            log.append(u"inner"_s);
            done.count_down();
        });
        log.append(u"outer"_s);
    });
    done.wait();
    QCOMPARE(log, (QStringList{u"outer"_s, u"inner"_s}));
}

void tst_NetworkThread::thereIsOneForTheProcess()
{
    QVERIFY(NetworkThread::shared());
    QCOMPARE(NetworkThread::shared().get(), NetworkThread::shared().get());
}

void tst_NetworkThread::stoppingDropsCommands()
{
    NetworkThread thread;
    thread.stop();
    bool hasRun = false;
    auto held = std::make_shared<int>();
    thread.post([&hasRun, held] { hasRun = true; });
    thread.postAndWait([&hasRun, held] { hasRun = true; });
    thread.stop();
    QVERIFY(!hasRun);
    QCOMPARE(held.use_count(), 1L);
}

/// A wait for a command that comes after the one during which the thread is stopped.
void tst_NetworkThread::stoppingEndsWaits()
{
    NetworkThread thread;
    std::latch running(1);
    std::latch mayGoOn(1);
    thread.post([&] {
        running.count_down();
        mayGoOn.wait();
    });
    running.wait();
    std::thread waiting([&thread] { thread.postAndWait([] {}); });
    std::thread stopping([&thread] { thread.stop(); });
    mayGoOn.count_down();
    waiting.join();
    stopping.join();
}

namespace {

class CountingReceiver final : public TransferReceiver
{
public:
    explicit CountingReceiver(std::shared_ptr<int> calls)
        : m_calls(std::move(calls))
    { }

    std::optional<KRError> receive(QByteArrayView, qint64) override { return {}; }
    void finish(const URLResponse &, const std::optional<KRError> &) override { ++*m_calls; }

private:
    std::shared_ptr<int> m_calls;
};

} // namespace

void tst_NetworkThread::stoppingDropsTransfers()
{
    LoopbackServer server;
    server.setAnswer("/", Answer::bytes("HTTP/1.1 200 OK\r\n\r\nhalf").thenStall());
    const auto calls = std::make_shared<int>();
    NetworkThread thread;
    for (int number = 0; number < 10; ++number) { // 6 under way, 4 wait
        thread.post([&, receiver = std::make_shared<CountingReceiver>(calls)] {
            thread.transfers().start(
                std::make_unique<Transfer>(URLRequest{server.url(u"/"_s), {}}, SessionConfiguration(), receiver));
        });
    }
    server.waitForRequests(6);
    thread.stop();
    server.waitForHangUps(6);
    QCOMPARE(*calls, 0);
    QCOMPARE(calls.use_count(), 1L); // nobody is left
}

QTEST_GUILESS_MAIN(tst_NetworkThread)
#include "tst_networkthread.moc"
