#include "support/RecordingLogAction.h"

#include <algorithm>

void RecordingLogAction::log(const QVariantMap &entry, const QString &from)
{
    entries.append({from, entry});
    events.append(QStringLiteral("%1: %2").arg(
        entry.value(QStringLiteral("level")).toString(), entry.value(QStringLiteral("stringValue")).toString()));
}

void RecordingLogAction::clearLogFor(const QString &sender)
{
    entries.removeIf([&sender](const auto &entry) { return entry.first == sender; });
    events.append(QStringLiteral("clear %1").arg(sender));
}

QStringList RecordingLogAction::texts(const QString &sender) const
{
    QStringList texts;
    for (const auto &[from, entry] : entries) {
        if (from == sender)
            texts.append(entry.value(QStringLiteral("stringValue")).toString());
    }
    return texts;
}
