#pragma once

#include "platform/monitoring/FolderMonitorOptions.h"
#include "platform/monitoring/Inotify.h"

#include <QByteArray>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class FolderWatch;

/// What a watched folder is to a watch.
enum class WatchedRole { Folder, Package, Ancestor };

/// What a watch asks of whoever keeps the kernel's numbers of folders.
class FolderNumbers
{
public:
    virtual ~FolderNumbers();

    /// Watches a folder for `owner`. Nil, with the system's error number, when it cannot be watched.
    virtual std::optional<int> watch(
        const QByteArray &folder, FolderWatch &owner, WatchedRole role, int *error = nullptr) = 0;
    /// The number of the folder at a path that is watched already.
    virtual std::optional<int> numberOf(const QByteArray &folder) = 0;
    /// `owner` watches it no more.
    virtual void forget(int number, const FolderWatch &owner) = 0;
    virtual void noteChange(const std::weak_ptr<FolderWatch> &watch) = 0;
    /// The watch ends with this call.
    virtual void noteEnd(const FolderWatch &watch) = 0;
};

/// One watched path and whoever wants to hear of it. Its folder may come and go: while there is none, the nearest
/// folder above it is watched for its coming. Main thread only.
class FolderWatch : public std::enable_shared_from_this<FolderWatch>
{
public:
    using Callback = std::function<void()>;

    FolderWatch(std::shared_ptr<FolderNumbers> numbers, const QByteArray &path, const FolderMonitorOptions &options);
    ~FolderWatch();
    FolderWatch(const FolderWatch &) = delete;
    FolderWatch &operator=(const FolderWatch &) = delete;

    const QByteArray &path() const { return m_path; }
    const FolderMonitorOptions &options() const { return m_options; }

    /// Watches what lies at the path now, without its packages. False when it cannot be watched.
    bool arm();
    /// Makes sure that what is watched is what lies at the path now. False when that cannot be watched.
    bool verify();
    /// Watches a package with everything in it. Nothing for one that is watched already.
    void addPackage(const QByteArray &package);
    /// Finds the packages in the folder and watches them.
    void addPackages();
    /// Anew from what is on disk, after changes were lost.
    void rearm();

    /// Calls back after changes until `subscriber`, which is only compared by address, is unsubscribed.
    void subscribe(const void *subscriber, const std::shared_ptr<const Callback> &callback);
    void unsubscribe(const void *subscriber);
    std::vector<const void *> subscribers() const;
    /// Null for somebody who is not subscribed any more.
    std::shared_ptr<const Callback> callbackOf(const void *subscriber) const;

    bool hasChanged() const { return m_hasChanged; }
    void markUnchanged() { m_hasChanged = false; }

    using Role = WatchedRole;
    void handle(Role role, const QByteArray &folder, const Inotify::Event &event);

private:
    struct Subscription
    {
        const void *subscriber;
        std::shared_ptr<const Callback> callback;
    };

    void changed();
    bool armFolder(int *error);
    bool armAncestor();
    void disarm();
    void handleInFolder(const Inotify::Event &event);
    void handleInPackage(const QByteArray &folder, const Inotify::Event &event);
    void handleInAncestor(const QByteArray &ancestor, const Inotify::Event &event);
    void addPackageEntry(const QByteArray &name);
    void addTree(const QByteArray &folder);
    void removeTree(const QByteArray &folder);
    bool isLookedInto(const QByteArray &name) const;

    std::shared_ptr<FolderNumbers> m_numbers;
    QByteArray m_path;
    FolderMonitorOptions m_options;
    /// The kernel's number of the folder, or of the folder above that is watched in its place; nil when disarmed.
    std::optional<int> m_number;
    bool m_isFolderThere = false;
    /// The folders of packages, with their numbers.
    std::map<QByteArray, int> m_packageFolders;
    std::vector<Subscription> m_subscriptions;
    bool m_hasChanged = false;
};
