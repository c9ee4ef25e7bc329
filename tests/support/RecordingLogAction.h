#pragma once

#include "commands/KRPluginLogAction.h"

#include <QList>
#include <QPair>
#include <QStringList>
#include <QVariantMap>

/// A log action that remembers everything.
class RecordingLogAction final : public KRPluginLogAction
{
public:
    void log(const QVariantMap &entry, const QString &from) override;
    /// The sender's texts, joined in a way that tells this log from the one that a command keeps itself.
    QString logStringFor(const QString &sender) override { return texts(sender).join(u'|'); }
    void clearLogFor(const QString &sender) override;

    /// The texts of the sender's entries.
    QStringList texts(const QString &sender) const;

    /// Sender and entry.
    QList<QPair<QString, QVariantMap>> entries;
    /// "clear sender" and "level: text", in the order of the calls.
    QStringList events;
};
