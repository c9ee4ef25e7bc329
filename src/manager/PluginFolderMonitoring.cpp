#include "manager/PluginFolderMonitoring.h"

FolderMonitorOptions pluginMonitorOptions(const QStringList &ignoredNames)
{
    FolderMonitorOptions options{QByteArrayLiteral("korvanplugin"), {}};
    for (const auto &name : ignoredNames)
        options.ignoredNames.insert(name.toUtf8());
    return options;
}

FolderMonitors monitorsForFolders(
    const QSet<QUrl> &folders, const FolderMonitorOptions &options, const std::function<void()> &changeBlock)
{
    FolderMonitors monitors;
    monitors.reserve(std::size_t(folders.size()));
    for (const auto &folder : folders) {
        if (auto monitor = KRFolderMonitor::initWithURL(folder, changeBlock, options))
            monitors.push_back(std::move(monitor));
    }
    return monitors;
}
