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
        scriptOperation<&handlersForScript>("handlers", "(): Record<string, string>"),
        scriptOperation<&KRPluginCommand::shortcut>("shortcut"),
        scriptOperation<&KRPluginCommand::shortcutKey>("shortcutKey"),
        scriptOperation<&KRPluginCommand::shortcutModifiers>("shortcutModifiers"),
        scriptOperation<&KRPluginCommand::scope>("scope"),
        scriptOperation<&KRPluginCommand::hasRunHandler>("hasRunHandler"),
        scriptOperation<&KRPluginCommand::canAppearInMenuBar>("canAppearInMenuBar"),
        scriptOperation<&specifierForScript>("commandSpecifier"),
        scriptOperation<&KRPluginCommand::metadata>("metadata", "(): CommandMetadata"),
        scriptOperation<&KRPluginCommand::pluginBundle>("pluginBundle", "(): Plugin | null"),
        scriptOperation<&KRPluginCommand::stayRunning>("stayRunning"),
        scriptOperation<&KRPluginCommand::setStayRunning>("setStayRunning", "(stayRunning)"),
        scriptOperation<&KRPluginCommand::print>("print", "(value: unknown)"),
        scriptOperation<&KRPluginCommand::error>("error", "(value: unknown)"),
        scriptOperation<&KRPluginCommand::log>("log_atLevel", "(value: unknown, level)"),
        scriptOperation<&KRPluginCommand::logString>("logString"),
        scriptOperation<&valueForKeyOfPlugin>(
            "valueForKey_onLayer_forPluginIdentifier", "(key, layer: Layer, pluginIdentifier): any"),
        scriptOperation<&valueForKeyOfPlugin>(
            "valueForKey_onDocument_forPluginIdentifier", "(key, document: Document, pluginIdentifier): any"),
        scriptOperation<&valueForKey>("valueForKey_onLayer", "(key, layer: Layer): any"),
        scriptOperation<&valueForKey>("valueForKey_onDocument", "(key, document: Document): any"),
        scriptOperation<&setValueOfPlugin>(
            "setValue_forKey_onLayer_forPluginIdentifier", "(value: JSONValue, key, layer: Layer, pluginIdentifier)"),
        scriptOperation<&setValueOfPlugin>("setValue_forKey_onDocument_forPluginIdentifier",
            "(value: JSONValue, key, document: Document, pluginIdentifier)"),
        scriptOperation<&setValueOfPlugin>("setValue_forKey_onObject_forPluginIdentifier",
            "(value: JSONValue, key, object: Layer | Document, pluginIdentifier)"),
        scriptOperation<&setValue>("setValue_forKey_onLayer", "(value: JSONValue, key, layer: Layer)"),
        scriptOperation<&setValue>("setValue_forKey_onDocument", "(value: JSONValue, key, document: Document)"),
        scriptOperation<&KRPluginCommand::pluginBundleIdentifierForMetadata>("pluginBundleIdentifierForMetadata"),
    };
    static constexpr ScriptClass scriptClass{"KRPluginCommand", operations};
    return scriptClass;
}
