#pragma once

#include "platform/FolderEvents.h"
#include "platform/FolderMonitorOptions.h"

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
    void watchOne(const QByteArray &folder, std::vector<QByteArray> &subfolders);
    void forgetBelow(const QByteArray &folder);
    bool isIgnored(const QByteArray &name) const;

    FolderEvents &m_events;
    const FolderMonitorOptions &m_options;
    std::function<void()> m_contentsChanged;
    /// The path of each watch.
    QHash<int, QByteArray> m_folders;
};
