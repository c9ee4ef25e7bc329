// What the user is told about plug-ins in an alert.

#include "bundles/KRPluginBundle.h"
#include "localization/KorvanPluginManagerLocalization.h"
#include "manager/KRPluginManager.h"
#include "platform/AlertPresenter.h"
#include "platform/LTAppEnvironment.h"
#include "platform/ObjectText.h"

namespace {

QString unsupportedPluginText(const KRPluginBundle &bundle)
{
    auto text = KorvanPluginManagerLocalizedString(QStringLiteral(
        "The extension “%@” is not compatible with your computer’s CPU architecture. Please contact this "
        "extension’s developer directly for assistance."));
    return text.replace(QStringLiteral("%@"), textOrNull(bundle.name()));
}

} // namespace

void KRPluginManager::alertAboutUnsupportedPluginBundle(const std::shared_ptr<KRPluginBundle> &bundle) const
{
    if (!bundle || !bundle->hasUnsupportedBinaries())
        return;
    LTAppEnvironment::current().runModalAlert({AlertStyle::Critical,
        KorvanPluginManagerLocalizedString(QStringLiteral("Unsupported plug-in")), unsupportedPluginText(*bundle)});
}
