#pragma once

#include <QChar>

#include <array>

namespace ScriptCharacters {

/// What an ASCII character may be in a script; most characters of most scripts are told by one look into a table.
enum Trait : quint8 { Space = 1, LineBreak = 2, Digit = 4, NameStart = 8, NamePart = 16 };

inline constexpr auto asciiTraits = [] {
    std::array<quint8, 128> traits{};
    for (const char space : {'\t', '\n', '\v', '\f', '\r', ' '})
        traits[std::size_t(space)] = Space;
    for (const char lineBreak : {'\n', '\r'})
        traits[std::size_t(lineBreak)] |= LineBreak;
    for (char digit = '0'; digit <= '9'; ++digit)
        traits[std::size_t(digit)] = Digit | NamePart;
    for (char letter = 'a'; letter <= 'z'; ++letter)
        traits[std::size_t(letter)] = traits[std::size_t(letter - 'a' + 'A')] = NameStart | NamePart;
    for (const char other : {'_', '$', '#', '\\'})
        traits[std::size_t(other)] = NameStart | NamePart;
    return traits;
}();

inline quint8 otherTraits(QChar character)
{
    quint8 traits = 0;
    if (character.isSpace() || character == QChar(0xFEFF))
        traits |= Space;
    if (character == QChar(0x2028) || character == QChar(0x2029))
        traits |= LineBreak;
    if (character.isDigit())
        traits |= Digit;
    if (character.isLetter() || character.isSurrogate())
        traits |= NameStart | NamePart;
    if (character.isLetterOrNumber() || character.isMark() || character == QChar(0x200C) || character == QChar(0x200D))
        traits |= NamePart;
    return traits;
}

inline bool has(QChar character, Trait trait)
{
    const auto unit = character.unicode();
    return ((unit < asciiTraits.size() ? asciiTraits[unit] : otherTraits(character)) & trait) != 0;
}

} // namespace ScriptCharacters
