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
