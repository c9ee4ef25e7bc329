#pragma once

#include "platform/Export.h"
#include "updates/KRPluginUpdaterImplementation.h"

#include <QList>

#include <mutex>

/// The framework's updater, which also remembers what fails in batches: the manager forgets it before a host can ask.
/// Threads as for KRPluginUpdaterImplementation.
class KORVAN_EXPORT ReportingUpdater final : public KRPluginUpdater
{
public:
    void downloadPluginUpdatingInfo(const PluginTable &plugins, UpdatingInfoHandler downloadUpdatingInfoHandler,
        std::function<void()> completionHandler) override;
    void downloadPlugins(const UpdateList &updates, PluginDownloadHandler downloadPluginHandler,
        std::function<void()> completionHandler) override;
    void downloadPluginFromURL(const QUrl &url, PluginFileHandler completionHandler) override;
    void cancelDownloadingPluginVersions() override;
    bool decompressPluginZip(const QUrl &zip, const QUrl &toFolder, KRError *error = nullptr) override;

    /// Of all batches until now, or since the latest takeErrors(), in the order in which they came. Any thread.
    QList<KRError> errors() const;
    /// The same, and forgets them. Any thread.
    QList<KRError> takeErrors();
    /// Hears how the downloads that begin from now on get on; empty for none. Any thread.
    void setProgressHandler(PluginDownloadProgressHandler handler);

private:
    void add(const KRError &error);

    KRPluginUpdaterImplementation m_updater;
    mutable std::mutex m_mutex;
    QList<KRError> m_errors;
    /// On the network thread.
    bool m_isUnpackingBatch = false;
};
