#include "PluginLookup.h"

#include <QFileInfo>

std::shared_ptr<KRPluginBundle> findPlugin(KRPluginManager &manager, const QString &identifierOrPath)
{
    if (const auto installed = manager.plugins().value(identifierOrPath))
        return installed;
    const auto path = QFileInfo(identifierOrPath).canonicalFilePath();
    const auto bundle =
        path.isEmpty() ? nullptr : KRPluginBundle::pluginBundleWithURL(QUrl::fromLocalFile(path + u'/'));
    if (bundle)
        bundle->setEnabled(
            manager.shouldEnablePluginIdentifier(bundle->identifier().value_or(QString()), bundle->version()));
    return bundle;
}
