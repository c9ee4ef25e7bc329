#include "platform/FileReading.h"

#include "platform/FileDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

namespace {

ssize_t readSome(int descriptor, char *destination, qsizetype size)
{
    ssize_t count = 0;
    do {
        count = ::read(descriptor, destination, size_t(size));
    } while (count < 0 && errno == EINTR);
    return count;
}

Result<QByteArray> readDescriptor(int descriptor, qsizetype expectedSize, qsizetype padding)
{
    QByteArray bytes;
    bytes.reserve(expectedSize + padding);
    bytes.resize(expectedSize);
    qsizetype filled = 0;
    while (filled < expectedSize) {
        const auto count = readSome(descriptor, bytes.data() + filled, expectedSize - filled);
        if (count < 0)
            return systemError(errno);
        if (count == 0)
            break; // the file became shorter meanwhile
        filled += count;
    }
    bytes.resize(filled);
    return bytes;
}

struct OpenFile
{
    FileDescriptor descriptor;
    qint64 size;
};

Result<OpenFile> openRegularFile(const QByteArray &path)
{
    if (path.contains('\0'))
        return systemError(EINVAL); // the system would read another, shorter path
    // Without blocking: a pipe that stands where a file is expected would otherwise wait for a writer for ever. And a
    // terminal that stands there must not become this process's own.
    FileDescriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen())
        return systemError(errno);
    struct stat status;
    if (::fstat(file.get(), &status) != 0)
        return systemError(errno);
    if (S_ISDIR(status.st_mode))
        return systemError(EISDIR);
    if (!S_ISREG(status.st_mode))
        return KRError{QStringLiteral("posix"), EINVAL, QStringLiteral("Not a regular file")};
    return OpenFile{std::move(file), status.st_size};
}

} // namespace

KRError systemError(int number)
{
    return {QStringLiteral("posix"), number, QString::fromStdString(std::generic_category().message(number))};
}

Result<QByteArray> readFile(const QByteArray &path, qint64 maximumSize, qsizetype padding)
{
    const auto file = openRegularFile(path);
    if (!file)
        return file.error();
    if (file.value().size > maximumSize)
        return systemError(EFBIG);
    return readDescriptor(file.value().descriptor.get(), qsizetype(file.value().size), padding);
}

Result<QByteArray> readBeginning(const QByteArray &path, qsizetype size)
{
    const auto file = openRegularFile(path);
    if (!file)
        return file.error();
    return readDescriptor(file.value().descriptor.get(), qsizetype(std::min(file.value().size, qint64(size))), 0);
}
