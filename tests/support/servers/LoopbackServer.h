#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QUrl>

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

/// What the server does once it has read a request: steps, then the connection's end, or the wait for another request.
class Answer
{
public:
    /// A whole answer with Content-Length; the connection stays open for more.
    static Answer response(
        int status, const QByteArray &body = {}, const QList<QPair<QByteArray, QByteArray>> &headers = {});
    static Answer redirect(const QByteArray &location, int status = 302);
    /// Bytes that need not be HTTP.
    static Answer bytes(const QByteArray &bytes);
    /// Says nothing until the client hangs up.
    static Answer silence();

    Answer &thenBytes(const QByteArray &bytes);
    /// Goes on after LoopbackServer::release() was called once more.
    Answer &thenWaitForRelease();
    /// As silence().
    Answer &thenStall();

private:
    friend class LoopbackServer;
    /// What a request for the head gets.
    Answer withoutBody() const;
    enum class Kind { Bytes, WaitForRelease, Stall };
    QList<QPair<Kind, QByteArray>> m_steps;
    bool m_keepAlive = false;
};

/// An HTTP/1.1 server on this computer that answers by script, also wrongly: what a test of a client needs. A thread
/// per connection; all functions may be called from any thread. Waits fail the program after a minute.
class LoopbackServer
{
public:
    LoopbackServer();
    /// Hangs up on everybody.
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;

    /// `path` begins with "/".
    QUrl url(const QString &path, const QString &host = QStringLiteral("127.0.0.1")) const;
    quint16 port() const { return m_port; }

    /// What a request for the path gets; 404 for any other path. The last of several answers for one path stands for
    /// all further requests.
    void setAnswer(const QByteArray &path, const Answer &answer);
    void setAnswers(const QByteArray &path, const QList<Answer> &answers);

    /// Lets one waiting step go on, now or in future.
    void release(int count = 1);

    /// The paths that were asked for, in order.
    QList<QByteArray> requestedPaths() const;
    /// The head of the last request.
    QByteArray lastRequest() const;
    /// What came after it.
    QByteArray lastBody() const;
    int connectionCount() const;
    /// How many requests have been answered at one time, at most.
    int largestConcurrency() const;
    void waitForRequests(int count) const;
    /// Until so many clients have hung up during a stall.
    void waitForHangUps(int count) const;

private:
    void acceptConnections();
    void serve(int socket);
    bool serveOne(int socket);
    Answer beginRequest(const QByteArray &head, const QByteArray &body);
    bool play(int socket, const Answer &answer);
    bool waitForRelease();
    template <class Condition>
    void waitUntil(std::unique_lock<std::mutex> &lock, Condition condition) const;

    int m_listener = -1;
    quint16 m_port = 0;
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    bool m_stopping = false;
    std::map<QByteArray, QList<Answer>> m_answers;
    QList<QByteArray> m_requests;
    QByteArray m_lastBody;
    std::set<int> m_sockets;
    std::vector<std::thread> m_threads;
    int m_connectionCount = 0;
    int m_hangUps = 0;
    int m_releases = 0;
    int m_concurrency = 0;
    int m_largestConcurrency = 0;
    std::thread m_acceptor;
};
