#include "platform/monitoring/PackageTree.h"

#include "platform/FileURL.h"
#include "platform/monitoring/PathGuard.h"

#include <algorithm>
#include <sys/inotify.h>

namespace {

constexpr quint32 contentChanges =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB | IN_MODIFY | IN_CLOSE_WRITE;

constexpr int mostFoldersThroughLinks = 1000;
constexpr std::size_t mostLinks = 1000;

} // namespace

PackageTree::PackageTree(FolderEvents &events, const FolderMonitorOptions &options, std::function<void(Change)> changed)
    : m_events(events)
    , m_options(options)
    , m_changed(std::move(changed))
{ }

PackageTree::~PackageTree()
{
    for (const auto &folder : m_folders)
        m_events.release(folder.watch, *this);
}

void PackageTree::watch(const QByteArray &package)
{
    m_package = package;
    watchAll({{package, Reach::Inside}});
}

/// These and all below them, level by level.
void PackageTree::watchAll(Places places)
{
    for (std::size_t i = 0; i < places.size(); ++i) {
        const auto place = places[i]; // the list grows
        watchOne(place, places);
    }
}

void PackageTree::watchOne(const Place &folder, Places &places)
{
    const bool isThroughLink = folder.reach == Reach::ThroughLink;
    if (isThroughLink && m_foldersThroughLinks >= mostFoldersThroughLinks)
        return;
    // Watched before it is listed: what comes meanwhile is either in the list or an event.
    const auto [watch, isNew] = m_events.hold(folder.path, contentChanges, *this);
    if (!isNew)
        return;
    m_folders.push_back({watch, folder});
    m_foldersThroughLinks += isThroughLink ? 1 : 0;
    const auto entries = visibleEntries(folder.path);
    for (const auto &entry : entries) {
        if (entry.kind != FolderEntry::Kind::File && !isIgnored(entry.name))
            addEntry(pathByAppending(folder.path, entry.name), entry.kind, folder.reach, places);
    }
}

void PackageTree::addEntry(const QByteArray &path, FolderEntry::Kind kind, Reach reach, Places &places)
{
    if (kind == FolderEntry::Kind::Folder)
        places.push_back({path, reach});
    else if (kind == FolderEntry::Kind::Link)
        followLink(path, places);
}

void PackageTree::followLink(const QByteArray &link, Places &places)
{
    if (m_links.size() >= mostLinks)
        return;
    m_links.push_back(std::make_unique<PathGuard>(
        m_events, link, [this] { m_changed(Change::Links); }, PathGuard::Scope::FileContents));
    const auto target = resolvedPath(link);
    if (kindOfTarget(target) == FolderEntry::Kind::Folder && !isAroundPackage(target))
        places.push_back({target, Reach::ThroughLink});
}

bool PackageTree::isAroundPackage(const QByteArray &folder) const
{
    const auto package = pathByAppending(resolvedPath(m_package), "");
    return package.startsWith(pathByAppending(folder, ""));
}

void PackageTree::folderEvent(const InotifyEvent &event)
{
    if (event.mask & IN_IGNORED)
        return forget([&event](const Folder &folder) { return folder.watch == event.watch; });
    if (!(event.mask & contentChanges))
        return;
    m_changed(Change::Contents);
    const auto *const folder = placeOf(event.watch);
    const auto name = event.name.toByteArray();
    if (!folder || name.isEmpty() || isIgnored(name))
        return;
    const auto path = pathByAppending(folder->path, name);
    if ((event.mask & IN_ISDIR) && (event.mask & IN_MOVED_FROM))
        return forgetBelow(path);
    if (!(event.mask & (IN_CREATE | IN_MOVED_TO)))
        return;
    Places places;
    addEntry(path, kindOfEntry(path), folder->reach, places);
    watchAll(std::move(places));
}

/// Null for none of its folders.
const PackageTree::Place *PackageTree::placeOf(int watch) const
{
    const auto found = std::find_if(
        m_folders.begin(), m_folders.end(), [watch](const Folder &folder) { return folder.watch == watch; });
    return found == m_folders.end() ? nullptr : &found->place;
}

template <typename Matches>
void PackageTree::forget(const Matches &matches)
{
    std::erase_if(m_folders, [&](const Folder &folder) {
        if (!matches(folder))
            return false;
        m_events.release(folder.watch, *this);
        m_foldersThroughLinks -= folder.place.reach == Reach::ThroughLink ? 1 : 0;
        return true;
    });
}

/// What is moved away keeps its watches.
void PackageTree::forgetBelow(const QByteArray &folder)
{
    const auto inside = folder + '/';
    forget([&](const Folder &found) { return found.place.path == folder || found.place.path.startsWith(inside); });
}

bool PackageTree::isIgnored(const QByteArray &name) const
{
    return name.startsWith('.') || m_options.ignoredNames.contains(withoutExtension(name));
}
