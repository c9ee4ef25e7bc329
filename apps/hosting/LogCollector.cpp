#include "hosting/LogCollector.h"

#include <utility>

LogCollector::LogCollector(Listener listener)
    : m_listener(std::move(listener))
{ }

void LogCollector::log(const QVariantMap &entry, const QString &from)
{
    m_texts[from].append(entry.value(QStringLiteral("stringValue")).toString());
    m_entries.append(entry);
    if (m_listener)
        m_listener(entry, from);
}

QString LogCollector::logStringFor(const QString &sender)
{
    return m_texts.value(sender).join(u'\n');
}

void LogCollector::clearLogFor(const QString &sender)
{
    m_texts.remove(sender);
}

QList<QVariantMap> LogCollector::takeEntries()
{
    return std::exchange(m_entries, {});
}
