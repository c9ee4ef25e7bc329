#pragma once

#include <QString>
#include <QStringView>

#include <vector>

/// A word or sign of a script's text. Comments, white space and the insides of literals are none.
struct ScriptToken
{
    enum class Kind {
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
    qsizetype start;
    qsizetype end;
    /// For a bracket of any kind, and for the stretches of a template: the token that closes or opens it; -1 when
    /// there is none.
    qsizetype partner = -1;
    bool isAfterLineBreak = false;

    QStringView text(QStringView source) const { return source.mid(start, end - start); }
    bool is(QStringView source, char16_t sign) const
    {
        return kind == Kind::Sign && end - start == 1 && source[start] == sign;
    }
};

/// Splits a script's text, also one that is not valid JavaScript. Never fails: what cannot be understood is a sign.
std::vector<ScriptToken> scriptTokens(QStringView source);

/// Whether an expression can end with that token, so that a "/" behind it divides and a "[" behind it is a subscript.
bool endsExpression(QStringView source, const std::vector<ScriptToken> &tokens, std::size_t index);

/// Whether that token is the ")" of "if (…)" and its like, behind which a statement begins.
bool closesCondition(QStringView source, const std::vector<ScriptToken> &tokens, std::size_t index);
