#include "platform/MenuShortcut.h"

#include <optional>
#include <utility>

namespace {

constexpr char32_t firstFunctionKey = 0xF704;
constexpr char32_t lastFunctionKey = 0xF726;

/// Keys without a character of their own, function keys left out.
constexpr std::pair<char32_t, Qt::Key> specialKeys[] = {
    {0x08, Qt::Key_Backspace},
    {0x09, Qt::Key_Tab},
    {0x0A, Qt::Key_Return},
    {0x0D, Qt::Key_Return},
    {0x1B, Qt::Key_Escape},
    {0x7F, Qt::Key_Backspace},
    {0xF700, Qt::Key_Up},
    {0xF701, Qt::Key_Down},
    {0xF702, Qt::Key_Left},
    {0xF703, Qt::Key_Right},
    {0xF727, Qt::Key_Insert},
    {0xF728, Qt::Key_Delete},
    {0xF729, Qt::Key_Home},
    {0xF72B, Qt::Key_End},
    {0xF72C, Qt::Key_PageUp},
    {0xF72D, Qt::Key_PageDown},
};

/// The text's only character; nil when it has none or several.
std::optional<char32_t> onlyCharacter(const QString &text)
{
    if (text.size() == 1 && !text.front().isSurrogate())
        return text.front().unicode();
    if (text.size() == 2 && text.front().isHighSurrogate() && text.back().isLowSurrogate())
        return QChar::surrogateToUcs4(text.front(), text.back());
    return std::nullopt;
}

std::optional<Qt::Key> keyOf(const QString &keyEquivalent)
{
    const auto character = onlyCharacter(keyEquivalent);
    if (!character)
        return std::nullopt;
    if (*character >= firstFunctionKey && *character <= lastFunctionKey)
        return Qt::Key(Qt::Key_F1 + int(*character - firstFunctionKey));
    for (const auto &[special, key] : specialKeys) {
        if (special == *character)
            return key;
    }
    return QChar::isPrint(*character) ? std::optional(Qt::Key(QChar::toUpper(*character))) : std::nullopt;
}

Qt::KeyboardModifiers modifiersOf(unsigned mask)
{
    constexpr std::pair<ModifierFlag, Qt::KeyboardModifier> modifiers[] = {
        {ModifierFlag::Command, Qt::ControlModifier},
        {ModifierFlag::Control, Qt::MetaModifier},
        {ModifierFlag::Option, Qt::AltModifier},
        {ModifierFlag::Shift, Qt::ShiftModifier},
    };
    Qt::KeyboardModifiers result;
    for (const auto &[flag, modifier] : modifiers)
        result.setFlag(modifier, (mask & static_cast<unsigned>(flag)) != 0);
    return result;
}

} // namespace

QKeySequence keySequenceOf(const MenuItem &item)
{
    const auto key = keyOf(item.keyEquivalent);
    return key ? QKeySequence(QKeyCombination(modifiersOf(item.keyEquivalentModifierMask), *key)) : QKeySequence();
}
