// Whether the console's window keeps up with 10,000 entries in a second: the longest time that its event loop does not
// come round, beside that of a bare text field that the same lines are appended to. A frame at 60 a second is 16.7 ms.
//
// "wall" is by the clock, and so includes what else this machine was doing; "work" is what the thread computed
// meanwhile.

#include "widgets/console/ConsoleLog.h"
#include "widgets/console/ConsoleWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <functional>
#include <vector>

namespace {

constexpr int entriesPerSecond = 10'000;
constexpr int ticks = 1'000;
constexpr double millisecond = 1e6;

double threadNanoseconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e9 + double(time.tv_nsec);
}

struct Gaps
{
    double wall = 0;
    double work = 0;
};

/// Appends so many lines in the course of a second, a few every millisecond, and finds the longest turns of the event
/// loop meanwhile.
Gaps longestGaps(const std::function<void(const QString &)> &append)
{
    Gaps longest;
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QElapsedTimer clock;
    int sent = 0;
    qint64 lastWall = 0;
    double lastWork = 0;
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
        const auto wall = clock.nsecsElapsed();
        const auto work = threadNanoseconds();
        longest.wall = std::max(longest.wall, double(wall - lastWall) / millisecond);
        longest.work = std::max(longest.work, (work - lastWork) / millisecond);
        lastWall = wall;
        lastWork = work;
        // As many in every turn, so that a machine that is busy with other things does not make the turns longer.
        const int due = sent + entriesPerSecond / ticks;
        for (; sent < due; ++sent)
            append(QStringLiteral("Entry %1: something that a plug-in has to say about a layer").arg(sent));
        if (sent == entriesPerSecond)
            loop.quit();
    });
    clock.start();
    lastWork = threadNanoseconds();
    timer.start(1000 / ticks);
    loop.exec();
    return longest;
}

void report(benchmark::State &state, std::vector<Gaps> gaps, const char *name)
{
    const auto middle = gaps.size() / 2;
    const auto of = [&](auto member) {
        std::sort(gaps.begin(), gaps.end(), [member](const Gaps &a, const Gaps &b) { return a.*member < b.*member; });
        return gaps[middle].*member;
    };
    state.counters[std::string(name) + "_wall_ms"] = of(&Gaps::wall);
    state.counters[std::string(name) + "_work_ms"] = of(&Gaps::work);
}

/// With as many entries there already.
void tenThousandInASecond(benchmark::State &state)
{
    const int before = int(state.range(0));
    const auto log = std::make_shared<ConsoleLog>();
    const auto append = [&log](const QString &text) {
        log->log({{QStringLiteral("stringValue"), text},
                     {QStringLiteral("level"), text.endsWith(u'7') ? QStringLiteral("error") : QStringLiteral("log")}},
            QStringLiteral("bench"));
    };
    for (int i = 0; i < before; ++i)
        append(QStringLiteral("An entry of before"));
    ConsoleWindow window(log);
    window.show();
    QPlainTextEdit bare;
    bare.setReadOnly(true);
    bare.setMaximumBlockCount(LogModel::usualCapacity);
    for (int i = 0; i < before; ++i)
        bare.appendPlainText(QStringLiteral("An entry of before"));
    bare.resize(window.size());
    bare.show();
    while (log->entries().rowCount() < std::min(before, LogModel::usualCapacity))
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);

    std::vector<Gaps> ours;
    std::vector<Gaps> floor;
    for (auto _ : state) {
        floor.push_back(longestGaps([&bare](const QString &text) { bare.appendPlainText(text); }));
        ours.push_back(longestGaps(append));
        state.SetIterationTime(ours.back().work / 1e3);
    }
    report(state, floor, "floor");
    report(state, ours, "console");
}

} // namespace

BENCHMARK(tenThousandInASecond)->Arg(0)->Arg(50'000)->Iterations(7)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
