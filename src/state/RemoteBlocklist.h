#pragma once

#include "state/BlocklistUpdate.h"

#include <QString>
#include <QUrl>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

class KRPluginManagingState;
class LTDownloadManager;

/// The vendor's list of versions that do not work: fetched, kept beside the application's other data when it differs,
/// and put into the state store. Failures are silent and leave everything as it was.
///
/// Made, used and destroyed on the main thread; it works on the network thread. Once it is destroyed, nothing of it
/// runs.
class RemoteBlocklist
{
public:
    /// Registers the versions of a new list, on the network thread; how many plug-ins it newly disables.
    using RegisterVersions = std::function<unsigned()>;

    /// `state` may be null.
    RemoteBlocklist(std::shared_ptr<KRPluginManagingState> state, RegisterVersions registerVersions);
    /// Gives up what still runs, and waits for what cannot be.
    ~RemoteBlocklist();
    RemoteBlocklist(const RemoteBlocklist &) = delete;
    RemoteBlocklist &operator=(const RemoteBlocklist &) = delete;

    /// Starts a download and returns at once. `completionHandler` may be empty.
    void download(BlocklistUpdateHandler completionHandler);

private:
    struct Download
    {
        std::unique_ptr<LTDownloadManager> manager;
        std::shared_ptr<std::atomic<bool>> hasEnded;
    };

    std::shared_ptr<KRPluginManagingState> m_state;
    RegisterVersions m_registerVersions;
    std::vector<Download> m_downloads;
};

/// Where the list for this application and machine lies, as text.
QString remoteBlocklistURL();

/// Whether two files hold the same text; two that cannot be read do. Reads both as a whole. Reentrant.
bool holdSameText(const QUrl &first, const QUrl &second);
