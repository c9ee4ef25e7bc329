// What scripts may call on a plug-in: "context.plugin".

#include "bundles/KRPluginBundle.h"

#include "platform/script/ScriptClass.h"

namespace {

QVariant commandsForScript(const KRPluginBundle &bundle)
{
    OrderedVariantDictionary commands;
    for (const auto &[identifier, command] : bundle.commands())
        commands.insert({identifier, QVariant::fromValue(ScriptObjectPointer(command))});
    return QVariant::fromValue(commands);
}

} // namespace

const ScriptClass &KRPluginBundle::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&KRPluginBundle::identifier>("identifier"),
        scriptOperation<&KRPluginBundle::name>("name"),
        scriptOperation<&KRPluginBundle::version>("version"),
        scriptOperation<&KRPluginBundle::versionedIdentifier>("versionedIdentifier"),
        scriptOperation<&KRPluginBundle::pluginDescription>("pluginDescription"),
        scriptOperation<&KRPluginBundle::author>("author"),
        scriptOperation<&KRPluginBundle::authorEmail>("authorEmail"),
        scriptOperation<&KRPluginBundle::homepageURL>("homepageURL"),
        scriptOperation<&KRPluginBundle::updatingInfoURL>("updatingInfoURL"),
        scriptOperation<&KRPluginBundle::compatibleVersion>("compatibleVersion"),
        scriptOperation<&KRPluginBundle::maximumCompatibleVersion>("maximumCompatibleVersion"),
        scriptOperation<&KRPluginBundle::isCompatible>("isCompatible"),
        scriptOperation<&KRPluginBundle::isEnabled>("isEnabled"),
        scriptOperation<&KRPluginBundle::suppliesData>("suppliesData"),
        scriptOperation<&KRPluginBundle::url>("url"),
        scriptOperation<&KRPluginBundle::urlForResourceNamed>("urlForResourceNamed", "(name)"),
        scriptOperation<&commandsForScript>("commands", "(): Record<string, Command>"),
        scriptOperation<&KRPluginBundle::menuDescription>("menuDescription", "(): MenuDescription"),
    };
    static constexpr ScriptClass scriptClass{"KRPluginBundle", operations};
    return scriptClass;
}
