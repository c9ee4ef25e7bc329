#include "platform/Trash.h"

#include "platform/FileDescriptor.h"
#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/ItemMove.h"

#include <QDateTime>
#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>

namespace {

// The trash of the desktops: "files" holds the items, "info" says of each where it was and since when it is there.

QByteArray infoPath(const QByteArray &inTrash)
{
    const auto trash = pathWithoutLastComponent(pathWithoutLastComponent(inTrash));
    return trash + "/info/" + lastPathComponent(inTrash) + ".trashinfo";
}

/// By the system's own means. Paths that are not text are not for it.
QByteArray moveToSystemTrash(const QByteArray &path)
{
    const auto name = QFile::decodeName(path);
    QString inTrash;
    if (QFile::encodeName(name) != path || !QFile::moveToTrash(name, &inTrash))
        return {};
    return QFile::encodeName(inTrash);
}

QByteArray infoText(const QByteArray &path)
{
    const auto now = QDateTime::currentDateTime().toString(Qt::ISODate).toLatin1();
    return "[Trash Info]\nPath=" + path.toPercentEncoding("/") + "\nDeletionDate=" + now + '\n';
}

/// Says where the item was, which is also what reserves the name.
int writeInfo(const QByteArray &infoFile, const QByteArray &path)
{
    const auto text = infoText(path);
    const FileDescriptor file(::open(infoFile.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file.isOpen())
        return errno;
    return ::write(file.get(), text.constData(), size_t(text.size())) == text.size() ? 0 : ENOSPC;
}

QByteArray makeTrashOfOwn()
{
    const auto data = QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    const auto trash = pathByAppending(data, "Trash");
    std::error_code ignored; // the first file there tells it better
    std::filesystem::create_directories((trash + "/files").toStdString(), ignored);
    std::filesystem::create_directories((trash + "/info").toStdString(), ignored);
    return trash;
}

QByteArray moveToTrashOfOwn(const QByteArray &path, KRError &error)
{
    constexpr int mostNames = 1000;
    const auto files = makeTrashOfOwn() + "/files";
    auto inTrash = pathByAppending(files, lastPathComponent(path));
    int failure = EEXIST;
    for (int number = 2; failure == EEXIST && number <= mostNames; ++number) {
        failure = writeInfo(infoPath(inTrash), path);
        if (failure == EEXIST)
            inTrash = pathByAppending(files, lastPathComponent(path) + '-' + QByteArray::number(number));
    }
    if (failure != 0)
        error = systemError(failure);
    else if (moveItem(path, inTrash, &error))
        return inTrash;
    if (failure != EEXIST)
        ::unlink(infoPath(inTrash).constData());
    return {};
}

} // namespace

std::optional<TrashedItem> moveToTrash(const QByteArray &path, KRError *error)
{
    KRError reason;
    auto inTrash = moveToSystemTrash(path);
    if (inTrash.isEmpty())
        inTrash = moveToTrashOfOwn(path, reason);
    if (!inTrash.isEmpty())
        return TrashedItem{path, inTrash};
    if (error)
        *error = reason;
    return std::nullopt;
}

std::optional<KRError> takeOutOfTrash(const TrashedItem &item)
{
    KRError error;
    if (!moveItem(item.inTrash, item.from, &error))
        return error;
    ::unlink(infoPath(item.inTrash).constData());
    return std::nullopt;
}
