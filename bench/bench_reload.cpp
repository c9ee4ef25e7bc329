// How long a reload takes beside the bare system calls for the same files, and how much memory its result needs.

#include "manager/KRPluginManager.h"
#include "support/BundleGenerator.h"
#include "support/Interleaved.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <malloc.h>
#include <simdjson.h>

#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <set>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

/// The same opens and reads in one thread, parsed with simdjson, nothing kept.
class BareReload
{
public:
    void walk(const std::string &folder)
    {
        DIR *const directory = ::opendir(folder.c_str());
        if (!directory)
            return;
        while (const dirent *entry = ::readdir(directory)) {
            if (entry->d_name[0] != '.')
                visit(folder + '/' + entry->d_name, entry->d_type);
        }
        ::closedir(directory);
    }

private:
    void visit(const std::string &path, unsigned char type)
    {
        if (type == DT_LNK)
            return visitLink(path);
        if (type != DT_DIR)
            return;
        if (isBundle(path))
            readBundle(path);
        else if (m_visited.insert(path).second)
            walk(path);
    }

    void visitLink(const std::string &path)
    {
        char *const resolved = ::realpath(path.c_str(), nullptr);
        struct stat status;
        if (resolved && ::stat(resolved, &status) == 0 && S_ISDIR(status.st_mode))
            visit(resolved, DT_DIR);
        std::free(resolved);
    }

    static bool isBundle(const std::string &path)
    {
        const std::string_view extension = ".korvanplugin";
        return path.size() > extension.size() && path.substr(path.size() - extension.size()) == extension;
    }

    bool read(const std::string &path)
    {
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (file < 0)
            return false;
        struct stat status;
        ::fstat(file, &status);
        m_buffer.resize(std::size_t(status.st_size) + simdjson::SIMDJSON_PADDING);
        m_size = ::read(file, m_buffer.data(), std::size_t(status.st_size));
        ::close(file);
        return m_size >= 0;
    }

    void readBundle(const std::string &path)
    {
        if (!read(path + "/Contents/Korvan/manifest.json"))
            return;
        simdjson::dom::element root;
        if (m_parser.parse(m_buffer.data(), std::size_t(m_size), false).get(root) != simdjson::SUCCESS)
            return;
        std::set<std::string> scripts;
        for (const auto command : root["commands"].get_array())
            scripts.insert(std::string(command["script"].get_string().value()));
        for (const auto &script : scripts)
            read(path + "/Contents/Korvan/" + script);
        std::string_view icon;
        if (root["icon"].get(icon) == simdjson::SUCCESS)
            read(path + "/Contents/Resources/" + std::string(icon));
    }

    simdjson::dom::parser m_parser;
    std::vector<char> m_buffer;
    ssize_t m_size = 0;
    std::set<std::string> m_visited;
};

struct Fixture
{
    explicit Fixture(int count)
        : generated(generateBundles(folder.path(), count))
    { }

    QTemporaryDir folder;
    GeneratedBundles generated;
};

void reload(benchmark::State &state)
{
    const Fixture fixture(int(state.range(0)));
    const auto path = fixture.folder.path().toStdString();
    KRPluginManager manager({QUrl::fromLocalFile(fixture.folder.path())}, nullptr, nullptr);
    measureInterleaved(
        state, [&path] { BareReload().walk(path); }, [&manager] { manager.reloadPlugins(); });
    state.counters["plugins"] = double(manager.plugins().size());
}

void memory(benchmark::State &state)
{
    const Fixture fixture(int(state.range(0)));
    for (auto _ : state) {
        ::malloc_trim(0);
        const auto before = ::mallinfo2();
        KRPluginManager manager({QUrl::fromLocalFile(fixture.folder.path())}, nullptr, nullptr);
        manager.reloadPlugins();
        const auto after = ::mallinfo2();
        const double bytes = double(after.uordblks + after.hblkhd) - double(before.uordblks + before.hblkhd);
        const double allowed = double(fixture.generated.textBytes) + 3000.0 * fixture.generated.commands;
        state.counters["MB"] = bytes / 1e6;
        state.counters["text_MB"] = double(fixture.generated.textBytes) / 1e6;
        state.counters["icon_MB"] = double(fixture.generated.iconBytes) / 1e6;
        state.counters["allowed_MB"] = allowed / 1e6;
        state.counters["ratio"] = bytes / allowed;
        state.counters["bytes_per_command_above_text"] =
            (bytes - double(fixture.generated.textBytes)) / fixture.generated.commands;
    }
}

} // namespace

BENCHMARK(reload)->Arg(1000)->Iterations(41)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(reload)->Arg(10000)->Iterations(7)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(memory)->Arg(1000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(memory)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    qputenv("QT_LOGGING_RULES", "korvan.pluginmanager=false");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
