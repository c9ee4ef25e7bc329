// What checking plug-ins for their authors costs beside a reload of the same ones, warm, both on all processors.
//
// A reload reads scripts as bytes and parses none. Checking them cannot take less than the engine's parser does, so
// what that one takes alone is measured too: for plug-ins as they are met in the wild, 1 to 3 scripts of 2 to 40 KB
// each, and for copies of the examples, whose scripts have about one.

#include "manager/KRPluginManager.h"
#include "platform/ParallelWork.h"
#include "platform/script/ScriptString.h"
#include "support/BundleGenerator.h"
#include "support/Interleaved.h"
#include "validation/BundleValidation.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <vector>

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

/// Copies of the examples that have no mistakes, each under an identifier of its own.
void copyExamples(const QString &folder, int count)
{
    const QDir examples(QStringLiteral(KORVAN_SOURCE_DIR "/examples/plugins"));
    auto names = examples.entryList({QStringLiteral("*.korvanplugin")}, QDir::Dirs);
    names.removeAll(QStringLiteral("Broken Script.korvanplugin"));
    for (int index = 0; index < count; ++index) {
        const auto bundle = QStringLiteral("%1/%2.korvanplugin").arg(folder).arg(index);
        std::filesystem::copy(examples.filePath(names[index % names.size()]).toStdString(), bundle.toStdString(),
            std::filesystem::copy_options::recursive);
        const auto manifest = bundle + QStringLiteral("/Contents/Korvan/manifest.json");
        const auto text =
            contentOf(manifest).replace("\"com.example.", "\"com.example." + QByteArray::number(index) + ".");
        QFile file(manifest);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("cannot write %s", qPrintable(manifest));
    }
}

class ValidateBench
{
public:
    using Fill = void (*)(const QString &folder, int count);

    ValidateBench(Fill fill, int count)
    {
        fill(m_folder.path(), count);
        m_manager.reloadPlugins();
        const auto plugins = m_manager.plugins(); // the good ones
        for (const auto &plugin : plugins)
            m_paths.append(QUrl(plugin->url()).adjusted(QUrl::StripTrailingSlash).toLocalFile());
        QDirIterator scripts(m_folder.path(), {QStringLiteral("*.js")}, QDir::Files, QDirIterator::Subdirectories);
        while (scripts.hasNext())
            m_scripts.push_back(contentOf(scripts.next()));
    }

    ~ValidateBench() { std::for_each(m_parsers.begin(), m_parsers.end(), JSGlobalContextRelease); }
    ValidateBench(const ValidateBench &) = delete;
    ValidateBench &operator=(const ValidateBench &) = delete;

    void reload() { m_manager.reloadPlugins(); }

    void validate()
    {
        m_problems = 0;
        for (const auto &problems : validateBundles(m_paths, m_checker))
            m_problems += problems.size();
    }

    /// The engine's parser over all scripts, one after the other in each thread, and nothing else.
    void parse()
    {
        std::atomic<std::size_t> next = 0;
        runInParallel(m_parsers.size(), [&](std::size_t thread) {
            for (auto index = next++; index < m_scripts.size(); index = next++) {
                const ScriptString script(m_scripts[index].constData());
                // Message sends of an example are none of the parser's.
                benchmark::DoNotOptimize(JSCheckScriptSyntax(m_parsers[thread], script.get(), nullptr, 1, nullptr));
            }
        });
    }

    void count(benchmark::State &state) const
    {
        qsizetype bytes = 0;
        for (const auto &script : m_scripts)
            bytes += script.size();
        state.counters["plugins"] = double(m_paths.size());
        state.counters["problems"] = double(m_problems);
        state.counters["script_MB"] = double(bytes) / 1e6;
    }

private:
    QTemporaryDir m_folder;
    KRPluginManager m_manager{{QUrl::fromLocalFile(m_folder.path())}, nullptr, nullptr};
    QStringList m_paths;
    std::vector<QByteArray> m_scripts;
    ScriptChecker m_checker;
    std::vector<JSGlobalContextRef> m_parsers = [] {
        std::vector<JSGlobalContextRef> parsers(threadsFor(1000, 4));
        for (auto &parser : parsers)
            parser = JSGlobalContextCreate(nullptr);
        return parsers;
    }();
    qsizetype m_problems = 0;
};

void validate(benchmark::State &state, ValidateBench::Fill fill)
{
    ValidateBench bench(fill, int(state.range(0)));
    measureInterleaved(
        state, [&] { bench.reload(); }, [&] { bench.validate(); });
    bench.count(state);
}

void parserAlone(benchmark::State &state, ValidateBench::Fill fill)
{
    ValidateBench bench(fill, int(state.range(0)));
    measureInterleaved(
        state, [&] { bench.reload(); }, [&] { bench.parse(); });
    bench.count(state);
}

void fillAsInTheWild(const QString &folder, int count)
{
    generateBundles(folder, count);
}

} // namespace

BENCHMARK_CAPTURE(validate, wild, fillAsInTheWild)
    ->Arg(1000)
    ->Iterations(21)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parserAlone, wild, fillAsInTheWild)
    ->Arg(1000)
    ->Iterations(21)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(validate, examples, copyExamples)
    ->Arg(1000)
    ->Iterations(21)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parserAlone, examples, copyExamples)
    ->Arg(1000)
    ->Iterations(21)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    qputenv("QT_LOGGING_RULES", "korvan.pluginmanager=false");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
