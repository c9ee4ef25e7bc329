#include "platform/network/StallWatch.h"

#include <QtTest>

using namespace std::chrono_literals;

class tst_StallWatch : public QObject
{
    Q_OBJECT

private slots:
    void silence();
    void enoughBytesBeginAnew();
    void tooFewBytesDoNot();
    void postponed();
    void pausedItNeverEnds();
    void extremeTimeouts();

private:
    const StallWatch::Clock::time_point m_start{100h};
};

void tst_StallWatch::silence()
{
    StallWatch watch(10s, 60);
    watch.restart(m_start);
    QVERIFY(watch.deadline(m_start + 9s) == m_start + 10s);
    QVERIFY(watch.deadline(m_start + 11s) == m_start + 10s);
}

void tst_StallWatch::enoughBytesBeginAnew()
{
    StallWatch watch(10s, 60);
    watch.restart(m_start);
    watch.received(60, m_start + 9s);
    QVERIFY(watch.deadline(m_start + 9s) == m_start + 19s);
}

void tst_StallWatch::tooFewBytesDoNot()
{
    StallWatch watch(10s, 60);
    watch.restart(m_start);
    watch.received(30, m_start + 3s);
    watch.received(29, m_start + 9s);
    QVERIFY(watch.deadline(m_start + 9s) == m_start + 10s);
    watch.received(1, m_start + 9s);
    QVERIFY(watch.deadline(m_start + 9s) == m_start + 19s);
    watch.received(59, m_start + 18s); // those from before count no more
    QVERIFY(watch.deadline(m_start + 18s) == m_start + 19s);
}

void tst_StallWatch::postponed()
{
    StallWatch watch(10s, 60);
    watch.restart(m_start);
    watch.received(59, m_start + 1s);
    watch.postpone(3s);
    QVERIFY(watch.deadline(m_start + 5s) == m_start + 13s);
    watch.received(1, m_start + 5s);
    QVERIFY(watch.deadline(m_start + 5s) == m_start + 15s);
}

void tst_StallWatch::pausedItNeverEnds()
{
    StallWatch watch(10s, 60);
    QVERIFY(watch.deadline(m_start + 1h) == m_start + 1h + 10s);
    watch.restart(m_start);
    watch.pause();
    QVERIFY(watch.deadline(m_start + 1h) == m_start + 1h + 10s);
}

void tst_StallWatch::extremeTimeouts()
{
    StallWatch longest(std::chrono::milliseconds::max(), 60);
    longest.restart(m_start);
    QVERIFY(longest.deadline(m_start) > m_start + 24h);
    StallWatch negative(-1s, 60);
    negative.restart(m_start);
    QVERIFY(negative.deadline(m_start) == m_start);
}

QTEST_GUILESS_MAIN(tst_StallWatch)
#include "tst_stallwatch.moc"
