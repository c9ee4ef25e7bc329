#include "commands/KRPluginCommandSpecifier.h"

#include "platform/ObjectText.h"

#include <QHash>

KRPluginCommandSpecifier::KRPluginCommandSpecifier(
    const std::optional<QString> &pluginBundleIdentifier, const std::optional<QString> &commandIdentifier)
    : m_pluginBundleIdentifier(pluginBundleIdentifier)
    , m_commandIdentifier(commandIdentifier)
{ }

std::optional<QString> KRPluginCommandSpecifier::stringValue() const
{
    if (!m_pluginBundleIdentifier)
        return m_commandIdentifier;
    return *m_pluginBundleIdentifier + u'/' + textOrNull(m_commandIdentifier);
}

std::size_t KRPluginCommandSpecifier::hash() const
{
    const auto text = stringValue();
    return text ? ::qHash(*text) : 0;
}

bool KRPluginCommandSpecifier::isEqualToCommandSpecifier(const KRPluginCommandSpecifier &other) const
{
    if (m_pluginBundleIdentifier != other.m_pluginBundleIdentifier)
        return false;
    return m_commandIdentifier && m_commandIdentifier == other.m_commandIdentifier;
}

bool KRPluginCommandSpecifier::isEqual(const QVariant &other) const
{
    return other.metaType() == QMetaType::fromType<KRPluginCommandSpecifier>()
        && isEqualToCommandSpecifier(other.value<KRPluginCommandSpecifier>());
}

QString KRPluginCommandSpecifier::debugDescription() const
{
    return QStringLiteral("%1 - %2").arg(objectText("KRPluginCommandSpecifier", this), textOrNull(stringValue()));
}
