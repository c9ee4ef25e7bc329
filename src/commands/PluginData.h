#pragma once

#include "commands/UserInfoOwner.h"

#include <QString>
#include <QVariant>

/// The value that a plug-in keeps under the key; nil when it keeps none.
QVariant pluginDataValue(const UserInfoOwner &owner, const QString &pluginIdentifier, const QString &key);

/// Keeps a value under the key, which no other plug-in sees; nil (invalid) removes it. No empty dictionary stays
/// behind.
void setPluginDataValue(
    UserInfoOwner &owner, const QString &pluginIdentifier, const QString &key, const QVariant &value);
