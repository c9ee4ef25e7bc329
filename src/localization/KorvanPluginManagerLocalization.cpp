#include "localization/KorvanPluginManagerLocalization.h"

#include "platform/FileURL.h"
#include "platform/LibraryFolder.h"

#include <QCoreApplication>

QUrl KorvanPluginManagerLocalizationHelper::bundle()
{
    const auto prefix = pathWithoutLastComponent(libraryFolder());
    return fileURLFromPath(pathByAppending(prefix, "share/KorvanPluginManager"), FileKind::Folder);
}

QString KorvanPluginManagerLocalizedStringFromTable(const QString &key, const QString &table)
{
    return QCoreApplication::translate(table.toUtf8().constData(), key.toUtf8().constData());
}

QString KorvanPluginManagerLocalizedString(const QString &key)
{
    return KorvanPluginManagerLocalizedStringFromTable(key, QStringLiteral("Localizable"));
}
