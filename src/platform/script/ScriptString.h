#pragma once

#include <JavaScriptCore/JavaScript.h>
#include <QString>

#include <utility>

/// Owns one engine string. Texts of any content, NUL included.
class ScriptString
{
public:
    explicit ScriptString(QStringView text)
        : m_string(
            JSStringCreateWithCharacters(reinterpret_cast<const JSChar *>(text.utf16()), std::size_t(text.size())))
    { }
    /// For names and sources of ASCII that live in the program.
    explicit ScriptString(const char *text)
        : m_string(JSStringCreateWithUTF8CString(text))
    { }
    /// Takes over a string that an engine function named Create or Copy has answered; it may be null.
    static ScriptString adopt(JSStringRef string) { return ScriptString(string, Adopt()); }

    ~ScriptString()
    {
        if (m_string)
            JSStringRelease(m_string);
    }
    ScriptString(ScriptString &&other) noexcept
        : m_string(std::exchange(other.m_string, nullptr))
    { }
    ScriptString &operator=(ScriptString &&other) noexcept
    {
        std::swap(m_string, other.m_string);
        return *this;
    }

    JSStringRef get() const { return m_string; }
    QString toQString() const
    {
        if (!m_string)
            return {};
        return QString(reinterpret_cast<const QChar *>(JSStringGetCharactersPtr(m_string)),
            qsizetype(JSStringGetLength(m_string)));
    }

private:
    struct Adopt
    { };
    ScriptString(JSStringRef string, Adopt)
        : m_string(string)
    { }

    JSStringRef m_string;
};
