#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTcpServer>
#include <QUrl>

/// A web server on this computer, for a demonstration: gives out what it was given, over HTTP, while the event loop
/// runs.
class FileServer
{
public:
    FileServer();

    bool isListening() const { return m_server.isListening(); }
    /// `path` begins with "/".
    QUrl url(const QString &path) const;
    void publish(const QString &path, const QByteArray &content) { m_contents.insert(path, content); }

private:
    void serve(QTcpSocket *connection) const;

    QTcpServer m_server;
    QMap<QString, QByteArray> m_contents;
};
