#include "platform/script/ScriptOutline.h"

#include "platform/script/ScriptTokens.h"

#include <algorithm>
#include <array>

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
    bool isMember(qsizetype index) const { return text(index - 1) == u"." || text(index - 1) == u"?."; }
    qsizetype partner(qsizetype index) const { return m_tokens[std::size_t(index)].partner; }

    /// Whether that token is the "=" of an assignment, not a part of "==" or "===".
    bool isAssignment(qsizetype index) const
    {
        if (text(index) != u"=")
            return false;
        const auto end = m_tokens[std::size_t(index)].end;
        return end >= m_source.size() || m_source[end] != u'=';
    }

    bool isInFunction() const { return m_functionDepth > 0; }

    void scanSign(const ScriptToken &token)
    {
        const auto sign = token.text(m_source);
        const bool opens =
            sign == u"(" || sign == u"[" || sign == u"{" || token.kind == ScriptToken::Kind::TemplateHead;
        const bool closes =
            sign == u")" || sign == u"]" || sign == u"}" || token.kind == ScriptToken::Kind::TemplateTail;
        const bool isMiddle = token.kind == ScriptToken::Kind::TemplateHead && m_source[token.start] == u'}';
        if ((opens || closes) && token.partner < 0)
            m_outline.m_computesNames = true; // not understood, so nothing is for sure
        if (closes || isMiddle)
            closeScope();
        if (closes && sign != u")" && isAssignment(m_index + 1) && token.partner >= 0)
            addNames(token.partner, m_index, m_outline.m_possible); // destructuring
        if (opens)
            openScope(sign == u"{" ? braceScope() : Scope::Bracket);
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
        const auto before = text(m_index - 1);
        if (before == u"=>" || before == u"static")
            return Scope::Function;
        if (before != u")")
            return Scope::Block;
        const auto word = text(partner(m_index - 1) - 1);
        static constexpr std::array<QStringView, 7> controls{
            u"if", u"for", u"while", u"with", u"switch", u"catch", u"await"};
        return std::find(controls.begin(), controls.end(), word) != controls.end() ? Scope::Block : Scope::Function;
    }

    void scanName()
    {
        const auto word = text(m_index);
        if (isMember(m_index)) {
            if (isAssignment(m_index + 1) && text(m_index - 2) != u"exports")
                m_outline.m_members.insert(word);
            return;
        }
        if (word == u"function")
            scanFunction();
        else if (word == u"class")
            scanClass();
        else if (word == u"var" || word == u"let" || word == u"const")
            scanVariables(word == u"var");
        else if (word == u"this" || word == u"globalThis")
            scanGlobalObject(word == u"this");
        else if ((word == u"eval" || word == u"Function") && text(m_index + 1) == u"(")
            m_outline.m_computesNames = true;
        else if (isAssignment(m_index + 1))
            scanAssignment(word);
    }

    /// Whether a statement begins with that token: behind anything else a function is an expression.
    bool beginsStatement(qsizetype index) const
    {
        if (text(index - 1) == u"async")
            --index;
        const auto before = text(index - 1);
        if (before.isEmpty() || before == u";" || before == u"{" || before == u"}" || before == u"else"
            || before == u"do" || before == u":")
            return true;
        return closesCondition(m_source, m_tokens, std::size_t(index - 1))
            || (m_tokens[std::size_t(index)].isAfterLineBreak
                && endsExpression(m_source, m_tokens, std::size_t(index - 1)));
    }

    void scanFunction()
    {
        const auto name = text(m_index + 1) == u"*" ? m_index + 2 : m_index + 1;
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
            hasMore = text(index) == u",";
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
            const auto sign = text(index);
            if (sign == u"," || sign == u";" || sign == u")" || sign == u"]" || sign == u"}")
                break;
            const auto &token = m_tokens[std::size_t(index)];
            if (token.isAfterLineBreak && token.kind == ScriptToken::Kind::Name && sign != u"in" && sign != u"of"
                && sign != u"instanceof" && endsExpression(m_source, m_tokens, std::size_t(index - 1)))
                break;
            if (token.partner > index)
                index = token.kind == ScriptToken::Kind::TemplateHead ? token.partner - 1 : token.partner;
        }
        return index;
    }

    void scanAssignment(QStringView name)
    {
        static constexpr std::array<QStringView, 3> declarations{u"var", u"let", u"const"};
        if (std::find(declarations.begin(), declarations.end(), text(m_index - 1)) != declarations.end())
            return;
        (isInFunction() ? m_outline.m_possible : m_outline.m_defined).insert(name);
    }

    /// What is done with "this" or "globalThis". In a class "this" is an object of it.
    void scanGlobalObject(bool isThis)
    {
        if (isThis && m_classDepth > 0)
            return;
        auto &names = isThis && isInFunction() ? m_outline.m_possible : m_outline.m_defined;
        if (text(m_index + 1) == u"." && isName(m_index + 2)) {
            if (isAssignment(m_index + 3))
                names.insert(text(m_index + 2));
        } else if (text(m_index + 1) == u"[") {
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
        if (text(m_index - 1) != u"(" || !isName(m_index - 2))
            return false;
        static constexpr std::array<QStringView, 5> keeping{u"call", u"apply", u"bind", u"if", u"while"};
        return std::find(keeping.begin(), keeping.end(), text(m_index - 2)) == keeping.end();
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
