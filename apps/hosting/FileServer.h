#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTcpServer>
#include <QUrl>

#include <optional>

/// A web server on this computer, for a demonstration: gives out what it was given, over HTTP, while the event loop
/// runs.
class FileServer
{
public:
    FileServer();

    bool isListening() const { return m_server.isListening(); }
    /// `path` begins with "/".
    QUrl url(const QString &path) const;
    void publish(const QString &path, const QByteArray &content);
    /// As if it came over a line of that speed.
    void publishSlowly(const QString &path, const QByteArray &content, qint64 bytesPerSecond);

private:
    struct File
    {
        QByteArray content;
        /// Nil: at once.
        std::optional<qint64> bytesPerSecond;
    };

    void serve(QTcpSocket *connection) const;
    static void sendSlowly(QTcpSocket *connection, const File &file);

    QTcpServer m_server;
    QMap<QString, File> m_files;
};
