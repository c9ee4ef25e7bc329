#pragma once

#include "platform/monitoring/FolderEvents.h"
#include "platform/monitoring/FolderMonitorOptions.h"

#include <vector>

/// Watches a folder all the way down, and new folders in it as they come. Links in it are not followed.
class PackageTree final : public FolderEventReceiver
{
public:
    PackageTree(FolderEvents &events, const FolderMonitorOptions &options, std::function<void()> contentsChanged);
    ~PackageTree();
    PackageTree(const PackageTree &) = delete;
    PackageTree &operator=(const PackageTree &) = delete;

    /// What of it cannot be watched is left out.
    void watch(const QByteArray &folder);

    void folderEvent(const InotifyEvent &event) override;
    void eventsLost() override { m_contentsChanged(); }

private:
    struct Folder
    {
        int watch;
        QByteArray path;
    };

    void watchOne(const QByteArray &folder, std::vector<QByteArray> &subfolders);
    QByteArray pathOf(int watch) const;
    void forgetBelow(const QByteArray &folder);
    bool isIgnored(const QByteArray &name) const;

    FolderEvents &m_events;
    const FolderMonitorOptions &m_options;
    std::function<void()> m_contentsChanged;
    /// Most packages have few folders, and there may be thousands of packages: a list is cheapest.
    std::vector<Folder> m_folders;
};
