#include "PluginSession.h"

#include "hosting/ManagerSetup.h"

PluginSession::PluginSession(const GlobalOptions &options)
    : m_environment(options)
    , m_installation(m_environment)
    , m_state(makeManagingState())
    , m_manager(pluginFolders(options), m_updater, m_state)
{
    m_manager.setDisableAllPlugins(options.safeMode);
    m_manager.reloadPlugins();
}

std::optional<KRPluginCommandSpecifier> PluginSession::findCommand(const QString &specifier)
{
    std::optional<KRPluginCommandSpecifier> longest;
    const auto plugins = m_manager.plugins();
    for (auto plugin = plugins.begin(); plugin != plugins.end(); ++plugin) {
        const auto prefix = plugin.key() + u'/';
        const bool isLonger = !longest || plugin.key().size() > longest->pluginBundleIdentifier()->size();
        if (specifier.startsWith(prefix) && isLonger)
            longest = KRPluginCommandSpecifier(plugin.key(), specifier.mid(prefix.size()));
    }
    return longest && m_manager.commandWithSpecifier(*longest) ? longest : std::nullopt;
}
