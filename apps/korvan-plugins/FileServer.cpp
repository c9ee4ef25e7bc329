#include "FileServer.h"

#include <QTcpSocket>

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
    const bool isThere = m_contents.contains(path);
    const auto content = m_contents.value(path);
    connection->write(isThere ? "HTTP/1.1 200 OK\r\n" : "HTTP/1.1 404 Not Found\r\n");
    connection->write("Connection: close\r\nContent-Length: " + QByteArray::number(content.size()) + "\r\n\r\n");
    if (words.first() != "HEAD")
        connection->write(content);
    connection->disconnectFromHost();
}
