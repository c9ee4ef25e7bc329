// What the user, the host and the list of incompatible versions decide about plug-ins.

#include "manager/IncompatiblePlugins.h"
#include "manager/KRPluginManager.h"
#include "platform/LTAppEnvironment.h"
#include "platform/NotificationCenter.h"
#include "state/RemoteBlocklist.h"

namespace {

QList<std::shared_ptr<KRPluginBundle>> pluginsThatAre(bool enabled, const PluginTable &plugins)
{
    QList<std::shared_ptr<KRPluginBundle>> matching;
    for (const auto &bundle : plugins) {
        if (bundle->isEnabled() == enabled)
            matching.append(bundle);
    }
    return matching;
}

} // namespace

bool KRPluginManager::shouldEnablePluginIdentifier(
    const QString &identifier, const std::optional<QString> &withVersion) const
{
    if (m_disableAllPlugins)
        return false;
    return !m_pluginStateManager || m_pluginStateManager->shouldEnablePluginIdentifier(identifier, withVersion);
}

void KRPluginManager::enablePlugin(const std::shared_ptr<KRPluginBundle> &bundle)
{
    if (m_disableAllPlugins) {
        resetAllPluginMetadataToBeDisabled();
        m_disableAllPlugins = false;
    }
    changeEnabledState(bundle, true);
}

void KRPluginManager::disablePlugin(const std::shared_ptr<KRPluginBundle> &bundle)
{
    changeEnabledState(bundle, false);
}

void KRPluginManager::changeEnabledState(const std::shared_ptr<KRPluginBundle> &bundle, bool enabled)
{
    if (m_pluginStateManager && bundle && bundle->identifier())
        m_pluginStateManager->setEnabled(enabled, *bundle->identifier(), bundle->version());
    reloadPlugins();
    postPluginDidChangeEnabledStateNotification();
}

void KRPluginManager::resetAllPluginMetadataToBeDisabled()
{
    const auto identifiers = plugins().keys();
    for (const auto &identifier : identifiers) {
        // Asked for anew: each reload before may have lost it.
        if (const auto bundle = plugins().value(identifier))
            disablePlugin(bundle);
    }
}

void KRPluginManager::postPluginDidChangeEnabledStateNotification()
{
    LTAppEnvironment::current().notificationCenter().post(
        {KRPluginManagerPluginDidChangeEnabledStateNotification, this});
}

QList<std::shared_ptr<KRPluginBundle>> KRPluginManager::enabledPlugins()
{
    return pluginsThatAre(true, plugins());
}

QList<std::shared_ptr<KRPluginBundle>> KRPluginManager::disabledPlugins()
{
    return pluginsThatAre(false, plugins());
}

QStringList KRPluginManager::incompatiblePlugins()
{
    QStringList identifiers;
    const auto installed = plugins();
    for (auto plugin = installed.begin(); plugin != installed.end(); ++plugin) {
        if (isIncompatiblePlugin(plugin.value()))
            identifiers.append(plugin.key());
    }
    return identifiers;
}

bool KRPluginManager::isIncompatiblePlugin(const std::shared_ptr<KRPluginBundle> &bundle) const
{
    return bundle && isPluginWithIdentifier(bundle->identifier().value_or(QString()), bundle->version());
}

bool KRPluginManager::isPluginWithIdentifier(
    const QString &identifier, const std::optional<QString> &incompatibleWithVersion) const
{
    return m_pluginStateManager && m_pluginStateManager->isPluginWithIdentifier(identifier, incompatibleWithVersion);
}

void KRPluginManager::registerIncompatiblePlugins()
{
    plugins(); // which loads them where they are not
    m_incompatiblePlugins->registerInstalled();
}

qint64 KRPluginManager::numberOfIncompatiblePluginsDisabled() const
{
    return m_incompatiblePlugins->count();
}

void KRPluginManager::setNumberOfIncompatiblePluginsDisabled(qint64 number)
{
    m_incompatiblePlugins->setCount(number);
}

QString KRPluginManager::pluginsDisabledListRemotePath() const
{
    return remoteBlocklistURL();
}

void KRPluginManager::downloadRemotePluginsBlocklist(BlocklistUpdateHandler completionHandler)
{
    m_remoteBlocklist->download(std::move(completionHandler));
}

bool KRPluginManager::contentsSameForSmallTextFiles(const QUrl &file1, const QUrl &file2) const
{
    return holdSameText(file1, file2);
}
