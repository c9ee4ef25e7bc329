#include "hosting/FileServer.h"

#include <QTcpSocket>
#include <QTimer>

FileServer::FileServer()
{
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
        while (auto *const connection = m_server.nextPendingConnection()) {
            QObject::connect(connection, &QTcpSocket::disconnected, connection, &QObject::deleteLater);
            QObject::connect(connection, &QTcpSocket::readyRead, connection, [this, connection] { serve(connection); });
        }
    });
    m_server.listen(QHostAddress::LocalHost);
}

void FileServer::publish(const QString &path, const QByteArray &content)
{
    m_files.insert(path, {content, std::nullopt});
}

void FileServer::publishSlowly(const QString &path, const QByteArray &content, qint64 bytesPerSecond)
{
    m_files.insert(path, {content, bytesPerSecond});
}

QUrl FileServer::url(const QString &path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
}

/// Once the head of the request is whole; a request on this server has no more than a head.
void FileServer::serve(QTcpSocket *connection) const
{
    const auto request = connection->peek(4096);
    if (!request.contains("\r\n\r\n"))
        return;
    connection->readAll();
    const auto words = request.split(' ');
    const auto path = QString::fromLatin1(words.value(1));
    const bool isThere = m_files.contains(path);
    const auto file = m_files.value(path);
    connection->write(isThere ? "HTTP/1.1 200 OK\r\n" : "HTTP/1.1 404 Not Found\r\n");
    connection->write("Connection: close\r\nContent-Length: " + QByteArray::number(file.content.size()) + "\r\n\r\n");
    const bool hasBody = words.first() != "HEAD";
    if (hasBody && file.bytesPerSecond)
        return sendSlowly(connection, file);
    if (hasBody)
        connection->write(file.content);
    connection->disconnectFromHost();
}

void FileServer::sendSlowly(QTcpSocket *connection, const File &file)
{
    constexpr std::chrono::milliseconds pause(50);
    auto *const timer = new QTimer(connection);
    const qint64 piece = *file.bytesPerSecond * pause.count() / 1000;
    QObject::connect(timer, &QTimer::timeout, connection, [connection, piece, rest = file.content]() mutable {
        connection->write(rest.left(piece));
        rest.remove(0, piece);
        if (rest.isEmpty())
            connection->disconnectFromHost(); // and, with the connection, the timer goes
    });
    timer->start(pause);
}
