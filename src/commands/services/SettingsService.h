#pragma once

#include "commands/PluginSettings.h"
#include "commands/services/ServiceContext.h"

#include <QVariantMap>

/// "host:settings": the values that a command's plug-in keeps for itself, and
/// on layers and documents.
class SettingsService final : public ScriptObject
{
public:
    explicit SettingsService(ServiceContext context);

    QVariantMap values() { return m_settings.values(); }
    /// Nil (undefined) removes a value.
    void setValues(const QVariantMap &changes);
    QVariantMap valuesOn(const std::shared_ptr<UserInfoOwner> &owner);
    void setValueOn(const std::shared_ptr<UserInfoOwner> &owner, const QString &key, const QVariant &value);

    const ScriptClass &scriptClass() const override;

private:
    QString pluginIdentifier() const;

    ServiceContext m_context;
    PluginSettings m_settings;
};
