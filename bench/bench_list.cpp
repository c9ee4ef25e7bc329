// How much longer the command line takes to list 100 plug-ins than to say its version: what a start with plug-ins
// costs.

#include "support/BundleGenerator.h"
#include "support/Interleaved.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

namespace {

const auto program = QStringLiteral(KORVAN_PROGRAM_DIR "/korvan-plugins");

void start(const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s failed", qPrintable(program));
}

void listBesideVersion(benchmark::State &state)
{
    const QTemporaryDir folder;
    generateBundles(folder.filePath(QStringLiteral("plugins")), int(state.range(0)));
    measureInterleaved(
        state, [] { start({QStringLiteral("--version")}); },
        [&folder] {
            start({QStringLiteral("--folder"), folder.filePath(QStringLiteral("plugins")),
                QStringLiteral("--support-dir"), folder.filePath(QStringLiteral("support")), QStringLiteral("list")});
        });
    state.counters["more_ms"] = (double(state.counters["ours_us"]) - double(state.counters["floor_us"])) / 1000;
}

} // namespace

BENCHMARK(listBesideVersion)->Arg(100)->Iterations(41)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
