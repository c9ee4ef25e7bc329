#include "platform/LocalMessagePort.h"

#include "platform/RemoteMessagePort.h"

#include <QDir>
#include <QFile>
#include <QLocalServer>
#include <QLocalSocket>
#include <QtEndian>

#include <sys/stat.h>

namespace {

constexpr qsizetype headerSize = 8;
constexpr quint32 largestMessage = 64 * 1024 * 1024;

/// Where the system keeps the port of a name.
QByteArray socketPath(const QString &name)
{
    return QFile::encodeName(name.startsWith(u'/') ? name : QDir::tempPath() + u'/' + name);
}

/// Whether a port may be made under the name: the system would put it in the place of whatever is there.
bool isFree(const QString &name)
{
    struct stat status;
    if (::lstat(socketPath(name).constData(), &status) != 0)
        return true;
    return S_ISSOCK(status.st_mode) && !RemoteMessagePort::create(name);
}

quint32 numberAt(const QByteArray &bytes, qsizetype position)
{
    return qFromBigEndian<quint32>(bytes.constData() + position);
}

/// What one sender has sent and is not yet a whole message.
class Connection
{
public:
    Connection(QLocalSocket &socket, std::weak_ptr<LocalMessagePort::Handler> handler)
        : m_socket(socket)
        , m_handler(std::move(handler))
    { }

    void receive()
    {
        m_pending += m_socket.readAll();
        while (m_pending.size() >= headerSize) {
            const auto size = numberAt(m_pending, 4);
            if (size > largestMessage) {
                m_socket.abort();
                return;
            }
            if (m_pending.size() < headerSize + qsizetype(size))
                return;
            const auto message = m_pending.mid(headerSize, qsizetype(size));
            const auto number = numberAt(m_pending, 0);
            m_pending.remove(0, headerSize + qsizetype(size));
            const auto handler = m_handler.lock();
            if (!handler)
                return; // the one before has destroyed the port
            (*handler)(number, message);
        }
    }

private:
    QLocalSocket &m_socket;
    std::weak_ptr<LocalMessagePort::Handler> m_handler;
    QByteArray m_pending;
};

} // namespace

class LocalMessagePort::Server
{
public:
    explicit Server(Handler handler)
        : m_handler(std::make_shared<Handler>(std::move(handler)))
    {
        m_server.setSocketOptions(QLocalServer::UserAccessOption);
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] { accept(); });
    }

    ~Server()
    {
        // Later: it may be one of them that the current message came from.
        const auto sockets = m_server.findChildren<QLocalSocket *>();
        for (auto *const socket : sockets) {
            socket->disconnect();
            socket->setParent(nullptr);
            socket->deleteLater();
        }
    }

    Server(const Server &) = delete;
    Server &operator=(const Server &) = delete;

    bool listen(const QString &name) { return isFree(name) && m_server.listen(name); }

private:
    void accept()
    {
        while (auto *const socket = m_server.nextPendingConnection()) {
            const auto connection = std::make_shared<Connection>(*socket, m_handler);
            const auto receive = [connection] {
                const auto kept = connection;
                kept->receive();
            };
            QObject::connect(socket, &QLocalSocket::readyRead, socket, receive);
            QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            QMetaObject::invokeMethod(socket, receive, Qt::QueuedConnection); // what has come already
        }
    }

    std::shared_ptr<Handler> m_handler;
    QLocalServer m_server;
};

LocalMessagePort::LocalMessagePort(std::unique_ptr<Server> server)
    : m_server(std::move(server))
{ }

LocalMessagePort::~LocalMessagePort() = default;

std::unique_ptr<LocalMessagePort> LocalMessagePort::create(const QString &name, Handler handler)
{
    auto server = std::make_unique<Server>(std::move(handler));
    if (name.isEmpty() || !server->listen(name))
        return nullptr;
    return std::unique_ptr<LocalMessagePort>(new LocalMessagePort(std::move(server)));
}
