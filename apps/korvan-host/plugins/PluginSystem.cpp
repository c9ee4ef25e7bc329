#include "plugins/PluginSystem.h"

#include "hosting/ManagerSetup.h"
#include "platform/MainQueue.h"
#include "updates/ReportingUpdater.h"

#include <QDir>
#include <QPointer>

namespace {

QString markerPath(const LTAppEnvironment &environment)
{
    return QDir(environment.applicationSupportFolder().toLocalFile()).filePath(QStringLiteral("LoadingPlugins"));
}

} // namespace

PluginSystem::PluginSystem(const HostingOptions &options)
    : m_environment(options)
    , m_installation(m_environment)
    , m_log(std::make_shared<ConsoleLog>())
    , m_marker(markerPath(m_environment))
{
    KRPluginManager::initialisePlugins();
    m_environment.setLogTarget(m_log.get());
    m_manager = std::make_unique<KRPluginManager>(
        pluginFolders(options), std::make_shared<ReportingUpdater>(), makeManagingState());
    m_manager->setLogAction(m_log);
    m_actions = std::make_unique<HostActions>(*m_manager);
    m_changeTimer.setSingleShot(true);
    m_changeTimer.setInterval(0);
    connect(&m_changeTimer, &QTimer::timeout, this, &PluginSystem::tellChange);
    observe(KRPluginManagerDidReloadPluginsNotification);
    observe(KRPluginManagerPluginDidChangeEnabledStateNotification);
}

PluginSystem::~PluginSystem()
{
    m_environment.setLogTarget(nullptr);
}

void PluginSystem::observe(const QString &notification)
{
    m_observers.push_back(m_environment.notificationCenter().addObserver(
        notification, m_manager.get(), [this](const Notification &) { m_changeTimer.start(); }));
}

void PluginSystem::load(Enabling enabling)
{
    m_marker.begin();
    m_manager->setDisableAllPlugins(enabling == Enabling::NoPlugin);
    m_manager->reloadPlugins();
    m_changeTimer.stop(); // who comes from now on fills his menu himself
    tellChange();
    finishMarkerLater();
}

/// Behind the handlers of "Startup": the queue keeps the order.
void PluginSystem::finishMarkerLater()
{
    m_environment.mainQueue().async([self = QPointer(this)] {
        if (self)
            self->m_marker.finish();
    });
}

void PluginSystem::shutDown()
{
    m_actions->tellAndWait(QStringLiteral("Shutdown"));
}

void PluginSystem::tellChange()
{
    startPlugins();
    emit pluginsChanged();
}

void PluginSystem::startPlugins()
{
    QSet<QString> enabled;
    const auto plugins = m_manager->plugins();
    for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin) {
        if ((*plugin)->isEnabled())
            enabled.insert(plugin.key());
    }
    const auto starting = enabled - std::exchange(m_started, enabled);
    if (starting.isEmpty())
        return;
    m_marker.begin(); // also for those that the user enables later
    m_actions->tellPlugins(starting, QStringLiteral("Startup"));
    finishMarkerLater();
}
