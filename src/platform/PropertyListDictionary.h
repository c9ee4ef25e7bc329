#pragma once

#include "platform/PropertyListNodes.h"

#include <QStringList>
#include <QVariantMap>

/// A property list whose root is a dictionary, in the parser's own form: only what is asked for becomes a value. It
/// moves but is not copied. Several threads may read it at the same time.
class PropertyListDictionary
{
public:
    PropertyListDictionary();

    /// Nil for anything but a property list whose root is a dictionary.
    static std::optional<PropertyListDictionary> fromBytes(const QByteArray &bytes);
    /// Nil when it holds what no property list can.
    static std::optional<PropertyListDictionary> fromVariantMap(const QVariantMap &map);

    /// Nil (invalid) when there is none.
    QVariant value(const QString &key) const;
    QStringList keys() const;
    QVariantMap toVariantMap() const;
    QByteArray toXML() const { return xmlFromNode(m_root.get()); }
    PropertyListDictionary copy() const;

    /// Nil removes the value. False, and nothing is changed, for what no property list can hold.
    bool setValue(const QString &key, const QVariant &value);

    /// The same for one value of the dictionary under `entry`, whose other values stay as they are, whatever they are.
    /// An entry that is missing or no dictionary becomes one; one that becomes empty is removed.
    bool setValueInEntry(const QString &entry, const QString &key, const QVariant &value);

    /// The entry as it is, to be put back; null when there is none.
    PropertyListNode copyOfEntry(const QString &key) const;
    /// Null removes it.
    void setEntry(const QString &key, PropertyListNode entry);

private:
    explicit PropertyListDictionary(PropertyListNode root);

    PropertyListNode m_root;
};
