#include "platform/monitoring/PathGuard.h"

#include "platform/FileURL.h"

#include <algorithm>
#include <sys/inotify.h>

namespace {

constexpr quint32 comingAndGoing = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
constexpr quint32 contentChanges = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB;
constexpr quint32 endOfFolder = IN_DELETE_SELF | IN_UNMOUNT | IN_IGNORED;

/// What is asked for of a point's folder, and is of interest if it is about the point.
quint32 changesIn(PathGuard::Scope scope)
{
    return scope == PathGuard::Scope::FileContents ? comingAndGoing | contentChanges : comingAndGoing;
}

} // namespace

PathGuard::PathGuard(
    FolderEvents &events, const QByteArray &path, std::function<void()> pathMayHaveChanged, Scope scope)
    : m_events(events)
    , m_foldersAbove(FoldersAbove::shared(events))
    , m_scope(scope)
    , m_pathMayHaveChanged(std::move(pathMayHaveChanged))
{
    // The path may come to lead elsewhere before the way to it is watched.
    constexpr int enoughTries = 10;
    auto route = routeOf(path);
    for (int i = 0; i < enoughTries; ++i) {
        guard(route);
        auto current = routeOf(path);
        if (current == route)
            return;
        route = std::move(current);
    }
}

PathGuard::~PathGuard()
{
    release();
}

void PathGuard::guard(const std::vector<RoutePoint> &route)
{
    release();
    m_isWatching = false;
    for (const auto &point : route)
        m_isWatching = hold(point);
    if (!m_isWatching && !route.empty())
        m_isWatching = holdAbove(route.back());
    for (const auto &point : m_points)
        m_foldersAbove->hold(point.folder, *this);
}

bool PathGuard::hold(const RoutePoint &point)
{
    const int watch = m_events.hold(point.folder, changesIn(m_scope) | IN_DELETE_SELF, *this).watch;
    if (watch >= 0)
        m_points.push_back({watch, point.folder, point.name});
    return watch >= 0;
}

/// Where a folder cannot be watched, what happens to the folder itself is better than nothing.
bool PathGuard::holdAbove(RoutePoint point)
{
    while (point.folder != "/") {
        point = {pathWithoutLastComponent(point.folder), lastPathComponent(point.folder)};
        if (hold(point))
            return true;
    }
    return false;
}

void PathGuard::release()
{
    const auto points = std::exchange(m_points, {});
    for (auto point = points.begin(); point != points.end(); ++point) {
        const auto isSame = [point](const Point &other) { return other.watch == point->watch; };
        if (std::none_of(points.begin(), point, isSame))
            m_events.release(point->watch, *this);
        m_foldersAbove->release(point->folder, *this);
    }
}

void PathGuard::folderEvent(const InotifyEvent &event)
{
    const bool isChange = event.mask & changesIn(m_scope);
    const bool isOfThePath = isChange && std::any_of(m_points.begin(), m_points.end(), [&](const Point &point) {
        return point.watch == event.watch && event.name == point.name;
    });
    if (isOfThePath || (event.mask & endOfFolder))
        m_pathMayHaveChanged();
}
