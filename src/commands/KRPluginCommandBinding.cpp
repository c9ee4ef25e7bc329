// What scripts may call on a command: "context.command" and "__command".

#include "commands/KRPluginCommand.h"

#include "platform/script/ScriptClass.h"

namespace {

QVariant handlersForScript(const KRPluginCommand &command)
{
    return QVariant::fromValue(command.handlers());
}

std::optional<QString> specifierForScript(const KRPluginCommand &command)
{
    return command.commandSpecifier().stringValue();
}

} // namespace

const ScriptClass &KRPluginCommand::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&KRPluginCommand::identifier>("identifier"),
        scriptOperation<&KRPluginCommand::name>("name"),
        scriptOperation<&handlersForScript>("handlers"),
        scriptOperation<&KRPluginCommand::shortcut>("shortcut"),
        scriptOperation<&KRPluginCommand::shortcutKey>("shortcutKey"),
        scriptOperation<&KRPluginCommand::shortcutModifiers>("shortcutModifiers"),
        scriptOperation<&KRPluginCommand::scope>("scope"),
        scriptOperation<&KRPluginCommand::hasRunHandler>("hasRunHandler"),
        scriptOperation<&KRPluginCommand::canAppearInMenuBar>("canAppearInMenuBar"),
        scriptOperation<&specifierForScript>("commandSpecifier"),
        scriptOperation<&KRPluginCommand::metadata>("metadata"),
        scriptOperation<&KRPluginCommand::pluginBundle>("pluginBundle"),
        scriptOperation<&KRPluginCommand::stayRunning>("stayRunning"),
        scriptOperation<&KRPluginCommand::setStayRunning>("setStayRunning"),
        scriptOperation<&KRPluginCommand::print>("print"),
        scriptOperation<&KRPluginCommand::error>("error"),
        scriptOperation<&KRPluginCommand::log>("log_atLevel"),
        scriptOperation<&KRPluginCommand::logString>("logString"),
    };
    static constexpr ScriptClass scriptClass{"KRPluginCommand", operations};
    return scriptClass;
}
