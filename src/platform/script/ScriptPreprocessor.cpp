#include "platform/script/ScriptPreprocessor.h"

#include "platform/script/ScriptTokens.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {

/// One keyword of a message, and the last token of what stands before it (the receiver or an argument).
struct Keyword
{
    std::size_t name;
    std::size_t previousEnd;
};

struct MessageSend
{
    std::size_t opening;
    std::size_t closing;
    std::vector<Keyword> keywords;
    bool hasArguments = false;
};

struct Edit
{
    qsizetype start;
    qsizetype end;
    QString replacement;
};

class Rewriter
{
public:
    explicit Rewriter(const QString &source)
        : m_source(source)
        , m_tokens(scriptTokens(m_source))
    { }

    QString rewrite()
    {
        const auto &all = edits();
        return all.empty() ? m_source.toString() : edited();
    }

    /// In the order of the text.
    const std::vector<Edit> &edits()
    {
        for (std::size_t i = 0; i < m_tokens.size(); ++i) {
            if (!m_tokens[i].is(m_source, u'[') || m_tokens[i].partner < 0 || isSubscript(i))
                continue;
            if (const auto send = messageSend(i))
                edit(*send);
        }
        std::stable_sort(m_edits.begin(), m_edits.end(),
            [](const Edit &first, const Edit &second) { return first.start < second.start; });
        return m_edits;
    }

private:
    bool isSign(std::size_t index, char16_t sign) const
    {
        return index < m_tokens.size() && m_tokens[index].is(m_source, sign);
    }
    bool isName(std::size_t index) const { return m_tokens[index].kind == ScriptToken::Kind::Name; }
    QStringView text(std::size_t index) const { return m_tokens[index].text(m_source); }

    /// A bracket behind an expression on the same line.
    bool isSubscript(std::size_t opening) const
    {
        if (opening == 0 || m_tokens[opening].isAfterLineBreak)
            return false;
        const auto before = opening - 1;
        return endsExpression(m_source, m_tokens, before) && !closesCondition(m_source, m_tokens, before)
            && !isSign(before, u'}');
    }

    /// The last token of the operand that begins at `index`: a bracket's or a template's end, else the token itself.
    std::size_t operandEnd(std::size_t index) const
    {
        while (m_tokens[index].partner > qsizetype(index)) {
            index = std::size_t(m_tokens[index].partner);
            if (m_tokens[index].kind != ScriptToken::Kind::TemplateHead)
                break;
        }
        return index;
    }

    /// Whether the name at `index` stands behind a complete expression, where valid scripts have no name.
    bool isSelectorPart(std::size_t index, std::size_t previousEnd) const
    {
        if (!isName(index) || !endsExpression(m_source, m_tokens, previousEnd))
            return false;
        const auto word = text(index);
        if (word == u"in" || word == u"instanceof")
            return isSign(index + 1, u':');
        return word != u"extends";
    }

    std::optional<MessageSend> messageSend(std::size_t opening) const
    {
        MessageSend send{opening, std::size_t(m_tokens[opening].partner), {}, false};
        auto previousEnd = opening; // which ends no expression: there is none before the first operand
        for (auto i = opening + 1; i < send.closing;) {
            if (isSelectorPart(i, previousEnd)) {
                const bool hasArgument = isSign(i + 1, u':');
                const bool isOnlyWord = send.keywords.empty() && i + 1 == send.closing;
                if (!hasArgument && !isOnlyWord)
                    return std::nullopt;
                send.keywords.push_back({i, previousEnd});
                send.hasArguments = hasArgument;
                i += hasArgument ? 2 : 1;
                previousEnd = opening;
                continue;
            }
            const bool isArrayLiteral = send.keywords.empty() && isSign(i, u',');
            if (isArrayLiteral || isSign(i, u';') || isUnmatched(i))
                return std::nullopt;
            previousEnd = operandEnd(i);
            i = previousEnd + 1;
        }
        const bool endsWithArgument = endsExpression(m_source, m_tokens, previousEnd);
        if (send.keywords.empty() || (send.hasArguments && !endsWithArgument))
            return std::nullopt;
        return send;
    }

    bool isUnmatched(std::size_t index) const
    {
        const bool isBracket = isSign(index, u'(') || isSign(index, u'[') || isSign(index, u'{') || isSign(index, u')')
            || isSign(index, u']') || isSign(index, u'}');
        return isBracket && m_tokens[index].partner < 0;
    }

    /// Whether ".name(…)" can follow the receiver as it stands: a name or text with properties, calls and subscripts.
    bool isSimpleReceiver(std::size_t first, std::size_t last) const
    {
        const auto begin = text(first).front();
        const bool isPrimary = isName(first) ? endsExpression(m_source, m_tokens, first)
                                             : begin == u'(' || begin == u'[' || begin == u'"' || begin == u'\'';
        if (!isPrimary || m_tokens[first].isAfterLineBreak)
            return false;
        for (auto i = operandEnd(first) + 1; i <= last; i = operandEnd(i) + 1) {
            const bool isAccess = text(i) == u"." || text(i) == u"?.";
            const bool isProperty = isName(i) && (text(i - 1) == u"." || text(i - 1) == u"?.");
            if (!isAccess && !isProperty && !isSign(i, u'(') && !isSign(i, u'['))
                return false;
        }
        return true;
    }

    /// On a line of its own behind an unfinished one, "(…)" would be taken for that one's arguments.
    bool needsSemicolon(std::size_t opening) const
    {
        return opening > 0 && m_tokens[opening].isAfterLineBreak && endsExpression(m_source, m_tokens, opening - 1)
            && !closesCondition(m_source, m_tokens, opening - 1);
    }

    void edit(const MessageSend &send)
    {
        const auto receiverEnd = send.keywords.front().previousEnd;
        const bool isSimple = isSimpleReceiver(send.opening + 1, receiverEnd);
        const bool beginsWithName = isSimple && isName(send.opening + 1);
        replace(send.opening,
            (needsSemicolon(send.opening) && !beginsWithName ? QStringLiteral(";") : QString())
                + (isSimple ? QString() : QStringLiteral("(")));

        QString selector;
        for (const auto &keyword : send.keywords)
            selector += (selector.isEmpty() ? QString() : QStringLiteral("_")) + text(keyword.name).toString();
        for (const auto &keyword : send.keywords) {
            const bool isFirst = &keyword == &send.keywords.front();
            insertBehind(keyword.previousEnd,
                isFirst ? (isSimple ? QString() : QStringLiteral(")")) + u'.' + selector + u'(' : QStringLiteral(","));
            removeKeyword(keyword, send.hasArguments, isFirst);
        }
        replace(send.closing, QStringLiteral(")"));
    }

    void replace(std::size_t token, const QString &replacement)
    {
        m_edits.push_back({m_tokens[token].start, m_tokens[token].end, replacement});
    }

    void insertBehind(std::size_t token, const QString &insertion)
    {
        m_edits.push_back({m_tokens[token].end, m_tokens[token].end, insertion});
    }

    /// Takes the keyword away with its colon and the blanks before it; line breaks and comments stay.
    void removeKeyword(const Keyword &keyword, bool hasColon, bool isFirst)
    {
        auto start = m_tokens[keyword.name].start;
        const auto previousEnd = m_tokens[keyword.previousEnd].end;
        while (start > previousEnd && (m_source[start - 1] == u' ' || m_source[start - 1] == u'\t'))
            --start;
        const bool standsOnSameLine = start == previousEnd;
        m_edits.push_back(
            {start, m_tokens[keyword.name].end, isFirst || !standsOnSameLine ? QString() : QStringLiteral(" ")});
        if (hasColon)
            replace(keyword.name + 1, {});
    }

    QString edited() const
    {
        QString result;
        qsizetype position = 0;
        for (const auto &each : m_edits) {
            result += m_source.mid(position, each.start - position);
            result += each.replacement;
            position = each.end;
        }
        result += m_source.mid(position);
        return result;
    }

    QStringView m_source;
    std::vector<ScriptToken> m_tokens;
    std::vector<Edit> m_edits;
};

} // namespace

QString withMessageSendsRewritten(const QString &source)
{
    return Rewriter(source).rewrite();
}

ColumnsBeforeRewriting::ColumnsBeforeRewriting(const QString &source)
{
    Rewriter rewriter(source);
    int line = 0;
    qsizetype lineStart = 0;
    auto lineEnd = source.indexOf(u'\n');
    for (const auto &each : rewriter.edits()) {
        while (lineEnd >= 0 && lineEnd < each.start) {
            lineStart = lineEnd + 1;
            lineEnd = source.indexOf(u'\n', lineStart);
            ++line;
        }
        m_replacements.push_back(
            {line, int(each.start - lineStart), int(each.end - each.start), int(each.replacement.size())});
    }
}

int ColumnsBeforeRewriting::columnBefore(int line, int column) const
{
    auto next = std::lower_bound(m_replacements.begin(), m_replacements.end(), line - 1,
        [](const Replacement &replacement, int wanted) { return replacement.line < wanted; });
    int shift = 0;
    for (; next != m_replacements.end() && next->line == line - 1 && next->column + shift <= column - 1; ++next) {
        if (column - 1 < next->column + shift + next->newLength)
            return next->column + 1;
        shift += next->newLength - next->length;
    }
    return column - shift;
}
