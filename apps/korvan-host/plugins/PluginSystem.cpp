#include "plugins/PluginSystem.h"

#include "hosting/ManagerSetup.h"
#include "platform/MainQueue.h"
#include "updates/KRPluginUpdaterImplementation.h"

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
    , m_marker(markerPath(m_environment))
{
    KRPluginManager::initialisePlugins();
    m_environment.setLogTarget(m_log.action().get());
    m_manager = std::make_unique<KRPluginManager>(
        pluginFolders(options), std::make_shared<KRPluginUpdaterImplementation>(), makeManagingState());
    m_manager->setLogAction(m_log.action());
    m_actions = std::make_unique<HostActions>(*m_manager);
    m_installer = std::make_unique<ManagedInstaller>(*m_manager);
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
    // Behind the handlers of "Startup": the queue keeps the order.
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
    const auto started = std::exchange(m_started, enabled);
    for (const auto &identifier : std::as_const(enabled)) {
        if (!started.contains(identifier))
            m_actions->tellPlugin(identifier, QStringLiteral("Startup"));
    }
}
