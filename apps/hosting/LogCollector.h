#pragma once

#include "commands/KRPluginLogAction.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVariantMap>

#include <functional>

/// Keeps what commands log, and passes each entry on as it comes.
class LogCollector final : public KRPluginLogAction
{
public:
    using Listener = std::function<void(const QVariantMap &entry, const QString &sender)>;

    explicit LogCollector(Listener listener = nullptr);

    void log(const QVariantMap &entry, const QString &from) override;
    QString logStringFor(const QString &sender) override;
    void clearLogFor(const QString &sender) override;

    /// Keeps an entry that nobody has logged, among the others but in nobody's text.
    void add(const QVariantMap &entry) { m_entries.append(entry); }
    /// Since the last call, whoever logged.
    QList<QVariantMap> takeEntries();

private:
    Listener m_listener;
    QHash<QString, QStringList> m_texts;
    QList<QVariantMap> m_entries;
};
