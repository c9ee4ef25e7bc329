#pragma once

#include "platform/monitoring/FolderEvents.h"

/// Hears when something comes to a path or goes from it: watches the folder that the path is in or, if that is missing,
/// the nearest one above that exists. Good for one change: whoever hears of it looks again, and guards the path anew.
class PathGuard final : public FolderEventReceiver
{
public:
    PathGuard(FolderEvents &events, const QByteArray &path, std::function<void()> pathMayHaveChanged);
    ~PathGuard();
    PathGuard(const PathGuard &) = delete;
    PathGuard &operator=(const PathGuard &) = delete;

    /// False when no folder above can be watched either.
    bool isWatching() const { return m_watch >= 0; }

    void folderEvent(const InotifyEvent &event) override;
    void eventsLost() override { m_pathMayHaveChanged(); }

private:
    void watchNearestFolder();
    void climb();

    FolderEvents &m_events;
    QByteArray m_path;
    std::function<void()> m_pathMayHaveChanged;
    int m_watch = -1;
    /// The path up to and with the component that is waited for.
    QByteArray m_awaited;
};

/// The path at which something has to come into being before a path leads anywhere: links in it are followed as far as
/// they lead, also one that itself leads nowhere.
QByteArray missingTargetOf(const QByteArray &path);
