#include "validation/TextPosition.h"

#include <algorithm>

TextPosition positionIn(QStringView text, qsizetype offset)
{
    return RisingPosition(text).advancedTo(offset);
}

TextPosition RisingPosition::advancedTo(qsizetype offset)
{
    const auto end = std::min(offset, m_text.size());
    for (; m_offset < end; ++m_offset) {
        const auto character = m_text[m_offset];
        const bool isFirstOfPair = character == u'\r' && m_offset + 1 < m_text.size() && m_text[m_offset + 1] == u'\n';
        if (character == u'\n' || (character == u'\r' && !isFirstOfPair)) {
            ++m_line;
            m_lineStart = m_offset + 1;
        }
    }
    return {m_line, int(end - m_lineStart) + 1};
}
