#include "support/servers/NginxServer.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTcpSocket>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QString program(const QString &name)
{
    QString path = QStandardPaths::findExecutable(name);
    if (path.isEmpty()) // where it is for users who may not start servers usually
        path = QStandardPaths::findExecutable(name, {u"/usr/sbin"_s, u"/usr/local/sbin"_s, u"/sbin"_s});
    if (path.isEmpty())
        qFatal("%s is not installed.", qPrintable(name));
    return path;
}

QByteArray readTextFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void runOpenSSL(const QString &folder, const QString &arguments)
{
    const QString log = folder + u"/openssl.log"_s;
    ChildProcess process({program(u"openssl"_s), arguments.split(u' '), folder, log, {}});
    if (process.waitForEnd() != 0)
        qFatal("openssl %s: %s", qPrintable(arguments), readTextFile(log).constData());
}

void writeTextFile(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("%s cannot be written.", qPrintable(path));
}

constexpr char configuration[] = R"(
%USER%
daemon off;
worker_processes 1;
pid nginx.pid;
error_log error.log error;
events { worker_connections 4096; }
http {
    access_log off;
    client_body_temp_path body;
    proxy_temp_path proxy;
    fastcgi_temp_path fastcgi;
    uwsgi_temp_path uwsgi;
    scgi_temp_path scgi;
    default_type application/octet-stream;
    server {
        listen 127.0.0.1:%SECURE% ssl http2 backlog=%BACKLOG%;
        listen 127.0.0.1:%PLAIN% backlog=%BACKLOG%;
        server_name localhost;
        ssl_certificate server.pem;
        ssl_certificate_key server.key;
        root "%ROOT%";
        location = /.protocol { return 200 "$server_protocol"; }
        %DIRECTIVES%
    }
}
)";

} // namespace

/// A socket that listens before the server runs, which inherits it: nobody else can take the port meanwhile, and who
/// connects early waits for the server.
class NginxServer::Listener
{
public:
    static constexpr int backlog = 511;

    Listener()
        : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) // passed on to programs
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto *general = reinterpret_cast<sockaddr *>(&address);
        if (bind(m_socket, general, size) != 0 || listen(m_socket, backlog) != 0
            || getsockname(m_socket, general, &size) != 0)
            qFatal("No port for nginx.");
        m_port = ntohs(address.sin_port);
    }
    ~Listener() { close(m_socket); }
    Listener(const Listener &) = delete;
    Listener &operator=(const Listener &) = delete;

    int number() const { return m_socket; }
    quint16 port() const { return m_port; }

private:
    int m_socket;
    quint16 m_port = 0;
};

NginxServer::NginxServer(const QByteArray &directives)
{
    QDir(m_folder.path()).mkdir(u"root"_s);
    makeCertificates();
    start(directives);
    waitUntilReady();
}

QUrl NginxServer::baseUrl() const
{
    return QUrl(u"https://localhost:%1/"_s.arg(m_securePort));
}

QUrl NginxServer::plainBaseUrl() const
{
    return QUrl(u"http://localhost:%1/"_s.arg(m_plainPort));
}

void NginxServer::makeCertificates()
{
    const QString key = u"-newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes"_s;
    const QString folder = m_folder.path();
    runOpenSSL(folder, u"req -x509 %1 -keyout ca.key -out ca.pem -subj /CN=Throwaway -days 2"_s.arg(key));
    runOpenSSL(folder, u"req %1 -keyout server.key -out server.csr -subj /CN=localhost"_s.arg(key));
    writeTextFile(m_folder.filePath(u"names.cnf"_s), "subjectAltName=DNS:localhost\n");
    runOpenSSL(folder,
        u"x509 -req -in server.csr -CA ca.pem -CAkey ca.key -CAcreateserial -out server.pem -days 2 -extfile names.cnf"_s);
}

void NginxServer::writeConfiguration(const QByteArray &directives)
{
    QByteArray text = configuration;
    // As root its workers would change to a user who may not read the temporary folder.
    text.replace("%USER%", getuid() == 0 ? "user root;" : "");
    text.replace("%SECURE%", QByteArray::number(m_securePort));
    text.replace("%PLAIN%", QByteArray::number(m_plainPort));
    text.replace("%BACKLOG%", QByteArray::number(Listener::backlog));
    text.replace("%ROOT%", QFile::encodeName(documentRoot()));
    text.replace("%DIRECTIVES%", directives);
    writeTextFile(m_folder.filePath(u"nginx.conf"_s), text);
}

void NginxServer::start(const QByteArray &directives)
{
    const Listener secure; // which are the server's alone after this: when it ends, they do
    const Listener plain;
    m_securePort = secure.port();
    m_plainPort = plain.port();
    writeConfiguration(directives);
    const QByteArray inherited = QByteArray::number(secure.number()) + ';' + QByteArray::number(plain.number()) + ';';
    m_process = std::make_unique<ChildProcess>(ChildProcess::Setup{program(u"nginx"_s),
        {u"-p"_s, m_folder.path(), u"-c"_s, m_folder.filePath(u"nginx.conf"_s), u"-e"_s, u"error.log"_s},
        m_folder.path(), m_folder.filePath(u"error.log"_s), {"NGINX=" + inherited}});
}

/// Asks for something and waits for the first byte of the answer; an nginx that cannot start hangs up.
void NginxServer::waitUntilReady()
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, m_plainPort);
    socket.write("GET /.protocol HTTP/1.0\r\n\r\n");
    if (!socket.waitForReadyRead(30'000))
        qFatal("nginx does not answer: %s", readTextFile(m_folder.filePath(u"error.log"_s)).constData());
}
