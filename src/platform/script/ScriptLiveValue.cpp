#include "platform/script/ScriptLiveValue.h"

ScriptLiveValueOwner::~ScriptLiveValueOwner() = default;

ScriptLiveValue::ScriptLiveValue(ScriptLiveValueOwner &owner, JSContextRef context, JSValueRef value)
    : m_owner(&owner)
    , m_value(context, value)
{ }

ScriptLiveValue::~ScriptLiveValue()
{
    if (m_owner)
        m_owner->forget(this);
}

JSValueRef ScriptLiveValue::valueIn(const ScriptLiveValueOwner *owner) const
{
    return m_owner == owner ? m_value.get() : nullptr;
}

void ScriptLiveValue::settle(const QVariant &value)
{
    m_isSettled = true;
    m_settledValue = value;
}

void ScriptLiveValue::end()
{
    m_owner = nullptr;
    m_value.reset();
}

QString ScriptLiveValue::description() const
{
    return m_owner ? m_owner->describe(m_value.get()) : QString();
}

QVariant ScriptLiveValue::toVariant() const
{
    return m_owner ? m_owner->copy(m_value.get()) : QVariant();
}

QVariant ScriptLiveValue::call(const QVariantList &arguments) const
{
    return m_owner ? m_owner->callFunction(m_value.object(), arguments) : QVariant();
}
