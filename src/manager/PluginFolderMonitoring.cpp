#include "manager/PluginFolderMonitoring.h"

#include "bundles/PluginBundleExtension.h"

namespace {

FolderMonitorOptions optionsFor(const QStringList &ignoredNames)
{
    FolderMonitorOptions options{pluginBundleExtension.toByteArray(), {}};
    for (const auto &name : ignoredNames)
        options.ignoredNames.insert(name.toUtf8());
    return options;
}

} // namespace

WalkWatches::WalkWatches(const QStringList &ignoredNames)
    : m_options(optionsFor(ignoredNames))
{
    // What was changed up to now, the walk will see; it is no news for the watches that are made from now on.
    FolderEvents::readPending();
}

void WalkWatches::willVisit(const QByteArray &folder, Arrival arrival)
{
    const auto place =
        arrival == Arrival::FromParent ? FolderWatch::Place::InWatchedFolder : FolderWatch::Place::Anywhere;
    auto watch = FolderWatch::make(folder, m_options, place);
    if (!watch)
        return;
    m_byFolder.insert(folder, watch.get());
    m_watches.push_back(std::move(watch));
}

void WalkWatches::foundBundle(const QByteArray &folder, const QByteArray &entry, const QByteArray &target)
{
    if (auto *watch = watchOf(folder))
        watch->addPackage(entry, target);
}

void WalkWatches::foundLink(const QByteArray &folder, const QByteArray &entry)
{
    if (auto *watch = watchOf(folder))
        watch->addLink(entry);
}

void PluginFolderMonitoring::setUp(WalkWatches &watches, const std::function<void()> &changed)
{
    Monitors monitors;
    for (auto &watch : watches.take())
        monitors.push_back(std::make_unique<KRFolderMonitor>(std::move(watch), changed));
    m_monitors.swap(monitors);
}

void PluginFolderMonitoring::setUp(
    const QSet<QUrl> &folders, const QStringList &ignoredNames, const std::function<void()> &changed)
{
    const auto options = optionsFor(ignoredNames);
    Monitors monitors;
    for (const auto &folder : folders) {
        if (auto monitor = KRFolderMonitor::initWithURL(folder, changed, options))
            monitors.push_back(std::move(monitor));
    }
    m_monitors.swap(monitors);
}

void PluginFolderMonitoring::clear()
{
    const auto monitors = std::exchange(m_monitors, {});
}
