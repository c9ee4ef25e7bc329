#pragma once

#include "bundles/PluginTable.h"
#include "platform/Export.h"
#include "platform/KRError.h"
#include "updates/VersionsDictionary.h"

#include <QString>
#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

/// One feed that has been handled: an error or none, the plug-in, and what the feed offers (nil with an error, and when
/// it could not be read).
using UpdatingInfoHandler = std::function<void(const std::optional<KRError> &error,
    const std::shared_ptr<KRPluginBundle> &plugin, const std::optional<VersionsDictionary> &versions)>;

/// One archive that has been downloaded, or not: the file is there during the call only.
using PluginDownloadHandler = std::function<void(
    const std::optional<KRError> &error, const QString &identifier, const QString &version, const QUrl &temporaryFile)>;

/// The same for a single one.
using PluginFileHandler = std::function<void(const std::optional<KRError> &error, const QUrl &temporaryFile)>;

/// Does the network and archive work of updates for a manager. A host may put its own in the place of
/// KRPluginUpdaterImplementation, or one that stands before it.
///
/// Handlers are called on the network thread, one at a time, and must not wait for another thread.
class KORVAN_EXPORT KRPluginUpdater
{
public:
    KRPluginUpdater() = default;
    virtual ~KRPluginUpdater();
    KRPluginUpdater(const KRPluginUpdater &) = delete;
    KRPluginUpdater &operator=(const KRPluginUpdater &) = delete;

    /// `downloadPluginUpdatingInfo:downloadUpdatingInfoHandler:completionHandler:`. Reads the feeds of the plug-ins
    /// that have one. The first handler, which must be given, is called once for each of them; the second, which may be
    /// empty, at the end. Main thread.
    virtual void downloadPluginUpdatingInfo(const PluginTable &plugins, UpdatingInfoHandler downloadUpdatingInfoHandler,
        std::function<void()> completionHandler) = 0;
    /// `downloadPlugins:downloadPluginHandler:completionHandler:`. Downloads archives as one batch. The first handler,
    /// which must be given, is called once for each of them; the second, which may be empty, at the end, also of an
    /// empty or cancelled batch. Any thread.
    virtual void downloadPlugins(const UpdateList &updates, PluginDownloadHandler downloadPluginHandler,
        std::function<void()> completionHandler) = 0;
    /// `downloadPluginFromURL:completionHandler:`. Downloads one archive by itself. Any thread.
    virtual void downloadPluginFromURL(const QUrl &url, PluginFileHandler completionHandler) = 0;
    /// Cancels the batch that was started last; single downloads go on. Any thread.
    virtual void cancelDownloadingPluginVersions() = 0;
    /// `decompressPluginZip:toFolder:error:`. Unpacks an archive into a folder, which is made when it is missing. On
    /// failure what was unpacked until then stays, and `error`, where given, holds the reason; it is left untouched for
    /// an archive that is empty or cannot be read. Any thread.
    virtual bool decompressPluginZip(const QUrl &zip, const QUrl &toFolder, KRError *error = nullptr) = 0;
};
