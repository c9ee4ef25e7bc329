#include "updates/FeedCheck.h"

#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"
#include "platform/network/LTDownloadManager.h"
#include "platform/network/URLSession.h"
#include "updates/UpdatingInfo.h"

namespace {

/// So short because a check asks many servers, and nobody waits for the slow ones.
constexpr std::chrono::milliseconds feedTimeout(2000);

QString pathWithoutSlash(const QUrl &url)
{
    auto path = url.path(QUrl::FullyEncoded);
    while (path.endsWith(u'/'))
        path.chop(1);
    return path;
}

QString pathExtension(const QUrl &url)
{
    const auto name = pathWithoutSlash(url).section(u'/', -1);
    return name.mid(withoutExtension(name).size() + 1);
}

bool isAppcastByName(const QUrl &url)
{
    const auto extension = pathExtension(url);
    return extension == u"rss" || extension == u"xml";
}

QUrl jsonAlternative(const QUrl &url)
{
    const auto path = pathWithoutSlash(url);
    auto alternative = url;
    alternative.setPath(path.chopped(pathExtension(url).size()) + QStringLiteral("json"), QUrl::StrictMode);
    return alternative;
}

std::optional<UpdatingInfo> readUpdatingInfo(const QUrl &feed, const QByteArray &data, std::optional<KRError> &error)
{
    if (pathExtension(feed) == u"json") {
        KRError parseError;
        auto info = UpdatingInfo::initWithData(data, feed, &parseError);
        if (!info)
            error = parseError;
        return info;
    }
    return UpdatingInfo::sparkleXMLToUpdatingInfo(data, feed);
}

} // namespace

VersionsDictionary versionsOf(const UpdatingInfo &info)
{
    return {{info.versionID(), {{downloadURLKey, info.downloadURL()}}}};
}

void fetchUpdatingInfo(const QUrl &url, UpdatingInfoDataHandler completionHandler)
{
    const auto task = URLSession::sharedSession().dataTaskWithRequest({url, feedTimeout},
        [completion = std::move(completionHandler)](const QByteArray &data, const URLResponse &,
            const std::optional<KRError> &error) { completion(data, error); });
    task->resume();
}

FeedCheck::FeedCheck(PluginTable plugins, std::weak_ptr<FeedStatus> updater, UpdatingInfoHandler feedHandler,
    std::function<void()> completionHandler)
    : m_plugins(std::move(plugins))
    , m_updater(std::move(updater))
    , m_feedHandler(std::move(feedHandler))
    , m_completionHandler(std::move(completionHandler))
    , m_feedsLeft(m_plugins.size())
{ }

void FeedCheck::start()
{
    const auto identifiers = m_plugins.keys();
    for (const auto &identifier : identifiers) {
        if (isAppcastByName(plugin(identifier)->updatingInfoURL()))
            preferJSON(identifier);
        else
            fetch(identifier);
    }
}

/// A feed that is published both ways is read in its JSON form.
void FeedCheck::preferJSON(const QString &identifier)
{
    const auto alternative = jsonAlternative(plugin(identifier)->updatingInfoURL());
    LTDownloadManager::remoteFileExistsAtURL(
        alternative, [self = shared_from_this(), identifier, alternative](bool exists) {
            LTAppEnvironment::runOnMainQueue([self, identifier, alternative, exists] {
                if (exists)
                    self->plugin(identifier)->setUpdatingInfoURL(alternative);
                self->fetch(identifier);
            });
        });
}

void FeedCheck::fetch(const QString &identifier)
{
    fetchUpdatingInfo(plugin(identifier)->updatingInfoURL(),
        [self = shared_from_this(), identifier](
            const QByteArray &data, const std::optional<KRError> &error) { self->feedEnded(identifier, data, error); });
}

void FeedCheck::feedEnded(const QString &identifier, const QByteArray &data, const std::optional<KRError> &error)
{
    auto failure = error;
    std::optional<VersionsDictionary> versions;
    if (!failure) {
        const auto info = readUpdatingInfo(plugin(identifier)->updatingInfoURL(), data, failure);
        if (info && !m_updater.expired())
            versions = versionsOf(*info);
    }
    m_feedHandler(failure, plugin(identifier), versions);
    countDown();
}

void FeedCheck::countDown()
{
    if (--m_feedsLeft > 0)
        return;
    // Plug-ins that a reload has replaced meanwhile end where their commands belong.
    LTAppEnvironment::runOnMainQueue([plugins = std::exchange(m_plugins, {})] {});
    const auto updater = m_updater.lock();
    if (!updater)
        return;
    *updater = 3;
    if (m_completionHandler)
        m_completionHandler();
}

const std::shared_ptr<KRPluginBundle> &FeedCheck::plugin(const QString &identifier) const
{
    return *m_plugins.constFind(identifier);
}
