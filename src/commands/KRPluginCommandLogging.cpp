// What a command's scripts print, and the errors of its runs.

#include "commands/KRPluginCommand.h"

#include "commands/KRPluginLogAction.h"
#include "platform/script/ValueText.h"

namespace {

const auto commandKey = QStringLiteral("command");
const auto payloadKey = QStringLiteral("payload");
const auto stringValueKey = QStringLiteral("stringValue");
const auto levelKey = QStringLiteral("level");

bool isReadyMadeEntry(const QVariant &value)
{
    if (value.typeId() != QMetaType::QVariantMap)
        return false;
    const auto dictionary = value.toMap();
    return dictionary.value(stringValueKey).isValid() && dictionary.value(levelKey).isValid()
        && dictionary.value(payloadKey).isValid();
}

bool isNil(const QVariant &value)
{
    return !value.isValid() || value.typeId() == QMetaType::Nullptr;
}

} // namespace

void KRPluginCommand::print(const QVariant &value)
{
    log(value, QStringLiteral("log"));
}

void KRPluginCommand::error(const QVariant &value)
{
    log(value, QStringLiteral("error"));
}

void KRPluginCommand::scriptEncounteredException(const ScriptException &)
{
    m_errorInScript = true;
}

void KRPluginCommand::log(const QVariant &value, const QString &atLevel)
{
    auto entry = isReadyMadeEntry(value) ? value.toMap()
                                         : QVariantMap {
                                             {commandKey, QVariant::fromValue(weak_from_this())},
                                             {payloadKey, QVariantList {isNil(value) ? QStringLiteral("null") : value}},
                                             {stringValueKey, descriptionOfValue(value)},
                                             {levelKey, atLevel},
                                         };
    const auto logAction = m_manager ? m_manager->logAction() : nullptr;
    if (logAction)
        logAction->log(entry, m_identifier.value_or(QString()));
    else
        m_logsWhenRunViaTests.append(entry);
}

QString KRPluginCommand::logString() const
{
    if (const auto logAction = m_manager ? m_manager->logAction() : nullptr)
        return logAction->logStringFor(m_identifier.value_or(QString()));
    QStringList texts;
    for (const auto &entry : m_logsWhenRunViaTests) {
        const auto text = entry.toMap().value(stringValueKey);
        texts.append(descriptionOfValue(text.isValid() ? text : entry));
    }
    return texts.join(u'\n');
}

void KRPluginCommand::clearLog()
{
    if (const auto logAction = m_manager ? m_manager->logAction() : nullptr)
        logAction->clearLogFor(m_identifier.value_or(QString()));
    m_logsWhenRunViaTests.clear();
}
