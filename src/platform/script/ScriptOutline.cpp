#include "platform/script/ScriptOutline.h"

#include "platform/script/ScriptTokens.h"

#include <string_view>

/// One pass over a script's tokens.
class ScriptOutlineScan
{
public:
    explicit ScriptOutlineScan(ScriptOutline &outline)
        : m_outline(outline)
        , m_source(outline.m_source)
        , m_tokens(scriptTokens(m_source))
    { }

    void scan()
    {
        for (m_index = 0; m_index < count(); ++m_index) {
            const auto &token = m_tokens[std::size_t(m_index)];
            if (token.kind == ScriptToken::Kind::Name)
                scanName();
            else if (token.kind != ScriptToken::Kind::Literal)
                scanSign(token);
        }
    }

private:
    enum class Scope {
        /// Parentheses, subscripts, substitutions in templates.
        Bracket,
        /// Braces that are no function's: also those of objects.
        Block,
        Function,
        Class
    };

    qsizetype count() const { return qsizetype(m_tokens.size()); }
    QStringView text(qsizetype index) const
    {
        return index >= 0 && index < count() ? m_tokens[std::size_t(index)].text(m_source) : QStringView();
    }
    bool isName(qsizetype index) const
    {
        return index >= 0 && index < count() && m_tokens[std::size_t(index)].kind == ScriptToken::Kind::Name;
    }
    /// 0 for a token that is no sign of one character, and beyond the text.
    char16_t sign(qsizetype index) const
    {
        return index >= 0 && index < count() ? m_tokens[std::size_t(index)].sign(m_source) : u'\0';
    }
    bool reads(qsizetype index, std::u16string_view wanted) const
    {
        return index >= 0 && index < count() && m_tokens[std::size_t(index)].is(m_source, wanted);
    }
    template <std::size_t... sizes>
    bool readsOneOf(qsizetype index, const char16_t (&...words)[sizes]) const
    {
        return (reads(index, std::u16string_view(words, sizes - 1)) || ...);
    }
    bool isMember(qsizetype index) const { return sign(index - 1) == u'.' || reads(index - 1, u"?."); }
    qsizetype partner(qsizetype index) const { return m_tokens[std::size_t(index)].partner; }

    /// Whether that token is the "=" of an assignment, not a part of "==" or "===".
    bool isAssignment(qsizetype index) const
    {
        if (sign(index) != u'=')
            return false;
        const auto end = m_tokens[std::size_t(index)].end;
        return end >= m_source.size() || m_source[end] != u'=';
    }

    bool isInFunction() const { return m_functionDepth > 0; }

    bool opens(const ScriptToken &token) const
    {
        const auto sign = token.sign(m_source);
        return sign == u'(' || sign == u'[' || sign == u'{' || token.kind == ScriptToken::Kind::TemplateHead;
    }

    void scanSign(const ScriptToken &token)
    {
        const auto sign = token.sign(m_source);
        const bool isOpening = opens(token);
        const bool isClosing =
            sign == u')' || sign == u']' || sign == u'}' || token.kind == ScriptToken::Kind::TemplateTail;
        if (!isOpening && !isClosing)
            return;
        const bool isMiddle = token.kind == ScriptToken::Kind::TemplateHead && m_source[token.start] == u'}';
        if (token.partner < 0)
            m_outline.m_computesNames = true; // not understood, so nothing is for sure
        if (isClosing || isMiddle)
            closeScope();
        if (isClosing && sign != u')' && isAssignment(m_index + 1) && token.partner >= 0)
            addNames(token.partner, m_index, m_outline.m_possible); // destructuring
        if (isOpening)
            openScope(sign == u'{' ? braceScope() : Scope::Bracket);
    }

    void openScope(Scope scope)
    {
        m_scopes.push_back(scope);
        m_functionDepth += scope == Scope::Function || scope == Scope::Class ? 1 : 0;
        m_classDepth += scope == Scope::Class ? 1 : 0;
    }

    void closeScope()
    {
        if (m_scopes.empty())
            return;
        const auto scope = m_scopes.back();
        m_scopes.pop_back();
        m_functionDepth -= scope == Scope::Function || scope == Scope::Class ? 1 : 0;
        m_classDepth -= scope == Scope::Class ? 1 : 0;
    }

    Scope braceScope()
    {
        if (m_pendingClassDepth == qsizetype(m_scopes.size())) {
            m_pendingClassDepth = -1;
            return Scope::Class;
        }
        if (readsOneOf(m_index - 1, u"=>", u"static"))
            return Scope::Function;
        if (sign(m_index - 1) != u')')
            return Scope::Block;
        const auto word = partner(m_index - 1) - 1;
        return readsOneOf(word, u"if", u"for", u"while", u"with", u"switch", u"catch", u"await") ? Scope::Block
                                                                                                 : Scope::Function;
    }

    void scanName()
    {
        const auto index = m_index;
        const bool isAssigned = isAssignment(index + 1);
        if (isMember(index)) {
            if (isAssigned && !reads(index - 2, u"exports"))
                m_outline.m_members.insert(text(index));
        } else if (reads(index, u"function")) {
            scanFunction();
        } else if (reads(index, u"class")) {
            scanClass();
        } else if (readsOneOf(index, u"var", u"let", u"const")) {
            scanVariables(reads(index, u"var"));
        } else if (readsOneOf(index, u"this", u"globalThis")) {
            scanGlobalObject(reads(index, u"this"));
        } else if (readsOneOf(index, u"eval", u"Function") && sign(index + 1) == u'(') {
            m_outline.m_computesNames = true;
        } else if (isAssigned) {
            scanAssignment();
        }
    }

    /// Whether a statement begins with that token: behind anything else a function is an expression.
    bool beginsStatement(qsizetype index) const
    {
        if (reads(index - 1, u"async"))
            --index;
        const auto before = sign(index - 1);
        if (index == 0 || before == u';' || before == u'{' || before == u'}' || before == u':'
            || readsOneOf(index - 1, u"else", u"do"))
            return true;
        return closesCondition(m_source, m_tokens, std::size_t(index - 1))
            || (m_tokens[std::size_t(index)].isAfterLineBreak
                && endsExpression(m_source, m_tokens, std::size_t(index - 1)));
    }

    void scanFunction()
    {
        const auto name = sign(m_index + 1) == u'*' ? m_index + 2 : m_index + 1;
        if (!isInFunction() && isName(name) && beginsStatement(m_index))
            m_outline.m_defined.insert(text(name));
    }

    void scanClass()
    {
        m_pendingClassDepth = qsizetype(m_scopes.size());
        if (m_scopes.empty() && isName(m_index + 1) && beginsStatement(m_index))
            m_outline.m_defined.insert(text(m_index + 1));
    }

    void scanVariables(bool reachOutOfBlocks)
    {
        if (isInFunction() || !(reachOutOfBlocks || m_scopes.empty()))
            return;
        auto index = m_index + 1;
        for (bool hasMore = true; hasMore; ++index) {
            index = addVariable(index);
            index = endOfVariable(index);
            hasMore = sign(index) == u',';
        }
    }

    /// Answers the token behind the variable's name or pattern.
    qsizetype addVariable(qsizetype index)
    {
        if (isName(index)) {
            m_outline.m_defined.insert(text(index));
            return index + 1;
        }
        if (index >= count() || partner(index) < index)
            return index;
        addNames(index, partner(index), m_outline.m_defined);
        return partner(index) + 1;
    }

    /// The first token that does not belong to the variable's value.
    qsizetype endOfVariable(qsizetype index) const
    {
        for (; index < count(); ++index) {
            if (endsVariable(index))
                break;
            const auto &token = m_tokens[std::size_t(index)];
            if (token.partner < 0 && opens(token))
                return count(); // looked for once, not again for each variable in there
            if (token.partner > index)
                index = token.kind == ScriptToken::Kind::TemplateHead ? token.partner - 1 : token.partner;
        }
        return index;
    }

    bool endsVariable(qsizetype index) const
    {
        const auto end = sign(index);
        if (end == u',' || end == u';' || end == u')' || end == u']' || end == u'}')
            return true;
        return m_tokens[std::size_t(index)].isAfterLineBreak && isName(index)
            && !readsOneOf(index, u"in", u"of", u"instanceof")
            && endsExpression(m_source, m_tokens, std::size_t(index - 1));
    }

    void scanAssignment()
    {
        const bool isField = !m_scopes.empty() && m_scopes.back() == Scope::Class;
        if (!isField && !readsOneOf(m_index - 1, u"var", u"let", u"const"))
            (isInFunction() ? m_outline.m_possible : m_outline.m_defined).insert(text(m_index));
    }

    /// What is done with "this" or "globalThis". In a class "this" is an object of it.
    void scanGlobalObject(bool isThis)
    {
        if (isThis && m_classDepth > 0)
            return;
        auto &names = isThis && isInFunction() ? m_outline.m_possible : m_outline.m_defined;
        if (sign(m_index + 1) == u'.' && isName(m_index + 2)) {
            if (isAssignment(m_index + 3))
                names.insert(text(m_index + 2));
        } else if (sign(m_index + 1) == u'[') {
            scanSubscript(m_index + 1, names);
        } else {
            m_outline.m_hasGlobalAlias = true;
            m_outline.m_computesNames |= isFilled();
        }
    }

    void scanSubscript(qsizetype opening, QSet<QStringView> &names)
    {
        const auto closing = partner(opening);
        if (closing < 0 || !isAssignment(closing + 1))
            return;
        const auto literal = text(opening + 1);
        const bool isText = closing == opening + 2 && literal.size() > 1
            && (literal.front() == u'"' || literal.front() == u'\'' || literal.front() == u'`');
        if (isText)
            names.insert(literal.mid(1, literal.size() - 2));
        else
            m_outline.m_computesNames = true;
    }

    /// Whether the global object is what a call like Object.assign() or Object.defineProperty() works on.
    bool isFilled() const
    {
        return sign(m_index - 1) == u'(' && isName(m_index - 2)
            && !readsOneOf(m_index - 2, u"call", u"apply", u"bind", u"if", u"while");
    }

    void addNames(qsizetype begin, qsizetype end, QSet<QStringView> &names) const
    {
        for (auto index = begin; index < end; ++index) {
            if (isName(index))
                names.insert(text(index));
        }
    }

    ScriptOutline &m_outline;
    QStringView m_source;
    std::vector<ScriptToken> m_tokens;
    qsizetype m_index = 0;
    std::vector<Scope> m_scopes;
    int m_functionDepth = 0;
    int m_classDepth = 0;
    /// How many scopes are open where the class stands whose "{" is awaited; -1 for none.
    qsizetype m_pendingClassDepth = -1;
};

ScriptOutline::ScriptOutline(const QString &source)
    : m_source(source)
{
    ScriptOutlineScan(*this).scan();
}

ScriptOutline::Definition ScriptOutline::definitionOf(const QString &name) const
{
    if (m_defined.contains(name))
        return Definition::Defined;
    if (m_possible.contains(name) || (m_hasGlobalAlias && m_members.contains(name)))
        return Definition::Possible;
    return m_computesNames ? Definition::Uncertain : Definition::Missing;
}
