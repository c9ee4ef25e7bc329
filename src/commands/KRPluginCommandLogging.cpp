// What a command's scripts print, and the errors of its runs.

#include "commands/KRPluginCommand.h"

#include "commands/KRPluginLogAction.h"
#include "commands/WeakPlugins.h"
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
    setErrorInScript(true);
}

void KRPluginCommand::log(const QVariant &value, const QString &atLevel)
{
    const auto kept = withWeakPlugins(value);
    const auto entry = isReadyMadeEntry(kept)
        ? kept.toMap()
        : QVariantMap{
            {commandKey, QVariant::fromValue(weak_from_this())},
            {payloadKey, QVariantList{isNil(kept) ? QStringLiteral("null") : kept}},
            {stringValueKey, descriptionOfValue(kept)},
            {levelKey, atLevel},
        };
    if (const auto action = logAction())
        action->logFromCommand(entry, m_identifier.value_or(QString()),
            std::static_pointer_cast<KRPluginCommand>(weak_from_this().lock()));
    else
        runState().logsWhenRunViaTests.append(entry);
}

QString KRPluginCommand::logString() const
{
    if (const auto action = logAction())
        return action->logStringFor(m_identifier.value_or(QString()));
    QStringList texts;
    const auto entries = logsWhenRunViaTests();
    for (const auto &entry : entries) {
        const auto text = entry.toMap().value(stringValueKey);
        texts.append(descriptionOfValue(text.isValid() ? text : entry));
    }
    return texts.join(u'\n');
}

void KRPluginCommand::clearLog()
{
    if (const auto action = logAction())
        action->clearLogFor(m_identifier.value_or(QString()));
    runState().logsWhenRunViaTests.clear();
}

std::shared_ptr<KRPluginLogAction> KRPluginCommand::logAction() const
{
    const auto *const current = manager();
    return current ? current->logAction() : nullptr;
}
