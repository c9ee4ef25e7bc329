#include "widgets/PluginText.h"

#include "platform/ControlCharacters.h"

namespace {

bool isDirectionMark(QChar character)
{
    const auto code = character.unicode();
    return (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069) || code == 0x200e || code == 0x200f;
}

bool isLineEnd(QChar character)
{
    return character == u'\n' || character.category() == QChar::Separator_Line
        || character.category() == QChar::Separator_Paragraph;
}

QString cleaned(const QString &text, qsizetype longest, QChar lineEnd)
{
    QString result;
    result.reserve(std::min(text.size(), longest));
    for (const auto character : text) {
        if (result.size() >= longest) {
            result += u'…';
            break;
        }
        if (isLineEnd(character))
            result += lineEnd;
        else if (isControlCharacter(character))
            result += u' ';
        else if (!isDirectionMark(character))
            result += character;
    }
    return result;
}

} // namespace

QString plainLine(const QString &text, qsizetype longest)
{
    return cleaned(text, longest, u' ').trimmed();
}

QString plainLines(const QString &text, qsizetype longest)
{
    return cleaned(text, longest, u'\n');
}

QString withoutMnemonics(const QString &text)
{
    auto result = text;
    return result.replace(u'&', QStringLiteral("&&"));
}

QString plainToolTip(const QString &text)
{
    constexpr qsizetype longest = 1000;
    return QStringLiteral("<p style=\"white-space: pre-wrap\">%1</p>").arg(text.left(longest).toHtmlEscaped());
}
