// What a check of 1,000 feeds costs beside the transfer library alone, which fetches the same with the same limits and
// reads nothing: no manifests, no feeds, no time limits of a server's silence.
//
// The limits: six connections to a host, which is what browsers open and servers therefore expect; 32 in all, so that a
// check takes no more of the user's network than a page of a browser does; where a server multiplexes (HTTP/2) one
// connection and 100 transfers on it, which is the least that the protocol recommends to servers and what most allow.
// A host that sees more of us than one visitor's share is asked no faster, it is only asked later.
//
// Servers: plain HTTP from one thread of this program; HTTP/2 from nginx, which has the feeds as files, or asks that
// thread where there has to be a delay. Sixteen hosts are sixteen ports or addresses. A first check meets servers that
// it does not know yet: both sides begin without connections.

#include "support/BareTransfers.h"
#include "support/DelayingServer.h"
#include "support/Interleaved.h"
#include "support/servers/NginxServer.h"

#include "platform/network/TransferQueue.h"
#include "updates/KRPluginUpdaterImplementation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTemporaryDir>

#include <semaphore>

#include <sys/resource.h>

namespace {

constexpr int feedCount = 1000;

void check(bool isDone, const char *what)
{
    if (!isDone)
        qFatal("cannot %s", what);
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    check(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), "write a file");
}

QByteArray feed(int number)
{
    const auto text = QByteArray::number(number);
    return R"({"title": "Plug-in )" + text + R"(", "version": "1.)" + text
        + R"(.2", "downloadURL": "https://example.com/releases/plug-in-)" + text + R"(.zip"})";
}

/// Paths end with "/feed-<number>.json".
QByteArray feedAtPath(const QByteArray &path)
{
    return feed(path.mid(path.lastIndexOf('-') + 1).chopped(5).toInt());
}

QByteArray path(int number)
{
    return "/feed-" + QByteArray::number(number) + ".json";
}

/// Ports that nobody uses at the moment.
QList<QByteArray> freePorts(int count)
{
    std::vector<std::unique_ptr<QTcpServer>> listeners;
    QList<QByteArray> ports;
    for (int i = 0; i < count; ++i) {
        listeners.push_back(std::make_unique<QTcpServer>());
        check(listeners.back()->listen(QHostAddress::LocalHost), "find a free port");
        ports.append(QByteArray::number(listeners.back()->serverPort()));
    }
    return ports;
}

enum class Protocol { Plain, HTTP2 };
enum class Connections { Kept, Fresh };

struct Setting
{
    Protocol protocol;
    int hosts;
    std::chrono::milliseconds delay;
    Connections connections;
};

/// Hosts that have the feeds.
class FeedServers
{
public:
    explicit FeedServers(const Setting &setting)
    {
        const bool isDelayed = setting.delay.count() > 0;
        if (setting.protocol == Protocol::Plain || isDelayed)
            m_delaying = std::make_unique<DelayingServer>(
                setting.protocol == Protocol::Plain ? setting.hosts : 1, setting.delay, feedAtPath);
        if (setting.protocol == Protocol::Plain)
            m_baseUrls = m_delaying->baseUrls();
        else
            startNginx(setting.hosts);
    }

    QByteArray url(int number) const { return m_baseUrls[number % m_baseUrls.size()] + path(number); }
    QByteArray certificateAuthorityFile() const
    {
        return m_nginx ? QFile::encodeName(m_nginx->certificateAuthorityFile()) : QByteArray();
    }

private:
    void startNginx(int hosts)
    {
        const auto furtherPorts = freePorts(hosts - 1);
        QByteArray directives = "keepalive_requests 1000000;"; // else it hangs up on a host's only visitor
        for (const auto &port : furtherPorts)
            directives += "listen 127.0.0.1:" + port + " ssl http2 backlog=511;";
        if (m_delaying)
            directives += "location / { proxy_pass " + m_delaying->baseUrls().first() + "; }";
        m_nginx = std::make_unique<NginxServer>(directives);
        for (int number = 0; number < feedCount && !m_delaying; ++number)
            write(m_nginx->documentRoot() + QString::fromLatin1(path(number)), feed(number));
        m_baseUrls.append(m_nginx->baseUrl().toEncoded().chopped(1));
        for (const auto &port : furtherPorts)
            m_baseUrls.append("https://localhost:" + port);
    }

    std::unique_ptr<DelayingServer> m_delaying;
    std::unique_ptr<NginxServer> m_nginx;
    QList<QByteArray> m_baseUrls;
};

/// As many plug-ins as feeds.
PluginTable makePlugins(const QString &folder)
{
    PluginTable plugins;
    for (int number = 0; number < feedCount; ++number) {
        const auto identifier = QStringLiteral("plug-in-%1").arg(number);
        const auto bundle = folder + u'/' + identifier + QStringLiteral(".korvanplugin");
        check(QDir().mkpath(bundle + QStringLiteral("/Contents/Korvan")), "make a folder");
        write(bundle + QStringLiteral("/Contents/Korvan/manifest.json"),
            R"({"identifier": ")" + identifier.toUtf8()
                + R"(", "version": "1.0", "appcast": "https://localhost/feed.json"})");
        plugins.insert(identifier, KRPluginBundle::pluginBundleWithURL(QUrl::fromLocalFile(bundle)));
        check(!plugins.value(identifier)->updatingInfoURL().isEmpty(), "read a plug-in");
    }
    return plugins;
}

class FeedBench
{
public:
    explicit FeedBench(const Setting &setting)
        : m_setting(setting)
        , m_folder(QStringLiteral("/dev/shm/korvan-bench-XXXXXX"))
        , m_plugins(makePlugins(m_folder.path()))
    {
        for (int number = 0; number < feedCount; ++number)
            m_feedSize += feed(number).size();
        startServers();
    }

    void prepare()
    {
        QCoreApplication::processEvents();
        if (m_setting.connections == Connections::Fresh)
            startServers();
    }

    void fetchBare()
    {
        m_bare->fetch(m_urls, m_servers->certificateAuthorityFile());
        check(m_bare->bytesFetched() == m_feedSize, "fetch all feeds");
    }

    void checkOurs()
    {
        std::binary_semaphore hasEnded(0);
        int versionCount = 0;
        m_updater.downloadPluginUpdatingInfo(
            m_plugins,
            [&versionCount](const auto &, const auto &, const auto &versions) { versionCount += versions ? 1 : 0; },
            [&hasEnded] { hasEnded.release(); });
        hasEnded.acquire();
        check(versionCount == feedCount, "read all feeds");
    }

private:
    void startServers()
    {
        // The library would open another connection to a host as soon as one is full, which is not our limit.
        const long perHost = m_setting.protocol == Protocol::HTTP2 ? 1 : TransferQueue::connectionsPerHost;
        m_bare = std::make_unique<BareTransfers>(
            perHost, TransferQueue::connectionsInAll, TransferQueue::transfersPerMultiplexingHost);
        m_servers.reset();
        m_servers = std::make_unique<FeedServers>(m_setting);
        qputenv("SSL_CERT_FILE", m_servers->certificateAuthorityFile());
        m_urls.clear();
        int number = 0;
        for (const auto &plugin : std::as_const(m_plugins)) {
            m_urls.append(m_servers->url(number++));
            plugin->setUpdatingInfoURL(QUrl(QString::fromLatin1(m_urls.last())));
        }
    }

    const Setting m_setting;
    QTemporaryDir m_folder;
    PluginTable m_plugins;
    KRPluginUpdaterImplementation m_updater;
    std::unique_ptr<FeedServers> m_servers;
    std::unique_ptr<BareTransfers> m_bare;
    QList<QByteArray> m_urls;
    qsizetype m_feedSize = 0;
};

/// nginx asks for a delayed feed on a connection of its own.
void allowManyConnections()
{
    rlimit limit = {};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &limit);
}

void feeds(benchmark::State &state, Protocol protocol, Connections connections)
{
    FeedBench bench({protocol, int(state.range(0)), std::chrono::milliseconds(state.range(1)), connections});
    measureInterleaved(
        state, [&] { bench.fetchBare(); }, [&] { bench.checkOurs(); }, [&] { bench.prepare(); });
}

void feedsHTTP(benchmark::State &state)
{
    feeds(state, Protocol::Plain, Connections::Kept);
}

void firstFeedsHTTP(benchmark::State &state)
{
    feeds(state, Protocol::Plain, Connections::Fresh);
}

void feedsHTTP2(benchmark::State &state)
{
    feeds(state, Protocol::HTTP2, Connections::Kept);
}

void firstFeedsHTTP2(benchmark::State &state)
{
    feeds(state, Protocol::HTTP2, Connections::Fresh);
}

void settings(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"hosts", "delay_ms"})->ArgsProduct({{1, 16}, {0, 30}});
    benchmark->Iterations(11)->UseManualTime()->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(feedsHTTP)->Apply(settings);
BENCHMARK(firstFeedsHTTP)->Apply(settings);
BENCHMARK(feedsHTTP2)->Apply(settings);
BENCHMARK(firstFeedsHTTP2)->Apply(settings);

int main(int argumentCount, char **arguments)
{
    allowManyConnections();
    const QCoreApplication application(argumentCount, arguments);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
