#include "platform/HiddenSibling.h"

#include "platform/FileDescriptor.h"
#include "platform/FileURL.h"
#include "platform/FolderNames.h"
#include "platform/ItemRemoval.h"

#include <QRandomGenerator>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace {

/// The leading dot keeps it out of every search for plug-ins.
constexpr QByteArrayView prefix = ".korvan-moving-";

bool isInUse(const QByteArray &path)
{
    const FileDescriptor item(::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return item.isOpen() && ::flock(item.get(), LOCK_EX | LOCK_NB) != 0;
}

} // namespace

QByteArray hiddenSibling(const QByteArray &path)
{
    const auto number = QByteArray::number(QRandomGenerator::system()->generate64(), 16);
    return pathByAppending(pathWithoutLastComponent(path), prefix.toByteArray() + number);
}

void removeForgottenSiblings(const QByteArray &folder)
{
    const FileDescriptor opened(::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const auto names = namesInFolder(opened.get());
    if (!names)
        return;
    for (const auto &name : names.value()) {
        const auto path = pathByAppending(folder, name);
        if (name.startsWith(prefix) && !isInUse(path))
            removeItem(path);
    }
}
