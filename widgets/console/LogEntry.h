#pragma once

#include <QDateTime>
#include <QString>
#include <QUrl>

enum class LogLevel { Log, Warning, Error };

/// One message as the console keeps it: a plain value, whose texts plug-ins have written.
struct LogEntry
{
    QDateTime time;
    LogLevel level = LogLevel::Log;
    /// Of the plug-in that the message is from; empty for messages of the framework itself.
    QString pluginIdentifier;
    /// For the user.
    QString pluginName;
    /// Of the command; empty when there is none.
    QString command;
    QString text;
    /// The file that the message points to; empty when it points to none.
    QUrl file;
    /// From 1; 0 without a file.
    int line = 0;
};
