#include "platform/monitoring/FolderWatch.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/monitoring/PackageTree.h"
#include "platform/monitoring/PathGuard.h"

#include <sys/inotify.h>

namespace {

constexpr quint32 entryChanges = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ATTRIB;
constexpr quint32 endOfFolder = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;

} // namespace

std::unique_ptr<FolderWatch> FolderWatch::make(const QByteArray &path, const FolderMonitorOptions &options, Place place)
{
    auto events = path.startsWith('/') && !path.contains('\0') ? FolderEvents::shared() : nullptr;
    if (!events)
        return nullptr;
    std::unique_ptr<FolderWatch> watch(new FolderWatch(std::move(events), path, options));
    if (place == Place::Anywhere)
        watch->guardPath(); // before the folder: it may come or go in between
    if (watch->watchFolder())
        return watch;
    const bool mayCome = watch->m_guard && watch->m_guard->isWatching() && !itemExists(path);
    return mayCome ? std::move(watch) : nullptr;
}

FolderWatch::FolderWatch(
    std::shared_ptr<FolderEvents> events, const QByteArray &path, const FolderMonitorOptions &options)
    : m_events(std::move(events))
    , m_path(path)
    , m_options(options)
    , m_number(m_events->delivery().nextNumber())
{ }

FolderWatch::~FolderWatch()
{
    m_events->delivery().forget(m_number);
    m_events->release(m_watch, *this);
}

bool FolderWatch::watchFolder()
{
    const int watch = m_events->hold(m_path, entryChanges | IN_DELETE_SELF | IN_MOVE_SELF, *this).watch;
    if (watch != m_watch)
        m_events->release(m_watch, *this); // another folder is there now
    m_watch = watch;
    return m_watch >= 0;
}

void FolderWatch::guardPath()
{
    m_guard = std::make_unique<PathGuard>(*m_events, m_path, [this] {
        if (m_watch >= 0)
            m_hasChanged = true; // else the change is that the folder comes, if it does
        m_mustLookAgain = true;
        notePossibleChange();
    });
}

void FolderWatch::addLink(const QByteArray &entry)
{
    auto guard = std::make_unique<PathGuard>(*m_events, entry, [this] { changedFromGround(); });
    if (kindOfTarget(entry) != FolderEntry::Kind::File) // which holds no package
        m_entries[entry].guard = std::move(guard);
}

void FolderWatch::addPackage(const QByteArray &entry, const QByteArray &target)
{
    auto tree = std::make_unique<PackageTree>(*m_events, m_options, [this](PackageTree::Change change) {
        if (change == PackageTree::Change::Links)
            changedFromGround();
        else
            changed();
    });
    tree->watch(target);
    m_entries[entry].tree = std::move(tree);
}

void FolderWatch::findPackages()
{
    // The old ones go after the new ones have come: what both hold stays watched.
    const auto previous = std::exchange(m_entries, {});
    if (m_options.packageExtension.isEmpty() || m_watch < 0)
        return;
    const auto entries = visibleEntries(m_path);
    for (const auto &entry : entries) {
        if (entry.kind == FolderEntry::Kind::Folder || entry.kind == FolderEntry::Kind::Link)
            addEntry(entry);
    }
}

void FolderWatch::addEntry(const FolderEntry &entry)
{
    const auto path = pathByAppending(m_path, entry.name);
    if (entry.kind == FolderEntry::Kind::Link)
        addLink(path);
    const auto target = targetOf(m_path, entry);
    if (target.kind == FolderEntry::Kind::Folder && hasExtension(target.path, m_options.packageExtension))
        addPackage(path, target.path);
}

void FolderWatch::start(std::function<void()> contentsChanged)
{
    m_contentsChanged = std::move(contentsChanged);
    if (m_hasChanged || m_mustLookAgain)
        notePossibleChange();
}

void FolderWatch::folderEvent(const InotifyEvent &event)
{
    if (event.mask & IN_IGNORED)
        m_watch = -1;
    if (event.mask & endOfFolder) {
        changedFromGround();
    } else if (event.mask & entryChanges) {
        changed();
        followEntry(event);
    }
}

void FolderWatch::eventsLost()
{
    changedFromGround();
}

void FolderWatch::followEntry(const InotifyEvent &event)
{
    if (m_options.packageExtension.isEmpty() || event.name.isEmpty() || event.name.startsWith('.'))
        return;
    const auto name = event.name.toByteArray();
    const auto path = pathByAppending(m_path, name);
    if (event.mask & (IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO))
        m_entries.erase(path);
    if (event.mask & (IN_CREATE | IN_MOVED_TO))
        addEntry({name, kindOfEntry(path)});
}

void FolderWatch::changed()
{
    m_hasChanged = true;
    notePossibleChange();
}

void FolderWatch::changedFromGround()
{
    m_mustLookAgain = true;
    changed();
}

void FolderWatch::notePossibleChange()
{
    if (m_contentsChanged)
        m_events->delivery().noteChange(m_number, *this);
}

void FolderWatch::lookAgain()
{
    if (!std::exchange(m_mustLookAgain, false))
        return;
    const bool wasThere = m_watch >= 0;
    guardPath();
    if (watchFolder() && !wasThere)
        m_hasChanged = true;
    findPackages();
}

void FolderWatch::tell()
{
    if (!std::exchange(m_hasChanged, false))
        return;
    const auto contentsChanged = m_contentsChanged; // which may end this object
    contentsChanged();
}
