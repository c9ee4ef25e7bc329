#pragma once

#include "platform/FolderListing.h"
#include "platform/monitoring/FolderEvents.h"
#include "platform/monitoring/FolderMonitorOptions.h"

#include <memory>
#include <vector>

class PathGuard;

/// Watches a package all the way down, and new folders in it as they come. Links in it are followed, but for those that
/// lead to a folder around the package, and up to a thousand links and a thousand folders behind them, the near ones
/// first: one link must not watch a whole disk.
class PackageTree final : public FolderEventReceiver
{
public:
    enum class Change {
        Contents,
        /// Where links lead: what is behind them has to be watched anew, by a new tree.
        Links
    };

    /// The callback only takes note: this object outlives it.
    PackageTree(FolderEvents &events, const FolderMonitorOptions &options, std::function<void(Change)> changed);
    ~PackageTree();
    PackageTree(const PackageTree &) = delete;
    PackageTree &operator=(const PackageTree &) = delete;

    /// Once. What of it cannot be watched is left out.
    void watch(const QByteArray &package);

    void folderEvent(const InotifyEvent &event) override;
    void eventsLost() override { m_changed(Change::Contents); }

private:
    enum class Reach { Inside, ThroughLink };
    struct Place
    {
        QByteArray path;
        Reach reach;
    };
    using Places = std::vector<Place>;
    struct Folder
    {
        int watch;
        Place place;
    };

    void watchAll(Places places);
    void watchOne(const Place &folder, Places &places);
    void addEntry(const QByteArray &path, FolderEntry::Kind kind, Reach reach, Places &places);
    void followLink(const QByteArray &link, Places &places);
    bool isAroundPackage(const QByteArray &folder) const;
    const Place *placeOf(int watch) const;
    template <typename Matches>
    void forget(const Matches &matches);
    void forgetBelow(const QByteArray &folder);
    bool isIgnored(const QByteArray &name) const;

    FolderEvents &m_events;
    const FolderMonitorOptions &m_options;
    std::function<void(Change)> m_changed;
    QByteArray m_package;
    /// Most packages have few folders, and there may be thousands of packages: a list is cheapest.
    std::vector<Folder> m_folders;
    int m_foldersThroughLinks = 0;
    std::vector<std::unique_ptr<PathGuard>> m_links;
};
