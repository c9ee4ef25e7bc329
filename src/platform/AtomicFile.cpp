#include "platform/AtomicFile.h"

#include "platform/FileReading.h"
#include "platform/FileURL.h"

#include <QFile>
#include <QSaveFile>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

KRError writingError(const QFileDevice &file)
{
    return {QStringLiteral("posix"), 0, file.errorString()};
}

/// Another name for the file, for the one behind a link; it works for a file that this process may not read. A copy
/// where the file system knows no second names.
int giveSecondName(const QByteArray &path, const QByteArray &name)
{
    if (::linkat(AT_FDCWD, path.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW) == 0)
        return 0;
    if (errno == EEXIST || errno == ENOENT)
        return errno;
    std::error_code error;
    std::filesystem::copy_file(path.toStdString(), name.toStdString(), error);
    return error.value();
}

bool areSameFile(const QByteArray &first, const QByteArray &second)
{
    std::error_code ignored;
    return std::filesystem::equivalent(first.toStdString(), second.toStdString(), ignored);
}

/// A pipe that nobody reads is an error, not a wait.
std::optional<KRError> writeToDevice(const QByteArray &path, const QByteArray &bytes)
{
    const int descriptor = ::open(path.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return systemError(errno);
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    QFile file;
    if (!file.open(descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return writingError(file);
    }
    return file.write(bytes) == bytes.size() ? std::nullopt : std::optional(writingError(file));
}

} // namespace

bool isDevice(const QByteArray &path)
{
    struct stat status;
    return ::stat(path.constData(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

std::optional<KRError> replaceFileAtomically(const QByteArray &path, const QByteArray &bytes)
{
    if (path.isEmpty() || path.contains('\0'))
        return systemError(EINVAL);
    if (isDevice(path))
        return writeToDevice(path, bytes);
    QSaveFile file(QFile::decodeName(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
        return writingError(file);
    // Asked for here since commit() does not tell of its failure: a disk may turn out to be full only now.
    if (::fsync(file.handle()) != 0) {
        const auto error = systemError(errno);
        file.cancelWriting();
        return error;
    }
    return file.commit() ? std::nullopt : std::optional(writingError(file));
}

std::optional<KRError> writeFileAtomically(const QByteArray &path, const QByteArray &bytes)
{
    if (!path.contains('\0')) {
        std::error_code ignored; // opening the file tells it better
        std::filesystem::create_directories(pathWithoutLastComponent(path).toStdString(), ignored);
    }
    return replaceFileAtomically(path, bytes);
}

Result<QByteArray> keepUnreadableFile(const QByteArray &path)
{
    constexpr int mostNames = 1000;
    auto name = path + ".unreadable";
    for (int number = 2; number <= mostNames; ++number) {
        const int failure = giveSecondName(path, name);
        const bool isKeptAlready = failure == EEXIST && areSameFile(path, name); // by a change that failed then
        if (failure == ENOENT)
            return QByteArray();
        if (failure == 0 || isKeptAlready)
            return name;
        if (failure != EEXIST)
            return systemError(failure);
        name = path + ".unreadable-" + QByteArray::number(number);
    }
    return systemError(EEXIST);
}
