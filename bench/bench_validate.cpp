// What checking plug-ins for their authors costs beside a reload of the same ones.

#include "manager/KRPluginManager.h"
#include "support/BundleGenerator.h"
#include "support/Interleaved.h"
#include "validation/BundleValidation.h"

#include <QCoreApplication>
#include <QTemporaryDir>

namespace {

void validate(benchmark::State &state)
{
    const QTemporaryDir folder;
    generateBundles(folder.path(), int(state.range(0)));
    KRPluginManager manager({QUrl::fromLocalFile(folder.path())}, nullptr, nullptr);
    manager.reloadPlugins();
    QStringList paths; // of the good ones
    const auto plugins = manager.plugins();
    for (const auto &plugin : plugins)
        paths.append(QUrl(plugin->url()).adjusted(QUrl::StripTrailingSlash).toLocalFile());
    ScriptChecker checker;
    qsizetype problems = 0;
    measureInterleaved(
        state, [&manager] { manager.reloadPlugins(); },
        [&] {
            problems = 0;
            for (const auto &path : paths)
                problems += validateBundle(path, checker).size();
        });
    state.counters["plugins"] = double(paths.size());
    state.counters["problems"] = double(problems);
}

} // namespace

BENCHMARK(validate)->Arg(1000)->Iterations(11)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    qputenv("QT_LOGGING_RULES", "korvan.pluginmanager=false");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
