#include "localization/KorvanPluginManagerLocalization.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/LibraryFolder.h"

#include <QCoreApplication>

QUrl KorvanPluginManagerLocalizationHelper::bundle()
{
    const auto below = [](const QByteArray &prefix) { return pathByAppending(prefix, "share/KorvanPluginManager"); };
    const auto prefix = pathWithoutLastComponent(libraryFolder());
    // Some systems keep libraries one folder deeper, in one for each kind of processor.
    const auto fartherUp = below(pathWithoutLastComponent(prefix));
    const bool isFartherUp = !itemExists(below(prefix)) && itemExists(fartherUp);
    return fileURLFromPath(isFartherUp ? fartherUp : below(prefix), FileKind::Folder);
}

QString KorvanPluginManagerLocalizedStringFromTable(const QString &key, const QString &table)
{
    return QCoreApplication::translate(table.toUtf8().constData(), key.toUtf8().constData());
}

QString KorvanPluginManagerLocalizedString(const QString &key)
{
    return KorvanPluginManagerLocalizedStringFromTable(key, QStringLiteral("Localizable"));
}
