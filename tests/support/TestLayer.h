#pragma once

#include "commands/UserInfoOwner.h"
#include "platform/script/ScriptClass.h"

/// A layer that keeps its user info in memory and counts the changes.
class TestLayer final : public UserInfoOwner
{
public:
    std::optional<QVariantMap> userInfo() const override { return info; }
    void setUserInfo(const std::optional<QVariantMap> &userInfo) override
    {
        info = userInfo;
        ++changes;
    }
    const ScriptClass &scriptClass() const override
    {
        static constexpr ScriptClass scriptClass{"TestLayer", {}};
        return scriptClass;
    }

    std::optional<QVariantMap> info;
    int changes = 0;
};
