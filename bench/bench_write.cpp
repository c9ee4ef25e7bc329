// What writing plug-ins costs beside the bare file calls for the same folders and bytes: by whole paths, and the way
// that nothing comes to lie elsewhere, through each folder that was made, held open. Once in memory, where the calls
// themselves cost next to nothing, and once on the disk that holds temporary files.

#include "bundles/KRPluginBundle.h"
#include "support/BundleGenerator.h"
#include "support/Interleaved.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int bundleCount = 1000;

void check(bool isDone, const char *what)
{
    if (!isDone)
        qFatal("cannot %s", what);
}

/// A file or folder as it has to come out, its path relative to the folder of all plug-ins.
struct Item
{
    std::string path;
    bool isFolder = false;
    std::string content;
    /// How many folders are around it.
    std::size_t depth = 0;
};

std::vector<Item> itemsIn(const std::string &folder)
{
    std::vector<Item> items;
    const std::filesystem::recursive_directory_iterator entries(folder);
    for (auto found = begin(entries); found != end(entries); ++found) {
        const auto &entry = *found;
        Item item{entry.path().native().substr(folder.size()), entry.is_directory(), {}, std::size_t(found.depth())};
        if (!item.isFolder) {
            std::ifstream file(entry.path(), std::ios::binary);
            item.content.assign(std::istreambuf_iterator<char>(file), {});
        }
        items.push_back(std::move(item));
    }
    return items;
}

class WriteBench
{
public:
    explicit WriteBench(const QString &place)
        : m_folder(place + QStringLiteral("/korvan-bench-XXXXXX"))
    {
        check(m_folder.isValid(), "make a folder");
        const auto source = m_folder.filePath(QStringLiteral("source"));
        // Some of those that are made are broken.
        generateBundles(source, bundleCount + bundleCount / 25);
        QDirIterator found(source, {QStringLiteral("*.korvanplugin")}, QDir::Dirs, QDirIterator::Subdirectories);
        while (found.hasNext() && m_bundles.size() < bundleCount) {
            if (auto bundle = KRPluginBundle::pluginBundleWithURL(QUrl::fromLocalFile(found.next() + u'/')))
                m_bundles.push_back(std::move(bundle));
        }
        check(m_bundles.size() == bundleCount, "read the plug-ins");
        writeOurs();
        m_items = itemsIn(m_folder.filePath(QStringLiteral("ours")).toStdString());
    }

    void writeOurs()
    {
        const auto folder = emptyFolder("ours");
        for (std::size_t number = 0; number < m_bundles.size(); ++number) {
            const auto place = QStringLiteral("%1/%2.korvanplugin/").arg(folder).arg(number);
            check(m_bundles[number]->writeToURL(QUrl::fromLocalFile(place)), "write a plug-in");
        }
    }

    void writeBare()
    {
        const auto folder = emptyFolder("bare").toStdString();
        for (const auto &item : m_items) {
            const auto path = folder + item.path;
            if (item.isFolder) {
                check(::mkdir(path.c_str(), 0777) == 0, "make a folder");
                continue;
            }
            writeFile(::open(path.c_str(), newFile, 0666), item.content);
        }
    }

    void writeBareThroughFolders()
    {
        std::vector<int> folders{::open(emptyFolder("bare").toUtf8().constData(), O_PATH | O_DIRECTORY | O_CLOEXEC)};
        const auto leaveTo = [&folders](std::size_t depth) {
            for (; folders.size() > depth; folders.pop_back())
                check(::close(folders.back()) == 0, "leave a folder");
        };
        for (const auto &item : m_items) {
            leaveTo(item.depth + 1);
            const auto *const name = item.path.c_str() + item.path.rfind('/') + 1;
            if (!item.isFolder) {
                writeFile(::openat(folders.back(), name, newFile, 0666), item.content);
                continue;
            }
            check(::mkdirat(folders.back(), name, 0777) == 0, "make a folder");
            folders.push_back(::openat(folders.back(), name, O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        }
        leaveTo(0);
    }

    void removeFolders()
    {
        for (const auto *name : {"ours", "bare"})
            std::filesystem::remove_all(m_folder.filePath(QString::fromLatin1(name)).toStdString());
    }

    std::size_t itemCount() const { return m_items.size(); }

private:
    static constexpr int newFile = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;

    static void writeFile(int file, const std::string &content)
    {
        const auto size = ssize_t(content.size());
        check(::write(file, content.data(), content.size()) == size && ::close(file) == 0, "write a file");
    }

    QString emptyFolder(const char *name)
    {
        const auto path = m_folder.filePath(QString::fromLatin1(name));
        check(QDir().mkpath(path), "make a folder");
        return path;
    }

    QTemporaryDir m_folder;
    std::vector<std::shared_ptr<KRPluginBundle>> m_bundles;
    std::vector<Item> m_items;
};

void writeBundles(benchmark::State &state, const QString &place, void (WriteBench::*floor)())
{
    WriteBench bench(place);
    measureInterleaved(
        state, [&] { (bench.*floor)(); }, [&] { bench.writeOurs(); }, [&] { bench.removeFolders(); });
    state.counters["items"] = double(bench.itemCount());
}

template <int iterations>
void settings(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Iterations(iterations)->UseManualTime()->Unit(benchmark::kMillisecond);
}

const auto memory = QStringLiteral("/dev/shm");
const auto disk = QDir::tempPath();

} // namespace

BENCHMARK_CAPTURE(writeBundles, memoryByPath, memory, &WriteBench::writeBare)->Apply(settings<21>);
BENCHMARK_CAPTURE(writeBundles, memoryThroughFolders, memory, &WriteBench::writeBareThroughFolders)
    ->Apply(settings<21>);
BENCHMARK_CAPTURE(writeBundles, diskByPath, disk, &WriteBench::writeBare)->Apply(settings<5>);
BENCHMARK_CAPTURE(writeBundles, diskThroughFolders, disk, &WriteBench::writeBareThroughFolders)->Apply(settings<5>);

int main(int argumentCount, char **arguments)
{
    const QCoreApplication application(argumentCount, arguments);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
