#include "PluginSession.h"

#include "platform/LTAppEnvironment.h"

#include <QDir>

namespace {

QList<QUrl> pluginFolders(const GlobalOptions &options)
{
    if (!options.folders)
        return KRPluginManager::pluginsURLs();
    QList<QUrl> urls;
    for (const auto &folder : *options.folders)
        urls.append(QUrl::fromLocalFile(QDir::current().absoluteFilePath(folder) + u'/'));
    return urls;
}

/// What is remembered of the plug-ins, with the blocklist in force.
std::shared_ptr<KRPluginManagingState> makeState()
{
    const QDir folder(LTAppEnvironment::current().applicationSupportFolder().toLocalFile());
    const auto file = QUrl::fromLocalFile(folder.filePath(QStringLiteral("PluginMetadata.plist")));
    auto state = std::make_shared<KRPluginManagingState>(file);
    state->setIncompatiblePluginVersions(KRPluginManagingState::incompatiblePlugins());
    return state;
}

} // namespace

PluginSession::PluginSession(const GlobalOptions &options)
    : m_environment(options)
    , m_installation(m_environment)
    , m_state(makeState())
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
