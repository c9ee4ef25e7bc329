#include "manager/PluginFolderMonitoring.h"

FolderMonitorOptions pluginMonitorOptions(const QStringList &ignoredNames)
{
    FolderMonitorOptions options{QByteArrayLiteral("korvanplugin"), {}};
    for (const auto &name : ignoredNames)
        options.ignoredNames.insert(name.toUtf8());
    return options;
}

FolderMonitors monitorsForFolders(
    const QSet<QByteArray> &paths, const FolderMonitorOptions &options, const std::function<void()> &changeBlock)
{
    FolderMonitors monitors;
    monitors.reserve(std::size_t(paths.size()));
    const auto block = std::make_shared<const std::function<void()>>(changeBlock);
    for (const auto &path : paths) {
        if (auto monitor = KRFolderMonitor::initWithPath(path, block, options))
            monitors.push_back(std::move(monitor));
    }
    return monitors;
}
