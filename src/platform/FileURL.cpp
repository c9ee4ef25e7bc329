#include "platform/FileURL.h"

#include <filesystem>

namespace {

/// A URL's first component would otherwise be the name of a computer.
QByteArray absolutePath(const QByteArray &path)
{
    if (path.startsWith('/'))
        return path;
    std::error_code error;
    return pathByAppending(QByteArray::fromStdString(std::filesystem::current_path(error).native()), path);
}

bool isOnThisComputer(const QString &host)
{
    return host.isEmpty() || host == u"localhost";
}

} // namespace

QUrl fileURLFromPath(const QByteArray &path, FileKind kind)
{
    if (path.isEmpty())
        return {};
    // What a URL's path may hold as it is, besides letters, digits and "-._~".
    static const QByteArray unencoded = QByteArrayLiteral("/!$&'()*+,:=@");
    QByteArray encoded = "file://" + absolutePath(path).toPercentEncoding(unencoded);
    if (kind == FileKind::Folder && !encoded.endsWith('/'))
        encoded += '/';
    return QUrl::fromEncoded(encoded, QUrl::StrictMode);
}

QUrl fileURLFromPath(const QString &path, FileKind kind)
{
    return fileURLFromPath(path.toUtf8(), kind);
}

QByteArray pathFromFileURL(const QUrl &url)
{
    if (!url.isLocalFile() || !isOnThisComputer(url.host()))
        return {};
    auto path = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path;
}

QString displayPath(const QByteArray &path)
{
    return QString::fromUtf8(path);
}

QString displayPath(const QUrl &url)
{
    return displayPath(pathFromFileURL(url));
}

QString absoluteString(const QUrl &url)
{
    return url.toString(QUrl::FullyEncoded);
}

QByteArray pathByAppending(const QByteArray &parent, QByteArrayView component)
{
    QByteArray path;
    path.reserve(parent.size() + component.size() + 1);
    path += parent;
    if (!path.endsWith('/'))
        path += '/';
    path += component;
    return path;
}

QByteArray lastPathComponent(const QByteArray &path)
{
    return path.mid(path.lastIndexOf('/') + 1);
}

QByteArray pathWithoutLastComponent(const QByteArray &path)
{
    const auto slash = path.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : path.left(slash);
}

QString withoutExtension(const QString &name)
{
    const auto dot = name.lastIndexOf(u'.');
    return dot <= 0 ? name : name.left(dot);
}

QByteArray withoutExtension(const QByteArray &name)
{
    const auto dot = name.lastIndexOf('.');
    return dot <= 0 ? name : name.left(dot);
}

bool hasExtension(const QByteArray &path, QByteArrayView extension)
{
    const auto dot = path.lastIndexOf('.');
    if (dot <= 0 || path[dot - 1] == '/' || path.size() - dot - 1 != extension.size())
        return false;
    return qstrnicmp(path.constData() + dot + 1, path.size() - dot - 1, extension.data(), extension.size()) == 0;
}
