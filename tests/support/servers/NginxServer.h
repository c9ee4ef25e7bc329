#pragma once

#include "support/servers/ChildProcess.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>
#include <QUrl>

#include <memory>

/// A real web server on this computer (127.0.0.1): HTTPS with HTTP/2, and plain HTTP, for a folder of files. Its
/// certificate is for the name "localhost" alone, from an authority that exists for this object only.
///
/// The server is a child process (with a worker of its own) that ends with this object, or with the program. Whatever
/// cannot be set up ends the program with a message: no test makes sense without its server. Needs the programs nginx
/// and openssl, no privileges, and a QCoreApplication.
class NginxServer
{
public:
    /// `directives` go into the server's block of the configuration, for example
    /// `location = /moved { return 302 /there; }`.
    explicit NginxServer(const QByteArray &directives = {});
    ~NginxServer() = default;
    NginxServer(const NginxServer &) = delete;
    NginxServer &operator=(const NginxServer &) = delete;

    /// "https://localhost:<port>/".
    QUrl baseUrl() const;
    /// "http://localhost:<port>/", the same content.
    QUrl plainBaseUrl() const;
    /// The authority's certificate (PEM). For other programs: the environment variable SSL_CERT_FILE.
    QString certificateAuthorityFile() const { return m_folder.filePath(QStringLiteral("ca.pem")); }
    /// The folder that is served, without a slash at its end.
    QString documentRoot() const { return m_folder.filePath(QStringLiteral("root")); }

private:
    class Listener;

    void makeCertificates();
    void writeConfiguration(const QByteArray &directives);
    void start(const QByteArray &directives);
    void waitUntilReady();

    QTemporaryDir m_folder;
    std::unique_ptr<ChildProcess> m_process;
    quint16 m_securePort = 0;
    quint16 m_plainPort = 0;
};
