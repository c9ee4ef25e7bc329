#include "platform/monitoring/PathGuard.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"

#include <climits>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

constexpr quint32 comingAndGoing = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
constexpr quint32 endOfFolder = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;

/// Empty for what is no link.
QByteArray linkText(const QByteArray &path)
{
    char text[PATH_MAX];
    const auto size = ::readlink(path.constData(), text, sizeof text);
    return size <= 0 ? QByteArray() : QByteArray(text, size);
}

/// The longest beginning of the path that leads somewhere.
QByteArray existingPart(QByteArray path)
{
    while (path.size() > 1 && !itemExists(path))
        path = pathWithoutLastComponent(path);
    return path;
}

} // namespace

PathGuard::PathGuard(FolderEvents &events, const QByteArray &path, std::function<void()> pathMayHaveChanged)
    : m_events(events)
    , m_path(path)
    , m_pathMayHaveChanged(std::move(pathMayHaveChanged))
{
    watchNearestFolder();
}

PathGuard::~PathGuard()
{
    m_events.release(m_watch, *this);
}

void PathGuard::watchNearestFolder()
{
    // What is waited for may come before its folder is watched; it may also be a folder that cannot be watched.
    constexpr int enoughTries = 10;
    for (int i = 0; i < enoughTries; ++i) {
        m_events.release(std::exchange(m_watch, -1), *this);
        climb();
        if (m_watch < 0 || m_awaited == m_path || kindOfTarget(m_awaited) != FolderEntry::Kind::Folder)
            return;
    }
}

void PathGuard::climb()
{
    m_awaited = m_path;
    while (m_awaited.size() > 1) {
        const auto folder = pathWithoutLastComponent(m_awaited);
        m_watch = m_events.hold(folder, comingAndGoing | IN_DELETE_SELF | IN_MOVE_SELF, *this).watch;
        if (m_watch >= 0)
            return;
        m_awaited = folder;
    }
}

void PathGuard::folderEvent(const InotifyEvent &event)
{
    const bool isAwaited = (event.mask & comingAndGoing) && event.name == lastPathComponent(m_awaited);
    if (isAwaited || (event.mask & endOfFolder))
        m_pathMayHaveChanged();
}

QByteArray missingTargetOf(const QByteArray &path)
{
    constexpr int mostLinks = 40; // as the system has it
    auto target = path;
    for (int i = 0; i < mostLinks; ++i) {
        const auto existing = existingPart(target);
        const auto resolved = resolvedPath(existing);
        if (existing == target)
            return resolved;
        const auto rest = target.mid(existing.size() + (existing.endsWith('/') ? 0 : 1));
        const auto slash = rest.indexOf('/');
        const auto missing = pathByAppending(resolved, slash < 0 ? rest : rest.left(slash));
        const auto link = linkText(missing);
        if (link.isEmpty())
            return pathByAppending(resolved, rest);
        auto next = link.startsWith('/') ? link : pathByAppending(resolved, link);
        if (slash >= 0)
            next = pathByAppending(next, QByteArrayView(rest).sliced(slash + 1));
        target = next;
    }
    return path;
}
