#pragma once

#include "platform/monitoring/FoldersAbove.h"
#include "platform/monitoring/PathRoute.h"

#include <vector>

/// Hears when a path leads elsewhere: when a link on the way to its end changes, its end comes or goes, or a
/// folder on the way is moved. While the
/// path leads nowhere, the component at which it ends is waited for. Good for one change: whoever hears of it looks
/// again, and guards the path anew.
class PathGuard final : public FolderEventReceiver, private FoldersAbove::Listener
{
public:
    enum class Scope {
        /// Where the path leads.
        Place,
        /// What is in the file that it leads to, too.
        FileContents
    };

    PathGuard(FolderEvents &events, const QByteArray &path, std::function<void()> pathMayHaveChanged,
        Scope scope = Scope::Place);
    ~PathGuard();
    PathGuard(const PathGuard &) = delete;
    PathGuard &operator=(const PathGuard &) = delete;

    /// False when neither the folder at the end of the way nor any above it can be watched.
    bool isWatching() const { return m_isWatching; }

    void folderEvent(const InotifyEvent &event) override;
    void eventsLost() override { m_pathMayHaveChanged(); }

private:
    struct Point
    {
        int watch;
        QByteArray folder;
        QByteArray name;
    };

    void folderAboveMoved() override { m_pathMayHaveChanged(); }

    void guard(const std::vector<RoutePoint> &route);
    bool hold(const RoutePoint &point);
    bool holdAbove(RoutePoint point);
    void release();

    FolderEvents &m_events;
    std::shared_ptr<FoldersAbove> m_foldersAbove;
    Scope m_scope;
    std::function<void()> m_pathMayHaveChanged;
    bool m_isWatching = false;
    std::vector<Point> m_points;
};
