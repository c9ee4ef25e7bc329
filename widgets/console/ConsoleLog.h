#pragma once

#include "widgets/Export.h"
#include "widgets/console/LogEntry.h"
#include "widgets/console/LogLocation.h"
#include "widgets/console/LogModel.h"

#include "commands/KRPluginLogAction.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <optional>

/// Takes what commands and the framework log: keeps the commands' logs, and the entries for a console. Main thread
/// only.
///
///     const auto log = std::make_shared<ConsoleLog>();
///     manager.setLogAction(log); // which holds it weakly
///
/// It may be the environment's logTarget() too, for what the framework has to say.
class KORVAN_WIDGETS_EXPORT ConsoleLog final : public QObject, public KRPluginLogAction
{
    Q_OBJECT

public:
    explicit ConsoleLog(int capacity = LogModel::usualCapacity);
    ~ConsoleLog() override;

    /// Where the entries are, until the user clears them: clearLogFor() leaves them.
    LogModel &entries() { return m_entries; }
    /// Identifiers of the plug-ins that have logged, with their names; "" is the framework itself.
    const QHash<QString, QString> &plugins() const { return m_plugins; }

    void log(const QVariantMap &entry, const QString &from) override;
    void logFromCommand(
        const QVariantMap &entry, const QString &from, const std::shared_ptr<KRPluginCommand> &command) override;
    /// Of a command that has logged more than 10,000 entries, or 32 million characters, since it was begun, the latest
    /// ones.
    QString logStringFor(const QString &sender) override;
    /// Every run of a command begins with this; what earlier runs have logged stays in the console.
    void clearLogFor(const QString &sender) override;

signals:
    /// Each entry at once, long before it is a row.
    void logged(const LogEntry &entry);
    /// A plug-in has logged for the first time.
    void pluginAppeared(const QString &identifier, const QString &name);

private:
    struct CommandLog
    {
        QStringList texts;
        qsizetype characters = 0;
    };

    void takeOrigin(LogEntry &entry, const KRPluginCommand &command);
    static void keepText(CommandLog &log, const QString &text);

    LogModel m_entries;
    QHash<QString, QString> m_plugins;
    QHash<QString, CommandLog> m_texts;
    /// Whoever repeats an error repeats it often, and each look for its place goes to the disk.
    struct
    {
        QString text;
        QUrl folder;
        std::optional<LogLocation> place;
    } m_latestError;
};
