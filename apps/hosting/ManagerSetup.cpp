#include "hosting/ManagerSetup.h"

#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"

#include <QDir>

QList<QUrl> pluginFolders(const HostingOptions &options)
{
    if (!options.folders)
        return KRPluginManager::pluginsURLs();
    QList<QUrl> urls;
    for (const auto &folder : *options.folders)
        urls.append(QUrl::fromLocalFile(QDir::current().absoluteFilePath(folder) + u'/'));
    return urls;
}

std::shared_ptr<KRPluginManagingState> makeManagingState()
{
    const QDir folder(LTAppEnvironment::current().applicationSupportFolder().toLocalFile());
    const auto file = QUrl::fromLocalFile(folder.filePath(QStringLiteral("PluginMetadata.plist")));
    auto state = std::make_shared<KRPluginManagingState>(file);
    state->setIncompatiblePluginVersions(KRPluginManagingState::incompatiblePlugins());
    return state;
}
