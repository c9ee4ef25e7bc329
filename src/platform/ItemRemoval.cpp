#include "platform/ItemRemoval.h"

#include "platform/FileDescriptor.h"
#include "platform/FileReading.h"
#include "platform/FolderNames.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

/// The removal of one folder, relative to open folders so that nothing that is moved or replaced meanwhile leads it
/// elsewhere. Functions answer the system's number of what has failed, 0 for nothing.
class FolderRemoval
{
public:
    int remove(int parent, const char *name)
    {
        m_outermost = openForRemoval(parent, name);
        if (!m_outermost.isOpen())
            return numberUnlessGone();
        do {
            m_hasRaisedFolders = false;
            if (const int failure = removeEntries(m_outermost.get(), 0))
                return failure;
        } while (m_hasRaisedFolders);
        return ::unlinkat(parent, name, AT_REMOVEDIR) == 0 ? 0 : numberUnlessGone();
    }

    static int numberUnlessGone() { return errno == ENOENT ? 0 : errno; }

private:
    /// Folders that lie deeper are raised into the outermost one: each level costs an open file.
    static constexpr int deepestLevel = 64;

    static FileDescriptor openForRemoval(int parent, const char *name)
    {
        FileDescriptor folder(openFolder(parent, name));
        if (!folder.isOpen() && errno == EACCES && ::fchmodat(parent, name, S_IRWXU, 0) == 0)
            folder = FileDescriptor(openFolder(parent, name));
        if (folder.isOpen())
            ::fchmod(folder.get(), S_IRWXU); // the removal of an entry tells when this was not enough
        return folder;
    }

    int removeEntries(int folder, int level)
    {
        const auto names = namesInFolder(folder);
        if (!names)
            return names.error().code;
        for (const auto &name : names.value()) {
            if (const int failure = removeEntry(folder, name.constData(), level))
                return failure;
        }
        return 0;
    }

    int removeEntry(int parent, const char *name, int level)
    {
        if (::unlinkat(parent, name, 0) == 0)
            return 0;
        if (errno != EISDIR && errno != EPERM) // two systems, two words for a folder
            return numberUnlessGone();
        return level == deepestLevel ? raise(parent, name) : removeFolder(parent, name, level + 1);
    }

    int removeFolder(int parent, const char *name, int level)
    {
        const auto folder = openForRemoval(parent, name);
        if (!folder.isOpen())
            return numberUnlessGone();
        if (const int failure = removeEntries(folder.get(), level))
            return failure;
        return ::unlinkat(parent, name, AT_REMOVEDIR) == 0 ? 0 : numberUnlessGone();
    }

    int raise(int parent, const char *name)
    {
        const auto folder = openForRemoval(parent, name); // one that forbids changes cannot be moved either
        m_hasRaisedFolders = true;
        for (;;) {
            const auto newName = "raised-" + QByteArray::number(m_nextNumber++);
            if (::renameat2(parent, name, m_outermost.get(), newName.constData(), RENAME_NOREPLACE) == 0)
                return 0;
            if (errno != EEXIST)
                return numberUnlessGone();
        }
    }

    FileDescriptor m_outermost;
    bool m_hasRaisedFolders = false;
    int m_nextNumber = 0;
};

} // namespace

std::optional<KRError> removeItem(const QByteArray &path)
{
    struct stat status;
    int failure = 0;
    if (::lstat(path.constData(), &status) != 0)
        failure = FolderRemoval::numberUnlessGone();
    else if (S_ISDIR(status.st_mode))
        failure = FolderRemoval().remove(AT_FDCWD, path.constData());
    else if (::unlink(path.constData()) != 0)
        failure = FolderRemoval::numberUnlessGone();
    return failure == 0 ? std::nullopt : std::optional(systemError(failure));
}
