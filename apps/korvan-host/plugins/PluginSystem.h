#pragma once

#include "plugins/HostActions.h"
#include "plugins/HostEnvironment.h"
#include "plugins/LoadingMarker.h"

#include "manager/KRPluginManager.h"
#include "platform/NotificationCenter.h"
#include "widgets/console/ConsoleLog.h"

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
    /// next start's hasFailedToLoad() true, and so does one in the handlers of those that are enabled later.
    void load(Enabling enabling);
    /// Tells the plug-ins "Shutdown" and waits until their handlers have returned.
    void shutDown();

    HostEnvironment &environment() { return m_environment; }
    KRPluginManager &manager() { return *m_manager; }
    HostActions &actions() { return *m_actions; }
    /// What commands and the framework log.
    const std::shared_ptr<ConsoleLog> &log() const { return m_log; }

signals:
    /// Plug-ins were loaded anew, enabled or disabled; once for all of one turn of the event loop.
    void pluginsChanged();

private:
    void observe(const QString &notification);
    void tellChange();
    void finishMarkerLater();
    /// Tells "Startup" to those that are enabled and have not heard it yet.
    void startPlugins();

    HostEnvironment m_environment;
    LTAppEnvironment::Installation m_installation;
    std::shared_ptr<ConsoleLog> m_log;
    LoadingMarker m_marker;
    std::unique_ptr<KRPluginManager> m_manager;
    std::unique_ptr<HostActions> m_actions;
    QSet<QString> m_started;
    /// Runs while a change waits to be told.
    QTimer m_changeTimer;
    std::vector<NotificationObserver> m_observers;
};
