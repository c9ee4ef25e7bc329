#include "updates/KRPluginUpdaterImplementation.h"

#include "platform/network/LTDownloadManager.h"
#include "updates/ArchiveExtraction.h"
#include "updates/DownloadProgress.h"
#include "updates/FeedCheck.h"
#include "updates/UpdaterState.h"
#include "updates/UpdatingInfo.h"

namespace {

enum Status { Idle = 0, Running = 1, Finished = 3 };

PluginTable pluginsWithFeed(const PluginTable &plugins)
{
    PluginTable found;
    for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin) {
        if (!plugin.value()->updatingInfoURL().isEmpty())
            found.insert(found.end(), plugin.key(), plugin.value());
    }
    return found;
}

SessionConfiguration archiveConfiguration()
{
    auto configuration = SessionConfiguration::defaultSessionConfiguration();
    configuration.maximumSize = KRPluginUpdaterImplementation::largestArchive;
    return configuration;
}

/// Null when nobody listens.
std::shared_ptr<DownloadProgress> progressFor(const UpdaterState &state)
{
    auto handler = state.progressHandler();
    return handler ? std::make_shared<DownloadProgress>(std::move(handler)) : nullptr;
}

QString addTask(LTDownloadManager &downloader, DownloadProgress *progress, const QString &identifier,
    const QString &version, const QUrl &url, PluginFileHandler handler)
{
    const auto task = downloader.addDownloadTaskWithDownloadRequest({url, std::nullopt},
        [handler = std::move(handler)](
            const QUrl &file, const URLResponse &, const std::optional<KRError> &error) { handler(error, file); });
    if (progress)
        progress->taskAdded(task, identifier, version, url);
    return task;
}

void addTasks(LTDownloadManager &downloader, DownloadProgress *progress, const UpdateList &updates,
    const PluginDownloadHandler &handler)
{
    for (auto plugin = updates.begin(); plugin != updates.end(); ++plugin) {
        const auto &archives = plugin.value();
        for (auto archive = archives.begin(); archive != archives.end(); ++archive) {
            addTask(downloader, progress, plugin.key(), archive.key(), archive.value(),
                [handler, identifier = plugin.key(), version = archive.key()](const std::optional<KRError> &error,
                    const QUrl &file) { handler(error, identifier, version, file); });
        }
    }
}

} // namespace

KRPluginUpdaterImplementation::KRPluginUpdaterImplementation()
    : m_state(std::make_shared<UpdaterState>())
    , m_updatingInfoStatus(std::make_shared<FeedStatus>(0))
{ }

KRPluginUpdaterImplementation::~KRPluginUpdaterImplementation() = default;

void KRPluginUpdaterImplementation::downloadUpdatingInfoAtURL(
    const QUrl &url, std::function<void(const QByteArray &data, const std::optional<KRError> &error)> completionHandler)
{
    fetchUpdatingInfo(url, std::move(completionHandler));
}

VersionsDictionary KRPluginUpdaterImplementation::versionsDictionaryFromUpdatingInfo(const UpdatingInfo &updatingInfo)
{
    return versionsOf(updatingInfo);
}

void KRPluginUpdaterImplementation::downloadPluginUpdatingInfo(const PluginTable &plugins,
    UpdatingInfoHandler downloadUpdatingInfoHandler, std::function<void()> completionHandler)
{
    const auto checked = pluginsWithFeed(plugins);
    if (checked.isEmpty()) {
        if (completionHandler)
            completionHandler();
        return;
    }
    *m_updatingInfoStatus = Running;
    std::make_shared<FeedCheck>(
        checked, m_updatingInfoStatus, std::move(downloadUpdatingInfoHandler), std::move(completionHandler))
        ->start();
}

void KRPluginUpdaterImplementation::downloadPlugins(
    const UpdateList &updates, PluginDownloadHandler downloadPluginHandler, std::function<void()> completionHandler)
{
    const auto batch = m_state->newBatch();
    const auto progress = progressFor(*m_state);
    const auto downloader = std::make_shared<LTDownloadManager>(
        archiveConfiguration(), progress, [state = m_state, batch, completion = std::move(completionHandler)] {
            state->pluginVersionsStatus = Finished;
            if (completion)
                completion();
            state->clearDownloader(batch);
            state->pluginVersionsStatus = Idle;
        });
    m_state->setDownloader(batch, downloader);
    m_state->pluginVersionsStatus = Running;
    addTasks(*downloader, progress.get(), updates, downloadPluginHandler);
    const auto tasks = downloader->allTasksIdentifiers();
    for (const auto &task : tasks)
        downloader->resumeDownloadTaskWithIdentifier(task);
    downloader->finishTasksAndInvalidate();
}

void KRPluginUpdaterImplementation::downloadPluginFromURL(const QUrl &url, PluginFileHandler completionHandler)
{
    const auto progress = progressFor(*m_state);
    LTDownloadManager downloader(archiveConfiguration(), progress, nullptr);
    m_state->pluginVersionsStatus = Running;
    const auto task = addTask(downloader, progress.get(), {}, {}, url, std::move(completionHandler));
    downloader.resumeDownloadTaskWithIdentifier(task);
    downloader.finishTasksAndInvalidate();
}

void KRPluginUpdaterImplementation::cancelDownloadingPluginVersions()
{
    if (const auto downloader = m_state->downloader())
        downloader->cancelAllTasksAndInvalidate();
    m_state->pluginVersionsStatus = Finished;
}

bool KRPluginUpdaterImplementation::decompressPluginZip(const QUrl &zip, const QUrl &toFolder, KRError *error)
{
    return ::decompressPluginZip(zip, toFolder, error);
}

int KRPluginUpdaterImplementation::downloadingUpdatingInfoStatus() const
{
    return *m_updatingInfoStatus;
}

void KRPluginUpdaterImplementation::setDownloadingUpdatingInfoStatus(int status)
{
    *m_updatingInfoStatus = status;
}

int KRPluginUpdaterImplementation::downloadingPluginVersionsStatus() const
{
    return m_state->pluginVersionsStatus;
}

void KRPluginUpdaterImplementation::setDownloadingPluginVersionsStatus(int status)
{
    m_state->pluginVersionsStatus = status;
}

std::shared_ptr<LTDownloadManager> KRPluginUpdaterImplementation::pluginDownloader() const
{
    return m_state->downloader();
}

void KRPluginUpdaterImplementation::setProgressHandler(PluginDownloadProgressHandler progressHandler)
{
    m_state->setProgressHandler(std::move(progressHandler));
}
