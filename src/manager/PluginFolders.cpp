#include "manager/PluginFolders.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"
#include "platform/LTAppEnvironment.h"
#include "platform/UserDefaults.h"

QUrl applicationPluginsFolder()
{
    return LTAppEnvironment::current().applicationSupportDirectory(
        QStringLiteral("Plugins"), LTAppEnvironment::FolderCreation::IfNeeded);
}

QUrl unsavedPluginURL()
{
    const auto folder = pathFromFileURL(applicationPluginsFolder());
    return fileURLFromPath(pathByAppending(folder, "Untitled.korvanplugin"), FileKind::Folder);
}

QList<QUrl> configuredPluginFolders()
{
    QList<QUrl> folders{applicationPluginsFolder()};
    const auto &defaults = LTAppEnvironment::current().userDefaults();
    const auto paths = defaults.stringArrayForKey(QStringLiteral("AdditionalPluginFolders")).value_or(QStringList());
    for (const auto &text : paths) {
        const auto path = text.toUtf8();
        if (itemExists(path))
            folders.append(fileURLFromPath(path, FileKind::Folder));
    }
    return folders;
}

QStringList ignoredFolderNames()
{
    const auto &defaults = LTAppEnvironment::current().userDefaults();
    const QStringList always{
        QStringLiteral("node_modules"), QStringLiteral("vendor"), QStringLiteral("virtualenv"), QStringLiteral(".git")};
    return always + defaults.stringArrayForKey(QStringLiteral("IgnoredPlugins")).value_or(QStringList());
}

QString relativePath(const QByteArray &from, const QByteArray &path)
{
    const auto fromComponents = from.split('/');
    const auto components = path.split('/');
    qsizetype common = 0;
    while (
        common < fromComponents.size() && common < components.size() && fromComponents[common] == components[common]) {
        ++common;
    }
    return displayPath(components.mid(common).join('/'));
}
