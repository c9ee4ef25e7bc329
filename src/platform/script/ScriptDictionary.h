#pragma once

#include "platform/Export.h"

#include <QMap>
#include <QMetaType>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <memory>

/// A dictionary with an identity: everybody who holds it sees the same entries, scripts included. Held by shared
/// pointers. Main thread only.
class KORVAN_EXPORT ScriptDictionary
{
public:
    ScriptDictionary() = default;
    explicit ScriptDictionary(const QVariantMap &entries)
        : m_entries(entries)
    { }
    ScriptDictionary(const ScriptDictionary &) = delete;
    ScriptDictionary &operator=(const ScriptDictionary &) = delete;

    /// The entry as it is kept: an object or array that a script has put in or asked for is a ScriptValue. Nil
    /// (invalid) when there is none.
    QVariant value(const QString &key) const { return m_entries.value(key); }
    bool contains(const QString &key) const { return m_entries.contains(key); }
    QStringList keys() const { return m_entries.keys(); }
    bool isEmpty() const { return m_entries.isEmpty(); }

    void setValue(const QString &key, const QVariant &value) { m_entries.insert(key, value); }
    void remove(const QString &key) { m_entries.remove(key); }
    void clear() { m_entries.clear(); }

private:
    QVariantMap m_entries;
};

using ScriptDictionaryPointer = std::shared_ptr<ScriptDictionary>;
Q_DECLARE_METATYPE(ScriptDictionaryPointer)
