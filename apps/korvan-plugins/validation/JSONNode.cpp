#include "validation/JSONNode.h"

#include <cmath>

namespace {

constexpr int deepestNesting = 1024;

bool isDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

int hexadecimalDigit(QChar character)
{
    if (isDigit(character))
        return character.unicode() - u'0';
    const char16_t lower = character.unicode() | 0x20;
    return lower >= u'a' && lower <= u'f' ? lower - u'a' + 10 : -1;
}

class Reader
{
public:
    explicit Reader(QStringView text)
        : m_text(text)
    { }

    std::variant<JSONNode, JSONSyntaxError> read()
    {
        JSONNode root;
        skipSpace();
        if (!readValue(root, 1))
            return m_error;
        skipSpace();
        if (m_position < m_text.size()) {
            failAt(m_position, QStringLiteral("The text goes on behind its end: %1.").arg(found()));
            return m_error;
        }
        return root;
    }

private:
    QChar current() const { return m_position < m_text.size() ? m_text[m_position] : QChar(); }
    bool isAtEnd() const { return m_position >= m_text.size(); }

    QString found() const
    {
        if (isAtEnd())
            return QStringLiteral("the text ends");
        const bool isPair = current().isHighSurrogate() && m_position + 1 < m_text.size();
        return QStringLiteral("“%1”").arg(m_text.mid(m_position, isPair ? 2 : 1));
    }

    bool failAt(qsizetype offset, const QString &message)
    {
        m_error = {message, offset};
        return false;
    }
    bool failExpecting(const char *what)
    {
        return failAt(m_position,
            QStringLiteral("Expected %1, but %2%3.")
                .arg(QString::fromUtf8(what), isAtEnd() ? QString() : QStringLiteral("found "), found()));
    }

    void skipSpace()
    {
        while (current() == u' ' || current() == u'\t' || current() == u'\n' || current() == u'\r')
            ++m_position;
    }

    bool readValue(JSONNode &node, int depth)
    {
        node.offset = m_position;
        if (depth > deepestNesting)
            return failAt(m_position, QStringLiteral("The text is nested more than 1,024 deep."));
        const auto first = current();
        if (first == u'{')
            return readObject(node, depth);
        if (first == u'[')
            return readArray(node, depth);
        if (first == u'"') {
            node.type = JSONNode::Type::String;
            return readString(node.text);
        }
        if (first == u'-' || isDigit(first))
            return readNumber(node);
        return readWord(node);
    }

    bool readWord(JSONNode &node)
    {
        struct Word
        {
            QStringView text;
            JSONNode::Type type;
        };
        static constexpr Word words[] = {
            {u"true", JSONNode::Type::Boolean}, {u"false", JSONNode::Type::Boolean}, {u"null", JSONNode::Type::Null}};
        for (const auto &word : words) {
            if (!m_text.mid(m_position).startsWith(word.text))
                continue;
            node.type = word.type;
            node.boolean = word.text == u"true";
            m_position += word.text.size();
            return !current().isLetterOrNumber() || failExpecting("a value");
        }
        return failExpecting("a value");
    }

    void skipDigits()
    {
        while (isDigit(current()))
            ++m_position;
    }

    bool readDigits()
    {
        if (!isDigit(current()))
            return failExpecting("a digit");
        skipDigits();
        return true;
    }

    bool readNumber(JSONNode &node)
    {
        const auto start = m_position;
        node.type = JSONNode::Type::Number;
        if (current() == u'-')
            ++m_position;
        const bool startsWithZero = current() == u'0';
        if (!readDigits())
            return false;
        if (startsWithZero && m_position - start > (m_text[start] == u'-' ? 2 : 1))
            return failAt(start, QStringLiteral("A number may not begin with 0."));
        if (current() == u'.') {
            ++m_position;
            if (!readDigits())
                return false;
        }
        if (current() == u'e' || current() == u'E') {
            ++m_position;
            if (current() == u'+' || current() == u'-')
                ++m_position;
            if (!readDigits())
                return false;
        }
        node.text = m_text.mid(start, m_position - start).toString();
        // A number that is too small for a double is 0, as hosts read it.
        return std::isfinite(node.text.toDouble()) || failAt(start, QStringLiteral("The number is too large."));
    }

    bool readString(QString &string)
    {
        const auto start = m_position++;
        auto copied = m_position;
        for (;; ++m_position) {
            if (isAtEnd())
                return failAt(start, QStringLiteral("The string does not end."));
            const auto character = current();
            if (character == u'"' || character == u'\\')
                string += m_text.mid(copied, m_position - copied);
            if (character == u'"')
                break;
            if (character == u'\n' || character == u'\r')
                return failAt(start, QStringLiteral("The string does not end on its line."));
            if (character < u' ') {
                return failAt(m_position,
                    QStringLiteral("A control character in a string has to be written as \\u%1.")
                        .arg(int(character.unicode()), 4, 16, QChar(u'0')));
            }
            if (character == u'\\') {
                if (!readEscape(string))
                    return false;
                copied = m_position + 1;
            }
        }
        ++m_position;
        return true;
    }

    /// Ends on the escape's last character.
    bool readEscape(QString &string)
    {
        static constexpr QStringView letters = u"\"\\/bfnrt";
        static constexpr QStringView characters = u"\"\\/\b\f\n\r\t";
        const auto start = m_position++;
        if (const auto index = letters.indexOf(current()); !isAtEnd() && index >= 0) {
            string += characters[index];
            return true;
        }
        if (current() != u'u')
            return failAt(start, QStringLiteral("There is no such escape."));
        const auto unit = readHexadecimal();
        if (unit < 0)
            return failAt(start, QStringLiteral("\\u needs four hexadecimal digits."));
        const QChar character{char16_t(unit)};
        string += character;
        if (!character.isSurrogate())
            return true;
        if (character.isHighSurrogate() && m_text.mid(m_position + 1).startsWith(u"\\u")) {
            m_position += 2;
            const auto low = readHexadecimal();
            if (low >= 0 && QChar(char16_t(low)).isLowSurrogate()) {
                string += QChar(char16_t(low));
                return true;
            }
        }
        return failAt(start, QStringLiteral("The escape is half of a character."));
    }

    /// The four digits behind the current character, ending on the last; -1 when there are none.
    int readHexadecimal()
    {
        int unit = 0;
        for (int i = 0; i < 4; ++i) {
            ++m_position;
            const int digit = hexadecimalDigit(current());
            if (isAtEnd() || digit < 0)
                return -1;
            unit = unit * 16 + digit;
        }
        return unit;
    }

    bool readArray(JSONNode &node, int depth)
    {
        node.type = JSONNode::Type::Array;
        return readItems(u']', "“,” or “]”", [&] {
            node.elements.emplace_back();
            return readValue(node.elements.back(), depth + 1);
        });
    }

    bool readObject(JSONNode &node, int depth)
    {
        node.type = JSONNode::Type::Object;
        return readItems(u'}', "“,” or “}”", [&] {
            if (current() != u'"')
                return failExpecting("a key in quotation marks");
            auto &member = node.members.emplace_back();
            member.offset = m_position;
            if (!readString(member.key))
                return false;
            skipSpace();
            if (current() != u':')
                return failExpecting("“:”");
            ++m_position;
            skipSpace();
            return readValue(member.value, depth + 1);
        });
    }

    template <class ReadItem>
    bool readItems(char16_t closing, const char *expected, ReadItem readItem)
    {
        ++m_position;
        skipSpace();
        if (current() == closing) {
            ++m_position;
            return true;
        }
        for (;;) {
            if (!readItem())
                return false;
            skipSpace();
            if (current() == closing)
                break;
            if (current() != u',')
                return failExpecting(expected);
            const auto comma = m_position++;
            skipSpace();
            if (current() == closing)
                return failAt(comma, QStringLiteral("A comma may not stand behind the last item."));
        }
        ++m_position;
        return true;
    }

    QStringView m_text;
    qsizetype m_position = 0;
    JSONSyntaxError m_error;
};

} // namespace

const JSONMember *JSONNode::member(QStringView key) const
{
    for (auto each = members.rbegin(); each != members.rend(); ++each) {
        if (each->key == key)
            return &*each;
    }
    return nullptr;
}

const JSONNode *JSONNode::value(QStringView key, Type wanted) const
{
    const auto *const found = member(key);
    return found && found->value.type == wanted ? &found->value : nullptr;
}

std::optional<QString> JSONNode::string(QStringView key) const
{
    const auto *const found = value(key, Type::String);
    return found ? std::optional(found->text) : std::nullopt;
}

std::variant<JSONNode, JSONSyntaxError> readJSON(QStringView text)
{
    return Reader(text).read();
}
