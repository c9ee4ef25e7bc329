// What the sessions of a command find outside of the language.

#include "commands/KRPluginCommand.h"

#include "commands/CoreModules.h"
#include "commands/services/CommandServices.h"
#include "platform/LTAppEnvironment.h"
#include "platform/services/PlatformServices.h"

QVariant KRPluginCommand::hostService(const QString &name, const std::shared_ptr<ScriptHost> &host)
{
    auto service = LTAppEnvironment::current().scriptService(name, host, shared_from_this());
    if (!service.isValid())
        service = makeCommandService(name, {host, std::static_pointer_cast<KRPluginCommand>(shared_from_this())});
    return service.isValid() ? service : platformService(name, host);
}

ScriptGlobal KRPluginCommand::scriptGlobal(const QString &name)
{
    return coreModuleOfGlobal(name, m_coreModuleMap);
}
