#include "updates/PluginWarehouse.h"

#include "localization/Localizable.h"
#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/ItemRemoval.h"
#include "platform/LTAppEnvironment.h"
#include "updates/BundleSearch.h"
#include "updates/UnpackingMark.h"

#include <QByteArrayList>

#include <algorithm>
#include <optional>

namespace {

KRError refusal()
{
    //: The plugins warehouse is a folder of the application, where downloaded updates wait for their installation.
    const auto text =
        Localizable::tr("The plugin's identifier and version do not name a folder inside the plugins warehouse.");
    return {QStringLiteral("KRPluginMangerErrorDomain"), 0, text};
}

/// Whether a text, put behind a folder, names something below that folder, as far as the text alone can tell.
bool namesSomethingBelow(const QByteArray &text)
{
    if (text.contains('\0'))
        return false;
    const auto components = text.split('/');
    const auto isNothing = [](const QByteArray &component) { return component.isEmpty() || component == "."; };
    return !components.contains("..") && !std::all_of(components.begin(), components.end(), isNothing);
}

/// Whether the path below the folder, or as much of it as there is, is inside the folder after all links.
bool isInsideAfterLinks(const QByteArray &folder, QByteArray path)
{
    if (!hasEntry(folder))
        return true; // it could not be made and holds no links; whoever writes there is told why
    while (path.size() > folder.size() && !hasEntry(path))
        path = pathWithoutLastComponent(path);
    const auto resolved = resolvedPath(path);
    const auto resolvedFolder = resolvedPath(folder);
    return !resolved.isEmpty() && (resolved == resolvedFolder || resolved.startsWith(resolvedFolder + '/'));
}

QUrl folderBelowWarehouse(const QByteArrayList &names, KRError *error)
{
    const auto refuse = [error] {
        if (error)
            *error = refusal();
        return QUrl();
    };
    if (!std::all_of(names.begin(), names.end(), namesSomethingBelow))
        return refuse();
    const auto warehouse = pathFromFileURL(pluginsWarehouseURL());
    if (warehouse.isEmpty())
        return refuse();
    const auto path = pathByAppending(warehouse, names.join('/'));
    return isInsideAfterLinks(warehouse, path) ? fileURLFromPath(path, FileKind::Folder) : refuse();
}

/// The application has no place for a warehouse: the system was not asked and gives no reason.
std::optional<KRError> reasonUnknown()
{
    return KRError{{}, 0, QStringLiteral("unknown error")};
}

} // namespace

QUrl pluginsWarehouseURL()
{
    return LTAppEnvironment::current().applicationSupportDirectory(
        QStringLiteral("PluginsWarehouse"), LTAppEnvironment::FolderCreation::IfNeeded);
}

QUrl warehousePluginFolder(const QString &identifier, const QString &version, KRError *error)
{
    return folderBelowWarehouse({identifier.toUtf8(), version.toUtf8()}, error);
}

QUrl warehouseFolderOfPlugin(const QString &identifier, KRError *error)
{
    return folderBelowWarehouse({identifier.toUtf8()}, error);
}

QUrl downloadedPluginURL(const QString &identifier, const QString &version)
{
    const auto folder = warehousePluginFolder(identifier, version);
    const bool isWhole = !folder.isEmpty() && !UnpackingMark(pathFromFileURL(folder)).isSet();
    return isWhole ? firstPluginBundleFoundInFolder(folder) : QUrl();
}

QUrl firstPluginBundleFoundInFolder(const QUrl &folder)
{
    const auto path = pathFromFileURL(folder);
    if (path.isEmpty())
        return {};
    const auto bundle = BundleSearch(path).firstBundle();
    const bool isFolder = kindOfTarget(bundle) == FolderEntry::Kind::Folder;
    return fileURLFromPath(bundle, isFolder ? FileKind::Folder : FileKind::File);
}

WarehouseRemoval removePluginsWarehouse()
{
    const auto path = pathFromFileURL(pluginsWarehouseURL());
    const auto failure = path.isEmpty() ? reasonUnknown() : removeItem(path);
    if (!failure)
        return WarehouseRemoval::Removed;
    LTAppEnvironment::current().systemLog(
        QStringLiteral("Failure to remove the plugins warehouse with error %1.").arg(failure->localizedDescription));
    return WarehouseRemoval::Failed;
}
