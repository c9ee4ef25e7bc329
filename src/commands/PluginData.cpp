#include "commands/PluginData.h"

QVariant pluginDataValue(const UserInfoOwner &owner, const QString &pluginIdentifier, const QString &key)
{
    const auto userInfo = owner.userInfo();
    return userInfo ? userInfo->value(pluginIdentifier).toMap().value(key) : QVariant();
}

void setPluginDataValue(
    UserInfoOwner &owner, const QString &pluginIdentifier, const QString &key, const QVariant &value)
{
    auto userInfo = owner.userInfo().value_or(QVariantMap());
    auto values = userInfo.value(pluginIdentifier).toMap();
    if (value.isValid())
        values.insert(key, value);
    else
        values.remove(key);
    if (values.isEmpty())
        userInfo.remove(pluginIdentifier);
    else
        userInfo.insert(pluginIdentifier, values);
    owner.setUserInfo(userInfo.isEmpty() ? std::nullopt : std::optional(userInfo));
}
