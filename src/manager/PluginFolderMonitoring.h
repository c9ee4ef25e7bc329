#pragma once

#include "manager/FolderWalk.h"
#include "platform/monitoring/FolderWatch.h"
#include "platform/monitoring/KRFolderMonitor.h"

#include <QHash>
#include <QUrl>

#include <memory>
#include <vector>

/// The watches of the folders of one walk, each made before the walk lists its folder: what changes from then on is
/// told of by the monitors that take them over. Folders that cannot be watched have none.
class WalkWatches final : public FolderWalkObserver
{
public:
    explicit WalkWatches(const QStringList &ignoredNames);

    void willVisit(const QByteArray &folder, Arrival arrival) override;
    void foundBundle(const QByteArray &folder, const QByteArray &entry, const QByteArray &target) override;
    void foundLink(const QByteArray &folder, const QByteArray &entry) override;

    /// In the order of the walk.
    std::vector<std::unique_ptr<FolderWatch>> take() { return std::move(m_watches); }

private:
    FolderWatch *watchOf(const QByteArray &folder) const { return m_byFolder.value(folder); }

    FolderMonitorOptions m_options;
    std::vector<std::unique_ptr<FolderWatch>> m_watches;
    QHash<QByteArray, FolderWatch *> m_byFolder;
};

/// Watches the folders of the latest walk, with one monitor each. Main thread only.
class PluginFolderMonitoring
{
public:
    using Monitors = std::vector<std::unique_ptr<KRFolderMonitor>>;

    /// The monitors, all with the same callback, take the place of those before.
    void setUp(WalkWatches &watches, const std::function<void()> &changed);
    void setUp(const QSet<QUrl> &folders, const QStringList &ignoredNames, const std::function<void()> &changed);
    /// This object may end in it: a callback may hold its owner.
    void clear();

    const Monitors &monitors() const { return m_monitors; }

private:
    Monitors m_monitors;
};
