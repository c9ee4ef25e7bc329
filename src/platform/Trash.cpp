#include "platform/Trash.h"

#include "platform/FileDescriptor.h"
#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/ItemMove.h"

#include <QDateTime>
#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>

namespace {

// The trash of the desktops, in the user's own data: "files" holds the items, "info" says of each where it was and
// since when it is there. QFile::moveToTrash() is of no use here: without a folder for it, it throws things into the
// current folder; it cannot cross file systems, does not say why it has failed, and refuses names that are not text.

QByteArray infoPath(const QByteArray &inTrash)
{
    const auto trash = pathWithoutLastComponent(pathWithoutLastComponent(inTrash));
    return trash + "/info/" + lastPathComponent(inTrash) + ".trashinfo";
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
    if (::write(file.get(), text.constData(), size_t(text.size())) == text.size())
        return 0;
    ::unlink(infoFile.constData());
    return ENOSPC; // what else cuts a few bytes short
}

QByteArray makeTrash()
{
    const auto data = QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    const auto trash = pathByAppending(data, "Trash");
    std::error_code ignored; // the first file there tells it better
    std::filesystem::create_directories((trash + "/files").toStdString(), ignored);
    std::filesystem::create_directories((trash + "/info").toStdString(), ignored);
    return trash;
}

/// Reserves a name that nothing has in the trash, by saying whose it is. The path that the item will have.
Result<QByteArray> reservePlace(const QByteArray &path)
{
    constexpr int mostNames = 1000;
    const auto files = makeTrash() + "/files";
    auto inTrash = pathByAppending(files, lastPathComponent(path));
    for (int number = 2; number <= mostNames; ++number) {
        // An item of which nothing is said has its name all the same.
        const int failure = hasEntry(inTrash) ? EEXIST : writeInfo(infoPath(inTrash), path);
        if (failure == 0)
            return inTrash;
        if (failure != EEXIST)
            return systemError(failure);
        inTrash = pathByAppending(files, lastPathComponent(path) + '-' + QByteArray::number(number));
    }
    return systemError(EEXIST);
}

} // namespace

std::optional<TrashedItem> moveToTrash(const QByteArray &path, KRError *error)
{
    const auto place = reservePlace(path);
    if (place && moveItem(path, place.value(), error))
        return TrashedItem{path, place.value()};
    if (place)
        ::unlink(infoPath(place.value()).constData());
    else if (error)
        *error = place.error();
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
