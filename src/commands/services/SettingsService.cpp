#include "commands/services/SettingsService.h"

#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptException.h"

namespace {

QString identifierFor(const KRPluginCommand *command)
{
    return command ? command->pluginBundleIdentifierForMetadata().value_or(QString()) : QString();
}

} // namespace

SettingsService::SettingsService(ServiceContext context)
    : m_context(std::move(context))
    , m_settings(identifierFor(m_context.command.lock().get()))
{ }

QString SettingsService::pluginIdentifier() const
{
    return identifierFor(m_context.command.lock().get());
}

void SettingsService::setValues(const QVariantMap &changes)
{
    if (const auto error = m_settings.setValues(changes))
        throw ScriptException(error->localizedDescription);
}

QVariantMap SettingsService::valuesOn(const std::shared_ptr<UserInfoOwner> &owner)
{
    const auto userInfo = owner ? owner->userInfo() : std::nullopt;
    return userInfo ? userInfo->value(pluginIdentifier()).toMap() : QVariantMap();
}

void SettingsService::setValueOn(const std::shared_ptr<UserInfoOwner> &owner, const QString &key, const QVariant &value)
{
    if (const auto refusal = value.isValid() ? PluginSettings::refusalToKeep(key, value) : std::nullopt)
        throw ScriptException(refusal->localizedDescription); // the command would only log it
    if (const auto command = m_context.command.lock())
        command->setValueForKeyOnObject(value, key, owner, pluginIdentifier());
}

const ScriptClass &SettingsService::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&SettingsService::values>("values", "(): Record<string, unknown>"),
        scriptOperation<&SettingsService::setValues>("setValues", "(changes: Record<string, unknown>)"),
        scriptOperation<&SettingsService::valuesOn>("valuesOn", "(owner: Layer | Document): Record<string, unknown>"),
        scriptOperation<&SettingsService::setValueOn>("setValueOn", "(owner: Layer | Document, key, value: unknown)"),
    };
    static constexpr ScriptClass scriptClass{"SettingsService", operations};
    return scriptClass;
}
