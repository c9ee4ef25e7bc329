#include "platform/network/TransferQueue.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class tst_TransferQueue : public QObject
{
    Q_OBJECT

private slots:
    void emptyQueueStartsNothing();
    void perHost();
    void inAll();
    void hostsTakeTurns();
    void multiplexingHost();
    void multiplexingHostIsOneConnection();
    void hostThatMultiplexesNoMore();
    void removedWhileItWaits();
    void addedAgainForAnotherHost();
    void unknownTransfers();

private:
    static QList<TransferID> startAll(TransferQueue &queue)
    {
        QList<TransferID> started;
        while (const auto transfer = queue.startNext())
            started.append(*transfer);
        return started;
    }
    static void add(TransferQueue &queue, const QString &host, TransferID first, int count)
    {
        for (int number = 0; number < count; ++number)
            queue.add(first + static_cast<TransferID>(number), host);
    }
};

void tst_TransferQueue::emptyQueueStartsNothing()
{
    TransferQueue queue;
    QVERIFY(!queue.startNext());
}

void tst_TransferQueue::perHost()
{
    TransferQueue queue;
    add(queue, u"a"_s, 1, 8);
    QCOMPARE(startAll(queue), (QList<TransferID>{1, 2, 3, 4, 5, 6}));
    queue.remove(3);
    QCOMPARE(startAll(queue), (QList<TransferID>{7}));
    queue.remove(1);
    queue.remove(2);
    QCOMPARE(startAll(queue), (QList<TransferID>{8}));
}

void tst_TransferQueue::inAll()
{
    TransferQueue queue;
    for (TransferID number = 1; number <= 40; ++number)
        queue.add(number, QString::number(number));
    QCOMPARE(startAll(queue).size(), 32);
    queue.remove(1);
    queue.remove(2);
    QCOMPARE(startAll(queue), (QList<TransferID>{33, 34}));
}

void tst_TransferQueue::hostsTakeTurns()
{
    TransferQueue queue;
    add(queue, u"a"_s, 1, 3);
    add(queue, u"b"_s, 11, 2);
    QCOMPARE(startAll(queue), (QList<TransferID>{1, 11, 2, 12, 3}));
}

void tst_TransferQueue::multiplexingHost()
{
    TransferQueue queue;
    add(queue, u"a"_s, 1, 200);
    QCOMPARE(startAll(queue).size(), 6);
    queue.setMultiplexing(1, true);
    queue.remove(1);
    QCOMPARE(startAll(queue).size(), 95);
    queue.remove(2);
    QCOMPARE(startAll(queue).size(), 1);
}

void tst_TransferQueue::multiplexingHostIsOneConnection()
{
    TransferQueue queue;
    add(queue, u"a"_s, 1, 2);
    startAll(queue);
    queue.setMultiplexing(1, true);
    for (TransferID number = 11; number <= 50; ++number)
        queue.add(number, QString::number(number));
    QCOMPARE(startAll(queue).size(), 31);
    add(queue, u"a"_s, 101, 5); // over the connection that is there
    QCOMPARE(startAll(queue), (QList<TransferID>{101, 102, 103, 104, 105}));
    for (const TransferID transfer : {1, 2, 101, 102, 103, 104, 105})
        queue.remove(transfer);
    QCOMPARE(startAll(queue).size(), 1); // in its place
    queue.add(201, u"a"_s); // which would be one more
    QCOMPARE(startAll(queue), QList<TransferID>());
}

void tst_TransferQueue::hostThatMultiplexesNoMore()
{
    TransferQueue queue;
    add(queue, u"a"_s, 1, 20);
    startAll(queue);
    queue.setMultiplexing(1, true);
    QCOMPARE(startAll(queue).size(), 14);
    queue.setMultiplexing(1, false);
    add(queue, u"a"_s, 21, 1);
    QCOMPARE(startAll(queue), QList<TransferID>());
    for (TransferID number = 1; number <= 15; ++number)
        queue.remove(number);
    QCOMPARE(startAll(queue), (QList<TransferID>{21}));
}

void tst_TransferQueue::removedWhileItWaits()
{
    TransferQueue queue;
    add(queue, u"a"_s, 1, 3);
    queue.remove(2);
    QCOMPARE(startAll(queue), (QList<TransferID>{1, 3}));
    add(queue, u"b"_s, 11, 1);
    queue.remove(11);
    QCOMPARE(startAll(queue), QList<TransferID>());
    add(queue, u"b"_s, 12, 1);
    QCOMPARE(startAll(queue), (QList<TransferID>{12}));
}

void tst_TransferQueue::addedAgainForAnotherHost()
{
    TransferQueue queue;
    add(queue, u"a"_s, 1, 7);
    startAll(queue);
    queue.remove(1);
    queue.add(1, u"b"_s);
    QCOMPARE(startAll(queue), (QList<TransferID>{7, 1}));
}

void tst_TransferQueue::unknownTransfers()
{
    TransferQueue queue;
    add(queue, u"a"_s, 1, 1);
    queue.remove(5);
    queue.setMultiplexing(5, true);
    QCOMPARE(startAll(queue), (QList<TransferID>{1}));
    queue.remove(1);
    queue.remove(1);
    add(queue, u"a"_s, 11, 7);
    QCOMPARE(startAll(queue).size(), 6);
}

QTEST_GUILESS_MAIN(tst_TransferQueue)
#include "tst_transferqueue.moc"
