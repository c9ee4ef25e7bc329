// What watching plug-in folders costs, beside the system's facility alone: how long after a write a reload starts, and
// how much longer a walk takes that watches what it walks.

#include "manager/PluginFolderMonitoring.h"
#include "manager/PluginFolders.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"
#include "support/Interleaved.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <array>
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

constexpr quint32 entryChanges = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | IN_DELETE_SELF
    | IN_MOVE_SELF | IN_ONLYDIR | IN_EXCL_UNLINK;

/// Time that is skipped, so that the quiet time takes none.
class SkippingQueue final : public MainQueue
{
public:
    void async(std::function<void()> work) override { work(); }
    std::unique_ptr<ScheduledCall> callAfter(std::chrono::milliseconds delay, std::function<void()> work) override
    {
        m_due = m_now + delay;
        m_work = std::move(work);
        return nullptr;
    }
    std::chrono::milliseconds now() const override { return m_now; }

    void skip()
    {
        m_now = m_due;
        if (const auto work = std::exchange(m_work, nullptr))
            work();
    }

private:
    std::chrono::milliseconds m_now{0};
    std::chrono::milliseconds m_due{0};
    std::function<void()> m_work;
};

class SkippingEnvironment final : public LTAppEnvironment
{
public:
    MainQueue &mainQueue() override { return queue; }

    SkippingQueue queue;

private:
    Installation m_installation{*this};
};

/// The system's facility with nothing around it.
class BareWatcher
{
public:
    ~BareWatcher() { ::close(m_descriptor); }

    void add(const QByteArray &folder, quint32 mask = entryChanges)
    {
        if (::inotify_add_watch(m_descriptor, folder.constData(), mask) < 0)
            qFatal("cannot watch %s", folder.constData());
    }

    void waitForEvents()
    {
        pollfd waiting{m_descriptor, POLLIN, 0};
        ::poll(&waiting, 1, -1);
        if (::read(m_descriptor, m_buffer.data(), m_buffer.size()) <= 0)
            qFatal("no events");
    }

private:
    int m_descriptor = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    alignas(inotify_event) std::array<char, 65536> m_buffer{};
};

/// For folders in memory where there is such a place: some disks take milliseconds to shorten a file, and a minute to
/// delete ten thousand folders.
QString temporaryName()
{
    const auto memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/bench-XXXXXX");
}

void save(const QByteArray &path)
{
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0 || ::write(file, "{}", 2) != 2 || ::close(file) != 0)
        qFatal("cannot write %s", path.constData());
}

/// From a file being saved in a bundle to the start of the reload; the quiet time is skipped.
void reloadAfterWrite(benchmark::State &state)
{
    SkippingEnvironment environment;
    const QTemporaryDir folder(temporaryName());
    const auto ours = folder.filePath(QStringLiteral("ours/P.korvanplugin/Contents/Korvan"));
    const auto bare = folder.filePath(QStringLiteral("bare/P.korvanplugin/Contents/Korvan"));
    QDir().mkpath(ours);
    QDir().mkpath(bare);
    const auto ourFile = (ours + QStringLiteral("/manifest.json")).toUtf8();
    const auto bareFile = (bare + QStringLiteral("/manifest.json")).toUtf8();

    bool hasStarted = false;
    const auto monitor = KRFolderMonitor::initWithURL(QUrl::fromLocalFile(folder.filePath(QStringLiteral("ours"))),
        [&hasStarted] { hasStarted = true; }, {"korvanplugin", {}});
    BareWatcher watcher;
    watcher.add(bare.toUtf8(), entryChanges | IN_MODIFY | IN_CLOSE_WRITE);

    const auto untilReload = [&] {
        hasStarted = false;
        save(ourFile);
        while (!hasStarted) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            environment.queue.skip();
        }
    };
    const auto untilEvent = [&] {
        save(bareFile);
        watcher.waitForEvents();
    };
    measureInterleaved(state, untilEvent, untilReload);
}

/// Ten thousand folders, a hundred of them, or twenty-five bundles of four, in each at the top.
class Folders
{
public:
    enum class Kind { Plain, Bundles };

    explicit Folders(Kind kind)
    {
        const int count = kind == Kind::Plain ? 9900 : 2475;
        const int inEach = kind == Kind::Plain ? 99 : 25;
        for (int i = 0; i < count; ++i) {
            const auto folder = m_folder.filePath(QStringLiteral("%1/%2").arg(i / inEach).arg(i));
            QDir().mkpath(folder + (kind == Kind::Plain ? QString() : QStringLiteral(".korvanplugin/Contents/Korvan")));
            if (kind == Kind::Bundles)
                QDir().mkpath(folder + QStringLiteral(".korvanplugin/Contents/Resources"));
        }
    }

    QByteArray path() const { return m_folder.path().toUtf8(); }

private:
    QTemporaryDir m_folder{temporaryName()};
};

/// A bundle all the way down: each folder is watched and listed once.
void watchAndList(BareWatcher &watcher, const QByteArray &folder)
{
    watcher.add(folder, entryChanges | IN_MODIFY | IN_CLOSE_WRITE);
    const auto entries = visibleEntries(folder);
    for (const auto &entry : entries) {
        if (entry.kind == FolderEntry::Kind::Folder)
            watchAndList(watcher, pathByAppending(folder, entry.name));
    }
}

void walkBare(const Folders &folders, BareWatcher &watcher)
{
    FolderWalk walk(ignoredFolderNames());
    walk.walk(folders.path());
    for (const auto &folder : walk.visitedFolders())
        watcher.add(folder);
    for (const auto &step : walk.steps()) {
        if (step.kind == FolderWalk::Step::Kind::Bundle)
            watchAndList(watcher, step.path);
    }
}

void walkWatched(const Folders &folders, PluginFolderMonitoring &monitoring)
{
    WalkWatches watches(ignoredFolderNames());
    FolderWalk walk(ignoredFolderNames(), &watches);
    walk.walk(folders.path());
    monitoring.setUp(watches, [] {});
}

/// The first walk, when nothing is watched yet.
void firstWalk(benchmark::State &state, Folders::Kind kind)
{
    const Folders folders(kind);
    std::unique_ptr<BareWatcher> bare;
    PluginFolderMonitoring monitoring;
    const auto startAnew = [&] {
        bare = std::make_unique<BareWatcher>();
        monitoring.clear();
    };
    measureInterleaved(
        state, [&] { walkBare(folders, *bare); }, [&] { walkWatched(folders, monitoring); }, startAnew);
}

/// Every further one: all folders are watched already, and are watched anew.
void nextWalk(benchmark::State &state, Folders::Kind kind)
{
    const Folders folders(kind);
    BareWatcher bare;
    PluginFolderMonitoring monitoring;
    walkBare(folders, bare);
    walkWatched(folders, monitoring);
    measureInterleaved(
        state, [&] { walkBare(folders, bare); }, [&] { walkWatched(folders, monitoring); });
}

} // namespace

BENCHMARK(reloadAfterWrite)->Iterations(2001)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(firstWalk, plain, Folders::Kind::Plain)
    ->Iterations(21)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(nextWalk, plain, Folders::Kind::Plain)
    ->Iterations(21)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(firstWalk, bundles, Folders::Kind::Bundles)
    ->Iterations(21)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(nextWalk, bundles, Folders::Kind::Bundles)
    ->Iterations(21)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
