#pragma once

#include "platform/Export.h"
#include "platform/monitoring/FolderMonitorOptions.h"

#include <QUrl>

#include <functional>
#include <memory>

class FolderWatch;

/// Watches a folder for as long as it lives. Main thread only; needs a running event loop.
///
/// The callback comes on the main thread, when the folder has been quiet for 100 ms and at most a second after the
/// first change; the changes of all folders wait together, so that copying files into many of them is told of once. It
/// comes for every change of the folder's entries (one comes, goes, is renamed, gets other permissions), inside of
/// packages (see FolderMonitorOptions) also for every write into a file, behind links in them too. When it comes, all
/// of this can be read on disk: what is written after it has come is told of again.
///
/// A folder that is deleted or renamed is waited for, and so is one that does not exist yet; its coming is a change. So
/// is the renaming of a folder above it, or of a link on the way to it, if the user may read what these lie in.
/// Mounting something onto it is not noticed.
class KORVAN_EXPORT KRFolderMonitor final
{
public:
    /// Null when the URL is none of a local file, the path leads to something that is no folder or cannot be read, and
    /// when the system has no watches left; of a package, what the watches do not suffice for is left out. The callback
    /// may destroy any monitor, this one and itself included; it is never called from inside of this function.
    static std::unique_ptr<KRFolderMonitor> initWithURL(const QUrl &url, std::function<void()> contentsChangedBlock,
        const FolderMonitorOptions &options = FolderMonitorOptions());
    /// Goes on with a watch that was made before its folder was listed: changes since then are told of. Not null.
    KRFolderMonitor(std::unique_ptr<FolderWatch> watch, std::function<void()> contentsChangedBlock);
    /// The callback is not called any more.
    ~KRFolderMonitor();
    KRFolderMonitor(const KRFolderMonitor &) = delete;
    KRFolderMonitor &operator=(const KRFolderMonitor &) = delete;

private:
    std::unique_ptr<FolderWatch> m_watch;
};
