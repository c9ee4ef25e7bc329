#include "platform/ItemMove.h"

#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/HiddenSibling.h"
#include "platform/ItemCopy.h"
#include "platform/ItemRemoval.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <utility>

namespace {

std::optional<KRError> errorUnlessZero(int failure)
{
    return failure == 0 ? std::nullopt : std::optional(systemError(failure));
}

/// For file systems that cannot refuse to replace by themselves: something that appears at the target between the
/// question and the rename is lost, if it is a file.
int renameAfterLooking(const QByteArray &from, const QByteArray &to)
{
    if (hasEntry(to))
        return EEXIST;
    return ::rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}

int renameWithoutReplacing(const QByteArray &from, const QByteArray &to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    const bool isUnknown = errno == EINVAL || errno == ENOSYS;
    return isUnknown ? renameAfterLooking(from, to) : errno;
}

bool areOnOneFileSystem(const QByteArray &item, const QByteArray &folder)
{
    struct stat itemStatus;
    struct stat folderStatus;
    const bool areThere = ::lstat(item.constData(), &itemStatus) == 0 && ::stat(folder.constData(), &folderStatus) == 0;
    return !areThere || itemStatus.st_dev == folderStatus.st_dev; // what is missing, the rename will tell
}

/// What is neither is made in one step: it needs no hidden copy, and could have no lock that protects one.
bool isFileOrFolder(const QByteArray &path)
{
    struct stat status;
    return ::lstat(path.constData(), &status) == 0 && (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
}

/// Not open for what is neither file nor folder: such a thing is not locked.
FileDescriptor lockedItem(const QByteArray &path)
{
    FileDescriptor item(::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (item.isOpen())
        ::flock(item.get(), LOCK_EX | LOCK_NB);
    return item;
}

/// Removes a whole item at one moment, as far as anybody sees. What cannot be hidden stays.
std::optional<KRError> removeAtOnce(const QByteArray &path)
{
    const auto hidden = hiddenSibling(path);
    const auto lock = lockedItem(path);
    if (const int failure = renameWithoutReplacing(path, hidden))
        return systemError(failure);
    removeItem(hidden);
    return std::nullopt;
}

bool isPath(const QByteArray &path)
{
    return path.startsWith('/') && !path.contains('\0');
}

} // namespace

ItemMove::ItemMove(const QByteArray &from, const QByteArray &to)
    : m_from(from)
    , m_to(to)
{ }

ItemMove::~ItemMove()
{
    if (!m_copy.isEmpty())
        removeItem(m_copy);
    if (!m_aside.isEmpty())
        removeItem(m_aside);
}

std::optional<KRError> ItemMove::prepare()
{
    if (!isPath(m_from) || !isPath(m_to))
        return systemError(EINVAL);
    removeForgottenSiblings(pathWithoutLastComponent(m_from));
    removeForgottenSiblings(pathWithoutLastComponent(m_to));
    const bool isRename = areOnOneFileSystem(m_from, pathWithoutLastComponent(m_to)) || !isFileOrFolder(m_from);
    return isRename ? std::nullopt : copyBesideTarget();
}

std::optional<KRError> ItemMove::copyBesideTarget()
{
    m_copy = hiddenSibling(m_to);
    auto copy = copyItem(m_from, m_copy);
    if (copy) {
        m_copyLock = std::move(copy).value();
        return std::nullopt;
    }
    removeItem(std::exchange(m_copy, {})); // at once, to give the room back
    return copy.error();
}

std::optional<KRError> ItemMove::carryOut()
{
    if (!isPath(m_from) || !isPath(m_to))
        return systemError(EINVAL);
    if (m_copy.isEmpty()) {
        const int failure = renameWithoutReplacing(m_from, m_to);
        if (failure != EXDEV)
            return errorUnlessZero(failure);
        // Also inside of one file system, where parts of it are mounted twice or lie in layers.
        if (hasEntry(m_to))
            return systemError(EEXIST);
        if (!isFileOrFolder(m_from))
            return copyInOneStep();
        if (auto error = copyBesideTarget())
            return error;
    }
    auto error = renameCopy();
    return error ? error : setSourceAside();
}

std::optional<KRError> ItemMove::copyInOneStep()
{
    const auto copy = copyItem(m_from, m_to);
    return copy ? setSourceAside() : std::optional(copy.error());
}

std::optional<KRError> ItemMove::renameCopy()
{
    if (const int failure = renameWithoutReplacing(m_copy, m_to))
        return systemError(failure);
    m_copy.clear();
    const int failure = flushFolder(pathWithoutLastComponent(m_to));
    if (failure != 0)
        removeAtOnce(m_to);
    return errorUnlessZero(failure);
}

std::optional<KRError> ItemMove::setSourceAside()
{
    const auto aside = hiddenSibling(m_from);
    m_sourceLock = lockedItem(m_from);
    if (const int failure = renameWithoutReplacing(m_from, aside)) {
        removeAtOnce(m_to); // an item that may not be taken away is not copied either
        return systemError(failure);
    }
    m_aside = aside;
    return std::nullopt;
}

std::optional<KRError> ItemMove::takeBack()
{
    if (m_aside.isEmpty())
        return errorUnlessZero(renameWithoutReplacing(m_to, m_from));
    if (const int failure = renameWithoutReplacing(m_aside, m_from))
        return systemError(failure);
    m_aside.clear();
    return removeAtOnce(m_to);
}

bool moveItem(const QByteArray &from, const QByteArray &to, KRError *error)
{
    ItemMove move(from, to);
    auto failure = move.prepare();
    if (!failure)
        failure = move.carryOut();
    if (failure && error)
        *error = *failure;
    return !failure;
}
