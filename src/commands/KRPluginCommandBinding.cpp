// What scripts may call on a command: "context.command" and "__command".

#include "commands/KRPluginCommand.h"

#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptValue.h"

namespace {

QVariant handlersForScript(const KRPluginCommand &command)
{
    return QVariant::fromValue(command.handlers());
}

std::optional<QString> specifierForScript(const KRPluginCommand &command)
{
    return command.commandSpecifier().stringValue();
}

using OptionalText = std::optional<QString>;
using OwnerPointer = std::shared_ptr<UserInfoOwner>;

/// Null removes a value, as nil does. Undefined, the usual sign of a misspelt name, is no value at all: it must not
/// remove anything.
QVariant valueFromScript(const QVariant &value)
{
    if (value.typeId() == QMetaType::Nullptr)
        return {};
    return value.isValid() ? value : QVariant::fromValue(ScriptValue());
}

QVariant valueForKeyOfPlugin(
    const KRPluginCommand &command, const OptionalText &key, const OwnerPointer &owner, const OptionalText &identifier)
{
    return command.valueForKeyOnLayer(key, owner, identifier);
}

QVariant valueForKey(const KRPluginCommand &command, const OptionalText &key, const OwnerPointer &owner)
{
    return command.valueForKeyOnLayer(key, owner);
}

void setValueOfPlugin(KRPluginCommand &command, const QVariant &value, const OptionalText &key,
    const OwnerPointer &owner, const OptionalText &identifier)
{
    command.setValueForKeyOnObject(valueFromScript(value), key, owner, identifier);
}

void setValue(KRPluginCommand &command, const QVariant &value, const OptionalText &key, const OwnerPointer &owner)
{
    command.setValueForKeyOnLayer(valueFromScript(value), key, owner);
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
        scriptOperation<&valueForKeyOfPlugin>("valueForKey_onLayer_forPluginIdentifier"),
        scriptOperation<&valueForKeyOfPlugin>("valueForKey_onDocument_forPluginIdentifier"),
        scriptOperation<&valueForKey>("valueForKey_onLayer"),
        scriptOperation<&valueForKey>("valueForKey_onDocument"),
        scriptOperation<&setValueOfPlugin>("setValue_forKey_onLayer_forPluginIdentifier"),
        scriptOperation<&setValueOfPlugin>("setValue_forKey_onDocument_forPluginIdentifier"),
        scriptOperation<&setValueOfPlugin>("setValue_forKey_onObject_forPluginIdentifier"),
        scriptOperation<&setValue>("setValue_forKey_onLayer"),
        scriptOperation<&setValue>("setValue_forKey_onDocument"),
        scriptOperation<&KRPluginCommand::pluginBundleIdentifierForMetadata>("pluginBundleIdentifierForMetadata"),
    };
    static constexpr ScriptClass scriptClass{"KRPluginCommand", operations};
    return scriptClass;
}
