#pragma once

#include "plugins/HostActions.h"
#include "plugins/HostEnvironment.h"
#include "plugins/HostLog.h"
#include "plugins/LoadingMarker.h"
#include "plugins/PluginInstaller.h"

#include "manager/KRPluginManager.h"
#include "platform/NotificationCenter.h"

#include <QObject>
#include <QSet>
#include <QTimer>

#include <memory>

/// The framework in this program: the environment that it sees, its manager, and who is told of what. There is one.
class PluginSystem final : public QObject
{
    Q_OBJECT

public:
    explicit PluginSystem(const HostingOptions &options);
    ~PluginSystem() override;

    enum class Enabling {
        /// As the user has chosen.
        AsUsual,
        /// Safe mode.
        NoPlugin
    };

    /// Whether an earlier start has ended while its plug-ins were loading.
    bool hasFailedToLoad() const { return m_marker.wasLeftBehind(); }
    /// Loads the plug-ins and tells them "Startup". A crash from here on until their handlers have returned makes the
    /// next start's hasFailedToLoad() true.
    void load(Enabling enabling);
    /// Tells the plug-ins "Shutdown" and waits until their handlers have returned.
    void shutDown();

    HostEnvironment &environment() { return m_environment; }
    KRPluginManager &manager() { return *m_manager; }
    HostActions &actions() { return *m_actions; }
    HostLog &log() { return m_log; }
    PluginInstaller &installer() { return *m_installer; }
    void setInstaller(std::unique_ptr<PluginInstaller> installer) { m_installer = std::move(installer); }

signals:
    /// Plug-ins were loaded anew, enabled or disabled; once for all of one turn of the event loop.
    void pluginsChanged();

private:
    void observe(const QString &notification);
    void tellChange();
    /// Tells "Startup" to those that are enabled and have not heard it yet.
    void startPlugins();

    HostEnvironment m_environment;
    LTAppEnvironment::Installation m_installation;
    HostLog m_log;
    LoadingMarker m_marker;
    std::unique_ptr<KRPluginManager> m_manager;
    std::unique_ptr<HostActions> m_actions;
    std::unique_ptr<PluginInstaller> m_installer;
    QSet<QString> m_started;
    /// Runs while a change waits to be told.
    QTimer m_changeTimer;
    std::vector<NotificationObserver> m_observers;
};
