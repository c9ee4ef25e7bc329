#include "platform/script/ScriptValue.h"

ScriptValueStorage::~ScriptValueStorage() = default;

bool ScriptValue::isAlive() const
{
    return m_storage && m_storage->isAlive();
}

QString ScriptValue::description() const
{
    if (m_kind == Kind::Cycle)
        return QStringLiteral("[Circular]");
    return m_storage ? m_storage->description() : QString();
}

QVariant ScriptValue::toVariant() const
{
    return m_kind == Kind::Data && m_storage ? m_storage->toVariant() : QVariant();
}

QVariant ScriptValue::call(const QVariantList &arguments) const
{
    return m_kind == Kind::Function && m_storage ? m_storage->call(arguments) : QVariant();
}

bool ScriptValue::isSettled() const
{
    return m_storage && m_storage->isSettled();
}

QVariant ScriptValue::settledValue() const
{
    return m_storage ? m_storage->settledValue() : QVariant();
}
