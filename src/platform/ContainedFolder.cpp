#include "platform/ContainedFolder.h"

#include <QByteArrayList>

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/syscall.h>
#if __has_include(<linux/openat2.h>)
#include <linux/openat2.h>
#endif

namespace {

/// No folder on systems without the call, as for any other reason.
FolderHandle openBeneath([[maybe_unused]] const FolderHandle &folder, [[maybe_unused]] const QByteArray &relativePath)
{
#ifdef SYS_openat2
    open_how how{};
    how.flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
    return FolderHandle(
        FileDescriptor(int(::syscall(SYS_openat2, folder.descriptor(), relativePath.constData(), &how, sizeof how))));
#else
    return FolderHandle();
#endif
}

} // namespace

ContainedFolder::ContainedFolder(FolderHandle folder, const QByteArray &path, Lookup lookup)
    : m_folder(std::make_shared<const FolderHandle>(std::move(folder)))
    , m_pathLength(path.size())
    , m_lookup(lookup)
{ }

bool ContainedFolder::canHold(const QByteArray &relativePath) const
{
    return m_pathLength + 1 + relativePath.size() < PATH_MAX;
}

ContainedFolder::Subfolder ContainedFolder::makeSubfolder(const QByteArray &relativePath)
{
    if (m_latest && m_latestPath == relativePath)
        return m_latest;
    if (relativePath.contains('\0') || !canHold(relativePath))
        return Failure::CannotCreate;
    if (relativePath.split('/').contains(".."))
        return Failure::LeadsOutside;
    auto subfolder = find(relativePath);
    if (const auto *found = std::get_if<std::shared_ptr<const FolderHandle>>(&subfolder)) {
        m_latest = *found;
        m_latestPath = relativePath;
    }
    return subfolder;
}

ContainedFolder::Subfolder ContainedFolder::find(const QByteArray &relativePath) const
{
    if (m_lookup == Lookup::System && !relativePath.isEmpty() && !relativePath.startsWith('/')) {
        auto folder = openBeneath(*m_folder, relativePath);
        if (folder.descriptor() >= 0)
            return std::make_shared<const FolderHandle>(std::move(folder));
    }
    return walk(relativePath); // which also tells why
}

ContainedFolder::Subfolder ContainedFolder::walk(const QByteArray &relativePath) const
{
    auto current = m_folder;
    for (const auto &name : relativePath.split('/')) {
        if (name.isEmpty() || name == ".")
            continue;
        auto next = enter(*current, name);
        if (const auto *failure = std::get_if<Failure>(&next))
            return *failure;
        current = std::make_shared<const FolderHandle>(std::get<FolderHandle>(std::move(next)));
    }
    return current;
}

std::variant<FolderHandle, ContainedFolder::Failure> ContainedFolder::enter(
    const FolderHandle &folder, const QByteArray &name) const
{
    auto next = folder.openFolder(name, FolderHandle::Links::Refuse);
    if (!next && next.error().code == ENOENT) {
        if (folder.makeFolder(name))
            return Failure::CannotCreate;
        next = folder.openFolder(name, FolderHandle::Links::Refuse);
    }
    if (next)
        return std::move(next).value();
    auto target = folder.openFolder(name, FolderHandle::Links::Follow);
    if (!target)
        return Failure::CannotCreate;
    if (!target.value().isInside(*m_folder))
        return Failure::LeadsOutside;
    return std::move(target).value();
}
