#pragma once

#include "platform/monitoring/ChangeDelivery.h"
#include "platform/monitoring/FolderEvents.h"
#include "platform/monitoring/FolderMonitorOptions.h"

#include <unordered_map>

struct FolderEntry;
class PackageTree;
class PathGuard;

/// What a folder monitor consists of: it watches a folder from its making on, and tells of the changes since then once
/// it is started. Who lists the folder anyway makes it just before, hands over what is found, and starts it when done:
/// then no change is lost, and nothing is listed twice. Main thread only.
class FolderWatch final : public FolderEventReceiver, private ChangeDelivery::Recipient
{
public:
    enum class Place {
        /// Its parent is watched too, and so tells of its coming and going.
        InWatchedFolder,
        /// Its coming and going is watched here.
        Anywhere
    };

    /// Does not list the folder yet. Null when the path cannot be watched: it leads to something that is no folder, the
    /// system has no watches left, or there is nothing there and `place` is a watched folder.
    static std::unique_ptr<FolderWatch> make(const QByteArray &path, const FolderMonitorOptions &options, Place place);
    ~FolderWatch();
    FolderWatch(const FolderWatch &) = delete;
    FolderWatch &operator=(const FolderWatch &) = delete;

    /// A link that was found: where it leads may change on the way, and something may come there. Called before it is
    /// looked at where that is.
    void addLink(const QByteArray &entry);
    /// A package that was found under the name `entry` (a path), and where it is after all links.
    void addPackage(const QByteArray &entry, const QByteArray &target);
    /// Lists the folder for both.
    void findPackages();

    /// Calls back when something has changed since the making or the latest call. The callback may end this object.
    void start(std::function<void()> contentsChanged);

    void folderEvent(const InotifyEvent &event) override;
    void eventsLost() override;

private:
    struct Entry
    {
        /// Of a link.
        std::unique_ptr<PathGuard> guard;
        /// Of a package.
        std::unique_ptr<PackageTree> tree;
    };

    FolderWatch(std::shared_ptr<FolderEvents> events, const QByteArray &path, const FolderMonitorOptions &options);
    bool watchFolder();
    void guardPath();
    void addEntry(const FolderEntry &entry);
    void followEntry(const InotifyEvent &event);

    void changed();
    void changedFromGround();
    void notePossibleChange();
    void lookAgain() override;
    void tell() override;

    std::shared_ptr<FolderEvents> m_events;
    QByteArray m_path;
    FolderMonitorOptions m_options;
    ChangeDelivery::Number m_number;
    std::function<void()> m_contentsChanged;
    int m_watch = -1;
    bool m_hasChanged = false;
    bool m_mustLookAgain = false;
    std::unique_ptr<PathGuard> m_guard;
    /// The packages and links in the folder, by their path.
    std::unordered_map<QByteArray, Entry> m_entries;
};
