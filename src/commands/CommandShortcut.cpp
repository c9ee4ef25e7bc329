#include "commands/CommandShortcut.h"

#include "platform/MenuItem.h"

#include <initializer_list>

QString keyOfShortcut(const QString &shortcut)
{
    const bool endsWithPair = shortcut.size() > 1 && shortcut.back().isLowSurrogate();
    return shortcut.right(endsWithPair ? 2 : 1).toLower();
}

unsigned modifiersOfShortcut(const QString &shortcut)
{
    struct Modifier
    {
        ModifierFlag flag;
        std::initializer_list<QStringView> names;
    };
    static const Modifier modifiers[] = {
        {ModifierFlag::Command, {u"cmd", u"command"}},
        {ModifierFlag::Option, {u"option", u"alt"}},
        {ModifierFlag::Control, {u"control", u"ctrl"}},
        {ModifierFlag::Shift, {u"shift"}},
    };
    unsigned mask = 0;
    for (const auto &modifier : modifiers) {
        for (const auto name : modifier.names) {
            if (shortcut.contains(name, Qt::CaseInsensitive))
                mask |= static_cast<unsigned>(modifier.flag);
        }
    }
    return mask;
}
