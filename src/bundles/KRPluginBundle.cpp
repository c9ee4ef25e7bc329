#include "bundles/KRPluginBundle.h"

#include "bundles/MenuDescription.h"
#include "bundles/PluginManifest.h"
#include "platform/FileURL.h"
#include "platform/LTAppEnvironment.h"
#include "platform/LTCompareVersions.h"
#include "platform/ObjectText.h"

KRPluginBundle::KRPluginBundle(Key, const QByteArray &path)
    : m_path(path)
{ }

KRPluginBundle::~KRPluginBundle() = default;

PluginDetails &KRPluginBundle::details() const
{
    if (!m_details)
        m_details = std::make_unique<PluginDetails>(parsePluginDetails(std::exchange(m_manifestText, {})));
    return *m_details;
}

QString KRPluginBundle::scriptDefaultTitle()
{
    return untitledScriptTitle();
}

QUrl KRPluginBundle::url() const
{
    return m_path.isEmpty() ? QUrl() : fileURLFromPath(m_path, FileKind::Folder);
}

std::optional<QString> KRPluginBundle::pluginDescription() const
{
    return details().pluginDescription;
}

std::optional<QString> KRPluginBundle::author() const
{
    return details().author;
}

std::optional<QString> KRPluginBundle::authorEmail() const
{
    return details().authorEmail;
}

QUrl KRPluginBundle::homepageURL() const
{
    return details().homepageURL;
}

std::optional<QString> KRPluginBundle::compatibleVersion() const
{
    return details().compatibleVersion;
}

std::optional<QString> KRPluginBundle::maximumCompatibleVersion() const
{
    return details().maximumCompatibleVersion;
}

QUrl KRPluginBundle::updatingInfoURL() const
{
    const auto changed = m_updatingInfoURL.get();
    return changed ? *changed : details().updatingInfoURL;
}

void KRPluginBundle::setUpdatingInfoURL(const QUrl &url)
{
    m_updatingInfoURL.set(url);
}

QVariantMap KRPluginBundle::menuDescription() const
{
    auto &menu = details().menu;
    if (!menu)
        menu = defaultMenuDescription(m_name, m_commands);
    return *menu;
}

void KRPluginBundle::setMenuDescription(const std::optional<QVariantMap> &description)
{
    details().menu = description;
}

QString KRPluginBundle::versionedIdentifier() const
{
    return QStringLiteral("%1(%2)").arg(
        m_identifier.value_or(QStringLiteral("unknown.plugin")), m_version.value_or(QStringLiteral("000")));
}

bool KRPluginBundle::isCompatible() const
{
    const auto lowest = compatibleVersion();
    const auto highest = maximumCompatibleVersion();
    if (!lowest || !highest)
        return false;
    const auto version = LTAppEnvironment::current().bundleShortVersion();
    const auto major = version.left(version.indexOf(u'.'));
    return LTCompareVersions(lowest, major) != 1 && LTCompareVersions(highest, major) != -1;
}

QString KRPluginBundle::debugDescription() const
{
    QStringList commands;
    for (const auto &[identifier, command] : m_commands)
        commands.append(QStringLiteral("%1 = %2").arg(identifier, objectText("KRPluginCommand", command.get())));
    return QStringLiteral("%1 name: %2 enabled: %3 commands: {%4}")
        .arg(objectText("KRPluginBundle", this), textOrNull(m_name),
            m_enabled ? QStringLiteral("YES") : QStringLiteral("NO"), commands.join(QStringLiteral("; ")));
}

void KRPluginBundle::deliver(const std::vector<LogMessages::Message> &messages)
{
    for (const auto &message : messages) {
        if (message.recipient == LogMessages::Recipient::User)
            logErrorString(message.text);
        else
            LTAppEnvironment::current().systemLog(message.text);
    }
}

void KRPluginBundle::logErrorString(const QString &message)
{
    auto &environment = LTAppEnvironment::current();
    auto *const target = environment.logTarget();
    if (!target)
        return environment.systemLog(message);
    const QVariantMap entry{
        {QStringLiteral("payload"), QVariantList{message}},
        {QStringLiteral("stringValue"), message},
        {QStringLiteral("level"), QStringLiteral("error")},
    };
    target->log(entry, QStringLiteral("__plugin-loader"));
}
