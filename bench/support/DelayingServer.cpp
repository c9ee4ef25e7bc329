#include "support/DelayingServer.h"

#include <array>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("delaying server: %s", what);
}

QByteArray response(const QByteArray &body)
{
    return "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " + QByteArray::number(body.size())
        + "\r\n\r\n" + body;
}

} // namespace

DelayingServer::DelayingServer(
    int hosts, std::chrono::milliseconds delay, std::function<QByteArray(const QByteArray &)> answer)
    : m_delay(delay)
    , m_answer(std::move(answer))
    , m_epoll(::epoll_create1(EPOLL_CLOEXEC))
    , m_end(::eventfd(0, EFD_CLOEXEC))
{
    require(m_epoll >= 0 && m_end >= 0, "no event queue");
    watch(m_end);
    for (int host = 0; host < hosts; ++host)
        listenAt(host);
    m_thread = std::thread([this] { run(); });
}

DelayingServer::~DelayingServer()
{
    const quint64 one = 1;
    require(::write(m_end, &one, sizeof one) == sizeof one, "cannot be ended");
    m_thread.join();
    const auto sockets = m_connections.keys() + m_listeners + QList<int>{m_end, m_epoll};
    for (const int socket : sockets)
        ::close(socket);
}

void DelayingServer::listenAt(int host)
{
    constexpr int backlog = 2048;
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK + quint32(host));
    socklen_t size = sizeof address;
    auto *general = reinterpret_cast<sockaddr *>(&address);
    require(::bind(listener, general, size) == 0 && ::listen(listener, backlog) == 0
            && ::getsockname(listener, general, &size) == 0,
        "cannot listen");
    m_baseUrls.append(
        "http://127.0.0." + QByteArray::number(host + 1) + ':' + QByteArray::number(ntohs(address.sin_port)));
    m_listeners.append(listener);
    watch(listener);
}

void DelayingServer::watch(int socket)
{
    epoll_event event = {};
    event.events = EPOLLIN;
    event.data.fd = socket;
    require(::epoll_ctl(m_epoll, EPOLL_CTL_ADD, socket, &event) == 0, "cannot watch");
}

void DelayingServer::run()
{
    std::array<epoll_event, 256> events;
    for (;;) {
        const int count = ::epoll_wait(m_epoll, events.data(), int(events.size()), millisecondsToNextReply());
        for (int i = 0; i < count; ++i) {
            const int socket = events[std::size_t(i)].data.fd;
            if (socket == m_end)
                return;
            if (m_listeners.contains(socket))
                acceptConnections(socket);
            else
                readRequests(socket);
        }
        sendDueReplies();
    }
}

int DelayingServer::millisecondsToNextReply() const
{
    if (m_replies.empty())
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_replies.front().due - Clock::now());
    return std::max(0, int(left.count()));
}

void DelayingServer::acceptConnections(int listener)
{
    for (;;) {
        const int socket = ::accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (socket < 0)
            return;
        const int on = 1;
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        m_connections.insert(socket, {++m_lastConnection, {}});
        watch(socket);
    }
}

void DelayingServer::readRequests(int socket)
{
    std::array<char, 16 * 1024> bytes;
    const ssize_t count = ::recv(socket, bytes.data(), bytes.size(), 0);
    if (count <= 0)
        return hangUp(socket);
    Connection &connection = m_connections[socket];
    connection.received.append(bytes.data(), count);
    for (qsizetype end = 0; (end = connection.received.indexOf("\r\n\r\n")) >= 0;) {
        const auto path = connection.received.left(connection.received.indexOf('\r')).split(' ').value(1);
        m_replies.push_back({Clock::now() + m_delay, socket, connection.number, response(m_answer(path))});
        connection.received.remove(0, end + 4);
    }
}

void DelayingServer::sendDueReplies()
{
    const auto now = Clock::now();
    for (; !m_replies.empty() && m_replies.front().due <= now; m_replies.pop_front()) {
        const Reply &reply = m_replies.front();
        const auto connection = m_connections.constFind(reply.socket);
        if (connection == m_connections.constEnd() || connection->number != reply.connection)
            continue;
        // Feeds are small: what a fresh connection does not take at once means that something is wrong.
        require(::send(reply.socket, reply.bytes.constData(), size_t(reply.bytes.size()), MSG_NOSIGNAL)
                == reply.bytes.size(),
            "cannot send");
    }
}

void DelayingServer::hangUp(int socket)
{
    m_connections.remove(socket);
    ::close(socket);
}
