#pragma once

#include "platform/Export.h"
#include "updates/KRPluginUpdater.h"
#include "updates/PluginDownloadProgress.h"

#include <QByteArray>

#include <atomic>
#include <memory>

class LTDownloadManager;
class UpdaterState;
class UpdatingInfo;

/// The framework's own updater: feeds and archives over HTTP(S), zip archives. Thread-safe, but for
/// downloadPluginUpdatingInfo().
///
/// It may end while it works. Feeds are then still handed over, without versions, and their check has no end; archives
/// go on.
class KORVAN_EXPORT KRPluginUpdaterImplementation final : public KRPluginUpdater
{
public:
    /// A larger archive is refused while it is downloaded, in bytes.
    static constexpr qint64 largestArchive = 1024 * 1024 * 1024;

    KRPluginUpdaterImplementation();
    ~KRPluginUpdaterImplementation() override;

    /// Fetches a feed; a server that is silent for two seconds has failed. The handler gets the data as it came,
    /// whatever the server's status, and the error of the transfer. Called on the network thread.
    static void downloadUpdatingInfoAtURL(const QUrl &url,
        std::function<void(const QByteArray &data, const std::optional<KRError> &error)> completionHandler);
    /// The one version of a feed.
    static VersionsDictionary versionsDictionaryFromUpdatingInfo(const UpdatingInfo &updatingInfo);

    void downloadPluginUpdatingInfo(const PluginTable &plugins, UpdatingInfoHandler downloadUpdatingInfoHandler,
        std::function<void()> completionHandler) override;
    void downloadPlugins(const UpdateList &updates, PluginDownloadHandler downloadPluginHandler,
        std::function<void()> completionHandler) override;
    /// Sets the status to 1, at which it stays; cancelDownloadingPluginVersions() does not reach this download. Hosts
    /// know it so.
    void downloadPluginFromURL(const QUrl &url, PluginFileHandler completionHandler) override;
    void cancelDownloadingPluginVersions() override;
    bool decompressPluginZip(const QUrl &zip, const QUrl &toFolder, KRError *error = nullptr) override;

    /// 0 before the first check of feeds, 1 during one, 3 from the end of one on.
    int downloadingUpdatingInfoStatus() const;
    void setDownloadingUpdatingInfoStatus(int status);
    /// 0 while idle, 1 while downloading; 3 after cancelDownloadingPluginVersions(), and while the end of a batch is
    /// told.
    int downloadingPluginVersionsStatus() const;
    void setDownloadingPluginVersionsStatus(int status);
    /// Of the batch that runs; null when none does.
    std::shared_ptr<LTDownloadManager> pluginDownloader() const;

    /// Hears how the downloads that begin from now on get on; empty for none.
    void setProgressHandler(PluginDownloadProgressHandler progressHandler);

private:
    std::shared_ptr<UpdaterState> m_state;
    std::shared_ptr<std::atomic<int>> m_updatingInfoStatus;
};
