// Values that are replaced as a whole, between threads.

#include "platform/Snapshot.h"

#include <QString>
#include <QtTest>

#include <atomic>
#include <thread>

class tst_Snapshot : public QObject
{
    Q_OBJECT

private slots:
    void nothingAtFirst();
    void whoeverHasItKeepsWhatItWas();
    void takenByItsOnlyHolder();
    void notTakenWhileSomebodyElseHasIt();
    void notTakenOnceItWasReplaced();
    void changedBetweenThreads();
};

void tst_Snapshot::nothingAtFirst()
{
    Snapshot<int> snapshot;
    QVERIFY(!snapshot.get());
    snapshot.set(1);
    snapshot.clear();
    QVERIFY(!snapshot.get());
}

void tst_Snapshot::whoeverHasItKeepsWhatItWas()
{
    Snapshot<int> snapshot;
    const auto first = snapshot.set(1);
    snapshot.set(2);
    QCOMPARE(*first, 1);
    QCOMPARE(*snapshot.get(), 2);
}

void tst_Snapshot::takenByItsOnlyHolder()
{
    Snapshot<int> snapshot;
    auto known = snapshot.set(1);
    const auto taken = snapshot.take(known);
    QVERIFY(taken);
    QCOMPARE(*taken, 1);
    QVERIFY(!known);
    QVERIFY(!snapshot.get());
}

void tst_Snapshot::notTakenWhileSomebodyElseHasIt()
{
    Snapshot<int> snapshot;
    snapshot.set(1);
    const auto other = snapshot.get();
    auto known = snapshot.get();
    QVERIFY(!snapshot.take(known));
    QVERIFY(known);
    QCOMPARE(snapshot.get(), other);
}

void tst_Snapshot::notTakenOnceItWasReplaced()
{
    Snapshot<int> snapshot;
    auto known = snapshot.set(1);
    snapshot.set(2);
    QVERIFY(!snapshot.take(known));
    QCOMPARE(*snapshot.get(), 2);
}

void tst_Snapshot::changedBetweenThreads()
{
    struct Pair
    {
        int first = 0;
        int second = 0;
    };
    Snapshot<Pair> snapshot;
    snapshot.set({});
    std::atomic<bool> isOver = false;
    std::atomic<int> torn = 0;
    std::thread reader([&] {
        while (!isOver) {
            if (const auto pair = snapshot.get(); pair && pair->first != pair->second)
                ++torn;
        }
    });
    for (int number = 1; number <= 20'000; ++number) {
        auto known = snapshot.get();
        const auto taken = snapshot.take(known);
        Pair pair = taken ? *taken : *known;
        pair.first = number;
        pair.second = number;
        if (taken)
            *taken = pair; // in place: nobody else has it
        snapshot.set(pair);
    }
    isOver = true;
    reader.join();
    QCOMPARE(torn, 0);
    QCOMPARE(snapshot.get()->first, 20'000);
}

QTEST_APPLESS_MAIN(tst_Snapshot)
#include "tst_snapshot.moc"
