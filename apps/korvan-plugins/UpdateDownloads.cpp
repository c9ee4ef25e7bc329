#include "UpdateDownloads.h"

#include "ProgressBar.h"
#include "Waiting.h"

#include <QLocale>

#include <mutex>

namespace {

ProgressBar::Display displayFor(const Output &output)
{
    return output.isJSON() ? ProgressBar::Display::Never : ProgressBar::Display::OnTerminal;
}

QString sizeText(qint64 bytes)
{
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

/// Shows the downloads of an updater for as long as it lives.
class DownloadDisplay
{
public:
    DownloadDisplay(ReportingUpdater &updater, const Output &output)
        : m_updater(updater)
        , m_bar(displayFor(output))
    {
        m_updater.setProgressHandler([this](const PluginDownloadProgress &progress) {
            const auto whole = progress.totalBytesExpected;
            const auto received = sizeText(progress.totalBytesReceived);
            m_bar.show(whole < 0 ? received : QStringLiteral("%1 of %2").arg(received, sizeText(whole)),
                progress.totalBytesReceived, whole);
        });
    }
    ~DownloadDisplay() { m_updater.setProgressHandler({}); }
    DownloadDisplay(const DownloadDisplay &) = delete;
    DownloadDisplay &operator=(const DownloadDisplay &) = delete;

private:
    ReportingUpdater &m_updater;
    ProgressBar m_bar;
};

} // namespace

QMap<QString, FeedResult> checkFeeds(PluginSession &session, const Output &output)
{
    std::mutex mutex;
    QMap<QString, FeedResult> results;
    qsizetype feeds = 0;
    for (const auto &plugin : session.manager().plugins())
        feeds += plugin->updatingInfoURL().isEmpty() ? 0 : 1;
    ProgressBar bar(displayFor(output));
    const auto handler = [&](const std::optional<KRError> &error, const std::shared_ptr<KRPluginBundle> &plugin,
                             const std::optional<QString> &latest) {
        const std::lock_guard lock(mutex); // this comes on the network thread
        results.insert(plugin->identifier().value_or(QString()), {latest, error});
        bar.show(QStringLiteral("%1 of %2 feeds").arg(results.size()).arg(feeds), results.size(), feeds);
    };
    waitUntilCalled([&](const auto &done) { session.manager().checkForPluginUpdatesWithHandler(handler, done); });
    const std::lock_guard lock(mutex);
    return results;
}

QList<KRError> downloadVersions(PluginSession &session, const QList<OfferedVersion> &versions, const Output &output)
{
    if (versions.isEmpty())
        return {};
    const DownloadDisplay display(session.updater(), output);
    std::mutex mutex; // some errors are told at once, on this thread
    QList<KRError> errors;
    auto left = versions.size();
    waitUntilCalled([&](const std::function<void()> &done) {
        for (const auto &offered : versions) {
            session.manager().downloadPluginUpdate(
                offered.identifier, offered.version, [&, done](const std::optional<KRError> &error) {
                    const std::lock_guard lock(mutex);
                    if (error)
                        errors.append(*error);
                    if (--left == 0)
                        done();
                });
        }
    });
    const std::lock_guard lock(mutex); // the last handler may not have returned yet
    return errors;
}

QList<KRError> downloadList(PluginSession &session, const UpdateList &updates, const Output &output)
{
    const DownloadDisplay display(session.updater(), output);
    waitUntilCalled(
        [&](const auto &done) { session.manager().downloadPluginUpdates(updates, [done](const auto &) { done(); }); });
    return session.updater().errors();
}
