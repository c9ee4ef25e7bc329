#include "ControlCharacters.h"

#include "platform/ControlCharacters.h"

#include <algorithm>

namespace {

bool isLayout(QChar character)
{
    return character == u'\n' || character == u'\t';
}

} // namespace

QString withoutControlCharacters(const QString &text, ControlCharacters which)
{
    const auto isUnwanted = [which](QChar character) {
        return isControlCharacter(character) && (which == ControlCharacters::All || !isLayout(character));
    };
    if (std::none_of(text.begin(), text.end(), isUnwanted))
        return text;
    QString shown;
    for (const auto character : text) {
        if (isUnwanted(character))
            shown += QStringLiteral("\\u%1").arg(int(character.unicode()), 4, 16, QChar(u'0'));
        else
            shown += character;
    }
    return shown;
}
