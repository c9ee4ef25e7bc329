#pragma once

#include <QStringView>

#include <algorithm>

inline bool isControlCharacter(QChar character)
{
    return character.category() == QChar::Other_Control;
}

/// Whether one of them is in the text, line ends and tabs included.
inline bool hasControlCharacter(QStringView text)
{
    return std::any_of(text.begin(), text.end(), isControlCharacter);
}
