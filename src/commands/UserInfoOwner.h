#pragma once

#include "platform/Export.h"
#include "platform/script/ScriptObject.h"

#include <QVariantMap>

#include <optional>

/// A layer or document of the host, as far as plug-ins keep their own data on it: the host saves its user info with the
/// document. Main thread only.
class KORVAN_EXPORT UserInfoOwner : public ScriptObject
{
public:
    ~UserInfoOwner() override;

    /// Dictionaries of plug-in data under the plug-ins' identifiers; nil when there is nothing.
    virtual std::optional<QVariantMap> userInfo() const = 0;
    virtual void setUserInfo(const std::optional<QVariantMap> &userInfo) = 0;
};
