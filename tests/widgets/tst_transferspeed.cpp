#include "widgets/plugins/TransferSpeed.h"

#include <QtTest>

using namespace std::chrono_literals;

class tst_TransferSpeed : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsKnown();
    void overTheWholeTime();
    void onlyTheLastSecondsCount();
    void severalInOneMoment();
    void afterALongPause();
};

void tst_TransferSpeed::nothingIsKnown()
{
    TransferSpeed speed;
    QCOMPARE(speed.bytesPerSecond(), 0.0);
    speed.add(5s, 1000);
    QCOMPARE(speed.bytesPerSecond(), 0.0);
}

void tst_TransferSpeed::overTheWholeTime()
{
    TransferSpeed speed;
    speed.add(5s, 1000);
    speed.add(5500ms, 2000);
    QCOMPARE(speed.bytesPerSecond(), 2000.0);
    speed.add(7s, 5000);
    QCOMPARE(speed.bytesPerSecond(), 2000.0);
}

void tst_TransferSpeed::onlyTheLastSecondsCount()
{
    TransferSpeed speed;
    speed.add(0s, 0);
    speed.add(1s, 1'000'000);
    for (int second = 2; second <= 10; ++second)
        speed.add(std::chrono::seconds(second), 1'000'000 + second * 100);
    QCOMPARE(speed.bytesPerSecond(), 100.0);
}

void tst_TransferSpeed::severalInOneMoment()
{
    TransferSpeed speed;
    speed.add(1s, 10);
    speed.add(1s, 20);
    QCOMPARE(speed.bytesPerSecond(), 0.0);
    speed.add(2s, 120);
    QCOMPARE(speed.bytesPerSecond(), 100.0);
}

void tst_TransferSpeed::afterALongPause()
{
    TransferSpeed speed;
    speed.add(0s, 0);
    speed.add(1s, 1000);
    speed.add(11s, 2000);
    QCOMPARE(speed.bytesPerSecond(), 100.0);
}

QTEST_GUILESS_MAIN(tst_TransferSpeed)
#include "tst_transferspeed.moc"
