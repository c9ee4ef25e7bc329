#include "support/servers/LoopbackServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

void require(bool condition, const char *what)
{
    if (!condition)
        qFatal("Loopback server: %s", what);
}

/// Up to the empty line; empty when the client has hung up.
QByteArray readHead(int socket)
{
    QByteArray head;
    char byte = 0;
    while (!head.endsWith("\r\n\r\n")) {
        if (recv(socket, &byte, 1, 0) <= 0)
            return {};
        head.append(byte);
    }
    return head;
}

/// Null when the client has hung up before its end.
QByteArray readBody(int socket, const QByteArray &head)
{
    static constexpr char field[] = "\r\ncontent-length:";
    const auto begin = head.toLower().indexOf(field);
    const auto size =
        begin < 0 ? 0 : head.mid(begin + qsizetype(sizeof field) - 1).split('\r').first().trimmed().toLongLong();
    QByteArray body(size, '\0');
    qsizetype received = 0;
    while (received < size) {
        const auto count = recv(socket, body.data() + received, std::size_t(size - received), 0);
        if (count <= 0)
            return {};
        received += count;
    }
    return body;
}

bool sendAll(int socket, const QByteArray &bytes)
{
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count =
            send(socket, bytes.constData() + sent, static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        sent += count;
    }
    return true;
}

void waitForHangUp(int socket)
{
    char byte = 0;
    while (recv(socket, &byte, 1, 0) > 0) { }
}

} // namespace

Answer Answer::response(int status, const QByteArray &body, const QList<QPair<QByteArray, QByteArray>> &headers)
{
    QByteArray text = "HTTP/1.1 " + QByteArray::number(status) + " Scripted\r\n";
    for (const auto &[name, value] : headers)
        text += name + ": " + value + "\r\n";
    text += "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
    Answer answer = bytes(text);
    answer.m_keepAlive = true;
    return answer;
}

Answer Answer::redirect(const QByteArray &location, int status)
{
    return response(status, "This body is not the one that was asked for.", {{"Location", location}});
}

Answer Answer::bytes(const QByteArray &bytes)
{
    return Answer().thenBytes(bytes);
}

Answer Answer::silence()
{
    return Answer().thenStall();
}

Answer &Answer::thenBytes(const QByteArray &bytes)
{
    m_steps.append({Kind::Bytes, bytes});
    return *this;
}

Answer &Answer::thenWaitForRelease()
{
    m_steps.append({Kind::WaitForRelease, {}});
    return *this;
}

Answer &Answer::thenStall()
{
    m_steps.append({Kind::Stall, {}});
    return *this;
}

Answer Answer::withoutBody() const
{
    Answer answer = *this;
    auto &[kind, bytes] = answer.m_steps.first();
    if (const auto end = bytes.indexOf("\r\n\r\n"); kind == Kind::Bytes && end >= 0) {
        bytes.truncate(end + 4);
        answer.m_steps.resize(1);
    }
    return answer;
}

LoopbackServer::LoopbackServer()
    : m_listener(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *general = reinterpret_cast<sockaddr *>(&address);
    require(bind(m_listener, general, size) == 0, "no port");
    require(listen(m_listener, 128) == 0, "cannot listen");
    require(getsockname(m_listener, general, &size) == 0, "port unknown");
    m_port = ntohs(address.sin_port);
    m_acceptor = std::thread([this] { acceptConnections(); });
}

LoopbackServer::~LoopbackServer()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        for (const int socket : m_sockets)
            shutdown(socket, SHUT_RDWR);
    }
    m_changed.notify_all();
    shutdown(m_listener, SHUT_RDWR); // ends the acceptor, after which no thread is added any more
    m_acceptor.join();
    close(m_listener);
    for (std::thread &thread : m_threads)
        thread.join();
}

QUrl LoopbackServer::url(const QString &path, const QString &host) const
{
    return QUrl(u"http://%1:%2%3"_s.arg(host).arg(m_port).arg(path));
}

void LoopbackServer::setAnswer(const QByteArray &path, const Answer &answer)
{
    setAnswers(path, {answer});
}

void LoopbackServer::setAnswers(const QByteArray &path, const QList<Answer> &answers)
{
    const std::lock_guard lock(m_mutex);
    m_answers[path] = answers;
}

void LoopbackServer::release(int count)
{
    const std::lock_guard lock(m_mutex);
    m_releases += count;
    m_changed.notify_all();
}

QList<QByteArray> LoopbackServer::requestedPaths() const
{
    const std::lock_guard lock(m_mutex);
    QList<QByteArray> paths;
    for (const QByteArray &head : m_requests)
        paths.append(head.split(' ').value(1));
    return paths;
}

QByteArray LoopbackServer::lastRequest() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests.value(m_requests.size() - 1);
}

QByteArray LoopbackServer::lastBody() const
{
    const std::lock_guard lock(m_mutex);
    return m_lastBody;
}

int LoopbackServer::connectionCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_connectionCount;
}

int LoopbackServer::largestConcurrency() const
{
    const std::lock_guard lock(m_mutex);
    return m_largestConcurrency;
}

void LoopbackServer::waitForRequests(int count) const
{
    std::unique_lock lock(m_mutex);
    waitUntil(lock, [this, count] { return m_requests.size() >= count; });
}

void LoopbackServer::waitForHangUps(int count) const
{
    std::unique_lock lock(m_mutex);
    waitUntil(lock, [this, count] { return m_hangUps >= count; });
}

void LoopbackServer::acceptConnections()
{
    for (;;) {
        const int socket = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        const std::lock_guard lock(m_mutex);
        if (socket < 0 || m_stopping) {
            if (socket >= 0)
                close(socket);
            return;
        }
        ++m_connectionCount;
        m_sockets.insert(socket);
        m_threads.emplace_back([this, socket] { serve(socket); });
    }
}

void LoopbackServer::serve(int socket)
{
    while (serveOne(socket)) { }
    const std::lock_guard lock(m_mutex); // nobody shuts down a number that is another's already
    m_sockets.erase(socket);
    close(socket);
}

bool LoopbackServer::serveOne(int socket)
{
    const QByteArray head = readHead(socket);
    if (head.isEmpty())
        return false;
    const QByteArray body = readBody(socket, head);
    if (body.isNull())
        return false;
    const Answer answer = beginRequest(head, body);
    const bool isWhole = play(socket, answer);
    const std::lock_guard lock(m_mutex);
    --m_concurrency;
    return isWhole && answer.m_keepAlive;
}

Answer LoopbackServer::beginRequest(const QByteArray &head, const QByteArray &body)
{
    const std::lock_guard lock(m_mutex);
    m_requests.append(head);
    m_lastBody = body;
    m_largestConcurrency = std::max(m_largestConcurrency, ++m_concurrency);
    m_changed.notify_all();
    const auto found = m_answers.find(head.split(' ').value(1));
    if (found == m_answers.end())
        return Answer::response(404, head.startsWith("HEAD ") ? "" : "Nothing here.");
    const Answer answer = found->second.size() > 1 ? found->second.takeFirst() : found->second.first();
    return head.startsWith("HEAD ") ? answer.withoutBody() : answer;
}

bool LoopbackServer::play(int socket, const Answer &answer)
{
    for (const auto &[kind, bytes] : answer.m_steps) {
        if (kind == Answer::Kind::Bytes && !sendAll(socket, bytes))
            return false;
        if (kind == Answer::Kind::WaitForRelease && !waitForRelease())
            return false;
        if (kind == Answer::Kind::Stall) {
            waitForHangUp(socket);
            const std::lock_guard lock(m_mutex);
            ++m_hangUps;
            m_changed.notify_all();
            return false;
        }
    }
    return true;
}

bool LoopbackServer::waitForRelease()
{
    std::unique_lock lock(m_mutex);
    waitUntil(lock, [this] { return m_stopping || m_releases > 0; });
    --m_releases;
    return !m_stopping;
}

template <class Condition>
void LoopbackServer::waitUntil(std::unique_lock<std::mutex> &lock, Condition condition) const
{
    require(m_changed.wait_for(lock, std::chrono::minutes(1), condition), "waited in vain");
}
