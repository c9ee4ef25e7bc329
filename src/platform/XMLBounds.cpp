#include "platform/XMLBounds.h"

#include <string_view>

namespace {

/// Where the text ends that is looked for, from a position on; the end of all bytes when it does not come.
qsizetype behind(QByteArrayView bytes, qsizetype position, QByteArrayView text)
{
    const auto found = bytes.indexOf(text, position);
    return found < 0 ? bytes.size() : found + text.size();
}

/// Where the string ends that starts with a quotation mark at the position.
qsizetype behindString(QByteArrayView bytes, qsizetype position)
{
    return behind(bytes, position + 1, bytes.sliced(position, 1));
}

/// What stands between an element's or document type's "<" and ">".
struct Tag
{
    qsizetype end = 0;
    int strings = 0;
    bool hasBracket = false;
};

Tag tagAt(QByteArrayView bytes, qsizetype position)
{
    const std::string_view text(bytes.data(), std::size_t(bytes.size()));
    Tag tag;
    // The quotation marks and brackets of other markup do not matter: the parser does not get behind them.
    for (tag.end = position; tag.end < bytes.size();) {
        const auto found = text.find_first_of("\"'>[", std::size_t(tag.end));
        tag.end = found == std::string_view::npos ? bytes.size() : qsizetype(found);
        if (tag.end == bytes.size())
            break;
        switch (bytes[tag.end]) {
        case '>':
            ++tag.end;
            return tag;
        case '[':
            tag.hasBracket = true;
            ++tag.end;
            break;
        default:
            ++tag.strings;
            tag.end = behindString(bytes, tag.end);
        }
    }
    return tag;
}

} // namespace

bool isXMLWithinBounds(QByteArrayView bytes)
{
    if (bytes.contains('\0'))
        return false;
    for (qsizetype position = 0; (position = bytes.indexOf('<', position)) >= 0;) {
        const auto markup = bytes.sliced(position);
        if (markup.startsWith("<!--")) {
            position = behind(bytes, position + 4, "-->");
        } else if (markup.startsWith("<![CDATA[")) {
            position = behind(bytes, position + 9, "]]>");
        } else if (markup.startsWith("<?")) {
            position = behind(bytes, position + 2, "?>");
        } else {
            const auto tag = tagAt(bytes, position);
            if (tag.strings > mostXMLAttributes || (markup.startsWith("<!") && tag.hasBracket))
                return false;
            position = tag.end;
        }
    }
    return true;
}
