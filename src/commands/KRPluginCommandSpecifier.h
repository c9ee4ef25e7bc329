#pragma once

#include "platform/Export.h"

#include <QMetaType>
#include <QString>
#include <QVariant>

#include <optional>

/// Names one command of one plug-in, independently of any loaded object. An immutable value: cheap to copy, usable as
/// a key of QHash and as a menu item's represented object. Reentrant.
class KORVAN_EXPORT KRPluginCommandSpecifier
{
public:
    KRPluginCommandSpecifier() = default;
    /// `initWithPluginBundleIdentifier:commandIdentifier:`. Either may be nil.
    KRPluginCommandSpecifier(
        const std::optional<QString> &pluginBundleIdentifier, const std::optional<QString> &commandIdentifier);

    const std::optional<QString> &pluginBundleIdentifier() const { return m_pluginBundleIdentifier; }
    const std::optional<QString> &commandIdentifier() const { return m_commandIdentifier; }

    /// "plug-in/command", or the command identifier alone without a plug-in identifier; nil when both are nil. A nil
    /// command identifier of a plug-in reads "(null)". Nothing is escaped: different specifiers may share a text.
    std::optional<QString> stringValue() const;

    /// The hash of stringValue(); 0 when that is nil.
    std::size_t hash() const;

    /// Equal plug-in identifiers (nil equals nil) and equal command identifiers. A nil command identifier equals
    /// nothing, not even itself; this asymmetry is deliberate.
    bool isEqualToCommandSpecifier(const KRPluginCommandSpecifier &other) const;
    /// False for a value that is no specifier.
    bool isEqual(const QVariant &other) const;

    /// Class and address, then stringValue().
    QString debugDescription() const;

    friend bool operator==(const KRPluginCommandSpecifier &first, const KRPluginCommandSpecifier &second)
    {
        return first.isEqualToCommandSpecifier(second);
    }
    friend std::size_t qHash(const KRPluginCommandSpecifier &specifier, std::size_t seed = 0)
    {
        return specifier.hash() ^ seed;
    }

private:
    std::optional<QString> m_pluginBundleIdentifier;
    std::optional<QString> m_commandIdentifier;
};

Q_DECLARE_METATYPE(KRPluginCommandSpecifier)
