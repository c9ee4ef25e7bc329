#include "support/PathFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

void require(bool isDone, const char *what, const QByteArray &path)
{
    if (!isDone)
        qFatal("cannot make the %s %s: %s", what, path.constData(), std::strerror(errno));
}

} // namespace

TemporaryFolder::~TemporaryFolder()
{
    std::error_code error;
    std::filesystem::remove_all(path().toStdString(), error); // QTemporaryDir leaves names that are not UTF-8
}

void writeFileAt(const QByteArray &path, const QByteArray &content)
{
    makeFolderAt(path.left(path.lastIndexOf('/')));
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    require(file >= 0, "file", path);
    require(::write(file, content.constData(), std::size_t(content.size())) == content.size(), "file", path);
    ::close(file);
}

void makeFolderAt(const QByteArray &path)
{
    std::error_code error;
    std::filesystem::create_directories(path.toStdString(), error);
    require(!error, "folder", path);
}

void makeLinkAt(const QByteArray &path, const QByteArray &target)
{
    require(::symlink(target.constData(), path.constData()) == 0, "link", path);
}

void makePipeAt(const QByteArray &path)
{
    require(::mkfifo(path.constData(), 0644) == 0, "pipe", path);
}

void makeSocketAt(const QByteArray &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    require(std::size_t(path.size()) < sizeof address.sun_path, "socket", path);
    std::copy(path.begin(), path.end(), address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    require(::bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0, "socket", path);
    ::close(socket);
}

void renameAt(const QByteArray &from, const QByteArray &to)
{
    require(::rename(from.constData(), to.constData()) == 0, "new name", to);
}

void removeAt(const QByteArray &path)
{
    std::error_code error;
    require(std::filesystem::remove_all(path.toStdString(), error) > 0 && !error, "end of", path);
}
