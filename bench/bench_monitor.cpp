// What watching folders costs beside the kernel's bare facility: from a write to the call, less the deliberate quiet
// time, and the watches of a walk over many folders.

#include "support/Interleaved.h"

#include "manager/FolderWalk.h"
#include "manager/MonitoredWalk.h"
#include "manager/PluginFolderMonitoring.h"
#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"

#include <QCoreApplication>
#include <QDir>
#include <QSocketNotifier>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

/// A queue in which no time is waited for: what is left of a delay is the work.
class ImmediateQueue final : public MainQueue
{
public:
    void async(std::function<void()> work) override { work(); }
    std::unique_ptr<ScheduledCall> callAfter(std::chrono::milliseconds, std::function<void()> work) override
    {
        work();
        return nullptr;
    }
    std::chrono::milliseconds now() const override { return {}; }
};

class BenchEnvironment final : public LTAppEnvironment
{
public:
    MainQueue &mainQueue() override { return m_queue; }

private:
    ImmediateQueue m_queue;
};

/// No disk between the write and the change.
const auto inMemory = QStringLiteral("/dev/shm/korvan-bench-XXXXXX");

constexpr unsigned folderChanges = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_CLOSE_WRITE | IN_ONLYDIR;

void writeTo(const QByteArray &path)
{
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (::write(file, "text", 4) != 4)
        qFatal("cannot write");
    ::close(file);
}

/// A folder with the kernel's bare facility on the same event loop.
class BareWatch
{
public:
    explicit BareWatch(const QString &folder)
        : m_descriptor(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
        , m_notifier(m_descriptor, QSocketNotifier::Read)
    {
        ::inotify_add_watch(m_descriptor, QFile::encodeName(folder).constData(), folderChanges);
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] {
            char buffer[65536];
            hasChanged = ::read(m_descriptor, buffer, sizeof buffer) > 0;
        });
    }
    ~BareWatch() { ::close(m_descriptor); }

    bool hasChanged = false;

private:
    int m_descriptor;
    QSocketNotifier m_notifier;
};

void changeAndWait(const QByteArray &file, bool &hasChanged)
{
    hasChanged = false;
    writeTo(file);
    while (!hasChanged)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void fromWriteToCall(benchmark::State &state)
{
    BenchEnvironment environment;
    const LTAppEnvironment::Installation installation(environment);
    const QTemporaryDir folder(inMemory);
    const auto package = folder.filePath(QStringLiteral("ours/A.korvanplugin"));
    const auto plain = folder.filePath(QStringLiteral("bare/A.korvanplugin"));
    QDir().mkpath(package);
    QDir().mkpath(plain);
    BareWatch bare(plain);
    bool isCalled = false;
    const auto monitor = KRFolderMonitor::initWithURL(
        QUrl::fromLocalFile(folder.filePath(QStringLiteral("ours"))), [&] { isCalled = true; },
        pluginMonitorOptions({}));
    measureInterleaved(
        state, [&] { changeAndWait(QFile::encodeName(plain) + "/manifest.json", bare.hasChanged); },
        [&] { changeAndWait(QFile::encodeName(package) + "/manifest.json", isCalled); },
        [] { QCoreApplication::processEvents(); });
}

void makeFolders(const QString &top, int count)
{
    for (int number = 0; number < count; ++number)
        QDir().mkpath(QStringLiteral("%1/%2/%3").arg(top).arg(number / 100).arg(number));
}

void walkAndWatch(benchmark::State &state)
{
    const QTemporaryDir folder(inMemory);
    makeFolders(folder.path(), int(state.range(0)));
    const auto top = QFile::encodeName(folder.path());
    FolderMonitors monitors;
    int inotify = -1;
    const auto bare = [&] {
        FolderWalk walk({});
        walk.walk(top);
        inotify = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
        for (const auto &path : walk.visitedFolders())
            ::inotify_add_watch(inotify, path.constData(), folderChanges);
    };
    const auto ours = [&] {
        const auto options = pluginMonitorOptions({});
        MonitoredWalk monitored(options);
        FolderWalk walk({}, &monitored);
        walk.walk(top);
        monitors = monitorsForFolders(walk.visitedFolders(), options, [] {});
    };
    measureInterleaved(state, bare, ours, [&] {
        monitors.clear();
        if (inotify >= 0)
            ::close(inotify);
    });
    ::close(inotify);
}

} // namespace

BENCHMARK(fromWriteToCall)->Iterations(501)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(walkAndWatch)->Arg(10'000)->Iterations(21)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
