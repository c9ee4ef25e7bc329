// What writing plug-ins costs beside the bare file calls for the same folders and bytes.

#include "bundles/KRPluginBundle.h"
#include "support/BundleGenerator.h"
#include "support/Interleaved.h"

#include <QCoreApplication>
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
};

std::vector<Item> itemsIn(const std::string &folder)
{
    std::vector<Item> items;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(folder)) {
        Item item{entry.path().native().substr(folder.size()), entry.is_directory(), {}};
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
    WriteBench()
        : m_folder(QStringLiteral("/dev/shm/korvan-bench-XXXXXX"))
    {
        check(m_folder.isValid(), "make a folder in memory");
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
            const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            const auto size = ssize_t(item.content.size());
            check(
                ::write(file, item.content.data(), item.content.size()) == size && ::close(file) == 0, "write a file");
        }
    }

    void removeFolders()
    {
        for (const auto *name : {"ours", "bare"})
            std::filesystem::remove_all(m_folder.filePath(QString::fromLatin1(name)).toStdString());
    }

    std::size_t itemCount() const { return m_items.size(); }

private:
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

void writeBundles(benchmark::State &state)
{
    WriteBench bench;
    measureInterleaved(
        state, [&] { bench.writeBare(); }, [&] { bench.writeOurs(); }, [&] { bench.removeFolders(); });
    state.counters["items"] = double(bench.itemCount());
}

} // namespace

BENCHMARK(writeBundles)->Iterations(21)->UseManualTime()->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
