#include "platform/services/ProcessService.h"

#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"
#include "platform/script/ScriptEvents.h"
#include "platform/script/ScriptValue.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QSysInfo>
#include <QtEndian>

#include <array>
#include <chrono>
#include <cstdlib>
#include <map>
#include <memory>
#include <utility>

#include <pwd.h>
#include <sys/utsname.h>
#include <thread>
#include <unistd.h>

namespace {

QVariant function(std::function<QVariant(const QVariantList &)> work)
{
    return QVariant::fromValue(NativeFunction{std::move(work)});
}

/// As node names them.
QString architecture()
{
    const auto name = QSysInfo::buildCpuArchitecture();
    if (name == u"x86_64")
        return QStringLiteral("x64");
    return name == u"i386" ? QStringLiteral("ia32") : name;
}

QString platformName()
{
    const auto kernel = QSysInfo::kernelType();
    return kernel == u"winnt" ? QStringLiteral("win32") : kernel;
}

QVariantMap environmentVariables()
{
    const auto environment = QProcessEnvironment::systemEnvironment();
    QVariantMap variables;
    for (const auto &key : environment.keys())
        variables.insert(key, environment.value(key));
    return variables;
}

/// The value of the first line "KEY<white space>: VALUE" of a file of the system; empty when there is none.
QByteArray systemValue(const QString &path, const QByteArray &key)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (auto line = file.readLine(); !line.isEmpty(); line = file.readLine()) {
        const auto colon = line.indexOf(':');
        if (colon >= 0 && line.first(colon).trimmed() == key)
            return line.sliced(colon + 1).trimmed();
    }
    return {};
}

double bytesOfPages(int pages)
{
    return double(sysconf(pages)) * double(sysconf(_SC_PAGESIZE));
}

double kilobytes(const QString &path, const QByteArray &key)
{
    return systemValue(path, key).split(' ').first().toDouble() * 1024;
}

double availableMemory()
{
    const double available = kilobytes(QStringLiteral("/proc/meminfo"), "MemAvailable");
    return available > 0 ? available : bytesOfPages(_SC_AVPHYS_PAGES);
}

QVariantMap memoryUsage()
{
    return {{QStringLiteral("rss"), kilobytes(QStringLiteral("/proc/self/status"), "VmRSS")}};
}

QVariantList processors()
{
    const auto information = QStringLiteral("/proc/cpuinfo");
    const QVariantMap processor{
        {QStringLiteral("model"), QString::fromUtf8(systemValue(information, "model name"))},
        {QStringLiteral("speed"), int(systemValue(information, "cpu MHz").toDouble())},
    };
    return QVariantList(qsizetype(std::thread::hardware_concurrency()), processor);
}

QVariantList loadAverages()
{
    std::array<double, 3> averages{};
    if (getloadavg(averages.data(), int(averages.size())) < 0)
        averages.fill(0);
    return {averages[0], averages[1], averages[2]};
}

double secondsSinceStart()
{
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return double(time.tv_sec) + double(time.tv_nsec) / 1e9;
}

/// Calls a function once after so many milliseconds, unless the session ends before.
class Alarms
{
public:
    QVariant operator()(const QVariantList &arguments) const
    {
        const auto delay = std::chrono::milliseconds(qint64(arguments.value(0).toDouble()));
        const int id = ++m_pending->latest;
        const auto ring = [pending = std::weak_ptr(m_pending), id, callback = arguments.value(1).value<ScriptValue>()] {
            runAsScriptEvent([pending, id, callback] {
                if (const auto known = pending.lock(); known && known->calls.erase(id) > 0)
                    callback.call({});
            });
        };
        m_pending->calls[id] = LTAppEnvironment::current().mainQueue().callAfter(delay, ring);
        return {};
    }

private:
    struct Pending
    {
        int latest = 0;
        std::map<int, std::unique_ptr<ScheduledCall>> calls;
    };
    /// Whose owner, the service, goes with its session.
    std::shared_ptr<Pending> m_pending = std::make_shared<Pending>();
};

} // namespace

QVariant processService(const std::shared_ptr<ScriptHost> &host)
{
    const auto write = [weakHost = std::weak_ptr(host)](const QVariantList &arguments) {
        if (const auto session = weakHost.lock())
            session->print(arguments.value(0));
        return QVariant();
    };
    return QVariantMap{
        {QStringLiteral("version"), LTAppEnvironment::current().bundleShortVersion()},
        {QStringLiteral("platform"), platformName()},
        {QStringLiteral("arch"), architecture()},
        {QStringLiteral("pid"), qlonglong(getpid())},
        {QStringLiteral("ppid"), qlonglong(getppid())},
        {QStringLiteral("execPath"), QCoreApplication::applicationFilePath()},
        {QStringLiteral("script"), host->environment().value(QStringLiteral("scriptURL")).toUrl().toLocalFile()},
        {QStringLiteral("env"), environmentVariables()},
        {QStringLiteral("cwd"), function([](const QVariantList &) { return QVariant(QDir::currentPath()); })},
        {QStringLiteral("memoryUsage"), function([](const QVariantList &) { return QVariant(memoryUsage()); })},
        {QStringLiteral("write"), function(write)},
    };
}

QVariant systemService(const std::shared_ptr<ScriptHost> &)
{
    utsname system{};
    uname(&system);
    const auto *const user = getpwuid(getuid());
    return QVariantMap{
        {QStringLiteral("hostname"), QSysInfo::machineHostName()},
        {QStringLiteral("type"), QString::fromUtf8(system.sysname)},
        {QStringLiteral("release"), QString::fromUtf8(system.release)},
        {QStringLiteral("version"), QString::fromUtf8(system.version)},
        {QStringLiteral("machine"), QString::fromUtf8(system.machine)},
        {QStringLiteral("homedir"), QDir::homePath()},
        {QStringLiteral("tmpdir"), QDir::tempPath()},
        {QStringLiteral("username"), user ? QString::fromUtf8(user->pw_name) : QString()},
        {QStringLiteral("shell"), user ? QVariant(QString::fromUtf8(user->pw_shell)) : QVariant::fromValue(nullptr)},
        {QStringLiteral("uid"), qlonglong(getuid())},
        {QStringLiteral("gid"), qlonglong(getgid())},
        {QStringLiteral("endianness"), Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? QStringLiteral("LE") : QStringLiteral("BE")},
        {QStringLiteral("cpus"), processors()},
        {QStringLiteral("totalmem"), bytesOfPages(_SC_PHYS_PAGES)},
        {QStringLiteral("freemem"), function([](const QVariantList &) { return QVariant(availableMemory()); })},
        {QStringLiteral("uptime"), function([](const QVariantList &) { return QVariant(secondsSinceStart()); })},
        {QStringLiteral("loadavg"), function([](const QVariantList &) { return QVariant(loadAverages()); })},
    };
}

QVariant clockService(const std::shared_ptr<ScriptHost> &)
{
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const auto now = [start](const QVariantList &) {
        return QVariant(std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    };
    const auto nanoseconds = [](const QVariantList &) {
        const std::chrono::nanoseconds sinceAnyMoment = Clock::now().time_since_epoch();
        return QVariant(QString::number(sinceAnyMoment.count()));
    };
    return QVariantMap{
        {QStringLiteral("timeOrigin"), double(QDateTime::currentMSecsSinceEpoch())},
        {QStringLiteral("now"), function(now)},
        {QStringLiteral("nanoseconds"), function(nanoseconds)},
        {QStringLiteral("alarm"), function(Alarms())},
    };
}
