#pragma once

#include <QStringView>

/// A place in a text, both from 1. Columns count UTF-16 code units, as the script engine and editors do.
struct TextPosition
{
    int line = 1;
    int column = 1;

    bool operator==(const TextPosition &) const = default;
};

/// The place of the character at an offset. A line ends in "\n", "\r" or both.
TextPosition positionIn(QStringView text, qsizetype offset);

/// The places of many characters of a text, which is gone through once for all of them.
class RisingPosition
{
public:
    explicit RisingPosition(QStringView text)
        : m_text(text)
    { }

    /// Not for an offset below the one before.
    TextPosition advancedTo(qsizetype offset);

private:
    QStringView m_text;
    qsizetype m_offset = 0;
    qsizetype m_lineStart = 0;
    int m_line = 1;
};
