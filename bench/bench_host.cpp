// How much longer the reference host takes to start with 300 plug-ins than with none: from the making of the
// application's objects to a window on the screen whose menu is filled. What comes before (the process, its libraries,
// fonts) is the same for both and not counted, so that the ratio is higher than what a user meets.

#include "HostApplication.h"
#include "support/BundleGenerator.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QMenuBar>
#include <QTemporaryDir>

#include <algorithm>
#include <vector>

namespace {

HostOptions optionsFor(const QTemporaryDir &folder, const QString &plugins)
{
    HostOptions options;
    options.folders = QStringList{folder.filePath(plugins)};
    options.supportFolder = folder.filePath(QStringLiteral("support"));
    options.defaultsFile = folder.filePath(QStringLiteral("defaults.ini"));
    options.resourcesFolder = QStringLiteral(KORVAN_RESOURCES_FOLDER);
    return options;
}

/// In microseconds; the end of the program is not counted.
double timeOfStart(const HostOptions &options, int leastActions)
{
    QElapsedTimer timer;
    timer.start();
    HostApplication host(options);
    host.start();
    QApplication::processEvents();
    const auto time = double(timer.nsecsElapsed()) / 1000;
    const auto actions = host.windows().first()->menuBar()->findChildren<QAction *>();
    if (actions.size() < leastActions)
        qFatal("the menus have %lld actions", qlonglong(actions.size()));
    return time;
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + std::ptrdiff_t(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void startWithPlugins(benchmark::State &state)
{
    const QTemporaryDir folder;
    const auto bundles = generateBundles(folder.filePath(QStringLiteral("many")), int(state.range(0)));
    const auto none = optionsFor(folder, QStringLiteral("none"));
    const auto many = optionsFor(folder, QStringLiteral("many"));
    timeOfStart(none, 0); // the first one reads fonts and icons
    std::vector<double> floors;
    std::vector<double> times;
    std::vector<double> ratios;
    for (auto _ : state) {
        floors.push_back(timeOfStart(none, 0));
        times.push_back(timeOfStart(many, bundles.commands / 2));
        ratios.push_back(times.back() / floors.back());
        state.SetIterationTime(times.back() / 1e6);
    }
    state.counters["floor_us"] = median(floors);
    state.counters["ours_us"] = median(times);
    state.counters["ratio"] = median(ratios);
    state.counters["commands"] = bundles.commands;
}

} // namespace

BENCHMARK(startWithPlugins)->Arg(300)->Iterations(31)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
