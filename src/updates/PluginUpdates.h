#pragma once

#include "updates/KRPluginUpdater.h"
#include "updates/PluginUpdateHandlers.h"

#include <QList>
#include <QMap>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

/// Checks for updates and brings them into the warehouse; remembers what was found and what failed. Thread-safe.
///
/// Handlers are called on the network thread, unless a function says otherwise, and never after stop().
class PluginUpdates : public std::enable_shared_from_this<PluginUpdates>
{
public:
    /// Without an updater (null) nothing is ever found or downloaded.
    explicit PluginUpdates(std::shared_ptr<KRPluginUpdater> updater);

    /// Waits for the handler that runs, or the archive that is being unpacked. What comes later is dropped. Not inside
    /// a handler.
    void stop();

    PluginVersionsTable versions() const;
    void setVersions(const PluginVersionsTable &versions);
    void keepVersionsOf(const QStringList &identifiers);

    /// Nil, not empty, for none.
    std::optional<QList<KRError>> errors() const;
    void setErrors(const std::optional<QList<KRError>> &errors);
    void addError(const KRError &error);

    /// Reads the feeds of the plug-ins and remembers what each offers. `completionHandler` is called at the end: at
    /// once, by this thread, when there is nothing to read. Main thread.
    void check(const PluginTable &plugins, UpdateCheckHandler handler, std::function<void()> completionHandler);

    /// Downloads and unpacks; errors are added to errors().
    ///
    /// `completionHandler`, which may be empty, is called on the main thread. The errors are forgotten as soon as that
    /// call is queued, so it finds them only when the main thread is faster, and nil otherwise: hosts have been written
    /// for both.
    void downloadAll(const UpdateList &updates, UpdateErrorsHandler completionHandler);

    /// Downloads and unpacks one version. `completionHandler` may be empty; an update that is there already, or that
    /// nobody offers, is told by this thread at once, and the network is not asked.
    void download(const QString &identifier, const QString &version, UpdateErrorHandler completionHandler);

    void cancelAll();

private:
    void checked(const UpdateCheckHandler &handler, const std::optional<KRError> &error,
        const std::shared_ptr<KRPluginBundle> &plugin, const std::optional<VersionsDictionary> &versions);
    std::optional<KRError> unpack(const QString &identifier, const QString &version, const QUrl &file);
    void batchEnded(const UpdateErrorsHandler &completionHandler);
    template <class Work>
    void unlessStopped(Work work);

    const std::shared_ptr<KRPluginUpdater> m_updater;
    /// An updater may call its handlers at once, inside of another one.
    std::recursive_mutex m_running;
    bool m_stopped = false;
    mutable std::mutex m_mutex;
    PluginVersionsTable m_versions;
    std::optional<QList<KRError>> m_errors;
};
