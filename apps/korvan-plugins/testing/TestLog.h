#pragma once

#include <QStringList>
#include <QVariantMap>

/// An error that nobody has caught, as the framework has logged it.
struct UncaughtError
{
    QString message;
    /// "" and 0 when not known.
    QString file;
    int line = 0;
    int column = 0;
    QStringList calls;
};

struct CallPlace
{
    QString file;
    int line = 0;
    int column = 0;
};

/// Whether a log entry tells of an error that nobody has caught, or of a handler that is missing: what the framework
/// itself logs, not what a script has logged as an error.
bool isUncaughtError(const QVariantMap &entry);
UncaughtError uncaughtError(const QVariantMap &entry);
/// The same as one text, message and calls.
QString textOfUncaughtError(const QVariantMap &entry);

/// Of a line of a stack, "function (file:line:column)" or the place alone.
CallPlace placeOfCall(const QString &call);

/// The entry's text.
QString textOfEntry(const QVariantMap &entry);
