#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>

#include <chrono>
#include <deque>
#include <functional>
#include <thread>

/// An HTTP/1.1 server on this computer that answers each request after the same time, from one thread: as many at once
/// as there are clients. Each of its hosts has an address of its own: 127.0.0.1, 127.0.0.2, ….
class DelayingServer
{
public:
    /// `answer` gets the path and gives the body; it is called on the server's thread.
    DelayingServer(int hosts, std::chrono::milliseconds delay, std::function<QByteArray(const QByteArray &)> answer);
    ~DelayingServer();
    DelayingServer(const DelayingServer &) = delete;
    DelayingServer &operator=(const DelayingServer &) = delete;

    /// "http://127.0.0.<n>:<port>" for each host.
    const QList<QByteArray> &baseUrls() const { return m_baseUrls; }

private:
    using Clock = std::chrono::steady_clock;
    struct Reply
    {
        Clock::time_point due;
        int socket = -1;
        /// Tells a connection from a later one that has its number.
        quint64 connection = 0;
        QByteArray bytes;
    };
    struct Connection
    {
        quint64 number = 0;
        QByteArray received;
    };

    void listenAt(int host);
    void watch(int socket);
    void run();
    int millisecondsToNextReply() const;
    void acceptConnections(int listener);
    void readRequests(int socket);
    void sendDueReplies();
    void hangUp(int socket);

    const std::chrono::milliseconds m_delay;
    const std::function<QByteArray(const QByteArray &)> m_answer;
    QList<QByteArray> m_baseUrls;
    QList<int> m_listeners;
    QHash<int, Connection> m_connections;
    quint64 m_lastConnection = 0;
    /// In the order in which they are due, as all wait for the same time.
    std::deque<Reply> m_replies;
    int m_epoll = -1;
    int m_end = -1;
    std::thread m_thread;
};
