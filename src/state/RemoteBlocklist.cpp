#include "state/RemoteBlocklist.h"

#include "platform/AtomicFile.h"
#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"
#include "platform/TextFile.h"
#include "platform/network/LTDownloadManager.h"
#include "state/Blocklist.h"
#include "state/KRPluginManagingState.h"

namespace {

constexpr qint64 largestList = 10 * 1024 * 1024;
constexpr int firstFailingStatus = 400;

/// Puts a downloaded list in the place of the kept one. False when it cannot be kept: the old one stays.
bool keepList(const QUrl &downloaded, const QUrl &kept)
{
    const auto bytes = readFile(pathFromFileURL(downloaded), largestList);
    return bytes && !writeFileAtomically(pathFromFileURL(kept), bytes.value());
}

/// What is done with a download that has come, on the network thread.
class ListUpdate
{
public:
    ListUpdate(std::shared_ptr<KRPluginManagingState> state, RemoteBlocklist::RegisterVersions registerVersions)
        : m_files(BlocklistFiles::current())
        , m_state(std::move(state))
        , m_registerVersions(std::move(registerVersions))
    { }

    BlocklistUpdate apply(const QUrl &file, const URLResponse &response, const std::optional<KRError> &error) const
    {
        if (error || response.statusCode >= firstFailingStatus || holdSameText(file, m_files.downloaded))
            return {};
        const bool isKept = keepList(file, m_files.downloaded);
        if (m_state)
            m_state->setIncompatiblePluginVersions(readBlocklist(m_files));
        return {isKept, m_registerVersions()};
    }

private:
    BlocklistFiles m_files;
    std::shared_ptr<KRPluginManagingState> m_state;
    RemoteBlocklist::RegisterVersions m_registerVersions;
};

} // namespace

RemoteBlocklist::RemoteBlocklist(std::shared_ptr<KRPluginManagingState> state, RegisterVersions registerVersions)
    : m_state(std::move(state))
    , m_registerVersions(std::move(registerVersions))
{ }

RemoteBlocklist::~RemoteBlocklist()
{
    for (const auto &download : m_downloads)
        download.manager->cancelAllTasksAndWait();
}

void RemoteBlocklist::download(BlocklistUpdateHandler completionHandler)
{
    std::erase_if(m_downloads, [](const Download &earlier) { return earlier.hasEnded->load(); });
    auto configuration = SessionConfiguration::defaultSessionConfiguration();
    configuration.maximumSize = largestList;
    auto manager = std::make_unique<LTDownloadManager>(configuration, nullptr, nullptr);
    const auto hasEnded = std::make_shared<std::atomic<bool>>(false);
    const auto task = manager->addDownloadTaskWithDownloadRequest({QUrl(remoteBlocklistURL()), std::nullopt},
        [update = ListUpdate(m_state, m_registerVersions), completion = std::move(completionHandler), hasEnded](
            const QUrl &file, const URLResponse &response, const std::optional<KRError> &error) {
            const auto result = update.apply(file, response, error);
            if (completion)
                completion(result);
            hasEnded->store(true);
        });
    manager->resumeDownloadTaskWithIdentifier(task);
    manager->finishTasksAndInvalidate();
    m_downloads.push_back({std::move(manager), hasEnded});
}

QString remoteBlocklistURL()
{
    auto endpoint = LTAppEnvironment::current().blocklistEndpoint();
    while (endpoint.endsWith(u'/'))
        endpoint.chop(1);
    const auto name = remoteBlocklistName(BlocklistTarget::current());
    return endpoint + QStringLiteral("/blocklist/plugins/") + QString::fromLatin1(QUrl::toPercentEncoding(name));
}

bool holdSameText(const QUrl &first, const QUrl &second)
{
    return readTextFile(pathFromFileURL(first)) == readTextFile(pathFromFileURL(second));
}
