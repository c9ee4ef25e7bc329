#pragma once

#include "CommandLineEnvironment.h"
#include "manager/KRPluginManager.h"
#include "updates/ReportingUpdater.h"

#include <optional>

/// The framework as one command of this program uses it: an environment in force, and a manager that has loaded the
/// plug-ins.
class PluginSession
{
public:
    explicit PluginSession(const GlobalOptions &options);

    KRPluginManager &manager() { return m_manager; }
    KRPluginManagingState &state() { return *m_state; }
    ReportingUpdater &updater() { return *m_updater; }

    /// The command that a text "plug-in/command" names: of all plug-ins whose identifier it begins with, the one with
    /// the longest. Nil when there is no such plug-in or command.
    std::optional<KRPluginCommandSpecifier> findCommand(const QString &specifier);

private:
    CommandLineEnvironment m_environment;
    LTAppEnvironment::Installation m_installation;
    std::shared_ptr<KRPluginManagingState> m_state;
    std::shared_ptr<ReportingUpdater> m_updater = std::make_shared<ReportingUpdater>();
    KRPluginManager m_manager;
};
