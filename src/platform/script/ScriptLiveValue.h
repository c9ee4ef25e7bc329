#pragma once

#include "platform/script/ScriptContext.h"
#include "platform/script/ScriptValue.h"

class ScriptLiveValue;

/// Whoever carries values between a session and C++; lets go of those that C++ holds when the session ends.
class ScriptLiveValueOwner
{
public:
    virtual ~ScriptLiveValueOwner();

    virtual void forget(ScriptLiveValue *value) = 0;
    virtual QString describe(JSValueRef value) = 0;
    virtual QVariant copy(JSValueRef value) = 0;
    virtual QVariant callFunction(JSObjectRef function, const QVariantList &arguments) = 0;
};

/// One value of a session that C++ holds on to, behind a ScriptValue.
class ScriptLiveValue final : public ScriptValueStorage
{
public:
    ScriptLiveValue(ScriptLiveValueOwner &owner, JSContextRef context, JSValueRef value);
    ~ScriptLiveValue() override;

    /// The value, in the session of that owner only; else null.
    JSValueRef valueIn(const ScriptLiveValueOwner *owner) const;
    /// Notes how a promise ended.
    void settle(const QVariant &value);
    /// Lets go of the value: its session ends.
    void end();

    bool isAlive() const override { return m_owner; }
    QString description() const override;
    QVariant toVariant() const override;
    QVariant call(const QVariantList &arguments) const override;
    bool isSettled() const override { return m_isSettled; }
    QVariant settledValue() const override { return m_settledValue; }

private:
    ScriptLiveValueOwner *m_owner;
    ProtectedValue m_value;
    bool m_isSettled = false;
    QVariant m_settledValue;
};
