// What monitors do when the system has no watches or no instances left. The limits are lowered for this program only,
// in a user namespace of its own; where the system does not allow that, the call itself refuses.

#include "platform/FileURL.h"
#include "platform/monitoring/KRFolderMonitor.h"
#include "support/FolderEventsReading.h"
#include "support/PathFiles.h"

#include <QtTest>

#include <cerrno>
#include <fcntl.h>
#include <sched.h>
#include <set>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int mostWatches = 20;
bool systemRefuses = false;
std::set<int> watches;

bool writeText(const char *path, const QByteArray &text)
{
    const int file = ::open(path, O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool isWritten = ::write(file, text.constData(), std::size_t(text.size())) == text.size();
    return ::close(file) == 0 && isWritten;
}

/// Before the first thread.
bool enterNamespaceWithFewWatches()
{
    const auto user = QByteArray::number(::geteuid());
    const auto group = QByteArray::number(::getegid());
    return ::unshare(CLONE_NEWUSER) == 0 && writeText("/proc/self/setgroups", "deny")
        && writeText("/proc/self/uid_map", user + ' ' + user + " 1")
        && writeText("/proc/self/gid_map", group + ' ' + group + " 1")
        && writeText("/proc/sys/user/max_inotify_watches", QByteArray::number(mostWatches));
}

/// In a child first: half a namespace would be of no use.
bool canEnterNamespace()
{
    const auto child = ::fork();
    if (child == 0)
        ::_exit(enterNamespaceWithFewWatches() ? 0 : 1);
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

// In place of the C library's: they do the same, and refuse on their own where the system would not.

extern "C" int inotify_add_watch(int descriptor, const char *path, uint32_t mask) noexcept
{
    const int watch = int(::syscall(SYS_inotify_add_watch, descriptor, path, mask));
    if (watch < 0 || systemRefuses)
        return watch;
    if (watches.insert(watch).second && watches.size() > std::size_t(mostWatches)) {
        ::inotify_rm_watch(descriptor, watch);
        errno = ENOSPC;
        return -1;
    }
    return watch;
}

extern "C" int inotify_rm_watch(int descriptor, int watch) noexcept
{
    watches.erase(watch);
    return int(::syscall(SYS_inotify_rm_watch, descriptor, watch));
}

class tst_KRFolderMonitor_Limits : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void noWatchesLeft();
    void tooFewWatchesForAPackage();
    void noInstanceLeft();

private:
    QByteArray path(const QByteArray &relativePath) const { return m_folder->path(relativePath); }
    /// Those above the test's own folder, whose moving is watched.
    int foldersAbove() const { return int(m_folder->path().count('/')); }
    std::unique_ptr<KRFolderMonitor> monitor(const QByteArray &relativePath, std::function<void()> changed) const
    {
        return KRFolderMonitor::initWithURL(
            fileURLFromPath(path(relativePath), FileKind::Folder), std::move(changed), {"package", {}});
    }

    std::unique_ptr<TestEnvironment> m_environment;
    std::unique_ptr<TemporaryFolder> m_folder;
};

void tst_KRFolderMonitor_Limits::init()
{
    watches.clear(); // those before went with their instance
    m_environment = std::make_unique<TestEnvironment>();
    m_folder = std::make_unique<TemporaryFolder>();
}

void tst_KRFolderMonitor_Limits::cleanup()
{
    m_folder.reset();
    m_environment.reset();
}

void tst_KRFolderMonitor_Limits::noWatchesLeft()
{
    std::vector<std::unique_ptr<KRFolderMonitor>> monitors;
    QList<int> told;
    for (int i = 0; i < 2 * mostWatches; ++i) {
        makeFolderAt(path(QByteArray::number(i)));
        monitors.push_back(monitor(QByteArray::number(i), [&told, i] { told.append(i); }));
    }
    // One watch is that of the folder that all of them are in.
    const int most = mostWatches - 1 - foldersAbove();
    for (int i = 0; i < 2 * mostWatches; ++i)
        QCOMPARE(monitors[std::size_t(i)] != nullptr, i < most);

    writeFileAt(path("0/file"), "");
    writeFileAt(path(QByteArray::number(mostWatches) + "/file"), "");
    letFoldersSettle(*m_environment);
    QCOMPARE(told, QList{0});

    monitors[3].reset(); // what it leaves is there for another one
    monitors.push_back(monitor("30", [&told] { told.append(30); }));
    QVERIFY(monitors.back());
    writeFileAt(path("30/file"), "");
    letFoldersSettle(*m_environment);
    QCOMPARE(told, (QList{0, 30}));
}

void tst_KRFolderMonitor_Limits::tooFewWatchesForAPackage()
{
    for (int i = 0; i < 2 * mostWatches; ++i)
        makeFolderAt(path("watched/P.package/" + QByteArray::number(i)));
    int told = 0;
    const auto watching = monitor("watched", [&] { ++told; });
    QVERIFY(watching);
    writeFileAt(path("watched/P.package/file"), "");
    letFoldersSettle(*m_environment);
    QCOMPARE(std::exchange(told, 0), 1);
    int inside = 0;
    for (int i = 0; i < 2 * mostWatches; ++i) {
        writeFileAt(path("watched/P.package/" + QByteArray::number(i) + "/file"), "");
        letFoldersSettle(*m_environment);
        inside += std::exchange(told, 0);
    }
    // Those of the folder, its parent, the folders above and the package itself are taken.
    QCOMPARE(inside, mostWatches - 3 - foldersAbove());
    writeFileAt(path("watched/new"), "");
    letFoldersSettle(*m_environment);
    QCOMPARE(told, 1);
}

void tst_KRFolderMonitor_Limits::noInstanceLeft()
{
    makeFolderAt(path("watched"));
    rlimit limit{};
    QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
    const rlimit none{0, limit.rlim_max};
    QCOMPARE(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const bool isMade = monitor("watched", [] {}) != nullptr;
    QCOMPARE(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    QVERIFY(!isMade);
    QVERIFY(monitor("watched", [] {}));
}

int main(int argc, char **argv)
{
    systemRefuses = canEnterNamespace() && enterNamespaceWithFewWatches();
    QCoreApplication application(argc, argv);
    tst_KRFolderMonitor_Limits test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_krfoldermonitor_limits.moc"
