#include "platform/script/ScriptTokens.h"

#include "platform/script/ScriptCharacters.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace {

using namespace ScriptCharacters;

/// Words behind which an expression begins: none of them ends one.
bool isOperatorWord(QStringView word)
{
    static constexpr std::array words{u"return", u"typeof", u"instanceof", u"in", u"of", u"new", u"delete", u"void",
        u"throw", u"case", u"do", u"else", u"await", u"yield", u"extends", u"default", u"const", u"let", u"var",
        u"function", u"class", u"if", u"while", u"for", u"with", u"switch", u"try", u"finally", u"catch", u"import",
        u"export", u"async"};
    return std::any_of(words.begin(), words.end(), [word](const char16_t *each) { return word == each; });
}

class Scanner
{
public:
    explicit Scanner(QStringView source)
        : m_source(source)
    { }

    std::vector<ScriptToken> scan()
    {
        constexpr qsizetype charactersOfAToken = 5; // on average
        m_tokens.reserve(std::size_t(m_source.size() / charactersOfAToken));
        if (m_source.startsWith(u"#!"))
            skipLine();
        while (m_position < m_source.size())
            scanNext();
        return std::move(m_tokens);
    }

private:
    QChar at(qsizetype position) const { return position < m_source.size() ? m_source[position] : QChar(); }
    QChar current() const { return at(m_position); }
    QChar following() const { return at(m_position + 1); }

    void scanNext()
    {
        const auto character = current();
        if (has(character, Space)) {
            skipSpace();
        } else if (character == u'/' && following() == u'/') {
            skipLine();
        } else if (character == u'/' && following() == u'*') {
            skipBlockComment();
        } else if (character == u'"' || character == u'\'') {
            scanString(character);
        } else if (character == u'`') {
            scanTemplate(u'`');
        } else if (has(character, Digit) || (character == u'.' && has(following(), Digit))) {
            scanNumber();
        } else if (has(character, NameStart)) {
            scanName();
        } else if (character == u'/' && isRegularExpressionHere()) {
            scanRegularExpression();
        } else if (character == u'}' && isTemplateOpen()) {
            scanTemplate(u'}');
        } else {
            scanSign();
        }
    }

    void skipSpace()
    {
        auto end = m_position;
        for (; end < m_source.size() && has(m_source[end], Space); ++end)
            m_isAfterLineBreak |= has(m_source[end], LineBreak);
        m_position = end;
    }

    void skipLine()
    {
        auto end = m_position;
        while (end < m_source.size() && !has(m_source[end], LineBreak))
            ++end;
        m_position = end;
    }

    void skipBlockComment()
    {
        const auto end = m_source.indexOf(u"*/", m_position + 2);
        const auto stop = end < 0 ? m_source.size() : end + 2;
        for (; m_position < stop; ++m_position)
            m_isAfterLineBreak |= has(current(), LineBreak);
    }

    void add(ScriptToken::Kind kind, qsizetype start)
    {
        m_tokens.push_back({kind, std::exchange(m_isAfterLineBreak, false), qint32(start), qint32(m_position)});
    }

    void scanString(QChar quote)
    {
        const auto start = m_position++;
        while (m_position < m_source.size() && current() != quote && current() != u'\n') {
            const bool isEscape = current() == u'\\';
            const bool isEscapedLineEnd = isEscape && following() == u'\r' && at(m_position + 2) == u'\n';
            m_position += isEscapedLineEnd ? 3 : isEscape ? 2 : 1;
        }
        m_position = std::min(m_position + 1, m_source.size());
        add(ScriptToken::Kind::Literal, start);
    }

    void scanNumber()
    {
        const auto start = m_position++;
        for (; m_position < m_source.size(); ++m_position) {
            const auto previous = m_source[m_position - 1];
            const bool isExponentSign = (current() == u'+' || current() == u'-')
                && (previous == u'e' || previous == u'E') && at(start + 1) != u'x' && at(start + 1) != u'X';
            if (!has(current(), NamePart) && current() != u'.' && !isExponentSign)
                break;
        }
        add(ScriptToken::Kind::Literal, start);
    }

    void scanName()
    {
        const auto start = m_position;
        auto end = start + 1;
        while (end < m_source.size() && has(m_source[end], NamePart))
            ++end;
        m_position = end;
        add(ScriptToken::Kind::Name, start);
    }

    void scanRegularExpression()
    {
        const auto start = m_position++;
        bool isInClass = false;
        while (m_position < m_source.size() && !has(current(), LineBreak) && (isInClass || current() != u'/')) {
            if (current() == u'[')
                isInClass = true;
            else if (current() == u']')
                isInClass = false;
            m_position += current() == u'\\' ? 2 : 1;
        }
        m_position = std::min(m_position + 1, m_source.size());
        while (m_position < m_source.size() && has(current(), NamePart))
            ++m_position; // flags
        add(ScriptToken::Kind::Literal, start);
    }

    /// From a "`" or the "}" that ends a substitution, up to the next substitution or the template's end.
    void scanTemplate(char16_t opening)
    {
        const auto start = m_position++;
        while (m_position < m_source.size() && current() != u'`' && !(current() == u'$' && following() == u'{')) {
            m_position += current() == u'\\' ? 2 : 1;
        }
        const bool hasSubstitution = current() == u'$' && m_position < m_source.size();
        m_position = std::min(m_position + (hasSubstitution ? 2 : 1), m_source.size());
        const bool isWhole = opening == u'`' && !hasSubstitution;
        add(isWhole               ? ScriptToken::Kind::Literal
                : hasSubstitution ? ScriptToken::Kind::TemplateHead
                                  : ScriptToken::Kind::TemplateTail,
            start);
        if (opening == u'}')
            closeBracket();
        if (hasSubstitution)
            m_open.push_back(qsizetype(m_tokens.size()) - 1);
    }

    void scanSign()
    {
        const auto start = m_position;
        const auto character = current();
        if ((character == u'+' || character == u'-') && following() == character)
            ++m_position; // "++" and "--" may end an expression, "+" and "-" never do
        else if (character == u'=' && following() == u'>')
            ++m_position;
        else if (character == u'?' && (following() == u'.' || following() == u'?'))
            ++m_position;
        ++m_position;
        add(ScriptToken::Kind::Sign, start);
        if (character == u'(' || character == u'[' || character == u'{')
            m_open.push_back(qsizetype(m_tokens.size()) - 1);
        else if (character == u')' || character == u']' || character == u'}')
            closeBracket();
    }

    /// Ties the latest token to the bracket that it closes. A bracket of another kind in between stays open for good.
    void closeBracket()
    {
        const auto closing = qsizetype(m_tokens.size()) - 1;
        const auto matches = [this, closing](qsizetype opening) {
            const auto &opener = m_tokens[std::size_t(opening)];
            const auto sign = m_source[m_tokens[std::size_t(closing)].start];
            if (opener.kind == ScriptToken::Kind::TemplateHead)
                return sign == u'}';
            const auto openingSign = m_source[opener.start];
            return (openingSign == u'(' && sign == u')') || (openingSign == u'[' && sign == u']')
                || (openingSign == u'{' && sign == u'}');
        };
        if (m_open.empty() || !matches(m_open.back()))
            return;
        m_tokens[std::size_t(m_open.back())].partner = qint32(closing);
        m_tokens[std::size_t(closing)].partner = qint32(m_open.back());
        m_open.pop_back();
    }

    bool isTemplateOpen() const
    {
        return !m_open.empty() && m_tokens[std::size_t(m_open.back())].kind == ScriptToken::Kind::TemplateHead;
    }

    bool isRegularExpressionHere() const
    {
        if (m_tokens.empty())
            return true;
        const auto latest = m_tokens.size() - 1;
        if (m_tokens[latest].is(m_source, u'}'))
            return closesBlock(m_tokens[latest]);
        return closesCondition(m_source, m_tokens, latest) || !endsExpression(m_source, m_tokens, latest);
    }

    /// Whether the "}" ends a block rather than an object literal, by what stands before its "{".
    bool closesBlock(const ScriptToken &closing) const
    {
        if (closing.partner < 1)
            return true;
        const auto &before = m_tokens[std::size_t(closing.partner - 1)];
        const auto reads = [&](std::u16string_view text) { return before.is(m_source, text); };
        return reads(u")") || reads(u";") || reads(u"{") || reads(u"}") || reads(u"=>") || reads(u"else")
            || reads(u"do") || reads(u"try") || reads(u"finally");
    }

    QStringView m_source;
    qsizetype m_position = 0;
    bool m_isAfterLineBreak = true;
    std::vector<ScriptToken> m_tokens;
    std::vector<qsizetype> m_open;
};

} // namespace

std::vector<ScriptToken> scriptTokens(QStringView source)
{
    if (source.size() > std::numeric_limits<qint32>::max())
        return {};
    return Scanner(source).scan();
}

bool endsExpression(QStringView source, const std::vector<ScriptToken> &tokens, std::size_t index)
{
    const auto &token = tokens[index];
    switch (token.kind) {
    case ScriptToken::Kind::Name: {
        const auto before = index > 0 ? tokens[index - 1].text(source) : QStringView();
        const bool isPropertyName = before == u"." || before == u"?.";
        return isPropertyName || !isOperatorWord(token.text(source));
    }
    case ScriptToken::Kind::Literal:
    case ScriptToken::Kind::TemplateTail:
        return true;
    case ScriptToken::Kind::TemplateHead:
        return false;
    case ScriptToken::Kind::Sign:
        break;
    }
    const auto text = token.text(source);
    return text == u")" || text == u"]" || text == u"}" || text == u"++" || text == u"--";
}

bool closesCondition(QStringView source, const std::vector<ScriptToken> &tokens, std::size_t index)
{
    const auto &closing = tokens[index];
    if (!closing.is(source, u')') || closing.partner < 1)
        return false;
    const auto before = std::size_t(closing.partner - 1);
    const auto word = tokens[before].text(source);
    if (word == u"await")
        return before > 0 && tokens[before - 1].is(source, u"for");
    return word == u"if" || word == u"while" || word == u"for" || word == u"with";
}
