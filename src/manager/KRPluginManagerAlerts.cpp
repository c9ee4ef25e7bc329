// What the user is told about plug-ins in an alert.

#include "bundles/KRPluginBundle.h"
#include "localization/Localizable.h"
#include "manager/KRPluginManager.h"
#include "platform/AlertPresenter.h"
#include "platform/LTAppEnvironment.h"
#include "platform/ObjectText.h"

namespace {

QString unsupportedPluginText(const KRPluginBundle &bundle)
{
    //: The message of an alert, %@ is the name of a plug-in.
    auto text = Localizable::tr(
        "The extension “%@” is not compatible with your computer’s CPU architecture. Please contact this "
        "extension’s developer directly for assistance.");
    return text.replace(QStringLiteral("%@"), textOrNull(bundle.name()));
}

} // namespace

void KRPluginManager::alertAboutUnsupportedPluginBundle(const std::shared_ptr<KRPluginBundle> &bundle) const
{
    if (!bundle || !bundle->hasUnsupportedBinaries())
        return;
    LTAppEnvironment::current().runModalAlert(
        {AlertStyle::Critical, Localizable::tr("Unsupported plug-in"), unsupportedPluginText(*bundle)});
}
