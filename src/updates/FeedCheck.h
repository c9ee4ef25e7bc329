#pragma once

#include "updates/KRPluginUpdater.h"

#include <QByteArray>
#include <QUrl>

#include <atomic>
#include <functional>
#include <memory>

class UpdatingInfo;

/// What a feed's server has sent, and the error of the transfer. Whatever the server's status: a page that says "not
/// found" is data.
using UpdatingInfoDataHandler = std::function<void(const QByteArray &data, const std::optional<KRError> &error)>;

/// Fetches a feed. The handler is called on the network thread. Any thread.
void fetchUpdatingInfo(const QUrl &url, UpdatingInfoDataHandler completionHandler);

/// The one version of a feed, with its archive.
VersionsDictionary versionsOf(const UpdatingInfo &info);

/// How far an updater has come with feeds: 0, 1 or 3. Belongs to the updater alone, so that a check sees when it has
/// gone.
using FeedStatus = std::atomic<int>;

/// One reading of the feeds of many plug-ins. Keeps itself alive until the last feed has been handled.
class FeedCheck : public std::enable_shared_from_this<FeedCheck>
{
public:
    /// All plug-ins need a feed.
    FeedCheck(PluginTable plugins, std::weak_ptr<FeedStatus> updater, UpdatingInfoHandler feedHandler,
        std::function<void()> completionHandler);

    /// Main thread, once.
    void start();

private:
    void preferJSON(const QString &identifier);
    void fetch(const QString &identifier);
    void feedEnded(const QString &identifier, const QByteArray &data, const std::optional<KRError> &error);
    void countDown();
    const std::shared_ptr<KRPluginBundle> &plugin(const QString &identifier) const;

    PluginTable m_plugins;
    std::weak_ptr<FeedStatus> m_updater;
    UpdatingInfoHandler m_feedHandler;
    std::function<void()> m_completionHandler;
    /// On the network thread, where only one call is made at a time.
    qsizetype m_feedsLeft;
};
