#include "support/MonitoredPlugins.h"

MonitoredPlugins::MonitoredPlugins()
{
    write("Plugins/a");
    write("Plugins/sub/b");
    write("Plugins/node_modules/ignored");
    write("elsewhere/c");
    makeLinkAt(path("Plugins/link"), "../elsewhere");
    makeFolderAt(path("More"));
    manager = std::make_unique<KRPluginManager>(QList{url("Plugins"), url("More")}, nullptr, store);
    manager->reloadPlugins();
    observer = environment.notificationCenter().addObserver(
        KRPluginManagerDidReloadPluginsNotification, nullptr, [this](const Notification &) { ++reloads; });
}

void MonitoredPlugins::write(const QByteArray &relativePath, const QByteArray &name) const
{
    const auto identifier = relativePath.mid(relativePath.lastIndexOf('/') + 1);
    writeFileAt(path(relativePath + ".korvanplugin/Contents/Korvan/manifest.json"),
        "{\"identifier\": \"" + identifier + "\", \"name\": \"" + name + "\"}");
}

Text MonitoredPlugins::nameOf(const QString &identifier) const
{
    const auto bundle = manager->plugins().value(identifier);
    return bundle ? bundle->name() : nil;
}
