#pragma once

#include "manager/FolderWalk.h"
#include "platform/monitoring/FolderMonitorOptions.h"

#include <QByteArray>

#include <memory>
#include <vector>

class FolderWatch;
class FolderWatchHub;

/// Lets a walk and what follows it lose no change: each folder is watched from right before it is read, and the
/// monitors that are made for it while this lives take those watches over. Until the end no changes are told. Main
/// thread only.
class MonitoredWalk final : public FolderWalkObserver
{
public:
    explicit MonitoredWalk(const FolderMonitorOptions &options);
    ~MonitoredWalk() override;
    MonitoredWalk(const MonitoredWalk &) = delete;
    MonitoredWalk &operator=(const MonitoredWalk &) = delete;

    void willVisit(const QByteArray &folder) override;
    void didFindBundle(const QByteArray &bundle, const QByteArray &inFolder) override;

private:
    FolderMonitorOptions m_options;
    /// Null when the system has no watches to spare.
    std::shared_ptr<FolderWatchHub> m_hub;
    std::vector<std::shared_ptr<FolderWatch>> m_watches;
};
