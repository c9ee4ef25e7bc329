#include "platform/monitoring/PackageTree.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"

#include <algorithm>
#include <sys/inotify.h>

namespace {

constexpr quint32 contentChanges =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | IN_MODIFY | IN_CLOSE_WRITE;

} // namespace

PackageTree::PackageTree(
    FolderEvents &events, const FolderMonitorOptions &options, std::function<void()> contentsChanged)
    : m_events(events)
    , m_options(options)
    , m_contentsChanged(std::move(contentsChanged))
{ }

PackageTree::~PackageTree()
{
    for (const auto &folder : m_folders)
        m_events.release(folder.watch, *this);
}

void PackageTree::watch(const QByteArray &folder)
{
    std::vector<QByteArray> pending{folder};
    while (!pending.empty()) {
        const auto next = std::move(pending.back());
        pending.pop_back();
        watchOne(next, pending);
    }
}

void PackageTree::watchOne(const QByteArray &folder, std::vector<QByteArray> &subfolders)
{
    // Watched before it is listed: what comes meanwhile is either in the list or an event.
    const auto [watch, isNew] = m_events.hold(folder, contentChanges, *this);
    if (!isNew)
        return;
    m_folders.push_back({watch, folder});
    const auto entries = visibleEntries(folder);
    for (const auto &entry : entries) {
        if (entry.kind == FolderEntry::Kind::Folder && !isIgnored(entry.name))
            subfolders.push_back(pathByAppending(folder, entry.name));
    }
}

void PackageTree::folderEvent(const InotifyEvent &event)
{
    if (event.mask & IN_IGNORED) {
        std::erase_if(m_folders, [&event](const Folder &folder) { return folder.watch == event.watch; });
        return;
    }
    if (!(event.mask & contentChanges))
        return;
    m_contentsChanged();
    if (!(event.mask & IN_ISDIR) || event.name.isEmpty())
        return;
    const auto folder = pathByAppending(pathOf(event.watch), event.name);
    if (event.mask & IN_MOVED_FROM)
        forgetBelow(folder);
    else if ((event.mask & (IN_CREATE | IN_MOVED_TO)) && !isIgnored(event.name.toByteArray()))
        watch(folder);
}

QByteArray PackageTree::pathOf(int watch) const
{
    const auto found = std::find_if(
        m_folders.begin(), m_folders.end(), [watch](const Folder &folder) { return folder.watch == watch; });
    return found == m_folders.end() ? QByteArray() : found->path;
}

/// What is moved away keeps its watches.
void PackageTree::forgetBelow(const QByteArray &folder)
{
    const auto inside = folder + '/';
    std::erase_if(m_folders, [&](const Folder &found) {
        if (found.path != folder && !found.path.startsWith(inside))
            return false;
        m_events.release(found.watch, *this);
        return true;
    });
}

bool PackageTree::isIgnored(const QByteArray &name) const
{
    return name.startsWith('.') || m_options.ignoredNames.contains(withoutExtension(name));
}
