#include "widgets/plugins/PluginOffers.h"

#include "manager/KRPluginManager.h"
#include "platform/LTCompareVersions.h"

std::optional<QString> offeredVersion(KRPluginManager &manager, const QString &identifier)
{
    const auto plugin = manager.plugins().value(identifier);
    const auto record = manager.versionsForPlugin(plugin);
    if (!record)
        return std::nullopt;
    QStringList newer;
    const auto versions = record->versions();
    for (const auto &version : versions) {
        if (LTCompareVersions(version, plugin->version()) > 0 && !manager.isPluginWithIdentifier(identifier, version))
            newer.append(version);
    }
    return LTHighestVersionNumber(newer);
}

bool isNewerThanInstalled(KRPluginManager &manager, const QString &identifier, const QString &version)
{
    const auto plugin = manager.plugins().value(identifier);
    return plugin && LTCompareVersions(version, plugin->version()) > 0;
}
