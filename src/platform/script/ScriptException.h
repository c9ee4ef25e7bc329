#pragma once

#include "platform/Export.h"

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <exception>

/// An error of a script, with the place where it happened. Thrown out of COScript::callFunctionNamed; thrown by an
/// operation that a script has called, it becomes an ordinary error of that script.
class KORVAN_EXPORT ScriptException final : public std::exception
{
public:
    explicit ScriptException(const QString &message);
    /// A line or column of 0 says that it is not known; `stack` holds one call a line, innermost first.
    ScriptException(const QString &message, const QString &file, int line, int column, const QString &stack);

    /// The error as the script would print it, for example "TypeError: x is not a function".
    QString message() const { return m_message; }
    /// The file, seen from the plug-in's folder; "" when not known.
    QString file() const { return m_file; }
    /// From 1.
    int line() const { return m_line; }
    /// From 1.
    int column() const { return m_column; }
    QString stack() const { return m_stack; }

    /// Message and place in one text: the message, then a line "    at …" for each call.
    QString text() const;
    /// The parts under the keys "message", "file", "line", "column" and "stack".
    QVariantMap toVariantMap() const;

    const char *what() const noexcept override;

private:
    QString m_message;
    QString m_file;
    int m_line = 0;
    int m_column = 0;
    QString m_stack;
    QByteArray m_what;
};
