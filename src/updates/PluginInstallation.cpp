#include "updates/PluginInstallation.h"

#include "bundles/KRPluginBundle.h"
#include "platform/FileReading.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/LTAppEnvironment.h"
#include "platform/LTCompareVersions.h"
#include "updates/InstallationFailures.h"
#include "updates/PluginWarehouse.h"
#include "updates/SettingAside.h"

#include <filesystem>

namespace {

void log(const QString &line)
{
    LTAppEnvironment::current().systemLog(line);
}

std::optional<KRError> makeFolders(const QByteArray &path)
{
    std::error_code error;
    std::filesystem::create_directories(path.toStdString(), error);
    return error ? std::optional(systemError(error.value())) : std::nullopt;
}

/// Where the installed copy goes to.
struct Backup
{
    /// Its folder in the warehouse; empty for a copy that has none there.
    QByteArray folder;
    /// Why the warehouse does not take it, and nothing must be moved.
    std::optional<KRError> refusal;
};

Backup backupOf(const QString &identifier, const std::optional<InstalledPlugin> &installed)
{
    const auto version = installed ? installed->version.value_or(QString()) : QString();
    KRError error;
    const auto folder = version.isEmpty() ? warehouseFolderOfPlugin(identifier, &error)
                                          : warehousePluginFolder(identifier, version, &error);
    if (folder.isEmpty())
        return {{}, error};
    return {version.isEmpty() ? QByteArray() : pathFromFileURL(folder), std::nullopt};
}

/// Moves the installed copy aside. The error is the caller's to report: nothing was tried; a failed move is only
/// logged.
std::optional<KRError> moveAside(SettingAside &aside, const QByteArray &bundle, const QByteArray &backupFolder)
{
    const auto backup = pathByAppending(backupFolder, lastPathComponent(bundle));
    std::optional<KRError> failure;
    if (backupFolder.isEmpty() || hasEntry(backup)) {
        failure = aside.moveToTrash();
    } else {
        if (auto error = makeFolders(backupFolder))
            return error;
        failure = aside.moveTo(backup);
    }
    if (failure)
        log(movingAsideFailureLine(*failure));
    return std::nullopt;
}

void takeBack(SettingAside &aside)
{
    if (const auto failure = aside.takeBack())
        log(movingAsideFailureLine(*failure));
}

/// What an installation reports: whether the bundle was moved, and an error, which a success may have too.
struct Outcome
{
    bool isInstalled = false;
    std::optional<KRError> error;
};

Outcome install(const QByteArray &newBundle, const QByteArray &installedBundle, const QByteArray &backupFolder,
    const QByteArray &destination)
{
    const auto target = pathByAppending(destination, lastPathComponent(newBundle));
    ItemMove move(newBundle, target);
    SettingAside aside(installedBundle);
    std::optional<KRError> pending;
    auto failure = move.prepare(); // what cannot be had at all does not cost the installed copy its place
    if (!failure) {
        if (!installedBundle.isEmpty())
            pending = moveAside(aside, installedBundle, backupFolder);
        failure = move.carryOut();
        if (failure)
            takeBack(aside);
    }
    if (!failure)
        return {true, pending};
    log(installationFailureLine(*failure, newBundle, target));
    return {false, installationFailure(*failure)};
}

} // namespace

bool installPlugin(const QUrl &newBundle, const QString &identifier, const std::optional<InstalledPlugin> &installed,
    const QUrl &mainPluginsFolder, KRError *error)
{
    Outcome outcome;
    const auto backup = backupOf(identifier, installed);
    const auto installedBundle = installed ? pathFromFileURL(installed->url) : QByteArray();
    const auto destination =
        installedBundle.isEmpty() ? pathFromFileURL(mainPluginsFolder) : pathWithoutLastComponent(installedBundle);
    if (backup.refusal)
        outcome.error = backup.refusal;
    else
        outcome = install(pathFromFileURL(newBundle), installedBundle, backup.folder, destination);
    if (error)
        *error = outcome.error.value_or(KRError());
    return outcome.isInstalled;
}

bool isPluginNewerThan(const QUrl &first, const QUrl &second)
{
    const auto firstBundle = KRPluginBundle::pluginBundleWithURL(first);
    const auto secondBundle = KRPluginBundle::pluginBundleWithURL(second);
    if (!firstBundle || !secondBundle || !firstBundle->version() || !secondBundle->version())
        return false;
    return LTCompareVersions(firstBundle->version(), secondBundle->version()) == 1;
}
