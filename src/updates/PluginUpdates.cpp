#include "updates/PluginUpdates.h"

#include "localization/Localizable.h"
#include "platform/FileURL.h"
#include "platform/ItemRemoval.h"
#include "platform/LTAppEnvironment.h"
#include "platform/LTCompareVersions.h"
#include "updates/PluginWarehouse.h"
#include "updates/UnpackingMark.h"

using namespace Qt::StringLiterals;

namespace {

KRError updateError(const QString &text)
{
    // The domain is spelled so in every version that hosts know.
    return {u"KRPluginMangerErrorDomain"_s, 0, text};
}

/// Why the version cannot be downloaded; nil when it can.
std::optional<KRError> refusal(const QString &identifier, const QString &version, const QUrl &url)
{
    if (!downloadedPluginURL(identifier, version).isEmpty())
        return updateError(Localizable::tr("Plugin update already downloaded."));
    if (url.isEmpty())
        return updateError(Localizable::tr("Could not obtain url to download plugin update."));
    KRError error;
    if (warehousePluginFolder(identifier, version, &error).isEmpty())
        return error;
    return {};
}

} // namespace

PluginUpdates::PluginUpdates(std::shared_ptr<KRPluginUpdater> updater)
    : m_updater(std::move(updater))
{ }

void PluginUpdates::stop()
{
    const std::lock_guard lock(m_running);
    m_stopped = true;
}

template <class Work>
void PluginUpdates::unlessStopped(Work work)
{
    const std::lock_guard lock(m_running);
    if (!m_stopped)
        work();
}

PluginVersionsTable PluginUpdates::versions() const
{
    const std::lock_guard lock(m_mutex);
    return m_versions;
}

void PluginUpdates::setVersions(const PluginVersionsTable &versions)
{
    const std::lock_guard lock(m_mutex);
    m_versions = versions;
}

void PluginUpdates::keepVersionsOf(const QStringList &identifiers)
{
    const QSet<QString> kept(identifiers.begin(), identifiers.end());
    const std::lock_guard lock(m_mutex);
    m_versions.removeIf([&kept](const auto &entry) { return !kept.contains(entry.key()); });
}

std::optional<QList<KRError>> PluginUpdates::errors() const
{
    const std::lock_guard lock(m_mutex);
    return m_errors;
}

void PluginUpdates::setErrors(const std::optional<QList<KRError>> &errors)
{
    const std::lock_guard lock(m_mutex);
    m_errors = errors;
}

void PluginUpdates::addError(const KRError &error)
{
    const std::lock_guard lock(m_mutex);
    if (!m_errors)
        m_errors.emplace();
    m_errors->append(error);
}

void PluginUpdates::check(
    const PluginTable &plugins, UpdateCheckHandler handler, std::function<void()> completionHandler)
{
    if (!m_updater) {
        if (completionHandler)
            completionHandler();
        return;
    }
    const auto feedHandler = [weak = weak_from_this(), handler = std::move(handler)](
                                 const auto &error, const auto &plugin, const auto &versions) {
        if (const auto self = weak.lock())
            self->unlessStopped([&] { self->checked(handler, error, plugin, versions); });
    };
    m_updater->downloadPluginUpdatingInfo(plugins, feedHandler, std::move(completionHandler));
}

void PluginUpdates::checked(const UpdateCheckHandler &handler, const std::optional<KRError> &error,
    const std::shared_ptr<KRPluginBundle> &plugin, const std::optional<VersionsDictionary> &versions)
{
    if (error) {
        if (handler)
            handler(error, plugin, {});
        return;
    }
    const auto identifier = plugin->identifier().value_or(QString());
    const auto record = std::make_shared<KRPluginVersions>(identifier, plugin->updatingInfoURL());
    record->addVersions(versions.value_or(VersionsDictionary()));
    const auto latest = LTHighestVersionNumber(record->versions());
    {
        const std::lock_guard lock(m_mutex);
        m_versions.insert(identifier, record);
    }
    if (handler)
        handler({}, plugin, latest);
}

void PluginUpdates::downloadAll(const UpdateList &updates, UpdateErrorsHandler completionHandler)
{
    if (!m_updater)
        return;
    const auto self = shared_from_this();
    const auto archiveHandler = [self](const std::optional<KRError> &error, const QString &identifier,
                                    const QString &version, const QUrl &file) {
        self->unlessStopped([&] {
            if (const auto failure = error ? error : self->unpack(identifier, version, file))
                self->addError(*failure);
        });
    };
    m_updater->downloadPlugins(updates, archiveHandler, [self, completionHandler = std::move(completionHandler)] {
        self->unlessStopped([&] { self->batchEnded(completionHandler); });
    });
}

/// Nil also when nothing could be unpacked but nobody knows why. What a broken attempt has left is no update; the next
/// one begins without it.
std::optional<KRError> PluginUpdates::unpack(const QString &identifier, const QString &version, const QUrl &file)
{
    KRError error;
    const auto folder = warehousePluginFolder(identifier, version, &error);
    if (folder.isEmpty())
        return error;
    const auto path = pathFromFileURL(folder);
    const UnpackingMark mark(path);
    if (mark.isSet())
        removeItem(path);
    if (const auto failure = mark.set())
        return failure;
    if (m_updater->decompressPluginZip(file, folder, &error))
        mark.clear();
    return error == KRError() ? std::nullopt : std::optional(error);
}

void PluginUpdates::batchEnded(const UpdateErrorsHandler &completionHandler)
{
    if (completionHandler) {
        LTAppEnvironment::runOnMainQueue([self = shared_from_this(), completionHandler] {
            if (!self->m_stopped) // which is set on this thread
                completionHandler(self->errors());
        });
    }
    setErrors({});
}

void PluginUpdates::download(const QString &identifier, const QString &version, UpdateErrorHandler completionHandler)
{
    if (!m_updater)
        return;
    const auto record = versions().value(identifier);
    const auto url = record ? record->downloadURLForVersion(version) : QUrl();
    if (const auto error = refusal(identifier, version, url)) {
        if (completionHandler)
            completionHandler(error);
        return;
    }
    m_updater->downloadPluginFromURL(url,
        [self = shared_from_this(), identifier, version, completionHandler = std::move(completionHandler)](
            const std::optional<KRError> &error, const QUrl &file) {
            self->unlessStopped([&] {
                const auto failure = error ? error : self->unpack(identifier, version, file);
                if (completionHandler)
                    completionHandler(failure);
            });
        });
}

void PluginUpdates::cancelAll()
{
    if (m_updater)
        m_updater->cancelDownloadingPluginVersions();
}
