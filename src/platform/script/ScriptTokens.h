#pragma once

#include <QString>
#include <QStringView>

#include <string_view>
#include <vector>

/// A word or sign of a script's text. Comments, white space and the insides of literals are none.
struct ScriptToken
{
    enum class Kind : quint8 {
        Name,
        /// A number, a string, a regular expression or a whole template without substitutions.
        Literal,
        /// A stretch of a template up to "${", or between "}" and "${".
        TemplateHead,
        /// The last stretch of a template that has substitutions.
        TemplateTail,
        Sign
    };

    Kind kind;
    bool isAfterLineBreak = false;
    /// Offsets are of 32 bits, as the engine's are: a script has very many tokens.
    qint32 start;
    qint32 end;
    /// For a bracket of any kind, and for the stretches of a template: the token that closes or opens it; -1 when
    /// there is none.
    qint32 partner = -1;

    QStringView text(QStringView source) const { return source.mid(start, end - start); }
    /// The sign's character; 0 for a sign of two characters and for any other token.
    char16_t sign(QStringView source) const
    {
        return kind == Kind::Sign && end - start == 1 ? source.utf16()[start] : u'\0';
    }
    bool is(QStringView source, char16_t wanted) const { return sign(source) == wanted; }
    /// Whether it reads like that, compared in place: there is one such question or more for each token of a script.
    bool is(QStringView source, std::u16string_view wanted) const
    {
        return std::u16string_view(source.utf16() + start, std::size_t(end - start)) == wanted;
    }
};

/// Splits a script's text, also one that is not valid JavaScript. Never fails: what cannot be understood is a sign, and
/// a text that is too long for the engine is nothing.
std::vector<ScriptToken> scriptTokens(QStringView source);

/// Whether an expression can end with that token, so that a "/" behind it divides and a "[" behind it is a subscript.
bool endsExpression(QStringView source, const std::vector<ScriptToken> &tokens, std::size_t index);

/// Whether that token is the ")" of "if (…)" and its like, behind which a statement begins.
bool closesCondition(QStringView source, const std::vector<ScriptToken> &tokens, std::size_t index);
