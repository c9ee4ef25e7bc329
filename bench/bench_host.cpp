// How much longer the reference host takes with 300 plug-ins than with none: from the start of its process to a window
// that is drawn, with all commands in its menu.

#include "support/BundleGenerator.h"
#include "support/Interleaved.h"
#include "support/servers/ChildProcess.h"

#include <QCoreApplication>
#include <QTemporaryDir>

namespace {

void startHost(const QTemporaryDir &folder, const QString &plugins)
{
    const auto option = [&folder](const char *name, const QString &path) {
        return QStringList{QString::fromLatin1(name), folder.filePath(path)};
    };
    ChildProcess process({QStringLiteral(KORVAN_HOST_PROGRAM),
        option("--folder", plugins) + option("--support-dir", QStringLiteral("support"))
            + option("--defaults", QStringLiteral("defaults.ini")) + QStringList{QStringLiteral("--end-when-shown")},
        folder.path(), folder.filePath(QStringLiteral("output")), {"QT_QPA_PLATFORM=offscreen"}});
    if (process.waitForEnd() != 0)
        qFatal("the host has failed");
}

void startWithPlugins(benchmark::State &state)
{
    const QTemporaryDir folder;
    const auto bundles = generateBundles(folder.filePath(QStringLiteral("many")), int(state.range(0)));
    measureInterleaved(
        state, [&] { startHost(folder, QStringLiteral("none")); }, [&] { startHost(folder, QStringLiteral("many")); },
        [] {});
    state.counters["commands"] = bundles.commands;
}

} // namespace

BENCHMARK(startWithPlugins)->Arg(300)->Iterations(31)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
