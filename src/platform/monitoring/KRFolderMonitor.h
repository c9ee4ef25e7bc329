#pragma once

#include "platform/Export.h"
#include "platform/monitoring/FolderMonitorOptions.h"

#include <QByteArray>
#include <QUrl>

#include <functional>
#include <memory>

class FolderWatch;

/// Watches one folder for as long as it lives. Main thread only; needs its event loop.
///
/// Its block is called after entries of the folder came, went or changed their attributes, and after anything changed
/// in the packages that its options name; once for many changes that follow each other closely. It may destroy this
/// monitor and any other. Changes below other sub-folders are not reported.
///
/// A folder that is deleted or moved away is waited for: its coming back is a change. So is a folder that does not
/// exist yet.
class KORVAN_EXPORT KRFolderMonitor
{
public:
    /// `initWithURL:contentsChangedBlock:`. Null when the folder cannot be watched: there is something else in its
    /// place, it cannot be read, or the system has no watches to spare.
    static std::unique_ptr<KRFolderMonitor> initWithURL(
        const QUrl &url, std::function<void()> contentsChangedBlock, const FolderMonitorOptions &options = {});
    ~KRFolderMonitor();
    KRFolderMonitor(const KRFolderMonitor &) = delete;
    KRFolderMonitor &operator=(const KRFolderMonitor &) = delete;

    /// The same by the folder's path, with a block that many monitors share.
    static std::unique_ptr<KRFolderMonitor> initWithPath(const QByteArray &path,
        const std::shared_ptr<const std::function<void()>> &contentsChangedBlock, const FolderMonitorOptions &options);

    /// Ends in "/".
    QUrl url() const;

private:
    explicit KRFolderMonitor(std::shared_ptr<FolderWatch> watch);

    std::shared_ptr<FolderWatch> m_watch;
};
