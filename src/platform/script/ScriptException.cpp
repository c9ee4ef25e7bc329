#include "platform/script/ScriptException.h"

ScriptException::ScriptException(const QString &message)
    : ScriptException(message, {}, 0, 0, {})
{ }

ScriptException::ScriptException(
    const QString &message, const QString &file, int line, int column, const QString &stack)
    : m_message(message)
    , m_file(file)
    , m_line(line)
    , m_column(column)
    , m_stack(stack)
    , m_what(text().toUtf8())
{ }

QString ScriptException::text() const
{
    auto text = m_message;
    const auto calls = m_stack.split(u'\n', Qt::SkipEmptyParts);
    for (const auto &call : calls)
        text += QStringLiteral("\n    at ") + call;
    if (calls.isEmpty() && !m_file.isEmpty()) {
        text += QStringLiteral("\n    at ") + m_file;
        if (m_line > 0)
            text += u':' + QString::number(m_line);
        if (m_line > 0 && m_column > 0)
            text += u':' + QString::number(m_column);
    }
    return text;
}

QVariantMap ScriptException::toVariantMap() const
{
    return {
        {QStringLiteral("message"), m_message},
        {QStringLiteral("file"), m_file},
        {QStringLiteral("line"), m_line},
        {QStringLiteral("column"), m_column},
        {QStringLiteral("stack"), m_stack},
    };
}

const char *ScriptException::what() const noexcept
{
    return m_what.constData();
}
